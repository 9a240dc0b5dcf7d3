#include "tvx/platform/property_bag.h"

#include <limits>
#include <optional>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

std::optional<std::int64_t> number_in(const PropertyValue& value) {
  if (const bool* truth = std::get_if<bool>(&value)) return *truth ? -1 : 0;
  if (const auto* number = std::get_if<std::int16_t>(&value)) return *number;
  if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
  return std::nullopt;
}

std::int64_t as_number(const PropertyValue& value) {
  if (const auto number = number_in(value)) return *number;
  const std::u16string_view text = trimmed(std::get<std::u16string>(value));
  if (equals_ignoring_ascii_case(text, u"true")) return -1;
  if (equals_ignoring_ascii_case(text, u"false")) return 0;
  const auto number = parse_integer(text);
  if (!number) throw RuntimeError(errors::type_mismatch, u"Type mismatch");
  return *number;
}

template <class Number>
Number as(const PropertyValue& value) {
  const std::int64_t number = as_number(value);
  if (number < std::numeric_limits<Number>::min() || number > std::numeric_limits<Number>::max()) {
    throw RuntimeError(errors::overflow, u"Overflow");
  }
  return static_cast<Number>(number);
}

}  // namespace

bool equal_in_store(const PropertyValue& a, const PropertyValue& b) {
  const auto x = number_in(a);
  const auto y = number_in(b);
  if (x && y) return *x == *y;
  return !x && !y && std::get<std::u16string>(a) == std::get<std::u16string>(b);
}

bool as_bool(const PropertyValue& value) { return as_number(value) != 0; }
std::int16_t as_int16(const PropertyValue& value) { return as<std::int16_t>(value); }
std::int32_t as_int32(const PropertyValue& value) { return as<std::int32_t>(value); }

std::u16string as_text(const PropertyValue& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) return *text;
  if (const bool* truth = std::get_if<bool>(&value)) return *truth ? u"True" : u"False";
  return to_text(*number_in(value));
}

}  // namespace tvx::platform
