#pragma once

#include <string>
#include <vector>

#include "tvx/dom/range.h"

namespace tvx::editing {

/// What an element is to a reader: what is offered by itself in it, and its text, in which each of those
/// stands as one unit (U+FFFC), but for links, whose text is part of the line. White space that collapses is
/// one blank, and what nobody sees isn't there. True as long as nothing of the tree changes.
class AccessibleContent {
 public:
  static constexpr char16_t object = 0xFFFC;

  explicit AccessibleContent(dom::Element& top);

  const std::vector<dom::Element*>& children() const { return children_; }
  /// Whether it holds lines itself, as a paragraph does, and a list doesn't. An empty one may: a caret stands
  /// there.
  bool has_text() const { return has_text_; }
  const std::u16string& text() const { return text_; }

  /// The first unit at or after a position, which may be outside of it.
  Offset offset_of(const dom::Boundary& place) const;
  /// Where a caret stands before a unit, or after the last.
  dom::Boundary position(Offset offset) const;
  /// From before its first unit to after its last; collapsed where the stretch is empty.
  dom::Range range_of(Offset from, Offset to) const;

  /// A stretch of a text node, or one element that is a unit.
  struct Run {
    dom::Node* node;
    Offset from, start, length;  // in the node, in the text
    bool is_text() const { return node->is_text(); }
  };
  /// The one that holds a unit; null after the last.
  const Run* run_at(Offset offset) const;
  const std::vector<Run>& runs() const { return runs_; }
  /// The line that a unit stands in, its end counted in: what breaks, and blocks, divide lines.
  std::pair<Offset, Offset> line_at(Offset offset) const;

 private:
  class Reading;
  dom::Element* top_;
  std::vector<dom::Element*> children_;
  std::u16string text_;
  std::vector<Run> runs_;
  bool has_text_ = false;
};

}  // namespace tvx::editing
