#include "tvx/editing/insertion/insertion_commands.h"

#include <array>

#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/allowed_ancestors.h"
#include "tvx/editing/command_definition.h"
#include "tvx/editing/deletion/delete_command.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/gap.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/text_units.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Ref;
using dom::Tag;

void insert_at_selection(Editor& editor, const Ref<Node>& node) {
  leave_comments(editor);
  Selection& selection = editor.selection();
  const dom::Range range = selection.range();
  Boundary place = range.start;
  Node* before = nullptr;
  if (auto* text = dom::as<dom::Text>(place.node)) {
    before = place.offset == 0               ? text
             : place.offset < text->length() ? dom::split_text(*text, place.offset).get()
                                             : text->next_sibling();
    place.node = text->parent();
  } else {
    before = dom::child_at(*place.node, place.offset);
  }
  dom::insert(*place.node, node, before);
  if (range.collapsed()) {
    selection.set(selection.range().start,
                  before ? dom::before(*before) : Boundary{place.node, dom::length_of(*place.node)});
  }
}

void step_out_of_text_edge(Editor& editor) {
  const Boundary start = editor.selection().range().start;
  if (!start.node->is_text()) return;
  if (start.offset == 0) {
    editor.selection().collapse(dom::before(*start.node));
  } else if (start.offset == dom::length_of(*start.node)) {
    editor.selection().collapse(dom::after(*start.node));
  }
}

namespace {

bool is_in_editable_place(Editor& editor) {
  const Node& node = *editor.selection().range().start.node;
  return is_editable(node) || is_editing_host(node);
}

// Editing commands standard, section "The insertHorizontalRule command".
// OURS: the ends climb to the edge of the host and not out of it, where the caret would be lost.
bool insert_horizontal_rule(Editor& editor, std::u16string_view) {
  Gap start = Gap::at(editor.selection().range().start), end = Gap::at(editor.selection().range().end);
  Boundary from = editor.selection().range().start, to = editor.selection().range().end;
  if (from.offset == 0) {
    while (start.at_start() && is_editable(*start.node)) start = Gap::before(*start.node);
    from = start.boundary();
  }
  if (to.offset == dom::length_of(*to.node)) {
    while (end.at_end() && is_editable(*end.node)) end = Gap::after(*end.node);
    to = end.boundary();
  }
  editor.selection().set(from, to);
  delete_selection(editor, {.block_merging = false});
  if (!is_in_editable_place(editor)) return true;
  canonicalize_for_break(editor.selection().range().start);
  step_out_of_text_edge(editor);
  const Ref<Node> rule(editor.document().create_element(Tag::Hr));
  insert_at_selection(editor, rule);
  fix_disallowed_ancestors(rule, editor);
  editor.selection().collapse(dom::after(*rule));
  return true;
}

// The empty line after the caret, which what is inserted makes needless.
// OURS: the standard removes all there are in the block; after something seen they are lines of their own.
void remove_block_props_behind(Boundary place) {
  for (Node* child = dom::child_at(*place.node, place.offset); child;) {
    Node* next = child->next_sibling();
    const bool is_prop = is_collapsed_block_prop(*child);
    if (!is_prop && is_visible(*child)) return;
    if (is_prop && is_editable(*child)) dom::remove(*child);
    child = next;
  }
}

Ref<dom::DocumentFragment> parse_at(Boundary place, std::u16string_view html, dom::Document& document) {
  const auto* context = dom::as<dom::Element>(place.node);
  if (!context) context = place.node->parent_element();
  const bool usable = context && !context->is(Tag::Html);
  return dom::parse_fragment(document, usable ? dom::context_of(*context) : dom::FragmentContext(), html);
}

// Editing commands standard, section "The insertHTML command".
bool insert_html(Editor& editor, std::u16string_view html) {
  delete_selection(editor);
  if (!is_in_editable_place(editor)) return true;
  const Boundary start = editor.selection().range().start;
  const Ref<Node> fragment(parse_at(start, html, editor.document()));
  const Ref<Node> last(fragment->last_child());
  if (!last) return true;
  NodeList descendants;
  for (Node* node = fragment->first_child(); node; node = dom::next_in_order(*node, fragment.get())) {
    descendants.emplace_back(node);
  }
  const bool in_block = is_block_node(*start.node);
  if (in_block) remove_block_props_behind(start);
  insert_at_selection(editor, fragment);
  if (in_block && !has_visible_child(*start.node)) append_line_break(*start.node);
  editor.selection().collapse(dom::after(*last));
  for (const Ref<Node>& node : descendants) fix_disallowed_ancestors(node, editor);
  return true;
}

// Editing commands standard, section "The insertImage command".
bool insert_image(Editor& editor, std::u16string_view address) {
  if (address.empty()) return false;
  delete_selection(editor, {.strip_wrappers = false});
  if (!is_in_editable_place(editor)) return true;
  const Boundary start = editor.selection().range().start;
  Node* only = start.node->first_child();
  if (start.offset == 0 && only && only == start.node->last_child() && only->is(Tag::Br) &&
      is_block_node(*start.node)) {
    dom::remove(*only);
  }
  const Ref<dom::Element> image = editor.document().create_element(Tag::Img);
  dom::set_attribute(*image, dom::names::src, address);
  insert_at_selection(editor, image);
  editor.selection().collapse(dom::after(*image));
  return true;
}

bool delete_command(Editor& editor, std::u16string_view) {
  return delete_backward_by(editor, &previous_code_point);
}

bool forward_delete_command(Editor& editor, std::u16string_view) {
  return delete_forward_by(editor, &next_grapheme);
}

}  // namespace

// Editing commands standard, section "The insertLineBreak command".
bool insert_line_break(Editor& editor, std::u16string_view) {
  delete_selection(editor, {.strip_wrappers = false});
  if (!is_in_editable_place(editor)) return true;
  const Node* start = editor.selection().range().start.node;
  if (!is_allowed_child_name(dom::Name(Tag::Br), start->is_element() ? *start : *start->parent()))
    return true;
  canonicalize_for_break(editor.selection().range().start);  // OURS, as for a paragraph
  step_out_of_text_edge(editor);
  const Ref<Node> line_break(editor.document().create_element(Tag::Br));
  insert_at_selection(editor, line_break);
  editor.selection().collapse(dom::after(*line_break));
  if (is_collapsed_line_break(*line_break)) {
    insert_at_selection(editor, editor.document().create_element(Tag::Br));
    editor.selection().collapse(dom::after(*line_break));
  }
  return true;
}

std::span<const CommandDefinition> insertion_commands() {
  static const std::array rows{
      CommandDefinition{.name = u"delete",
                        .label = u"Delete",
                        .action = delete_command,
                        .keeps_overrides = true,
                        .in_plain_text = true},
      CommandDefinition{.name = u"forwardDelete",
                        .label = u"Delete",
                        .action = forward_delete_command,
                        .keeps_overrides = true,
                        .in_plain_text = true},
      CommandDefinition{.name = u"insertHorizontalRule",
                        .label = u"Horizontal rule",
                        .action = insert_horizontal_rule,
                        .keeps_overrides = true},
      CommandDefinition{.name = u"insertHTML",
                        .label = u"Insert",
                        .action = insert_html,
                        .keeps_overrides = true,
                        .in_plain_text = true},
      CommandDefinition{
          .name = u"insertImage", .label = u"Image", .action = insert_image, .keeps_overrides = true},
      CommandDefinition{.name = u"insertLineBreak",
                        .label = u"Line break",
                        .action = insert_line_break,
                        .keeps_overrides = true,
                        .in_plain_text = true},
      CommandDefinition{.name = u"insertParagraph",
                        .label = u"Paragraph",
                        .action = insert_paragraph,
                        .keeps_overrides = true,
                        .in_plain_text = true},
      CommandDefinition{
          .name = u"insertText", .label = u"Typing", .action = insert_text, .in_plain_text = true},
  };
  return rows;
}

}  // namespace tvx::editing
