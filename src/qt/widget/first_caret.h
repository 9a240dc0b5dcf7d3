#pragma once

#include <QPointer>
#include <QWidget>

namespace tvx::core {
class HTMLed;
}

namespace tvx::qt {

/// A document that has the focus has a caret, so that typing has where to go.
class FirstCaret {
 public:
  FirstCaret(QWidget& widget, core::HTMLed& control) : widget_(&widget), control_(control) {}

  /// Until the start there is no document of the user's.
  void start() { started_ = true; }
  void view_focused(bool focused) { view_has_focus_ = focused; }
  /// There will be one as soon as the document is there.
  bool is_awaited() const;
  /// Looks whether one is missing, in a later turn: within this one, who loads the document may set its own.
  void set_later();

 private:
  void set();

  QPointer<QWidget> widget_;
  core::HTMLed& control_;
  bool started_ = false;
  bool view_has_focus_ = false;
  bool awaited_ = false;
};

}  // namespace tvx::qt
