#include "tvx/library/members/dispatch.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/library/objects/object.h"

namespace tvx::library {

namespace {

const Member& member_named(std::u16string_view name, MemberKind kind) {
  const Member* member = find_member(name);
  if (!member || member->kind != kind) unknown_member(name);
  return *member;
}

[[noreturn]] void not_built_in(const Member& member) {
  throw RuntimeError(errors::not_supported,
                     u"Object doesn't support this action: " + std::u16string(member.name));
}

std::size_t required_arguments(const Member& member) {
  return static_cast<std::size_t>(std::ranges::count(member.parameters, Optional::No, &Parameter::optional));
}

}  // namespace

Value converted(const Value& value, Type type) {
  switch (type) {
    case Type::None:
    case Type::Variant: return value;
    case Type::Boolean: return value.to_boolean();
    case Type::Integer16: return std::int32_t{value.to_integer16()};
    case Type::String: return value.to_text();
    case Type::Object: return value.to_object();
    default: return value.to_integer32();  // a number, or an enumeration's
  }
}

Value get_property(core::HTMLed& control, std::u16string_view name) {
  const Member& member = member_named(name, MemberKind::Property);
  if (!member.get) not_built_in(member);
  return member.get(control);
}

void set_property(core::HTMLed& control, std::u16string_view name, const Value& value) {
  const Member& member = member_named(name, MemberKind::Property);
  if (!member.set) read_only_member();
  // What can never be set is refused before its value is looked at.
  const bool refused = member.access == Access::Refused || member.access == Access::RefusedDOM;
  member.set(control, refused ? member.initial.value() : converted(value, member.type));
}

Value call_method(core::HTMLed& control, std::u16string_view name, Values& arguments) {
  const Member& member = member_named(name, MemberKind::Method);
  expect_arguments(arguments, required_arguments(member), member.parameters.size());
  for (std::size_t i = 0; i < arguments.size(); ++i)
    arguments[i] = converted(arguments[i], member.parameters[i].type);
  if (!member.call) not_built_in(member);
  return member.call(control, arguments);
}

}  // namespace tvx::library
