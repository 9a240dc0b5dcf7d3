#include "headless/forms.h"

#include <algorithm>

#include "base/strings.h"

namespace tvx::headless {

using platform::Form;
using platform::FormControl;

namespace {

FormControl& button_called(Form& form, std::u16string_view name) {
  if (FormControl* button = form.find(name)) return *button;
  for (const auto& control : form.controls())
    if (control->kind() == platform::ControlKind::CommandButton && control->Caption() == name)
      return *control;
  return form.Controls(name);  // fails, and says so
}

}  // namespace

void Forms::forget(int id) {
  std::erase_if(expected_, [id](const ExpectedForm& expected) { return expected.id == id; });
}

std::optional<ExpectedForm> Forms::take(const Form& form) {
  const auto place = std::ranges::find_if(expected_, [&](const ExpectedForm& expected) {
    return expected.form.empty() || equals_ignoring_ascii_case(expected.form, form.Name());
  });
  if (place == expected_.end()) return std::nullopt;
  ExpectedForm expected = *place;
  if (--place->times <= 0) expected_.erase(place);
  return expected;
}

void Forms::act(Form& form, const ExpectedForm& expected) {
  if (expected.while_open) expected.while_open(form);
  if (expected.press.empty() || !form.Visible()) return;
  FormControl& button = button_called(form, expected.press);
  if (!button.click())
    throw RuntimeError(errors::invalid_call, u"The button can't be pressed: " + button.Name());
}

void Forms::run(Form& form, platform::WindowHandle owner) {
  // Taken before anything runs: what happens while the form is open may change the expectations.
  const std::optional<ExpectedForm> expected = take(form);
  open_.push_back(&form);
  shown_.push_back(form.Name());
  last_owner_ = owner;
  if (opened_) opened_(form);
  std::optional<RuntimeError> failure;
  try {
    if (expected) act(form, *expected);
  } catch (const RuntimeError& error) {
    failure = error;
  }
  if (form.Visible()) form.cancel();
  form.Hide();
  std::erase(open_, &form);
  if (closed_) closed_(form, expected ? &*expected : nullptr, failure);
}

}  // namespace tvx::headless
