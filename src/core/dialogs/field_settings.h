#pragma once

#include "tvx/core/part.h"

namespace tvx::core {

class FormElements;

/// The settings of fields and forms: by the menu of the mouse, and of fields by a double click.
class FieldSettings final : public Part {
 public:
  FieldSettings(Context& context, FormElements& forms) : Part(context), forms_(forms) {}

  /// The field that an element is, or stands in (an OPTION); null if there is none.
  static dom::Ref<dom::Element> field_of(dom::Element* element);
  /// The form around an element, or itself.
  static dom::Ref<dom::Element> form_of(dom::Element* element);

  void edit_field(const dom::Ref<dom::Element>& field);
  void edit_form(const dom::Ref<dom::Element>& form);

 private:
  FormElements& forms_;
};

}  // namespace tvx::core
