#pragma once

#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/dom/range.h"

/// The commands that insert at the selection; editing commands standard, sections "The insertHorizontalRule
/// command" to "The insertText command". Each answers whether its value was accepted.
namespace tvx::editing {

class Editor;

bool insert_paragraph(Editor& editor, std::u16string_view = {});
bool insert_line_break(Editor& editor, std::u16string_view = {});
bool insert_text(Editor& editor, std::u16string_view text);

/// DOM standard, section 5.5 "insert a node into a range": into the selection's start.
void insert_at_selection(Editor& editor, const dom::Ref<dom::Node>& node);
/// A caret at the edge of a text steps out of it, so that an insertion leaves no empty text.
void step_out_of_text_edge(Editor& editor);
/// Makes a link of the address that ends at a position (section "Automatic linking").
void autolink(Editor& editor, dom::Boundary end);

}  // namespace tvx::editing
