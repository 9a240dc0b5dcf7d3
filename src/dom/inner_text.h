#pragma once

#include <string>
#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/dom/range.h"

namespace tvx::dom {

/// The text as rendered (HTML standard, section 3.2.7 "the innerText getter"): LF between lines, an empty
/// line around paragraphs, white space as shown, nothing of what is hidden. Display and white space come from
/// the default sheet, the document's sheets and inline style. An element outside the tree or hidden gives its
/// text content.
std::u16string inner_text(const Element& element);

/// The same of a part of the tree. A blank at its edge is there if it is shown there; no line break stands at
/// the ends for a block whose edge is at the range's.
std::u16string inner_text(const Range& range);

/// The text as new nodes in no tree; each line end (CR LF, CR, LF) becomes a BR.
Ref<DocumentFragment> lines_of(Document& document, std::u16string_view text);
/// Replaces the content by the text; each line end (CR LF, CR, LF) becomes a BR.
void set_inner_text(Element& element, std::u16string_view text);

}  // namespace tvx::dom
