#pragma once

#include <optional>
#include <string>

#include "tvx/dom/range.h"

namespace tvx::editing {

class Editor;

/// What is selected, as it goes to other programs.
struct CopiedContent {
  std::u16string html;  // well-formed by itself
  std::u16string text;  // as a reader sees it, with LF
  /// The element selected as a whole, if one is.
  dom::Ref<dom::Element> control;
};

/// Nothing while there is only a caret, or no selection. The markup of a text selection goes from its first
/// to its last character. It brings along what gives it its meaning: the list of its items, the table of its
/// cells, the style of its text; and its block if all of the block's content is in it. A selection that goes
/// on to the next line took the line's end along, and so does the copy.
std::optional<CopiedContent> copied_content(Editor& editor);

/// The same as nodes in no tree. With its line's end a list's item is an item and not its text alone.
enum class LineEnd : bool { Without, With };
dom::Ref<dom::DocumentFragment> copied_nodes(const dom::Range& range, LineEnd end = LineEnd::Without);

/// Content that ends with a line's end has an empty paragraph after all else. Where others read it, nothing
/// is seen of that.
void append_line_end(dom::DocumentFragment& content);
/// Takes that paragraph off; false if there is none.
bool remove_line_end(dom::DocumentFragment& content);

}  // namespace tvx::editing
