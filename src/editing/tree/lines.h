#pragma once

#include <vector>

#include "tvx/dom/range.h"
#include "tvx/editing/tree/surgery.h"

/// The small operations on lines and blocks that pasting and the deletion of lines are made of.
namespace tvx::editing {

/// A Gap that holds its nodes, for as long as the tree around it is changed.
struct HeldGap {
  dom::Ref<dom::Node> parent;
  dom::Ref<dom::Node> before;  // empty: at the end
};
/// Splits a text that the position is within.
HeldGap gap_at(dom::Boundary position);
dom::Boundary position_of(const HeldGap& gap);
void insert_all(const HeldGap& gap, const NodeList& nodes);

/// Breaks `block` at the position; what is after it moves into a copy of the block, which is returned.
dom::Ref<dom::Element> split_block(dom::Element& block, dom::Boundary place);
/// Breaks the elements around a position within `container`; gives the gap among the container's children.
HeldGap split_up_to(dom::Node& container, dom::Boundary place);
/// Removes the elements of a line that nothing is left in, from the position upwards; where the position then
/// is.
dom::Boundary without_empty_looks(dom::Boundary place);
/// Removes a node and what holds nothing without it, up to `limit` or a cell.
void remove_with_empty_holders(dom::Node& node, const dom::Node& limit);
/// Removes an element in which nothing is seen; comments in it stay where it stood.
void remove_keeping_comments(dom::Node& element);
/// Makes one text of two that meet at the position.
dom::Boundary join_texts_at(dom::Boundary place);
/// A position that goes where its node goes: a live range would stay where the node is taken away.
struct HeldPosition {
  enum class At : std::uint8_t { Nowhere, InText, Inside, Before, Behind };
  At at = At::Nowhere;
  dom::Ref<dom::Node> node;
  Offset offset = 0;  // in a text

  explicit operator bool() const { return at != At::Nowhere; }
  dom::Boundary place() const;
};
/// The end of the last line in a node; after it if it has none. Into a table only if `in_cells`.
HeldPosition end_of_lines(dom::Node& node, bool in_cells = false);

/// The styles around a position within `outside`, from the outermost to the innermost.
std::vector<dom::Element*> looks_between(const dom::Node& outside, dom::Node* inside);
/// Moves what `from` begins with into these styles, where it has the same; the end of what was moved.
HeldPosition zip_left(const std::vector<dom::Element*>& looks, dom::Node& from);
/// Moves what `from` ends with to the front of these styles, where it has the same.
HeldPosition zip_right(const std::vector<dom::Element*>& looks, dom::Node& from);
/// Moves the children of `from` after a line's end, or before its start: looks that both sides have go on,
/// others don't spread.
void append_line(dom::Node& line, dom::Boundary end, dom::Node& from);
void prepend_line(dom::Node& line, dom::Boundary begin, dom::Node& from);

bool same_look(const dom::Node* node, const dom::Element& look);
bool same_attributes(const dom::Element& a, const dom::Element& b);

}  // namespace tvx::editing
