#pragma once

#include <string>
#include <string_view>

namespace tvx::dom {
class Document;
}

namespace tvx::files {

/// The character set that a page names in a `meta` of its head, as the Encoding standard calls it; empty
/// where it names none that is known.
std::string declared_charset(const dom::Document& document);
/// Has the page name that one, in one step of undo: where it names one already, else first in its head.
void declare_charset(dom::Document& document, std::string_view charset);

}  // namespace tvx::files
