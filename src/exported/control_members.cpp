#include "tvx/exported/control_members.h"

#include <span>

#include "tvx/library/members/dispatch.h"
#include "tvx/library/objects/object.h"

namespace tvx::exported {

using library::Member;
using library::MemberKind;

namespace {

const Member* member_numbered(std::int32_t number) {
  for (const Member& member : library::members())
    if (member.number == number) return &member;
  return nullptr;
}

bool can_be_meant(const Member& member, std::uint16_t how) {
  switch (how) {
    case TVX_CALL: return member.kind == MemberKind::Method;
    case TVX_GET:
    case TVX_SET: return member.kind == MemberKind::Property;
    default: return how == (TVX_CALL | TVX_GET);
  }
}

/// What a host passes to have something brought back need not be of the type yet: nothing is "", 0 or false.
void fill_in(library::Values& values, std::span<const library::Parameter> parameters) {
  for (std::size_t i = 0; i < values.size() && i < parameters.size(); ++i) {
    if (!values[i].is_null() || parameters[i].by_reference == library::ByReference::No) continue;
    values[i] = parameters[i].type == library::Type::String ? library::Value(u"") : library::Value(false);
  }
}

}  // namespace

std::int32_t number_of_member(std::u16string_view name) {
  const Member* member = library::find_member(name);
  return member ? member->number : -1;
}

tvx_result call_member(core::HTMLed& control, std::int32_t number, std::uint16_t how, Arguments arguments,
                       tvx_value& result) {
  const Member* member = member_numbered(number);
  if (!member || !can_be_meant(*member, how)) return TVX_NO_MEMBER;
  library::Values& values = arguments.values;
  if (how == TVX_SET) {
    library::expect_arguments(values, 1, 1);
    library::set_property(control, member->name, values[0]);
    return TVX_OK;
  }
  if (member->kind == MemberKind::Property) {
    library::expect_arguments(values, 0, 0);
    result = value_for(library::get_property(control, member->name), member->type);
    return TVX_OK;
  }
  fill_in(values, member->parameters);
  result = value_for(library::call_method(control, member->name, values), member->type);
  for (std::size_t i = 0; i < values.size(); ++i)
    if (member->parameters[i].by_reference == library::ByReference::Yes)
      arguments.give_back(i, member->parameters[i].type);
  return TVX_OK;
}

}  // namespace tvx::exported
