#pragma once

#include <string>
#include <string_view>

#include "dom/node.h"

namespace tvx::dom {

/// The text as rendered (HTML standard, section 3.2.7 "the innerText getter"): LF between lines, an empty
/// line around paragraphs, white space as shown, nothing of what is hidden. Display and white space come from
/// the default sheet, the document's sheets and inline style. An element outside the tree or hidden gives its
/// text content.
std::u16string inner_text(const Element& element);

/// Replaces the content by the text; each line end (CR LF, CR, LF) becomes a BR.
void set_inner_text(Element& element, std::u16string_view text);

}  // namespace tvx::dom
