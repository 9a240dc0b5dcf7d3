#include "tvx/base/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx {

namespace {

bool is_sign(char16_t c) { return c == u'+' || c == u'-'; }

std::size_t skip_digits(std::u16string_view text, std::size_t at) {
  while (at < text.size() && is_ascii_digit(text[at])) ++at;
  return at;
}

/// Where the exponent that begins at `at` ends; `at` if there is none.
std::size_t skip_exponent(std::u16string_view text, std::size_t at) {
  if (at == text.size() || (text[at] != u'e' && text[at] != u'E')) return at;
  std::size_t first = at + 1;
  if (first < text.size() && is_sign(text[first])) ++first;
  const std::size_t end = skip_digits(text, first);
  return end == first ? at : end;
}

/// How many units at the beginning are a number; 0: none are.
std::size_t number_length(std::u16string_view text) {
  const std::size_t first = !text.empty() && is_sign(text.front()) ? 1 : 0;
  std::size_t at = skip_digits(text, first);
  std::size_t digits = at - first;
  if (at < text.size() && text[at] == u'.') {
    const std::size_t end = skip_digits(text, at + 1);
    digits += end - at - 1;
    if (digits > 0) at = end;
  }
  return digits == 0 ? 0 : skip_exponent(text, at);
}

/// Of a text that is a number, whatever language the desktop speaks. Nothing for what is beyond all bounds.
std::optional<double> value_of(std::u16string_view number) {
  std::string digits = to_utf8(number);
  if (digits.front() == '+') digits.erase(0, 1);
  double value = 0;
  const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return failure == std::errc() ? std::optional(value) : std::nullopt;
}

template <class Integer>
Integer rounded(double number) {
  const double whole = std::nearbyint(number);
  if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
    throw RuntimeError(errors::overflow, u"Overflow");
  return static_cast<Integer>(whole);
}

}  // namespace

std::optional<double> parse_number(std::u16string_view text) {
  const std::u16string_view body = trimmed(text);
  if (body.empty() || number_length(body) != body.size()) return {};
  return value_of(body);
}

double number_of(std::u16string_view text) {
  if (const std::optional<double> number = parse_number(text)) return *number;
  throw RuntimeError(errors::type_mismatch, u"Type mismatch");
}

double typed_number(std::u16string_view text) {
  const std::u16string_view body = trimmed(text);
  const std::size_t length = number_length(body);
  if (length == 0) return 0;
  // Too many digits or too high a power: too large for whatever it is meant for.
  return value_of(body.substr(0, length)).value_or(std::numeric_limits<double>::infinity());
}

std::int16_t rounded_to_16_bits(double number) { return rounded<std::int16_t>(number); }
std::int32_t rounded_to_32_bits(double number) { return rounded<std::int32_t>(number); }

}  // namespace tvx
