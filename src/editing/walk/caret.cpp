#include "tvx/editing/walk/caret.h"

#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/between_blocks.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/facts/text_units.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Tag;

namespace {

bool is_whole(const Node& node) {
  static const TagSet tags{Tag::Img,    Tag::Input,  Tag::Button, Tag::Select,  Tag::Textarea,
                           Tag::Object, Tag::Iframe, Tag::Video,  Tag::Audio,   Tag::Canvas,
                           Tag::Embed,  Tag::Applet, Tag::Meter,  Tag::Marquee, Tag::Progress};
  const auto* element = dom::as<Element>(&node);
  return element && (tags.has(node) || !element->is_html() || !is_editable(node));
}

bool collapses(const dom::CharacterData& text) {
  const Element* parent = text.parent_element();
  if (!parent) return false;
  const WhiteSpace space = white_space_of(*parent);
  return space != WhiteSpace::Pre && space != WhiteSpace::PreWrap;
}

/// A walk through the content in one direction, up to a position where a caret can stand. A block's edge and
/// a line break are one step each; the first position after one is the edge of a line.
class CaretWalk {
 public:
  CaretWalk(Boundary from, Direction direction, bool from_line_edge = false)
      : spot_(from), forward_(direction == Direction::Forward), crossed_(from_line_edge) {}

  std::optional<Boundary> next_place() {
    while (!place_ && !finished_) step();
    return place_;
  }

 private:
  void step() {
    if (spot_.data) {
      if (spot_.is_text() && !at_edge()) return step_in_text();
      return leave();
    }
    if (Node* child = forward_ ? spot_.next() : spot_.previous()) {
      meet(*child);
    } else {
      leave();
    }
  }

  bool at_edge() const { return forward_ ? spot_.at_end() : spot_.at_start(); }
  void pass(Node& child) { spot_.gap = forward_ ? Gap::after(child) : Gap::before(child); }
  void enter(Node& child) {
    if (forward_) {
      spot_.enter_start(child);
    } else {
      spot_.enter_end(child);
    }
  }

  void meet(Node& child) {
    if (is_folded_away(child)) return pass(child);
    if (child.is_text()) {
      if (is_collapsed_whitespace_node(child)) return pass(child);
      return enter(child);
    }
    const auto* element = dom::as<Element>(&child);
    if (!element || display_of(*element) == Display::None) return pass(child);
    if (child.is(Tag::Br)) return meet_break(child);
    // A break that comes right after a block ends an empty line.
    if (!forward_ && over_break_ && passed_break_ && is_block_node(child)) {
      place_ = dom::before(*passed_break_);
      return;
    }
    if (child.is(Tag::Hr)) {
      crossed_ = true;
      entered_ = nullptr;
      return pass(child);
    }
    if (is_whole(child)) return meet_whole(child);
    if (is_block_node(child)) {
      crossed_ = true;
      over_break_ = false;
      entered_ = &child;
    }
    enter(child);
  }

  // An empty line has its position before the break that ends it.
  void meet_break(Node& line_break) {
    if (crossed_ && forward_) {
      place_ = dom::before(line_break);
    } else if (crossed_ && over_break_) {
      place_ = dom::after(line_break);
    } else if (crossed_ && !is_extraneous_line_break(line_break)) {
      place_ = dom::before(line_break);
    } else {
      crossed_ = true;
      over_break_ = true;
      passed_break_ = &line_break;
      pass(line_break);
    }
  }

  void meet_whole(Node& element) {
    const bool before = forward_ == crossed_;
    if (is_block_node(element)) {
      crossed_ = true;
      entered_ = nullptr;
      return pass(element);
    }
    place_ = before ? dom::before(element) : dom::after(element);
  }

  void leave() {
    Node& node = spot_.node();
    if (is_editing_host(node) || !node.parent()) {
      if (entered_ == &node) place_ = Boundary{&node, 0};
      finished_ = true;
      return;
    }
    if (is_block_node(node)) {
      // Nothing in it, so the caret stands in the block itself.
      if (entered_ == &node && is_allowed_child_name(dom::Name(Tag::Span), node)) {
        place_ = Boundary{&node, 0};
        return;
      }
      // A break that comes first in its block ends an empty line.
      if (!forward_ && over_break_ && passed_break_) {
        place_ = dom::before(*passed_break_);
        return;
      }
      entered_ = nullptr;
      crossed_ = true;
      over_break_ = false;
    }
    if (forward_) {
      spot_.leave_forward();
    } else {
      spot_.leave_backward();
    }
  }

  void step_in_text() {
    if (forward_) {
      step_on();
    } else {
      step_back();
    }
  }

  void arrive(Offset offset) { place_ = Boundary{spot_.data, offset}; }

  void step_on() {
    const std::u16string& text = spot_.data->data();
    const bool collapsing = collapses(*spot_.data);
    Offset behind_space = spot_.offset;
    while (collapsing && behind_space < text.size() && is_ascii_space(text[behind_space])) ++behind_space;
    if (crossed_) {
      if (behind_space < text.size()) return arrive(behind_space);
      spot_.offset = text.size();
    } else if (behind_space == spot_.offset) {
      arrive(next_grapheme(text, spot_.offset));
    } else if ((behind_space == text.size() && precedes_line_break(*spot_.data)) ||
               (spot_.offset == 0 && follows_line_break(*spot_.data))) {
      spot_.offset = behind_space;  // nobody sees it
    } else {
      arrive(behind_space);
    }
  }

  void step_back() {
    const std::u16string& text = spot_.data->data();
    const bool collapsing = collapses(*spot_.data);
    Offset before_space = spot_.offset;
    while (collapsing && before_space > 0 && is_ascii_space(text[before_space - 1])) --before_space;
    if (crossed_) {
      if (before_space > 0) return arrive(before_space);
      spot_.offset = 0;
    } else if (before_space == spot_.offset) {
      arrive(previous_grapheme(text, spot_.offset));
    } else if ((before_space == 0 && follows_line_break(*spot_.data)) ||
               (spot_.offset == text.size() && precedes_line_break(*spot_.data))) {
      spot_.offset = before_space;
    } else {
      arrive(before_space);
    }
  }

  WalkPosition spot_;
  bool forward_;
  bool crossed_;                   // a block's edge or a line break was passed
  bool over_break_ = false;        // it was a line break
  Node* passed_break_ = nullptr;   // the last one
  const Node* entered_ = nullptr;  // the last block entered, while nothing was found in it
  bool finished_ = false;
  std::optional<Boundary> place_;
};

/// The text of a line on one side of a caret, across inline elements, for moves by word.
class LineText {
 public:
  LineText(Boundary from, bool forward) : forward_(forward) {
    WalkPosition spot(from);
    while (text_.size() < 1024) {
      if (spot.data) {
        if (spot.is_text()) take(*spot.data, spot.offset);
        leave(spot);
      } else if (Node* child = forward ? spot.next() : spot.previous()) {
        if (!may_enter(*child)) return;
        forward ? spot.enter_start(*child) : spot.enter_end(*child);
      } else {
        if (is_block_node(spot.node()) || is_editing_host(spot.node())) return;
        leave(spot);
      }
    }
  }

  bool blank() const { return trimmed(text_).empty(); }

  std::optional<Boundary> word_edge() const {
    const Offset edge = forward_ ? next_word(text_, 0) : text_.size() - previous_word(text_, text_.size());
    Offset passed = 0;
    for (const Piece& piece : pieces_) {
      if (edge <= passed + piece.length) {
        const Offset within = edge - passed;
        return Boundary{piece.data, forward_ ? piece.start + within : piece.start - within};
      }
      passed += piece.length;
    }
    return std::nullopt;
  }

 private:
  struct Piece {
    dom::CharacterData* data;
    Offset start;  // where the walk came into it
    Offset length;
  };

  void take(dom::CharacterData& data, Offset from) {
    const std::u16string_view text = data.data();
    const std::u16string_view part = forward_ ? text.substr(from) : text.substr(0, from);
    if (part.empty()) return;
    pieces_.push_back({&data, from, part.size()});
    text_.insert(forward_ ? text_.size() : 0, part);
  }

  void leave(WalkPosition& spot) const { forward_ ? spot.leave_forward() : spot.leave_backward(); }

  static bool may_enter(const Node& child) {
    if (child.is_text() || !child.is_element()) return true;
    return !child.is(Tag::Br) && !is_block_node(child) && !is_whole(child);
  }

  bool forward_;
  std::u16string text_;
  std::vector<Piece> pieces_;
};

std::optional<Boundary> end_of_host(const Node& from, Direction direction) {
  Node* host = editing_host_of(from);
  if (!host) return std::nullopt;
  const bool forward = direction == Direction::Forward;
  const Boundary edge{host, forward ? dom::length_of(*host) : 0};
  return CaretWalk(edge, forward ? Direction::Backward : Direction::Forward, true).next_place();
}

}  // namespace

std::optional<Boundary> next_caret_place(Boundary from, Direction direction, Granularity granularity) {
  if (!editing_host_of(*from.node)) return std::nullopt;
  if (granularity == Granularity::Document) return end_of_host(*from.node, direction);
  if (granularity == Granularity::Word) {
    const LineText line(from, direction == Direction::Forward);
    if (!line.blank()) return line.word_edge();
  }
  const std::optional<Boundary> place = CaretWalk(from, direction).next_place();
  return place ? std::optional(normalized_caret_place(*place)) : std::nullopt;
}

bool move_caret(Editor& editor, Direction direction, Granularity granularity, Extend extend) {
  Selection& selection = editor.selection();
  if (selection.type() == SelectionType::None) return false;
  editor.document().journal().end_typing_run();
  const bool stretched = !selection.collapsed();
  if (stretched && extend == Extend::No && granularity == Granularity::Character) {
    const dom::Range range = selection.range();
    selection.collapse(direction == Direction::Forward ? range.end : range.start);
    return true;
  }
  const std::optional<Boundary> place = next_caret_place(selection.focus(), direction, granularity);
  if (!place) {
    if (stretched && extend == Extend::No) selection.collapse(selection.focus());
    return false;
  }
  selection.set(extend == Extend::Yes ? selection.anchor() : *place, *place);
  return true;
}

namespace {

/// Elements of a line may hold blocks, in pages of old. One that isn't displayed parts no line.
bool is_of_line(const Node& node) {
  return is_inline_node(node) && !(is_block_piece(node) && is_rendered(node));
}

}  // namespace

Boundary normalized_caret_place(Boundary place) {
  if (dom::as<dom::CharacterData>(place.node) || !editing_host_of(*place.node)) return place;
  const Gap gap = Gap::at(place);
  Node* before = gap.previous();
  if (before && before->is_text() && !is_collapsed_whitespace_node(*before))
    return {before, dom::length_of(*before)};
  if (gap.next && gap.next->is_text() && !is_collapsed_whitespace_node(*gap.next)) return {gap.next, 0};
  Node* after = passed_filling(gap.next, false);
  const bool goes_on = gap.next && is_inline_node(*gap.next) && after && is_inline_node(*after);
  if (!before && goes_on && !gap.next->is(Tag::Br)) {
    // At a line's start the text goes on in the style of what follows.
    Boundary inner = place;
    while (const Boundary next = next_equivalent_point(inner)) {
      inner = next;
      if (inner.node->is_text() || inner.offset > 0) break;
    }
    if (inner.node->is_text() && inner.offset == 0 && is_editable(*inner.node)) return inner;
  }
  const bool holds_text = is_allowed_child_name(dom::Name(Tag::Span), *place.node);
  // White space and comments between two blocks are no line.
  before = passed_filling(before, true);
  const bool beside_line = (before && is_of_line(*before)) || (after && is_of_line(*after));
  if (holds_text && (beside_line || (!before && !after))) return place;
  if (const auto found = CaretWalk(place, Direction::Forward, true).next_place()) return *found;
  if (const auto found = CaretWalk(place, Direction::Backward, true).next_place()) return *found;
  return place;
}

}  // namespace tvx::editing
