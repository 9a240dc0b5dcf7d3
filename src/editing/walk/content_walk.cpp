#include "tvx/editing/walk/content_walk.h"

#include <algorithm>

#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/facts/text_units.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Tag;

namespace {

const Node* content_root(const Node& node) {
  const dom::Document* document = node.document();
  const Node* body = document ? document->body() : nullptr;
  if (body && dom::is_inclusive_ancestor(*body, node)) return body;
  return &dom::root_of(node);
}

bool may_hold_text(const Node& node) { return is_allowed_child_name(dom::Name(Tag::Span), node); }

Offset skip_space(std::u16string_view text, Offset from) {
  while (from < text.size() && is_ascii_space(text[from])) ++from;
  return from;
}

Offset skip_space_back(std::u16string_view text, Offset from) {
  while (from > 0 && is_ascii_space(text[from - 1])) --from;
  return from;
}

bool is_space_only(const Content& piece) {
  return collapses(piece.text()) && skip_space(piece.text().data(), piece.from) >= piece.to;
}

}  // namespace

bool is_object(const Node& node) {
  static const TagSet tags{Tag::Img,    Tag::Input,  Tag::Button, Tag::Select,  Tag::Textarea,
                           Tag::Object, Tag::Iframe, Tag::Video,  Tag::Audio,   Tag::Canvas,
                           Tag::Embed,  Tag::Applet, Tag::Meter,  Tag::Marquee, Tag::Progress};
  const auto* element = dom::as<dom::Element>(&node);
  return element && (tags.has(*element) || !element->is_html());
}

ContentWalk::ContentWalk(Boundary from, Direction direction, const Node* root, Words words)
    : spot_(from),
      forward_(direction == Direction::Forward),
      words_(words),
      root_(root ? root : content_root(*from.node)) {}

bool ContentWalk::is_read(const Node& node) const {
  return words_ == Words::Read && (node.is(Tag::Button) || node.is(Tag::Marquee));
}

void ContentWalk::enter(Node& child) { forward_ ? spot_.enter_start(child) : spot_.enter_end(child); }
void ContentWalk::leave() { forward_ ? spot_.leave_forward() : spot_.leave_backward(); }

Content ContentWalk::next() {
  for (;;) {
    if (spot_.data) {
      Content piece{ContentKind::Text, spot_.data, forward_ ? spot_.offset : 0,
                    forward_ ? spot_.data->length() : spot_.offset};
      const bool is_text = spot_.is_text();
      if (!spot_.node().parent()) return {};
      leave();
      if (is_text && piece.to > piece.from) return piece;
      continue;
    }
    Node* child = forward_ ? spot_.next() : spot_.previous();
    if (!child) {
      Node& node = spot_.node();
      if (&node == root_ || !node.parent()) return {};
      leave();
      if (is_block_node(node) || is_read(node)) return {ContentKind::LeaveBlock, &node};
      continue;
    }
    enter(*child);
    if (is_folded_away(*child)) {
      leave();
      continue;
    }
    if (child->is_text()) continue;
    const auto* element = dom::as<dom::Element>(child);
    if (!element || display_of(*element) == Display::None) {
      leave();
      continue;
    }
    const auto kind = child->is(Tag::Br)    ? ContentKind::LineBreak
                      : child->is(Tag::Hr)  ? ContentKind::Rule
                      : is_read(*child)     ? ContentKind::EnterBlock
                      : is_object(*element) ? ContentKind::Object
                                            : ContentKind::EnterBlock;
    if (kind != ContentKind::EnterBlock) {
      leave();
      return {kind, child};
    }
    if (is_block_node(*child) || is_read(*child)) return {kind, child};
  }
}

bool collapses(const dom::Text& text) {
  const dom::Element* parent = text.parent_element();
  if (!parent) return false;
  const WhiteSpace mode = white_space_of(*parent);
  return mode != WhiteSpace::Pre && mode != WhiteSpace::PreWrap && mode != WhiteSpace::BreakSpaces;
}

Content content_beside(Boundary place, Direction direction) {
  ContentWalk walk(place, direction);
  for (;;) {
    const Content met = walk.next();
    if (met.kind != ContentKind::Text || !is_space_only(met)) return met;
  }
}

bool shows_space(dom::Text& text, Offset from, Offset to) {
  const auto in_line = [](const Content& met) {
    return met.kind == ContentKind::Text || met.kind == ContentKind::Object;
  };
  if (!in_line(content_beside({&text, to}, Direction::Forward))) return false;
  ContentWalk walk({&text, from}, Direction::Backward);
  const Content before = walk.next();
  if (before.kind != ContentKind::Text) return before.kind == ContentKind::Object;
  return !collapses(before.text()) || !is_ascii_space(before.text().data()[before.to - 1]);
}

namespace {

/// One move by a character. A line has a position before its first thing, between its things, and after its
/// last; an empty line has one. The way from line to line is one step.
class CharacterStep {
 public:
  explicit CharacterStep(Direction direction)
      : direction_(direction), forward_(direction == Direction::Forward) {}

  std::optional<Boundary> run(Boundary from) {
    if (is_in_line(from)) return find(from, false);
    const std::optional<Boundary> line = find(from, true);
    return line ? find(*line, false) : std::nullopt;
  }

 private:
  static bool is_in_line(const Boundary& place) {
    const Content ahead = content_beside(place, Direction::Forward);
    if (ahead.kind == ContentKind::Text || ahead.kind == ContentKind::Object ||
        ahead.kind == ContentKind::LineBreak) {
      return true;
    }
    const Content behind = content_beside(place, Direction::Backward);
    if (behind.kind == ContentKind::Text || behind.kind == ContentKind::Object) return true;
    return ahead.kind == ContentKind::LeaveBlock && behind.kind == ContentKind::LeaveBlock &&
           ahead.node == behind.node && may_hold_text(*ahead.node);
  }

  static bool ends_empty_line(const Node& line_break) {
    const Content before = content_beside(dom::before(line_break), Direction::Backward);
    return before.kind != ContentKind::Text && before.kind != ContentKind::Object;
  }

  // The position after the next thing, or, once a line's edge was crossed, the next position in a line.
  std::optional<Boundary> find(Boundary from, bool crossed) {
    ContentWalk walk(from, direction_);
    const Node* entered = nullptr;  // the last block entered, while nothing was found in it
    for (;;) {
      const Content met = walk.next();
      switch (met.kind) {
        case ContentKind::End: return std::nullopt;
        case ContentKind::Text:
          if (const auto place = in_text(met, crossed)) return place;
          break;
        case ContentKind::Object: return forward_ == crossed ? dom::before(*met.node) : dom::after(*met.node);
        case ContentKind::LineBreak:
          if (forward_ ? crossed : ends_empty_line(*met.node)) return dom::before(*met.node);
          crossed = true;
          break;
        case ContentKind::Rule:
          crossed = true;
          entered = nullptr;
          break;
        case ContentKind::EnterBlock:
          crossed = true;
          entered = met.node;
          break;
        case ContentKind::LeaveBlock:
          if (entered == met.node && may_hold_text(*met.node)) return Boundary{met.node, 0};
          crossed = true;
          entered = nullptr;
          break;
      }
    }
  }

  std::optional<Boundary> in_text(const Content& piece, bool crossed) const {
    const std::u16string& text = piece.text().data();
    const bool collapsing = collapses(piece.text());
    return forward_ ? on(piece, text, collapsing, crossed) : back(piece, text, collapsing, crossed);
  }

  static std::optional<Boundary> on(const Content& piece, const std::u16string& text, bool collapsing,
                                    bool crossed) {
    const Offset behind_space = collapsing ? skip_space(text, piece.from) : piece.from;
    if (!crossed && behind_space > piece.from) {
      const bool begins_run = piece.from == 0 || !is_ascii_space(text[piece.from - 1]);
      if (begins_run && shows_space(piece.text(), piece.from, behind_space))
        return Boundary{piece.node, behind_space};
    }
    if (behind_space == text.size()) return std::nullopt;
    return Boundary{piece.node, crossed ? behind_space : next_grapheme(text, behind_space)};
  }

  static std::optional<Boundary> back(const Content& piece, const std::u16string& text, bool collapsing,
                                      bool crossed) {
    const Offset before_space = collapsing ? skip_space_back(text, piece.to) : piece.to;
    if (!crossed && before_space < piece.to &&
        shows_space(piece.text(), before_space, skip_space(text, piece.to))) {
      return Boundary{piece.node, before_space};
    }
    if (before_space == 0) return std::nullopt;
    return Boundary{piece.node, crossed ? before_space : previous_grapheme(text, before_space)};
  }

  Direction direction_;
  bool forward_;
};

// The first unit of a text piece that is seen; its end if none is.
Offset first_seen(const Content& piece) {
  const std::u16string& text = piece.text().data();
  if (!collapses(piece.text())) return piece.from;
  const Offset behind_space = std::min(skip_space(text, piece.from), piece.to);
  if (behind_space == piece.from) return piece.from;
  const Offset run_end = skip_space(text, piece.from);
  return shows_space(piece.text(), skip_space_back(text, piece.from), run_end) ? piece.from : behind_space;
}

// After the last unit that is seen; its start if none is.
Offset last_seen(const Content& piece) {
  const std::u16string& text = piece.text().data();
  if (!collapses(piece.text())) return piece.to;
  const Offset before_space = std::max(skip_space_back(text, piece.to), piece.from);
  if (before_space == piece.to) return piece.to;
  const Offset run_start = skip_space_back(text, piece.to);
  return shows_space(piece.text(), run_start, skip_space(text, piece.to)) ? piece.to : before_space;
}

std::optional<Boundary> first_character(Boundary start) {
  ContentWalk walk(start, Direction::Forward);
  for (Content met = walk.next(); met.kind != ContentKind::End; met = walk.next()) {
    if (met.kind == ContentKind::Text) {
      const Offset seen = first_seen(met);
      if (seen < met.to) return Boundary{met.node, seen};
    } else if (met.is_substance()) {
      return dom::before(*met.node);
    }
  }
  return std::nullopt;
}

std::optional<Boundary> behind_last_character(Boundary end) {
  ContentWalk walk(end, Direction::Backward);
  for (Content met = walk.next(); met.kind != ContentKind::End; met = walk.next()) {
    if (met.kind == ContentKind::Text) {
      const Offset seen = last_seen(met);
      if (seen > met.from) return Boundary{met.node, seen};
    } else if (met.is_substance()) {
      return dom::after(*met.node);
    }
  }
  return std::nullopt;
}

// Whether the walk meets anything that is seen before it ends.
bool meets_substance(ContentWalk walk) {
  for (Content met = walk.next(); met.kind != ContentKind::End; met = walk.next()) {
    if (met.kind == ContentKind::Text) {
      if (first_seen(met) < met.to) return true;
    } else if (met.is_substance() &&
               !(met.kind == ContentKind::LineBreak && is_extraneous_line_break(*met.node))) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::optional<Boundary> next_character(Boundary from, Direction direction) {
  return CharacterStep(direction).run(from);
}

dom::Range shrunk_to_characters(const dom::Range& range) {
  if (!range.start || range.collapsed()) return range;
  const std::optional<Boundary> first = first_character(range.start);
  if (!first || dom::compare(*first, range.end) >= 0) return {range.start, range.start};
  const std::optional<Boundary> last = behind_last_character(range.end);
  if (!last || dom::compare(*last, *first) <= 0) return {range.start, range.start};
  return {*first, *last};
}

bool covers_content_of(const dom::Range& range, dom::Element& element) {
  return !meets_substance(ContentWalk(range.start, Direction::Backward, &element)) &&
         !meets_substance(ContentWalk(range.end, Direction::Forward, &element));
}

namespace {

const Node* enclosing_cell(const Node* node) {
  while (node && !node->is(Tag::Td) && !node->is(Tag::Th)) node = node->parent();
  return node;
}

}  // namespace

bool takes_line_end(const dom::Range& range, const dom::Range& seen) {
  const ContentKind behind = content_beside(range.end, Direction::Backward).kind;
  if (behind != ContentKind::EnterBlock && behind != ContentKind::LeaveBlock) return false;
  const auto next = next_caret_place(seen.end, Direction::Forward, Granularity::Character);
  return next && enclosing_cell(seen.end.node) == enclosing_cell(next->node);
}

}  // namespace tvx::editing
