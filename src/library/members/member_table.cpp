#include "tvx/library/members/member_table.h"

#include "tvx/base/strings.h"
#include "tvx/library/members/bindings.h"
#include "tvx/library/members/hand_bindings.h"

namespace tvx::library {

namespace {

using core::HTMLed;

#include "tvx/interface/enumeration_rows.inc"
#include "tvx/interface/event_rows.inc"
#include "tvx/interface/member_rows.inc"

}  // namespace

std::u16string_view name_of(Type type) {
  switch (type) {
    case Type::None: return u"nothing";
    case Type::Boolean: return u"boolean";
    case Type::Integer16: return u"16-bit number";
    case Type::Integer32: return u"32-bit number";
    case Type::String: return u"string";
    case Type::Object: return u"object";
    case Type::Variant: return u"variant";
#include "tvx/interface/type_names.inc"
  }
  return u"";
}

Value DefaultValue::value() const {
  switch (kind) {
    case Kind::None: return {};
    case Kind::Boolean: return number != 0;
    case Kind::Number: return number;
    case Kind::Text: return text;
  }
  return {};
}

std::span<const Enumeration> enumerations() { return enumeration_rows; }
std::span<const EventMember> events() { return event_rows; }
std::span<const Member> members() { return member_rows; }

const Member* find_member(std::u16string_view name) {
  for (const Member& member : members())
    if (equals_ignoring_ascii_case(member.name, name)) return &member;
  return nullptr;
}

const EventMember* find_event(std::u16string_view name) {
  for (const EventMember& event : events())
    if (equals_ignoring_ascii_case(event.name, name)) return &event;
  return nullptr;
}

}  // namespace tvx::library
