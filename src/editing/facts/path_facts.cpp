#include "tvx/editing/facts/path_facts.h"

#include "tvx/editing/facts/predicates.h"

namespace tvx::editing {

using dom::Node;
using dom::Tag;

PathFacts::Facts PathFacts::within(const Node& node, const Facts& around) {
  return {&node, editing_host_within(node, around.host)};
}

namespace {

// What is asked about next stands a few levels below the last at most: those between hold no text of their
// own.
constexpr int few_levels = 4;

bool stands_just_below(const Node& node, const Node* above) {
  const Node* current = &node;
  for (int level = 0; current && level <= few_levels; ++level, current = current->parent())
    if (current == above) return true;
  return false;
}

}  // namespace

// In tree order the parent is the last one asked about, a little below it, or one further up.
const PathFacts::Facts& PathFacts::around(const Node& node) {
  static const Facts outside{nullptr, nullptr};
  const Node* parent = node.parent();
  if (!parent) return outside;
  while (!path_.empty() && !stands_just_below(*parent, path_.back().node)) path_.pop_back();
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
