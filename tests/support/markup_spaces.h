#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx::test {

/// What white space is at a place of serialised markup: between words and tags; in the text of an IFRAME and
/// its like, which are no tags; or what it is, in tags, comments, preformatted text, fields, scripts and
/// style sheets.
enum class SpaceKind : std::uint8_t { BetweenTags, InRawText, Own };

/// For each unit. Reads as simply as a serialiser's text allows.
inline std::vector<SpaceKind> kinds_of_space(std::u16string_view markup) {
  std::vector<SpaceKind> kinds(markup.size());
  const auto fill = [&](std::size_t begin, std::size_t end, SpaceKind kind = SpaceKind::Own) {
    std::fill(kinds.begin() + std::ptrdiff_t(begin), kinds.begin() + std::ptrdiff_t(end), kind);
  };
  const auto find = [&](std::u16string_view part, std::size_t from) {
    const std::size_t found = markup.find(part, from);
    return found == markup.npos ? markup.size() : found + part.size();
  };
  std::u16string pre;
  std::size_t depth = 0;
  for (std::size_t at = 0; at < markup.size();) {
    const char16_t next = at + 1 < markup.size() ? markup[at + 1] : u' ';
    if (markup[at] != u'<' || !(is_ascii_alpha(next) || next == u'/' || next == u'!')) {
      const std::size_t end = std::min(markup.find(u'<', at + 1), markup.size());
      if (depth > 0) fill(at, end);
      at = end;
      continue;
    }
    const std::size_t begin = at;
    if (markup.substr(at).starts_with(u"<!--")) {
      at = find(u"-->", at + 4);
      fill(begin, at);
      continue;
    }
    bool quoted = false;
    for (; at < markup.size() && (quoted || markup[at] != u'>'); ++at)
      if (markup[at] == u'"') quoted = !quoted && markup[at - 1] == u'=';
    at = std::min(at + 1, markup.size());
    fill(begin, at);
    std::u16string name(markup.substr(begin + 1, at - begin - 2));
    name.resize(std::min(name.find_first_of(u" \t\n>"), name.size()));
    const std::u16string written = name;
    name = ascii_upper(name);
    const auto is_one_of = [&](std::initializer_list<std::u16string_view> names) {
      return std::ranges::find(names, std::u16string_view(name)) != names.end();
    };
    if (is_one_of({u"PRE", u"LISTING"}) && (depth == 0 || name == pre)) {
      pre = name;
      ++depth;
    } else if (depth > 0 && name == u"/" + pre) {
      --depth;
    } else if (is_one_of({u"TEXTAREA", u"SCRIPT", u"STYLE", u"XMP", u"IFRAME", u"NOFRAMES", u"NOEMBED"})) {
      const std::size_t end = std::min(markup.find(u"</" + written, at), markup.size());
      // A script of one line stands in a line of the code like others.
      const bool has_lines = markup.substr(at, end - at).find(u'\n') != markup.npos;
      const bool is_own = is_one_of({u"TEXTAREA", u"STYLE", u"XMP"}) || (name == u"SCRIPT" && has_lines);
      const bool is_blank = trimmed(markup.substr(at, end - at)).empty();
      if (depth > 0 || is_own || !is_blank)
        fill(at, end, depth > 0 || is_own ? SpaceKind::Own : SpaceKind::InRawText);
      at = end;
    }
  }
  return kinds;
}

}  // namespace tvx::test
