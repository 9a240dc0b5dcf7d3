#pragma once

#include <string>
#include <vector>

#include "tvx/dom/document.h"

namespace tvx::dom::style {

/// The colours that a document's elements name in attributes and inline styles, as "#rrggbb", those that are
/// named most often first; sixteen at most.
std::vector<std::u16string> used_colours(const Document& document);

}  // namespace tvx::dom::style
