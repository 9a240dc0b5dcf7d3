#pragma once

#include "tvx/dom/node.h"
#include "tvx/dom/ref.h"
#include "tvx/platform/form.h"

namespace tvx::platform {
class CommonDialogs;
}

namespace tvx::tables {

/// `frmCellProp`: the properties of one cell or one row; which of them, decides what it is given. A step that
/// fails is skipped, and the next one is done.
class CellDialog final : private platform::FormHandler {
 public:
  explicit CellDialog(platform::CommonDialogs& dialogs);

  platform::Form& form() { return form_; }
  /// The user left it by Cancel.
  bool booCancel() const { return booCancel_; }

  /// Takes a cell and fills the fields.
  void set_oCell(dom::Ref<dom::Element> cell);
  /// Writes the fields to the cell, and gives it back. Reading is what applies the dialog, so callers read
  /// only what the user has confirmed. Spans are left alone where no number stands.
  dom::Ref<dom::Element> oCell();
  /// As the two for cells; what only cells have can't be reached then.
  void set_oRow(dom::Ref<dom::Element> row);
  dom::Ref<dom::Element> oRow();

 private:
  platform::FormControl& add_pair(std::u16string label, std::u16string caption, std::u16string box,
                                  platform::NumberRange range);
  void add_list(std::u16string label, std::u16string caption, std::u16string list,
                std::initializer_list<std::u16string_view> items);
  void Click(platform::FormControl& button) override;
  void Change(platform::FormControl& control) override;

  platform::CommonDialogs& dialogs_;
  platform::Form form_{u"frmCellProp", u"Cell Properties"};
  dom::Ref<dom::Element> cell_, row_;
  bool booCancel_ = false;
};

}  // namespace tvx::tables
