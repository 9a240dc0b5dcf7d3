#pragma once

#include <functional>
#include <string_view>

#include "tvx/dom/document.h"
#include "tvx/editing/clipboard/plain_text.h"

/// Content from elsewhere in the place of the selection. The caret then stands after it. What calls these
/// holds the undo step.
namespace tvx::editing {

class Editor;

/// Nodes that stand in no tree and belong to the editor's document. They are used up.
///
/// A line goes into the line at the selection. Of several lines the first goes on the line before the caret
/// and the rest of the caret's line goes on the last; where the caret's line is empty the content takes its
/// place. Items go among items. Elements that both sides have in common stand once: what was copied from a
/// place and is pasted there again leaves the tree as it was.
void paste_nodes(Editor& editor, const dom::Ref<dom::DocumentFragment>& content);
/// As a program gives it: parsed and made fit (editing/pasted_content.h), and then by `finish`, which may
/// change what stands in no tree yet. False: nothing was in it.
bool paste_html(Editor& editor, std::u16string_view html,
                const std::function<void(dom::DocumentFragment&)>& finish = {});
/// Plain text with all of its blanks: an empty line parts paragraphs, another line end is a line break.
bool paste_plain_text(Editor& editor, std::u16string_view text, Addresses addresses = Addresses::AsLinks);

}  // namespace tvx::editing
