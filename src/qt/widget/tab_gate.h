#pragma once

#include <QWidget>
#include <functional>
#include <utility>

namespace tvx::qt {

/// What stands for the editor among the fields of the host's window: one stop without size. Who comes to it
/// with Tab or Shift+Tab, or is sent there by the host, is passed on into one of the editor's parts.
class TabGate final : public QWidget {
 public:
  TabGate(QWidget* editor, std::function<void(Qt::FocusReason)> enter)
      : QWidget(editor), enter_(std::move(enter)) {
    setFocusPolicy(Qt::StrongFocus);
    setGeometry(0, 0, 0, 0);
  }

  /// The focus stands here for a moment, on its way out.
  void stand() {
    passing_out_ = true;
    setFocus(Qt::OtherFocusReason);
    passing_out_ = false;
  }

 protected:
  void focusInEvent(QFocusEvent* event) override;

 private:
  std::function<void(Qt::FocusReason)> enter_;
  bool passing_out_ = false;
};

}  // namespace tvx::qt
