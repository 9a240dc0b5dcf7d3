#pragma once

#include <functional>

#include "platform/common_dialogs.h"

class QWidget;

namespace tvx::qt {

/// The desktop's dialogs, modal over the window that the control stands in.
class Dialogs final : public platform::CommonDialogs {
 public:
  explicit Dialogs(QWidget& owner) : owner_(owner) {}

  Colour ShowColor(Colour colour, platform::WindowHandle owner) override;
  std::u16string ShowOpen(const platform::FileDialog& dialog) override;
  std::u16string ShowSave(const platform::FileDialog& dialog) override;
  platform::MessageAnswer show_message(const platform::MessageBox& box) override;

 private:
  QWidget& owner_;
};

}  // namespace tvx::qt
