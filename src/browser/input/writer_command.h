#pragma once

#include <string_view>

#include "tvx/browser/html_document.h"

namespace tvx::browser {

/// A command that a person gives, by a button or a menu: as a writer means it
/// (editing/gestures/cell_selection.h), where execCommand does what the command says. One undo step, one
/// selection change. False where it did nothing.
bool press_command(HTMLDocument& document, std::u16string_view command, std::u16string_view value = {});

}  // namespace tvx::browser
