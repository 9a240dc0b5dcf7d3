#include "tvx/library/members/event_relay.h"

#include "tvx/library/objects/document_object.h"

namespace tvx::library {

namespace {

Value value_of(const std::u16string& text, const EventRelay::Document&) { return text; }
Value value_of(bool flag, const EventRelay::Document&) { return flag; }
Value value_of(std::int32_t number, const EventRelay::Document&) { return number; }
Value value_of(std::int16_t number, const EventRelay::Document&) { return std::int32_t{number}; }
Value value_of(const dom::Ref<dom::Element>& element, const EventRelay::Document& document) {
  return element_object(element.get(), document());
}

void assign(std::u16string& text, const Value& value) { text = value.to_text(); }
void assign(bool& flag, const Value& value) { flag = value.to_boolean(); }
void assign(std::int32_t& number, const Value& value) { number = value.to_integer32(); }
void assign(std::int16_t& number, const Value& value) { number = value.to_integer16(); }
void assign(dom::Ref<dom::Element>& element, const Value& value) { element = element_of(value); }

const EventMember& event_numbered(int number) { return events()[static_cast<std::size_t>(number) - 1]; }

}  // namespace

template <class... Arguments>
void EventRelay::relay(int number, Arguments&... arguments) {
  Values values{value_of(arguments, document_)...};
  sink_(event_numbered(number), values);
  std::size_t place = 0;
  (assign(arguments, values[place++]), ...);
}

#include "tvx/interface/event_relay.inc"

}  // namespace tvx::library
