#pragma once

#include "tvx/core/chrome/actions.h"

namespace tvx::core {

struct Parts;

/// The control's buttons and menu items, each with the part that does it.
class ControlActions final : public Actions {
 public:
  explicit ControlActions(Parts& parts) : parts_(parts) {}
  bool press(std::u16string_view button_key) override;
  bool press_form(std::u16string_view button_key) override;
  bool choose(const platform::Menu& item) override;

 private:
  Parts& parts_;
};

}  // namespace tvx::core
