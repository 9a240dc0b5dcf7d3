#pragma once

#include <string_view>

#include "tvx/core/part.h"

namespace tvx::core {

/// Forms and their fields, put into the document and set.
class FormElements final : public Part {
 public:
  explicit FormElements(Context& context) : Part(context) {}

  /// The settings of the document's first form; without one the whole body becomes a form before.
  void insert_Form();
  /// What the button of the forms' toolbar puts in, by its key in small letters. False for another key.
  bool insert_field(std::u16string_view key);
  /// The settings of that form.
  void edit_form(const dom::Ref<dom::Element>& form) { edit(form, false); }

 private:
  void edit(const dom::Ref<dom::Element>& form, bool wrapped);
  bool wrap_body();
  void remove_form(dom::Element& form);
};

}  // namespace tvx::core
