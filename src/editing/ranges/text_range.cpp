#include "tvx/editing/ranges/text_range.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/base/text.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/tree/clone_contents.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/word_bounds.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Tag;

namespace {

[[noreturn]] void refuse(std::u16string text) { throw RuntimeError(errors::invalid_call, std::move(text)); }

enum class Unit : std::uint8_t { Character, Word, All };

Unit unit_of(std::u16string_view name) {
  if (equals_ignoring_ascii_case(name, u"character")) return Unit::Character;
  if (equals_ignoring_ascii_case(name, u"word")) return Unit::Word;
  if (equals_ignoring_ascii_case(name, u"textedit")) return Unit::All;
  refuse(u"Not a unit of text");
}

dom::Range whole_content(const Editor& editor) {
  Node* body = editor.document().body();
  if (!body) refuse(u"The document has no body");
  return {{body, 0}, {body, dom::length_of(*body)}};
}

/// Which end of a range a unit move is for; words end where a range ends.
enum class End : std::uint8_t { Start, End };

std::optional<Boundary> word_edge(const Boundary& from, Direction direction, End end) {
  const bool on = direction == Direction::Forward;
  if (end == End::End) return on ? next_word_end(from) : previous_word_end(from);
  return on ? next_word_begin(from) : previous_word_begin(from);
}

std::optional<Boundary> one_unit_on(const Editor& editor, const Boundary& from, Unit unit,
                                    Direction direction, End end) {
  switch (unit) {
    case Unit::Character: return next_character(from, direction);
    case Unit::Word: return word_edge(from, direction, end);
    default: break;
  }
  const dom::Range all = whole_content(editor);
  const Boundary edge = direction == Direction::Forward ? all.end : all.start;
  return edge == from ? std::nullopt : std::optional(edge);
}

/// Moves a position by units; how many it went, with their sign.
int move_place(const Editor& editor, Boundary& place, Unit unit, int count, End end) {
  const Direction direction = count < 0 ? Direction::Backward : Direction::Forward;
  int moved = 0;
  for (; moved != count; moved += count < 0 ? -1 : 1) {
    const auto next = one_unit_on(editor, place, unit, direction, end);
    if (!next) break;
    place = *next;
  }
  return moved;
}

bool is_part_of_rows(const Node& node) {
  static const TagSet tags{Tag::Tr, Tag::Tbody, Tag::Thead, Tag::Tfoot};
  return tags.has(node);
}

/// Elements that stay when all of their content is replaced.
bool stands_for_itself(const Element& element) {
  static const TagSet tags{Tag::Html,    Tag::Head,  Tag::Body,    Tag::Frameset, Tag::Tbody,
                           Tag::Thead,   Tag::Tfoot, Tag::Tr,      Tag::Td,       Tag::Th,
                           Tag::Caption, Tag::Col,   Tag::Colgroup};
  return tags.has(element) || is_editing_host(element);
}

struct EndPair {
  End own, other;
};
EndPair end_pair(std::u16string_view how) {
  if (equals_ignoring_ascii_case(how, u"StartToStart")) return {End::Start, End::Start};
  if (equals_ignoring_ascii_case(how, u"StartToEnd")) return {End::Start, End::End};
  if (equals_ignoring_ascii_case(how, u"EndToStart")) return {End::End, End::Start};
  if (equals_ignoring_ascii_case(how, u"EndToEnd")) return {End::End, End::End};
  refuse(u"Not a pair of ends");
}
Boundary end_of(const dom::Range& range, End end) { return end == End::Start ? range.start : range.end; }

std::strong_ordering order(const Boundary& a, const Boundary& b) {
  if (!a || !b || &dom::root_of(*a.node) != &dom::root_of(*b.node))
    refuse(u"The ranges are not in the same document");
  return dom::compare(a, b);
}

}  // namespace

TextRange::TextRange(Editor& editor, const dom::Range& range)
    : editor_(editor), range_(std::make_unique<dom::LiveRange>(editor.document(), range)) {}
TextRange::~TextRange() = default;
TextRange::TextRange(TextRange&&) noexcept = default;

dom::Range TextRange::range() const { return range_->range(); }
void TextRange::set(const dom::Range& range) { range_->set(range); }
bool TextRange::collapsed() const { return extent().collapsed(); }
dom::Range TextRange::extent() const { return shrunk_to_characters(range()); }

// --- what is in it ---

Element* TextRange::parent_element() const {
  const dom::Range seen = extent();
  if (!seen.start) return nullptr;
  Node* node = dom::common_ancestor(*seen.start.node, *seen.end.node);
  return node->is_element() ? static_cast<Element*>(node) : node->parent_element();
}

Element* TextRange::covered_element() const {
  const dom::Range seen = extent();
  if (seen.collapsed()) return nullptr;
  Element* element = parent_element();
  if (!element || !covers_content_of(seen, *element)) return nullptr;
  // All rows of a table are the table: what is copied from it shall be one again.
  while (element && is_part_of_rows(*element) && covers_content_of(seen, *element))
    element = element->parent_element();
  if (!element || stands_for_itself(*element) || !covers_content_of(seen, *element)) return nullptr;
  return element;
}

std::u16string TextRange::html_text() const {
  const dom::Range seen = extent();
  if (seen.collapsed()) return {};
  if (const Element* element = covered_element()) return dom::outer_html(*element);
  return dom::serialise_children(*clone_contents(seen));
}

std::u16string TextRange::text() const { return dom::inner_text(extent()); }

// --- moves ---

void TextRange::collapse(bool to_start) {
  const dom::Range seen = extent();
  const Boundary place = to_start ? seen.start : seen.end;
  range_->set({place, place});
}

bool TextRange::expand(std::u16string_view unit_name) {
  const Unit unit = unit_of(unit_name);
  dom::Range stretched = range();
  if (!stretched.start) return false;
  if (unit == Unit::All) {
    stretched = whole_content(editor_);
  } else if (unit == Unit::Character) {
    if (!stretched.collapsed()) return false;
    const auto next = next_character(stretched.start, Direction::Forward);
    if (!next) return false;
    stretched.end = *next;
  } else {
    const bool caret = stretched.collapsed();
    const auto first = word_at(stretched.start), last = caret ? first : word_at(stretched.end);
    // A word that the range only touches from outside is not in it.
    if (first && (caret || dom::compare(first->end, stretched.start) > 0)) stretched.start = first->start;
    if (last && (caret || dom::compare(last->start, stretched.end) < 0)) stretched.end = last->end;
  }
  if (stretched == range()) return false;
  range_->set(stretched);
  return true;
}

int TextRange::move(std::u16string_view unit, int count) {
  Boundary place = range().start;
  if (!place) return 0;
  const int moved = move_place(editor_, place, unit_of(unit), count, End::Start);
  range_->set({place, place});
  return moved;
}

int TextRange::move_start(std::u16string_view unit, int count) {
  Boundary place = range().start;
  if (!place) return 0;
  const int moved = move_place(editor_, place, unit_of(unit), count, End::Start);
  range_->set_start(place);
  return moved;
}

int TextRange::move_end(std::u16string_view unit, int count) {
  Boundary place = range().end;
  if (!place) return 0;
  const int moved = move_place(editor_, place, unit_of(unit), count, End::End);
  range_->set_end(place);
  return moved;
}

void TextRange::move_to_element_text(Element& element) {
  if (element.document() != &editor_.document()) refuse(u"The element is not in this document");
  range_->set({{&element, 0}, {&element, dom::length_of(element)}});
}

void TextRange::select() {
  const dom::Range present = range();
  if (!present.start) return editor_.selection().clear();
  editor_.selection().set(present);
}

namespace {

/// The text after a position as one string, line by line, and where its units stand.
struct FoldedText {
  std::u16string text;
  struct Piece {
    Node* node;
    Offset from, start;  // in the node, in the text
  };
  std::vector<Piece> pieces;

  explicit FoldedText(Boundary from) {
    ContentWalk walk(from, Direction::Forward);
    for (Content met = walk.next(); met.kind != ContentKind::End; met = walk.next()) {
      if (met.kind == ContentKind::Text) {
        pieces.push_back({met.node, met.from, text.size()});
        const std::u16string_view units = met.text().data();
        text += upper_cased(units.substr(met.from, met.to - met.from));
      } else {
        text += u'\n';  // nothing that is looked for goes over it
      }
    }
  }

  Boundary at(Offset unit) const {
    const auto behind =
        std::upper_bound(pieces.begin(), pieces.end(), unit,
                         [](Offset value, const Piece& piece) { return value < piece.start; });
    const Piece& piece = *std::prev(behind);
    return {piece.node, piece.from + unit - piece.start};
  }
};

}  // namespace

bool TextRange::find_text(std::u16string_view text) {
  if (text.empty() || !range().start) return false;
  const FoldedText content(range().start);
  const std::size_t found = content.text.find(upper_cased(text));
  if (found == std::u16string::npos) return false;
  Boundary end = content.at(found + text.size() - 1);
  ++end.offset;
  range_->set({content.at(found), end});
  return true;
}

// --- two ranges ---

TextRange TextRange::duplicate() const {
  TextRange copy(editor_, range());
  copy.from_selection_ = from_selection_;
  return copy;
}

void TextRange::set_end_point(std::u16string_view how, const TextRange& other) {
  const EndPair ends = end_pair(how);
  const Boundary place = end_of(other.range(), ends.other);
  order(range().start, place);
  ends.own == End::Start ? range_->set_start(place) : range_->set_end(place);
}

int TextRange::compare_end_points(std::u16string_view how, const TextRange& other) const {
  const EndPair ends = end_pair(how);
  const auto result = order(end_of(range(), ends.own), end_of(other.range(), ends.other));
  return result < 0 ? -1 : result > 0 ? 1 : 0;
}

bool TextRange::in_range(const TextRange& other) const {
  return order(range().start, other.range().start) <= 0 && order(other.range().end, range().end) <= 0;
}

bool TextRange::is_equal(const TextRange& other) const { return range() == other.range(); }

}  // namespace tvx::editing
