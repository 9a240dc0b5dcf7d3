#pragma once

#include <string_view>

#include "tvx/dom/document.h"

namespace tvx::dom {

/// Makes an element's content that of the markup, and leaves alone what is the same in both: nodes, and with
/// them carets, ranges and what a view shows, stay where nothing has changed. In a text the letters between
/// the first and the last difference are replaced, in an element whose tag alone has changed the attributes.
/// Nothing happens where the content is that of the markup.
void change_content(Element& element, std::u16string_view html);

}  // namespace tvx::dom
