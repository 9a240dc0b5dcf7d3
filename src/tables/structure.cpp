#include "tvx/tables/structure.h"

#include "tvx/base/error.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/objects/table.h"
#include "tvx/dom/tree.h"

namespace tvx::tables {

using dom::Element;
using dom::Ref;
using dom::TableCellObject;
using dom::TableObject;
using dom::TableRowObject;
using dom::TableSectionObject;

namespace {

/// What one press of an item does: one step, in which the parts that are held outlive what goes.
class Surgery {
 public:
  Surgery(Element& part, std::u16string_view label)
      : part_(part), document_(dom::document_of(part)), step_(document_->journal(), label) {}

 private:
  Ref<Element> part_;
  Ref<dom::Document> document_;
  dom::UndoStep step_;
};

/// Cuts in one cell or row: what can't be done is skipped.
template <class Steps>
void operate(Element& part, std::u16string_view label, Steps steps) {
  attempt([&] {
    const Surgery surgery(part, label);
    steps();
  });
}

Element& parent_of(Element& part) {
  Element* parent = part.parent_element();
  if (!parent) throw RuntimeError(errors::object_not_set, u"The part stands in nothing");
  return *parent;
}

TableRowObject row_of(Element& cell) { return TableRowObject(parent_of(cell)); }

/// Null for an index that is none.
Ref<Element> cell_at(const TableRowObject& row, std::int32_t index) {
  const std::vector<Element*> cells = row.cells();
  return index < 0 || index >= static_cast<std::int32_t>(cells.size())
             ? nullptr
             : Ref<Element>(cells[static_cast<std::size_t>(index)]);
}

TableCellObject cell_object(const Ref<Element>& cell) {
  if (!cell) throw RuntimeError(errors::object_not_set, u"There is no such cell");
  return TableCellObject(*cell);
}

/// Where a row stands, by the number that its section is addressed with.
struct RowPosition {
  TableSectionObject section;
  TableRowObject row;
  std::int32_t index() const { return in_body() ? row.rowIndex() : row.sectionRowIndex(); }
  bool in_body() const { return section.element().is(dom::Tag::Tbody); }
};

RowPosition position_of(Element& row) { return {TableSectionObject(parent_of(row)), TableRowObject(row)}; }

void fill_with_cells(Element& row, std::size_t count) {
  TableRowObject made(row);
  for (std::size_t i = 0; i < count; ++i) made.insertCell();
}

/// Puts what is in both into `left`.
void join_content(const Ref<Element>& left, const Ref<Element>& right) {
  cell_object(left);
  cell_object(right);
  dom::set_inner_html(*left, dom::inner_html(*left) + dom::inner_html(*right));
}

}  // namespace

// --- on one cell or row ---

void delete_cell(Element& cell) {
  operate(cell, u"Delete Cell", [&] { row_of(cell).deleteCell(TableCellObject(cell).cellIndex()); });
}

void delete_row(Element& row) {
  operate(row, u"Delete Row", [&] {
    RowPosition position = position_of(row);
    position.section.deleteRow(position.index());
  });
}

void insert_row_above(Element& row) {
  operate(row, u"Insert Row Above", [&] {
    RowPosition position = position_of(row);
    const Ref<Element> made = position.section.insertRow(position.index());
    fill_with_cells(*made, position.row.cells().size());
  });
}

void insert_row_below(Element& row) {
  operate(row, u"Insert Row Below", [&] {
    RowPosition position = position_of(row);
    const auto total = static_cast<std::int32_t>(position.section.rows().size());
    const bool at_end = position.row.rowIndex() == total;
    const Ref<Element> made = position.section.insertRow(at_end ? -1 : position.index() + 1);
    fill_with_cells(*made, position.row.cells().size());
  });
}

void insert_cell_before(Element& cell) {
  operate(cell, u"Insert Cell Before", [&] { row_of(cell).insertCell(TableCellObject(cell).cellIndex()); });
}

void insert_cell_after(Element& cell) {
  operate(cell, u"Insert Cell After",
          [&] { row_of(cell).insertCell(TableCellObject(cell).cellIndex() - 1); });
}

void merge_cell_left(Element& cell) {
  operate(cell, u"Merge Cell Left", [&] {
    TableRowObject row = row_of(cell);
    const std::int32_t index = TableCellObject(cell).cellIndex();
    const Ref<Element> left = cell_at(row, index - 1);
    attempt([&] { join_content(left, cell); });
    attempt([&] { row.deleteCell(index); });
    attempt([&] { cell_object(left).set_colSpan(2); });
  });
}

void merge_cell_right(Element& cell) {
  operate(cell, u"Merge Cell Right", [&] {
    attempt([&] {
      TableRowObject row = row_of(cell);
      const Ref<Element> right = cell_at(row, TableCellObject(cell).cellIndex() + 1);
      join_content(cell, right);
      row.deleteCell(cell_object(right).cellIndex());
    });
    attempt([&] { TableCellObject(cell).set_colSpan(2); });
  });
}

// --- at the end of a table ---

void append_row(Element& table) {
  const Surgery surgery(table, u"Insert Row");
  TableObject object(table);
  const std::vector<Element*> present = object.rows();
  const Ref<Element> made = object.insertRow();
  if (present.empty()) throw RuntimeError(errors::object_not_set, u"No row tells the width of the new one");
  fill_with_cells(*made, TableRowObject(*present.front()).cells().size());
}

void delete_last_row(Element& table) {
  const Surgery surgery(table, u"Delete Row");
  TableObject(table).deleteRow();
}

void append_column(Element& table) {
  const Surgery surgery(table, u"Insert Column");
  for (Element* row : TableObject(table).rows()) TableRowObject(*row).insertCell();
}

void delete_last_column(Element& table) {
  const Surgery surgery(table, u"Delete Column");
  for (Element* row : TableObject(table).rows()) TableRowObject(*row).deleteCell();
}

}  // namespace tvx::tables
