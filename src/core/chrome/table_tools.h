#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "tvx/core/part.h"
#include "tvx/dom/node.h"

namespace tvx::platform {
class Menu;
}
namespace tvx::tables {
enum class ColoursOfCells : bool;
}

namespace tvx::core {

class SelectionHighlight;

/// One item's work on a table.
struct TableOperation {
  std::u16string_view name;   // of the item, or what it leaves pending
  std::u16string_view label;  // of the undo step
  void (*act)(dom::Element& part);
};

/// What the control does with tables: from a menu's item, a button or a host's call to the work in tables/,
/// with the dialogs in between.
class TableTools final : public Part {
 public:
  TableTools(Context& context, SelectionHighlight& highlight, const TableLabels& labels)
      : Part(context), highlight_(highlight), labels_(labels) {}

  /// Asks for a table and puts it in the place of the selection.
  void insert_table();
  /// One as wide as the page.
  void insert_table(int rows, int columns);
  /// An item of the cell and row submenu; the current element is the cell or row. Marks the document,
  /// whatever could be done.
  void act_on_cell_or_row(const platform::Menu& item);
  /// What an item of the table's menu has left pending; "" does nothing. Throws at the first failing step,
  /// and then there is no mark.
  void act_after_menu(const std::u16string& command);
  /// The dialog for a cell, a row or a table; nothing for any other element. Whether the user confirmed.
  bool edit_properties_of(const dom::Ref<dom::Element>& element);
  /// The dialog for the caret's cell or the selected cells. It shows the first one; what the user changes
  /// there goes to all of them, and what differs among them otherwise stays.
  void edit_selected_cells();
  /// The dialog for the table that the selection is in. Cells keep their colours unless the user changes
  /// those of the table.
  void edit_table_around();

 private:
  void put_in(const std::u16string& html);
  dom::Ref<dom::Element> current_element() const;
  void operate(const TableOperation& operation, const dom::Ref<dom::Element>& part);
  void edit_settings(dom::Element& table);
  bool edit_settings_and_style(const dom::Ref<dom::Element>& table, tables::ColoursOfCells colours);
  bool edit_cells(const std::vector<dom::Ref<dom::Element>>& cells);
  bool edit_cell_or_row(const dom::Ref<dom::Element>& element);
  void without_border(const std::function<bool()>& edit);
  void make_current(const dom::Ref<dom::Element>& element);

  SelectionHighlight& highlight_;
  const TableLabels& labels_;
};

}  // namespace tvx::core
