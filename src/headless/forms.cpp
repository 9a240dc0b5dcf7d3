#include "tvx/headless/forms.h"

#include <algorithm>

#include "tvx/base/failure_of.h"
#include "tvx/base/strings.h"
#include "tvx/headless/expected.h"
#include "tvx/headless/form_keys.h"

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

void Forms::forget(int id) { forget_expected(expected_, id); }

std::optional<ExpectedForm> Forms::take(const Form& form) {
  return take_expected(expected_, [&](const ExpectedForm& expected) {
    return expected.form.empty() || equals_ignoring_ascii_case(expected.form, form.Name());
  });
}

void Forms::act(Form& form, const ExpectedForm& expected) {
  if (expected.while_open) expected.while_open(form);
  if (expected.press.empty() || !form.Visible()) return;
  FormControl& button = button_called(form, expected.press);
  if (!button.click())
    throw RuntimeError(errors::invalid_call, u"The button can't be pressed: " + button.Name());
}

namespace {

void require_reachable(const FormControl& control) {
  if (!control.reachable())
    throw RuntimeError(errors::invalid_call, u"The control can't be changed: " + control.Name());
}

}  // namespace

void fill(FormControl& control, std::u16string_view text) {
  require_reachable(control);
  if (control.kind() == platform::ControlKind::ListBox) {
    for (int index = 0; index < control.ListCount(); ++index)
      if (control.List(index) == text) return void(control.choose(index));
    return;
  }
  if (control.kind() == platform::ControlKind::ListView)
    return control.list_view().select(control.list_view().find(text));
  control.reports_keys() ? type_over(control, text) : control.set_Text(text);
}

void tick(FormControl& control, bool ticked) {
  require_reachable(control);
  if (control.Value() != ticked) control.click();
}

void Forms::run(Form& form, platform::WindowHandle owner) {
  // Taken before anything runs: what happens while the form is open may change the expectations.
  const std::optional<ExpectedForm> expected = take(form);
  open_.push_back(&form);
  shown_.push_back(form.Name());
  last_owner_ = owner;
  if (FormControl* first = first_stop(form)) form.SetFocus(*first);
  form.paint();
  if (opened_) opened_(form);
  const std::optional<RuntimeError> not_active = failure_of([&] { form.activate(); });
  std::optional<RuntimeError> failure = failure_of([&] {
    if (expected) act(form, *expected);
  });
  if (!failure) failure = not_active;
  if (form.Visible()) form.cancel();
  form.Hide();
  std::erase(open_, &form);
  if (closed_) closed_(form, expected ? &*expected : nullptr, failure);
}

// A person would press while the work goes on; here it happens at once, and the work meets it where it looks.
void Forms::open(platform::Form& form, platform::WindowHandle owner) {
  const std::optional<ExpectedForm> expected = take(form);
  open_.push_back(&form);
  shown_.push_back(form.Name());
  last_owner_ = owner;
  beside_.push_back({&form, expected, {}});
  form.add_observer(*this);
  if (opened_) opened_(form);
  const std::optional<RuntimeError> failure = failure_of([&] {
    if (expected) act(form, *expected);
  });
  const auto place = std::ranges::find(beside_, &form, &Beside::form);
  if (place != beside_.end()) place->failure = failure;
}

void Forms::form_hidden(platform::Form& form) {
  const auto place = std::ranges::find(beside_, &form, &Beside::form);
  if (place == beside_.end()) return;
  form.remove_observer(*this);
  const Beside ended = *place;
  if (closed_) closed_(form, ended.expected ? &*ended.expected : nullptr, ended.failure);
  std::erase_if(beside_, [&](const Beside& other) { return other.form == &form; });
  std::erase(open_, &form);
}

bool Forms::is_beside(const platform::Form& form) const {
  return std::ranges::find(beside_, &form, &Beside::form) != beside_.end();
}

Forms::~Forms() {
  for (const Beside& beside : beside_) beside.form->remove_observer(*this);
}

}  // namespace tvx::headless
