#include "tvx/editing/reading/accessible_tree.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "tvx/dom/tree.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/reading/accessible_kind.h"
#include "tvx/editing/walk/caret.h"

namespace tvx::editing {

using dom::Element;
using dom::Mutation;
using dom::Node;
using dom::Ref;
using dom::Tag;

AccessibleTree::AccessibleTree(dom::Document& document) : document_(&document) {
  document.add_observer(*this);
}

AccessibleTree::~AccessibleTree() { document_->remove_observer(*this); }

const AccessibleContent& AccessibleTree::content(Element& element) {
  soil_everything();
  const auto found = entries_.find(&element);
  if (found == entries_.end()) {
    passing_ = std::make_unique<AccessibleContent>(element);
    return *passing_;
  }
  Entry& entry = found->second;
  if (!entry.content) entry.content = std::make_unique<AccessibleContent>(element);
  return *entry.content;
}

Element* AccessibleTree::at(const Node& node) const {
  Element* nearest = nullptr;
  const Node* body = document_->body();
  for (const Node* above = &node; above; above = above->parent()) {
    auto* element = const_cast<Element*>(dom::as<Element>(above));
    if (!element) continue;
    if (element == body) return nearest ? nearest : element;
    const AccessibleKind kind = accessible_kind(*element);
    // What is in a form field, or isn't shown, is nobody's line.
    if (is_thing(kind))
      nearest = element;
    else if (display_of(*element) == Display::None)
      nearest = nullptr;
    else if (!nearest && kind != AccessibleKind::None)
      nearest = element;
  }
  return nullptr;
}

Element* AccessibleTree::block_at(const Node& node) const {
  Element* element = at(node);
  while (element && accessible_kind(*element) == AccessibleKind::Link) element = parent(*element);
  return element;
}

Element* AccessibleTree::parent(const Element& element) const {
  if (&element == root() || !element.parent()) return nullptr;
  return at(*element.parent());
}

std::ptrdiff_t AccessibleTree::index_of(Element& parent, const Element& child) {
  const std::vector<Element*>& children = content(parent).children();
  const auto found = entries_.find(&parent);
  if (found == entries_.end()) {
    const auto place = std::ranges::find(children, &child);
    return place == children.end() ? -1 : place - children.begin();
  }
  auto& order = found->second.order;
  if (order.size() != children.size()) {
    order.clear();
    for (const Element* each : children) order.emplace_back(each, std::ssize(order));
    std::ranges::sort(order);
  }
  const auto place =
      std::ranges::lower_bound(order, &child, std::less<>(), [](const auto& pair) { return pair.first; });
  return place != order.end() && place->first == &child ? place->second : -1;
}

AccessibleTree::Place AccessibleTree::place_of(const dom::Boundary& position) {
  if (!position || !dom::is_connected(*position.node)) return {};
  Element* element = block_at(*position.node);
  if (!element) return {};
  if (content(*element).has_text()) return {element, content(*element).offset_of(position)};
  // Between blocks, where the next line is meant.
  const dom::Boundary nearest = normalized_caret_place(position);
  if (Element* other = block_at(*nearest.node); other && content(*other).has_text())
    return {other, content(*other).offset_of(nearest)};
  return {element, 0};
}

// --- what is followed ---

void AccessibleTree::follow(Element& element) {
  const auto [place, is_new] = entries_.try_emplace(&element);
  if (!is_new) return;
  Entry& entry = place->second;
  entry.element = &element;
  entry.block = accessible_kind(element) != AccessibleKind::Link;
  const AccessibleContent& now = content(element);
  entry.text = now.text();
  entry.children.assign(now.children().begin(), now.children().end());
}

void AccessibleTree::soil(Entry& entry) {
  entry.content.reset();
  entry.order.clear();
  if (!std::exchange(entry.soiled, true)) soiled_.push_back(entry.element);
}

void AccessibleTree::soil_everything() {
  if (!std::exchange(everything_, false)) return;
  for (auto& [element, entry] : entries_) soil(entry);
}

/// Styles aren't asked within a mutation, so what is followed says by itself whether it is a part of a line.
void AccessibleTree::soil(Node* node) {
  for (; node; node = node->parent()) {
    const auto* element = dom::as<Element>(node);
    const auto found = element ? entries_.find(element) : entries_.end();
    if (found == entries_.end()) continue;
    soil(found->second);
    if (found->second.block) return;
  }
}

void AccessibleTree::note_attribute(const Mutation& mutation) {
  static const TagSet within_lines{Tag::B,    Tag::I,    Tag::U,   Tag::Em,    Tag::Strong,
                                   Tag::Span, Tag::Font, Tag::A,   Tag::Br,    Tag::Img,
                                   Tag::Code, Tag::Sub,  Tag::Sup, Tag::Small, Tag::Strike};
  soil(mutation.node.get());
  soil(mutation.node->parent());
  static const dom::Name hidden(u"hidden");
  if (mutation.attribute != dom::names::style && mutation.attribute != dom::names::class_ &&
      mutation.attribute != dom::names::id && mutation.attribute != hidden)
    return;
  // What stands below may be shown in another way now.
  for (const Node* child = mutation.node->first_child(); child && !everything_;
       child = child->next_sibling()) {
    const auto* element = dom::as<Element>(child);
    if (element && !within_lines.has(*element)) everything_ = true;
  }
}

void AccessibleTree::mutated(const Mutation& mutation) {
  passing_.reset();
  if (mutation.kind == dom::MutationKind::Overlay) return;
  ++version_;
  if (mutation.kind == dom::MutationKind::Step) ++edits_;
  const auto is_sheet = [](const Node* node) {
    return node && (node->is(Tag::Style) || node->is(Tag::Link));
  };
  switch (mutation.type) {
    case Mutation::Type::Insert: soil(mutation.parent.get()); break;
    case Mutation::Type::Remove:
      soil(mutation.parent.get());
      removed_.push_back(mutation.node);
      break;
    case Mutation::Type::ReplaceData: soil(mutation.node->parent()); break;
    case Mutation::Type::SetAttribute: note_attribute(mutation); break;
  }
  if (is_sheet(mutation.node.get()) || is_sheet(mutation.parent.get()) || is_sheet(mutation.node->parent()))
    everything_ = true;
  if (on_change_) on_change_();
}

void AccessibleTree::collect_left(AccessibleChanges& changes) {
  for (const Ref<Node>& top : std::exchange(removed_, {})) {
    if (dom::is_connected(*top)) continue;
    for (Node* node = top.get(); node; node = dom::next_in_order(*node, top.get())) {
      auto* element = dom::as<Element>(node);
      if (element && entries_.erase(element)) changes.left.emplace_back(element);
    }
  }
}

AccessibleChange AccessibleTree::difference(Entry& entry) {
  AccessibleChange change{entry.element};
  const std::u16string& now = entry.content->text();
  const std::u16string& before = entry.text;
  const std::size_t shorter = std::min(now.size(), before.size());
  std::size_t same = 0, same_end = 0;
  while (same < shorter && now[same] == before[same]) ++same;
  while (same_end < shorter - same && now[now.size() - 1 - same_end] == before[before.size() - 1 - same_end])
    ++same_end;
  change.at = same;
  change.removed = before.substr(same, before.size() - same - same_end);
  change.inserted = now.substr(same, now.size() - same - same_end);
  entry.text = now;

  const std::vector<Element*>& children = entry.content->children();
  if (!std::ranges::equal(children, entry.children, {}, {}, &Ref<Element>::get)) {
    const std::unordered_set<const Element*> are(children.begin(), children.end());
    std::unordered_set<const Element*> were;
    for (const Ref<Element>& child : entry.children) {
      were.insert(child.get());
      if (!are.contains(child.get())) change.gone.push_back(child);
    }
    for (Element* child : children)
      if (!were.contains(child)) change.come.emplace_back(child);
    entry.children.assign(children.begin(), children.end());
  }
  return change;
}

AccessibleChanges AccessibleTree::take_changes() {
  AccessibleChanges changes;
  collect_left(changes);
  soil_everything();
  for (const Ref<Element>& element : std::exchange(soiled_, {})) {
    const auto found = entries_.find(element.get());
    if (found == entries_.end()) continue;
    Entry& entry = found->second;
    entry.soiled = false;
    content(*element);
    AccessibleChange change = difference(entry);
    if (!change.removed.empty() || !change.inserted.empty() || !change.gone.empty() || !change.come.empty())
      changes.changes.push_back(std::move(change));
  }
  return changes;
}

}  // namespace tvx::editing
