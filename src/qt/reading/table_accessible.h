#pragma once

#include "tvx/qt/reading/element_accessible.h"

namespace tvx::qt {

/// The interface for an element: one of a table, of a cell, or of anything else.
ElementAccessible* make_accessible(PageReading& page, dom::Element& element);

/// A table with its rows and columns.
class TableAccessible final : public ElementAccessible, public QAccessibleTableInterface {
 public:
  using ElementAccessible::ElementAccessible;
  void* interface_cast(QAccessible::InterfaceType type) override;

  QAccessibleInterface* caption() const override;
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override;
  int rowCount() const override;
  int columnCount() const override;
  QString columnDescription(int column) const override;
  QString rowDescription(int row) const override;

  int selectedCellCount() const override;
  QList<QAccessibleInterface*> selectedCells() const override;
  int selectedColumnCount() const override { return static_cast<int>(selectedColumns().size()); }
  int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
  QList<int> selectedColumns() const override;
  QList<int> selectedRows() const override;
  bool isColumnSelected(int column) const override { return selectedColumns().contains(column); }
  bool isRowSelected(int row) const override { return selectedRows().contains(row); }
  bool selectRow(int row) override;
  bool selectColumn(int column) override;
  bool unselectRow(int) override { return false; }
  bool unselectColumn(int) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent*) override {}

  /// The nearest header of a row or a column before a cell; null if it has none.
  QAccessibleInterface* header_of(int row, int column, QAccessible::Role role) const;

 private:
  const editing::TableGrid& grid() const { return page().grid(*element()); }
  bool select_part(const editing::GridPart& part);
};

/// A cell, which knows its row and column.
class CellAccessible final : public ElementAccessible, public QAccessibleTableCellInterface {
 public:
  using ElementAccessible::ElementAccessible;
  void* interface_cast(QAccessible::InterfaceType type) override;

  bool isSelected() const override;
  QList<QAccessibleInterface*> columnHeaderCells() const override;
  QList<QAccessibleInterface*> rowHeaderCells() const override;
  int columnIndex() const override { return static_cast<int>(here().column); }
  int rowIndex() const override { return static_cast<int>(here().row); }
  int columnExtent() const override { return static_cast<int>(here().width); }
  int rowExtent() const override { return static_cast<int>(here().height); }
  QAccessibleInterface* table() const override;

 private:
  editing::GridCell here() const;
  TableAccessible* whole() const;
};

}  // namespace tvx::qt
