#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QWidget>
#include <utility>

namespace tvx::qt {

/// A dialog on the heap that may be gone with its window while it is open: the window can be closed by what
/// runs in the loop meanwhile.
template <class Dialog>
class Modal {
 public:
  template <class... Arguments>
  explicit Modal(Arguments&&... arguments) : dialog_(new Dialog(std::forward<Arguments>(arguments)...)) {}
  ~Modal() { delete dialog_; }
  Modal(const Modal&) = delete;
  Modal& operator=(const Modal&) = delete;

  Dialog* operator->() const { return dialog_; }
  /// True if the user agreed and the dialog is still there to be asked.
  bool run() {
    const QPointer<QWidget> owner(dialog_->parentWidget());
    const bool agreed = dialog_->exec() == QDialog::Accepted;
    if (owner) take_back_focus(*owner);
    return dialog_ && agreed;
  }
  bool is_gone() const { return !dialog_; }

 private:
  // Where no window manager hands the keyboard on, the window below takes it. A user who has gone to another
  // program meanwhile stays there.
  static void take_back_focus(QWidget& owner) {
    const bool here = QGuiApplication::applicationState() == Qt::ApplicationActive;
    if (here && !QApplication::activeWindow()) owner.activateWindow();
  }

  QPointer<Dialog> dialog_;
};

/// What a dialog stands over: the one in front of those that belong to the control, else the control itself.
/// A window's own dialogs only: one of the host's may be in front of another window.
inline QWidget* owner_for_dialog(QWidget* control) {
  QWidget* front = QApplication::activeModalWidget();
  for (QWidget* widget = front; widget && control; widget = widget->parentWidget())
    if (widget == control) return front;
  return control;
}

}  // namespace tvx::qt
