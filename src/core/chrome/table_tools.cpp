#include "tvx/core/chrome/table_tools.h"

#include <algorithm>
#include <optional>
#include <span>
#include <unordered_set>

#include "tvx/base/error.h"
#include "tvx/base/failure_of.h"
#include "tvx/base/strings.h"
#include "tvx/browser/browser.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/editing/tables/selected_cells.h"
#include "tvx/editing/tables/table_caret.h"
#include "tvx/platform/menu.h"
#include "tvx/tables/cell_dialog.h"
#include "tvx/tables/structure.h"
#include "tvx/tables/table_dialog.h"
#include "tvx/tables/table_html.h"

namespace tvx::core {
namespace {

using Operation = TableOperation;

/// The sections of the language file.
constexpr std::u16string_view table_section = u"TableSettings", cell_section = u"TableCellSettings",
                              row_section = u"TableRowSettings";

constexpr Operation part_operations[] = {
    {u"MnuCellRowActionsInsertRowAbove", u"Insert Row", tables::insert_row_above},
    {u"MnuCellRowActionsInsertRowBelow", u"Insert Row", tables::insert_row_below},
    {u"MnuCellRowActionsMergeCellLeft", u"Merge Cells", tables::merge_cell_left},
    {u"MnuCellRowActionsMergeCellRight", u"Merge Cells", tables::merge_cell_right},
    {u"MnuCellRowActionsInsertCellBefore", u"Insert Cell", tables::insert_cell_before},
    {u"MnuCellRowActionsInsertCellAfter", u"Insert Cell", tables::insert_cell_after},
};
constexpr Operation delete_cell{u"", u"Delete Cell", tables::delete_cell},
    delete_row{u"", u"Delete Row", tables::delete_row};

constexpr Operation table_operations[] = {
    {u"Insert Row", u"Insert Row", tables::append_row},
    {u"Delete Row", u"Delete Row", tables::delete_last_row},
    {u"Insert Column", u"Insert Column", tables::append_column},
    {u"Delete Column", u"Delete Column", tables::delete_last_column},
};

const Operation* find_operation(std::span<const Operation> operations, std::u16string_view name) {
  const auto found = std::ranges::find(operations, name, &Operation::name);
  return found == operations.end() ? nullptr : &*found;
}

std::unordered_set<const dom::Node*> tables_of(const dom::Document& document) {
  std::unordered_set<const dom::Node*> tables;
  for (const dom::Node* node = &document; node; node = dom::next_in_order(*node))
    if (node->is(dom::Tag::Table)) tables.insert(node);
  return tables;
}

/// The first cell of a table that isn't among those.
dom::Node* first_new_cell(dom::Document& document, const std::unordered_set<const dom::Node*>& known) {
  const dom::Node* table = nullptr;
  for (dom::Node* node = &document; node; node = dom::next_in_order(*node)) {
    if (node->is(dom::Tag::Table) && !known.contains(node)) table = node;
    if (table && node->is(dom::Tag::Td)) return node;
  }
  return nullptr;
}

void set_text(platform::FormControl& field, const std::u16string& text) {
  if (field.kind() != platform::ControlKind::ComboBox) return field.set_Text(text);
  field.set_ListIndex(-1);
  for (int i = 0; i < field.ListCount(); ++i)
    if (field.List(i) == text) field.set_ListIndex(i);
}

/// Nothing of the cell that was shown before stays in a list that has no such value.
void show_cell(tables::CellDialog& dialog, const dom::Ref<dom::Element>& cell) {
  for (const auto& control : dialog.form().controls())
    if (control->kind() == platform::ControlKind::ComboBox) set_text(*control, u"");
  dialog.set_oCell(cell);
  dialog.form().Controls(u"txtStyle").set_Text(dom::style::InlineStyle(*cell).css_text());
}

std::vector<std::u16string> texts_of(const platform::Form& form) {
  std::vector<std::u16string> texts;
  for (const auto& control : form.controls()) {
    const bool is_field = control->kind() == platform::ControlKind::TextBox ||
                          control->kind() == platform::ControlKind::ComboBox;
    texts.push_back(is_field ? control->Text() : std::u16string());
  }
  return texts;
}

}  // namespace

dom::Ref<dom::Element> TableTools::current_element() const {
  if (dom::Element* element = highlight_.element()) return element;
  throw RuntimeError(errors::object_not_set, u"There is no current element");
}

void TableTools::insert_table() {
  const KeepAlive alive(context_);
  tables::TableDialog dialog(surroundings().dialogs);
  const bool for_this_document = attempt([&] { context_.show_dialog(dialog.form(), table_section); });
  if (!for_this_document || dialog.table_html().empty()) return;
  put_in(dialog.table_html());
}

void TableTools::insert_table(int rows, int columns) {
  const KeepAlive alive(context_);
  attempt([&] {
    const std::u16string height = to_text(rows), width = to_text(columns);
    put_in(tables::html_of(
        {.rows = height, .columns = width, .width = u"100", .cell_spacing = u"0", .border = u"1"}));
  });
}

// An element that is selected as a whole refuses the text; the document counts as changed all the same.
void TableTools::put_in(const std::u16string& html) {
  attempt([&] {
    const auto kept = browser().Document();
    editing::Editor& editor = browser_document().editor();
    const auto known = tables_of(editor.document());
    editing::create_text_range(editor).paste_html(html);
    // Who makes a table fills it.
    if (dom::Node* cell = first_new_cell(editor.document(), known))
      browser_document().select([&](editing::Selection& selection) { selection.collapse({cell, 0}); });
  });
  mark_changed();
}

// One item deletes cells and rows. Which of them, tells its caption, whatever language that is in.
void TableTools::act_on_cell_or_row(const platform::Menu& item) {
  attempt([&] {
    const Operation* operation = find_operation(part_operations, item.Name());
    if (!operation) operation = item.Caption() == labels_.delete_cell ? &delete_cell : &delete_row;
    operate(*operation, current_element());
  });
  mark_changed();
}

void TableTools::act_after_menu(const std::u16string& pending) {
  const std::u16string command = pending;
  if (command.empty()) return;
  const dom::Ref<dom::Element> table = current_element();
  if (const Operation* operation = find_operation(table_operations, command))
    operate(*operation, table);
  else
    edit_settings(*table);
  mark_changed();
}

// A caret that stood in what went is brought into a cell that is left, in the same step. That is news of the
// selection, but the current element stays the one that was cut at, even if it has left the document.
void TableTools::operate(const Operation& operation, const dom::Ref<dom::Element>& part) {
  const auto document = DOM();
  if (!document) throw RuntimeError(errors::object_not_set, u"There is no document");
  std::optional<RuntimeError> failure;
  document->select([&](editing::Selection&) {
    const dom::UndoStep step(document->tree().journal(), operation.label);
    failure = failure_of([&] { operation.act(*part); });
    editing::leave_table_parts(document->editor());
  });
  make_current(part);
  if (failure) throw *failure;
}

// The mark follows also where the user cancelled: the table's menu doesn't ask.
void TableTools::edit_settings(dom::Element& element) {
  dom::TableObject table(element);
  tables::TableDialog dialog(surroundings().dialogs);
  dialog.show_settings_of(table);
  context_.show_dialog(dialog.form(), table_section);
  if (!dialog.cancelled()) dialog.write_settings_to(table);
}

bool TableTools::edit_properties_of(const dom::Ref<dom::Element>& element) {
  if (element->is(dom::Tag::Td) || element->is(dom::Tag::Tr)) return edit_cell_or_row(element);
  return element->is(dom::Tag::Table) && edit_settings_and_style(element, tables::ColoursOfCells::AsTheTable);
}

void TableTools::edit_selected_cells() {
  const KeepAlive alive(context_);
  const auto part = editing::selected_part(document().editor());
  if (!part) return;
  std::vector<dom::Ref<dom::Element>> cells = editing::selected_cells(document().editor());
  if (cells.empty()) cells.push_back(part->cell);
  without_border([&] { return edit_cells(cells); });
}

void TableTools::edit_table_around() {
  const KeepAlive alive(context_);
  const auto part = editing::selected_part(document().editor());
  if (!part) return;
  without_border(
      [&] { return edit_settings_and_style(part->table, tables::ColoursOfCells::KeptWhereUnchanged); });
}

// The style that a dialog shows and writes is the document's: the border of the current element is in it.
void TableTools::without_border(const std::function<bool()>& edit) {
  attempt([&] { highlight_.restore(); });
  const bool changed = edit();
  highlight_.set_element(highlight_.element());
  if (changed) mark_changed();
}

bool TableTools::edit_settings_and_style(const dom::Ref<dom::Element>& element,
                                         tables::ColoursOfCells colours) {
  dom::TableObject table(*element);
  dom::style::InlineStyle style(*element);
  tables::TableDialog dialog(surroundings().dialogs);
  platform::FormControl& style_text = dialog.form().Controls(u"txtStyle");
  dialog.show_settings_of(table);
  style_text.set_Text(style.css_text());
  if (!attempt([&] { context_.show_dialog(dialog.form(), table_section); }) || dialog.cancelled())
    return false;
  attempt([&] {
    const dom::UndoStep step(dom::document_of(*element).journal(), u"Table Properties");
    dialog.write_settings_to(table, colours);
    style.set_css_text(style_text.Text());
  });
  return true;
}

bool TableTools::edit_cell_or_row(const dom::Ref<dom::Element>& element) {
  const bool is_row = element->is(dom::Tag::Tr);
  dom::style::InlineStyle style(*element);
  tables::CellDialog dialog(surroundings().dialogs);
  platform::FormControl& style_text = dialog.form().Controls(u"txtStyle");
  is_row ? dialog.set_oRow(element) : dialog.set_oCell(element);
  style_text.set_Text(style.css_text());
  const std::u16string_view section = is_row ? row_section : cell_section;
  if (!attempt([&] { context_.show_dialog(dialog.form(), section); }) || dialog.booCancel()) return false;
  attempt([&] {
    const dom::UndoStep step(dom::document_of(*element).journal(),
                             is_row ? u"Row Properties" : u"Cell Properties");
    is_row ? dialog.oRow() : dialog.oCell();
    style.set_css_text(style_text.Text());
  });
  if (dom::is_connected(*element)) make_current(element);
  return true;
}

bool TableTools::edit_cells(const std::vector<dom::Ref<dom::Element>>& cells) {
  tables::CellDialog dialog(surroundings().dialogs);
  show_cell(dialog, cells.front());
  const std::vector<std::u16string> before = texts_of(dialog.form());
  if (!attempt([&] { context_.show_dialog(dialog.form(), cell_section); }) || dialog.booCancel())
    return false;
  const std::vector<std::u16string> after = texts_of(dialog.form());
  attempt([&] {
    const dom::UndoStep step(dom::document_of(*cells.front()).journal(), u"Cell Properties");
    for (const dom::Ref<dom::Element>& cell : cells) {
      show_cell(dialog, cell);
      for (std::size_t i = 0; i < after.size(); ++i)
        if (after[i] != before[i]) set_text(*dialog.form().controls()[i], after[i]);
      dialog.oCell();
      dom::style::InlineStyle(*cell).set_css_text(dialog.form().Controls(u"txtStyle").Text());
    }
  });
  return true;
}

// Meanwhile the selection may have made another element the current one. Of another document's nothing is
// kept.
void TableTools::make_current(const dom::Ref<dom::Element>& element) {
  if (element == highlight_.element() || !DOM()) return;
  if (element->document() != &DOM()->tree()) return;
  attempt([&] { highlight_.restore(); });
  highlight_.set_element(element);
}

}  // namespace tvx::core
