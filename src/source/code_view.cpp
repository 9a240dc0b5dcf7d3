#include "tvx/source/code_view.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/line_ends.h"
#include "tvx/platform/property_bag.h"
#include "tvx/source/preparation.h"

namespace tvx::source {

namespace {

constexpr float twips_per_pixel = 15;

}  // namespace

OrvelCV::OrvelCV() : text_(std::make_shared<const std::u16string>()) { box_->set_handler(this); }

OrvelCV::~OrvelCV() {
  events_ = nullptr;
  observers_.clear();
  DetachAllMessages();
  box_->set_handler(nullptr);
}

void OrvelCV::set_clipboard(platform::Clipboard* clipboard) {
  clipboard_ = clipboard;
  plain_.set_clipboard(clipboard);
  box_->set_clipboard(clipboard);
}

// --- the text box ---

void OrvelCV::use(platform::TextBox* box) {
  platform::TextBox* const next = box ? box : &plain_;
  if (next == box_) return;
  // An edited text goes over as it is, and with it what it differs from.
  const auto text = edited_ ? std::make_shared<const std::u16string>(box_->Text()) : text_;
  const bool was_attached = attached_;
  attempt([&] { DetachAllMessages(); });
  box_->set_handler(nullptr);
  box_->set_Text({});
  next->set_Enabled(box_->Enabled());
  next->set_Locked(box_->Locked());
  next->set_clipboard(clipboard_);
  box_ = next;
  box_->set_handler(this);
  if (edited_) {
    box_->set_Text(*text);
  } else {
    filled_ = false;
  }
  if (was_attached) attempt([&] { attachMessages(); });
}

void OrvelCV::fill() {
  if (std::exchange(filled_, true)) return;
  box_->set_Text(*text_);
}

platform::TextBox& OrvelCV::TextBox1() {
  fill();
  return *box_;
}

std::u16string OrvelCV::Text() const { return edited_ ? box_->Text() : with_crlf(*text_); }

// Asked after each key: the texts are compared only where they may be equal.
std::shared_ptr<const std::u16string> OrvelCV::untouched_text() const {
  const bool may_be_undone = edited_ && !box_->can_undo();
  return !edited_ || (may_be_undone && box_->Text() == with_crlf(*text_)) ? text_ : nullptr;
}

void OrvelCV::set_Text(std::u16string_view text) { set_Text(std::make_shared<const std::u16string>(text)); }

void OrvelCV::set_Text(std::shared_ptr<const std::u16string> text) {
  text_ = std::move(text);
  edited_ = false;
  filled_ = false;
  if (visible_) fill();
  property_changed(u"Text");
  tell_of_text();
  DrawLineNumbers();
}

void OrvelCV::edit(std::u16string_view text) {
  if (Locked()) throw RuntimeError(errors::invalid_call, u"The code is locked");
  platform::TextBox& box = TextBox1();
  box.select(0, box.length());
  box.set_SelText(text);
}

void OrvelCV::follow(std::size_t start, std::size_t length, std::u16string_view text) {
  TextBox1().follow(start, length, text);
  edited_ = true;
  tell_of_text();
  DrawLineNumbers();
}

// --- operations and properties ---

void OrvelCV::SetFocus() {
  fill();
  box_->SetFocus();
}

void OrvelCV::Refresh() { box_->Refresh(); }

std::int32_t OrvelCV::LineCount() {
  fill();
  return static_cast<std::int32_t>(platform::SendMessage(hwnd(), platform::EM_GETLINECOUNT));
}

std::int32_t OrvelCV::LineForCharacterIndex(std::int32_t index) {
  fill();
  return static_cast<std::int32_t>(platform::SendMessage(hwnd(), platform::EM_LINEFROMCHAR, index));
}

std::int32_t OrvelCV::FirstVisibleLine() {
  fill();
  return static_cast<std::int32_t>(platform::SendMessage(hwnd(), platform::EM_GETFIRSTVISIBLELINE));
}

// The desktop's own colours have the highest bit and a number. These are the plain scheme's; a face has its
// own.
std::int32_t OrvelCV::TranslateColor(std::uint32_t colour, std::int32_t) {
  constexpr std::uint32_t desktop = 0x80000000, bgr = 0x02FFFFFF;
  if (fault_point(u"OleTranslateColor")) return -1;
  if (!(colour & desktop)) return colour <= bgr ? static_cast<std::int32_t>(colour & 0xFFFFFF) : -1;
  constexpr std::int32_t scheme[] = {0xC8C8C8, 0x000000, 0xD1B499, 0xDBCDBF, 0xF0F0F0, 0xFFFFFF, 0x646464,
                                     0x000000, 0x000000, 0x000000, 0xB4B4B4, 0xFCF7F4, 0xABABAB, 0xFF9933,
                                     0xFFFFFF, 0xF0F0F0, 0xA0A0A0, 0x6D6D6D, 0x000000, 0x000000, 0xFFFFFF,
                                     0x696969, 0xE3E3E3, 0x000000, 0xE1FFFF};
  const std::uint32_t index = colour & ~desktop;
  return index < std::size(scheme) ? scheme[index] : -1;
}

void OrvelCV::set_Enabled(bool enabled) {
  const bool was = Enabled();
  box_->set_Enabled(enabled);
  property_changed(u"Enabled");
  if (was != enabled) tell();
}

void OrvelCV::set_Locked(bool locked) {
  const bool was = Locked();
  box_->set_Locked(locked);
  property_changed(u"Locked");
  if (was != locked) tell();
}

void OrvelCV::InitProperties(const BoxFont& ambient) {
  properties_.Font = ambient;
  properties_.BackStyle = properties_.BorderStyle = 0;
  properties_.SelStart = properties_.SelLength = 0;
}

// The font is an object of the container's, who gives its own; "hWnd" is a number of the past.
void OrvelCV::ReadProperties(const platform::PropertyBag& bag) {
  const auto number = [&](std::u16string_view key) { return bag.ReadProperty(key, std::int32_t{0}); };
  attempt([&] { properties_.BackColor = platform::as_int32(number(u"BackColor")); });
  attempt([&] { properties_.ForeColor = platform::as_int32(number(u"ForeColor")); });
  attempt([&] { properties_.BackStyle = platform::as_int16(number(u"BackStyle")); });
  attempt([&] { properties_.BorderStyle = platform::as_int16(number(u"BorderStyle")); });
  attempt([&] { set_Text(platform::as_text(bag.ReadProperty(u"Text", std::u16string()))); });
  attempt([&] { properties_.SelStart = platform::as_int32(number(u"SelStart")); });
  attempt([&] { properties_.SelLength = platform::as_int32(number(u"SelLength")); });
  attempt([&] { box_->set_Enabled(platform::as_bool(bag.ReadProperty(u"Enabled", true))); });
  attempt([&] { box_->set_Locked(platform::as_bool(bag.ReadProperty(u"Locked", false))); });
}

void OrvelCV::WriteProperties(platform::PropertyBag& bag) const {
  const auto write = [&](std::u16string_view key, const platform::PropertyValue& value,
                         const platform::PropertyValue& standard) {
    attempt([&] { bag.WriteProperty(key, value, standard); });
  };
  const std::int32_t none = 0;
  write(u"BackColor", properties_.BackColor, none);
  write(u"ForeColor", properties_.ForeColor, none);
  write(u"BackStyle", std::int32_t{properties_.BackStyle}, none);
  write(u"BorderStyle", std::int32_t{properties_.BorderStyle}, none);
  write(u"Text", Text(), std::u16string());
  write(u"SelStart", properties_.SelStart, none);
  write(u"SelLength", properties_.SelLength, none);
  write(u"hWnd", platform::number_of(box_->handle()), none);
  write(u"Enabled", Enabled(), true);
  write(u"Locked", Locked(), false);
}

void OrvelCV::set_Visible(bool visible) {
  if (std::exchange(visible_, visible) == visible) return;
  plain_.set_shown(visible);
  if (visible) fill();
  tell();
}

void OrvelCV::ZOrder(bool to_front) {
  if (std::exchange(in_front_, to_front) != to_front) tell();
}

// --- lines ---

void OrvelCV::resize(float width, float height) {
  if (std::exchange(width_, width) == width && height_ == height) return;
  height_ = height;
  if (box_ == &plain_) {
    pane_.height = static_cast<int>(height / twips_per_pixel);
    plain_.set_visible_lines(static_cast<std::size_t>(std::max(pane_.height / pane_.line_height, 1)));
  }
  DrawLineNumbers();
}

CodeViewBox OrvelCV::TextBox1_area() const {
  return {picLines_width, 0, std::max(width_ - picLines_width, 0.f), height_};
}

void OrvelCV::set_pane(const LinePane& pane) {
  pane_ = pane;
  DrawLineNumbers();
}

LineMarks OrvelCV::line_marks() {
  platform::TextBox& box = TextBox1();
  const auto line = [&](std::size_t place) {
    return static_cast<std::size_t>(LineForCharacterIndex(static_cast<std::int32_t>(place)));
  };
  LineMarks marks;
  marks.count = static_cast<std::size_t>(LineCount());
  marks.first_visible = static_cast<std::size_t>(FirstVisibleLine());
  const std::size_t start = box.SelStart(), length = box.SelLength();
  marks.first_selected = marks.last_selected = line(start);
  if (length > 1) marks.last_selected = line(start + length - 1);
  return marks;
}

void OrvelCV::DrawLineNumbers() {
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->line_numbers_changed();
}

// --- who listens ---

void OrvelCV::add_observer(CodeViewObserver& observer) { observers_.push_back(&observer); }
void OrvelCV::remove_observer(CodeViewObserver& observer) { std::erase(observers_, &observer); }

void OrvelCV::tell() {
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->code_view_changed();
}

void OrvelCV::tell_of_text() {
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->text_changed();
}

void OrvelCV::property_changed(std::u16string_view key) {
  if (events_) events_->PropertyChanged(key);
}

}  // namespace tvx::source
