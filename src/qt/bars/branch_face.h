#pragma once

#include <QRect>
#include <QWidget>
#include <functional>
#include <vector>

#include "tvx/platform/toolbar.h"

namespace tvx::qt {

class Crumb;

/// The element path as a widget: one row of names with angles between them, from the outermost element to
/// the current one. What doesn't fit is in the menu of a first button "…".
///
/// The row is one high at any width, so that the document above it never moves. As in the other bars a click
/// leaves the focus where it is; Tab comes to one button, arrows, Home and End walk, Space and Enter press,
/// Escape leaves.
class BranchFace final : public QWidget, private platform::ToolbarObserver {
  Q_OBJECT

 public:
  /// The model outlives this.
  BranchFace(platform::Toolbar& model, QWidget* parent);
  ~BranchFace() override;

  void set_on_leave(std::function<void()> leave) { leave_ = std::move(leave); }
  /// Where the bar stands, and whether its holder shows.
  void show_in(const QRect& box, bool visible);
  /// The widget of the button at that position, which counts from 1; null for one in the menu of "…" or none.
  QWidget* button_widget(int index) const;
  /// The button "…"; null while everything fits.
  QWidget* overflow_widget() const;
  /// Gives the focus to the current element's button. False: there is none.
  bool take_focus();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 private:
  friend class Crumb;
  static constexpr int overflow = 0;  // the position of "…"

  void buttons_replaced(platform::Toolbar&) override { schedule(); }
  void button_changed(platform::Toolbar&, platform::Button&) override { schedule(); }
  void refreshed(platform::Toolbar&) override;

  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

  int row_height() const;
  int width_of(const QString& caption) const;
  void schedule();
  void bring_up_to_date();
  /// The first position that is shown, with all after it, in a row of that width.
  int first_shown(int available) const;
  void place_crumbs();
  void look_for_mouse();
  Crumb& crumb_at(int place);
  void press(int place);
  void show_overflow();
  void walk(int from, int direction, bool to_end);
  platform::ButtonPlace place_of(const platform::Button& button) const;

  platform::Toolbar& model_;
  std::vector<Crumb*> crumbs_;  // by position; the first is "…"
  std::vector<QString> captions_;
  std::vector<int> angles_;  // where the angles between the names stand
  int first_ = 1;
  bool stale_ = false, holder_visible_ = true;
  std::function<void()> leave_;
};

}  // namespace tvx::qt
