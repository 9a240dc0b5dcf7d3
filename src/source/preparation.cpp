#include "tvx/source/preparation.h"

#include <algorithm>
#include <utility>

#include "tvx/source/markup_scanner.h"

namespace tvx::source {
namespace {

// Where white space isn't rendered: elements that begin and end a line of their own, BR, and those around
// whose tags the formatter breaks the line anyway.
constexpr std::u16string_view blocks[] = {
    u"ADDRESS",  u"AREA",   u"ARTICLE",  u"ASIDE",      u"BLOCKQUOTE", u"BODY",    u"BR",     u"CAPTION",
    u"CENTER",   u"COL",    u"COLGROUP", u"DD",         u"DETAILS",    u"DIALOG",  u"DIR",    u"DIV",
    u"DL",       u"DT",     u"FIELDSET", u"FIGCAPTION", u"FIGURE",     u"FONT",    u"FOOTER", u"FORM",
    u"FRAMESET", u"H1",     u"H2",       u"H3",         u"H4",         u"H5",      u"H6",     u"HEADER",
    u"HGROUP",   u"HR",     u"IFRAME",   u"LEGEND",     u"LI",         u"LISTING", u"MAIN",   u"MAP",
    u"MENU",     u"NAV",    u"OBJECT",   u"OL",         u"OPTGROUP",   u"OPTION",  u"P",      u"PLAINTEXT",
    u"PRE",      u"SCRIPT", u"SEARCH",   u"SECTION",    u"SPAN",       u"SUMMARY", u"TABLE",  u"TBODY",
    u"TD",       u"TFOOT",  u"TH",       u"THEAD",      u"TR",         u"UL",      u"XMP"};
static_assert(std::ranges::is_sorted(blocks));

bool is_block(std::u16string_view name) {
  char16_t capitals[10];
  if (name.size() > std::size(capitals)) return false;
  std::ranges::transform(name, capitals, [](char16_t c) { return ascii_upper(c); });
  return std::ranges::binary_search(blocks, std::u16string_view(capitals, name.size()));
}

class Preparation {
 public:
  explicit Preparation(std::u16string_view text) : text_(text) { out_.text.reserve(text.size() + 64); }

  PreparedText run() {
    MarkupScanner scanner(text_);
    std::u16string_view last_tag;
    while (const std::optional<Piece> piece = scanner.next()) {
      switch (piece->kind) {
        case Piece::Kind::Text:
          piece->kept ? kept_text(*piece, equals_ignoring_ascii_case(last_tag, u"SCRIPT"))
                      : running_text(piece->begin, piece->end);
          break;
        case Piece::Kind::Comment: comment(*piece); break;
        default: tag(*piece);
      }
      last_tag = piece->name;
    }
    return std::move(out_);
  }

 private:
  void tag(const Piece& piece) {
    const bool block = !piece.kept && is_block(piece.name);
    if (!block) write_blank();
    blank_is_due_ = false;
    at_edge_ = block;
    const Offset begin = out_.text.size();
    lines(piece.begin, piece.end);
    const Offset end = out_.text.size();
    if (piece.kept) return hide(begin, end);
    // What looks like markup in a value of an attribute.
    for (Offset at = begin + 1; at + 1 < end; ++at)
      if (out_.text[at] == u'<' || out_.text[at] == u'>') hide(at, at + 1);
  }

  // The opener begins a line, all else is the comment's own.
  void comment(const Piece& piece) {
    write_blank();
    at_edge_ = false;
    const Offset begin = out_.text.size();
    lines(piece.begin, piece.end);
    const bool real = !piece.kept && text_.substr(piece.begin).starts_with(u"<!--");
    hide(begin + (real ? 4 : 0), out_.text.size());
  }

  void kept_text(const Piece& piece, bool is_script) {
    write_blank();
    at_edge_ = false;
    const Offset begin = out_.text.size();
    lines(piece.begin, piece.end);
    const Offset end = out_.text.size();
    const std::u16string_view text = text_.substr(piece.begin, piece.end - piece.begin);
    const bool has_lines = text.find_first_of(u"\r\n") != text.npos;
    // A script of blanks alone is no line.
    if (!is_script || has_lines || !trimmed(text).empty()) hide(begin, end);
    if (is_script && has_lines) out_.joints.insert(out_.joints.end(), {begin, end});
  }

  // A run that ends the text waits for what comes after it.
  void running_text(Offset begin, Offset end) {
    const Offset first = out_.text.size();
    Offset copied = begin;
    for (Offset at = begin; at < end;) {
      // Line breaks are rare among blanks, and blanks among letters.
      while (at < end && text_[at] != u'\n' && text_[at] != u'\r') ++at;
      if (at == end) break;
      Offset run_begin = at, run_end = at;
      while (run_begin > copied && is_ascii_space(text_[run_begin - 1])) --run_begin;
      while (run_end < end && is_ascii_space(text_[run_end])) ++run_end;
      write(copied, run_begin);
      if (at_edge_) {
        space_is_before_ = true;
      } else {
        if (!blank_is_due_) run_ = {run_begin, run_end};
        run_.end = run_end;
        blank_is_due_ = true;
      }
      copied = at = run_end;
    }
    write(copied, end);
    for (Offset at = out_.text.find(u'<', first); at != text_.npos; at = out_.text.find(u'<', at + 1))
      hide(at, at + 1);
  }

  void write(Offset begin, Offset end) {
    if (begin == end) return;
    write_blank();
    at_edge_ = false;
    copy(begin, end);
  }

  void write_blank() {
    if (std::exchange(blank_is_due_, false)) replace(run_.begin, run_.end, u" ");
  }

  // As it is, with CR LF for each line break.
  void lines(Offset begin, Offset end) {
    Offset copied = begin;
    for (Offset at = begin; at < end; ++at) {
      if (text_[at] != u'\n' && text_[at] != u'\r') continue;
      copy(copied, at);
      copied = at + (text_.substr(at, end - at).starts_with(u"\r\n") ? 2 : 1);
      replace(at, copied, u"\r\n");
      at = copied - 1;
    }
    copy(copied, end);
  }

  void copy(Offset begin, Offset end) {
    if (begin == end) return;
    const Offset size = end - begin;
    if (!out_.pieces.empty() && out_.pieces.back().is_copied() && out_.pieces.back().markup_end() == begin) {
      out_.pieces.back().size += size;
      out_.pieces.back().markup_size += size;
    } else {
      piece(size, begin, size);
    }
    out_.text += text_.substr(begin, size);
  }

  void replace(Offset begin, Offset end, std::u16string_view by) {
    piece(by.size(), begin, end - begin);
    out_.text += by;
  }

  void piece(Offset size, Offset begin, Offset markup_size) {
    out_.pieces.push_back(
        {out_.text.size(), size, begin, markup_size, std::exchange(space_is_before_, false)});
  }

  void hide(Offset begin, Offset end) {
    if (begin == end) return;
    if (!out_.hidden.empty() && out_.hidden.back().end == begin)
      out_.hidden.back().end = end;
    else
      out_.hidden.push_back({begin, end});
  }

  const std::u16string_view text_;
  PreparedText out_;
  bool at_edge_ = true, blank_is_due_ = false, space_is_before_ = false;
  Span run_{0, 0};  // of white space, for which a blank is due
};

}  // namespace

PreparedText prepare_for_formatting(std::u16string_view text) { return Preparation(text).run(); }

}  // namespace tvx::source
