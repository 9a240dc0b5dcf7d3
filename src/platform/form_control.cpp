#include "tvx/platform/form_control.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/platform/form.h"

namespace tvx::platform {
namespace {

constexpr int no_such_index = 381;

FormColour usual_colour(ControlKind kind) {
  return kind == ControlKind::TextBox || kind == ControlKind::ComboBox ? window_background : button_face;
}

}  // namespace

FormControl::FormControl(Form& form, ControlKind kind, std::u16string name, std::u16string caption,
                         FormControl* container)
    : form_(form),
      kind_(kind),
      name_(std::move(name)),
      container_(container),
      caption_(std::move(caption)),
      back_color_(usual_colour(kind)) {}

bool FormControl::has_caption() const { return !has_text() && kind_ != ControlKind::PictureBox; }

bool FormControl::has_text() const { return kind_ == ControlKind::TextBox || kind_ == ControlKind::ComboBox; }

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
  if (kind_ == ControlKind::ComboBox && std::ranges::find(items_, text) == items_.end()) return;
  text_ = text;
  tell_change();
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

// --- lists ---

void FormControl::AddItem(std::u16string_view item) {
  require(kind_ == ControlKind::ComboBox, u"AddItem");
  items_.emplace_back(item);
  tell();
}

void FormControl::Clear() {
  require(kind_ == ControlKind::ComboBox, u"Clear");
  items_.clear();
  const bool chosen = !std::exchange(text_, {}).empty();
  chosen ? tell_change() : tell();
}

const std::u16string& FormControl::List(int index) const {
  require(kind_ == ControlKind::ComboBox, u"List");
  if (index < 0 || index >= ListCount()) throw RuntimeError(no_such_index, u"Invalid property array index");
  return items_[static_cast<std::size_t>(index)];
}

int FormControl::ListIndex() const {
  require(kind_ == ControlKind::ComboBox, u"ListIndex");
  const auto chosen = std::ranges::find(items_, text_);
  return chosen == items_.end() ? -1 : static_cast<int>(chosen - items_.begin());
}

void FormControl::set_ListIndex(int index) { set_Text(List(index)); }

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
  if (form_.handler_) form_.handler_->Click(*this);
  return true;
}

}  // namespace tvx::platform
