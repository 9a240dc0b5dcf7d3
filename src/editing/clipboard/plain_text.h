#pragma once

#include <string_view>

#include "tvx/dom/document.h"

namespace tvx::editing {

enum class Addresses : bool { AsText, AsLinks };

/// Plain text as new nodes in no tree: an empty line parts paragraphs, another line end is a BR. A text of
/// one paragraph is a line without a block of its own.
dom::Ref<dom::DocumentFragment> nodes_of_text(dom::Document& document, std::u16string_view text,
                                              Addresses addresses);

}  // namespace tvx::editing
