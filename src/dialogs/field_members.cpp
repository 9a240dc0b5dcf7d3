#include "tvx/dialogs/field_members.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/form.h"
#include "tvx/dom/objects/option.h"
#include "tvx/dom/objects/reflection.h"

namespace tvx::dialogs {
namespace {

using dom::Element;
using dom::FieldObject;
using platform::ControlKind;
using platform::Form;
using platform::FormControl;

const dom::Name columns(u"cols"), rows(u"rows"), disabled(u"disabled"), multiple(u"multiple");

struct TextField {
  std::u16string_view control;
  std::u16string (*read)(Element& field);
  void (*write)(Element& field, std::u16string_view text);
};

template <const dom::Name& name>
std::u16string attribute(Element& field) {
  return dom::reflected_text(field, name);
}
template <const dom::Name& name>
void set_attribute(Element& field, std::u16string_view text) {
  dom::set_or_remove(field, name, trimmed(text));
}

// "on" is what a box sends that names no value: nothing is written there.
std::u16string value(Element& field) {
  const bool written = field.is(dom::Tag::Textarea) || field.has_attribute(dom::names::value);
  return written ? FieldObject(field).value() : std::u16string();
}
void set_value(Element& field, std::u16string_view text) {
  if (field.is(dom::Tag::Textarea)) return FieldObject(field).set_value(text);
  dom::set_or_remove(field, dom::names::value, text);
}

constexpr TextField text_fields[] = {
    {u"cboType", [](Element& field) { return FieldObject(field).type(); },
     [](Element& field, std::u16string_view text) { FieldObject(field).set_type(text); }},
    {u"txtName", attribute<dom::names::name>, set_attribute<dom::names::name>},
    {u"txtId", attribute<dom::names::id>, set_attribute<dom::names::id>},
    {u"txtValue", value, set_value},
    {u"txtSize", attribute<dom::names::size>, set_attribute<dom::names::size>},
    {u"txtCols", attribute<columns>, set_attribute<columns>},
    {u"txtRows", attribute<rows>, set_attribute<rows>},
};

struct Flag {
  std::u16string_view control;
  bool (*read)(const Element& field);
  void (*write)(Element& field, bool on);
};

template <const dom::Name& name>
bool flag(const Element& field) {
  return dom::reflected_flag(field, name);
}
template <const dom::Name& name>
void set_flag(Element& field, bool on) {
  dom::set_reflected_flag(field, name, on);
}

constexpr Flag flags[] = {
    {u"chkChecked", flag<dom::names::checked>,
     [](Element& field, bool on) { FieldObject(field).set_checked(on); }},
    {u"chkMultiple", flag<multiple>, set_flag<multiple>},
    {u"chkDisabled", flag<disabled>, set_flag<disabled>},
};

FormControl* shown(const Form& form, std::u16string_view name) {
  FormControl& control = form.Controls(name);
  return control.Visible() ? &control : nullptr;
}

}  // namespace

void fill_from(Element& field, Form& form) {
  for (const TextField& each : text_fields)
    if (FormControl* control = shown(form, each.control)) {
      const std::u16string text = each.read(field);
      // A type that the list doesn't offer stays the field's, unless another is chosen.
      if (control->kind() == ControlKind::ComboBox && !text.empty()) {
        control->set_Text(text);
        if (control->Text() != text) control->AddItem(text);
      }
      control->set_Text(text);
    }
  for (const Flag& each : flags)
    if (FormControl* control = shown(form, each.control)) control->set_Value(each.read(field));
}

void write_to(Element& field, const Form& form) {
  for (const TextField& each : text_fields)
    if (const FormControl* control = shown(form, each.control))
      attempt([&] {
        if (control->Text() != each.read(field)) each.write(field, control->Text());
      });
  for (const Flag& each : flags)
    if (const FormControl* control = shown(form, each.control))
      attempt([&] {
        if (control->Value() != each.read(field)) each.write(field, control->Value());
      });
}

}  // namespace tvx::dialogs
