#pragma once

#include <compare>

#include "tvx/base/strings.h"
#include "tvx/dom/document.h"

namespace tvx::dom {

/// A place in a tree: before child number `offset` of `node`, or before that 16-bit unit of a text.
/// DOM standard, section 5.2 "boundary points". A value: it does not follow edits.
struct Boundary {
  Node* node = nullptr;
  Offset offset = 0;

  explicit operator bool() const { return node != nullptr; }
  friend bool operator==(const Boundary&, const Boundary&) = default;
};

/// Two boundaries of one tree, start not after end. A value.
struct Range {
  Boundary start, end;
  bool collapsed() const { return start == end; }
  friend bool operator==(const Range&, const Range&) = default;
};

/// Units of a text, children of anything else (DOM standard, section 4.2 "length").
Offset length_of(const Node& node);
/// The number of earlier siblings (dom/sibling_places.h tells the cost).
Offset index_of(const Node& node);
/// Whether a child comes before that offset of its parent: at either end of the siblings that is known at
/// once, however many they are.
bool stands_before(const Node& child, Offset offset);
Node* child_at(const Node& parent, Offset index);
Boundary before(const Node& node);
Boundary after(const Node& node);

/// The order of two boundaries in one tree. DOM standard, section 5.2 "position".
std::strong_ordering compare(const Boundary& a, const Boundary& b);
/// The order of two nodes of one tree; an ancestor comes before what it holds.
std::strong_ordering compare_order(const Node& a, const Node& b);
Node* common_ancestor(const Node& a, const Node& b);
/// Whether a node with all it holds lies within the range (DOM standard, section 5.2 "contained").
bool contains(const Range& range, const Node& node);

/// A range that follows the edits of its document, by the DOM standard's rules.
class LiveRange {
 public:
  LiveRange(Document& document, Range range);
  ~LiveRange();
  LiveRange(const LiveRange&) = delete;
  LiveRange& operator=(const LiveRange&) = delete;

  Range range() const { return {start(), end()}; }
  Boundary start() const { return {start_node_.get(), start_offset_}; }
  Boundary end() const { return {end_node_.get(), end_offset_}; }
  bool collapsed() const { return start() == end(); }
  /// A boundary past the other end takes that end with it.
  void set_start(Boundary boundary);
  void set_end(Boundary boundary);
  void set(Range range);
  /// Writes both ends as they are given, in whatever order: for a selection whose focus may precede.
  void set_unordered(Boundary start, Boundary end);

 private:
  friend class MutationDoor;
  friend class Document;
  Document* document_;  // null when the document is gone
  Ref<Node> start_node_, end_node_;
  Offset start_offset_ = 0, end_offset_ = 0;
};

}  // namespace tvx::dom
