#pragma once

#include <bitset>
#include <initializer_list>

#include "tvx/dom/node.h"

namespace tvx::editing {

/// A set of HTML element names, asked in one step.
class TagSet {
 public:
  TagSet(std::initializer_list<dom::Tag> tags) {
    for (const dom::Tag tag : tags) tags_.set(static_cast<std::size_t>(tag));
  }
  bool has(dom::Tag tag) const { return tags_.test(static_cast<std::size_t>(tag)); }
  /// Whether the node is an HTML element of one of these names.
  bool has(const dom::Node& node) const {
    return node.is_element() && has(static_cast<const dom::Element&>(node).tag());
  }

 private:
  std::bitset<static_cast<std::size_t>(dom::Tag::Count)> tags_;
};

}  // namespace tvx::editing
