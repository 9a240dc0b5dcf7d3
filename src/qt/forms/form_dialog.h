#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QScrollArea>
#include <functional>
#include <memory>

#include "tvx/platform/form.h"
#include "tvx/qt/forms/form_layout.h"

class QDialogButtonBox;

namespace tvx {
class RuntimeError;
}

namespace tvx::qt {

/// A form as a window. It shows what the model holds and decides nothing itself; it closes when the model is
/// hidden.
class FormDialog final : public QDialog, private platform::FormObserver {
 public:
  /// The form outlives this.
  FormDialog(platform::Form& form, QWidget* owner);
  ~FormDialog() override;

  /// Null for a control that isn't the form's.
  QWidget* widget_of(const platform::FormControl& control) const { return widgets_.value(&control); }

  /// Escape, or the window's own closing.
  void reject() override;

 private:
  class Area;

  void control_changed(platform::FormControl& control) override;
  void caption_changed(platform::Form& form) override;
  void form_hidden(platform::Form& form) override;
  void focus_wanted(platform::FormControl& control) override;

  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

  void make_widgets(QWidget& content);
  void make_closing_buttons();
  void set_tab_order();
  void captions_changed();
  void show_caption();
  void act(const std::function<void()>& deed);
  void tell(const RuntimeError& failure);

  platform::Form& form_;
  QElapsedTimer popup_closed_;
  Area* area_;
  QDialogButtonBox* closing_;
  FormLayout::Widgets widgets_;
  std::unique_ptr<FormLayout> layout_;
  bool activated_ = false;
};

}  // namespace tvx::qt
