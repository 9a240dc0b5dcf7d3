#pragma once

#include "tvx/dom/document.h"
#include "tvx/dom/parser/token.h"

namespace tvx::dom::parser {

/// HTML standard, section 13.2.6.4.1: the compatibility mode that a document type asks for.
CompatibilityMode compatibility_mode_of(const Token::DocumentTypeData& data);

}  // namespace tvx::dom::parser
