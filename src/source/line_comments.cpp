#include "tvx/source/line_comments.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "tvx/source/tag_structure.h"

namespace tvx::source {
namespace {

struct Marks {
  std::u16string_view open, close;
};

Marks marks_at(std::u16string_view source, Offset place) {
  const std::u16string_view before = source.substr(0, place);
  const std::u16string_view element = TagStructure(before).open_at(place, before);
  if (equals_ignoring_ascii_case(element, u"style")) return {u"/*", u"*/"};
  if (equals_ignoring_ascii_case(element, u"script")) return {u"//", u""};
  return {u"<!--", u"-->"};
}

/// A line without the white space around what is written in it.
struct Line {
  std::u16string_view before, written, after;
};

Line parts_of(std::u16string_view line) {
  const std::u16string_view written = trimmed(line);
  if (written.empty()) return {line, {}, {}};
  const auto from = Offset(written.data() - line.data());
  return {line.substr(0, from), written, line.substr(from + written.size())};
}

bool is_comment(std::u16string_view written, const Marks& marks) {
  return written.size() >= marks.open.size() + marks.close.size() && written.starts_with(marks.open) &&
         written.ends_with(marks.close);
}

std::u16string_view without_marks(std::u16string_view written, const Marks& marks) {
  written.remove_prefix(marks.open.size());
  written.remove_suffix(marks.close.size());
  if (written.starts_with(u' ')) written.remove_prefix(1);
  if (!marks.close.empty() && written.ends_with(u' ')) written.remove_suffix(1);
  return written;
}

std::u16string with_marks(std::u16string_view written, const Marks& marks) {
  const bool ends_within = !marks.close.empty() && written.find(marks.close) != written.npos;
  if (ends_within) return std::u16string(written);
  std::u16string comment(marks.open);
  comment.append(u" ").append(written);
  if (!marks.close.empty()) comment.append(u" ").append(marks.close);
  return comment;
}

}  // namespace

std::u16string with_comments_toggled(std::u16string_view source, Offset first, Offset end) {
  const Marks marks = marks_at(source, first);
  std::vector<Line> lines;
  for (Offset line = first; line <= end;) {
    const Offset line_end = std::min(source.find(u'\n', line), end);
    lines.push_back(parts_of(source.substr(line, line_end - line)));
    line = line_end + 1;
  }
  const bool all = std::ranges::all_of(
      lines, [&](const Line& line) { return line.written.empty() || is_comment(line.written, marks); });
  std::u16string toggled;
  for (const Line& line : lines) {
    if (&line != &lines.front()) toggled += u'\n';
    toggled.append(line.before);
    if (!line.written.empty())
      toggled.append(all ? std::u16string(without_marks(line.written, marks))
                         : with_marks(line.written, marks));
    toggled.append(line.after);
  }
  return toggled;
}

}  // namespace tvx::source
