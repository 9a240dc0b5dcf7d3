#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tvx/editing/editor.h"

/// How a button of a command stands, and what a list of values shows: what all that is selected has.
namespace tvx::editing {

/// Of selected cells each is asked by itself: what stands between them in the tree isn't selected.
bool state_as_writer(Editor& editor, std::u16string_view command);
/// The font, size or colour of all that is selected, as the command's value; "" where there are several.
std::u16string value_as_writer(Editor& editor, std::u16string_view command);
/// Whether a cell is what a command makes of it; nothing where there is nothing in it that could be.
std::optional<bool> state_of_cell(const dom::Ref<dom::Element>& cell, std::u16string_view command);

}  // namespace tvx::editing
