#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/node.h"

/// What attributes may keep when they come from another program.
namespace tvx::editing {

/// The value that stays; nothing: the attribute goes.
std::optional<std::u16string> kept_value(const dom::Element& element, const dom::Attribute& attribute);

/// A style without the declarations that one program alone understands and those that could act. As written
/// where nothing of that kind is in it.
std::u16string kept_declarations(std::u16string_view style);
/// Whether an address is a program or a page of its own: "javascript:", "vbscript:", "data:text/html".
bool is_acting_address(std::u16string_view address);

}  // namespace tvx::editing
