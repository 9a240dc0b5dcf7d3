#pragma once

#include <string_view>

namespace tvx::dom {
class Document;
}

namespace tvx::files {

/// Makes an open document the page of that text, in one step of undo: head, body and the attributes of both
/// and of their root. What stands before and after the root stays.
void replace_page(dom::Document& document, std::u16string_view text);

}  // namespace tvx::files
