#include "tvx/qt/reading/table_accessible.h"

#include <algorithm>
#include <set>

#include "tvx/browser/html_document.h"
#include "tvx/editing/reading/accessible_kind.h"
#include "tvx/editing/tables/selected_cells.h"

namespace tvx::qt {

using editing::AccessibleKind;
using editing::GridCell;
using editing::GridPart;

ElementAccessible* make_accessible(PageReading& page, dom::Element& element) {
  switch (editing::accessible_kind(element)) {
    case AccessibleKind::Table: return new TableAccessible(page, element);
    case AccessibleKind::Cell:
    case AccessibleKind::ColumnHeader:
    case AccessibleKind::RowHeader:
      // One without a table is a block like others.
      if (editing::table_of(element)) return new CellAccessible(page, element);
      break;
    default: break;
  }
  return new ElementAccessible(page, element);
}

// --- tables ---

void* TableAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableInterface)
    return isValid() ? static_cast<QAccessibleTableInterface*>(this) : nullptr;
  return ElementAccessible::interface_cast(type);
}

QAccessibleInterface* TableAccessible::caption() const {
  for (int i = 0; i < childCount(); ++i) {
    auto* const first = dynamic_cast<CellAccessible*>(child(i));
    if (first) return nullptr;  // captions come before the cells
    if (child(i)->role() == QAccessible::Paragraph) return child(i);
  }
  return nullptr;
}

QAccessibleInterface* TableAccessible::cellAt(int row, int column) const {
  if (row < 0 || column < 0 || row >= rowCount() || column >= columnCount()) return nullptr;
  const GridCell* found = grid().at(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
  return found ? page().interface_of(*found->cell) : nullptr;
}

int TableAccessible::rowCount() const { return static_cast<int>(grid().rows()); }
int TableAccessible::columnCount() const { return static_cast<int>(grid().columns()); }

QAccessibleInterface* TableAccessible::header_of(int row, int column, QAccessible::Role role) const {
  const bool up = role == QAccessible::ColumnHeader;
  for (int at = up ? row : column; at >= 0; --at) {
    QAccessibleInterface* const cell = up ? cellAt(at, column) : cellAt(row, at);
    if (cell && cell->role() == role) return cell;
  }
  return nullptr;
}

QString TableAccessible::columnDescription(int column) const {
  QAccessibleInterface* const header = header_of(rowCount() - 1, column, QAccessible::ColumnHeader);
  return header ? header->text(QAccessible::Name) : QString();
}

QString TableAccessible::rowDescription(int row) const {
  QAccessibleInterface* const header = header_of(row, columnCount() - 1, QAccessible::RowHeader);
  return header ? header->text(QAccessible::Name) : QString();
}

QList<QAccessibleInterface*> TableAccessible::selectedCells() const {
  QList<QAccessibleInterface*> cells;
  for (const auto& cell : editing::selected_cells(page().document()->editor()))
    if (editing::table_of(*cell) == element()) cells.append(page().interface_of(*cell));
  return cells;
}

int TableAccessible::selectedCellCount() const { return static_cast<int>(selectedCells().size()); }

QList<int> TableAccessible::selectedRows() const {
  const auto part = editing::selected_part(page().document()->editor());
  QList<int> rows;
  if (!part || !part->several || part->table.get() != element()) return rows;
  if (part->part.left > 0 || part->part.right < grid().columns()) return rows;
  for (std::size_t row = part->part.top; row < part->part.bottom; ++row) rows.append(static_cast<int>(row));
  return rows;
}

QList<int> TableAccessible::selectedColumns() const {
  const auto part = editing::selected_part(page().document()->editor());
  QList<int> columns;
  if (!part || !part->several || part->table.get() != element()) return columns;
  if (part->part.top > 0 || part->part.bottom < grid().rows()) return columns;
  for (std::size_t at = part->part.left; at < part->part.right; ++at) columns.append(static_cast<int>(at));
  return columns;
}

bool TableAccessible::select_part(const GridPart& part) {
  const std::vector<dom::Element*> cells = grid().cells_in(part);
  if (cells.empty()) return false;
  editing::select_cells(page().document()->editor(), *cells.front(), *cells.back());
  return true;
}

bool TableAccessible::selectRow(int row) {
  if (row < 0 || row >= rowCount()) return false;
  const auto at = static_cast<std::size_t>(row);
  return select_part({at, 0, at + 1, grid().columns()});
}

bool TableAccessible::selectColumn(int column) {
  if (column < 0 || column >= columnCount()) return false;
  const auto at = static_cast<std::size_t>(column);
  return select_part({0, at, grid().rows(), at + 1});
}

// --- cells ---

void* CellAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableCellInterface)
    return isValid() && whole() ? static_cast<QAccessibleTableCellInterface*>(this) : nullptr;
  return ElementAccessible::interface_cast(type);
}

TableAccessible* CellAccessible::whole() const {
  dom::Element* const table = isValid() ? editing::table_of(*element()) : nullptr;
  return table ? dynamic_cast<TableAccessible*>(page().interface_of(*table)) : nullptr;
}

QAccessibleInterface* CellAccessible::table() const { return whole(); }

GridCell CellAccessible::here() const {
  dom::Element* const table = isValid() ? editing::table_of(*element()) : nullptr;
  const GridCell* cell = table ? page().grid(*table).of(*element()) : nullptr;
  return cell ? *cell : GridCell{};
}

bool CellAccessible::isSelected() const {
  const auto cells = editing::selected_cells(page().document()->editor());
  return std::ranges::any_of(cells, [this](const auto& cell) { return cell.get() == element(); });
}

QList<QAccessibleInterface*> CellAccessible::columnHeaderCells() const {
  const TableAccessible* table = whole();
  QAccessibleInterface* const header =
      table ? table->header_of(rowIndex() - 1, columnIndex(), QAccessible::ColumnHeader) : nullptr;
  return header ? QList{header} : QList<QAccessibleInterface*>();
}

QList<QAccessibleInterface*> CellAccessible::rowHeaderCells() const {
  const TableAccessible* table = whole();
  QAccessibleInterface* const header =
      table ? table->header_of(rowIndex(), columnIndex() - 1, QAccessible::RowHeader) : nullptr;
  return header ? QList{header} : QList<QAccessibleInterface*>();
}

}  // namespace tvx::qt
