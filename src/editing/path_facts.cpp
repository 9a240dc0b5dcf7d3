#include "editing/path_facts.h"

#include "editing/predicates.h"
#include "editing/rendering.h"

namespace tvx::editing {

using dom::Node;
using dom::Tag;

PathFacts::Facts PathFacts::within(const Node& node, const Facts& around) {
  const auto* element = dom::as<dom::Element>(&node);
  const bool hidden = element && display_of(*element) == Display::None;
  return {&node, editing_host_within(node, around.host), around.rendered && !hidden};
}

// In tree order the parent is the last one asked about, a child of it, or one further up.
const PathFacts::Facts& PathFacts::around(const Node& node) {
  static const Facts outside{nullptr, nullptr, true};
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
  return is_editable(node) && around(node).rendered && is_visible_where_rendered(node);
}

}  // namespace tvx::editing
