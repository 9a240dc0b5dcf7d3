#pragma once

#include <string_view>

namespace tvx::dom::style {

/// What HTML looks like before an author says anything: HTML standard, section 15.3, as far as the computed
/// properties go.
std::u16string_view default_sheet();
/// What comes on top in quirks mode (section 15.3.10).
std::u16string_view quirks_sheet();

}  // namespace tvx::dom::style
