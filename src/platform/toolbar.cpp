#include "tvx/platform/toolbar.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

constexpr float row_height = 360;
constexpr float separator_width = 120;

}  // namespace

void Button::set_Caption(std::u16string_view caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  toolbar_->tell_changed(*this);
}

void Button::set_ToolTipText(std::u16string_view text) {
  if (tool_tip_ == text) return;
  tool_tip_ = text;
  toolbar_->tell_changed(*this);
}

void Button::set_Obstacle(std::u16string_view reason) {
  if (obstacle_ == reason) return;
  obstacle_ = reason;
  toolbar_->tell_changed(*this);
}

void Button::set_Enabled(bool enabled) {
  if (std::exchange(enabled_, enabled) != enabled) toolbar_->tell_changed(*this);
}

void Button::set_Visible(bool visible) {
  if (std::exchange(visible_, visible) != visible) toolbar_->tell_changed(*this);
}

float Button::Left() const { return toolbar_->place_of(*this).left; }
float Button::Top() const { return toolbar_->place_of(*this).top; }
float Button::Width() const {
  return style_ == ButtonStyle::Separator ? separator_width : toolbar_->ButtonWidth();
}
float Button::Height() const { return toolbar_->ButtonHeight(); }

void Button::set_Value(int value) {
  if (value != 0 && value != 1) throw RuntimeError(errors::invalid_property_value, u"Invalid property value");
  if (std::exchange(value_, value) != value) toolbar_->tell_changed(*this);
}

Toolbar::Toolbar(std::u16string name) : name_(std::move(name)) {}
Toolbar::~Toolbar() = default;

Button& Toolbar::Item(int index) {
  if (index < 1 || index > Count()) throw RuntimeError(errors::invalid_call, u"Index out of bounds");
  return *buttons_[std::size_t(index - 1)];
}

Button& Toolbar::Item(std::u16string_view key) {
  const auto found = std::ranges::find_if(buttons_, [&](const auto& button) { return button->Key() == key; });
  if (key.empty() || found == buttons_.end()) throw RuntimeError(errors::invalid_call, u"Element not found");
  return **found;
}

Button* Toolbar::find_ignoring_case(std::u16string_view key) {
  const auto found = std::ranges::find_if(
      buttons_, [&](const auto& button) { return equals_ignoring_ascii_case(button->Key(), key); });
  return key.empty() || found == buttons_.end() ? nullptr : found->get();
}

Button& Toolbar::Add(ButtonDefinition definition) {
  std::unique_ptr<Button> button(new Button(*this, Count() + 1));
  button->key_ = std::move(definition.key);
  button->caption_ = std::move(definition.caption);
  button->tool_tip_ = std::move(definition.tool_tip);
  button->image_ = std::move(definition.image);
  button->style_ = definition.style;
  buttons_.push_back(std::move(button));
  tell_replaced();
  return *buttons_.back();
}

void Toolbar::Remove(int index) {
  Item(index);  // throws for a position that is none
  buttons_.erase(buttons_.begin() + (index - 1));
  for (int i = index; i <= Count(); ++i) buttons_[std::size_t(i - 1)]->index_ = i;
  tell_replaced();
}

void Toolbar::Clear() {
  if (buttons_.empty()) return;
  buttons_.clear();
  tell_replaced();
}

void Toolbar::set_ButtonWidth(float width) {
  if (std::exchange(button_width_, width) != width) tell_replaced();
}

void Toolbar::set_ButtonHeight(float height) {
  if (std::exchange(button_height_, height) != height) tell_replaced();
}

float Toolbar::Height() const {
  if (measured_height_) return *measured_height_;
  if (measure_) return measure_(width_);
  return walk(nullptr).top + row_height;
}

ButtonPlace Toolbar::place_of(const Button& button) const {
  return places_ ? places_(button) : walk(&button);
}

ButtonPlace Toolbar::walk(const Button* last) const {
  ButtonPlace place;
  float end = 0;
  for (const auto& button : buttons_) {
    if (!button->Visible()) continue;
    const float width = button->Width();
    place.left = end;
    if (end > 0 && end + width > width_) place = {0, place.top + row_height};
    end = place.left + width;
    if (button.get() == last) break;
  }
  return place;
}

void Toolbar::set_Visible(bool visible) {
  if (std::exchange(visible_, visible) != visible) tell_replaced();
}

void Toolbar::Refresh() {
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->refreshed(*this);
}

bool Toolbar::press(Button& button) {
  if (!button.Enabled() || !button.Visible() || button.Style() == ButtonStyle::Separator || !handler_)
    return false;
  handler_->ButtonClick(*this, button);
  return true;
}

void Toolbar::add_observer(ToolbarObserver& observer) { observers_.push_back(&observer); }
void Toolbar::remove_observer(ToolbarObserver& observer) { std::erase(observers_, &observer); }

void Toolbar::tell_changed(Button& button) {
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->button_changed(*this, button);
}

void Toolbar::tell_replaced() {
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->buttons_replaced(*this);
}

}  // namespace tvx::platform
