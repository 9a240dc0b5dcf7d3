#pragma once

#include <QPointer>
#include <QWidget>
#include <optional>

#include "tvx/platform/form.h"
#include "tvx/qt/forms/page_sight.h"

namespace tvx::qt {

/// The control's dialogs as the desktop's: each form is a window with real layouts, modal over the control,
/// or over the form that opened it. Both sides follow each other while it is open.
class Forms final : public platform::Forms {
 public:
  /// `control` is the control's widget. It may be gone, with its dialogs, while one of them is open: the form
  /// is cancelled then.
  explicit Forms(QWidget& control) : control_(&control) {}

  /// What dialogs that ask about the selection stand beside.
  void set_page(QWidget& page, PageSight::Cover cover) { sight_.emplace(page, std::move(cover)); }

  std::vector<std::u16string> fonts() const override;

 private:
  void run(platform::Form& form, platform::WindowHandle owner) override;
  void open(platform::Form& form, platform::WindowHandle owner) override;

  QPointer<QWidget> control_;
  std::optional<PageSight> sight_;
};

}  // namespace tvx::qt
