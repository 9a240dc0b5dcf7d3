#include "tvx/source/formatter.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx::source {
namespace {

constexpr std::u16string_view line_end = u"\r\n";
constexpr std::u16string_view comment_opener = u"<!--";

// Elements that indent what they hold, and tags that begin a line and no more. FONT stands in both, where the
// first counts; AREA has no end tag and so indents the rest of the text.
constexpr std::u16string_view block_tags[] = {u"TABLE", u"TR",  u"TD",   u"TBODY",  u"THEAD",  u"TFOOT",
                                              u"FONT",  u"DIV", u"SPAN", u"CENTER", u"SCRIPT", u"IFRAME",
                                              u"UL",    u"OL",  u"DL",   u"OBJECT", u"MAP",    u"AREA"};
constexpr std::u16string_view line_start_tags[] = {u"BR", u"P",     u"LI",    u"DT",
                                                   u"DD", u"PARAM", u"EMBED", u"FONT"};

enum class TagKind : std::uint8_t { Inline, Block, LineStart };

// The lists by first letter: most names are refused by it, and the rest compared with one or two entries.
template <std::size_t count>
constexpr std::uint32_t first_letters(const std::u16string_view (&list)[count]) {
  std::uint32_t letters = 0;
  for (const std::u16string_view name : list) letters |= 1u << (name[0] - u'A');
  return letters;
}

constexpr std::uint32_t known_letters = first_letters(block_tags) | first_letters(line_start_tags);

TagKind kind_of(std::u16string_view name) {
  if (name.empty() || name.size() > 6 || !is_ascii_upper(name[0]) || !(known_letters >> (name[0] - u'A') & 1))
    return TagKind::Inline;
  if (std::ranges::find(block_tags, name) != std::end(block_tags)) return TagKind::Block;
  if (std::ranges::find(line_start_tags, name) != std::end(line_start_tags)) return TagKind::LineStart;
  return TagKind::Inline;
}

struct Tag {
  TagKind kind = TagKind::Inline;
  bool is_opening = true;
};

/// The lines of a run, put into one text.
class WrittenText {
 public:
  WrittenText(std::u16string_view text, char16_t indent) : text_(text), indent_(indent) {
    out_.reserve(text.size() + text.size() / 4 + 16);
  }

  // Grows once a line, and writes what has a known length without asking again.
  void put(const FormattedLine& line, bool blank_line_before) {
    const std::u16string_view piece = text_.substr(line.begin, line.end - line.begin);
    const std::size_t before = blank_line_before ? line_end.size() : 0;
    const std::size_t behind = piece.ends_with(line_end) ? 0 : line_end.size();
    const std::size_t needed = out_.size() + before + line.indent + piece.size() + behind;
    if (needed > longest_source(text_.size())) throw RuntimeError(14, u"Out of string space");
    if (needed > out_.capacity()) out_.reserve(std::max(needed, 2 * out_.capacity()));
    out_.append(line_end.substr(0, before));
    out_.append(line.indent, indent_);
    out_.append(piece);
    out_.append(line_end.substr(0, behind));
  }
  std::u16string result() { return std::move(out_); }

 private:
  const std::u16string_view text_;
  const char16_t indent_;
  std::u16string out_;
};

/// The lines of a run by themselves.
class ListedLines {
 public:
  explicit ListedLines(std::u16string_view text) : longest_(longest_source(text.size())) {}

  void put(const FormattedLine& line, bool) {
    units_ += line.indent + line.end - line.begin + line_end.size();
    if (units_ > longest_) throw RuntimeError(14, u"Out of string space");
    lines_.push_back(line);
  }
  std::vector<FormattedLine> result() { return std::move(lines_); }

 private:
  const std::size_t longest_;
  std::size_t units_ = 0;
  std::vector<FormattedLine> lines_;
};

/// One run. The pending line is never copied: it is an indentation and a piece of the input, because all that
/// is put after it stands after it there as well.
template <class Lines>
class Formatter {
 public:
  Formatter(std::u16string_view text, std::int16_t step, bool blank_line, char16_t indent, Lines lines)
      : text_(text), step_(step), blank_line_(blank_line), indent_(indent), lines_(std::move(lines)) {}

  auto run() {
    while (at_ < text_.size()) {
      skip_to_markup();
      if (at_ == text_.size()) break;
      if (text_[at_] == u'\n') {
        ++at_;
        FlushLine(false);
      } else {
        const Offset start = at_;
        if (const std::optional<Tag> tag = ReadTag()) take(*tag, start);
      }
    }
    FlushLine(false);
    return lines_.result();
  }

 private:
  void skip_to_markup() {
    const char16_t* here = text_.data() + at_;
    const char16_t* const end = text_.data() + text_.size();
    while (here != end && *here != u'<' && *here != u'\n') ++here;
    at_ = static_cast<Offset>(here - text_.data());
  }

  // Moves past the tag that starts here; nothing: it is no tag, and only its "<" has been passed.
  std::optional<Tag> ReadTag() {
    const std::u16string_view rest = text_.substr(at_);
    if (rest.starts_with(comment_opener)) {
      at_ += comment_opener.size();
      return Tag{TagKind::LineStart, true};
    }
    const Offset end = no_more_tags_ ? rest.npos : rest.find(u'>');
    if (end == rest.npos) {
      no_more_tags_ = true;  // or each "<" of the rest would search it again
      ++at_;
      return {};
    }
    at_ += end + 1;
    std::u16string_view name = rest.substr(1, end - 1);
    const bool is_opening = !name.starts_with(u'/');
    if (!is_opening) name.remove_prefix(1);
    // A tab or a line break does not end a name.
    name = name.substr(0, name.substr(0, 7).find(u' '));
    return Tag{kind_of(name), is_opening};
  }

  // The line ends in front of the tag at `start`, which has been passed already.
  void take(const Tag& tag, Offset start) {
    if (tag.kind == TagKind::Inline || (tag.kind == TagKind::LineStart && !tag.is_opening)) return;
    const Offset behind = at_;
    at_ = start;
    if (tag.kind == TagKind::LineStart) {
      FlushLine(false);
      at_ = behind;
      return;
    }
    if (!tag.is_opening) change_level(-step_);
    FlushLine(false);
    if (tag.is_opening) change_level(step_);
    at_ = behind;
    FlushLine(tag.is_opening && blank_line_);
  }

  // The counter has 16 bits; a step over its end doesn't happen.
  void change_level(int by) {
    using Limits = std::numeric_limits<std::int16_t>;
    const int wanted = level_ + by;
    if (wanted >= Limits::min() && wanted <= Limits::max()) level_ = wanted;
  }

  void FlushLine(bool blank_line) {
    const std::u16string_view line = text_.substr(line_start_, at_ - line_start_);
    if (!is_blank(line)) lines_.put({line_start_, at_, line_indent_}, blank_line);
    if (level_ < 0) return;  // no such indentation: the line stays
    line_start_ = at_;
    line_indent_ = static_cast<std::size_t>(level_);
  }

  /// Nothing in it but indent characters, and CR LF perhaps.
  bool is_blank(std::u16string_view line) const {
    std::size_t others = 0;
    for (const char16_t c : line) {
      if (c == indent_) continue;
      if (others == line_end.size() || c != line_end[others]) return false;
      ++others;
    }
    return others != 1;
  }

  const std::u16string_view text_;
  const int step_;
  const bool blank_line_;
  const char16_t indent_;
  int level_ = 0;
  Offset at_ = 0;
  Offset line_start_ = 0;
  std::size_t line_indent_ = 0;
  bool no_more_tags_ = false;
  Lines lines_;
};

}  // namespace

std::u16string FormatHTMLSource(std::u16string_view text, std::int16_t indentStep,
                                bool blankLineBeforeBlockContent, bool useTabs) {
  const char16_t indent = useTabs ? u'\t' : u' ';
  return Formatter(text, indentStep, blankLineBeforeBlockContent, indent, WrittenText(text, indent)).run();
}

std::vector<FormattedLine> formatted_lines(std::u16string_view text, std::int16_t indentStep) {
  return Formatter(text, indentStep, false, u' ', ListedLines(text)).run();
}

}  // namespace tvx::source
