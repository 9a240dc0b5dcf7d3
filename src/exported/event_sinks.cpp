#include "tvx/exported/event_sinks.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/exported/texts.h"
#include "tvx/exported/values.h"
#include "tvx/library/members/dispatch.h"

namespace tvx::exported {

namespace {

/// An event's arguments as its sinks get them: references to values.
class Told {
 public:
  Told(const library::EventMember& event, const library::Values& arguments) : event_(event) {
    for (std::size_t i = 0; i < arguments.size(); ++i)
      values_.push_back(value_for(arguments[i], event.parameters[i].type));
    for (tvx_value& value : values_) {
      tvx_value& reference = references_.emplace_back();
      reference.type = TVX_REFERENCE;
      reference.as.reference = &value;
    }
  }
  ~Told() { std::ranges::for_each(values_, clear_value); }
  Told(const Told&) = delete;
  Told& operator=(const Told&) = delete;

  void tell(tvx_dispatch& sink) {
    // A sink may write over what it was given, but not for those after it.
    std::vector<tvx_value> given = references_;
    sink.functions->Invoke(&sink, event_.number, TVX_CALL, given.empty() ? nullptr : given.data(),
                           static_cast<std::uint32_t>(given.size()), nullptr, nullptr);
  }
  void give_back(library::Values& arguments) const {
    for (std::size_t i = 0; i < arguments.size(); ++i)
      attempt([&] { arguments[i] = library::converted(value_from(values_[i]), event_.parameters[i].type); });
  }

 private:
  const library::EventMember& event_;
  std::vector<tvx_value> values_, references_;
};

}  // namespace

std::uint32_t EventSinks::add(tvx_dispatch* sink) {
  connections_.push_back({++last_number_, Held(sink)});
  return last_number_;
}

bool EventSinks::remove(std::uint32_t connection) {
  const auto found = std::ranges::find(connections_, connection, &Connection::number);
  if (found == connections_.end()) return false;
  const Held<tvx_dispatch> last =
      std::move(found->sink);  // the host hears of it when the list is right again
  connections_.erase(found);
  return true;
}

void EventSinks::clear() { const std::vector<Connection> last = std::exchange(connections_, {}); }

bool EventSinks::is_connected(std::uint32_t number) const {
  return std::ranges::any_of(connections_, [=](const Connection& other) { return other.number == number; });
}

void EventSinks::tell(const library::EventMember& event, library::Values& arguments) {
  if (connections_.empty()) return;
  Told told(event, arguments);
  // Sinks come and go while they are told.
  const std::vector<Connection> present = connections_;
  for (const Connection& connection : present)
    if (is_connected(connection.number)) told.tell(*connection.sink.get());
  told.give_back(arguments);
}

}  // namespace tvx::exported
