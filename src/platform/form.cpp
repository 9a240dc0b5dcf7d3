#include "tvx/platform/form.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/platform/form_places.h"

namespace tvx::platform {
namespace {

constexpr int shown_already = 400, no_such_control = 730;

}  // namespace

Form::Form(std::u16string name, std::u16string caption)
    : loaded_(std::move(name)), caption_(std::move(caption)) {}

Form::~Form() {
  Hide();
  destroy();
}

void Form::set_Caption(std::u16string_view caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  const std::vector<FormObserver*> observers = observers_;
  for (FormObserver* observer : observers) observer->caption_changed(*this);
}

// --- making ---

FormControl& Form::add(ControlKind kind, std::u16string name, std::u16string caption) {
  if (rows_.empty()) begin_row();
  FormRow& row = rows_.back();
  controls_.push_back(std::unique_ptr<FormControl>(
      new FormControl(*this, kind, std::move(name), std::move(caption), row.frame)));
  row.controls.push_back(controls_.back().get());
  return *controls_.back();
}

FormControl& Form::add_frame(std::u16string name, std::u16string caption, FormControl* container) {
  begin_row(container);
  return add(ControlKind::Frame, std::move(name), std::move(caption));
}

void Form::begin_row(FormControl* frame) { rows_.push_back({frame, {}}); }

FormControl& Form::add_label(std::u16string name, std::u16string caption) {
  return add(ControlKind::Label, std::move(name), std::move(caption));
}

FormControl& Form::add_text_box(std::u16string name, std::u16string_view text) {
  FormControl& box = add(ControlKind::TextBox, std::move(name), {});
  box.text_ = text;
  return box;
}

FormControl& Form::add_list(std::u16string name, std::initializer_list<std::u16string_view> items) {
  FormControl& list = add(ControlKind::ComboBox, std::move(name), {});
  for (const std::u16string_view item : items) list.AddItem(item);
  return list;
}

FormControl& Form::add_combo_box(std::u16string name, std::initializer_list<std::u16string_view> items) {
  FormControl& box = add_list(std::move(name), items);
  box.takes_text_ = true;
  return box;
}

FormControl& Form::add_list_box(std::u16string name, std::initializer_list<std::u16string_view> items) {
  FormControl& list = add(ControlKind::ListBox, std::move(name), {});
  for (const std::u16string_view item : items) list.AddItem(item);
  return list;
}

FormControl& Form::add_list_view(std::u16string name, std::vector<ListColumn> columns) {
  FormControl& list = add(ControlKind::ListView, std::move(name), {});
  list.list_view_ = std::make_unique<ListView>(std::move(columns));
  return list;
}

FormControl& Form::add_check_box(std::u16string name, std::u16string caption) {
  return add(ControlKind::CheckBox, std::move(name), std::move(caption));
}

FormControl& Form::add_button(std::u16string name, std::u16string caption) {
  return add(ControlKind::CommandButton, std::move(name), std::move(caption));
}

FormControl& Form::add_picture(std::u16string name) {
  return add(ControlKind::PictureBox, std::move(name), {});
}

FormControl& Form::add_closing_button(std::u16string name, std::u16string caption) {
  controls_.push_back(std::unique_ptr<FormControl>(
      new FormControl(*this, ControlKind::CommandButton, std::move(name), std::move(caption), nullptr)));
  closing_buttons_.push_back(controls_.back().get());
  return *controls_.back();
}

float Form::Width() const {
  return std::max(width_, static_cast<float>(least_width_ > 0 ? least_width_ : usual_form_width));
}

float Form::Height() const {
  return std::max({height_, static_cast<float>(least_height_), height_of_rows(*this)});
}

// --- controls ---

FormControl* Form::find(std::u16string_view name) const {
  for (const auto& control : controls_)
    if (equals_ignoring_ascii_case(control->Name(), name)) return control.get();
  return nullptr;
}

FormControl& Form::Controls(std::u16string_view name) const {
  if (FormControl* control = find(name)) return *control;
  throw RuntimeError(no_such_control, u"Control '" + std::u16string(name) + u"' not found");
}

// --- showing ---

void Form::Hide() {
  if (!std::exchange(visible_, false)) return;
  const std::vector<FormObserver*> observers = observers_;
  for (FormObserver* observer : observers) observer->form_hidden(*this);
}

void Form::activate() {
  if (handler_ && visible_) handler_->Activate(*this);
}

void Form::paint() {
  if (handler_ && visible_) handler_->Paint(*this);
}

void Form::SetFocus(FormControl& control) {
  if (!control.reachable()) return;
  active_ = &control;
  const std::vector<FormObserver*> observers = observers_;
  for (FormObserver* observer : observers) observer->focus_wanted(control);
}

void Form::cancel() {
  given_up_ = true;
  if (!cancel_button_ || !attempt([this] {
        if (!cancel_button_->click()) Hide();
      }))
    Hide();
}

void Form::add_observer(FormObserver& observer) { observers_.push_back(&observer); }
void Form::remove_observer(FormObserver& observer) { std::erase(observers_, &observer); }

void Forms::Show(Form& form, WindowHandle owner) {
  if (std::exchange(form.visible_, true))
    throw RuntimeError(shown_already, u"Form already displayed; can't show modally");
  const struct Hidden {
    Form& form;
    ~Hidden() { form.Hide(); }
  } hidden{form};
  form.active_ = nullptr;
  form.given_up_ = false;
  run(form, owner);
}

void Forms::Open(Form& form, WindowHandle owner) {
  if (!std::exchange(form.visible_, true)) open(form, owner);
}

}  // namespace tvx::platform
