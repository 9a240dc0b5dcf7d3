#pragma once

#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/dom/range.h"

/// The commands that delete and insert at the selection; editing commands standard, sections "The delete
/// command" to "The insertText command". Each answers whether its value was accepted.
namespace tvx::editing {

class Editor;

/// Where the text unit begins or ends that one deletion takes away.
using UnitEdge = Offset (*)(std::u16string_view text, Offset from);

bool delete_backward_by(Editor& editor, UnitEdge unit_start);
bool delete_forward_by(Editor& editor, UnitEdge unit_end);
bool insert_paragraph(Editor& editor, std::u16string_view = {});
bool insert_line_break(Editor& editor, std::u16string_view = {});
bool insert_text(Editor& editor, std::u16string_view text);

/// DOM standard, section 5.5 "insert a node into a range": into the selection's start.
void insert_at_selection(Editor& editor, const dom::Ref<dom::Node>& node);
/// A caret at the edge of a text steps out of it, so that an insertion leaves no empty text behind.
void step_out_of_text_edge(Editor& editor);
/// Turns a `dd` or `dt` that has no list around it any more into a paragraph. Gives the element.
dom::Ref<dom::Node> release_stray_term(const dom::Ref<dom::Node>& node, Editor& editor);
/// Makes a link of the address that ends at a place (section "Automatic linking").
void autolink(Editor& editor, dom::Boundary end);
/// All items around a node, the innermost first; `node` itself too.
std::vector<dom::Ref<dom::Node>> items_around(dom::Node* node);

}  // namespace tvx::editing
