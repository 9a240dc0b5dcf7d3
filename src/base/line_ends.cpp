#include "tvx/base/line_ends.h"

namespace tvx {
namespace {

std::u16string with(std::u16string_view line_end, std::u16string_view text, std::size_t expected_size) {
  std::u16string result;
  result.reserve(expected_size);
  std::size_t copied = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != u'\r' && text[at] != u'\n') continue;
    result += text.substr(copied, at - copied);
    result += line_end;
    if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n') ++at;
    copied = at + 1;
  }
  return result += text.substr(copied);
}

}  // namespace

std::u16string with_lf(std::u16string_view text) { return with(u"\n", text, text.size()); }
std::u16string with_crlf(std::u16string_view text) {
  return with(u"\r\n", text, text.size() + text.size() / 32);
}

}  // namespace tvx
