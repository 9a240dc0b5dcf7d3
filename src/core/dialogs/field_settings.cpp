#include "tvx/core/dialogs/field_settings.h"

#include "tvx/base/error.h"
#include "tvx/core/dialogs/form_elements.h"
#include "tvx/dialogs/field_dialog.h"
#include "tvx/dom/journal.h"

namespace tvx::core {

dom::Ref<dom::Element> FieldSettings::field_of(dom::Element* element) {
  for (; element; element = element->parent_element())
    if (dialogs::is_field(*element)) return element;
  return {};
}

dom::Ref<dom::Element> FieldSettings::form_of(dom::Element* element) {
  for (; element; element = element->parent_element())
    if (element->is(dom::Tag::Form)) return element;
  return {};
}

void FieldSettings::edit_field(const dom::Ref<dom::Element>& field) {
  const KeepAlive alive(context_);
  dialogs::FieldDialog dialog(*field);
  if (!attempt([&] { context_.show_dialog(dialog.form(), u"FieldSettings"); }) || !dialog.confirmed()) return;
  dialog.write();
  mark_changed();
}

void FieldSettings::edit_form(const dom::Ref<dom::Element>& form) { forms_.edit_form(form); }

}  // namespace tvx::core
