#include <array>

#include "tvx/base/error.h"
#include "tvx/platform/clipboard.h"
#include "tvx/source/code_view.h"

/// What the code view makes of its box's messages and events.
namespace tvx::source {

using platform::ClipboardFormat;
using services::EMsgResponse;
using services::GSubclass;

namespace {

constexpr std::array watched{platform::WM_VSCROLL, platform::WM_PASTE,   platform::WM_COPY,
                             platform::WM_CUT,     platform::WM_KEYDOWN, platform::WM_DESTROY};
constexpr std::int16_t key_tab = 9;

}  // namespace

void OrvelCV::attachMessages() {
  if (attached_) return;
  // Addresses are no links, and lines don't wrap: one source line is one line number.
  platform::SendMessage(hwnd(), platform::EM_AUTOURLDETECT, 0);
  platform::SendMessage(hwnd(), platform::EM_SETTARGETDEVICE, 0, 1);
  for (const platform::Message message : watched)
    attempt([&] { GSubclass::AttachMessage(*this, hwnd(), message); });
  attached_ = true;
}

void OrvelCV::DetachAllMessages() {
  if (!attached_) return;
  for (const platform::Message message : watched) GSubclass::DetachMessage(*this, hwnd(), message);
  attached_ = false;
}

platform::MessageResult OrvelCV::WindowProc(platform::WindowHandle, platform::Message iMsg,
                                            platform::Parameter wParam, platform::Parameter) {
  bool handled = false;
  switch (iMsg) {
    case platform::WM_VSCROLL: DrawLineNumbers(); break;
    case platform::WM_PASTE: handled = ClipboardHasRichText(); break;
    case platform::WM_COPY:
      copy_plain_text();
      handled = true;
      break;
    case platform::WM_CUT:
      cut_plain_text();
      handled = true;
      break;
    case platform::WM_KEYDOWN: handled = box_->control_key_down() && control_key(wParam); break;
    case platform::WM_DESTROY:
    case platform::WM_CLOSE:
      response_ = EMsgResponse::emrPostProcess;
      DetachAllMessages();
      return 0;
    default: break;
  }
  response_ = handled ? EMsgResponse::emrConsume : EMsgResponse::emrPostProcess;
  return 0;
}

bool OrvelCV::control_key(platform::Parameter key) {
  switch (key) {
    case u'V':
      attempt([&] {
        if (clipboard_ && !Locked()) box_->set_SelText(clipboard_->GetText(ClipboardFormat::text));
      });
      return true;
    case u'C': copy_plain_text(); return true;
    case u'X': cut_plain_text(); return true;
    case u'A': attempt([&] { box_->select(0, box_->length()); }); return true;
    default: return false;
  }
}

void OrvelCV::copy_plain_text() {
  attempt([&] {
    if (!clipboard_) return;
    clipboard_->Clear();
    clipboard_->SetText(box_->SelText(), ClipboardFormat::text);
  });
}

void OrvelCV::cut_plain_text() {
  copy_plain_text();
  attempt([&] {
    if (!Locked()) box_->set_SelText({});
  });
}

// Rich text wins where both are there.
bool OrvelCV::ClipboardHasRichText() const {
  bool rich = false;
  attempt([&] { rich = clipboard_ && clipboard_->GetFormat(ClipboardFormat::rich_text); });
  return rich;
}

// --- the box's events, passed on ---

void OrvelCV::Click() {
  if (events_) events_->Click();
}

void OrvelCV::DblClick() {
  if (events_) events_->DblClick();
}

// Tab types a tab and never moves the focus. With Shift it keeps its meaning.
void OrvelCV::KeyDown(std::int16_t& KeyCode, std::int16_t Shift) {
  if (events_) events_->KeyDown(KeyCode, Shift);
  if (KeyCode != key_tab || Shift > 0) return;
  if (!Locked()) attempt([&] { box_->set_SelText(u"\t"); });
  KeyCode = 0;
}

void OrvelCV::KeyPress(std::int16_t& KeyAscii) {
  if (events_) events_->KeyPress(KeyAscii);
}

void OrvelCV::KeyUp(std::int16_t& KeyCode, std::int16_t Shift) {
  if (events_) events_->KeyUp(KeyCode, Shift);
  DrawLineNumbers();
}

void OrvelCV::MouseDown(const platform::BoxMouse& mouse) {
  if (events_) events_->MouseDown(mouse);
}

void OrvelCV::MouseMove(const platform::BoxMouse& mouse) {
  if (events_) events_->MouseMove(mouse);
}

void OrvelCV::MouseUp(const platform::BoxMouse& mouse) {
  if (events_) events_->MouseUp(mouse);
  DrawLineNumbers();
}

void OrvelCV::Change() {
  edited_ = true;
  if (events_) events_->Change();
  tell_of_text();
  DrawLineNumbers();
}

void OrvelCV::SelChange() {
  if (events_) events_->SelChange();
  DrawLineNumbers();
}

void OrvelCV::GotFocus() {
  if (events_) events_->GotFocus();
}

}  // namespace tvx::source
