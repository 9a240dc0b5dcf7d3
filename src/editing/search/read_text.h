#pragma once

#include <string>
#include <vector>

#include "tvx/dom/range.h"

namespace tvx::editing {

/// The text below a node as a reader sees it, in lines that end with LF: elements within a line are nothing,
/// white space that collapses is one blank, and what nobody sees isn't there. Blocks, line breaks, images and
/// form fields end a line. True as long as nothing of the tree changes.
class ReadText {
 public:
  /// A stretch of one text node.
  struct Piece {
    dom::Text* node = nullptr;
    Offset from = 0, to = 0;
    friend bool operator==(const Piece&, const Piece&) = default;
  };

  explicit ReadText(dom::Node& top);

  const std::u16string& text() const { return text_; }
  /// From before its first unit to after its last. The stretch isn't empty and goes over no line's end.
  dom::Range range_of(Offset from, Offset to) const;
  /// The nodes that such a stretch stands in, one piece for each, in their order. White space that collapses
  /// within the stretch is part of them.
  std::vector<Piece> pieces_of(Offset from, Offset to) const;
  /// The first unit at or after a position.
  Offset unit_at(const dom::Boundary& place) const;

 private:
  class Reading;
  /// Units that stand one after the other in a node too.
  struct Run {
    dom::Text* node;
    Offset from, start, length;  // in the node, in the text
  };
  const Run& run_of(Offset unit) const;

  std::u16string text_;
  std::vector<Run> runs_;
};

}  // namespace tvx::editing
