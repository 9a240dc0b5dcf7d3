#include "tvx/platform/form_control.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/numbers.h"
#include "tvx/base/strings.h"
#include "tvx/platform/form.h"
#include "tvx/platform/list_view.h"

namespace tvx::platform {
namespace {

constexpr int no_such_index = 381;

FormColour usual_colour(ControlKind kind) {
  const bool is_box = kind == ControlKind::TextBox || kind == ControlKind::ComboBox ||
                      kind == ControlKind::ListBox || kind == ControlKind::ListView;
  return is_box ? window_background : button_face;
}

int within(int value, std::size_t most) { return std::clamp(value, 0, static_cast<int>(most)); }

}  // namespace

FormControl::FormControl(Form& form, ControlKind kind, std::u16string name, std::u16string caption,
                         FormControl* container)
    : form_(form),
      kind_(kind),
      name_(std::move(name)),
      container_(container),
      caption_(std::move(caption)),
      back_color_(usual_colour(kind)) {}

FormControl::~FormControl() = default;

bool FormControl::has_caption() const {
  return !has_text() && kind_ != ControlKind::PictureBox && kind_ != ControlKind::ListView;
}

bool FormControl::has_text() const { return kind_ == ControlKind::TextBox || is_list(); }

bool FormControl::is_list() const { return kind_ == ControlKind::ComboBox || kind_ == ControlKind::ListBox; }

void FormControl::require(bool has, std::u16string_view member) const {
  if (!has)
    throw RuntimeError(errors::unknown_member, u"Object doesn't support this property or method: " + name_ +
                                                   u"." + std::u16string(member));
}

void FormControl::tell() {
  const std::vector<FormObserver*> observers = form_.observers_;
  for (FormObserver* observer : observers) observer->control_changed(*this);
}

void FormControl::tell_change() {
  tell();
  if (form_.handler_) form_.handler_->Change(*this);
}

const std::u16string& FormControl::Caption() const {
  require(has_caption(), u"Caption");
  return caption_;
}

void FormControl::set_Caption(std::u16string_view caption) {
  require(has_caption(), u"Caption");
  if (caption_ == caption) return;
  caption_ = caption;
  tell();
}

const std::u16string& FormControl::Text() const {
  require(has_text(), u"Text");
  return text_;
}

void FormControl::set_Text(std::u16string_view text) {
  require(has_text(), u"Text");
  if (text_ == text) return;
  const auto item = std::ranges::find(items_, text);
  if (is_list() && !takes_text_ && item == items_.end()) return;
  text_ = text;
  index_ = item == items_.end() ? -1 : static_cast<int>(item - items_.begin());
  selection_start_ = selection_length_ = 0;
  tell_change();
}

int FormControl::SelStart() const {
  require(takes_text(), u"SelStart");
  return selection_start_;
}

int FormControl::SelLength() const {
  require(takes_text(), u"SelLength");
  return selection_length_;
}

void FormControl::select(int start, int length) {
  require(takes_text(), u"SelStart");
  start = within(start, text_.size());
  length = within(length, text_.size() - static_cast<std::size_t>(start));
  if (start == selection_start_ && length == selection_length_) return;
  selection_start_ = start;
  selection_length_ = length;
  tell();
}

bool FormControl::Value() const {
  require(kind_ == ControlKind::CheckBox, u"Value");
  return value_;
}

void FormControl::set_Value(bool ticked) {
  require(kind_ == ControlKind::CheckBox, u"Value");
  if (std::exchange(value_, ticked) != ticked) tell_change();
}

void FormControl::set_Enabled(bool enabled) {
  if (std::exchange(enabled_, enabled) != enabled) tell();
}

void FormControl::set_Visible(bool visible) {
  if (std::exchange(visible_, visible) != visible) tell();
}

void FormControl::set_ToolTipText(std::u16string_view text) {
  if (tool_tip_ == text) return;
  tool_tip_ = text;
  tell();
}

void FormControl::set_BackColor(FormColour colour) {
  if (std::exchange(back_color_, colour) != colour) tell();
}

const std::u16string& FormControl::Picture() const {
  require(kind_ == ControlKind::PictureBox, u"Picture");
  return picture_;
}

void FormControl::set_Picture(std::u16string_view path) {
  require(kind_ == ControlKind::PictureBox, u"Picture");
  if (picture_ == path) return;
  picture_ = path;
  tell();
}

ListView& FormControl::list_view() const {
  require(list_view_ != nullptr, u"ListItems");
  return *list_view_;
}

void FormControl::set_sample(TextSample sample) {
  if (sample_ == sample) return;
  sample_ = std::move(sample);
  tell();
}

void FormControl::set_fault(std::u16string_view reason) {
  if (fault_ == reason) return;
  fault_ = reason;
  tell();
}

// --- lists ---

void FormControl::require_item(int index) const {
  if (index < 0 || index >= ListCount()) throw RuntimeError(no_such_index, u"Invalid property array index");
}

void FormControl::AddItem(std::u16string_view item) {
  require(is_list(), u"AddItem");
  items_.emplace_back(item);
  tell();
}

// What is typed into a box stays; what is chosen in a list goes with its item.
void FormControl::RemoveItem(int index) {
  require(is_list(), u"RemoveItem");
  require_item(index);
  const bool chosen = !takes_text_ && ListIndex() == index;
  items_.erase(items_.begin() + index);
  if (index_ > index) --index_;
  if (!chosen) return tell();
  index_ = -1;
  text_.clear();
  tell_change();
}

void FormControl::Clear() {
  require(is_list(), u"Clear");
  items_.clear();
  index_ = -1;
  selection_start_ = selection_length_ = 0;
  const bool chosen = !std::exchange(text_, {}).empty();
  chosen ? tell_change() : tell();
}

const std::u16string& FormControl::List(int index) const {
  require(is_list(), u"List");
  require_item(index);
  return items_[static_cast<std::size_t>(index)];
}

void FormControl::set_List(int index, std::u16string_view item) {
  require(is_list(), u"List");
  require_item(index);
  std::u16string& kept = items_[static_cast<std::size_t>(index)];
  if (kept == item) return;
  const bool chosen = !takes_text_ && ListIndex() == index;
  kept = item;
  if (!chosen) return tell();
  text_ = item;
  tell_change();
}

// Items of a list that stays open may be alike: it keeps which of them is chosen.
int FormControl::ListIndex() const {
  require(is_list(), u"ListIndex");
  if (kind_ == ControlKind::ListBox) return index_;
  const auto chosen = std::ranges::find(items_, text_);
  return chosen == items_.end() ? -1 : static_cast<int>(chosen - items_.begin());
}

void FormControl::set_ListIndex(int index) {
  require(is_list(), u"ListIndex");
  if (index != -1) require_item(index);
  if (index == ListIndex()) return;
  index_ = index;
  text_ = index == -1 ? std::u16string() : List(index);
  selection_start_ = selection_length_ = 0;
  tell_change();
}

// --- use ---

bool FormControl::reachable() const {
  for (const FormControl* control = this; control; control = control->container_)
    if (!control->enabled_ || !control->visible_) return false;
  return true;
}

bool FormControl::click() {
  if (!reachable()) return false;
  if (kind_ == ControlKind::CheckBox)
    set_Value(!value_);
  else if (kind_ != ControlKind::CommandButton)
    return false;
  form_.given_up_ = this == form_.cancel_button_;
  if (form_.handler_) form_.handler_->Click(*this);
  return true;
}

bool FormControl::choose(int index) {
  if (!reachable()) return false;
  set_ListIndex(index);
  if (kind_ == ControlKind::ListBox && index != -1 && form_.handler_) form_.handler_->Click(*this);
  return true;
}

bool FormControl::double_click() {
  if (kind_ != ControlKind::ListBox || !reachable()) return false;
  if (form_.handler_) form_.handler_->DblClick(*this);
  return true;
}

// What is no number counts as 0. A percentage stays one.
bool FormControl::step(int steps) {
  if (!number_ || !reachable()) return false;
  const bool percentage = trimmed(text_).ends_with(u'%');
  const double wanted = typed_number(text_) + static_cast<double>(number_->step) * steps;
  const int number = static_cast<int>(std::clamp<double>(wanted, number_->least, number_->most));
  set_Text(percentage ? to_text(number) + u"%" : to_text(number));
  if (form_.handler_) form_.handler_->Step(*this);
  return true;
}

void FormControl::edit(std::u16string_view text, int start, int length) {
  require(takes_text(), u"Text");
  const bool changed = text_ != text;
  text_ = text;
  selection_start_ = within(start, text_.size());
  selection_length_ = within(length, text_.size() - static_cast<std::size_t>(selection_start_));
  if (changed) tell_change();
}

// --- keys ---

std::int16_t FormControl::key_down(std::int16_t code, std::int16_t shift) {
  if (reports_keys_ && form_.handler_) form_.handler_->KeyDown(*this, code, shift);
  return code;
}

std::int16_t FormControl::key_up(std::int16_t code, std::int16_t shift) {
  if (reports_keys_ && form_.handler_) form_.handler_->KeyUp(*this, code, shift);
  return code;
}

std::int16_t FormControl::key_press(std::int16_t character) {
  if (reports_keys_ && form_.handler_) form_.handler_->KeyPress(*this, character);
  return character;
}

}  // namespace tvx::platform
