#include "tvx/editing/layout/source_lines.h"

#include <algorithm>
#include <utility>

#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"

namespace tvx::editing {

using dom::Element;
using dom::Mutation;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// How far one looks for how others stand: a page that is laid out shows it nearby.
constexpr int reach = 16;
constexpr int reach_in_document = 5000;

Element* block_of(Node* node) {
  auto* element = dom::as<Element>(node);
  return element && element->is_html() && is_prohibited_paragraph_child_name(element->name()) ? element
                                                                                              : nullptr;
}

dom::Text* line_text(Node* node) {
  auto* text = dom::as<dom::Text>(node);
  return text && text->data().find(u'\n') != text->data().npos && is_filling(*text) ? text : nullptr;
}

/// The last line's end and what follows it.
std::u16string tail_of(const dom::Text& text) { return text.data().substr(text.data().rfind(u'\n')); }

/// The start of the line that a block stands on by itself; empty where it doesn't.
std::u16string start_of(const Element& block) {
  const dom::Text* text = line_text(block.previous_sibling());
  return text ? tail_of(*text) : std::u16string();
}

/// How the blocks beside a place stand.
std::u16string start_beside(Node* place, Node* (Node::*next)() const, const Node* except) {
  for (int i = 0; place && i < reach; ++i, place = (place->*next)())
    if (const Element* block = place == except ? nullptr : block_of(place))
      if (std::u16string start = start_of(*block); !start.empty()) return start;
  return {};
}

bool hides_lines(const Element& holder) {
  const auto mode = white_space_of(holder);
  return mode == dom::style::WhiteSpace::Normal || mode == dom::style::WhiteSpace::NoWrap;
}

/// What a line's start has more than that of the element around it.
std::u16string indentation(const std::u16string& start, const std::u16string& around) {
  return !around.empty() && start.starts_with(around) ? start.substr(around.size()) : std::u16string();
}

bool can_go(const Node& node) {
  const Node* host = editing_host_of(node);
  return node.parent() && host && host != &node && dom::is_connected(*host);
}

bool has_several_blocks(const Element& holder) {
  int blocks = 0;
  for (Node* child = holder.first_child(); child && blocks < 2; child = child->next_sibling())
    if (block_of(child)) ++blocks;
  return blocks > 1;
}

/// A list whose items have lines of their own, as a model for a new one.
const Element* list_with_lines(const Element& root, const Element& except) {
  int seen = 0;
  for (const Node* node = &root; node && ++seen < reach_in_document; node = dom::next_in_order(*node, &root))
    if (is_list(*node) && node != &except && node->first_child() && line_text(node->first_child()))
      return static_cast<const Element*>(node);
  return nullptr;
}

}  // namespace

SourceLines::SourceLines(Editor& editor) : editor_(editor) { editor.document().add_observer(*this); }
SourceLines::~SourceLines() { editor_.document().remove_observer(*this); }

void SourceLines::mutated(const Mutation& mutation) {
  if (laying_out_) return;
  if (mutation.type != Mutation::Type::Insert && mutation.type != Mutation::Type::Remove) return;
  auto* holder = dom::as<Element>(mutation.parent.get());
  Element* block = block_of(mutation.node.get());
  if (!holder || (!block && !line_text(mutation.node.get()))) return;
  note(*holder, mutation);
  held_.push_back(mutation.node);
  if (mutation.type == Mutation::Type::Remove) {
    origins_.try_emplace(mutation.node.get(), holder);
  } else if (block) {
    placed_.emplace_back(block);
    is_placed_.insert(block);
    Layout& layout = layouts_.at(holder);
    const auto origin = origins_.find(block);
    if (layout.is_new && !layout.from && origin != origins_.end()) layout.from = origin->second;
  } else {
    brought_.insert(mutation.node.get());
  }
}

/// The mutation is made already: what it has put there doesn't count.
void SourceLines::note(Element& holder, const Mutation& mutation) {
  const auto [found, is_first] = layouts_.try_emplace(&holder);
  if (!is_first) return;
  touched_.emplace_back(holder);
  Layout& layout = found->second;
  const bool is_insert = mutation.type == Mutation::Type::Insert;
  Node* const node = is_insert ? mutation.node.get() : nullptr;
  if (is_insert && holder.first_child() == node && holder.last_child() == node) {
    layout.is_new = true;
    return;
  }
  layout.own = line_of(holder);
  Node* const before = node              ? node->previous_sibling()
                       : mutation.before ? mutation.before->previous_sibling()
                                         : holder.last_child();
  if (is_insert) {
    note_present(layout, holder, node);
    // It may stand between a block and its line's start now.
    const dom::Text* text = line_text(before);
    if (text && block_of(mutation.before.get())) layout.start = tail_of(*text);
  } else {
    note_gone(layout, holder, mutation, before);
  }
  if (layout.start.empty()) layout.start = start_beside(before, &Node::previous_sibling, node);
  if (layout.start.empty()) layout.start = start_beside(mutation.before.get(), &Node::next_sibling, node);
}

void SourceLines::note_present(Layout& layout, const Element& holder, const Node* except) {
  Node* first = holder.first_child();
  if (first && first == except) first = first->next_sibling();
  Node* last = holder.last_child();
  if (last && last == except) last = last->previous_sibling();
  layout.opens = line_text(first) != nullptr;
  if (dom::Text* text = line_text(last); text && text != first) {
    layout.closing = Ref<Node>(text);
    layout.end = tail_of(*text);
  }
}

/// What has gone was a block, or white space that parted blocks.
void SourceLines::note_gone(Layout& layout, const Element& holder, const Mutation& mutation, Node* before) {
  note_present(layout, holder, nullptr);
  if (const dom::Text* gone = line_text(mutation.node.get())) {
    (mutation.before ? layout.start : layout.end) = tail_of(*gone);
    layout.opens = layout.opens || !before;
    return;
  }
  if (const dom::Text* text = line_text(before)) {
    layout.start = tail_of(*text);
    layout.opens = layout.opens || !before->previous_sibling();
  }
  if (mutation.before) return;
  // The text that is last now stood in front of the block.
  layout.closing = {};
  layout.end.clear();
}

/// The start of the line that a block stands on, by itself or as the first thing in what holds it.
std::u16string SourceLines::line_of(const Element& block) const {
  const Element* at = &block;
  for (int i = 0; at && i < reach; ++i, at = at->parent_element()) {
    Node* before = at->previous_sibling();
    while (before && is_placed_.contains(before)) before = before->previous_sibling();
    if (const dom::Text* text = line_text(before)) return tail_of(*text);
    while (before && !before->is_element() && is_filling(*before)) before = before->previous_sibling();
    if (before && block_of(before)) return {};
    if (before || at->is(Tag::Body)) continue;
    // A page's first block need not stand on a line of its own.
    const auto around = layouts_.find(at->parent());
    if (around != layouts_.end() && !around->second.start.empty()) return around->second.start;
  }
  return {};
}

/// Once each, and before what stands in them.
SourceLines::Elements SourceLines::placed() const {
  std::vector<std::pair<std::size_t, Ref<Element>>> deep;
  std::unordered_set<const Node*> known;
  for (const Ref<Element>& block : placed_)
    if (can_go(*block) && known.insert(block.get()).second) deep.emplace_back(0, block);
  if (deep.size() > 1)
    for (auto& [depth, block] : deep) depth = dom::depth_of(*block);
  std::ranges::stable_sort(deep, {}, [](const auto& each) { return each.first; });
  Elements blocks;
  for (const auto& [depth, block] : deep) blocks.push_back(block);
  return blocks;
}

void SourceLines::lay_out() {
  if (touched_.empty()) return;
  laying_out_ = true;
  for (const Ref<Element>& block : placed()) place(*block);
  for (std::size_t i = 0; i < touched_.size(); ++i) close(*touched_[i]);
  laying_out_ = false;
}

const SourceLines::Layout& SourceLines::layout_of(Element& holder) {
  Layout& layout = layouts_[&holder];
  if (layout.is_new) {
    layout.is_new = false;
    plan(holder, layout);
  }
  return layout;
}

/// A new list in a page with lines has its items on lines, as other lists have; other new elements have
/// lines where there are several blocks to part.
void SourceLines::plan(Element& holder, Layout& layout) {
  layout.own = line_of(holder);
  if (layout.own.empty()) return;
  const auto origin = layouts_.find(layout.from);
  if (origin != layouts_.end()) {
    const Layout& model = origin->second;
    if (model.start.empty() || (!is_list(holder) && !has_several_blocks(holder))) return;
    layout.start = layout.own + indentation(model.start, model.own);
    layout.opens = model.opens;
    if (!model.end.empty()) layout.end = layout.own;
    if (is_list(holder) && layout.from && is_list(*layout.from)) return;
  }
  if (!is_list(holder)) return;
  std::u16string deeper;
  layout.opens = true;
  layout.end = layout.own;
  if (const Element* model = list_with_lines(*editor_.document().body(), holder)) {
    if (const auto* item = dom::first_child_element(*model))
      deeper = indentation(start_of(*item), line_of(*model));
    if (!line_text(model->last_child())) layout.end.clear();
  } else if (const Element* around = holder.parent_element()) {
    deeper = indentation(layout.own, line_of(*around));
  }
  layout.start = layout.own + deeper;
}

void SourceLines::place(Element& block) {
  auto* holder = block.parent_element();
  if (!holder || !is_editable(block)) return;
  const Layout& layout = layout_of(*holder);
  if (layout.start.empty() || !hides_lines(*holder)) return;
  start_line(block, layout);
  end_line(block, layout);
}

void SourceLines::start_line(Element& block, const Layout& layout) {
  Node* before = block.previous_sibling();
  if (dom::Text* text = line_text(before)) {
    const bool is_brought = brought_.contains(text) || text == layout.closing.get();
    if (const std::u16string tail = tail_of(*text); is_brought && tail != layout.start)
      dom::replace_data(*text, text->length() - tail.size(), tail.size(), layout.start);
  } else if (before ? block_of(before) != nullptr : layout.opens) {
    dom::insert(*block.parent(), editor_.document().create_text(layout.start), &block);
  }
}

void SourceLines::end_line(Element& block, const Layout& layout) {
  Node* after = block.next_sibling();
  if (after && !block_of(after)) return;
  const std::u16string& line = after ? layout.start : layout.end;
  if (!line.empty()) dom::insert(*block.parent(), editor_.document().create_text(line), after);
}

/// The end tag stands as it did, or as that of the element that this one was made of.
void SourceLines::close(Element& holder) {
  if (!holder.last_child() || !can_go(*holder.last_child()) || !hides_lines(holder)) return;
  const Layout& layout = layout_of(holder);
  Node* last = holder.last_child();
  dom::Text* text = line_text(last);
  if (!layout.end.empty() && block_of(last)) {
    dom::insert(holder, editor_.document().create_text(layout.end));
  } else if (text && text != layout.closing.get() && block_of(text->previous_sibling())) {
    if (layout.end.empty() && layout.start.empty()) return;
    if (layout.end.empty()) return void(dom::remove(*text));
    if (const std::u16string tail = tail_of(*text); tail != layout.end)
      dom::replace_data(*text, text->length() - tail.size(), tail.size(), layout.end);
  }
}

}  // namespace tvx::editing
