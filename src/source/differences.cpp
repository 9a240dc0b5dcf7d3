#include "tvx/source/differences.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "tvx/base/strings.h"

namespace tvx::source {
namespace {

using Items = std::span<const std::uint32_t>;
using Pair = std::pair<std::size_t, std::size_t>;

/// Memory and time grow with the square of this.
constexpr int most_edits = 256;

/// The shortest way from one sequence to the other, by Myers: for each number of edits the furthest place on
/// each diagonal. Every round is kept, so that the way can be followed back.
class ShortestWay {
 public:
  ShortestWay(Items a, Items b) : a_(a), b_(b) {}

  /// The items that both share, as pairs of places; false where more than `most_edits` are needed.
  bool find(std::vector<Pair>& shared) {
    for (int edits = 0; edits <= most_edits; ++edits) {
      rounds_.emplace_back(static_cast<std::size_t>(2 * edits + 1));
      for (int diagonal = -edits; diagonal <= edits; diagonal += 2)
        if (step(edits, diagonal)) return follow_back(edits, shared), true;
    }
    return false;
  }

 private:
  std::ptrdiff_t& furthest(int edits, int diagonal) {
    return rounds_[static_cast<std::size_t>(edits)][static_cast<std::size_t>(diagonal + edits)];
  }
  /// Whether the way to this diagonal adds an item of the second, rather than leaving one of the first.
  bool adds(int edits, int diagonal) {
    if (diagonal == -edits) return true;
    return diagonal != edits && furthest(edits - 1, diagonal - 1) < furthest(edits - 1, diagonal + 1);
  }
  std::ptrdiff_t start(int edits, int diagonal) {
    if (edits == 0) return 0;
    return adds(edits, diagonal) ? furthest(edits - 1, diagonal + 1) : furthest(edits - 1, diagonal - 1) + 1;
  }
  bool step(int edits, int diagonal) {
    const auto size_a = std::ssize(a_), size_b = std::ssize(b_);
    std::ptrdiff_t x = start(edits, diagonal), y = x - diagonal;
    while (x < size_a && y < size_b && y >= 0 &&
           a_[static_cast<std::size_t>(x)] == b_[static_cast<std::size_t>(y)])
      ++x, ++y;
    furthest(edits, diagonal) = x;
    return x >= size_a && y >= size_b;
  }
  void follow_back(int edits, std::vector<Pair>& shared) {
    int diagonal = static_cast<int>(std::ssize(a_) - std::ssize(b_));
    for (; edits >= 0; --edits) {
      const std::ptrdiff_t from = start(edits, diagonal);
      for (std::ptrdiff_t x = furthest(edits, diagonal); x > from; --x)
        shared.emplace_back(static_cast<std::size_t>(x - 1), static_cast<std::size_t>(x - 1 - diagonal));
      if (edits > 0) diagonal += adds(edits, diagonal) ? 1 : -1;
    }
    std::ranges::reverse(shared);
  }

  const Items a_, b_;
  std::vector<std::vector<std::ptrdiff_t>> rounds_;
};

/// Items that occur once in each sequence, as pairs of places; of these the longest choice that rises on both
/// sides, by patience sorting.
std::vector<Pair> unique_pairs(Items a, Items b) {
  struct Count {
    std::size_t in_a = 0, in_b = 0, at_b = 0;
  };
  std::unordered_map<std::uint32_t, Count> counts;
  for (const std::uint32_t item : a) ++counts[item].in_a;
  for (std::size_t i = 0; i < b.size(); ++i) {
    Count& count = counts[b[i]];
    ++count.in_b;
    count.at_b = i;
  }
  std::vector<Pair> pairs;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (const Count& count = counts[a[i]]; count.in_a == 1 && count.in_b == 1)
      pairs.emplace_back(i, count.at_b);
  constexpr std::size_t none = static_cast<std::size_t>(-1);
  std::vector<std::size_t> tops, before(pairs.size(), none);
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const auto pile = std::ranges::lower_bound(tops, pairs[i].second, {},
                                               [&](std::size_t top) { return pairs[top].second; });
    if (pile != tops.begin()) before[i] = *(pile - 1);
    if (pile == tops.end())
      tops.push_back(i);
    else
      *pile = i;
  }
  std::vector<Pair> rise;
  for (std::size_t i = tops.empty() ? none : tops.back(); i != none; i = before[i]) rise.push_back(pairs[i]);
  std::ranges::reverse(rise);
  return rise;
}

class Comparison {
 public:
  Comparison(Items a, Items b, Matching matching) : a_(a), b_(b), matching_(matching) {}

  std::vector<Difference> run() {
    compare({0, a_.size(), 0, b_.size()}, 0);
    return std::move(result_);
  }

 private:
  static constexpr int most_levels = 8;

  // What stands once in each sequence tells most surely what is what; then what stands once between two of
  // these; and the shortest way only where nothing does.
  void compare(Difference part, int level) {
    while (part.begin < part.end && part.new_begin < part.new_end && a_[part.begin] == b_[part.new_begin])
      ++part.begin, ++part.new_begin;
    while (part.begin < part.end && part.new_begin < part.new_end && a_[part.end - 1] == b_[part.new_end - 1])
      --part.end, --part.new_end;
    if (part.begin == part.end && part.new_begin == part.new_end) return;
    if (part.begin == part.end || part.new_begin == part.new_end || level > most_levels)
      return result_.push_back(part);
    const Items a = a_.subspan(part.begin, part.end - part.begin);
    const Items b = b_.subspan(part.new_begin, part.new_end - part.new_begin);
    std::vector<Pair> shared;
    if (level < most_levels && matching_ != Matching::Most) shared = unique_pairs(a, b);
    if (!shared.empty()) return split(part, shared, level + 1);
    if (matching_ != Matching::Unique && ShortestWay(a, b).find(shared))
      return split(part, shared, most_levels + 1);
    result_.push_back(part);
  }

  void split(const Difference& part, const std::vector<Pair>& shared, int level) {
    Difference left = part;
    for (const auto& [at_a, at_b] : shared) {
      left.end = part.begin + at_a;
      left.new_end = part.new_begin + at_b;
      compare(left, level);
      left.begin = left.end + 1;
      left.new_begin = left.new_end + 1;
    }
    left.end = part.end;
    left.new_end = part.new_end;
    compare(left, level);
  }

  const Items a_, b_;
  const Matching matching_;
  std::vector<Difference> result_;
};

// --- texts ---

/// The places where the parts of a text begin, and its end.
using Places = std::vector<std::size_t>;

Places line_places(std::u16string_view text) {
  Places places;
  for (std::size_t at = 0; at < text.size();) {
    places.push_back(at);
    const std::size_t line_break = text.find(u'\n', at);
    at = line_break == text.npos ? text.size() : line_break + 1;
  }
  places.push_back(text.size());
  return places;
}

bool is_word(char16_t c) { return is_ascii_alpha(c) || is_ascii_digit(c) || c >= 0x80; }

/// Words, and all other characters one by one.
Places word_places(std::u16string_view text) {
  Places places;
  for (std::size_t at = 0; at < text.size();) {
    places.push_back(at);
    const std::size_t begin = at++;
    if (is_word(text[begin]))
      while (at < text.size() && is_word(text[at])) ++at;
    else if (text[begin] == u'\r' && at < text.size() && text[at] == u'\n')
      ++at;
  }
  places.push_back(text.size());
  return places;
}

Places letter_places(std::u16string_view text) {
  Places places;
  for (std::size_t at = 0; at < text.size(); ++at) {
    places.push_back(at);
    if (text.substr(at).starts_with(u"\r\n")) ++at;
  }
  places.push_back(text.size());
  return places;
}

/// The same number for equal parts, in whichever text.
class Numbers {
 public:
  std::vector<std::uint32_t> of(std::u16string_view text, const Places& places) {
    std::vector<std::uint32_t> numbers;
    numbers.reserve(places.size());
    for (std::size_t i = 0; i + 1 < places.size(); ++i) {
      const auto part = text.substr(places[i], places[i + 1] - places[i]);
      numbers.push_back(known_.try_emplace(part, static_cast<std::uint32_t>(known_.size())).first->second);
    }
    return numbers;
  }

 private:
  std::unordered_map<std::u16string_view, std::uint32_t> known_;
};

std::vector<Difference> by_parts(std::u16string_view before, std::u16string_view after,
                                 Places (*places_of)(std::u16string_view), Matching matching) {
  const Places places = places_of(before), new_places = places_of(after);
  Numbers numbers;
  const auto items = numbers.of(before, places), new_items = numbers.of(after, new_places);
  std::vector<Difference> result = differences(items, new_items, matching);
  for (Difference& part : result)
    part = {places[part.begin], places[part.end], new_places[part.new_begin], new_places[part.new_end]};
  return result;
}

/// By parts of the parts found: `inner` says what differs within a stretch.
template <class Inner>
std::vector<Difference> refined(std::u16string_view before, std::u16string_view after,
                                const std::vector<Difference>& stretches, Inner&& inner) {
  std::vector<Difference> result;
  for (const Difference& outer : stretches)
    for (const Difference& part : inner(before.substr(outer.begin, outer.end - outer.begin),
                                        after.substr(outer.new_begin, outer.new_end - outer.new_begin)))
      result.push_back({outer.begin + part.begin, outer.begin + part.end, outer.new_begin + part.new_begin,
                        outer.new_begin + part.new_end});
  return result;
}

std::vector<Difference> by_letters(std::u16string_view before, std::u16string_view after) {
  return by_parts(before, after, letter_places, Matching::Most);
}

// One insertion or one deletion is taken as such. Else words that stand once say what is what, and between
// them every letter counts.
std::vector<Difference> within_lines(std::u16string_view before, std::u16string_view after) {
  const std::size_t shorter = std::min(before.size(), after.size());
  auto front = static_cast<std::size_t>(std::ranges::mismatch(before, after).in1 - before.begin());
  std::size_t back = 0;
  while (back < shorter && before[before.size() - 1 - back] == after[after.size() - 1 - back]) ++back;
  if (front + back < shorter || shorter == 0)
    return refined(before, after, by_parts(before, after, word_places, Matching::Unique), by_letters);
  back = shorter - front;
  // Not between the halves of a line break.
  if (front > 0 && before[front - 1] == u'\r') --front, ++back;
  return {{front, before.size() - back, front, after.size() - back}};
}

/// How much two lines have in common: at both ends, their indentation aside, and in words.
std::size_t likeness(std::u16string_view a, std::u16string_view b) {
  a = trimmed(a);
  b = trimmed(b);
  const std::size_t shorter = std::min(a.size(), b.size());
  const auto front = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
  std::size_t back = 0;
  while (back < shorter - front && a[a.size() - 1 - back] == b[b.size() - 1 - back]) ++back;
  std::size_t like = 2 * (front + back);
  const Places words = word_places(a);
  for (std::size_t i = 0; i + 1 < words.size() && i < 100; ++i) {
    const std::u16string_view word = a.substr(words[i], words[i + 1] - words[i]);
    if (word.size() > 1 && contains(b, word)) like += word.size();
  }
  return like;
}

/// Which of some changed lines has become which, so that they have the most in common. An edit within a line
/// is then found within that line, also where the lines around it have changed too.
class LinePairs {
 public:
  LinePairs(std::u16string_view before, std::u16string_view after)
      : before_(before), after_(after), old_(line_places(before)), new_(line_places(after)) {}

  bool are_few() const { return old_.size() * new_.size() <= 2'500; }

  std::vector<Pair> find() const {
    const std::size_t rows = old_.size() - 1, columns = new_.size() - 1;
    std::vector<std::vector<std::size_t>> best(rows + 1, std::vector<std::size_t>(columns + 1)), like = best;
    for (std::size_t i = rows; i-- > 0;)
      for (std::size_t j = columns; j-- > 0;) {
        like[i][j] = likeness(line(before_, old_, i), line(after_, new_, j));
        best[i][j] = std::max(best[i + 1][j], best[i][j + 1]);
        if (like[i][j] > 0) best[i][j] = std::max(best[i][j], like[i][j] + best[i + 1][j + 1]);
      }
    std::vector<Pair> pairs;
    for (std::size_t i = 0, j = 0; i < rows && j < columns;) {
      if (like[i][j] > 0 && best[i][j] == like[i][j] + best[i + 1][j + 1])
        pairs.emplace_back(i++, j++);
      else
        best[i][j] == best[i + 1][j] ? ++i : ++j;
    }
    return pairs;
  }

  /// The stretches from one pair to the next: lines without a partner, and each line with one.
  std::vector<Difference> stretches() const {
    std::vector<Difference> result;
    std::size_t i = 0, j = 0;
    for (const auto& [at_old, at_new] : find()) {
      add(result, i, at_old, j, at_new);
      add(result, at_old, at_old + 1, at_new, at_new + 1);
      i = at_old + 1;
      j = at_new + 1;
    }
    add(result, i, old_.size() - 1, j, new_.size() - 1);
    return result;
  }

 private:
  static std::u16string_view line(std::u16string_view text, const Places& places, std::size_t i) {
    return text.substr(places[i], places[i + 1] - places[i]);
  }
  void add(std::vector<Difference>& result, std::size_t i, std::size_t i_end, std::size_t j,
           std::size_t j_end) const {
    if (i != i_end || j != j_end) result.push_back({old_[i], old_[i_end], new_[j], new_[j_end]});
  }

  const std::u16string_view before_, after_;
  const Places old_, new_;
};

/// What differs between some lines and what has become of them.
std::vector<Difference> among_lines(std::u16string_view before, std::u16string_view after) {
  const LinePairs pairs(before, after);
  if (!pairs.are_few()) return within_lines(before, after);
  return refined(before, after, pairs.stretches(), within_lines);
}

}  // namespace

std::vector<Difference> differences(Items before, Items after, Matching matching) {
  return Comparison(before, after, matching).run();
}

std::vector<Difference> text_differences(std::u16string_view before, std::u16string_view after) {
  // Most of a large text is equal at both ends: only the lines between are cut into parts.
  const std::size_t shorter = std::min(before.size(), after.size());
  auto front = static_cast<std::size_t>(std::ranges::mismatch(before, after).in1 - before.begin());
  std::size_t back = 0;
  while (back < shorter - front && before[before.size() - 1 - back] == after[after.size() - 1 - back]) ++back;
  if (front == before.size() && front == after.size()) return {};
  front = front == 0 ? 0 : before.rfind(u'\n', front - 1) + 1;
  while (back > 0 && before[before.size() - 1 - back] != u'\n' && before.size() - back != front) --back;
  back = std::min(back, shorter - front);
  const auto middle = before.substr(front, before.size() - back - front),
             new_middle = after.substr(front, after.size() - back - front);
  std::vector<Difference> result =
      refined(middle, new_middle, by_parts(middle, new_middle, line_places, Matching::Both), among_lines);
  for (Difference& part : result)
    for (std::size_t* at : {&part.begin, &part.end, &part.new_begin, &part.new_end}) *at += front;
  return result;
}

}  // namespace tvx::source
