#include "tvx/spelling/word_rules.h"

#include <unicode/normlzr.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf16.h>

#include <algorithm>

#include "tvx/base/strings.h"

namespace tvx::spelling {

namespace {

constexpr std::size_t longest_word = 80;
/// How far is looked for the ends of an address.
constexpr std::size_t longest_address = 512;

constexpr char16_t typographic_apostrophe = 0x2019, soft_hyphen = 0x00AD;

bool is_unseen(char16_t unit) {
  return unit == soft_hyphen || unit == 0x200B || unit == 0x200D || unit == 0x2060 || unit == 0xFEFF;
}

bool is_plain(std::u16string_view word) {
  return std::ranges::all_of(word, [](char16_t unit) { return unit < 0x80; });
}

bool ends_address(char16_t unit) {
  return u_isUWhiteSpace(unit) || unit == u'<' || unit == u'>' || unit == u'"' || unit == u'(' ||
         unit == u')';
}

bool is_word_unit(char16_t unit) { return u_isalnum(unit); }

bool has_at_sign(std::u16string_view piece) {
  const std::size_t at = piece.find(u'@');
  return at != piece.npos && at > 0 && at + 1 < piece.size() && is_word_unit(piece[at - 1]) &&
         is_word_unit(piece[at + 1]);
}

/// "/usr/share", "C:\x", "~/x": two bars at least, or a start that only paths have. "and/or" is two words.
bool is_path(std::u16string_view piece) {
  if (piece.starts_with(u"~/") || piece.starts_with(u"\\\\")) return true;
  if (piece.size() > 2 && is_ascii_alpha(piece[0]) && piece[1] == u':' &&
      (piece[2] == u'\\' || piece[2] == u'/'))
    return true;
  return piece.size() > 1 && piece[0] == u'/' && is_word_unit(piece[1]) && piece.find(u'/', 1) != piece.npos;
}

}  // namespace

bool is_asked(std::u16string_view word) {
  if (word.size() > longest_word) return false;
  bool letters = false;
  for (std::size_t at = 0; at < word.size();) {
    UChar32 letter;
    U16_NEXT(word.data(), at, word.size(), letter);
    if (letter == u'.' || letter == u'_' || letter == u':' || u_isdigit(letter)) return false;
    letters = letters || u_isalpha(letter);
  }
  return letters;
}

bool is_in_address(std::u16string_view text, std::size_t from, std::size_t to) {
  const std::size_t first = from > longest_address ? from - longest_address : 0;
  const std::size_t last = std::min(text.size(), to + longest_address);
  while (from > first && !ends_address(text[from - 1])) --from;
  while (to < last && !ends_address(text[to])) ++to;
  const std::u16string_view piece = text.substr(from, to - from);
  return piece.find(u"://") != piece.npos || piece.starts_with(u"www.") || piece.starts_with(u"mailto:") ||
         has_at_sign(piece) || is_path(piece);
}

std::vector<std::u16string> with_hyphens(std::u16string_view text, std::size_t from, std::size_t to) {
  const auto is_hyphen = [&](std::size_t at) { return text[at] == u'-' || text[at] == 0x2010; };
  const std::u16string word(text.substr(from, to - from));
  std::vector<std::u16string> all;
  if (to < text.size() && is_hyphen(to)) all.push_back(word + u'-');
  if (from > 0 && is_hyphen(from - 1)) all.push_back(u'-' + word);
  return all;
}

std::u16string asked_form(std::u16string_view word) {
  if (is_plain(word)) return std::u16string(word);
  std::u16string kept;
  for (const char16_t unit : word) {
    if (!is_unseen(unit)) kept += unit == typographic_apostrophe ? u'\'' : unit;
  }
  UErrorCode failed = U_ZERO_ERROR;
  const icu::Normalizer2* composer = icu::Normalizer2::getNFCInstance(failed);
  if (U_FAILURE(failed)) return kept;
  const icu::UnicodeString text(false, kept.data(), static_cast<std::int32_t>(kept.size()));
  if (composer->isNormalized(text, failed)) return kept;
  const icu::UnicodeString composed = composer->normalize(text, failed);
  return {composed.getBuffer(), static_cast<std::size_t>(composed.length())};
}

std::u16string like(std::u16string_view word, std::u16string suggestion) {
  if (word.find(typographic_apostrophe) != word.npos)
    std::ranges::replace(suggestion, u'\'', typographic_apostrophe);
  if (word.empty() || suggestion.empty() || !u_isupper(word[0])) return suggestion;
  suggestion[0] = static_cast<char16_t>(u_toupper(suggestion[0]));
  return suggestion;
}

}  // namespace tvx::spelling
