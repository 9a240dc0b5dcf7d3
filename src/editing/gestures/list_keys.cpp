#include "tvx/editing/gestures/list_keys.h"

#include "tvx/dom/builder.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/between_blocks.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

bool is_editable_item(const Node& node) {
  return node.is(Tag::Li) && is_editable(node) && node.parent() && is_list(*node.parent()) &&
         is_editable(*node.parent());
}

/// The innermost item around a node, not beyond a cell.
Element* item_around(Node* node) {
  for (; node && !is_editing_host(*node); node = node->parent()) {
    if (node->is(Tag::Td) || node->is(Tag::Th)) return nullptr;
    if (is_editable_item(*node)) return static_cast<Element*>(node);
  }
  return nullptr;
}

Element* outermost_list(Node* node) {
  Element* outermost = nullptr;
  for (; node && !is_editing_host(*node); node = node->parent()) {
    if (node->is(Tag::Td) || node->is(Tag::Th)) break;
    if (is_list(*node) && is_editable(*node)) outermost = static_cast<Element*>(node);
  }
  return outermost;
}

Element* item_beside(const Node& item, bool before) {
  Node* beside = before ? item.previous_sibling() : item.next_sibling();
  while (beside && is_filling(*beside)) beside = before ? beside->previous_sibling() : beside->next_sibling();
  return beside && beside->is(Tag::Li) ? static_cast<Element*>(beside) : nullptr;
}

Node* last_child_that_counts(const Node& node) {
  Node* child = node.last_child();
  while (child && is_filling(*child)) child = child->previous_sibling();
  return child;
}

/// The list at the end of an item, of that kind; made if there is none.
Ref<Element> list_at_end(Element& item, const Element& like) {
  Node* last = last_child_that_counts(item);
  if (last && is_list(*last) && static_cast<Element*>(last)->name() == like.name())
    return Ref<Element>(static_cast<Element*>(last));
  Ref<Element> list = item.document()->create_element(like.name());
  dom::insert(item, list);
  return list;
}

/// The selected items of one list, in order: those of the innermost list that holds all of the selection.
NodeList selected_items(Editor& editor) {
  NodeList items;
  const dom::Range range = editor.selection().range();
  if (!range.start) return items;
  Element* first = item_around(range.start.node);
  Element* last = item_around(range.end.node);
  if (!first || !last) return items;
  // A selection that ends where an item starts doesn't take it along.
  const Node* list = dom::common_ancestor(*first, *last);
  if (first == last) list = first->parent();
  while (list && !(is_list(*list) && is_editable(*list))) list = list->parent();
  if (!list) return items;
  const auto towards = [&](Node* node) {
    while (node && node->parent() != list) node = node->parent();
    return node;
  };
  Node* from = towards(first);
  Node* to = towards(last);
  for (Node* node = from; node; node = node->next_sibling()) {
    if (node->is(Tag::Li)) items.emplace_back(node);
    if (node == to) break;
  }
  return items;
}

bool is_blank(const Node& node) { return node.is_text() && is_filling(node); }

/// The items after `item` in its list.
NodeList items_after(const Node& item) {
  NodeList after;
  for (Node* node = item.next_sibling(); node; node = node->next_sibling()) after.emplace_back(node);
  while (!after.empty() && is_filling(*after.back())) after.pop_back();
  return after;
}

/// Out of a list in an item, into the list around that.
void move_out(const NodeList& items) {
  const Ref<Node> list(items.front()->parent());
  const Ref<Node> holder(list->parent());
  const Ref<Node> outer(holder->parent());
  const NodeList after = items_after(*items.back());
  if (!after.empty()) {
    auto& last = static_cast<Element&>(*items.back());
    move_run_preserving_ranges(after, *list_at_end(last, static_cast<Element&>(*list)), nullptr);
  }
  // What stands after the list in its item is said after these items now.
  NodeList rest;
  for (Node* node = list->next_sibling(); node; node = node->next_sibling()) rest.emplace_back(node);
  while (!rest.empty() && is_filling(*rest.back())) rest.pop_back();
  move_run_preserving_ranges(items, *outer, holder->next_sibling());
  if (!rest.empty() && has_visible_child(*list)) move_run_preserving_ranges(rest, *items.back(), nullptr);
  remove_if_without_items(*list);
  if (!has_visible_child(*holder)) append_line_break(*holder);
}

int start_of(const Element& list) {
  const auto start = parse_integer(list.attribute_or_empty(dom::names::start));
  return start && *start > -100000 && *start < 100000 ? int(*start) : 1;
}

/// A list with what comes after the item, as a copy of its list; nothing if nothing does.
Ref<Element> list_of_rest(Element& item) {
  const NodeList after = items_after(item);
  if (after.empty()) return {};
  auto& list = static_cast<Element&>(*item.parent());
  const Ref<Element> rest = list.document()->create_element(list.name());
  for (const dom::Attribute& attribute : list.attributes())
    if (attribute.name != dom::names::id && attribute.name != dom::names::start)
      dom::set_attribute(*rest, attribute.name, attribute.value);
  if (list.is(Tag::Ol)) {
    int number = start_of(list);
    for (const Node* before = item.previous_sibling(); before; before = before->previous_sibling())
      if (before->is(Tag::Li)) ++number;
    if (number != 1) dom::set_attribute(*rest, dom::names::start, to_text(number));
  }
  dom::insert(*list.parent(), rest, list.next_sibling());
  move_run_preserving_ranges(after, *rest, nullptr);
  return rest;
}

Ref<Element> paragraph_like(Editor& editor, const Element& item) {
  const dom::Name name{std::u16string_view(editor.paragraph_separator())};
  const Ref<Element> paragraph = editor.document().create_element(name);
  for (const dom::Name kept : {dom::names::align, dom::names::dir, dom::names::style})
    if (const std::u16string* value = item.attribute(kept)) dom::set_attribute(*paragraph, kept, *value);
  dom::style::remove_inline_value(*paragraph, u"display");  // of an item in a menu
  return paragraph;
}

/// The only item of a cell that holds nothing else: its line is the cell's.
bool make_line_of_cell(Element& item) {
  const Ref<Element> list(static_cast<Element&>(*item.parent()));
  const Ref<Node> cell(list->parent());
  if (!(cell->is(Tag::Td) || cell->is(Tag::Th))) return false;
  for (const Node* beside : {static_cast<const Node*>(&item), static_cast<const Node*>(list.get())})
    for (const Node* child = beside->parent()->first_child(); child; child = child->next_sibling())
      if (child != beside && !is_filling(*child)) return false;
  for (const Node* child = item.first_child(); child; child = child->next_sibling())
    if (is_block_piece(*child)) return false;
  const Ref<Element> held(item);
  move_run_preserving_ranges(children_of(item), *cell, list.get());
  dom::remove(*held);
  remove_if_without_items(*list);
  if (!has_visible_child(*cell)) append_line_break(*cell);
  return true;
}

/// The item's lines as paragraphs in the place of the item, its lists as lists.
void make_paragraphs(Editor& editor, Element& item) {
  if (item.has_children() && make_line_of_cell(item)) return;
  const Ref<Element> held(item);
  const Ref<Element> list(static_cast<Element&>(*item.parent()));
  const Ref<Element> rest = list_of_rest(item);
  const Ref<Node> holder(list->parent());
  Node* before = list->next_sibling();
  NodeList line;
  const auto end_line = [&] {
    if (!line.empty()) {
      const Ref<Element> paragraph = paragraph_like(editor, item);
      dom::insert(*holder, paragraph, before);
      move_run_preserving_ranges(line, *paragraph, nullptr);
      // A caret in the white space at the item's end has come along.
      while (paragraph->last_child() && is_blank(*paragraph->last_child()))
        dom::remove(*paragraph->last_child());
      if (!has_visible_child(*paragraph)) append_line_break(*paragraph);
    }
    line.clear();
  };
  bool any = false;
  for (const Ref<Node>& child : children_of(item)) {
    if (!is_block_piece(*child)) {
      if (line.empty() && is_blank(*child)) continue;
      line.push_back(child);
      any = true;
      continue;
    }
    end_line();
    move_preserving_ranges(child, *holder, before);
    any = true;
  }
  end_line();
  if (!any) {
    const Ref<Element> paragraph = paragraph_like(editor, item);
    dom::insert(*holder, paragraph, before);
    append_line_break(*paragraph);
    editor.selection().collapse({paragraph.get(), 0});
  }
  dom::remove(*held);
  // The item's own list goes on with the items that came after it.
  Node* own = rest ? rest->previous_sibling() : nullptr;
  if (own && own != list.get() && is_list(*own) && static_cast<Element*>(own)->name() == rest->name()) {
    move_run_preserving_ranges(children_of(*rest), *own, nullptr);
    dom::remove(*rest);
  }
  remove_if_without_items(*list);
}

bool leave_item(Editor& editor, Element& item) {
  put_lists_into_items(item);
  const Node* holder = item.parent()->parent();
  if (holder && is_editable_item(*holder))
    move_out({Ref<Node>(item)});
  else if (holder && is_editable(*item.parent()) && (is_editable(*holder) || is_editing_host(*holder)))
    make_paragraphs(editor, item);
  else
    return false;
  return true;
}

bool is_at_start_of(const Boundary& caret, const Element& item) {
  for (const Node* node = caret.node; node != &item; node = node->parent())
    if (!node || is_list(*node) || node->is(Tag::Table)) return false;
  const Content before = content_beside(caret, Direction::Backward);
  if (before.kind != ContentKind::LeaveBlock) return false;
  // The first line of the item, whether a paragraph of its own holds it or not.
  const Node* line = before.node;
  while (line != &item) {
    const Node* sibling = line->previous_sibling();
    while (sibling && is_filling(*sibling)) sibling = sibling->previous_sibling();
    if (sibling || !line->parent()) return false;
    line = line->parent();
  }
  return true;
}

bool is_empty_item(const Element& item) {
  for (const Node* child = item.first_child(); child; child = child->next_sibling()) {
    if (is_filling(*child) || child->is(Tag::Br) || is_list(*child)) continue;
    if (is_text_block(*child) && is_empty_line(*child) && !child->next_sibling()) continue;
    if (is_visible(*child)) return false;
  }
  return true;
}

}  // namespace

void remove_if_without_items(Node& list) {
  for (const Node* child = list.first_child(); child; child = child->next_sibling())
    if (!is_filling(*child)) return;
  const Ref<Node> holder(list.parent());
  if (!holder) return;
  remove_keeping_comments(list);
  if (is_text_block(*holder) && is_editable(*holder) && !has_visible_child(*holder))
    append_line_break(*holder);
}

void put_list_into_item(Node& list) {
  const Ref<Node> held(list), outer(list.parent());
  if (Element* item = item_beside(list, true)) return move_preserving_ranges(held, *item, nullptr);
  // Before the first item there is none that it could belong to: its items are one level further out.
  if (static_cast<Element&>(list).name() == static_cast<Element&>(*outer).name())
    return remove_preserving_descendants(held);
  if (!is_allowed_child(list, *outer->parent())) return;
  move_preserving_ranges(held, *outer->parent(), outer.get());
  remove_if_without_items(*outer);
}

void put_lists_into_items(Node& node) {
  Element* outermost = outermost_list(&node);
  if (!outermost) return;
  NodeList lists;
  for (Node* inner = outermost; inner; inner = dom::next_in_order(*inner, outermost))
    if (is_list(*inner) && inner != outermost && inner->parent() && is_list(*inner->parent()))
      lists.emplace_back(inner);
  for (const Ref<Node>& list : lists) put_list_into_item(*list);
}

bool indent_items(Editor& editor) {
  Element* item = item_around(editor.selection().range().start.node);
  if (!item) return false;
  put_lists_into_items(*item);
  const NodeList items = selected_items(editor);
  if (items.empty()) return false;
  Element* before = item_beside(*items.front(), true);
  if (!before) return true;
  const auto& list = static_cast<const Element&>(*items.front()->parent());
  move_run_preserving_ranges(items, *list_at_end(*before, list), nullptr);
  return true;
}

bool outdent_items(Editor& editor) {
  Element* item = item_around(editor.selection().range().start.node);
  if (!item) return false;
  put_lists_into_items(*item);
  const NodeList items = selected_items(editor);
  if (items.empty()) return false;
  const Node* holder = items.front()->parent()->parent();
  if (holder && is_editable_item(*holder)) move_out(items);
  return true;
}

bool is_in_list(Editor& editor) { return item_around(editor.selection().range().start.node) != nullptr; }

bool is_in_nested_list(Editor& editor) {
  const Element* item = item_around(editor.selection().range().start.node);
  return item && item->parent()->parent() && is_editable_item(*item->parent()->parent());
}

bool leave_item_at_start(Editor& editor) {
  if (!editor.selection().collapsed()) return false;
  const Boundary caret = editor.selection().focus();
  Element* item = item_around(caret.node);
  return item && is_at_start_of(caret, *item) && leave_item(editor, *item);
}

namespace {

/// The lines of a paragraph as paragraphs of their own, where breaks part them.
void part_at_breaks(Editor& editor, Element& block) {
  NodeList breaks;
  for (Node* child = block.first_child(); child; child = child->next_sibling())
    if (child->is(Tag::Br)) breaks.emplace_back(child);
  for (std::size_t i = breaks.size(); i-- > 0;) {
    const Ref<Node> line_break = breaks[i];
    NodeList rest;
    for (Node* node = line_break->next_sibling(); node; node = node->next_sibling()) rest.emplace_back(node);
    if (rest.empty()) continue;
    const Ref<Element> line = paragraph_like(editor, block);
    dom::insert(*block.parent(), line, block.next_sibling());
    move_run_preserving_ranges(rest, *line, nullptr);
    if (line_break->previous_sibling()) dom::remove(*line_break);
  }
}

/// Paragraphs that are selected, and white space between them.
void prepare_for_list(Editor& editor) {
  const dom::Range range = editor.selection().range();
  NodeList blocks, filling;
  const auto note = [&](Node& node) {
    if ((node.is(Tag::P) || node.is(Tag::Div)) && is_text_block(node) && is_editable(node) &&
        !dom::enclosing(node, Tag::Li))
      blocks.emplace_back(node);
  };
  if (Element* block = block_around(range.start)) note(*block);
  walk_contained(range, [&](Node& node) {
    if (node.is_text() && is_filling(node) && node.previous_sibling() &&
        is_block_piece(*node.previous_sibling()))
      filling.emplace_back(node);
    note(node);
    return Visit::Children;
  });
  if (Element* block = block_around(range.end); block && !range.collapsed()) note(*block);
  for (const Ref<Node>& text : filling) dom::remove(*text);
  for (const Ref<Node>& block : blocks)
    if (block->parent()) part_at_breaks(editor, static_cast<Element&>(*block));
}

/// The items that are selected in part or as a whole, those in lists of theirs too.
NodeList touched_items(Editor& editor) {
  NodeList items;
  const dom::Range range = editor.selection().range();
  Element* first = item_around(range.start.node);
  Element* last = item_around(range.end.node);
  for (Node* node = first; node; node = dom::next_in_order(*node, nullptr)) {
    if (is_editable_item(*node)) items.emplace_back(node);
    if (node == last || !last) break;
  }
  return items;
}

}  // namespace

void leave_lists(Editor& editor) {
  if (Element* item = item_around(editor.selection().range().start.node)) put_lists_into_items(*item);
  for (const Ref<Node>& item : touched_items(editor))
    while (item->parent() && is_editable_item(*item))
      if (!leave_item(editor, static_cast<Element&>(*item))) break;
}

bool toggle_list_as_writer(Editor& editor, std::u16string_view command) {
  const Tag wanted = equals_ignoring_ascii_case(command, u"insertorderedlist") ? Tag::Ol : Tag::Ul;
  const dom::Range range = editor.selection().range();
  if (!range.start || editor.selection().type() != SelectionType::Text) return false;
  Element* item = item_around(range.start.node);
  if (item && dom::is_inclusive_ancestor(*item->parent(), *range.end.node)) {
    auto& list = static_cast<Element&>(*item->parent());
    if (list.is(wanted)) {
      leave_lists(editor);
      return true;
    }
    const Ref<Element> changed = set_tag_name(list, dom::Name(wanted));
    for (const dom::Name own : {dom::names::start, dom::names::type}) dom::remove_attribute(*changed, own);
    return true;
  }
  if (!item) prepare_for_list(editor);
  return false;
}

bool leave_empty_item(Editor& editor) {
  if (!editor.selection().collapsed()) return false;
  Element* item = item_around(editor.selection().focus().node);
  if (!item || !is_empty_item(*item)) return false;
  // The caret is in the item's own line, not in a list of it: that has items of its own.
  return leave_item(editor, *item);
}

namespace {

/// The description list that a part stands in, if it can be edited.
Node* description_list_of(const Element& part) {
  Node* list = part.parent();
  if (!list || !list->is(Tag::Dl) || !is_editable(*list) || !list->parent()) return nullptr;
  return is_editable(*list->parent()) || is_editing_host(*list->parent()) ? list : nullptr;
}

/// The part leaves with the white space that puts it on a line of its own in the source.
void remove_part(Element& part, bool at_end) {
  Node* beside = at_end ? part.previous_sibling() : part.next_sibling();
  if (beside && beside->is_text() && is_filling(*beside)) dom::remove(*beside);
  dom::remove(part);
}

}  // namespace

bool leave_empty_description(Editor& editor) {
  if (!editor.selection().collapsed()) return false;
  const Ref<Element> part(block_around(editor.selection().focus()));
  if (!part || !(part->is(Tag::Dd) || part->is(Tag::Dt))) return false;
  if (!is_editable(*part) || !is_empty_line(*part)) return false;
  const Ref<Node> list(description_list_of(*part));
  const bool at_end = !passed_filling(part->next_sibling(), false);
  if (!list || (!at_end && passed_filling(part->previous_sibling(), true))) return false;
  const Ref<Element> paragraph =
      editor.document().create_element(dom::Name{std::u16string_view(editor.paragraph_separator())});
  dom::insert(*list->parent(), paragraph, at_end ? list->next_sibling() : list.get());
  append_line_break(*paragraph);
  editor.selection().collapse({paragraph.get(), 0});
  remove_part(*part, at_end);
  remove_if_without_items(*list);
  return true;
}

}  // namespace tvx::editing
