#include "tvx/platform/message_window.h"

#include <unistd.h>

#include <unordered_map>
#include <utility>

#include "tvx/base/fault.h"
#include "tvx/platform/window_number.h"

namespace tvx::platform {

namespace {

thread_local WindowHandle wanted_number = WindowHandle::none;

}  // namespace

WindowNumber::WindowNumber(WindowHandle number) { wanted_number = number; }
WindowNumber::~WindowNumber() { wanted_number = WindowHandle::none; }

/// The windows of this thread. It dies after them: each of them has asked for it.
class WindowTable {
 public:
  static MessageWindow* find(WindowHandle handle) {
    const auto& table = windows();
    const auto found = table.find(handle);
    return found == table.end() ? nullptr : found->second;
  }

  // Even numbers below those of controls, so that neither is taken for the other.
  static WindowHandle add(MessageWindow& window) {
    const WindowHandle wanted = std::exchange(wanted_number, WindowHandle::none);
    if (wanted != WindowHandle::none && windows().try_emplace(wanted, &window).second) return wanted;
    constexpr std::int32_t first = 0x10002, end = 1'000'000;
    thread_local std::int32_t next = first;
    while (windows().contains(WindowHandle{next})) next = next + 2 < end ? next + 2 : first;
    const WindowHandle handle{next};
    next = next + 2 < end ? next + 2 : first;
    windows().emplace(handle, &window);
    return handle;
  }

  static void remove(WindowHandle handle) { windows().erase(handle); }

  static MessageResult own_procedure(WindowHandle handle, Message message, Parameter wParam,
                                     Parameter lParam) {
    MessageWindow* window = find(handle);
    return window ? window->handle_message(message, wParam, lParam) : 0;
  }

  static WindowProcedure& procedure_of(MessageWindow& window) { return window.procedure_; }
  static auto& properties_of(MessageWindow& window) { return window.properties_; }

 private:
  static std::unordered_map<WindowHandle, MessageWindow*>& windows() {
    thread_local std::unordered_map<WindowHandle, MessageWindow*> table;
    return table;
  }
};

MessageWindow::MessageWindow() : handle_(WindowTable::add(*this)), procedure_(WindowTable::own_procedure) {}
MessageWindow::~MessageWindow() { WindowTable::remove(handle_); }

void MessageWindow::destroy() {
  SendMessage(handle_, WM_DESTROY);
  WindowTable::remove(handle_);
}

bool IsWindow(WindowHandle window) { return WindowTable::find(window) != nullptr; }

std::int64_t GetCurrentProcessId() { return getpid(); }

std::int64_t GetWindowThreadProcessId(WindowHandle window) {
  if (const auto fault = fault_point(u"GetWindowThreadProcessId")) return *fault;
  return IsWindow(window) ? GetCurrentProcessId() : 0;
}

bool SetProp(WindowHandle handle, std::u16string_view name, Parameter value) {
  if (const auto fault = fault_point(u"SetProp")) return *fault != 0;
  MessageWindow* window = WindowTable::find(handle);
  if (!window) return false;
  WindowTable::properties_of(*window).insert_or_assign(std::u16string(name), value);
  return true;
}

Parameter GetProp(WindowHandle handle, std::u16string_view name) {
  MessageWindow* window = WindowTable::find(handle);
  if (!window) return 0;
  const auto& properties = WindowTable::properties_of(*window);
  const auto found = properties.find(name);
  return found == properties.end() ? 0 : found->second;
}

Parameter RemoveProp(WindowHandle handle, std::u16string_view name) {
  MessageWindow* window = WindowTable::find(handle);
  if (!window) return 0;
  auto& properties = WindowTable::properties_of(*window);
  const auto found = properties.find(name);
  if (found == properties.end()) return 0;
  const Parameter value = found->second;
  properties.erase(found);
  return value;
}

WindowProcedure SetWindowLong(WindowHandle handle, WindowProcedure procedure) {
  if (fault_point(u"SetWindowLong")) return nullptr;
  MessageWindow* window = WindowTable::find(handle);
  return window && procedure ? std::exchange(WindowTable::procedure_of(*window), procedure) : nullptr;
}

WindowProcedure GetWindowLong(WindowHandle handle) {
  MessageWindow* window = WindowTable::find(handle);
  return window ? WindowTable::procedure_of(*window) : nullptr;
}

MessageResult CallWindowProc(WindowProcedure procedure, WindowHandle window, Message message,
                             Parameter wParam, Parameter lParam) {
  return procedure ? procedure(window, message, wParam, lParam) : 0;
}

MessageResult SendMessage(WindowHandle window, Message message, Parameter wParam, Parameter lParam) {
  return CallWindowProc(GetWindowLong(window), window, message, wParam, lParam);
}

}  // namespace tvx::platform
