#include "tvx/exported/services/timer_object.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/exported/event_sinks.h"
#include "tvx/exported/invocation.h"
#include "tvx/exported/library_face.h"
#include "tvx/exported/services/timer_loop.h"
#include "tvx/library/members/dispatch.h"
#include "tvx/library/objects/object.h"
#include "tvx/services/kit_error.h"
#include "tvx/services/timer.h"

namespace tvx::exported {

namespace {

static_assert(TVX_eeBaseTimer == static_cast<int>(services::EErrorTimer::eeBaseTimer));
static_assert(TVX_eeTooManyTimers == static_cast<int>(services::EErrorTimer::eeTooManyTimers));
static_assert(TVX_eeCantCreateTimer == static_cast<int>(services::EErrorTimer::eeCantCreateTimer));

constexpr library::EventMember that_time = {TVX_CTimer_EVENT_ThatTime, u"ThatTime", u"The time is over.", {}};

extern const tvx_timer_functions timer_functions;
extern const tvx_dispatch_functions timer_dispatch_functions;
extern const tvx_events_functions timer_events_functions;

/// Any value, an object of the host's as well.
class Item {
 public:
  ~Item() { clear_value(value_); }

  void set(const tvx_value& given) {
    const tvx_value& value = given.type == TVX_REFERENCE && given.as.reference ? *given.as.reference : given;
    if (value.type == TVX_REFERENCE) library::type_mismatch();
    tvx_value old = std::exchange(value_, copy_of(value));
    clear_value(old);  // last: the host may come back here
  }
  tvx_value get() const { return copy_of(value_); }

 private:
  static tvx_value copy_of(const tvx_value& value) {
    tvx_value copy = value;
    if (value.type == TVX_TEXT) copy.as.text = new_text(view_of(value.as.text));
    if (value.type == TVX_OBJECT && value.as.object) value.as.object->functions->AddRef(value.as.object);
    return copy;
  }

  tvx_value value_ = {};
};

class TimerObject final : public Counted {
 public:
  TimerObject() {
    timer_->on_ThatTime([this] {
      const Module::UnderWay under_way;
      library::Values none;
      sinks_.tell(that_time, none);
    });
  }
  ~TimerObject() override {
    attempt([&] { timer_->set_Interval(0); });
  }

  void* face(const tvx_id& id) override {
    if (id == tvx_id_timer || id == tvx_id_unknown) return &timer_face_;
    if (id == tvx_id_dispatch) return &dispatch_face_;
    if (id == tvx_id_events) return &events_face_;
    return id == tvx_id_library ? &library_face_ : nullptr;
  }

  Item& item() { return item_; }
  EventSinks& sinks() { return sinks_; }
  std::int32_t interval() const { return timer_->Interval(); }
  void set_interval(std::int32_t milliseconds) {
    try {
      timer_->set_Interval(milliseconds);
    } catch (const services::KitError&) {
      keep_alive(false);  // it has no slot
      throw;
    }
    keep_alive(timer_->Interval() > 0);
  }
  void pulse() { timer_->PulseTimer(); }

  tvx_result call(std::int32_t number, std::uint16_t how, Arguments arguments, tvx_value& result);

 private:
  /// A timer that runs has a reference of its own.
  void keep_alive(bool keeps) {
    if (keeps == kept_) return;
    kept_ = keeps;
    if (keeps)
      add_ref();
    else
      release();
  }

  Face<tvx_timer> timer_face_{timer_functions, *this};
  Face<tvx_dispatch> dispatch_face_{timer_dispatch_functions, *this};
  Face<tvx_events> events_face_{timer_events_functions, *this};
  Face<tvx_library> library_face_{library_functions, *this};
  EventSinks sinks_;
  Item item_;
  std::shared_ptr<services::CTimer> timer_ = services::CTimer::create(Module::only().timer_loop());
  bool kept_ = false;
};

tvx_result TimerObject::call(std::int32_t number, std::uint16_t how, Arguments arguments, tvx_value& result) {
  const bool is_operation = number == TVX_CTimer_MEMBER_PulseTimer;
  const bool gets = how == TVX_GET || how == (TVX_CALL | TVX_GET);
  if (number < TVX_CTimer_MEMBER_item || number > TVX_CTimer_MEMBER_PulseTimer) return TVX_NO_MEMBER;
  if (how == TVX_SET && !is_operation) {
    library::expect_arguments(arguments.values, 1, 1);
    set_interval(arguments.values[0].to_integer32());
    return TVX_OK;
  }
  if (is_operation ? (how & TVX_CALL) == 0 || (how & TVX_SET) != 0 : !gets) return TVX_NO_MEMBER;
  library::expect_arguments(arguments.values, 0, 0);
  if (is_operation)
    pulse();
  else if (number == TVX_CTimer_MEMBER_item)
    result = item_.get();
  else
    result = value_for(interval(), library::Type::Integer32);
  return TVX_OK;
}

template <class Interface, class Call>
tvx_result called(Interface* self, Call&& call) noexcept {
  return guarded([&]() -> tvx_result {
    call(owner_of<TimerObject>(self));
    return TVX_OK;
  });
}

// --- tvx_timer ---

tvx_result get_item(tvx_timer* self, tvx_value* value) {
  if (!value) return TVX_POINTER;
  *value = {};
  return called(self, [&](TimerObject& timer) { *value = timer.item().get(); });
}

tvx_result set_item(tvx_timer* self, const tvx_value* value) {
  if (!value) return TVX_POINTER;
  return called(self, [&](TimerObject& timer) { timer.item().set(*value); });
}

tvx_result get_interval(tvx_timer* self, std::int32_t* value) {
  if (!value) return TVX_POINTER;
  return called(self, [&](TimerObject& timer) { *value = timer.interval(); });
}

tvx_result set_interval(tvx_timer* self, std::int32_t value) {
  return called(self, [&](TimerObject& timer) { timer.set_interval(value); });
}

tvx_result pulse(tvx_timer* self) {
  return called(self, [](TimerObject& timer) { timer.pulse(); });
}

// --- tvx_dispatch ---

struct Name {
  std::u16string_view name;
  std::int32_t number;
};
constexpr Name names_of_members[] = {{u"item", TVX_CTimer_MEMBER_item},
                                     {u"Interval", TVX_CTimer_MEMBER_Interval},
                                     {u"PulseTimer", TVX_CTimer_MEMBER_PulseTimer}};

std::int32_t number_of_name(std::u16string_view name) {
  for (const Name& row : names_of_members)
    if (equals_ignoring_ascii_case(row.name, name)) return row.number;
  return -1;
}

tvx_result get_numbers(tvx_dispatch*, const tvx_text* names, std::uint32_t count, std::int32_t* numbers) {
  return numbers_of_names(names, count, numbers, number_of_name);
}

tvx_result invoke_member(tvx_dispatch* self, std::int32_t number, std::uint16_t how, tvx_value* arguments,
                         std::uint32_t count, tvx_value* result, tvx_error* error) {
  if (!arguments && count > 0) return TVX_POINTER;
  return invoke(result, error, [&](tvx_value& value) -> tvx_result {
    TimerObject& timer = owner_of<TimerObject>(self);
    // Any value, also one that no member of a control takes.
    if (number == TVX_CTimer_MEMBER_item && how == TVX_SET && count == 1) {
      timer.item().set(arguments[0]);
      return TVX_OK;
    }
    return timer.call(number, how, Arguments(arguments, count), value);
  });
}

// --- tvx_events ---

tvx_result advise(tvx_events* self, tvx_dispatch* sink, std::uint32_t* connection) {
  if (!sink || !connection) return TVX_POINTER;
  *connection = 0;
  return called(self, [&](TimerObject& timer) { *connection = timer.sinks().add(sink); });
}

tvx_result unadvise(tvx_events* self, std::uint32_t connection) {
  return guarded(
      [&] { return owner_of<TimerObject>(self).sinks().remove(connection) ? TVX_OK : TVX_NO_CONNECTION; });
}

const tvx_timer_functions timer_functions = {query_interface<tvx_timer>,
                                             add_reference<tvx_timer>,
                                             release_reference<tvx_timer>,
                                             get_item,
                                             set_item,
                                             get_interval,
                                             set_interval,
                                             pulse};

const tvx_dispatch_functions timer_dispatch_functions = {
    query_interface<tvx_dispatch>, add_reference<tvx_dispatch>, release_reference<tvx_dispatch>, get_numbers,
    invoke_member};

const tvx_events_functions timer_events_functions = {query_interface<tvx_events>, add_reference<tvx_events>,
                                                     release_reference<tvx_events>, advise, unadvise};

}  // namespace

Counted* make_timer() { return new TimerObject; }

}  // namespace tvx::exported
