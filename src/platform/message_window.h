#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "tvx/platform/window.h"

/// Windows that take messages. Each has a handle, named properties, and a procedure that may be replaced: who
/// replaces it calls the one before, and so a chain of them stands in front of what the window itself does.
/// The names and numbers are the ones that hosts know. One thread: a window is known in the thread that made
/// it.
namespace tvx::platform {

using Message = std::uint32_t;
using Parameter = std::intptr_t;
using MessageResult = std::intptr_t;
using WindowProcedure = MessageResult (*)(WindowHandle, Message, Parameter wParam, Parameter lParam);

inline constexpr Message WM_DESTROY = 0x0002, WM_SETFOCUS = 0x0007, WM_CLOSE = 0x0010, WM_KEYDOWN = 0x0100,
                         WM_KEYUP = 0x0101, WM_CHAR = 0x0102, WM_VSCROLL = 0x0115, WM_CUT = 0x0300,
                         WM_COPY = 0x0301, WM_PASTE = 0x0302, WM_USER = 0x0400;
inline constexpr Message EM_GETLINECOUNT = 0x00BA, EM_LINEFROMCHAR = 0x00C9, EM_GETFIRSTVISIBLELINE = 0x00CE,
                         EM_SETTARGETDEVICE = WM_USER + 72, EM_AUTOURLDETECT = WM_USER + 91;

class MessageWindow {
 public:
  MessageWindow();
  virtual ~MessageWindow();
  MessageWindow(const MessageWindow&) = delete;
  MessageWindow& operator=(const MessageWindow&) = delete;

  WindowHandle handle() const { return handle_; }

 protected:
  /// What the window does by itself, at the end of the chain.
  virtual MessageResult handle_message(Message message, Parameter wParam, Parameter lParam) = 0;
  /// Sends WM_DESTROY, and takes no message any more. For the destructors of what overrides handle_message.
  void destroy();

 private:
  friend class WindowTable;
  const WindowHandle handle_;
  WindowProcedure procedure_;
  std::map<std::u16string, Parameter, std::less<>> properties_;
};

bool IsWindow(WindowHandle window);
/// The process that owns the window; 0 if there is none.
std::int64_t GetWindowThreadProcessId(WindowHandle window);
std::int64_t GetCurrentProcessId();

bool SetProp(WindowHandle window, std::u16string_view name, Parameter value);
/// 0 where there is none.
Parameter GetProp(WindowHandle window, std::u16string_view name);
Parameter RemoveProp(WindowHandle window, std::u16string_view name);

/// Replaces the window's procedure (GWL_WNDPROC). The one before, null on failure.
WindowProcedure SetWindowLong(WindowHandle window, WindowProcedure procedure);
WindowProcedure GetWindowLong(WindowHandle window);
MessageResult CallWindowProc(WindowProcedure procedure, WindowHandle window, Message message,
                             Parameter wParam, Parameter lParam);
/// Delivers a message, through the chain. 0 where there is no such window.
MessageResult SendMessage(WindowHandle window, Message message, Parameter wParam = 0, Parameter lParam = 0);

}  // namespace tvx::platform
