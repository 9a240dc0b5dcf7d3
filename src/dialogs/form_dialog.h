#pragma once

#include "tvx/dom/objects/form.h"
#include "tvx/platform/form.h"

namespace tvx::dialogs {

/// `frmForm`: the attributes of a form, or its end.
class FormDialog final : private platform::FormHandler {
 public:
  explicit FormDialog(dom::Element& form_element);

  platform::Form& form() { return form_; }
  bool cancelled() const { return cancelled_; }
  bool removes() const { return removes_; }
  /// Writes the fields to the form. What reads already as it stands in its field isn't written: no attribute
  /// comes that says what is so without it.
  void write() const;

 private:
  void Click(platform::FormControl& button) override;
  void Change(platform::FormControl& control) override;
  void Paint(platform::Form&) override;
  void offer_encodings();

  dom::Ref<dom::Element> element_;
  platform::Form form_{u"frmForm", u"Form Properties"};
  bool cancelled_ = false, removes_ = false;
};

}  // namespace tvx::dialogs
