#pragma once

#include <string>

#include "tvx/dom/objects/table.h"
#include "tvx/platform/form.h"

namespace tvx::platform {
class CommonDialogs;
}

namespace tvx::tables {

/// What becomes of the colours of a table's cells: they are the table's from now on, or those that differ
/// from it stay where the user has left the table's own alone.
enum class ColoursOfCells : bool { AsTheTable, KeptWhereUnchanged };

/// `Frminserttable`: describes a new table, or changes one that is there. Whoever shows it reads afterwards
/// what has come of it.
class TableDialog final : private platform::FormHandler {
 public:
  explicit TableDialog(platform::CommonDialogs& dialogs);

  platform::Form& form() { return form_; }
  /// The user left it by Cancel.
  bool cancelled() const { return cancelled_; }
  /// The new table's markup; empty until the dialog is confirmed.
  const std::u16string& table_html() const { return table_html_; }

  /// Fills the fields from a table; what is for new tables and their cells can't be reached any more.
  void show_settings_of(const dom::TableObject& table);
  /// Writes the fields to a table. The two colours go to every cell as well. One undo step.
  void write_settings_to(dom::TableObject& table, ColoursOfCells colours = ColoursOfCells::AsTheTable) const;

 private:
  void add_table_frame();
  void add_cell_frame();
  void add_number(std::u16string label, std::u16string caption, std::u16string box, std::u16string_view text);
  void Click(platform::FormControl& button) override;
  void Change(platform::FormControl& control) override;
  void apply();
  void check();
  const std::u16string& text(std::u16string_view box) const;

  platform::CommonDialogs& dialogs_;
  platform::Form form_{u"Frminserttable", u"Table Properties"};
  std::u16string table_html_;
  bool cancelled_ = false, of_a_table_ = false;
};

}  // namespace tvx::tables
