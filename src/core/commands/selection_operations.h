#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tvx::editing {
class Editor;
}

/// What a host does with the selection: read it, insert at it, wrap it, set it by counting characters.
/// Where an element is selected as a whole there is no text to work on: RuntimeError(438), if not told
/// otherwise.
namespace tvx::core {

enum class InsertPlace : std::uint8_t { InsteadOfSelection, BeforeSelection, AfterSelection };

/// False, and nothing done: an element is selected as a whole.
bool insert_at_selection(editing::Editor& editor, std::u16string_view html, InsertPlace place);

enum class SelectionForm : std::uint8_t { Html, Text };
/// What is selected, or the word at the caret; "" beside no word. The selection stays.
std::u16string selected_content(editing::Editor& editor, SelectionForm form);

/// Puts what is selected, or the word at the caret, between two pieces of HTML.
void wrap_selection(editing::Editor& editor, std::u16string_view opening, std::u16string_view closing);

/// Selects `length` characters of the body from the one at `start`, and gives their HTML. A character is a
/// grapheme, an object, or one step over the edge of a block or a BR. A length that reaches past the end
/// selects to the end; a start past the end throws RuntimeError(5), with nothing selected any more.
/// Takes time linear in the position of the last character.
std::u16string select_characters(editing::Editor& editor, std::int32_t start, std::int32_t length);

}  // namespace tvx::core
