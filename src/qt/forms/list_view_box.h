#pragma once

#include <QTimer>
#include <QTreeView>
#include <memory>

#include "tvx/platform/form.h"
#include "tvx/platform/list_view.h"
#include "tvx/qt/forms/form_widgets.h"

namespace tvx::qt {

/// A list with columns. The pictures beside its rows are made small on other threads; who fills the list
/// hears which rows are seen. What the user does that may take its time is begun in a turn of the loop of its
/// own: the list may be gone after it.
class ListViewBox final : public QTreeView, private platform::ListViewObserver {
  Q_OBJECT
 public:
  ListViewBox(platform::ListView& list, QWidget* parent, UserAct act);
  ~ListViewBox() override;

  QSize sizeHint() const override;
  void keyboardSearch(const QString& typed) override;

 private:
  class Rows;

  // platform::ListViewObserver
  void row_inserted(int row) override;
  void picture_came(int row, const std::shared_ptr<const std::string>& file) override;
  void rows_replaced() override;
  void columns_changed() override;
  void selection_changed() override;
  void note_changed() override;

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

  void show_columns();
  int width_of(int column) const;
  void show_selection();
  void tell_seen_rows();
  void act_later(std::function<void()> deed);

  platform::ListView& list_;
  const UserAct act_;
  std::unique_ptr<Rows> rows_;
  QTimer seen_;
};

}  // namespace tvx::qt
