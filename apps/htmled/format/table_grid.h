#pragma once

#include <QWidget>
#include <QWidgetAction>

class QMenu;

namespace tvx::htmled {

/// Draws the size of a new table: the mouse over a grid, or the arrows and Return.
class TableGrid final : public QWidget {
  Q_OBJECT
 public:
  explicit TableGrid(QWidget* parent = nullptr);
  QSize sizeHint() const override;

 signals:
  void chosen(int rows, int columns);

 protected:
  void paintEvent(QPaintEvent*) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void leaveEvent(QEvent*) override;

 private:
  void point_at(int rows, int columns);
  bool mirrored() const { return layoutDirection() == Qt::RightToLeft; }
  int rows_ = 0, columns_ = 0;
};

class Window;
/// A submenu's content: the grid, for the editor in front.
void fill_table_menu(Window& window, QMenu& menu);

}  // namespace tvx::htmled
