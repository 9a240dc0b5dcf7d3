#include <set>
#include <utility>

#include "tvx/automation/instance.h"
#include "tvx/automation/script_objects.h"
#include "tvx/base/error.h"
#include "tvx/library/objects/members_of.h"
#include "tvx/platform/text_box.h"
#include "tvx/services/subclass.h"

/// What stands beside the control and has names that hosts know: the words of dialogs, timers, and watched
/// messages.
namespace tvx::automation {

using library::expect_arguments;
using library::MemberOf;
using library::ObjectHandle;
using library::Value;
using library::Values;
using services::CTimer;
using services::EMsgResponse;
using services::GSubclass;

/// Watches for a script: tells it of each message, and answers with the response that it has fixed.
class ScriptWatcher final : public services::ISubclass {
 public:
  ScriptWatcher(Instance& instance, std::int32_t number) : instance_(instance), number_(number) {}
  /// Windows know it by its address alone: it leaves all that it watches.
  ~ScriptWatcher() override {
    for (const auto& [hwnd, iMsg] : watched_) GSubclass::DetachMessage(*this, hwnd, iMsg);
  }
  void attach(platform::WindowHandle hwnd, platform::Message iMsg) {
    GSubclass::AttachMessage(*this, hwnd, iMsg);
    watched_.emplace(hwnd, iMsg);
  }
  void detach(platform::WindowHandle hwnd, platform::Message iMsg) {
    GSubclass::DetachMessage(*this, hwnd, iMsg);
    watched_.erase({hwnd, iMsg});
  }
  EMsgResponse MsgResponse() const override { return response; }
  void set_MsgResponse(EMsgResponse wanted) override { response = wanted; }
  platform::MessageResult WindowProc(platform::WindowHandle hwnd, platform::Message iMsg,
                                     platform::Parameter wParam, platform::Parameter lParam) override {
    instance_.tell_event("ISubclass_WindowProc", {{"ISubclass", number_},
                                                  {"hwnd", platform::number_of(hwnd)},
                                                  {"iMsg", iMsg},
                                                  {"wParam", wParam},
                                                  {"lParam", lParam}});
    return result;
  }

  EMsgResponse response = EMsgResponse::emrConsume;
  std::int32_t result = 0;

 private:
  Instance& instance_;
  const std::int32_t number_;
  std::set<std::pair<platform::WindowHandle, platform::Message>> watched_;
};

ScriptKit::ScriptKit() = default;
ScriptKit::~ScriptKit() { stop(); }

void ScriptKit::stop() {
  for (auto& [number, entry] : timers) {
    entry.timer->on_ThatTime({});
    entry.timer->set_Interval(0);
  }
}

namespace {

ScriptKit& kit_of(Instance& instance) {
  if (!instance.kit) instance.kit = std::make_unique<ScriptKit>();
  return *instance.kit;
}

// --- clsLocalize ---

class LocalizerObject final : public library::Object {
 public:
  explicit LocalizerObject(Instance& instance) : instance_(instance) {}
  std::u16string_view kind() const override { return u"localizer"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  localise::clsLocalize& operator*() const { return kit_of(instance_).localizer; }
  Instance& instance() const { return instance_; }

 private:
  Instance& instance_;
};

/// The dialog by its name: it has to be in front when it is given its words.
void set_form(LocalizerObject& self, const Value& value) {
  kit_of(self.instance()).form = value.is_null() ? std::u16string() : value.to_text();
}

Value localise(LocalizerObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  Instance& instance = self.instance();
  (*self).set_Error([&instance](std::int32_t number, const std::u16string& text) {
    instance.tell_event("clsLocalize_Error", {{"errNo", number}, {"errDesc", json_text(text)}});
  });
  platform::Form* const open = instance.forms().open();
  const bool is_it = open && equals_ignoring_ascii_case(open->Name(), kit_of(instance).form);
  (*self).set_TheForm(is_it ? open : nullptr);
  (*self).Localise(arguments[0].to_text());
  (*self).set_TheForm(nullptr);
  return {};
}

constexpr MemberOf<LocalizerObject> localizer_rows[] = {
    {u"LocalizationFile", [](LocalizerObject& self) -> Value { return (*self).LocalizationFile(); },
     [](LocalizerObject& self, const Value& value) { (*self).set_LocalizationFile(value.to_text()); }},
    {u"TheForm", [](LocalizerObject& self) -> Value { return kit_of(self.instance()).form; }, set_form},
    {.name = u"Localise", .call = localise},
};

Value LocalizerObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<LocalizerObject>(localizer_rows, name, *this, arguments);
}
void LocalizerObject::set(std::u16string_view name, const Value& value) {
  library::set_named<LocalizerObject>(localizer_rows, name, *this, value);
}

// --- CTimer ---

class TimerObject final : public library::Object {
 public:
  TimerObject(Instance& instance, platform::MessageLoop& loop, std::int32_t number)
      : instance_(instance), loop_(loop), number_(number) {}
  std::u16string_view kind() const override { return u"timer"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  /// Another of the script's timers, by its number.
  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    return ObjectHandle(std::make_shared<TimerObject>(instance_, loop_, arguments[0].to_integer32()));
  }
  ScriptKit::Timer& operator*() const {
    ScriptKit::Timer& entry = kit_of(instance_).timers[number_];
    if (!entry.timer) {
      entry.timer = CTimer::create(loop_);
      entry.timer->on_ThatTime([&instance = instance_, number = number_] {
        instance.tell_event("CTimer_ThatTime", {{"CTimer", number}});
      });
    }
    return entry;
  }

 private:
  Instance& instance_;
  platform::MessageLoop& loop_;
  const std::int32_t number_;
};

constexpr MemberOf<TimerObject> timer_rows[] = {
    {u"Interval", [](TimerObject& self) -> Value { return (*self).timer->Interval(); },
     [](TimerObject& self, const Value& value) { (*self).timer->set_Interval(value.to_integer32()); }},
    {u"item", [](TimerObject& self) -> Value { return (*self).item; },
     [](TimerObject& self, const Value& value) { (*self).item = value; }},
    {.name = u"PulseTimer",
     .call = [](TimerObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 0, 0);
       (*self).timer->PulseTimer();
       return {};
     }},
};

Value TimerObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<TimerObject>(timer_rows, name, *this, arguments);
}
void TimerObject::set(std::u16string_view name, const Value& value) {
  library::set_named<TimerObject>(timer_rows, name, *this, value);
}

// --- ISubclass: a script's watchers, by their numbers ---

ScriptWatcher& watcher_of(Instance& instance, std::int32_t number) {
  std::unique_ptr<ScriptWatcher>& watcher = kit_of(instance).watchers[number];
  if (!watcher) watcher = std::make_unique<ScriptWatcher>(instance, number);
  return *watcher;
}

class WatcherObject final : public library::Object {
 public:
  WatcherObject(Instance& instance, std::int32_t number) : instance_(instance), number_(number) {}
  std::u16string_view kind() const override { return u"subclass"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    return ObjectHandle(std::make_shared<WatcherObject>(instance_, arguments[0].to_integer32()));
  }
  ScriptWatcher& operator*() const { return watcher_of(instance_, number_); }

 private:
  Instance& instance_;
  const std::int32_t number_;
};

constexpr MemberOf<WatcherObject> watcher_rows[] = {
    {u"MsgResponse",
     [](WatcherObject& self) -> Value { return static_cast<std::int32_t>((*self).MsgResponse()); },
     [](WatcherObject& self, const Value& value) {
       (*self).set_MsgResponse(static_cast<EMsgResponse>(value.to_integer32()));
     }},
    // What WindowProc gives back.
    {u"Result", [](WatcherObject& self) -> Value { return (*self).result; },
     [](WatcherObject& self, const Value& value) { (*self).result = value.to_integer32(); }},
};

Value WatcherObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<WatcherObject>(watcher_rows, name, *this, arguments);
}
void WatcherObject::set(std::u16string_view name, const Value& value) {
  library::set_named<WatcherObject>(watcher_rows, name, *this, value);
}

// --- GSubclass ---

class SubclassObject final : public library::Object {
 public:
  explicit SubclassObject(Instance& instance) : instance_(instance) {}
  std::u16string_view kind() const override { return u"subclassing"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  Instance& instance() const { return instance_; }

 private:
  Instance& instance_;
};

platform::WindowHandle window(const Value& number) {
  return static_cast<platform::WindowHandle>(number.to_integer32());
}
platform::Message message(const Value& number) {
  return static_cast<platform::Message>(number.to_integer32());
}

/// The watcher's number, the window, the message.
template <auto Routine>
Value watch(SubclassObject& self, Values& arguments) {
  expect_arguments(arguments, 3, 3);
  ScriptWatcher& watcher = watcher_of(self.instance(), arguments[0].to_integer32());
  (watcher.*Routine)(window(arguments[1]), message(arguments[2]));
  return {};
}

/// A text that is to be put in is given as that, and never as an address.
Value call_old(SubclassObject&, Values& arguments) {
  expect_arguments(arguments, 4, 4);
  const std::u16string text = arguments[3].is_text() ? arguments[3].to_text() : std::u16string();
  const platform::Message number = message(arguments[1]);
  const platform::Parameter lParam = number == platform::EM_REPLACESEL
                                         ? reinterpret_cast<platform::Parameter>(text.c_str())
                                         : arguments[3].to_integer32();
  return static_cast<std::int64_t>(
      GSubclass::CallOldWindowProc(window(arguments[0]), number, arguments[2].to_integer32(), lParam));
}

constexpr MemberOf<SubclassObject> subclass_rows[] = {
    {.name = u"AttachMessage", .call = watch<&ScriptWatcher::attach>},
    {.name = u"DetachMessage", .call = watch<&ScriptWatcher::detach>},
    {u"CurrentMessage",
     [](SubclassObject&) -> Value { return static_cast<std::int32_t>(GSubclass::CurrentMessage()); }},
    {.name = u"CallOldWindowProc", .call = call_old},
};

Value SubclassObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<SubclassObject>(subclass_rows, name, *this, arguments);
}

}  // namespace

ObjectHandle localizer_object(Instance& instance) { return std::make_shared<LocalizerObject>(instance); }
ObjectHandle timers_object(Instance& instance, platform::MessageLoop& loop) {
  return std::make_shared<TimerObject>(instance, loop, 1);
}
ObjectHandle watchers_object(Instance& instance) { return std::make_shared<WatcherObject>(instance, 1); }
ObjectHandle subclass_object(Instance& instance) { return std::make_shared<SubclassObject>(instance); }

}  // namespace tvx::automation
