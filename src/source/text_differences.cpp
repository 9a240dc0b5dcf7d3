#include "tvx/source/text_differences.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>

#include "tvx/base/strings.h"
#include "tvx/source/likeness.h"

namespace tvx::source {
namespace {

// --- parts of a text ---

struct Part {
  Offset begin, end;
};
using Parts = std::vector<Part>;

/// Lines without the white space at their ends. Empty lines are none.
Parts lines_of(std::u16string_view text) {
  Parts lines;
  for (Offset at = 0; at < text.size();) {
    Offset end = std::min(text.find(u'\n', at), text.size());
    const Offset next = end + 1;
    while (end > at && is_ascii_space(text[end - 1])) --end;
    if (end > at) lines.push_back({at, end});
    at = next;
  }
  return lines;
}

bool is_word(char16_t c) { return is_ascii_alpha(c) || is_ascii_digit(c) || c >= 0x80; }

/// Words, and all other characters one by one.
Parts words_of(std::u16string_view text) {
  Parts words;
  for (Offset at = 0; at < text.size();) {
    const Offset begin = at++;
    if (is_word(text[begin]))
      while (at < text.size() && is_word(text[at])) ++at;
    words.push_back({begin, at});
  }
  return words;
}

Parts letters_of(std::u16string_view text) {
  Parts letters(text.size());
  for (Offset at = 0; at < text.size(); ++at) letters[at] = {at, at + 1};
  return letters;
}

/// The same number for equal parts, in whichever text. Characters by themselves, which stand everywhere, tell
/// nothing of where they stand: where words are numbered, each has a number of its own.
class Numbers {
 public:
  explicit Numbers(bool of_words) : shortest_(of_words ? 2 : 1) {}

  std::vector<std::uint32_t> of(std::u16string_view text, const Parts& parts) {
    std::vector<std::uint32_t> numbers;
    numbers.reserve(parts.size());
    for (const Part& part : parts) {
      const std::size_t size = part.end - part.begin;
      numbers.push_back(size < shortest_ ? next_++ : number_of(text.substr(part.begin, size)));
    }
    return numbers;
  }

 private:
  std::uint32_t number_of(std::u16string_view part) {
    const auto [known, is_new] = known_.try_emplace(part, next_);
    if (is_new) ++next_;
    return known->second;
  }

  const std::size_t shortest_;
  std::uint32_t next_ = 0;
  std::unordered_map<std::u16string_view, std::uint32_t> known_;
};

/// Of a line without white space at its end.
std::size_t indent_of(std::u16string_view line) { return line.size() - trimmed(line).size(); }

std::size_t equal_at_start(std::u16string_view a, std::u16string_view b) {
  return static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
}

std::size_t equal_at_end(std::u16string_view a, std::u16string_view b, std::size_t most) {
  std::size_t size = 0;
  while (size < most && a[a.size() - 1 - size] == b[b.size() - 1 - size]) ++size;
  return size;
}

/// One line, to be compared with others.
class LineLikeness {
 public:
  explicit LineLikeness(std::u16string_view line)
      : line_(line), letters_(trimmed(line)), likeness_(letters_) {}

  /// How much is gained where this line has become the other: what both have in common, beyond what any two
  /// lines may have. Of equal gains, one change is better than several, and the same indentation than
  /// another.
  std::size_t gain(std::u16string_view other) const {
    const std::u16string_view letters = trimmed(other);
    const bool is_equal = letters == letters_;
    const std::size_t chance = std::min(Likeness::most(letters), likeness_.most());
    const std::size_t common = is_equal ? chance : likeness_.with(letters);
    if (2 * common <= chance) return 0;
    const std::size_t shorter = std::min(letters.size(), letters_.size());
    const std::size_t front = equal_at_start(letters, letters_);
    const bool is_one_change = front + equal_at_end(letters, letters_, shorter - front) == shorter;
    return 4 * (2 * common - chance) + (is_one_change ? 2 : 0) +
           (indent_of(line_) == indent_of(other) ? 1 : 0);
  }

 private:
  const std::u16string_view line_, letters_;
  const Likeness likeness_;
};

// --- what two texts share ---

/// A stretch that stands in both.
struct Shared {
  Offset begin, new_begin, size;
};

class Comparison {
 public:
  Comparison(std::u16string_view before, std::u16string_view after) : before_(before), after_(after) {}

  std::vector<Difference> run() {
    // Most of a large text is equal at both ends: only the lines between are cut into parts.
    const std::size_t shorter = std::min(before_.size(), after_.size());
    Offset front = equal_at_start(before_, after_);
    if (front == before_.size() && front == after_.size()) return {};
    std::size_t back = equal_at_end(before_, after_, shorter - front);
    const auto starts_line = [](std::u16string_view text, Offset at) {
      return at == 0 || text[at - 1] == u'\n';
    };
    while (!starts_line(before_, front)) --front;
    while (back > 0 &&
           !(starts_line(before_, before_.size() - back) && starts_line(after_, after_.size() - back)))
      --back;
    share(0, 0, front);
    compare_lines({front, before_.size() - back}, {front, after_.size() - back});
    share(before_.size() - back, after_.size() - back, back);
    slide_all();
    return between_shared();
  }

 private:
  void share(Offset begin, Offset new_begin, std::size_t size) {
    if (size == 0) return;
    if (!shared_.empty() && shared_.back().begin + shared_.back().size == begin &&
        shared_.back().new_begin + shared_.back().size == new_begin)
      shared_.back().size += size;
    else
      shared_.push_back({begin, new_begin, size});
  }
  std::u16string_view text(const Part& part) const {
    return before_.substr(part.begin, part.end - part.begin);
  }
  std::u16string_view new_text(const Part& part) const {
    return after_.substr(part.begin, part.end - part.begin);
  }
  static Parts shifted(Parts parts, Offset by) {
    for (Part& part : parts) part = {part.begin + by, part.end + by};
    return parts;
  }

  /// Parts that are equal are shared; where others stand between them, `inner(i, i_end, j, j_end)` is asked.
  template <class Inner>
  void compare(const Parts& parts, const Parts& new_parts, Matching matching, Inner&& inner,
               bool are_words = false) {
    Numbers numbers(are_words);
    const auto items = numbers.of(before_, parts), new_items = numbers.of(after_, new_parts);
    std::size_t i = 0, j = 0;
    const auto share_up_to = [&](std::size_t end) {
      for (; i < end; ++i, ++j) share(parts[i].begin, new_parts[j].begin, parts[i].end - parts[i].begin);
    };
    for (const Difference& part : differences(items, new_items, matching)) {
      share_up_to(part.begin);
      inner(part);
      i = part.end;
      j = part.new_end;
    }
    share_up_to(parts.size());
  }

  // A line that stands once in both texts tells most surely what is what. Where few lines are left between
  // such lines, they are compared letter by letter; where many are, equal ones are found first, whatever
  // their indentation.
  void compare_lines(const Part& stretch, const Part& new_stretch) {
    const Parts lines = shifted(lines_of(text(stretch)), stretch.begin);
    const Parts new_lines = shifted(lines_of(new_text(new_stretch)), new_stretch.begin);
    compare(lines, new_lines, Matching::Unique, [&](const Difference& part) {
      if (are_few(lines, new_lines, part)) return compare_pairs(lines, new_lines, part);
      const Parts old_ones = without_indents(before_, some(lines, part.begin, part.end)),
                  new_ones = without_indents(after_, some(new_lines, part.new_begin, part.new_end));
      compare(old_ones, new_ones, Matching::Both,
              [&](const Difference& inner) { compare_pairs(old_ones, new_ones, inner); });
    });
  }
  static Parts without_indents(std::u16string_view text, Parts lines) {
    for (Part& line : lines) line.begin += indent_of(text.substr(line.begin, line.end - line.begin));
    return lines;
  }
  static Parts some(const Parts& parts, std::size_t begin, std::size_t end) {
    return {parts.begin() + std::ptrdiff_t(begin), parts.begin() + std::ptrdiff_t(end)};
  }
  static bool are_few(const Parts& lines, const Parts& new_lines, const Difference& part) {
    const std::size_t size = part.end - part.begin, new_size = part.new_end - part.new_begin;
    if (size == 0 || new_size == 0) return true;
    const std::size_t letters = lines[part.end - 1].end - lines[part.begin].begin,
                      new_letters = new_lines[part.new_end - 1].end - new_lines[part.new_begin].begin;
    return size * new_size <= most_pairs && (letters / 64 + size) * new_letters <= most_steps;
  }

  void compare_pairs(const Parts& lines, const Parts& new_lines, const Difference& part) {
    if (part.begin == part.end || part.new_begin == part.new_end) return;
    if (!are_few(lines, new_lines, part))
      return compare_within({lines[part.begin].begin, lines[part.end - 1].end},
                            {new_lines[part.new_begin].begin, new_lines[part.new_end - 1].end});
    for (const auto& [i, j] : pairs_of_lines(lines, new_lines, part)) {
      const std::size_t indent = indent_of(text(lines[i])), new_indent = indent_of(new_text(new_lines[j]));
      compare_within({lines[i].begin + indent, lines[i].end},
                     {new_lines[j].begin + new_indent, new_lines[j].end});
    }
  }
  /// Which of some lines has become which, so that they have the most in common.
  std::vector<std::pair<std::size_t, std::size_t>> pairs_of_lines(const Parts& lines, const Parts& new_lines,
                                                                  const Difference& part) const {
    const std::size_t rows = part.end - part.begin, columns = part.new_end - part.new_begin;
    std::vector<std::vector<std::size_t>> best(rows + 1, std::vector<std::size_t>(columns + 1)), gain = best;
    for (std::size_t i = rows; i-- > 0;) {
      const LineLikeness line(text(lines[part.begin + i]));
      for (std::size_t j = columns; j-- > 0;) {
        gain[i][j] = line.gain(new_text(new_lines[part.new_begin + j]));
        best[i][j] = std::max(best[i + 1][j], best[i][j + 1]);
        if (gain[i][j] > 0) best[i][j] = std::max(best[i][j], gain[i][j] + best[i + 1][j + 1]);
      }
    }
    std::vector<std::pair<std::size_t, std::size_t>> pairs;
    for (std::size_t i = 0, j = 0; i < rows && j < columns;) {
      if (gain[i][j] > 0 && best[i][j] == gain[i][j] + best[i + 1][j + 1])
        pairs.emplace_back(part.begin + i++, part.new_begin + j++);
      else
        best[i][j] == best[i + 1][j] ? ++i : ++j;
    }
    return pairs;
  }

  // One insertion or one deletion is taken as such. Else words that stand once say what is what, and between
  // them every letter counts.
  void compare_within(const Part& stretch, const Part& new_stretch) {
    const std::u16string_view a = text(stretch), b = new_text(new_stretch);
    const std::size_t shorter = std::min(a.size(), b.size()), front = equal_at_start(a, b);
    const std::size_t back = equal_at_end(a, b, shorter - front);
    if (front + back == shorter) {
      share(stretch.begin, new_stretch.begin, front);
      return share(stretch.end - back, new_stretch.end - back, back);
    }
    const Parts words = shifted(words_of(a), stretch.begin),
                new_words = shifted(words_of(b), new_stretch.begin);
    const auto between = [&](const Difference& part) {
      if (part.begin == part.end || part.new_begin == part.new_end) return;
      compare_letters({words[part.begin].begin, words[part.end - 1].end},
                      {new_words[part.new_begin].begin, new_words[part.new_end - 1].end});
    };
    compare(words, new_words, Matching::Unique, between, true);
  }

  void compare_letters(const Part& stretch, const Part& new_stretch) {
    compare(shifted(letters_of(text(stretch)), stretch.begin),
            shifted(letters_of(new_text(new_stretch)), new_stretch.begin), Matching::Most,
            [](const Difference&) {});
  }

  // "<B>" typed in front of "<P>" has been typed there, and not "B><" within the other tag. So what has come
  // or gone between two shared stretches moves to where it is whole tags or words, or, to the left, meets
  // what has come or gone before it.
  void slide_all() {
    std::vector<Shared> kept;
    kept.reserve(shared_.size());
    for (Shared right : shared_) {
      while (!kept.empty() && slide(kept, right) && kept.back().size == 0) kept.pop_back();
      kept.push_back(right);
    }
    shared_ = std::move(kept);
  }

  bool slide(std::vector<Shared>& kept, Shared& right) const {
    Shared& left = kept.back();
    const Offset end = left.begin + left.size, new_end = left.new_begin + left.size;
    const std::size_t gone = right.begin - end, come = right.new_begin - new_end;
    if (gone == 0 && come == 0) return false;
    // Where something has come and gone, only what has come can move.
    const std::u16string_view text = come > 0 ? after_ : before_;
    const Offset begin = come > 0 ? new_end : end;
    const std::size_t size = come > 0 ? come : gone;
    if (contains(text.substr(begin, size), u"\n")) return false;
    std::size_t best = 0, best_value = value_of(text, begin, size);
    for (std::size_t by = 1; by <= left.size && text[begin - by] == text[begin + size - by]; ++by) {
      const bool meets_other = by == left.size && kept.size() > 1 && gone * come == 0 &&
                               are_in_one_line(kept[kept.size() - 2], left);
      const std::size_t value = value_of(text, begin - by, size) + (meets_other ? 8 : 0);
      if (value > best_value) best = by, best_value = value;
    }
    std::size_t to_right = 0;
    for (std::size_t by = 1;
         gone * come == 0 && by < right.size && text[begin + by - 1] == text[begin + size + by - 1]; ++by)
      if (const std::size_t value = value_of(text, begin + by, size); value > best_value)
        to_right = by, best_value = value;
    if (to_right > 0) {
      left.size += to_right;
      right = {right.begin + to_right, right.new_begin + to_right, right.size - to_right};
      return false;
    }
    if (best == 0) return false;
    left.size -= best;
    if (gone * come > 0) {
      kept.push_back({end - best, right.new_begin - best, best});
      return false;
    }
    right = {right.begin - best, right.new_begin - best, right.size + best};
    return true;
  }
  bool are_in_one_line(const Shared& left, const Shared& right) const {
    const auto break_between = [](std::u16string_view text, Offset begin, Offset end) {
      return contains(text.substr(begin, end - begin), u"\n");
    };
    return !break_between(before_, left.begin + left.size, right.begin) &&
           !break_between(after_, left.new_begin + left.size, right.new_begin);
  }
  static std::size_t value_of(std::u16string_view text, Offset begin, std::size_t size) {
    const char16_t first = text[begin], last = text[begin + size - 1];
    return (first == u'<' ? 2u : 0u) + (last == u'>' ? 2u : 0u) + (is_ascii_space(first) ? 1u : 0u);
  }

  // White space that is shared counts as such only where the letters around it are.
  std::vector<Difference> between_shared() const {
    std::vector<Difference> result;
    Offset at = 0, new_at = 0;
    const auto add_up_to = [&](Offset end, Offset new_end) {
      if (text({at, end}) != new_text({new_at, new_end})) result.push_back({at, end, new_at, new_end});
    };
    for (const Shared& stretch : shared_) {
      const std::u16string_view whole = before_.substr(stretch.begin, stretch.size), letters = trimmed(whole);
      if (letters.empty()) continue;
      const auto lead = static_cast<Offset>(letters.data() - whole.data());
      add_up_to(stretch.begin + lead, stretch.new_begin + lead);
      at = stretch.begin + lead + letters.size();
      new_at = stretch.new_begin + lead + letters.size();
    }
    add_up_to(before_.size(), after_.size());
    return result;
  }

  static constexpr std::size_t most_pairs = 10'000, most_steps = 5'000'000;

  const std::u16string_view before_, after_;
  std::vector<Shared> shared_;
};

}  // namespace

std::vector<Difference> text_differences(std::u16string_view before, std::u16string_view after) {
  return Comparison(before, after).run();
}

}  // namespace tvx::source
