#pragma once

#include <functional>
#include <memory>

#include "tvx/core/events.h"
#include "tvx/library/members/member_table.h"

namespace tvx::browser {
class HTMLDocument;
}

namespace tvx::library {

/// Hears every event of a control and hands it on as a row of the event table with its arguments as values.
/// What stands in the arguments afterwards goes back to the control.
class EventRelay final : public core::HTMLedEvents {
 public:
  using Sink = std::function<void(const EventMember& event, Values& arguments)>;
  /// `document` is asked for the document that an element of an argument belongs to.
  using Document = std::function<std::shared_ptr<browser::HTMLDocument>()>;

  EventRelay(Sink sink, Document document) : sink_(std::move(sink)), document_(std::move(document)) {}

#include "tvx/interface/relay_declarations.inc"

 private:
  template <class... Arguments>
  void relay(int number, Arguments&... arguments);

  Sink sink_;
  Document document_;
};

}  // namespace tvx::library
