#include "tvx/files/merge_lines.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/source/rising_pairs.h"

namespace tvx::files {
namespace {

using Lines = std::vector<std::u16string_view>;
using Part = std::span<const std::u16string_view>;

Lines lines_of(std::u16string_view text) {
  Lines lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find(u'\n', at);
    const std::size_t next = end == text.npos ? text.size() : end + 1;
    lines.push_back(text.substr(at, next - at));
    at = next;
  }
  return lines;
}

/// What a line says, however it is marked up: its letters and digits outside of tags and references. Two ways
/// to write the same page agree in these more often than in whole lines.
std::u16string content_of(std::u16string_view line) {
  std::u16string content;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == u'>') {
      content.clear();  // the line began within a tag
    } else if (line[i] == u'<') {
      i = std::min(line.find(u'>', i), line.size());
    } else if (line[i] == u'&') {
      i = std::min(line.find(u';', i), line.size());
    } else if (is_ascii_alpha(line[i]) || is_ascii_digit(line[i])) {
      content += line[i];
    }
  }
  return content;
}

/// The end tags of the page in a line that says nothing: an empty line is not the page's end.
std::u16string page_end_in(std::u16string_view line) {
  const std::u16string lower = ascii_lower(line);
  std::u16string end;
  for (const std::u16string_view tag : {u"</body", u"</html"})
    if (lower.find(tag) != lower.npos) end += tag;
  return end;
}

std::vector<std::u16string> contents_of(const Lines& lines) {
  std::vector<std::u16string> contents;
  contents.reserve(lines.size());
  for (const std::u16string_view line : lines) {
    contents.push_back(content_of(line));
    if (contents.back().empty()) contents.back() = page_end_in(line);
  }
  return contents;
}

/// Lines that occur once in each text, as pairs of line numbers, in the order of the first.
std::vector<std::pair<std::size_t, std::size_t>> unique_pairs(const Lines& a, const Lines& b) {
  struct Count {
    std::size_t in_a = 0, in_b = 0, place_in_b = 0;
  };
  std::unordered_map<std::u16string_view, Count> counts;
  for (const std::u16string_view line : a) ++counts[line].in_a;
  for (std::size_t i = 0; i < b.size(); ++i) {
    Count& count = counts[b[i]];
    ++count.in_b;
    count.place_in_b = i;
  }
  std::vector<std::pair<std::size_t, std::size_t>> pairs;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const Count& count = counts[a[i]];
    if (count.in_a == 1 && count.in_b == 1) pairs.emplace_back(i, count.place_in_b);
  }
  return pairs;
}

/// For each line of `a` its number in `b`, nothing where it has none; the numbers rise.
std::vector<std::optional<std::size_t>> matches(const Lines& a, const Lines& b) {
  std::vector<std::optional<std::size_t>> result(a.size());
  auto anchors = source::longest_rise(unique_pairs(a, b));
  anchors.emplace_back(a.size(), b.size());
  std::size_t from_a = 0, from_b = 0;
  for (const auto& [to_a, to_b] : anchors) {
    // Equal lines after the last anchor and in front of this one belong together, unique or not.
    std::size_t i = from_a, j = from_b, end_a = to_a, end_b = to_b;
    for (; i < end_a && j < end_b && a[i] == b[j]; ++i, ++j) result[i] = j;
    while (end_a > i && end_b > j && a[end_a - 1] == b[end_b - 1]) result[--end_a] = --end_b;
    if (to_a < a.size()) result[to_a] = to_b;
    from_a = to_a + 1;
    from_b = to_b + 1;
  }
  return result;
}

void append(std::u16string& out, Part lines) {
  for (const std::u16string_view line : lines) out += line;
}

/// What stands between two lines that the edit has left.
void merge_part(std::u16string& out, Part base, Part source, Part edited) {
  if (std::ranges::equal(base, edited)) return append(out, source);
  // Line by line only where the two ways of writing go side by side.
  if (base.size() != source.size()) return append(out, edited);
  const std::size_t shorter = std::min(base.size(), edited.size());
  std::size_t begin = 0, end = 0;
  while (begin < shorter && base[begin] == edited[begin]) ++begin;
  while (end < shorter - begin && base[base.size() - 1 - end] == edited[edited.size() - 1 - end]) ++end;
  append(out, source.first(begin));
  append(out, edited.subspan(begin, edited.size() - begin - end));
  append(out, source.last(end));
}

}  // namespace

std::u16string merge_lines(std::u16string_view base, std::u16string_view source, std::u16string_view edited) {
  const Lines base_lines = lines_of(base), source_lines = lines_of(source), edited_lines = lines_of(edited);
  const auto base_contents = contents_of(base_lines), source_contents = contents_of(source_lines);
  const auto in_source = matches(Lines(base_contents.begin(), base_contents.end()),
                                 Lines(source_contents.begin(), source_contents.end()));
  const auto in_edited = matches(base_lines, edited_lines);
  std::u16string out;
  out.reserve(edited.size());
  std::size_t base_at = 0, source_at = 0, edited_at = 0;
  const auto merge_up_to = [&](std::size_t base_end, std::size_t source_end, std::size_t edited_end) {
    merge_part(out, Part(base_lines).subspan(base_at, base_end - base_at),
               Part(source_lines).subspan(source_at, source_end - source_at),
               Part(edited_lines).subspan(edited_at, edited_end - edited_at));
  };
  for (std::size_t i = 0; i < base_lines.size(); ++i) {
    if (!in_source[i] || !in_edited[i]) continue;
    merge_up_to(i, *in_source[i], *in_edited[i]);
    out += source_lines[*in_source[i]];
    base_at = i + 1;
    source_at = *in_source[i] + 1;
    edited_at = *in_edited[i] + 1;
  }
  merge_up_to(base_lines.size(), source_lines.size(), edited_lines.size());
  return out;
}

}  // namespace tvx::files
