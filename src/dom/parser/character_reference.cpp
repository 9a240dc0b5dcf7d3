#include "tvx/dom/parser/character_reference.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "tvx/base/strings.h"

namespace tvx::dom::parser {
namespace {

struct NamedReference {
  std::string_view name;
  char32_t first, second;
};

constexpr NamedReference named_references[] = {
#define TVX_REFERENCE(name, first, second) {name, first, second},
#include "tvx/dom/parser/named_references.inc"
#undef TVX_REFERENCE
};

void append_code_point(char32_t c, std::u16string& out) {
  if (c < 0x10000) {
    out += static_cast<char16_t>(c);
    return;
  }
  out += static_cast<char16_t>(0xD7C0 + (c >> 10));
  out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
}

// The longest name that the text begins with. The table is sorted, so each letter narrows a range of it.
const NamedReference* longest_match(const char16_t* at, const char16_t* end) {
  const NamedReference* low = std::begin(named_references);
  const NamedReference* high = std::end(named_references);
  const NamedReference* match = nullptr;
  for (std::size_t length = 0; at + length != end; ++length) {
    const char16_t c = at[length];
    const auto letter = [length](const NamedReference& reference) {
      return length < reference.name.size() ? static_cast<unsigned char>(reference.name[length]) : 0;
    };
    low = std::partition_point(low, high, [&](const NamedReference& r) { return letter(r) < c; });
    high = std::partition_point(low, high, [&](const NamedReference& r) { return letter(r) <= c; });
    if (low == high) break;
    if (low->name.size() == length + 1) match = low;
  }
  return match;
}

// The C1 controls are meant as Windows-1252 (the table of section 13.2.5.80); 0 where they are themselves.
constexpr char16_t c1_replacements[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                          0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                          0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                          0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char32_t numeric_value(char32_t code) {
  if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return 0xFFFD;
  if (code >= 0x80 && code < 0xA0 && c1_replacements[code - 0x80]) return c1_replacements[code - 0x80];
  return code;
}

int digit_value(char16_t c, bool hexadecimal) {
  if (is_ascii_digit(c)) return c - u'0';
  const char16_t letter = ascii_lower(c);
  return hexadecimal && letter >= u'a' && letter <= u'f' ? letter - u'a' + 10 : -1;
}

// `at` points at the "#". Null if no number follows.
const char16_t* read_number(const char16_t* at, const char16_t* end, char32_t& code) {
  ++at;
  const bool hexadecimal = at != end && ascii_lower(*at) == u'x';
  if (hexadecimal) ++at;
  if (at == end || digit_value(*at, hexadecimal) < 0) return nullptr;
  code = 0;
  for (; at != end && digit_value(*at, hexadecimal) >= 0; ++at) {
    // Held just above the last code point, so that no number of digits overflows.
    code = std::min<char32_t>(code * (hexadecimal ? 16 : 10) + digit_value(*at, hexadecimal), 0x110000);
  }
  return at != end && *at == u';' ? at + 1 : at;
}

const char16_t* read_numeric(const char16_t* at, const char16_t* end, Halves halves, std::u16string& out) {
  char32_t code = 0, second = 0;
  const char16_t* after = read_number(at, end, code);
  if (!after) return nullptr;
  if (halves == Halves::Joined && code >= 0xD800 && code <= 0xDBFF && end - after > 1 && after[0] == u'&' &&
      after[1] == u'#') {
    const char16_t* after_both = read_number(after + 1, end, second);
    if (after_both && second >= 0xDC00 && second <= 0xDFFF) {
      out += static_cast<char16_t>(code);
      out += static_cast<char16_t>(second);
      return after_both;
    }
  }
  append_code_point(numeric_value(code), out);
  return after;
}

const char16_t* read_named(const char16_t* at, const char16_t* end, InAttribute in_attribute,
                           std::u16string& out) {
  const NamedReference* match = longest_match(at, end);
  if (!match) return nullptr;
  const char16_t* after = at + match->name.size();
  // Addresses with "&copy=1" in their query are older than this reference: there they stay as written.
  if (in_attribute == InAttribute::Yes && match->name.back() != ';' && after != end &&
      (*after == u'=' || is_ascii_alpha(*after) || is_ascii_digit(*after))) {
    return nullptr;
  }
  append_code_point(match->first, out);
  if (match->second) append_code_point(match->second, out);
  return after;
}

}  // namespace

const char16_t* read_character_reference(const char16_t* at, const char16_t* end, InAttribute in_attribute,
                                         Halves halves, std::u16string& out) {
  const char16_t* first = at + 1;
  const char16_t* after = nullptr;
  if (first != end && *first == u'#') {
    after = read_numeric(first, end, halves, out);
  } else if (first != end && is_ascii_alpha(*first)) {
    after = read_named(first, end, in_attribute, out);
  }
  if (after) return after;
  out += u'&';
  return first;
}

}  // namespace tvx::dom::parser
