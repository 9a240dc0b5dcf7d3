#include "tvx/editing/facts/path_facts.h"

#include "tvx/editing/facts/predicates.h"

namespace tvx::editing {

using dom::Node;
using dom::Tag;

PathFacts::Facts PathFacts::within(const Node& node, const Facts& around) {
  return {&node, editing_host_within(node, around.host)};
}

// In tree order the parent is the last one asked about, a child of it, or one further up.
const PathFacts::Facts& PathFacts::around(const Node& node) {
  static const Facts outside{nullptr, nullptr};
  const Node* parent = node.parent();
  if (!parent) return outside;
  while (!path_.empty() && path_.back().node != parent && path_.back().node != parent->parent()) {
    path_.pop_back();
  }
  if (!path_.empty() && path_.back().node == parent) return path_.back();
  std::vector<const Node*> missing;
  const Node* known = path_.empty() ? nullptr : path_.back().node;
  for (const Node* current = parent; current != known; current = current->parent())
    missing.push_back(current);
  for (auto current = missing.rbegin(); current != missing.rend(); ++current) {
    path_.push_back(within(**current, path_.empty() ? outside : path_.back()));
  }
  return path_.back();
}

bool PathFacts::is_editable(const Node& node) {
  const Node* host = editing_host_within(node, around(node).host);
  return host && host != &node;
}

bool PathFacts::is_formattable(const Node& node) {
  if (!node.is_text() && !node.is(Tag::Img) && !node.is(Tag::Br)) return false;
  return is_editable(node) && is_visible(node);
}

}  // namespace tvx::editing
