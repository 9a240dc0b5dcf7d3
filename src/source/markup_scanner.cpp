#include "tvx/source/markup_scanner.h"

#include <algorithm>

namespace tvx::source {
namespace {

struct SpecialElement {
  std::u16string_view name;
  bool raw, kept;
};

constexpr SpecialElement special_elements[] = {
    {u"PRE", false, true},    {u"LISTING", false, true},  {u"TEXTAREA", true, true},
    {u"SCRIPT", true, true},  {u"STYLE", true, true},     {u"XMP", true, true},
    {u"IFRAME", true, false}, {u"NOFRAMES", true, false}, {u"NOEMBED", true, false},
};

const SpecialElement* special(std::u16string_view name) {
  if (name.size() < 3 || name.size() > 8) return nullptr;
  for (const SpecialElement& element : special_elements)
    if (equals_ignoring_ascii_case(element.name, name)) return &element;
  return nullptr;
}

constexpr bool ends_name(char16_t c) { return is_ascii_space(c) || c == u'/' || c == u'>'; }

}  // namespace

bool MarkupScanner::starts_markup(Offset at) const {
  if (at + 1 >= text_.size()) return false;
  const char16_t c = text_[at + 1];
  if (is_ascii_alpha(c) || c == u'!' || c == u'?') return true;
  return c == u'/' && at + 2 < text_.size() && is_ascii_alpha(text_[at + 2]);
}

std::optional<Piece> MarkupScanner::next() {
  if (at_ == text_.size()) return {};
  if (!raw_.empty() || text_[at_] != u'<' || !starts_markup(at_)) return text();
  const char16_t c = text_[at_ + 1];
  if (c == u'!' || c == u'?') return comment();
  return tag(c == u'/');
}

// Up to the next markup; of raw text, up to its end tag, which may come at once.
Piece MarkupScanner::text() {
  Piece piece{.begin = at_, .kept = !preformatted_.empty() || raw_is_kept_};
  if (raw_.empty()) {
    do at_ = std::min(text_.find(u'<', at_ + 1), text_.size());
    while (at_ < text_.size() && !starts_markup(at_));
  } else {
    at_ = end_of_raw_text();
    raw_ = {};
    raw_is_kept_ = false;
  }
  piece.end = at_;
  return piece;
}

Offset MarkupScanner::end_of_raw_text() const {
  for (Offset at = text_.find(u"</", at_); at != text_.npos; at = text_.find(u"</", at + 1)) {
    const std::u16string_view rest = text_.substr(at + 2);
    if (equals_ignoring_ascii_case(rest.substr(0, raw_.size()), raw_) &&
        (rest.size() == raw_.size() || ends_name(rest[raw_.size()])))
      return at;
  }
  return text_.size();
}

// "<!--" to "-->"; any other "<!" or "<?" to the next ">".
Piece MarkupScanner::comment() {
  Piece piece{.kind = Piece::Kind::Comment, .begin = at_, .kept = !preformatted_.empty()};
  const bool real = text_.substr(at_).starts_with(u"<!--");
  const std::u16string_view closer = real ? u"-->" : u">";
  const Offset found = text_.find(closer, at_ + (real ? 4 : 2));
  at_ = found == text_.npos ? text_.size() : found + closer.size();
  piece.end = at_;
  return piece;
}

Piece MarkupScanner::tag(bool is_end_tag) {
  Piece piece{.kind = is_end_tag ? Piece::Kind::EndTag : Piece::Kind::StartTag,
              .begin = at_,
              .kept = !preformatted_.empty()};
  const Offset name = at_ + (is_end_tag ? 2 : 1);
  Offset behind = name;
  while (behind < text_.size() && !ends_name(text_[behind])) ++behind;
  piece.name = text_.substr(name, behind - name);
  piece.end = at_ = end_of_tag(behind);
  enter(piece);
  if (is_end_tag) piece.kept = !preformatted_.empty();
  return piece;
}

// A quote opens a value where it stands right after "=".
Offset MarkupScanner::end_of_tag(Offset from) const {
  for (Offset at = from; at < text_.size(); ++at) {
    if (text_[at] == u'>') return at + 1;
    if (text_[at] != u'=') continue;
    Offset value = at + 1;
    while (value < text_.size() && is_ascii_space(text_[value])) ++value;
    if (value == text_.size() || (text_[value] != u'"' && text_[value] != u'\'')) continue;
    at = std::min(text_.find(text_[value], value + 1), text_.size());
  }
  return text_.size();
}

void MarkupScanner::enter(const Piece& tag) {
  if (!preformatted_.empty() && equals_ignoring_ascii_case(tag.name, preformatted_)) {
    if (tag.kind == Piece::Kind::StartTag)
      ++depth_;
    else if (--depth_ == 0)
      preformatted_ = {};
    return;
  }
  if (tag.kind == Piece::Kind::EndTag) return;
  const SpecialElement* element = special(tag.name);
  if (!element) return;
  if (element->raw) {
    raw_ = element->name;
    raw_is_kept_ = element->kept;
  } else if (preformatted_.empty()) {
    preformatted_ = element->name;
    depth_ = 1;
  }
}

}  // namespace tvx::source
