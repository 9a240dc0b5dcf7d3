#include "tvx/services/subclass.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tvx/base/fault.h"
#include "tvx/base/strings.h"
#include "tvx/services/kit_error.h"

namespace tvx::services {
namespace {

using platform::Message;
using platform::MessageResult;
using platform::Parameter;
using platform::WindowHandle;
using testing::ElementsAre;

constexpr Message ping = platform::WM_USER + 1, pong = platform::WM_USER + 2;
constexpr int marked(int number) { return static_cast<int>(0x8004'0000u | unsigned(number)); }

using Calls = std::vector<std::string>;

class Window final : public platform::MessageWindow {
 public:
  explicit Window(Calls& calls) : calls_(calls) {}
  ~Window() override { destroy(); }

 private:
  MessageResult handle_message(Message message, Parameter, Parameter) override {
    calls_.push_back("window " + std::to_string(message));
    return 1;
  }
  Calls& calls_;
};

struct Watcher final : ISubclass {
  Watcher(Calls& into, std::string called) : calls(into), name(std::move(called)) {}
  EMsgResponse MsgResponse() const override { return response; }
  void set_MsgResponse(EMsgResponse wanted) override { response = wanted; }
  MessageResult WindowProc(WindowHandle hwnd, Message message, Parameter wParam, Parameter lParam) override {
    calls.push_back(name + " " + std::to_string(message));
    current = GSubclass::CurrentMessage();
    if (inside) inside(hwnd, message, wParam, lParam);
    return result;
  }

  Calls& calls;
  std::string name;
  EMsgResponse response = EMsgResponse::emrPostProcess;
  MessageResult result = 7;
  Message current = 0;
  std::function<void(WindowHandle, Message, Parameter, Parameter)> inside;
};

class Subclass : public testing::Test {
 protected:
  ~Subclass() override {
    clear_faults();
    GSubclass::set_trace({});
  }

  static int error_of(const std::function<void()>& call) {
    try {
      call();
    } catch (const RuntimeError& error) {
      text = to_utf8(error.text());
      return error.number();
    }
    return 0;
  }
  static inline std::string text;

  MessageResult send(Message message) { return platform::SendMessage(window.handle(), message, 3, 4); }
  std::u16string h() const { return to_text(platform::number_of(window.handle())); }
  Parameter prop(const std::u16string& behind) const {
    return platform::GetProp(window.handle(), h() + behind);
  }
  /// Nothing of the kit is left on the window.
  void expect_clean() {
    EXPECT_EQ(prop(u""), 0);
    EXPECT_EQ(prop(u"C"), 0);
    EXPECT_EQ(prop(u"#" + to_text(ping) + u"C"), 0);
    EXPECT_EQ(prop(u"#" + to_text(ping) + u"#1"), 0);
    EXPECT_EQ(platform::GetWindowLong(window.handle()), own);
    calls.clear();
    EXPECT_EQ(send(ping), 1);
    EXPECT_THAT(calls, ElementsAre("window 1025"));
  }

  Calls calls;
  Window window{calls};
  const platform::WindowProcedure own = platform::GetWindowLong(window.handle());
  Watcher a{calls, "a"}, b{calls, "b"};
};

TEST_F(Subclass, ItsBooksStandInPropertiesOfTheWindow) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  GSubclass::AttachMessage(b, window.handle(), ping);
  GSubclass::AttachMessage(a, window.handle(), pong);
  EXPECT_EQ(prop(u""), reinterpret_cast<Parameter>(own));
  EXPECT_EQ(prop(u"C"), 3);
  EXPECT_EQ(prop(u"#1025C"), 2);
  EXPECT_EQ(prop(u"#1025#1"), reinterpret_cast<Parameter>(static_cast<ISubclass*>(&a)));
  EXPECT_EQ(prop(u"#1025#2"), reinterpret_cast<Parameter>(static_cast<ISubclass*>(&b)));
  EXPECT_EQ(prop(u"#1026C"), 1);
  EXPECT_NE(platform::GetWindowLong(window.handle()), own);
  GSubclass::DetachMessage(a, window.handle(), ping);
  EXPECT_EQ(prop(u"#1025#1"), reinterpret_cast<Parameter>(static_cast<ISubclass*>(&b)))
      << "the gap is closed";
  EXPECT_EQ(prop(u"#1025#2"), 0);
  GSubclass::DetachMessage(b, window.handle(), ping);
  GSubclass::DetachMessage(a, window.handle(), pong);
  expect_clean();
}

TEST_F(Subclass, AttachingTwiceFailsAndChangesNothing) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  EXPECT_EQ(error_of([&] { GSubclass::AttachMessage(a, window.handle(), ping); }), marked(13082));
  EXPECT_EQ(text, "Message already handled by another class");
  EXPECT_EQ(KitError::source, u"tvxHTML.WindowProc");
  EXPECT_EQ(prop(u"C"), 1);
  EXPECT_EQ(prop(u"#1025C"), 1);
  GSubclass::DetachMessage(a, window.handle(), ping);
  expect_clean();
}

TEST_F(Subclass, TheLaterOneIsCalledFirst) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  GSubclass::AttachMessage(b, window.handle(), ping);
  b.result = 9;
  a.response = EMsgResponse::emrConsume;
  EXPECT_EQ(send(ping), 7) << "the result of the one attached first";
  EXPECT_THAT(calls, ElementsAre("b 1025", "a 1025"));
  EXPECT_EQ(a.current, ping);
}

TEST_F(Subclass, OtherMessagesGoToTheWindow) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  EXPECT_EQ(send(pong), 1);
  EXPECT_THAT(calls, ElementsAre("window 1026"));
}

TEST_F(Subclass, TheFirstOneDecidesWhetherTheWindowGetsTheMessage) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  GSubclass::AttachMessage(b, window.handle(), ping);
  a.response = EMsgResponse::emrConsume;
  b.response = EMsgResponse::emrPostProcess;
  EXPECT_EQ(send(ping), 7);
  EXPECT_THAT(calls, ElementsAre("b 1025", "a 1025"));
}

TEST_F(Subclass, TheWindowGetsAMessageBehindItsWatcher) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  a.response = EMsgResponse::emrPostProcess;
  EXPECT_EQ(send(ping), 1) << "the window's result counts";
  EXPECT_THAT(calls, ElementsAre("a 1025", "window 1025"));
}

TEST_F(Subclass, TheWindowGetsAMessageBeforeItsFirstWatcherOnce) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  GSubclass::AttachMessage(b, window.handle(), ping);
  a.response = EMsgResponse::emrPreprocess;
  a.inside = [&](auto...) { a.response = EMsgResponse::emrPostProcess; };
  EXPECT_EQ(send(ping), 7);
  EXPECT_THAT(calls, ElementsAre("b 1025", "window 1025", "a 1025"));
}

TEST_F(Subclass, AResponseMayBeDecidedWithin) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  a.inside = [&](auto...) { a.response = EMsgResponse::emrConsume; };
  EXPECT_EQ(send(ping), 7);
  EXPECT_THAT(calls, ElementsAre("a 1025"));
}

TEST_F(Subclass, AWatcherMayDetachWithin) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  GSubclass::AttachMessage(b, window.handle(), ping);
  b.inside = [&](WindowHandle hwnd, Message message, Parameter, Parameter) {
    GSubclass::DetachMessage(b, hwnd, message);
    GSubclass::DetachMessage(a, hwnd, message);
  };
  send(ping);
  EXPECT_THAT(calls, ElementsAre("b 1025"));
  expect_clean();
}

TEST_F(Subclass, MessagesNest) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  GSubclass::AttachMessage(b, window.handle(), pong);
  a.inside = [&](auto...) { send(pong); };
  send(ping);
  EXPECT_THAT(calls, ElementsAre("a 1025", "b 1026", "window 1026", "window 1025"));
}

TEST_F(Subclass, TheOldProcedureCanBeCalledByHand) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  a.response = EMsgResponse::emrConsume;
  a.inside = [](WindowHandle hwnd, Message message, Parameter w, Parameter l) {
    EXPECT_EQ(GSubclass::CallOldWindowProc(hwnd, message, w, l), 1);
  };
  send(ping);
  EXPECT_THAT(calls, ElementsAre("a 1025", "window 1025"));
  GSubclass::DetachMessage(a, window.handle(), ping);
  EXPECT_EQ(GSubclass::CallOldWindowProc(window.handle(), ping, 0, 0), 0) << "it has none now";
}

TEST_F(Subclass, DetachingTheLastOnePutsTheProcedureBack) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  GSubclass::DetachMessage(a, window.handle(), ping);
  expect_clean();
}

TEST_F(Subclass, DetachingNeverFails) {
  GSubclass::DetachMessage(a, window.handle(), ping);
  GSubclass::DetachMessage(a, WindowHandle::none, ping);
  GSubclass::AttachMessage(a, window.handle(), ping);
  GSubclass::DetachMessage(b, window.handle(), ping);
  set_fault(u"GetWindowThreadProcessId", {{}, 1});
  GSubclass::DetachMessage(a, window.handle(), ping);
  EXPECT_EQ(prop(u"C"), 1) << "a window of another process stays as it is";
}

TEST_F(Subclass, DestroyWithoutAWatcherPutsTheProcedureBack) {
  GSubclass::AttachMessage(a, window.handle(), ping);
  EXPECT_EQ(send(platform::WM_DESTROY), 1);
  EXPECT_THAT(calls, ElementsAre("window 2"));
  EXPECT_EQ(platform::GetWindowLong(window.handle()), own);
  EXPECT_EQ(prop(u""), 0);
  EXPECT_EQ(prop(u"C"), 0);
  EXPECT_EQ(prop(u"#1025C"), 1) << "the properties of single messages stay";
}

TEST_F(Subclass, AWatcherOfDestroyHearsOfItAndMayDetach) {
  auto dying = std::make_unique<Window>(calls);
  GSubclass::AttachMessage(a, dying->handle(), platform::WM_DESTROY);
  const WindowHandle handle = dying->handle();
  a.inside = [&](WindowHandle hwnd, Message message, Parameter, Parameter) {
    GSubclass::DetachMessage(a, hwnd, message);
  };
  dying.reset();
  EXPECT_THAT(calls, ElementsAre("a 2", "window 2"));
  EXPECT_FALSE(platform::IsWindow(handle));
}

TEST_F(Subclass, AWindowThatIsNoneIsRefused) {
  EXPECT_EQ(error_of([&] { GSubclass::AttachMessage(a, WindowHandle{3}, ping); }), marked(13083));
  EXPECT_EQ(text, "Invalid window");
}

TEST_F(Subclass, AWindowOfAnotherProcessIsRefused) {
  set_fault(u"GetWindowThreadProcessId", {{}, 1});
  EXPECT_EQ(error_of([&] { GSubclass::AttachMessage(a, window.handle(), ping); }), marked(13084));
  EXPECT_EQ(text, "Can't modify external window");
  expect_clean();
}

TEST_F(Subclass, AWindowWhoseProcedureStaysIsRefused) {
  set_fault(u"SetWindowLong", {{}, 0});
  EXPECT_EQ(error_of([&] { GSubclass::AttachMessage(a, window.handle(), ping); }), marked(13081));
  EXPECT_EQ(text, "Can't subclass window");
  expect_clean();
}

// The properties are set in this order: the message's count, the pointer, the old procedure, the window's
// count.
TEST_F(Subclass, AFailureAtEachPropertyUndoesWhatWasDone) {
  for (int before = 0; before < 4; ++before) {
    int left = before;  // each property that is set is a line of the trace
    const auto fail_after = [&](const std::u16string&) {
      if (--left == 0) set_fault(u"SetProp", {{}, 0});
    };
    if (before == 0)
      set_fault(u"SetProp", {{}, 0});
    else
      GSubclass::set_trace(fail_after);
    EXPECT_EQ(error_of([&] { GSubclass::AttachMessage(a, window.handle(), ping); }), 5) << before;
    GSubclass::set_trace({});
    clear_faults();
    expect_clean();
  }
}

TEST_F(Subclass, AFailureWithOthersAttachedLeavesThemAttached) {
  GSubclass::AttachMessage(a, window.handle(), pong);
  set_fault(u"SetProp", {{}, 0});
  EXPECT_EQ(error_of([&] { GSubclass::AttachMessage(b, window.handle(), ping); }), 5);
  calls.clear();
  send(pong);
  EXPECT_THAT(calls, ElementsAre("a 1026", "window 1026"));
}

TEST_F(Subclass, EachChangeIsALineOfTheTrace) {
  std::vector<std::string> lines;
  GSubclass::set_trace([&](const std::u16string& line) { lines.push_back(to_utf8(line)); });
  GSubclass::AttachMessage(a, window.handle(), ping);
  char handle[16];
  std::snprintf(handle, sizeof handle, "%X", unsigned(platform::number_of(window.handle())));
  const std::string h = handle;
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0], "Changed message count for " + h + " Message 1025 to 1");
  EXPECT_THAT(lines[1], testing::StartsWith("Changed message class for " + h + " Message 1025 Index 1 to "));
  EXPECT_THAT(lines[2], testing::StartsWith("Changed Window Proc for 0 to "));
  EXPECT_EQ(lines[3], "Changed message count for " + h + " to 1");
}

}  // namespace
}  // namespace tvx::services
