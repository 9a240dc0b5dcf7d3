#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tvx::spelling {

/// Why a dictionary isn't whole, as its own counts tell: a file that was cut off has fewer rules than it
/// announces. Nothing: it is. Reads both files; takes time with their size alone.
std::optional<std::u16string> damage_of(const std::string& affixes, const std::string& words);

}  // namespace tvx::spelling
