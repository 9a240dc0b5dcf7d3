#pragma once

#include <cstdint>

namespace tvx::editing {

/// What an inline formatting command is about. Two commands that differ in name alone share one:
/// "backColor" and "hiliteColor", "createLink" and "unlink".
enum class InlineCommand : std::uint8_t {
  None,  // no inline command
  BackColor,
  Bold,
  CreateLink,
  FontName,
  FontSize,
  ForeColor,
  Italic,
  Strikethrough,
  Subscript,
  Superscript,
  Underline
};

}  // namespace tvx::editing
