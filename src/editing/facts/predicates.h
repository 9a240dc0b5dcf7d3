#pragma once

#include "tvx/dom/node.h"
#include "tvx/dom/range.h"

/// What a node is to the editing commands. The names are those of the editing commands standard, sections
/// "Common definitions", "Inline formatting command definitions" and "Block formatting command definitions".
namespace tvx::editing {

bool is_editing_host(const dom::Node& node);
bool is_editable(const dom::Node& node);
/// The host that an editable node belongs to, the node itself if it is one; null elsewhere.
dom::Node* editing_host_of(const dom::Node& node);
/// The host that what can be edited among a node's children belongs to; null elsewhere.
dom::Node* editing_host_of_children(const dom::Node& parent);
/// A host whose `contenteditable` is "plaintext-only": commands that format are not enabled there.
bool is_plain_text_host(const dom::Node& node);
bool in_same_editing_host(const dom::Node& a, const dom::Node& b);
/// The host of a node's children, given that of its siblings: one step of the climb.
dom::Node* editing_host_within(const dom::Node& node, dom::Node* host_around);
/// The document is edited as a whole (set by Editor; kept beside the document).
void set_whole_document_editable(dom::Document& document, bool editable);

bool is_block_node(const dom::Node& node);
bool is_inline_node(const dom::Node& node);
bool is_block_start_point(const dom::Boundary& boundary);
bool is_block_end_point(const dom::Boundary& boundary);
bool is_block_boundary_point(const dom::Boundary& boundary);
bool is_visible(const dom::Node& node);
bool is_invisible(const dom::Node& node);
/// The same for a node whose ancestors are known to be rendered: spares the climb.
bool is_visible_where_rendered(const dom::Node& node);
bool is_collapsed_block_prop(const dom::Node& node);
bool is_collapsed_line_break(const dom::Node& node);
bool is_extraneous_line_break(const dom::Node& node);
bool is_whitespace_node(const dom::Node& node);
bool is_collapsed_whitespace_node(const dom::Node& node);

bool is_formattable(const dom::Node& node);
bool is_modifiable_element(const dom::Node& node);
bool is_simple_modifiable_element(const dom::Node& node);
bool is_non_list_single_line_container(const dom::Node& node);
bool is_single_line_container(const dom::Node& node);
bool is_prohibited_paragraph_child(const dom::Node& node);
bool is_prohibited_paragraph_child_name(dom::Name name);
// The standard's "allowed child" takes nodes and names of HTML elements on either side.
bool is_allowed_child(const dom::Node& child, const dom::Node& parent);
bool is_allowed_child(const dom::Node& child, dom::Name parent);
bool is_allowed_child_name(dom::Name child, const dom::Node& parent);
bool is_allowed_child_name(dom::Name child, dom::Name parent);
/// Whether an element, however deep below, can stand under `ancestor`: written out and read again it would
/// else stand elsewhere.
bool may_stand_below(const dom::Node& node, const dom::Node& ancestor);
bool is_heading(const dom::Node& node);
/// `ol` or `ul`, as the standard has it.
bool is_list(const dom::Node& node);
/// `ol`, `ul`, or one of the old lists `dir` and `menu`, which pages have and commands don't make.
bool is_list_of_any_kind(const dom::Node& node);
/// A list of any kind, of descriptions too.
bool holds_items(const dom::Node& node);
/// `li`, `dt` or `dd`.
bool is_item(const dom::Node& node);
/// What a table is made of, without the table itself and its caption.
bool is_table_part(const dom::Node& node);
bool is_element_with_inline_contents(const dom::Node& node);
bool is_name_of_formattable_block(dom::Name name);

}  // namespace tvx::editing
