#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "tvx/base/work_count.h"
#include "tvx/dom/document.h"

namespace tvx::editing {

/// Whether something is so of a node or of one above it, asked for many nodes: nobody climbs where another
/// has climbed, as long as the tree stays as it is. One question for each of these.
class KnownAncestors {
 public:
  /// From `first` up, `end` (null: the root) not counted in.
  template <class Question>
  bool any(const dom::Node* first, const dom::Node* end, Question is_so) {
    if (!first) return false;
    follow(dom::document_of(*first));
    climbed_.clear();
    bool found = false;
    for (const dom::Node* node = first; node && node != end && !found; node = node->parent()) {
      count_work();
      const auto known = known_.find(node);
      if (known != known_.end()) {
        found = known->second;
        break;
      }
      climbed_.push_back(node);
      found = is_so(*node);
    }
    for (const dom::Node* node : climbed_) known_.emplace(node, found);
    return found;
  }

 private:
  void follow(const dom::Document& document) {
    if (version_ == document.version()) return;
    version_ = document.version();
    known_.clear();
  }

  std::uint64_t version_ = 0;
  std::unordered_map<const dom::Node*, bool> known_;
  std::vector<const dom::Node*> climbed_;
};

}  // namespace tvx::editing
