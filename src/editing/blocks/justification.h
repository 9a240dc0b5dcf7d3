#pragma once

#include <string>
#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/dom/range.h"

/// Editing commands standard, section "Justifying the selection". An alignment is "center", "justify", "left"
/// or "right".
namespace tvx::editing {

class Editor;

void justify_selection(Editor& editor, std::u16string_view alignment);
/// The same for the lines of the selection alone: what stands beside them in their items stays as it is.
void justify_lines(Editor& editor, std::u16string_view alignment);
/// The alignment of the block that a node stands in.
std::u16string_view alignment_of(const dom::Node& node);

bool is_alignment_mixed(Editor& editor, std::u16string_view alignment);
bool is_aligned(Editor& editor, std::u16string_view alignment);
bool is_aligned(const dom::Range& range, std::u16string_view alignment);
bool are_lines_aligned(const dom::Range& range, std::u16string_view alignment);
/// Of the first line.
std::u16string alignment_of_selection(Editor& editor);

}  // namespace tvx::editing
