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
    KnownPlace& known = child.anchor_->known_place;
    if (known.parent != &parent || !before) return;
    if (known.child == before)
      known.child = &child;
    else
      known = {};
  }
  /// `child` is about to leave.
  static void removing(const Node& child) {
    KnownPlace& known = child.anchor_->known_place;
    if (known.parent == child.parent()) forget(known, child);
  }

 private:
  static void forget(KnownPlace& known, const Node& child);
  static Offset keep(const Node& node, Offset index);
};

}  // namespace tvx::dom
