#include "tvx/dom/builder.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/allowed_ancestors.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/between_blocks.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/insertion/insertion_commands.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Name;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

const TagSet item_tags{Tag::Li, Tag::Dt, Tag::Dd};
const TagSet heading_tags{Tag::H1, Tag::H2, Tag::H3, Tag::H4, Tag::H5, Tag::H6};
const TagSet many_line_tags{Tag::Address, Tag::Listing, Tag::Pre};

/// Enter. The steps are those of the standard's "insertParagraph" command; the numbers name them.
class ParagraphInsertion {
 public:
  enum class For : std::uint8_t { Command, Writer };
  ParagraphInsertion(Editor& editor, For whom) : editor_(editor), for_writer_(whom == For::Writer) {}
  void run();

 private:
  void leave_text();
  void find_container();
  bool wrap_line();
  bool break_line();
  bool leave_list();
  void split_container();
  Name new_name(bool end_of_line) const;
  Boundary line_start() const;
  void move_line(Boundary from, Node& to);
  bool is_usable(const Node& container) const {
    return is_editable(container) && in_same_editing_host(container, *node_) &&
           is_single_line_container(container);
  }
  Name separator() const { return Name(std::u16string_view(editor_.paragraph_separator())); }

  Editor& editor_;
  const bool for_writer_;
  Node* node_ = nullptr;
  Ref<Node> container_;
};

// Steps 3 to 7: between nodes, splitting the text that the caret stands in.
void ParagraphInsertion::leave_text() {
  Boundary caret = editor_.selection().range().start;
  if (auto* text = dom::as<dom::Text>(caret.node)) {
    if (caret.offset != 0 && caret.offset != text->length()) dom::split_text(*text, caret.offset);
    if (caret.offset == text->length()) caret = dom::after(*text);
  }
  if (dom::as<dom::CharacterData>(caret.node)) caret = dom::before(*caret.node);
  editor_.selection().collapse(caret);
  node_ = caret.node;
}

// Steps 8 to 10.
void ParagraphInsertion::find_container() {
  container_ = node_;
  while (!is_single_line_container(*container_) && container_->parent() &&
         is_editable(*container_->parent()) && in_same_editing_host(*container_->parent(), *node_)) {
    container_ = container_->parent();
  }
  if (!is_usable(*container_)) return;
  // OURS: for a writer a heading in an item is its line, as a paragraph is.
  const bool is_line_of_item =
      container_->is(Tag::P) || container_->is(Tag::Div) || (for_writer_ && heading_tags.has(*container_));
  if (!is_line_of_item) return;
  Node* outer = container_.get();
  // OURS: not beyond a cell, which is a page of its own.
  while (!item_tags.has(*outer) && !outer->is(Tag::Td) && !outer->is(Tag::Th) && outer->parent() &&
         is_editable(*outer->parent()))
    outer = outer->parent();
  if (item_tags.has(*outer)) container_ = outer;
}

// OURS: an element of a line may hold blocks in pages of old, a FONT around a CENTER for instance. In a
// paragraph it would stand elsewhere when it is read again.
bool fits_in_line(const Node& node) { return is_allowed_child(node, Name(Tag::P)) && !is_block_piece(node); }

// Step 11: a line that stands in no container of its own gets one. False: all is done.
bool ParagraphInsertion::wrap_line() {
  const dom::Range line = block_extend(editor_.selection().range());
  NodeList nodes;
  walk_contained(line, [&](Node& node) {
    if (fits_in_line(node)) nodes.emplace_back(node);
    return nodes.empty() ? Visit::Children : Visit::Stop;
  });
  if (nodes.empty()) {
    if (!is_allowed_child_name(separator(), *editor_.selection().range().start.node)) return false;
    container_ = editor_.document().create_element(separator());
    insert_at_selection(editor_, container_);
    append_line_break(*container_);
    editor_.selection().collapse({container_.get(), 0});
    return false;
  }
  for (Node* next = nodes.back()->next_sibling(); next && fits_in_line(*next); next = next->next_sibling()) {
    nodes.emplace_back(next);
  }
  container_ = wrap(nodes, {}, [&] { return Ref<Node>(editor_.document().create_element(separator())); });
  if (!container_ || !container_->parent()) return false;
  // In a table, say, the line that gets the container need not be where the caret was.
  const Boundary caret = editor_.selection().range().start;
  if (!dom::is_inclusive_ancestor(*container_, *caret.node)) {
    const bool behind = dom::compare(caret, {container_.get(), 0}) > 0;
    editor_.selection().collapse({container_.get(), behind ? dom::length_of(*container_) : 0});
  }
  return true;
}

// Step 12: a container of many lines gets one line more.
bool ParagraphInsertion::break_line() {
  if (!many_line_tags.has(*container_)) return false;
  const Ref<Node> line_break(editor_.document().create_element(Tag::Br));
  insert_at_selection(editor_, line_break);
  editor_.selection().collapse(dom::after(*line_break));
  if (dom::last_within(*container_) == line_break.get()) {
    // One break at the end of a block shows nothing.
    insert_at_selection(editor_, editor_.document().create_element(Tag::Br));
    editor_.selection().collapse(dom::after(*line_break));
  }
  return true;
}

// Step 13: Enter in an empty item leaves the list.
bool ParagraphInsertion::leave_list() {
  const Node* only = container_->first_child();
  const bool empty = !only || (only == container_->last_child() && only->is(Tag::Br));
  if (!item_tags.has(*container_) || !empty) return false;
  split_parent({container_});
  if (!container_->has_children()) append_line_break(*container_);
  container_ = release_stray_term(container_, editor_);
  fix_disallowed_ancestors(container_, editor_);
  return true;
}

// Steps 14 to 16: where the new line begins, outside of anything that would be left empty on either side.
Boundary ParagraphInsertion::line_start() const {
  Gap gap = Gap::at(editor_.selection().range().start);
  while (gap.at_start() && !is_prohibited_paragraph_child(*gap.node)) gap = Gap::before(*gap.node);
  while (gap.at_end() && !is_prohibited_paragraph_child(*gap.node)) gap = Gap::after(*gap.node);
  return gap.boundary();
}

// Steps 18 to 21.
Name ParagraphInsertion::new_name(bool end_of_line) const {
  if (end_of_line && heading_tags.has(*container_)) return separator();
  if (end_of_line && container_->is(Tag::Dt)) return Name(Tag::Dd);
  if (end_of_line && container_->is(Tag::Dd)) return Name(Tag::Dt);
  return static_cast<const Element&>(*container_).name();
}

// Steps 26 to 29, DOM standard "extract": what lies between a position and the end of the container moves;
// elements that lie on both sides are copied, without their id.
void ParagraphInsertion::move_line(Boundary from, Node& to) {
  Ref<Node> copy;  // of the level below, with what has moved into it
  Ref<Node> level(from.node);
  Node* behind = dom::child_at(*from.node, from.offset);
  for (;;) {
    const bool top = level == container_;
    Ref<Node> target(to);
    if (!top) {
      target = dom::clone(*level, editor_.document(), dom::Deep::No);
      if (auto* element = dom::as<Element>(target)) dom::remove_attribute(*element, dom::names::id);
    }
    if (copy) dom::insert(*target, copy);
    while (behind) {
      Node* next = behind->next_sibling();
      dom::insert(*target, behind);
      behind = next;
    }
    if (top) return;
    copy = target;
    behind = level->next_sibling();
    level = level->parent();
  }
}

void copy_attributes(const Element& from, Element& to) {
  for (const dom::Attribute& attribute : from.attributes()) {
    if (attribute.name == dom::names::id) continue;
    dom::set_attribute(to, attribute.name, attribute.value, attribute.name_space);
  }
}

Ref<Node> last_paragraph_within(Ref<Node> node) {
  while (node->last_child() && is_prohibited_paragraph_child(*node->last_child())) node = node->last_child();
  return node;
}

// OURS: the new line is what the new container begins with. The standard takes what it ends with, which in an
// item may be another paragraph of it.
Ref<Node> first_paragraph_within(Ref<Node> node) {
  for (;;) {
    Node* first = passed_filling(node->first_child(), false);
    if (!first || is_list(*first) || !is_prohibited_paragraph_child(*first)) return node;
    node = first;
  }
}

// Steps 17 to 34.
void ParagraphInsertion::split_container() {
  const Boundary from = line_start();
  std::size_t contained = 0;
  bool only_break = false;
  walk_contained({from, {container_.get(), dom::length_of(*container_)}}, [&](Node& node) {
    only_break = node.is(Tag::Br);
    return ++contained > 1 ? Visit::Stop : Visit::Children;
  });
  const bool end_of_line = contained == 0 || (contained == 1 && only_break);
  const Ref<Element> created = editor_.document().create_element(new_name(end_of_line));
  copy_attributes(static_cast<const Element&>(*container_), *created);
  dom::insert(*container_->parent(), created, container_->next_sibling());
  move_line(from, *created);
  const Ref<Node> upper = last_paragraph_within(container_);
  const Ref<Node> lower = for_writer_ ? first_paragraph_within(created) : last_paragraph_within(created);
  if (!has_visible_child(*upper)) append_line_break(*upper);
  if (!has_visible_child(*lower)) append_line_break(*lower);
  editor_.selection().collapse({lower.get(), 0});
}

void ParagraphInsertion::run() {
  delete_selection(editor_);
  const Node* start = editor_.selection().range().start.node;
  if (!is_editable(*start) && !is_editing_host(*start)) return;
  // OURS: the standard leaves blanks at the edges of the two lines, where they collapse.
  canonicalize_for_break(editor_.selection().range().start);
  leave_text();
  find_container();
  if (!is_usable(*container_) && !wrap_line()) return;
  if (break_line() || leave_list()) return;
  split_container();
}

}  // namespace

bool insert_paragraph(Editor& editor, std::u16string_view) {
  ParagraphInsertion(editor, ParagraphInsertion::For::Command).run();
  return true;
}

void insert_writers_paragraph(Editor& editor) {
  ParagraphInsertion(editor, ParagraphInsertion::For::Writer).run();
}

}  // namespace tvx::editing
