#include "tvx/exported/services/control_window.h"

#include <algorithm>

#include "tvx/platform/window_number.h"

namespace tvx::exported {

using platform::Message;
using platform::MessageResult;
using platform::Parameter;

namespace {

constexpr Message WM_SIZE = 0x0005, WM_KILLFOCUS = 0x0008;

Parameter half(std::int32_t length) { return std::clamp(length, 0, 0xFFFF); }

}  // namespace

std::unique_ptr<ControlWindow> ControlWindow::make(platform::WindowHandle number) {
  const platform::WindowNumber meanwhile(number);
  return std::unique_ptr<ControlWindow>(new ControlWindow);
}

void ControlWindow::resized(std::int32_t width, std::int32_t height) {
  platform::SendMessage(handle(), WM_SIZE, 0, half(width) | half(height) << 16);
}

void ControlWindow::focus_changed(bool has_focus) {
  platform::SendMessage(handle(), has_focus ? platform::WM_SETFOCUS : WM_KILLFOCUS);
}

bool ControlWindow::may_close() {
  closes_ = false;
  platform::SendMessage(handle(), platform::WM_CLOSE);
  return closes_;
}

MessageResult ControlWindow::handle_message(Message message, Parameter, Parameter) {
  if (message == platform::WM_CLOSE) closes_ = true;
  return 0;
}

}  // namespace tvx::exported
