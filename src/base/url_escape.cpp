#include "tvx/base/url_escape.h"

#include <unicode/utf8.h>

#include "tvx/base/code_page.h"
#include "tvx/base/strings.h"

namespace tvx {
namespace {

int hexadecimal_digit(char16_t c) {
  if (is_ascii_digit(c)) return c - u'0';
  const char16_t lower = ascii_lower(c);
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

/// The byte that "%XX" at `i` stands for, -1 if there is none.
int escaped_byte(std::u16string_view text, std::size_t i) {
  if (text[i] != u'%' || text.size() - i < 3) return -1;
  const int high = hexadecimal_digit(text[i + 1]);
  const int low = hexadecimal_digit(text[i + 2]);
  return high < 0 || low < 0 ? -1 : high * 16 + low;
}

bool is_utf8(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    UChar32 c;
    U8_NEXT(bytes.data(), i, bytes.size(), c);
    if (c < 0) return false;
  }
  return true;
}

}  // namespace

std::u16string percent_encoded(std::u16string_view text, std::u16string_view escapes) {
  const auto stays = [&](char16_t c) { return c >= 0x20 && c <= 0x7E && escapes.find(c) == escapes.npos; };
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    if (stays(text[i])) {
      out.push_back(text[i++]);
      continue;
    }
    const bool pair = is_high_surrogate(text[i]) && i + 1 < text.size() && is_low_surrogate(text[i + 1]);
    for (const char byte : to_utf8(text.substr(i, pair ? 2 : 1))) {
      const auto value = static_cast<unsigned char>(byte);
      out += {u'%', u"0123456789ABCDEF"[value / 16], u"0123456789ABCDEF"[value % 16]};
    }
    i += pair ? 2 : 1;
  }
  return out;
}

std::u16string percent_decoded(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    std::string bytes;
    for (int byte; i < text.size() && (byte = escaped_byte(text, i)) >= 0; i += 3) {
      bytes.push_back(static_cast<char>(byte));
    }
    if (!bytes.empty()) {
      out += is_utf8(bytes) ? from_utf8(bytes) : CodePage::windows_1252().decode(bytes);
    } else {
      out.push_back(text[i++]);
    }
  }
  return out;
}

}  // namespace tvx
