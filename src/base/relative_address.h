#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tvx {

/// An address with every occurrence of a base taken off it, ignoring case. Two spellings of one base count as
/// the same: with or without its scheme's own port, its host in letters of any script or in ASCII. Nothing
/// where the base doesn't stand in the address; no address has an empty base.
std::optional<std::u16string> without_base(std::u16string_view address, std::u16string_view base);

}  // namespace tvx
