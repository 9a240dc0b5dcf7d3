#include "tvx/exported/member_names.h"

#include <algorithm>
#include <deque>
#include <string>
#include <unordered_map>

#include "tvx/base/strings.h"

namespace tvx::exported {

namespace {

/// Far from the numbers of the control's own members, so that a mistake is noticed.
constexpr std::int32_t first_number = 0x10000;

struct Names {
  std::deque<std::u16string> names;
  std::unordered_map<std::u16string_view, std::int32_t> numbers;
};

Names& known() {
  static Names names;
  return names;
}

bool can_be_name(std::u16string_view name) {
  constexpr std::size_t longest = 255;
  return !name.empty() && name.size() <= longest && std::ranges::all_of(name, [](char16_t c) {
    return is_ascii_alpha(c) || is_ascii_digit(c) || c == u'_' || c == u'-';
  });
}

}  // namespace

std::int32_t number_of_name(std::u16string_view name) {
  if (!can_be_name(name)) return -1;
  Names& names = known();
  const std::u16string key = ascii_lower(name);
  if (const auto found = names.numbers.find(key); found != names.numbers.end()) return found->second;
  const std::int32_t number = first_number + static_cast<std::int32_t>(names.names.size());
  names.numbers.emplace(names.names.emplace_back(key), number);
  return number;
}

std::optional<std::u16string_view> name_of_number(std::int32_t number) {
  const Names& names = known();
  const std::int64_t index = std::int64_t{number} - first_number;
  if (index < 0 || index >= static_cast<std::int64_t>(names.names.size())) return std::nullopt;
  return names.names[static_cast<std::size_t>(index)];
}

}  // namespace tvx::exported
