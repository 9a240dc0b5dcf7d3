#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/source/markup_scanner.h"

namespace tvx::test {

/// The same edits in a code, as its user makes them, and in the markup that it was made of, each found by its
/// surroundings: a stretch of letters that stands once in both.
class RandomEdits {
 public:
  RandomEdits(std::u16string_view markup, std::u16string_view code, std::uint64_t seed)
      : markup_(markup), code_(code), random_(seed) {}

  /// As many of `most` as find a position.
  std::size_t make(std::size_t most) {
    for (std::size_t tries = 0; tries < 6 * most && in_code_.size() < most; ++tries)
      random_() % 5 == 0 ? delete_line() : edit_stretch();
    return in_code_.size();
  }
  std::u16string markup() const { return applied(markup_, in_markup_); }
  std::u16string code() const { return applied(code_, in_code_); }

 private:
  struct Edit {
    std::size_t begin, end;
    std::u16string text;
  };

  std::size_t below(std::size_t limit) { return random_() % limit; }

  /// Where the stretch stands, if it does so once and nowhere near another edit.
  static std::optional<std::size_t> only_place(std::u16string_view text, std::u16string_view stretch) {
    const std::size_t at = text.find(stretch);
    if (at == text.npos || text.find(stretch, at + 1) != text.npos) return {};
    return at;
  }
  /// The same letters stand before it in both.
  bool is_same_place(std::size_t at_markup, std::size_t at_code) const {
    const auto letters = [](std::u16string_view text) {
      return std::ranges::count_if(text, [](char16_t c) { return !is_ascii_space(c); });
    };
    return letters(markup_.substr(0, at_markup)) == letters(code_.substr(0, at_code));
  }
  static bool is_free(const std::vector<Edit>& edits, std::size_t begin, std::size_t end) {
    return std::ranges::none_of(edits, [&](const Edit& e) { return begin <= e.end && e.begin <= end; });
  }

  void edit_stretch() {
    if (markup_.size() < 8) return;
    const std::size_t size = 4 + below(20), begin = below(markup_.size() - 7);
    std::u16string_view stretch = markup_.substr(begin, size);
    if (has_line_break(stretch) || trimmed(stretch).size() != stretch.size()) return;
    const auto at_markup = only_place(markup_, stretch), at_code = only_place(code_, stretch);
    if (at_markup && at_code && is_same_place(*at_markup, *at_code))
      put(*at_markup, *at_code, stretch.size(), changed(stretch));
  }

  void put(std::size_t at_markup, std::size_t at_code, std::size_t size, const std::u16string& text) {
    if (!is_free(in_markup_, at_markup, at_markup + size) || !is_free(in_code_, at_code, at_code + size))
      return;
    in_markup_.push_back({at_markup, at_markup + size, text});
    in_code_.push_back({at_code, at_code + size, text});
  }

  std::u16string changed(std::u16string_view stretch) {
    const std::size_t quote = stretch.find(u"=\"");
    const std::u16string number = to_text(std::int64_t(random_() % 1000));
    std::u16string text(stretch);
    if (quote != stretch.npos && quote + 2 < stretch.size()) return text.insert(quote + 2, u"v" + number);
    switch (below(4)) {
      case 0: return u"<B>" + text + u"</B>";
      case 1: return text.insert(1 + below(text.size() - 1), u" new " + number);
      case 2: return text.insert(1 + below(text.size() - 1), u"<BR>");
      default: return text.erase(1, text.size() / 2);
    }
  }

  /// A line with all that is in it, its indentation and its end; of the markup, what the line says.
  void delete_line() {
    if (code_.empty()) return;
    const std::size_t at = below(code_.size());
    std::size_t begin = code_.rfind(u'\n', at);
    begin = begin == code_.npos ? 0 : begin == at ? at + 1 : begin + 1;
    const std::size_t end = code_.find(u'\n', begin);
    if (begin >= code_.size() || end == code_.npos) return;
    const std::u16string_view line = trimmed(code_.substr(begin, end - begin));
    if (line.size() < 6 || !only_place(code_, line)) return;
    const auto at_markup = only_place(markup_, line);
    if (!at_markup || !is_same_place(*at_markup, static_cast<std::size_t>(line.data() - code_.data())))
      return;
    if (!is_free(in_code_, begin, end + 1)) return;
    if (!is_free(in_markup_, *at_markup, *at_markup + line.size())) return;
    std::size_t from = *at_markup, to = from + line.size();
    // Blanks at the line's end are text, and where lines count indentation and line break are too.
    std::size_t lead = static_cast<std::size_t>(line.data() - code_.data()) - begin;
    while (lead > 0 && from > 0 && is_kept(from - 1) && markup_[from - 1] != u'\n' &&
           is_ascii_space(markup_[from - 1]))
      --lead, --from;
    // What of the blanks was drawn can't be told from here.
    if (from > 0 && !is_kept(from - 1) && is_ascii_space(markup_[from - 1]) && markup_[from - 1] != u'\n')
      return;
    std::size_t trail = end - 1 - (static_cast<std::size_t>(line.data() - code_.data()) + line.size());
    while (trail > 0 && to < markup_.size() && is_ascii_space(markup_[to]) && markup_[to] != u'\n')
      --trail, ++to;
    if (trail > 0) return;
    if (to < markup_.size() && markup_[to] == u'\n' && is_kept(to)) ++to;
    if (!is_free(in_markup_, from, to)) return;
    in_markup_.push_back({from, to, {}});
    in_code_.push_back({begin, end + 1, {}});
  }
  /// Whether line breaks and indents count at that place of the markup.
  bool is_kept(std::size_t at) {
    if (kept_.empty()) {
      kept_.resize(markup_.size());
      source::MarkupScanner scanner(markup_);
      while (const auto piece = scanner.next())
        if (piece->kept || piece->kind != source::Piece::Kind::Text)
          std::fill(kept_.begin() + std::ptrdiff_t(piece->begin), kept_.begin() + std::ptrdiff_t(piece->end),
                    true);
    }
    return kept_[at];
  }

  static bool has_line_break(std::u16string_view text) { return text.find_first_of(u"\r\n") != text.npos; }

  static std::u16string applied(std::u16string_view text, std::vector<Edit> edits) {
    std::ranges::sort(edits, {}, &Edit::begin);
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
  std::vector<bool> kept_;
  std::vector<Edit> in_markup_, in_code_;
};

/// How much longer than usual a law is to be tried.
inline std::size_t law_factor() {
  const char* text = std::getenv("TVX_LAW_FACTOR");
  return text ? std::max<std::size_t>(std::strtoul(text, nullptr, 10), 1) : 1;
}

}  // namespace tvx::test
