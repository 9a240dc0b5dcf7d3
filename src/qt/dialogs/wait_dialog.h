#pragma once

#include <QDialog>
#include <QElapsedTimer>

#include "tvx/platform/form.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace tvx::qt {

/// A form that tells of work (`frmWait`) as a window beside it: what is being done, the file, a bar, the
/// figures, Cancel. Work that ends soon never shows it; once it is seen it stays long enough to be read. It
/// ends by itself after its form has been hidden. A form that takes the window's input is seen at once, and
/// goes at once.
class WaitDialog final : public QDialog, private platform::FormObserver {
 public:
  static constexpr int appears_after = 300, stays_for = 500;  // milliseconds

  /// The form may be gone before this is.
  WaitDialog(platform::Form& form, QWidget* owner);
  ~WaitDialog() override;

  /// Escape, or the window's own closing: the same as Cancel.
  void reject() override;

 private:
  void control_changed(platform::FormControl& control) override;
  void caption_changed(platform::Form&) override { show_all(); }
  void form_hidden(platform::Form& form) override;

  void appear();
  void show_all();
  void show_what();
  QString caption(const char16_t* name) const;
  bool is_visible(const char16_t* name) const;

  platform::Form* form_;  // null once it has been hidden
  QElapsedTimer seen_;
  QLabel* what_;
  QProgressBar* bar_;
  QLabel* figures_[3][2];
  QPushButton* cancel_;
};

}  // namespace tvx::qt
