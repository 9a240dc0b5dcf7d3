#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::dom {
class Element;
}
namespace tvx::dom::style {
class StyleSheet;
}
namespace tvx::editing {
class Editor;
}

/// Classes of the document's style sheet, as menus offer them, and how an element or a selection gets one.
namespace tvx::core {

/// An item of a class menu. Item 0, "(none)", is the menus' own.
struct StyleClass {
  std::int16_t index;   // the rule's place in the sheet, from 1; rules that are no classes leave gaps
  std::u16string name;  // what stands after the ".": "a", and "a:hover" and "a .b" as they stand
};

/// The classes of a sheet, in its order.
std::vector<StyleClass> style_classes_of(const dom::style::StyleSheet& sheet);

/// Gives an element a class; an empty name takes away what it has. One undo step.
void set_style_class(dom::Element& element, std::u16string_view name);

/// Gives the selection, or the word at the caret, a class: where it is a whole element or all of a SPAN, that
/// gets it, otherwise a new SPAN around it does. An empty name takes a class away where one would be
/// replaced, and does nothing else. Throws RuntimeError(438) where an element is selected as a whole.
void set_style_class(editing::Editor& editor, std::u16string_view name);

}  // namespace tvx::core
