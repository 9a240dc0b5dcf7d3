#include "tvx/source/untouched.h"

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/source/markup_scanner.h"

namespace tvx::source {
namespace {

std::u16string_view content_of(std::u16string_view text, const KeptSpan& span) {
  return text.substr(span.begin, span.end - span.begin);
}

/// Blanks in front of the last line that holds anything else.
std::size_t indent_of_last_line(std::u16string_view lines) {
  const Offset last = lines.find_last_not_of(u" \t\r\n");
  if (last == lines.npos) return 0;
  const Offset line_break = lines.find_last_of(u"\r\n", last);
  const std::u16string_view line = lines.substr(line_break == lines.npos ? 0 : line_break + 1);
  return std::min(line.find_first_not_of(u' '), line.size());
}

std::u16string without_indent(std::u16string_view lines, std::size_t indent) {
  std::u16string out;
  Offset at = 0;
  while (at < lines.size()) {
    const Offset line_break = lines.find(u'\n', at);
    const Offset end = line_break == lines.npos ? lines.size() : line_break + 1;
    out += lines.substr(at, end - at);
    at = end;
    for (std::size_t left = indent; left > 0 && at < lines.size() && lines[at] == u' '; --left) ++at;
  }
  return out;
}

class Untouched {
 public:
  Untouched(std::u16string_view original, std::u16string_view entered, std::u16string_view left)
      : original_(original), entered_(entered), left_(left) {
    const auto [a, b] = std::ranges::mismatch(entered, left);
    front_ = static_cast<Offset>(a - entered.begin());
    const std::size_t most = std::min(entered.size(), left.size()) - front_;
    while (back_ < most && entered[entered.size() - 1 - back_] == left[left.size() - 1 - back_]) ++back_;
  }

  std::u16string run() {
    const std::vector<KeptSpan> was = kept_spans(original_), is = kept_spans(entered_);
    if (was.size() != is.size()) return std::u16string(left_);
    out_.reserve(left_.size());
    for (std::size_t i = 0; i < is.size(); ++i) give_back(was[i], is[i]);
    out_ += left_.substr(copied_);
    return std::move(out_);
  }

 private:
  Offset change_end() const { return entered_.size() - back_; }
  Offset moved(Offset behind_change) const { return behind_change + left_.size() - entered_.size(); }

  // A span before the change, behind it, or around it; all else is the user's.
  void give_back(const KeptSpan& was, const KeptSpan& is) {
    const std::u16string_view original = content_of(original_, was);
    if (is.end < front_) {
      put(is.begin, is.end, original);
    } else if (is.tag_begin >= change_end()) {
      put(moved(is.begin), moved(is.end), original);
    } else if (is.begin <= front_ && is.end >= change_end() && !is.is_comment) {
      const std::size_t now = indent_of_last_line(content_of(entered_, is));
      const std::size_t before = indent_of_last_line(original);
      const Offset end = moved(is.end);
      if (now > before && end >= is.begin)
        put(is.begin, end, without_indent(left_.substr(is.begin, end - is.begin), now - before));
    }
  }

  void put(Offset begin, Offset end, std::u16string_view content) {
    out_ += left_.substr(copied_, begin - copied_);
    out_ += content;
    copied_ = end;
  }

  const std::u16string_view original_, entered_, left_;
  Offset front_ = 0;      // units at the front that both codes share
  std::size_t back_ = 0;  // units at the back, none of them in the front
  Offset copied_ = 0;
  std::u16string out_;
};

}  // namespace

std::u16string with_original_lines(std::u16string_view original, std::u16string_view entered,
                                   std::u16string_view left) {
  return Untouched(original, entered, left).run();
}

}  // namespace tvx::source
