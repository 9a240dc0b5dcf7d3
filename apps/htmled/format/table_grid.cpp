#include "htmled/format/table_grid.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "htmled/counted.h"
#include "htmled/window.h"
#include "tvx/htmled_widget.h"

namespace tvx::htmled {
namespace {

constexpr int most_rows = 8, most_columns = 10, cell = 22, gap = 2, margin = 8;

}  // namespace

TableGrid::TableGrid(QWidget* parent) : QWidget(parent) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(tr("Size of the new table"));
}

QSize TableGrid::sizeHint() const {
  return {2 * margin + most_columns * (cell + gap),
          2 * margin + most_rows * (cell + gap) + fontMetrics().height() + gap};
}

void TableGrid::point_at(int rows, int columns) {
  rows = std::clamp(rows, 0, most_rows);
  columns = std::clamp(columns, 0, most_columns);
  if (rows == rows_ && columns == columns_) return;
  rows_ = rows;
  columns_ = columns;
  update();
}

void TableGrid::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QPalette& colours = palette();
  QColor line = colours.color(QPalette::WindowText);
  line.setAlphaF(0.45F);
  QColor chosen = colours.color(QPalette::Highlight);
  chosen.setAlphaF(0.45F);
  for (int row = 0; row < most_rows; ++row)
    for (int column = 0; column < most_columns; ++column) {
      const int from_left = mirrored() ? most_columns - 1 - column : column;
      const QRect box(margin + from_left * (cell + gap), margin + row * (cell + gap), cell, cell);
      const bool within = row < rows_ && column < columns_;
      painter.fillRect(box, within ? chosen : colours.color(QPalette::Base));
      painter.setPen(within ? colours.color(QPalette::Highlight) : line);
      painter.drawRect(box.adjusted(0, 0, -1, -1));
    }
  painter.setPen(colours.color(QPalette::WindowText));
  const QRect words(margin, margin + most_rows * (cell + gap), width() - 2 * margin, fontMetrics().height());
  painter.drawText(words, Qt::AlignCenter,
                   rows_ > 0 && columns_ > 0
                       ? tr("%1, %2").arg(counted(tr("%1 row|%1 rows"), qulonglong(rows_)),
                                          counted(tr("%1 column|%1 columns"), qulonglong(columns_)))
                       : tr("Draw the table's size"));
}

void TableGrid::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint() - QPoint(margin, margin);
  const int column = at.x() / (cell + gap) + 1;
  point_at(at.y() / (cell + gap) + 1, mirrored() ? most_columns + 1 - column : column);
}

void TableGrid::mouseReleaseEvent(QMouseEvent* event) {
  mouseMoveEvent(event);
  if (rows_ > 0 && columns_ > 0) emit chosen(rows_, columns_);
}

void TableGrid::keyPressEvent(QKeyEvent* event) {
  const int onward = mirrored() ? -1 : 1;
  const int rows = std::max(rows_, 1), columns = std::max(columns_, 1);
  switch (event->key()) {
    case Qt::Key_Right: return point_at(rows, std::max(columns_ + onward, 1));
    case Qt::Key_Left: return point_at(rows, std::max(columns_ - onward, 1));
    case Qt::Key_Down: return point_at(rows_ + 1, columns);
    case Qt::Key_Up: return point_at(std::max(rows_ - 1, 1), columns);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (rows_ > 0 && columns_ > 0) emit chosen(rows_, columns_);
      return;
    default: QWidget::keyPressEvent(event);
  }
}

void TableGrid::leaveEvent(QEvent*) { point_at(0, 0); }

void fill_table_menu(Window& window, QMenu& menu) {
  auto* grid = new TableGrid;
  auto* holder = new QWidgetAction(&menu);
  holder->setObjectName(QStringLiteral("table-grid"));
  holder->setDefaultWidget(grid);
  menu.addAction(holder);
  QObject::connect(&menu, &QMenu::aboutToShow, grid, [&window, &menu, grid, holder] {
    const QAction* table = window.editor().action(qt::HTMLedWidget::Action::Table);
    holder->setEnabled(table->isEnabled());
    menu.setActiveAction(holder);
    grid->setFocus();
  });
  QObject::connect(grid, &TableGrid::chosen, &window, [&window](int rows, int columns) {
    // Its own menu, and those that it was opened from.
    while (QWidget* open = QApplication::activePopupWidget())
      if (!open->close()) break;
    qt::HTMLedWidget& editor = window.editor();
    editor.finish_input();
    editor.insert_table(rows, columns);
    editor.setFocus(Qt::OtherFocusReason);
  });
}

}  // namespace tvx::htmled
