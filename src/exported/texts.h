#pragma once

#include <string_view>

#include "tvx/tvxhtml.h"

/// Texts that hosts hold. The library knows those that it has made: what isn't one of them is never freed, so
/// that a host's mistake costs memory and not the process.
namespace tvx::exported {

tvx_text new_text(std::u16string_view text);
/// The text is empty then.
void free_text(tvx_text& text);
/// Throws RuntimeError(5) for a length without characters.
std::u16string_view view_of(const tvx_text& text);

void clear_value(tvx_value& value);
void set_text(tvx_value& value, std::u16string_view text);

}  // namespace tvx::exported
