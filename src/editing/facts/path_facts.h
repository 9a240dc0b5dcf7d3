#pragma once

#include <vector>

#include "tvx/dom/node.h"

namespace tvx::editing {

/// What a node has from its ancestors, for a walk in tree order: each answer is one step from the answer for
/// the parent, so that asking for all nodes of a document costs one walk and not a climb for each.
/// Only while the tree stays as it is.
class PathFacts {
 public:
  bool is_editable(const dom::Node& node);
  /// "Formattable": see predicates.h.
  bool is_formattable(const dom::Node& node);

 private:
  struct Facts {
    const dom::Node* node;
    dom::Node* host;  // that the children of the node belong to, null: they can't be edited
  };
  const Facts& around(const dom::Node& node);
  static Facts within(const dom::Node& node, const Facts& around);

  std::vector<Facts> path_;  // from the root to the last parent that was asked about
};

}  // namespace tvx::editing
