#pragma once

#include "tvx/base/strings.h"
#include "tvx/dom/node.h"

namespace tvx::dom {

/// Positions of children among their siblings. A list of children has no numbers: they are counted from the
/// nearer end, or from the position that was asked for last, whichever is nearest. So a walk over tens of
/// thousands of siblings counts each of them once.
class SiblingPlaces {
 public:
  static Offset index_of(const Node& node);
  static Node* child_at(const Node& parent, Offset index);

  // --- told by the builder, which alone changes lists of children ---
  /// `child` stands before `before` now (null: at the end).
  static void inserted(const Node& parent, const Node& child, const Node* before) {
    if (child.anchor_->known_place.parent == &parent && before) make_room(child);
  }
  /// `child` is about to leave.
  static void removing(const Node& child) {
    if (child.parent() && child.anchor_->known_place.parent == child.parent()) close_gap(child);
  }

 private:
  enum class Side : std::uint8_t { Before, Same, After, Far };
  static Side side_of_known(const Node& child);
  static void make_room(const Node& child);
  static void close_gap(const Node& child);
  static Offset keep(const Node& node, Offset index);
};

}  // namespace tvx::dom
