#include "tvx/editing/walk/whitespace.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;

namespace {

constexpr char16_t blank = u' ', no_break = u'\u00A0';

bool is_space(char16_t c) { return c == blank || c == no_break; }

bool has_parent_in_host(const Node& node) {
  return node.parent() && in_same_editing_host(node, *node.parent());
}

// OURS: white space among items and cells is the source's.
bool holds_text(const dom::Element& element) {
  return is_allowed_child_name(dom::Name(dom::Tag::Span), element);
}

// The text that the spot stands in, if its white space collapses.
dom::Text* collapsing_text(const WalkPosition& spot) {
  auto* text = spot.node().is_text() ? static_cast<dom::Text*>(&spot.node()) : nullptr;
  if (!text || !text->parent_element() || !holds_text(*text->parent_element())) return nullptr;
  const WhiteSpace space = white_space_of(*text->parent_element());
  return space == WhiteSpace::Pre || space == WhiteSpace::PreWrap ? nullptr : text;
}

/// Whether a position on its way over a line stands at the line's end. What is seen next is kept until the
/// walk comes to it: the nodes before it are seen by nobody, and each of them would look for it again.
class LineEdge {
 public:
  explicit LineEdge(Node* (*find)(Node&)) : find_(find) {}
  bool is_at(Node& node) {
    if (!seen_) seen_ = find_(node);
    return !seen_;
  }
  void enter(const Node& child) {
    if (&child == seen_) seen_ = nullptr;
  }
  void changed() { seen_ = nullptr; }

 private:
  Node* (*find_)(Node&);
  Node* seen_ = nullptr;
};

/// The run of white space around a position: found, thinned out where blanks collapse anyway, and written
/// again in its canonical form. The steps are the standard's.
class SpaceRun {
 public:
  SpaceRun(Boundary place, bool fix) : start_(place), end_(place), fix_(fix) {
    while (step_back()) {
    }
    end_ = start_;
    collapse_ = start_.at_start() && follows_line_break(start_.node());
    while (step_on()) {
    }
    if (fix_) {
      while (!start_.same_as(end_) && strip_trailing()) {
      }
    }
  }

  void rewrite() { write(canonical()); }

  /// Blanks that begin a line of the source show nothing: the line's end before them is a blank already.
  bool is_indentation() const {
    const dom::Text* text = collapsing_text(start_);
    if (!text || start_.at_start() || text->data()[start_.offset - 1] != u'\n') return false;
    bool plain = length_ > 0;
    for_each_unit([&](Boundary unit) {
      plain = plain && static_cast<const dom::Text*>(unit.node)->data()[unit.offset] == blank;
    });
    return plain;
  }

  /// As the end of one line and the start of the next.
  void rewrite_for_break_at(Boundary place) {
    Offset before = 0;
    for_each_unit([&](Boundary unit) { before += dom::compare(unit, place) < 0; });
    write(canonical_spaces(before, breaking_start(), true) +
          canonical_spaces(length_ - before, true, breaking_end()));
  }

  SpacesBeside facts() const {
    const bool start = breaking_start(), end = breaking_end();
    std::u16string spaces;
    for_each_unit(
        [&](Boundary unit) { spaces += static_cast<const dom::Text*>(unit.node)->data()[unit.offset]; });
    if (spaces.empty()) return {};
    return {spaces == canonical() && spaces.find(no_break) != std::u16string::npos,
            (start && spaces.front() == blank) || (end && spaces.back() == blank) ||
                spaces.find(u"  ") != std::u16string::npos};
  }

 private:
  void write(const std::u16string& spaces) {
    for (std::size_t used = 0; used < spaces.size();) {
      Node* child = start_.next();
      if (child) {
        start_.enter_start(*child);
      } else if (!start_.node().is_text() || start_.at_end()) {
        start_.leave_forward();
      } else {
        replace_unit(spaces[used++]);
      }
    }
  }

  // Calls `visitor` with the position before each unit.
  template <class Visitor>
  void for_each_unit(Visitor&& visitor) const {
    WalkPosition spot = start_;
    for (Offset found = 0; found < length_;) {
      if (Node* child = spot.next()) {
        spot.enter_start(*child);
      } else if (!spot.node().is_text() || spot.at_end()) {
        spot.leave_forward();
      } else {
        visitor(spot.boundary());
        ++spot.offset;
        ++found;
      }
    }
  }

  bool start_before_end() const {
    if (start_.data && start_.data == end_.data) return start_.offset < end_.offset;
    return dom::compare(start_.boundary(), end_.boundary()) < 0;
  }
  // OURS: a comment parts nothing; the standard's walk ends there.
  static bool is_comment(const Node* child) { return child && child->type() == dom::NodeType::Comment; }
  // OURS: an image or a field is seen; the standard counts the blanks on both its sides as one run.
  static Node* enterable(Node* child, const WalkPosition& from) {
    return child && in_same_editing_host(*child, from.node()) && !is_object(*child) ? child : nullptr;
  }

  // Step 3.
  bool step_back() {
    if (is_comment(start_.previous())) {
      start_.gap = Gap::before(*start_.previous());
    } else if (Node* child = enterable(start_.previous(), start_)) {
      start_.enter_end(*child);
      line_start_.enter(*child);
    } else if (start_.at_start()) {
      if (!has_parent_in_host(start_.node()) || line_start_.is_at(start_.node())) return false;
      start_.leave_backward();
    } else {
      const dom::Text* text = collapsing_text(start_);
      if (!text || !is_space(text->data()[start_.offset - 1])) return false;
      --start_.offset;
    }
    return true;
  }

  // Step 7.
  bool step_on() {
    if (is_comment(end_.next())) {
      end_.gap = Gap::after(*end_.next());
      return true;
    }
    if (Node* child = enterable(end_.next(), end_)) {
      end_.enter_start(*child);
      line_end_.enter(*child);
      return true;
    }
    if (end_.at_end()) {
      if (!has_parent_in_host(end_.node()) || line_end_.is_at(end_.node())) return false;
      end_.leave_forward();
      return true;
    }
    dom::Text* text = collapsing_text(end_);
    if (!text || !is_space(text->data()[end_.offset])) return false;
    const bool plain = text->data()[end_.offset] == blank;
    if (fix_ && collapse_ && plain) {
      dom::replace_data(*text, end_.offset, 1, u"");
      line_end_.changed();
      return true;
    }
    collapse_ = plain;
    ++end_.offset;
    ++length_;
    return true;
  }

  // Step 8: blanks at the end of a line take no room.
  bool strip_trailing() {
    if (is_comment(end_.previous())) {
      end_.gap = Gap::before(*end_.previous());
      return true;
    }
    if (Node* child = enterable(end_.previous(), end_)) {
      end_.enter_end(*child);
      if (child->is(dom::Tag::Br) || is_block_node(*child)) at_line_end_ = false;
      return true;
    }
    if (end_.at_start()) {
      if (!has_parent_in_host(end_.node())) return false;
      end_.leave_backward();
      return true;
    }
    dom::Text* text = collapsing_text(end_);
    if (!text || !end_.at_end() || text->data().back() != blank) return false;
    // Asked here alone: on the way there may be thousands of nodes that nobody sees.
    if (!start_before_end() || !ends_line(*text)) return false;
    --end_.offset;
    --length_;
    dom::replace_data(*text, end_.offset, 1, u"");
    return true;
  }

  // What is passed on the way back from a line's end is seen by nobody, until the line before it.
  bool ends_line(dom::Text& text) {
    if (!at_line_end_) at_line_end_ = precedes_line_break(text);
    return at_line_end_;
  }

  // Step 9.
  std::u16string canonical() const { return canonical_spaces(length_, breaking_start(), breaking_end()); }
  bool breaking_start() const { return start_.at_start() && follows_line_break(start_.node()); }
  bool breaking_end() const { return end_.at_end() && precedes_line_break(end_.node()); }

  // Written after what it replaces and only then taken out, so that boundaries before it stay.
  void replace_unit(char16_t unit) {
    if (start_.data->data()[start_.offset] != unit) {
      dom::replace_data(*start_.data, start_.offset, 0, std::u16string_view(&unit, 1));
      dom::replace_data(*start_.data, start_.offset + 1, 1, u"");
    }
    ++start_.offset;
  }

  WalkPosition start_, end_;
  bool fix_, collapse_ = false, at_line_end_ = false;
  LineEdge line_start_{seen_before_in_line}, line_end_{seen_after_in_line};
  Offset length_ = 0;
};

}  // namespace

std::u16string canonical_spaces(Offset length, bool no_break_start, bool no_break_end) {
  if (length == 0) return {};
  if (length == 1) return std::u16string(1, no_break_start || no_break_end ? no_break : blank);
  std::u16string spaces;
  const char16_t odd = no_break_start ? no_break : blank, even = no_break_start ? blank : no_break;
  for (; length > 3; length -= 2) (spaces += odd) += even;
  if (length == 3) {
    if (no_break_start) return spaces + (no_break_end ? u"\u00A0 \u00A0" : u"\u00A0\u00A0 ");
    return spaces + (no_break_end ? u" \u00A0\u00A0" : u" \u00A0 ");
  }
  if (no_break_start) return spaces + (no_break_end ? u"\u00A0\u00A0" : u"\u00A0 ");
  return spaces + (no_break_end ? u" \u00A0" : u"\u00A0 ");
}

std::u16string with_visible_spaces(std::u16string_view text) {
  std::u16string result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t space = std::min(text.find(u"  ", at), text.size());
    result += text.substr(at, space - at);
    const std::size_t end = std::min(text.find_first_not_of(u' ', space), text.size());
    if (end > space) result += canonical_spaces(end - space, false, false);
    at = end;
  }
  return result;
}

namespace {

bool is_in_editable(const Boundary& place) {
  return is_editable(*place.node) || is_editing_host(*place.node);
}

}  // namespace

void canonicalize_whitespace(Boundary place, bool fix_collapsed_space) {
  // OURS: the standard thins out how the source is indented, of which nobody sees more than one blank.
  if (!is_in_editable(place)) return;
  SpaceRun run(place, false);
  if (run.is_indentation()) return;
  if (!fix_collapsed_space) return run.rewrite();
  SpaceRun(place, true).rewrite();
}

void canonicalize_for_break(Boundary place) {
  if (!is_in_editable(place) || SpaceRun(place, false).is_indentation()) return;
  const dom::LiveRange kept(dom::document_of(*place.node), {place, place});
  SpaceRun(place, true).rewrite_for_break_at(kept.start());
}

SpacesBeside spaces_beside(Boundary place) {
  return is_in_editable(place) ? SpaceRun(place, false).facts() : SpacesBeside{};
}

void settle_spaces(Boundary place, SpacesBeside before) {
  if (before.hidden || !is_in_editable(place)) return;
  if (before.canonical || spaces_beside(place).hidden) SpaceRun(place, false).rewrite();
}

}  // namespace tvx::editing
