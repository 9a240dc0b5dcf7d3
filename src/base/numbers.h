#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Numbers as users and late-bound hosts write them, and the whole numbers made of them.
namespace tvx {

/// A decimal number with an optional sign, fraction and exponent, blanks around it allowed; "." whatever the
/// desktop's language writes. Nothing if the text is anything else.
std::optional<double> parse_number(std::u16string_view text);
/// The same, of a text that has to be one: RuntimeError 13 for any other.
double number_of(std::u16string_view text);
/// What somebody typed: the longest beginning that is a number, blanks before it allowed, else 0.
double typed_number(std::u16string_view text);

/// The nearest whole number; halves go to the even neighbour. RuntimeError 6 where it is too large.
std::int16_t rounded_to_16_bits(double number);
std::int32_t rounded_to_32_bits(double number);

}  // namespace tvx
