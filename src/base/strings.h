#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvx {

/// A position in a text, in 16-bit code units; in an element, in children.
using Offset = std::size_t;

// --- UTF-8 stands only at files, the network, JSON and libraries. ---

/// Lone surrogates become U+FFFD.
std::string to_utf8(std::u16string_view text);
/// Malformed sequences become U+FFFD, by the Encoding standard's "maximal subpart" rule.
std::u16string from_utf8(std::string_view bytes);

// --- ASCII rules (Infra standard, section 4.6): letters outside ASCII stay as they are. ---

constexpr bool is_ascii_upper(char16_t c) { return c >= u'A' && c <= u'Z'; }
constexpr bool is_ascii_lower(char16_t c) { return c >= u'a' && c <= u'z'; }
constexpr bool is_ascii_alpha(char16_t c) { return is_ascii_upper(c) || is_ascii_lower(c); }
constexpr bool is_ascii_digit(char16_t c) { return c >= u'0' && c <= u'9'; }
/// ASCII white space: tab, LF, FF, CR, blank.
constexpr bool is_ascii_space(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\n' || c == u'\f' || c == u'\r';
}
constexpr char16_t ascii_lower(char16_t c) { return is_ascii_upper(c) ? char16_t(c + 0x20) : c; }
constexpr char16_t ascii_upper(char16_t c) { return is_ascii_lower(c) ? char16_t(c - 0x20) : c; }

std::u16string ascii_lower(std::u16string_view text);
std::u16string ascii_upper(std::u16string_view text);
bool equals_ignoring_ascii_case(std::u16string_view a, std::u16string_view b);
bool contains(std::u16string_view text, std::u16string_view part);
/// Without ASCII white space at both ends.
std::u16string_view trimmed(std::u16string_view text);
std::vector<std::u16string_view> split(std::u16string_view text, char16_t separator);
/// Split on runs of ASCII white space; no empty parts.
std::vector<std::u16string_view> split_on_space(std::u16string_view text);

std::u16string to_text(std::int64_t number);
/// An optional sign and decimal digits, nothing else.
std::optional<std::int64_t> parse_integer(std::u16string_view text);

constexpr bool is_high_surrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
constexpr bool is_low_surrogate(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

}  // namespace tvx
