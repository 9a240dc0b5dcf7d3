#pragma once

#include <string>
#include <string_view>

#include "tvx/dom/serialise.h"
#include "tvx/editing/editor.h"

/// Documents in tests and automation: content with the selection marked in the text, `[` `]` inside text,
/// `{` `}` between nodes, `data-start="n"` and `data-end="n"` where no text can stand.
namespace tvx::editing {

/// Replaces the children of `host` by the content, without journalling, and sets the selection to the marks;
/// no marks, no selection. Both marks are always removed.
void load_marked(Editor& editor, dom::Element& host, std::u16string_view marked_html);

/// The children of `host` with the selection written back as marks.
std::u16string dump_marked(const Editor& editor, const dom::Element& host, dom::Letters letters);

}  // namespace tvx::editing
