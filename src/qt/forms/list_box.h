#pragma once

#include <QListWidget>

#include "tvx/platform/form.h"
#include "tvx/qt/forms/form_widgets.h"

namespace tvx::qt {

/// A list that stays open. Each press on an item is told, also on the one that is chosen already.
class ListBox final : public QListWidget {
 public:
  ListBox(platform::FormControl& control, QWidget* parent, UserAct act);

  /// The items and the choice of the model.
  void show_items();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void choose(int row);

  platform::FormControl& control_;
  const UserAct act_;
};

}  // namespace tvx::qt
