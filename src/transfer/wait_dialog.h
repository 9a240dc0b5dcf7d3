#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "tvx/platform/form.h"

namespace tvx::transfer {

/// `frmWait`: tells what a transfer is doing, and lets the user end it. It is shown beside the work and never
/// waited for.
class frmWait final : private platform::FormHandler {
 public:
  enum class Action : std::uint8_t { Connecting, Uploading, Downloading };

  frmWait();

  platform::Form& form() { return form_; }
  /// The user doesn't want to wait; the transfer sees it between two blocks.
  bool bCancel = false;
  /// Called when the user says so.
  std::function<void()> on_cancel;

  /// The line that scripts and older hosts know.
  const std::u16string& lblMessage() const;
  void set_lblMessage(std::u16string_view text);

  // --- what a person reads ---
  void show_action(Action action);
  void show_file(std::u16string_view name);
  /// `now` in milliseconds of the loop's clock: speed and time left are made of it.
  void show_bytes(std::int64_t done, std::int64_t total, std::int64_t now);
  /// Of several files; 0 of 0 for a single one.
  void show_count(std::int32_t number, std::int32_t total);

 private:
  void Click(platform::FormControl& button) override;
  void add_details();

  platform::Form form_{u"frmWait", u"Please Wait"};
  std::int64_t first_time_ = -1, first_bytes_ = 0, shown_time_ = 0;
};

}  // namespace tvx::transfer
