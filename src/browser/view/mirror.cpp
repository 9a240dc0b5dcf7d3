#include "tvx/browser/view/mirror.h"

#include <algorithm>
#include <utility>

#include "tvx/base/work_count.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

using dom::CharacterData;
using dom::Element;
using dom::Node;
using dom::Ref;
using Operation = PatchOperation;

// Edits are sent at once, whatever the load has used up; only what is larger than this waits for slices.
constexpr std::size_t edit_budget = 400;

std::size_t index(dom::NodeId id) { return static_cast<std::size_t>(id); }

bool holds_shown_children(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return !element || mirrors_children(*element);
}

}  // namespace

Mirror::Mirror(dom::Document& document) : document_(document) {
  document.add_observer(*this);
  reset();
}

Mirror::~Mirror() { document_->remove_observer(*this); }

void Mirror::reset() {
  // What was left out stays out: it would end the next view as well.
  for (Entry& one : entries_)
    one = Entry{nullptr, {}, static_cast<std::uint8_t>(one.flags & LeftOut), one.failures};
  fresh_.clear();
  carried_.clear();
  pending_forgets_.clear();
  dirty_texts_.clear();
  dirty_attributes_.clear();
  gaps_.clear();
  gaps_.push_back({document_.get(), nullptr, nullptr});
  entry(*document_).node = document_.get();
  entry(*document_).flags |= Incomplete;
}

bool Mirror::dirty() const { return !fresh_.empty() || !dirty_texts_.empty() || !dirty_attributes_.empty(); }

PatchNumber Mirror::last_change(dom::NodeId id) const {
  return index(id) < entries_.size() ? entries_[index(id)].changed : PatchNumber{};
}

Node* Mirror::node(dom::NodeId id) const {
  return index(id) < entries_.size() ? entries_[index(id)].node : nullptr;
}

Mirror::Entry& Mirror::entry(const Node& node) {
  const std::size_t at = index(node.id());
  if (at >= entries_.size()) entries_.resize(std::max(at + 1, entries_.size() * 3 / 2));
  return entries_[at];
}

bool Mirror::has(const Node& node, Flag flag) const {
  return index(node.id()) < entries_.size() && (entries_[index(node.id())].flags & flag);
}

/// Whether the view has the node at its position among its siblings.
bool Mirror::in_place(const Node& node) const { return knows(node) && !has(node, Touched); }

bool Mirror::is_shown(const Node& node) const {
  if (!is_mirrored(node)) return false;
  for (const Node* above = node.parent(); above; above = above->parent()) {
    if (above == document_.get()) return true;
    if (!holds_shown_children(*above) || has(*above, LeftOut)) return false;
  }
  return false;
}

// --- marking ---

void Mirror::mutated(const dom::Mutation& mutation) {
  switch (mutation.type) {
    case dom::Mutation::Type::Insert:
      if (knows(*mutation.parent) || knows(*mutation.node)) touch(*mutation.node);
      if (knows(*mutation.parent)) entry(*mutation.parent).changed = patch_;
      break;
    case dom::Mutation::Type::Remove:
      removals_ = true;
      if (knows(*mutation.parent) || knows(*mutation.node)) touch(*mutation.node);
      if (knows(*mutation.parent)) entry(*mutation.parent).changed = patch_;
      step_aside(mutation);
      break;
    case dom::Mutation::Type::ReplaceData:
      if (knows(*mutation.node)) note_data(mutation);
      break;
    case dom::Mutation::Type::SetAttribute:
      if (!knows(*mutation.node)) break;
      dirty_attributes_.push_back({static_cast<Element*>(mutation.node.get()), mutation.attribute});
      break;
  }
}

void Mirror::touch(Node& node) {
  Entry& marks = entry(node);
  if (marks.flags & Touched) return;
  marks.flags |= Touched;
  fresh_.push_back(node);
}

void Mirror::note_data(const dom::Mutation& mutation) {
  entry(*mutation.node).changed = patch_;
  auto* text = static_cast<CharacterData*>(mutation.node.get());
  const Offset now = text->length();
  const Offset suffix = now - mutation.offset - mutation.inserted.size();
  const Offset before = now - mutation.inserted.size() + mutation.removed.size();
  const auto [at, is_new] = dirty_texts_.try_emplace(text, DirtyText{text, mutation.offset, suffix, before});
  if (is_new) return;
  at->second.prefix = std::min(at->second.prefix, mutation.offset);
  at->second.suffix = std::min(at->second.suffix, suffix);
}

/// A child at the edge of a gap was taken away: the one before it or after it stands there now.
void Mirror::step_aside(const dom::Mutation& removal) {
  if (!has(*removal.parent, Incomplete)) return;
  for (Gap& gap : gaps_) {
    if (gap.element != removal.parent) continue;
    if (gap.last == removal.node)
      gap.last = removal.before ? removal.before->previous_sibling() : removal.parent->last_child();
    if (gap.end == removal.node) gap.end = removal.before;
  }
}

bool Mirror::failed(dom::NodeId id) {
  Node* failing = node(id);
  if (!failing || failing == document_.get()) return true;
  Entry& marks = entry(*failing);
  const bool again = ++marks.failures < 2;
  if (!again) marks.flags |= LeftOut;
  const Ref<Node> held(failing);
  forget(*failing);
  removals_ = true;  // what waits below it may be hidden now
  // The view is told to forget at the next flush, before the node is sent again.
  marks.node = failing;
  touch(*failing);
  marks.flags |= Detached;
  pending_forgets_.push_back(held);
  return again;
}

// --- the flush ---

std::vector<Operation> Mirror::flush(std::size_t budget, Node* wanted) {
  operations_.clear();
  detach_touched();
  for (const Ref<Node>& node : std::exchange(pending_forgets_, {})) {
    add(Operation::Type::Forget, *node);
    entry(*node).node = nullptr;
    entry(*node).flags &= ~Detached;
  }
  forget_hidden(fresh_);
  if (std::exchange(removals_, false)) forget_hidden(carried_);
  send_data();
  send_attributes();
  tidy_gaps();

  spent_ = 0;
  limit_ = std::max(budget, edit_budget);
  place_nodes(fresh_, gaps_.size());
  carried_.insert(carried_.end(), fresh_.begin(), fresh_.end());
  fresh_.clear();

  limit_ = budget;
  if (!spent()) place_nodes(carried_, gaps_.size());
  if (wanted && !spent()) lead_to(*wanted);
  fill_gaps(0);
  return std::exchange(operations_, {});
}

void Mirror::detach_touched() {
  for (const Ref<Node>& node : fresh_) {
    Entry& marks = entry(*node);
    if (!marks.node || (marks.flags & Detached)) continue;
    add(Operation::Type::Detach, *node);
    marks.flags |= Detached;
  }
}

/// Ends the marks of nodes that aren't in the shown tree any more, and reports those that the view knows to
/// it.
void Mirror::forget_hidden(std::vector<Ref<Node>>& nodes) {
  std::erase_if(nodes, [this](const Ref<Node>& node) {
    if (!has(*node, Touched)) return true;
    if (is_shown(*node)) return false;
    if (knows(*node)) {
      add(Operation::Type::Forget, *node);
      forget(*node);
    }
    entry(*node).flags &= ~(Touched | Detached);
    return true;
  });
}

/// The view has nothing below `root` any more, but for what was moved there in this turn: that stands
/// detached and has marks of its own.
void Mirror::forget(Node& root) {
  for (Node* node = &root; node;) {
    Entry& marks = entry(*node);
    if (node != &root && (marks.flags & Touched)) {
      node = dom::next_skipping_children(*node, &root);
      continue;
    }
    if (marks.flags & Incomplete) drop_gaps(*node);
    if (!dirty_texts_.empty()) dirty_texts_.erase(node);
    const bool was_known = marks.node != nullptr;
    marks.node = nullptr;
    marks.flags &= ~(Incomplete | Detached);
    node = was_known ? dom::next_in_order(*node, &root) : dom::next_skipping_children(*node, &root);
  }
}

void Mirror::send_data() {
  for (auto& [node, text] : dirty_texts_) {
    if (!knows(*node) || has(*node, LeftOut)) continue;
    const std::u16string& data = text.node->data();
    // Both ends may have been counted by different edits: they must not overlap in either text.
    const Offset shorter = std::min(data.size(), text.old_length);
    const Offset prefix = std::min(text.prefix, shorter);
    const Offset suffix = std::min(text.suffix, shorter - prefix);
    Operation& operation = add(Operation::Type::Data, *node);
    operation.offset = static_cast<std::uint32_t>(prefix);
    operation.length = static_cast<std::uint32_t>(text.old_length - prefix - suffix);
    operation.text = data.substr(prefix, data.size() - prefix - suffix);
  }
  dirty_texts_.clear();
}

void Mirror::send_attributes() {
  auto& dirty = dirty_attributes_;
  const auto key = [](const DirtyAttribute& one) { return std::pair(one.element->id(), one.name.key()); };
  std::sort(dirty.begin(), dirty.end(), [&](auto& a, auto& b) { return key(a) < key(b); });
  for (std::size_t i = 0; i < dirty.size();) {
    Element& element = *dirty[i].element;
    const bool all = attributes_depend_on_each_other(element);
    std::vector<std::u16string> names;
    for (; i < dirty.size() && dirty[i].element == &element; ++i) {
      const std::u16string& name = dirty[i].name.text();
      names.push_back(element.is_html() ? ascii_lower(name) : name);
    }
    if (all)
      names.insert(names.end(),
                   {u"style", u"href", u"imagesrcset", u"type", u"value", u"disabled", u"tvx-hidden"});
    if (knows(element) && !has(element, LeftOut)) send_attributes_of(element, std::move(names), all);
  }
  dirty.clear();
}

void Mirror::send_attributes_of(Element& element, std::vector<std::u16string> names, bool all) {
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  std::vector<bool> sent(names.size());
  for (Operation::Attribute& attribute : mirrored_attributes(element)) {
    const auto asked = std::lower_bound(names.begin(), names.end(), attribute.name);
    const bool is_asked = asked != names.end() && *asked == attribute.name;
    if (!is_asked && !all) continue;
    if (is_asked) sent[asked - names.begin()] = true;
    Operation& operation = add(Operation::Type::Attribute, element);
    operation.name = std::move(attribute.name);
    operation.attribute_namespace = attribute.name_space;
    operation.text = std::move(attribute.value);
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (!sent[i]) add(Operation::Type::NoAttribute, element).name = std::move(names[i]);
  }
}

/// Sends the positions of touched nodes, as far as the budget goes; what stays in `nodes` waits. New elements
/// are filled as they come: their gaps lie above the first `gaps`.
void Mirror::place_nodes(std::vector<Ref<Node>>& nodes, std::size_t gaps) {
  left_to_the_cursor_.clear();
  for (const Ref<Node>& node : nodes) {
    if (spent()) break;
    if (has(*node, Touched) && !left_to_the_cursor_.contains(node.get())) place_run(*node, gaps);
  }
  std::erase_if(nodes, [this](const Ref<Node>& node) { return !has(*node, Touched); });
}

/// Sends a node and the touched siblings after it, in their order, all before the first sibling that is in
/// its position.
void Mirror::place_run(Node& first, std::size_t gaps) {
  const Node& parent = *first.parent();
  const Node* end = first.next_sibling();
  while (end && (has(*end, Touched) || !is_mirrored(*end))) end = end->next_sibling();
  const bool parent_known = knows(parent);
  if (!parent_known || (end ? !knows(*end) : is_open_ended(parent))) {
    leave_to_the_cursor(first, end);
    return;
  }
  for (Node* node = &first; node != end && !spent(); node = node->next_sibling()) {
    if (!is_mirrored(*node)) continue;
    place(*node, end);
    // What is placed right after a gap is its end now.
    if (node == &first && end && has(parent, Incomplete))
      for (Gap& gap : gaps_)
        if (gap.end == end) gap.end = node;
    fill_gaps(gaps);
  }
}

/// These stand after the cursor: it will come to them. What the view knows already waits detached, and the
/// whole run is done with in this flush.
void Mirror::leave_to_the_cursor(Node& first, const Node* end) {
  for (Node* node = &first; node != end; node = node->next_sibling()) {
    count_work();
    if (knows(*node))
      left_to_the_cursor_.insert(node);
    else
      entry(*node).flags &= ~Touched;
  }
}

void Mirror::place(Node& node, const Node* before) {
  Entry& marks = entry(node);
  marks.flags &= ~(Touched | Detached);
  if (!marks.node) {
    make(node, before);
    return;
  }
  Operation& operation = add(Operation::Type::Place, node);
  operation.parent = parent_id(node);
  if (before) operation.before = before->id();
  ++spent_;
}

void Mirror::make(Node& node, const Node* before) {
  entry(node).node = &node;
  const auto* element = dom::as<Element>(&node);
  const bool left_out = has(node, LeftOut);
  // What the view can't make is a comment there: the siblings keep their positions.
  const auto type = left_out || (!element && !node.is_text()) ? Operation::Type::Comment
                    : element                                 ? Operation::Type::Element
                                                              : Operation::Type::Text;
  Operation& operation = add(type, node);
  operation.parent = parent_id(node);
  if (before) operation.before = before->id();
  ++spent_;
  if (left_out) return;
  if (!element) {
    operation.text = static_cast<CharacterData&>(node).data();
    spent_ += operation.text.size() / 64;
    return;
  }
  operation.name = mirrored_name(*element);
  operation.name_space = element->name_space();
  operation.attributes = mirrored_attributes(*element);
  if (!node.has_children() || !mirrors_children(*element)) return;
  entry(node).flags |= Incomplete;
  gaps_.push_back({node, nullptr, nullptr});
}

PatchOperation& Mirror::add(Operation::Type type, Node& node) {
  Operation& operation = operations_.emplace_back();
  operation.type = type;
  operation.node = node.id();
  return operation;
}

dom::NodeId Mirror::parent_id(const Node& node) const {
  return node.parent() == document_.get() ? dom::NodeId{} : node.parent()->id();
}

}  // namespace tvx::browser
