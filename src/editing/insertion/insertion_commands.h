#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/dom/range.h"

/// The commands that insert at the selection; editing commands standard, sections "The insertHorizontalRule
/// command" to "The insertText command". Each answers whether its value was accepted.
namespace tvx::editing {

class Editor;

bool insert_paragraph(Editor& editor, std::u16string_view = {});
/// As a writer's Enter: a heading in an item is parted together with it, as a paragraph in one is, and the
/// caret is in the line after it whatever else the item holds.
void insert_writers_paragraph(Editor& editor);
bool insert_line_break(Editor& editor, std::u16string_view = {});
/// As a command types it: an address before a blank becomes a link.
bool insert_text(Editor& editor, std::u16string_view text);
/// As a writer types it: an address stays the text that it is, and a blank is seen wherever it stands.
void insert_plain_text(Editor& editor, std::u16string_view text);

/// DOM standard, section 5.5 "insert a node into a range": into the selection's start.
void insert_at_selection(Editor& editor, const dom::Ref<dom::Node>& node);
/// A caret at the edge of a text steps out of it, so that an insertion leaves no empty text.
void step_out_of_text_edge(Editor& editor);
/// An address in a text that is no link, and where a link to it leads.
struct TypedAddress {
  dom::Text* text = nullptr;
  Offset start = 0, end = 0;
  std::u16string href;
};
/// The address that ends at a position (section "Automatic linking").
std::optional<TypedAddress> address_before(dom::Boundary end);
void make_link(Editor& editor, const TypedAddress& address);

}  // namespace tvx::editing
