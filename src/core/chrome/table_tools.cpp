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
  return element->is(dom::Tag::Table) && edit_settings_and_style(element);
}

bool TableTools::edit_settings_and_style(const dom::Ref<dom::Element>& element) {
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
    dialog.write_settings_to(table);
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

// Meanwhile the selection may have made another element the current one. Of another document's nothing is
// kept.
void TableTools::make_current(const dom::Ref<dom::Element>& element) {
  if (element == highlight_.element() || !DOM()) return;
  if (element->document() != &DOM()->tree()) return;
  attempt([&] { highlight_.restore(); });
  highlight_.set_element(element);
}

}  // namespace tvx::core
