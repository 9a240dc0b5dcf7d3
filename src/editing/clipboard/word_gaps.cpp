#include "tvx/editing/clipboard/word_gaps.h"

#include <unicode/uchar.h>

namespace tvx::editing {

using dom::Boundary;

namespace {

/// The unit beside a position; 0 where there is no text.
char16_t unit_beside(Boundary place, Direction direction) {
  const Content content = content_beside(place, direction);
  if (content.kind != ContentKind::Text) return 0;
  return content.text().data()[direction == Direction::Forward ? content.from : content.to - 1];
}

bool is_letter(char16_t unit) { return u_isalnum(unit); }
bool is_blank(char16_t unit) { return unit == u' ' || unit == u'\n' || unit == u'\t' || unit == u'\u00A0'; }

}  // namespace

bool are_whole_words(const dom::Range& range) {
  return is_letter(unit_beside(range.start, Direction::Forward)) &&
         is_letter(unit_beside(range.end, Direction::Backward)) &&
         !is_letter(unit_beside(range.start, Direction::Backward)) &&
         !is_letter(unit_beside(range.end, Direction::Forward));
}

dom::Range with_spare_blank(const dom::Range& words) {
  const Content before = content_beside(words.start, Direction::Backward),
                after = content_beside(words.end, Direction::Forward);
  const char16_t first = unit_beside(words.start, Direction::Backward),
                 next = unit_beside(words.end, Direction::Forward);
  if (is_blank(first)) return {{before.node, before.to - 1}, words.end};
  // At the start of a line the blank after the words is the one too many.
  if (before.kind != ContentKind::Text && before.kind != ContentKind::Object && is_blank(next))
    return {words.start, {after.node, after.from + 1}};
  return words;
}

WordGaps gaps_at(Boundary place) {
  const bool before = is_letter(unit_beside(place, Direction::Backward)),
             after = is_letter(unit_beside(place, Direction::Forward));
  if (before && after) return {};
  return {before, after};
}

}  // namespace tvx::editing
