#include "tvx/source/differences.h"

#include <algorithm>
#include <utility>

#include "tvx/base/work_count.h"
#include "tvx/source/rising_pairs.h"

namespace tvx::source {
namespace {

using Items = std::span<const std::uint32_t>;
using Pair = std::pair<std::size_t, std::size_t>;

/// Memory and time grow with the square of this.
constexpr int most_edits = 256;

/// The shortest way from one sequence to the other, by Myers: for each number of edits the furthest position
/// on each diagonal. Every round is kept, so that the way can be followed back.
class ShortestWay {
 public:
  ShortestWay(Items a, Items b) : a_(a), b_(b) {}

  /// The items that both share, as pairs of positions; false where more than `most_edits` are needed.
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
    count_work(1 + static_cast<std::uint64_t>(x - start(edits, diagonal)));
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

/// The items that occur once in a sequence, in their own order, each with its position.
std::vector<std::pair<std::uint32_t, std::size_t>> unique_items(Items items) {
  std::vector<std::pair<std::uint32_t, std::size_t>> found;
  found.reserve(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) found.emplace_back(items[i], i);
  std::ranges::sort(found);
  std::size_t kept = 0;
  for (std::size_t i = 0, next = 0; i < found.size(); i = next) {
    while (next < found.size() && found[next].first == found[i].first) ++next;
    if (next == i + 1) found[kept++] = found[i];
  }
  found.resize(kept);
  return found;
}

/// Items that occur once in each sequence, as pairs of positions; of these the longest choice that rises.
std::vector<Pair> unique_pairs(Items a, Items b) {
  const auto in_a = unique_items(a), in_b = unique_items(b);
  std::vector<Pair> pairs;
  for (auto i = in_a.begin(), j = in_b.begin(); i != in_a.end() && j != in_b.end();) {
    if (i->first == j->first)
      pairs.emplace_back(i++->second, j++->second);
    else
      i->first < j->first ? ++i : ++j;
  }
  std::ranges::sort(pairs);
  return longest_rise(pairs);
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
    count_work(part.end - part.begin + part.new_end - part.new_begin);
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

}  // namespace

std::vector<Difference> differences(Items before, Items after, Matching matching) {
  return Comparison(before, after, matching).run();
}

}  // namespace tvx::source
