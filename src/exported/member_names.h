#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Numbers of the members of objects: an object knows its members only when they are used, so every name gets
/// a number when it is first asked for, one for all objects.
namespace tvx::exported {

inline constexpr std::int32_t item_number = 0;

/// -1 for what can't be a name.
std::int32_t number_of_name(std::u16string_view name);
/// Nothing for a number that no name has.
std::optional<std::u16string_view> name_of_number(std::int32_t number);

}  // namespace tvx::exported
