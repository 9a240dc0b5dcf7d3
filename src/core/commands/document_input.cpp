#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"
#include "tvx/editing/editor.h"
#include "tvx/platform/loaded_dialogs.h"

/// What the document tells: keys, clicks, and where the selection went.
namespace tvx::core {
namespace {

constexpr int key_enter = 13, key_space = 32, key_c = 67, key_v = 86, key_x = 88;

}  // namespace

void HTMLed::fetch_last_event() {
  last_event_.reset();
  if (const browser::Event* event = document().event())
    last_event_ = std::make_unique<browser::Event>(*event);
}

void HTMLed::onkeydown() {
  const KeepAlive alive(*this);
  attempt([&] { fetch_last_event(); });
  attempt([&] {
    if (!last_event_) return;
    std::int32_t key_code = last_event_->key_code;
    bool shift = last_event_->shift, control = last_event_->control;
    raise([&](HTMLedEvents& host) { host.ASCIIKeyPress(key_code, shift, control); });
    // What the host wrote into the arguments counts for nothing; what it did to the event does.
    if (const browser::Event* event = document().event())
      act_on_key(event->key_code, event->shift, event->control);
  });
  mark_changed();
}

// Setting the key code to 0 is how a key is taken away from the document.
void HTMLed::act_on_key(int key_code, bool shift, bool control) {
  if (key_code == key_enter && (properties_.isAccessContained || properties_.useEnterAsBR)) {
    document().set_event_key_code(0);
    sendCR(properties_.useEnterAsBR);
  } else if (key_code == key_space && shift) {
    document().set_event_key_code(0);
    InsertAtCursor(u"&nbsp;", ed_InsertType::ed_InsertReplaceSelection);
  } else if (control && (key_code == key_v || key_code == key_c || key_code == key_x)) {
    if (key_code == key_v)
      paste_document();
    else if (key_code == key_c)
      copy_document();
    else
      cut_document();
    document().set_event_key_code(0);
  }
}

void HTMLed::onkeyup() { mark_changed(); }

void HTMLed::onuserchange() {
  const KeepAlive alive(*this);
  mark_changed();
}

bool HTMLed::ondragstart() {
  mark_changed();
  return true;
}

bool HTMLed::onselectstart() { return properties_.EditorEnabled; }

bool HTMLed::onclick() {
  const KeepAlive alive(*this);
  attempt([&] { raise_document_click(); });
  return properties_.EditorEnabled;
}

bool HTMLed::oncontrolselect() {
  const KeepAlive alive(*this);
  attempt([&] { raise_document_click(); });
  if (browser_->ReadyState() == browser::ReadyState::Complete) BuildBranchToolbar();
  return properties_.EditorEnabled;
}

void HTMLed::raise_document_click() {
  dom::Ref<dom::Element> element;
  if (const browser::Event* event = document().event())
    element = document().element_from_point(event->client_x, event->client_y);
  raise([&](HTMLedEvents& host) { host.DocumentClick(element); });
}

// The coordinates are those of the last key or selection event, not of the double click.
bool HTMLed::ondblclick() {
  attempt([&] {
    if (!last_event_) throw RuntimeError(errors::object_not_set, u"There is no event");
    highlight_->set_element(document().element_from_point(last_event_->client_x, last_event_->client_y));
  });
  return false;
}

void HTMLed::onselectionchange() {
  const KeepAlive alive(*this);
  // The spelling run moves the selection from word to word, with its dialog open.
  if (platform::IsDialogLoaded(u"frmSpelling")) return;
  if (browser_->ReadyState() == browser::ReadyState::Complete) follow_selection();
  show_pressed(button_bold, u"BOLD");
  show_pressed(button_italic, u"Italic");
  show_pressed(button_underline, u"Underline");
  show_pressed(button_strike, u"StrikeThrough");
  show_pressed(button_copy, u"Copy");
  show_pressed(button_cut, u"Cut");
  show_pressed(button_paste, u"Paste");
}

void HTMLed::follow_selection() {
  attempt([&] { fetch_last_event(); });
  attempt([&] { highlight_->restore(); });
  dom::Ref<dom::Element> element;
  attempt([&] {
    if (last_event_) element = document().element_from_point(last_event_->client_x, last_event_->client_y);
  });
  highlight_->set_element(element);
  if (properties_.HighlightDOMSelectionOnClick) attempt([&] { draw_selection_border(); });
  BuildBranchToolbar();
}

}  // namespace tvx::core
