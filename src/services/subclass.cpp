#include "tvx/services/subclass.h"

#include <utility>

#include "tvx/base/strings.h"
#include "tvx/services/kit_error.h"

namespace tvx::services {

using platform::Message;
using platform::MessageResult;
using platform::Parameter;
using platform::WindowHandle;
using platform::WindowProcedure;

namespace {

thread_local Message current_message = 0;
thread_local std::function<void(const std::u16string&)> trace_line;

std::u16string hexadecimal(Parameter number) {
  constexpr std::u16string_view digits = u"0123456789ABCDEF";
  auto rest = static_cast<std::uintptr_t>(number);
  std::u16string text;
  do text.insert(text.begin(), digits[rest % 16]);
  while (rest /= 16);
  return text;
}

// A procedure in a property: a number, as a pointer is.
Parameter number_of(WindowProcedure procedure) { return reinterpret_cast<Parameter>(procedure); }
WindowProcedure procedure_of(Parameter number) { return reinterpret_cast<WindowProcedure>(number); }

/// What a window carries of its watchers.
class Books {
 public:
  explicit Books(WindowHandle window) : window_(window), name_(to_text(platform::number_of(window))) {}

  WindowProcedure old_procedure() const { return procedure_of(platform::GetProp(window_, name_)); }
  bool set_old_procedure(WindowProcedure procedure) {
    const Parameter before = platform::GetProp(window_, name_);
    const bool done = set(name_, number_of(procedure));
    trace([&] {
      return u"Changed Window Proc for " + hexadecimal(before) + u" to " + hexadecimal(number_of(procedure));
    });
    return done;
  }

  Parameter window_count() const { return platform::GetProp(window_, name_ + u"C"); }
  bool set_window_count(Parameter count) {
    const bool done = set(name_ + u"C", count);
    trace([&] { return u"Changed message count for " + window() + u" to " + to_text(count); });
    return done;
  }

  Parameter message_count(Message message) const { return platform::GetProp(window_, of(message) + u"C"); }
  bool set_message_count(Message message, Parameter count) {
    const bool done = set(of(message) + u"C", count);
    trace([&] {
      return u"Changed message count for " + window() + u" Message " + to_text(message) + u" to " +
             to_text(count);
    });
    return done;
  }

  ISubclass* watcher(Message message, Parameter index) const {
    return reinterpret_cast<ISubclass*>(platform::GetProp(window_, of(message) + u"#" + to_text(index)));
  }
  bool set_watcher(Message message, Parameter index, ISubclass* watcher) {
    const auto number = reinterpret_cast<Parameter>(watcher);
    const bool done = set(of(message) + u"#" + to_text(index), number);
    trace([&] {
      return u"Changed message class for " + window() + u" Message " + to_text(message) + u" Index " +
             to_text(index) + u" to " + hexadecimal(number);
    });
    return done;
  }

  /// The index at which the object watches, 0 if it doesn't.
  Parameter index_of(const ISubclass& object, Message message) const {
    for (Parameter index = 1, count = message_count(message); index <= count; ++index)
      if (watcher(message, index) == &object) return index;
    return 0;
  }

  /// Gives the window its own procedure back, if it has lost it.
  void restore_procedure() {
    if (const WindowProcedure old = old_procedure()) {
      platform::SetWindowLong(window_, old);
      set_old_procedure(nullptr);
    }
  }

 private:
  std::u16string of(Message message) const { return name_ + u"#" + to_text(message); }
  std::u16string window() const { return hexadecimal(platform::number_of(window_)); }

  // A property of 0 is none.
  bool set(const std::u16string& name, Parameter value) {
    if (value != 0) return platform::SetProp(window_, name, value);
    platform::RemoveProp(window_, name);
    return true;
  }

  template <class Line>
  static void trace(Line&& line) {
    if (trace_line) trace_line(line());
  }

  const WindowHandle window_;
  const std::u16string name_;
};

struct KitText {
  int number;
  std::u16string_view text;
};
constexpr KitText kit_texts[] = {{13081, u"Can't subclass window"},
                                 {13082, u"Message already handled by another class"},
                                 {13083, u"Invalid window"},
                                 {13084, u"Can't modify external window"}};

[[noreturn]] void fail(int number) {
  for (const KitText& row : kit_texts)
    if (row.number == number) throw KitError(number, row.text);
  throw RuntimeError(number, u"Invalid procedure call or argument");
}

// Delivers to those who watch this message, the last attached first.
MessageResult deliver(Books& books, WindowProcedure old, WindowHandle hwnd, Message message, Parameter wParam,
                      Parameter lParam) {
  MessageResult result = 0;
  bool called = false;
  const auto call_old = [&] {
    if (std::exchange(called, true)) return;
    result = platform::CallWindowProc(old, hwnd, message, wParam, lParam);
  };
  ISubclass* first = nullptr;
  for (Parameter index = books.message_count(message); index >= 1; --index) {
    ISubclass* watcher = books.watcher(message, index);
    if (!watcher) continue;
    current_message = message;
    if (index == 1) {
      first = watcher;
      if (first->MsgResponse() == EMsgResponse::emrPreprocess) call_old();
    }
    result = watcher->WindowProc(hwnd, message, wParam, lParam);
  }
  if (first && first->MsgResponse() == EMsgResponse::emrPostProcess) call_old();
  return result;
}

/// Stands in for the procedures of all watched windows.
MessageResult kit_procedure(WindowHandle hwnd, Message message, Parameter wParam, Parameter lParam) {
  Books books(hwnd);
  const WindowProcedure old = books.old_procedure();
  if (!old) return 0;
  if (books.message_count(message) >= 1) return deliver(books, old, hwnd, message, wParam, lParam);
  // The window dies with others of its messages still watched.
  if (message == platform::WM_DESTROY && books.window_count() > 0) {
    books.restore_procedure();
    books.set_window_count(0);
  }
  return platform::CallWindowProc(old, hwnd, message, wParam, lParam);
}

// Replaces the window's procedure and remembers the one before. The error number, 0 for none.
int hook(Books& books, WindowHandle hwnd) {
  const WindowProcedure old = platform::SetWindowLong(hwnd, kit_procedure);
  if (!old) return 13081;
  if (books.set_old_procedure(old)) return 0;
  platform::SetWindowLong(hwnd, old);
  return errors::invalid_call;
}

}  // namespace

void GSubclass::AttachMessage(ISubclass& iwp, WindowHandle hwnd, Message iMsg) {
  if (!platform::IsWindow(hwnd)) fail(13083);
  if (platform::GetWindowThreadProcessId(hwnd) != platform::GetCurrentProcessId()) fail(13084);
  Books books(hwnd);
  if (books.index_of(iwp, iMsg) != 0) fail(13082);

  const Parameter index = books.message_count(iMsg) + 1;
  if (!books.set_message_count(iMsg, index)) fail(errors::invalid_call);
  const auto forget = [&] {
    books.set_watcher(iMsg, index, nullptr);
    books.set_message_count(iMsg, index - 1);
  };
  if (!books.set_watcher(iMsg, index, &iwp)) {
    books.set_message_count(iMsg, index - 1);
    fail(errors::invalid_call);
  }
  if (books.window_count() == 0) {
    if (const int error = hook(books, hwnd)) {
      forget();
      fail(error);
    }
  }
  if (!books.set_window_count(books.window_count() + 1)) {
    forget();
    if (books.window_count() == 0) books.restore_procedure();
    fail(errors::invalid_call);
  }
}

void GSubclass::DetachMessage(ISubclass& iwp, WindowHandle hwnd, Message iMsg) {
  attempt([&] {
    if (!platform::IsWindow(hwnd)) return;
    if (platform::GetWindowThreadProcessId(hwnd) != platform::GetCurrentProcessId()) return;
    Books books(hwnd);
    const Parameter index = books.index_of(iwp, iMsg);
    if (index == 0) return;
    const Parameter count = books.message_count(iMsg);
    for (Parameter i = index; i < count; ++i) books.set_watcher(iMsg, i, books.watcher(iMsg, i + 1));
    books.set_watcher(iMsg, count, nullptr);
    books.set_message_count(iMsg, count - 1);
    const Parameter all = books.window_count();
    if (all == 1) books.restore_procedure();
    books.set_window_count(all - 1);
  });
}

Message GSubclass::CurrentMessage() { return current_message; }

MessageResult GSubclass::CallOldWindowProc(WindowHandle hwnd, Message iMsg, Parameter wParam,
                                           Parameter lParam) {
  return platform::CallWindowProc(Books(hwnd).old_procedure(), hwnd, iMsg, wParam, lParam);
}

void GSubclass::set_trace(std::function<void(const std::u16string&)> trace) { trace_line = std::move(trace); }

}  // namespace tvx::services
