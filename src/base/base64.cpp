#include "tvx/base/base64.h"

#include <cstdint>

namespace tvx {
namespace {

constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

int value_of(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  return c == '+' ? 62 : c == '/' ? 63 : -1;
}

bool is_space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r'; }

}  // namespace

std::string to_base64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = bytes.size() - i < 3 ? bytes.size() - i : 3;
    std::uint32_t group = 0;
    for (std::size_t j = 0; j < 3; ++j)
      group = group << 8 | (j < count ? static_cast<unsigned char>(bytes[i + j]) : 0U);
    for (std::size_t j = 0; j < 4; ++j) text += j <= count ? letters[group >> (18 - 6 * j) & 63] : '=';
  }
  return text;
}

std::optional<std::string> from_base64(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t group = 0;
  int bits = 0;
  while (!text.empty() && (text.back() == '=' || is_space(text.back()))) text.remove_suffix(1);
  for (char c : text) {
    if (is_space(c)) continue;
    const int value = value_of(c);
    if (value < 0) return {};
    group = group << 6 | static_cast<std::uint32_t>(value);
    if ((bits += 6) < 8) continue;
    bits -= 8;
    bytes += static_cast<char>(group >> bits & 0xFF);
  }
  if (bits == 6) return {};
  return bytes;
}

}  // namespace tvx
