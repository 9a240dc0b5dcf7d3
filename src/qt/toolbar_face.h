#pragma once

#include <QHash>
#include <QWidget>

#include "platform/toolbar.h"

class QToolButton;

namespace tvx::qt {

/// Draws a toolbar's model: buttons in rows that wrap. What it measures goes back into the model.
class ToolbarFace final : public QWidget, private platform::ToolbarObserver {
  Q_OBJECT
 public:
  ToolbarFace(platform::Toolbar& toolbar, QWidget* parent);
  ~ToolbarFace() override;

  /// The height at this width, in pixels; the model is told.
  int measure(int width);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void buttons_replaced(platform::Toolbar& toolbar) override;
  void button_changed(platform::Toolbar& toolbar, platform::Button& button) override;
  void refreshed(platform::Toolbar& toolbar) override;
  void build();
  QWidget* make(platform::Button& button);
  void show_state(platform::Button& button);
  int arrange(int width, bool place);
  void arrange_later();

  platform::Toolbar& toolbar_;
  QHash<int, QWidget*> widgets_;  // by index
  bool arranging_ = false;
};

/// The drawing of that name in one colour; null if there is none.
QIcon tinted_icon(const QString& name, const QColor& colour, const QColor& disabled);

}  // namespace tvx::qt
