#pragma once

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <optional>

#include "tvx/platform/form.h"
#include "tvx/qt/forms/form_widgets.h"

namespace tvx::qt {

/// A text box as wide as the letters that it is for, and as wide as there is room where no number is given.
class TextBox final : public QLineEdit {
 public:
  TextBox(std::optional<int> letters, QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  void changeEvent(QEvent* event) override;

  int letters_;
};

/// A box for a number, with arrows that step it. It takes every text: what is wrong with one is the dialog's
/// word.
class NumberBox final : public QAbstractSpinBox {
 public:
  NumberBox(platform::FormControl& control, QWidget* parent, UserAct act);

  QLineEdit* line() const { return lineEdit(); }
  void stepBy(int steps) override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  StepEnabled stepEnabled() const override;
  void changeEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

  platform::FormControl& control_;
  const UserAct act_;
};

/// Both ways: what is typed and selected goes to the model, and `show_line` brings the line after the model.
void follow_line(platform::FormControl& control, QLineEdit& line, const UserAct& act);
void show_line(const platform::FormControl& control, QLineEdit& line);

}  // namespace tvx::qt
