#pragma once

#include <vector>

#include "tvx/dialogs/option_list.h"
#include "tvx/platform/form.h"

namespace tvx::dialogs {

/// Whether an element is a field of a form that has settings: INPUT, SELECT, TEXTAREA or BUTTON.
bool is_field(const dom::Element& element);

/// `frmField`: what a field of a form is called and holds. Each kind of field has its own rows; those of the
/// others aren't made.
class FieldDialog final : private platform::FormHandler {
 public:
  explicit FieldDialog(dom::Element& field);

  platform::Form& form() { return form_; }
  bool confirmed() const { return confirmed_; }
  /// Writes what has changed to the field. One undo step.
  void write() const;

 private:
  using Control = platform::FormControl;
  void add_rows();
  void add_types(Control& types) const;
  void add_option_rows();
  void hide_rows_of_others();
  Control& add_box(std::u16string label, std::u16string caption, std::u16string box);
  Control& add_number(std::u16string label, std::u16string caption, std::u16string box);
  void fill();
  void Click(Control& control) override;
  void Change(Control& control) override;
  void check();
  void show_rows_of_type();

  // --- options of a list ---
  void show_options(int chosen);
  void show_chosen_option();
  void edit_option(const Control& control);
  bool act_on_options(const Control& button);
  void add_option();
  void move_option(int by);
  EditedOption* chosen_option();

  dom::Ref<dom::Element> field_;
  platform::Form form_{u"frmField", u"Field Settings"};
  std::vector<EditedOption> options_;
  bool filling_ = false, confirmed_ = false;
};

}  // namespace tvx::dialogs
