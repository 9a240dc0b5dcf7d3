#pragma once

#include <cstdint>
#include <memory>

#include "tvx/platform/message_window.h"

namespace tvx::exported {

/// The window of a control as its host's watchers know it, under the number that the control has. What it
/// tells by messages has happened, but for one: it is asked whether it closes.
class ControlWindow final : public platform::MessageWindow {
 public:
  static std::unique_ptr<ControlWindow> make(platform::WindowHandle number);
  ~ControlWindow() override { destroy(); }

  void resized(std::int32_t width, std::int32_t height);
  void focus_changed(bool has_focus);
  /// False: a watcher keeps the question from the window.
  bool may_close();

 private:
  ControlWindow() = default;
  platform::MessageResult handle_message(platform::Message message, platform::Parameter wParam,
                                         platform::Parameter lParam) override;

  bool closes_ = false;
};

}  // namespace tvx::exported
