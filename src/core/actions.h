#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "tvx/core/chrome/actions.h"

namespace tvx::core {

struct Parts;

/// How an operation stands just now.
struct OperationState {
  bool enabled = false;
  bool can_be_on = false, on = false;
  std::u16string_view obstacle;  // why it can't act; may be empty where it can't
};

/// The control's buttons and menu items, each with the part that does it; and the same by name, with more,
/// for hosts that draw bars of their own.
class ControlActions final : public Actions {
 public:
  explicit ControlActions(Parts& parts) : parts_(parts) {}
  bool press(std::u16string_view button_key) override;
  bool press_form(std::u16string_view button_key) override;
  bool choose(const platform::Menu& item) override;

  /// The names of all operations.
  static std::vector<std::u16string_view> operations();
  /// What the operation's button does, whether the control shows it or not, with the host's veto; an
  /// operation that has no button acts at once. False: there is none of that name, or it can't act just now.
  bool act(std::u16string_view operation);
  /// Nothing for a name that is none.
  std::optional<OperationState> state(std::u16string_view operation);

 private:
  Parts& parts_;
};

}  // namespace tvx::core
