#include "tvx/base/strings.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace tvx {

namespace {

// Most text is ASCII, and goes this many letters at a time.
constexpr std::size_t stride = 16;

bool is_ascii_stride(const char* bytes) {
  std::uint64_t first, second;
  std::memcpy(&first, bytes, 8);
  std::memcpy(&second, bytes + 8, 8);
  return ((first | second) & 0x8080'8080'8080'8080) == 0;
}

bool is_ascii_stride(const char16_t* units) {
  unsigned all = 0;
  for (std::size_t i = 0; i < stride; ++i) all |= units[i];
  return all < 0x80;
}

}  // namespace

std::string to_utf8(std::u16string_view text) {
  std::string out(text.size() + text.size() / 8 + stride, '\0');
  std::size_t length = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (out.size() - length < stride) out.resize(2 * out.size());
    if (text.size() - i >= stride && is_ascii_stride(text.data() + i)) {
      for (std::size_t unit = 0; unit < stride; ++unit)
        out[length + unit] = static_cast<char>(text[i + unit]);
      length += stride;
      i += stride;
      continue;
    }
    UChar32 c;
    U16_NEXT(text.data(), i, text.size(), c);
    if (U_IS_SURROGATE(c)) c = 0xFFFD;
    U8_APPEND_UNSAFE(out.data(), length, c);
  }
  out.resize(length);
  return out;
}

std::u16string from_utf8(std::string_view bytes) {
  std::u16string out(bytes.size(), u'\0');  // never more units than bytes
  char16_t* to = out.data();
  for (std::size_t i = 0; i < bytes.size();) {
    if (bytes.size() - i >= stride && is_ascii_stride(bytes.data() + i)) {
      for (std::size_t byte = 0; byte < stride; ++byte)
        to[byte] = static_cast<unsigned char>(bytes[i + byte]);
      to += stride;
      i += stride;
      continue;
    }
    UChar32 c;
    U8_NEXT_OR_FFFD(bytes.data(), i, bytes.size(), c);
    if (c > 0xFFFF) {
      *to++ = U16_LEAD(c);
      *to++ = U16_TRAIL(c);
    } else {
      *to++ = static_cast<char16_t>(c);
    }
  }
  out.resize(static_cast<std::size_t>(to - out.data()));
  return out;
}

std::u16string ascii_lower(std::u16string_view text) {
  std::u16string out(text);
  for (char16_t& c : out) c = ascii_lower(c);
  return out;
}

std::u16string ascii_upper(std::u16string_view text) {
  std::u16string out(text);
  for (char16_t& c : out) c = ascii_upper(c);
  return out;
}

bool equals_ignoring_ascii_case(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return ascii_lower(x) == ascii_lower(y); });
}

bool contains(std::u16string_view text, std::u16string_view part) {
  return text.find(part) != std::u16string_view::npos;
}

std::u16string_view trimmed(std::u16string_view text) {
  while (!text.empty() && is_ascii_space(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_ascii_space(text.back())) text.remove_suffix(1);
  return text;
}

std::vector<std::u16string_view> split(std::u16string_view text, char16_t separator) {
  std::vector<std::u16string_view> parts;
  for (std::size_t start = 0;;) {
    const std::size_t end = text.find(separator, start);
    parts.push_back(text.substr(start, end == text.npos ? text.npos : end - start));
    if (end == text.npos) return parts;
    start = end + 1;
  }
}

std::vector<std::u16string_view> split_on_space(std::u16string_view text) {
  std::vector<std::u16string_view> parts;
  for (std::size_t i = 0; i < text.size();) {
    while (i < text.size() && is_ascii_space(text[i])) ++i;
    const std::size_t start = i;
    while (i < text.size() && !is_ascii_space(text[i])) ++i;
    if (i > start) parts.push_back(text.substr(start, i - start));
  }
  return parts;
}

std::u16string to_text(std::int64_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

std::optional<std::int64_t> parse_integer(std::u16string_view text) {
  const bool negative = !text.empty() && text.front() == u'-';
  if (negative || (!text.empty() && text.front() == u'+')) text.remove_prefix(1);
  if (text.empty() || text.size() > 18) return std::nullopt;
  std::int64_t value = 0;
  for (const char16_t c : text) {
    if (!is_ascii_digit(c)) return std::nullopt;
    value = value * 10 + (c - u'0');
  }
  return negative ? -value : value;
}

}  // namespace tvx
