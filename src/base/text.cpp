#include "tvx/base/text.h"

#include <unicode/uchar.h>

#include <vector>

namespace tvx {
namespace {

char16_t upper_case(char16_t c) {
  if (c < 0x80) return c >= u'a' && c <= u'z' ? char16_t(c - 0x20) : c;
  const UChar32 upper = u_toupper(c);
  return upper <= 0xFFFF ? static_cast<char16_t>(upper) : c;
}

/// For each prefix of `pattern`, the length of its longest proper border: how much of a match is still
/// good when the next unit differs (Knuth, Morris, Pratt).
std::vector<std::size_t> borders(std::u16string_view pattern) {
  std::vector<std::size_t> border(pattern.size(), 0);
  for (std::size_t i = 1, length = 0; i < pattern.size(); ++i) {
    while (length > 0 && pattern[i] != pattern[length]) length = border[length - 1];
    if (pattern[i] == pattern[length]) ++length;
    border[i] = length;
  }
  return border;
}

/// Calls `found(start)` for each occurrence, from the left, without overlaps, until one gives false.
template <class Found>
void for_each_occurrence(std::u16string_view pattern, std::u16string_view text, Found&& found) {
  const std::vector<std::size_t> border = borders(pattern);
  for (std::size_t i = 0, matched = 0; i < text.size(); ++i) {
    while (matched > 0 && text[i] != pattern[matched]) matched = border[matched - 1];
    if (text[i] == pattern[matched]) ++matched;
    if (matched < pattern.size()) continue;
    if (!found(i + 1 - matched)) return;
    matched = 0;
  }
}

}  // namespace

std::u16string upper_cased(std::u16string_view text) {
  std::u16string out(text);
  for (char16_t& c : out) c = upper_case(c);
  return out;
}

std::u16string ReplaceAll(std::u16string_view find, std::u16string_view replacement, std::u16string_view text,
                          bool caseSensitive) {
  if (find.empty() || find.size() > text.size()) return std::u16string(text);
  std::u16string out;
  std::size_t copied = 0;
  const auto replace_at = [&](std::size_t start) {
    out.append(text, copied, start - copied).append(replacement);
    copied = start + find.size();
    return true;
  };
  if (caseSensitive) {
    for_each_occurrence(find, text, replace_at);
  } else {
    for_each_occurrence(upper_cased(find), upper_cased(text), replace_at);
  }
  return out.append(text, copied);
}

std::size_t FirstOccurrence(std::u16string_view find, std::u16string_view text) {
  if (find.empty()) return 0;
  std::size_t first = text.npos;
  if (find.size() > text.size()) return first;
  for_each_occurrence(find, text, [&](std::size_t start) {
    first = start;
    return false;
  });
  return first;
}

std::u16string NullToEmpty(const std::optional<std::u16string>& value) {
  return value.value_or(std::u16string());
}

std::u16string_view FileNameFromPath(std::u16string_view path) {
  std::size_t slash = path.rfind(u'\\');
  if (slash == path.npos) slash = path.rfind(u'/');
  return slash == path.npos ? path : path.substr(slash + 1);
}

std::u16string_view TrimNul(std::u16string_view text) { return text.substr(0, text.find(u'\0')); }

}  // namespace tvx
