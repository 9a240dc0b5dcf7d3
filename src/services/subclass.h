#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "tvx/platform/message_window.h"

/// Watching chosen messages of any window of the process, without owning its procedure.
namespace tvx::services {

/// Whether a watched message goes on to the window: not at all, after its watcher, or in front of it.
enum class EMsgResponse : std::int32_t { emrConsume = 0, emrPostProcess = 1, emrPreprocess = 2 };

/// Who watches. It isn't kept alive: it detaches itself before it dies, and does not die within its
/// WindowProc.
class ISubclass {
 public:
  virtual ~ISubclass() = default;
  /// Asked before and after WindowProc, so it may be decided in there.
  virtual EMsgResponse MsgResponse() const = 0;
  virtual void set_MsgResponse(EMsgResponse response) = 0;
  virtual platform::MessageResult WindowProc(platform::WindowHandle hwnd, platform::Message iMsg,
                                             platform::Parameter wParam, platform::Parameter lParam) = 0;
};

/// The way in. It has no state: a window carries its watchers in properties of its own, and so they go with
/// it.
///
/// Who was attached last is called first. The response of the one attached first decides whether the window
/// itself gets the message.
class GSubclass {
 public:
  /// Throws 13083 where there is no such window, 13084 for one of another process, 13082 for an object
  /// attached already, 13081 where the window's procedure can't be replaced (each with the mark of KitError),
  /// and RuntimeError(5) where a property can't be set. What it had done by then is undone.
  static void AttachMessage(ISubclass& iwp, platform::WindowHandle hwnd, platform::Message iMsg);
  /// Never fails. What isn't attached stays so.
  static void DetachMessage(ISubclass& iwp, platform::WindowHandle hwnd, platform::Message iMsg);
  /// The message in delivery, or the last one.
  static platform::Message CurrentMessage();
  /// What the window would do without its watchers; 0 for a window that has none.
  static platform::MessageResult CallOldWindowProc(platform::WindowHandle hwnd, platform::Message iMsg,
                                                   platform::Parameter wParam, platform::Parameter lParam);

  /// A line for each change of a count, a procedure or a pointer. Nobody listens unless somebody asks.
  static void set_trace(std::function<void(const std::u16string&)> trace);
};

}  // namespace tvx::services
