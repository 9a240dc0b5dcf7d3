#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "support/markup_spaces.h"
#include "tvx/base/strings.h"

namespace tvx::test {

/// The same edits in a code, as its user makes them, and in the markup that it was made of.
///
/// Both have the same letters, which are all that isn't white space, and are known by their number. Nothing
/// else of how one is made from the other is asked here; docs/code-view.md says what is the same edit.
class RandomEdits {
 public:
  RandomEdits(std::u16string_view markup, std::u16string_view code, std::uint64_t seed)
      : markup_(markup), code_(code), random_(seed), spaces_(kinds_of_space(markup)) {
    for (std::size_t at = 0; at < markup.size(); ++at)
      if (!is_ascii_space(markup[at])) in_markup_.push_back(at);
    for (std::size_t at = 0; at < code.size(); ++at)
      if (!is_ascii_space(code[at])) in_code_.push_back(at);
    taken_.resize(in_markup_.size() + 2);
    read_lines();
  }

  /// Whether the code shows all letters of the markup and no others.
  bool shows_all_letters() const {
    return std::ranges::equal(in_markup_, in_code_,
                              [&](std::size_t a, std::size_t b) { return markup_[a] == code_[b]; });
  }

  /// As many of `most` as find a position.
  std::size_t make(std::size_t most) {
    std::size_t made = 0;
    for (std::size_t tries = 0; tries < 6 * most && made < most && !in_code_.empty(); ++tries) {
      const std::size_t kind = below(10);
      made += kind < 3 ? delete_line() : kind < 4 ? type_line() : edit_stretch();
    }
    return made - take_out_lines();
  }
  std::u16string markup() const { return applied(markup_, markup_edits_); }
  std::u16string code() const { return applied(code_, code_edits_); }

 private:
  struct Edit {
    std::size_t begin, end;
    std::u16string text;
  };
  /// Of the code; its letters.
  struct Line {
    std::size_t begin, end, first, last;
    bool is_out = false;
  };

  std::size_t below(std::size_t limit) { return random_() % limit; }

  void read_lines() {
    std::size_t letter = 0;
    for (std::size_t begin = 0; begin < code_.size();) {
      const std::size_t found = code_.find(u'\n', begin),
                        end = found == code_.npos ? code_.size() : found + 1;
      const std::size_t first = letter;
      while (letter < in_code_.size() && in_code_[letter] < end) ++letter;
      if (letter > first) lines_.push_back({begin, end, first, letter});
      begin = end;
    }
  }

  bool take(std::size_t first, std::size_t last) {
    const auto begin = taken_.begin() + std::ptrdiff_t(first), end = taken_.begin() + std::ptrdiff_t(last);
    if (std::find(begin, end, true) != end) return false;
    std::fill(begin, end, true);
    return true;
  }
  /// Edits that stand closer in a line are one edit for anybody who sees no more than what it has become.
  bool take_with_margin(std::size_t first, std::size_t last) {
    constexpr std::size_t margin = 4;
    const Line& line = *std::ranges::upper_bound(lines_, first, {}, &Line::last);
    const std::size_t from = std::max(line.first, first - std::min(first, margin)),
                      to = std::min(line.last, last + margin);
    const auto begin = taken_.begin();
    if (std::find(begin + std::ptrdiff_t(from), begin + std::ptrdiff_t(to), true) !=
        begin + std::ptrdiff_t(to))
      return false;
    return take(first, last);
  }

  // --- edits of letters that stand the same in both, white space between them included ---

  bool edit_stretch() {
    const std::size_t first = below(in_code_.size()), last = first + 3 + below(18);
    if (last > in_code_.size()) return false;
    const std::size_t begin = in_markup_[first], end = in_markup_[last - 1] + 1;
    const std::u16string_view stretch = markup_.substr(begin, end - begin);
    if (stretch != code_.substr(in_code_[first], end - begin) || stretch.find(u'\n') != stretch.npos)
      return false;
    if (below(4) == 0) return wrap(first, last);
    if (!take_with_margin(first, last)) return false;
    const std::u16string text = changed(stretch);
    markup_edits_.push_back({begin, end, text});
    code_edits_.push_back({in_code_[first], in_code_[first] + stretch.size(), text});
    return true;
  }

  std::u16string changed(std::u16string_view stretch) {
    const std::size_t quote = stretch.find(u"=\"");
    const std::u16string number = to_text(std::int64_t(random_() % 1000));
    std::u16string text(stretch);
    if (quote != stretch.npos && quote + 2 < stretch.size()) return text.insert(quote + 2, u"v" + number);
    switch (below(3)) {
      case 0: return text.insert(1 + below(text.size() - 1), u" new " + number);
      case 1: return text.insert(1 + below(text.size() - 1), u"<BR>");
      default: return text.erase(1, text.size() / 2);
    }
  }

  bool wrap(std::size_t first, std::size_t last) {
    if (!says_where(first) || !says_where(last) || !take_with_margin(first, last)) return false;
    put(is_hidden(first) && !is_tag_end(first) ? in_markup_[first - 1] + 1 : in_markup_[first], u"<B>");
    put(is_hidden(last) && is_tag_end(last) ? in_markup_[last] : in_markup_[last - 1] + 1, u"</B>");
    code_edits_.push_back({in_code_[first], in_code_[first], u"<B>"});
    code_edits_.push_back({in_code_[last - 1] + 1, in_code_[last - 1] + 1, u"</B>"});
    return true;
  }

  // White space that isn't shown at all: what is typed there goes beside the text that it is next to. Between
  // two tags it depends on what they are, which isn't asked here.
  bool is_hidden(std::size_t letter) const {
    if (letter == in_markup_.size()) return false;
    const Run run = run_before(letter);
    return run.code.empty() && !run.markup.empty();
  }
  bool is_tag_end(std::size_t letter) const { return letter == 0 || code_[in_code_[letter - 1]] == u'>'; }
  bool says_where(std::size_t letter) const {
    return !is_hidden(letter) || !is_tag_end(letter) || (letter > 0 && code_[in_code_[letter]] != u'<');
  }

  // --- lines ---

  bool delete_line() {
    Line& line = lines_[below(lines_.size())];
    if (line.is_out || !take(line.first, line.last)) return false;
    line.is_out = true;
    return true;
  }

  /// A line of the user's own in front of another one: after the text of the line before.
  bool type_line() {
    const Line& line = lines_[below(lines_.size())];
    if (taken_[line.first] || (line.first > 0 && taken_[line.first - 1])) return false;
    const std::u16string text = u"new line " + to_text(std::int64_t(random_() % 1000));
    const std::u16string indent(line.first == 0 ? 0 : below(3), u' ');
    code_edits_.push_back({line.begin, line.begin, indent + text + u"\r\n"});
    const Run run = run_before(line.first);
    if (line.first == 0)
      put(run.code.empty() ? in_markup_[0] : 0, text + u"\n");
    else if (run.is_own())
      put(run.begin + run.markup.rfind(u'\n') + 1, indent + text + u"\n");
    else
      put(run.begin + text_at_line_end(run), u"\n" + indent + text);
    taken_[line.first] = true;
    if (line.first > 0) taken_[line.first - 1] = true;
    return true;
  }
  void put(std::size_t at, const std::u16string& text) { markup_edits_.push_back({at, at, text}); }

  /// Lines that stood one after the other go as one. Where a line like the next one on a side of them is
  /// among them, nobody could tell which of the two is gone: these stay.
  std::size_t take_out_lines() {
    std::size_t stayed = 0;
    const auto text = [&](std::size_t i) {
      if (i >= lines_.size()) return std::u16string();
      std::u16string line(trimmed(code_.substr(lines_[i].begin, lines_[i].end - lines_[i].begin)));
      std::erase(line, u'/');  // once edited, a start tag can look like its end tag
      return line;
    };
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      if (!lines_[i].is_out) continue;
      const std::size_t first = i;
      while (i + 1 < lines_.size() && lines_[i + 1].is_out) ++i;
      bool is_clear = true;
      for (std::size_t out = first; out <= i; ++out)
        is_clear = is_clear && text(out) != text(i + 1) && (first == 0 || text(out) != text(first - 1));
      if (!is_clear) {
        stayed += i + 1 - first;
        continue;
      }
      code_edits_.push_back({lines_[first].begin, lines_[i].end, {}});
      take_out(lines_[first].first, lines_[i].last);
    }
    return stayed;
  }

  /// The white space in front of a letter.
  struct Run {
    std::size_t begin, end;  // in the markup
    std::u16string_view markup, code;
    SpaceKind kind;

    bool is_own() const { return kind == SpaceKind::Own; }
  };
  Run run_before(std::size_t letter) const {
    const auto of = [&](std::u16string_view text, const std::vector<std::size_t>& letters) {
      const std::size_t begin = letter == 0 ? 0 : letters[letter - 1] + 1;
      return text.substr(begin, (letter == letters.size() ? text.size() : letters[letter]) - begin);
    };
    const std::u16string_view markup = of(markup_, in_markup_), code = of(code_, in_code_);
    const auto begin = static_cast<std::size_t>(markup.data() - markup_.data());
    const SpaceKind kind = markup.empty() ? SpaceKind::BetweenTags : spaces_[begin];
    return {begin, begin + markup.size(), markup, code, kind};
  }

  static bool breaks_line(std::u16string_view space) { return space.find_first_of(u"\r\n") != space.npos; }

  /// How much of a run of the markup a line shows at its end.
  static std::size_t text_at_line_end(const Run& run) {
    if (run.begin == 0) return 0;  // a line's start alone
    const std::size_t shown = std::min(run.code.find(u'\r'), run.code.size());
    if (shown == 0) return 0;
    return breaks_line(run.markup) ? run.markup.size() : shown;
  }
  /// How much of it the next line shows after its indentation: nothing where the formatter starts that line.
  std::size_t text_at_line_start(const Run& run, std::size_t letter) const {
    if (letter == in_markup_.size() || breaks_line(run.markup)) return 0;
    constexpr std::u16string_view starts[] = {
        u"TABLE",  u"TR",     u"TD",     u"TBODY", u"THEAD", u"TFOOT", u"FONT",   u"DIV", u"SPAN",
        u"CENTER", u"SCRIPT", u"IFRAME", u"UL",    u"OL",    u"DL",    u"OBJECT", u"MAP", u"AREA",
        u"BR",     u"P",      u"LI",     u"DT",    u"DD",    u"PARAM", u"EMBED"};
    std::u16string_view tag = markup_.substr(in_markup_[letter]);
    if (tag.starts_with(u"<!--") && run.kind != SpaceKind::InRawText) return 0;
    if (tag.starts_with(u'<') && run.kind != SpaceKind::InRawText) {
      tag.remove_prefix(1);
      const bool is_end = tag.starts_with(u'/');
      if (is_end) tag.remove_prefix(1);
      const std::u16string_view name = tag.substr(0, tag.find_first_of(u" >"));
      const auto found = std::ranges::find(starts, name);
      if (found != std::end(starts) && (!is_end || found < std::end(starts) - 7)) return 0;
    }
    return run.markup.size() - text_at_line_end(run);
  }

  static bool has_line_break(std::u16string_view text) { return text.find(u'\n') != text.npos; }

  // What the lines show goes, and what is left of the lines that they stood in, if they stood alone there.
  void take_out(std::size_t first, std::size_t last) {
    const Run left = run_before(first), right = run_before(last);
    if (first == 0 && last == in_markup_.size()) {
      markup_edits_.push_back({0, markup_.size(), {}});
      return;
    }
    std::u16string_view before = left.markup, after = right.markup;
    if (!left.is_own()) before.remove_suffix(text_at_line_start(left, first));
    if (!right.is_own()) after.remove_prefix(text_at_line_end(right));
    const bool alone_before = first == 0 || has_line_break(before),
               alone_after = last == in_markup_.size() || has_line_break(after);
    if (left.is_own() || (alone_before && alone_after)) before = before.substr(0, before.rfind(u'\n') + 1);
    if (right.is_own() || (alone_before && alone_after))
      after = has_line_break(after) ? after.substr(after.find(u'\n') + 1) : std::u16string_view();
    markup_edits_.push_back({left.begin, right.end, std::u16string(before) + std::u16string(after)});
  }

  static std::u16string applied(std::u16string_view text, std::vector<Edit> edits) {
    // At the same place: what ends there, then what starts.
    std::ranges::stable_sort(
        edits, {}, [](const Edit& edit) { return std::tuple(edit.begin, edit.end, edit.text != u"</B>"); });
    std::u16string result;
    std::size_t done = 0;
    for (const Edit& edit : edits) {
      result += text.substr(done, edit.begin - done);
      result += edit.text;
      done = edit.end;
    }
    return result += text.substr(done);
  }

  const std::u16string_view markup_, code_;
  std::mt19937_64 random_;
  const std::vector<SpaceKind> spaces_;
  std::vector<std::size_t> in_markup_, in_code_;  // where the letters stand
  std::vector<bool> taken_;
  std::vector<Line> lines_;
  std::vector<Edit> markup_edits_, code_edits_;
};

/// How much longer than usual a law is to be tried.
inline std::size_t law_factor() {
  const char* text = std::getenv("TVX_LAW_FACTOR");
  return text ? std::max<std::size_t>(std::strtoul(text, nullptr, 10), 1) : 1;
}

}  // namespace tvx::test
