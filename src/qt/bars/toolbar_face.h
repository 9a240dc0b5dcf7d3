#pragma once

#include <QKeySequence>
#include <QRect>
#include <QWidget>
#include <functional>
#include <vector>

#include "tvx/platform/toolbar.h"

namespace tvx::qt {

class ToolbarButton;

/// A toolbar as a widget: buttons in rows that wrap, after the model in every state.
///
/// A click never takes the focus, so the caret stays in the document. Tab comes to one button of the bar,
/// arrows, Home and End walk, Space and Enter press, Escape leaves. Every press goes through the model.
/// Asked for its height, the model answers from here, also before the widget has been laid out.
class ToolbarFace final : public QWidget, private platform::ToolbarObserver {
  Q_OBJECT

 public:
  /// The model outlives this.
  ToolbarFace(platform::Toolbar& model, QWidget* parent);
  ~ToolbarFace() override;

  /// Where the focus goes on Escape: most likely the document.
  void set_on_leave(std::function<void()> leave) { leave_ = std::move(leave); }

  /// Called before a press acts: most likely, what the user has typed before it is still on its way.
  void set_before_press(std::function<void()> before_press) { before_press_ = std::move(before_press); }

  /// Tool tips end with these keys, as they are when the tool tip comes. The model's text stays without.
  using Keys = std::function<QKeySequence(const platform::Button&)>;
  void set_keys(Keys keys) { keys_ = std::move(keys); }

  /// Where the bar stands, and whether its holder shows.
  void show_in(const QRect& box, bool visible);
  /// Gives the focus to the button that has it by Tab. False: no button can take it.
  bool take_focus();

  /// The widget of the button at that position, which counts from 1; null for a separator or none.
  QWidget* button_widget(int index) const;

  /// The height that the buttons take at this width, in pixels.
  int measure(int width) const { return heightForWidth(width); }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 private:
  friend class ToolbarButton;
  enum class Step { Previous, Next, First, Last, Up, Down };

  void buttons_replaced(platform::Toolbar& toolbar) override;
  void button_changed(platform::Toolbar& toolbar, platform::Button& button) override;
  void refreshed(platform::Toolbar& toolbar) override;

  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

  /// A box for each button in order, empty for what isn't shown, and the height of all rows.
  struct Placement {
    std::vector<QRect> boxes;
    int height = 0;
  };
  Placement place(int width) const;
  int button_width(const platform::Button& button) const;
  int button_height() const;

  void schedule();
  void bring_up_to_date();
  void show_button(platform::Button& model, const QRect& box);
  void set_tab_stop(int index);
  bool can_take_focus(int index) const;
  void press(int index);
  QString tip_with_keys(int index, const QString& tip) const;
  void pass_focus_on(int from);
  void walk(int from, Step step);
  platform::ButtonPlace place_of(const platform::Button& button) const;
  int nearest_in_other_row(int from, bool below) const;

  platform::Toolbar& model_;
  std::vector<ToolbarButton*>
      buttons_;  // by position; those after the model's last one wait for their return
  std::vector<QRect> separators_;
  int tab_stop_ = 0;
  bool stale_ = false, holder_visible_ = true;
  mutable int measured_width_ = -1, measured_height_ = 0;
  std::function<void()> leave_, before_press_;
  Keys keys_;
};

}  // namespace tvx::qt
