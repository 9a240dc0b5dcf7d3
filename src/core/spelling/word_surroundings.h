#pragma once

#include <functional>
#include <string>

#include "tvx/dom/range.h"

/// What stands beside a word says something about it. A word over several elements is judged by itself.
namespace tvx::core {

/// Whether a word is part of an address, which nobody spells.
bool is_in_address(const dom::Range& word);
/// Whether a word that is wrong by itself is right with the hyphen beside it.
bool is_right_with_hyphen(const dom::Range& word, const std::function<bool(const std::u16string&)>& is_right);

}  // namespace tvx::core
