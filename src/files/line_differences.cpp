#include "tvx/files/line_differences.h"

#include <algorithm>
#include <unordered_map>

#include "tvx/base/strings.h"
#include "tvx/source/differences.h"

namespace tvx::files {
namespace {

using Kind = ComparedLine::Kind;
using Lines = std::vector<std::u16string_view>;

Lines lines_of(std::u16string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(u'\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

/// Equal lines have equal numbers.
class Numbering {
 public:
  std::vector<std::uint32_t> of(const Lines& lines) {
    std::vector<std::uint32_t> numbers;
    for (const std::u16string_view line : lines)
      numbers.push_back(numbers_.try_emplace(line, std::uint32_t(numbers_.size())).first->second);
    return numbers;
  }

 private:
  std::unordered_map<std::u16string_view, std::uint32_t> numbers_;
};

class Report {
 public:
  Report(const Lines& before, const Lines& after, std::size_t around)
      : before_(before), after_(after), around_(around) {}

  void add(const source::Difference& part) {
    same_up_to(part.begin, around_);
    for (std::size_t i = part.begin; i < part.end; ++i) tell(Kind::Removed, before_[i]);
    for (std::size_t i = part.new_begin; i < part.new_end; ++i) tell(Kind::Added, after_[i]);
    at_ = part.end;
  }
  std::vector<ComparedLine> finish() {
    if (!lines_.empty()) same_up_to(before_.size(), 0);
    return std::move(lines_);
  }

 private:
  void same_up_to(std::size_t end, std::size_t before_end) {
    const std::size_t after_last = lines_.empty() ? 0 : around_;
    const std::size_t count = end - at_, told = after_last + before_end;
    const std::size_t left_out = count > told ? count - told : 0;
    // To count one line takes as much room as the line.
    const bool all = left_out <= 1;
    for (std::size_t i = 0; i < count; ++i) {
      if (all || i < after_last || i >= count - before_end) tell(Kind::Same, before_[at_ + i]);
      if (!all && i == after_last) lines_.push_back({Kind::LeftOut, from_utf8(std::to_string(left_out))});
    }
  }
  void tell(Kind kind, std::u16string_view line) { lines_.push_back({kind, std::u16string(line)}); }

  const Lines& before_;
  const Lines& after_;
  const std::size_t around_;
  std::size_t at_ = 0;
  std::vector<ComparedLine> lines_;
};

}  // namespace

std::vector<ComparedLine> line_differences(std::u16string_view before, std::u16string_view after,
                                           std::size_t around) {
  const Lines old_lines = lines_of(before), new_lines = lines_of(after);
  Numbering numbering;
  const auto old_numbers = numbering.of(old_lines), new_numbers = numbering.of(new_lines);
  Report report(old_lines, new_lines, around);
  for (const source::Difference& part : source::differences(old_numbers, new_numbers)) report.add(part);
  return report.finish();
}

}  // namespace tvx::files
