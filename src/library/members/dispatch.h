#pragma once

#include <string_view>

#include "tvx/library/members/member_table.h"

/// The control's members by name, without regard to case. What fails throws RuntimeError: 438 for a name
/// that is none, 450 for a wrong number of arguments, 13 and 6 for values of the wrong kind or size, 383 for
/// what has no setter, 445 for a member that this build of the control doesn't have, and whatever the member
/// itself raises.
namespace tvx::library {

Value get_property(core::HTMLed& control, std::u16string_view name);
void set_property(core::HTMLed& control, std::u16string_view name, const Value& value);
/// `arguments` come back as the operation left them, each in its parameter's type.
Value call_method(core::HTMLed& control, std::u16string_view name, Values& arguments);

/// A value in the form that a parameter or property of that type has.
Value converted(const Value& value, Type type);

}  // namespace tvx::library
