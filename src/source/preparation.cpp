#include "tvx/source/preparation.h"

#include <algorithm>
#include <utility>

#include "tvx/source/formatter.h"
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
  explicit Preparation(std::u16string_view text) : text_(text) { out_.reserve(text.size()); }

  std::u16string run() {
    MarkupScanner scanner(text_);
    while (const std::optional<Piece> piece = scanner.next()) {
      const std::u16string_view all = text_.substr(piece->begin, piece->end - piece->begin);
      switch (piece->kind) {
        case Piece::Kind::Text: piece->kept ? lines(all) : running_text(all); break;
        case Piece::Kind::Comment: comment(all, piece->kept); break;
        default: tag(all, is_block(piece->name) && !piece->kept);
      }
    }
    return std::move(out_);
  }

 private:
  void tag(std::u16string_view all, bool block) {
    if (!block) write_blank();
    blank_is_due_ = false;
    at_edge_ = block;
    out_ += all;
  }

  void comment(std::u16string_view all, bool kept) {
    write_blank();
    if (kept) return lines(all);
    at_edge_ = false;
    running_text(all);
  }

  // A run that ends the text waits for what comes behind it.
  void running_text(std::u16string_view text) {
    Offset copied = 0;
    for (Offset at = 0; at < text.size();) {
      // Line breaks are rare among blanks, and blanks among letters.
      at = std::min(text.find_first_of(u"\n\r", at), text.size());
      if (at == text.size()) break;
      Offset begin = at, end = at;
      while (begin > copied && is_ascii_space(text[begin - 1])) --begin;
      while (end < text.size() && is_ascii_space(text[end])) ++end;
      write(text.substr(copied, begin - copied));
      blank_is_due_ = !at_edge_;
      copied = at = end;
    }
    write(text.substr(copied));
  }

  void lines(std::u16string_view text) {
    write_blank();
    at_edge_ = false;
    for (Offset at = 0; at < text.size(); ++at) {
      const Offset end = std::min(text.find_first_of(u"\n\r", at), text.size());
      out_ += text.substr(at, end - at);
      if (end == text.size()) return;
      at = text.substr(end).starts_with(u"\r\n") ? end + 1 : end;
      out_ += u"\r\n";
    }
  }

  void write(std::u16string_view text) {
    if (text.empty()) return;
    write_blank();
    at_edge_ = false;
    out_ += text;
  }

  void write_blank() {
    if (std::exchange(blank_is_due_, false)) out_ += u' ';
  }

  const std::u16string_view text_;
  std::u16string out_;
  bool at_edge_ = true, blank_is_due_ = false;
};

}  // namespace

std::u16string prepare_for_formatting(std::u16string_view text) { return Preparation(text).run(); }

std::u16string code_of(std::u16string_view text) {
  return FormatHTMLSource(prepare_for_formatting(text), 2, false, false);
}

std::u16string with_crlf(std::u16string_view text) {
  std::u16string result;
  result.reserve(text.size() + text.size() / 32);
  Offset copied = 0;
  for (Offset at = 0; at < text.size(); ++at) {
    if (text[at] != u'\r' && text[at] != u'\n') continue;
    result += text.substr(copied, at - copied);
    result += u"\r\n";
    if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n') ++at;
    copied = at + 1;
  }
  result += text.substr(copied);
  return result;
}

}  // namespace tvx::source
