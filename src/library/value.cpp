#include "library/value.h"

#include <cmath>
#include <limits>
#include <optional>

#include "base/error.h"
#include "base/strings.h"

namespace tvx::library {

void type_mismatch() { throw RuntimeError(errors::type_mismatch, u"Type mismatch"); }

namespace {

/// A decimal number with an optional sign, fraction and exponent, blanks around it allowed.
std::optional<double> parse_number(std::u16string_view text) {
  const std::u16string_view body = trimmed(text);
  if (body.empty()) return {};
  for (const char16_t c : body)
    if (!is_ascii_digit(c) && c != u'.' && c != u'-' && c != u'+' && c != u'e' && c != u'E') return {};
  const std::string digits = to_utf8(body);
  std::size_t used = 0;
  try {
    const double number = std::stod(digits, &used);
    if (used == digits.size()) return number;
  } catch (const std::exception&) {
    // No number, or one beyond all bounds: no number to us.
  }
  return {};
}

std::u16string print_number(double number) {
  if (number == std::floor(number) && std::abs(number) < 1e15)
    return to_text(static_cast<std::int64_t>(number));
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.15g", number);
  return from_utf8(buffer);
}

/// Halves go to the even neighbour, as late-bound hosts round.
template <class Integer>
Integer rounded(double number) {
  const double whole = std::nearbyint(number);
  if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
    throw RuntimeError(errors::overflow, u"Overflow");
  return static_cast<Integer>(whole);
}

}  // namespace

Value::Value(ObjectHandle object) {
  if (object) data_ = std::move(object);
}

bool Value::to_boolean() const {
  if (const bool* flag = std::get_if<bool>(&data_)) return *flag;
  if (const std::u16string* text = std::get_if<std::u16string>(&data_)) {
    if (equals_ignoring_ascii_case(*text, u"true")) return true;
    if (equals_ignoring_ascii_case(*text, u"false")) return false;
  }
  return to_number() != 0;
}

std::int16_t Value::to_integer16() const { return rounded<std::int16_t>(to_number()); }
std::int32_t Value::to_integer32() const { return rounded<std::int32_t>(to_number()); }

double Value::to_number() const {
  if (const bool* flag = std::get_if<bool>(&data_)) return *flag ? -1 : 0;
  if (const std::int32_t* number = std::get_if<std::int32_t>(&data_)) return *number;
  if (const std::int64_t* number = std::get_if<std::int64_t>(&data_)) return static_cast<double>(*number);
  if (const double* number = std::get_if<double>(&data_)) return *number;
  if (const std::u16string* text = std::get_if<std::u16string>(&data_))
    if (const std::optional<double> number = parse_number(*text)) return *number;
  type_mismatch();
}

std::u16string Value::to_text() const {
  if (const std::u16string* text = std::get_if<std::u16string>(&data_)) return *text;
  if (const bool* flag = std::get_if<bool>(&data_)) return *flag ? u"True" : u"False";
  if (const std::int32_t* number = std::get_if<std::int32_t>(&data_)) return tvx::to_text(*number);
  if (const std::int64_t* number = std::get_if<std::int64_t>(&data_)) return tvx::to_text(*number);
  if (const double* number = std::get_if<double>(&data_)) return print_number(*number);
  type_mismatch();
}

ObjectHandle Value::to_object() const {
  if (is_null()) return {};
  if (const ObjectHandle* object = std::get_if<ObjectHandle>(&data_)) return *object;
  type_mismatch();
}

}  // namespace tvx::library
