#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/core/enumerations.h"
#include "tvx/core/part.h"

namespace tvx::core {

/// The selection as a host works with it: inserting at it, reading it, setting it by characters.
class SelectionCommands final : public Part {
 public:
  explicit SelectionCommands(Context& context) : Part(context) {}

  void InsertAtCursor(std::u16string_view HTMLText, ed_InsertType insertWhere);
  /// Puts the selection, or the word at the caret, between two pieces of HTML.
  void FormatSelection(std::u16string_view OpeningTag, std::u16string_view ClosingTag);
  /// As HTML or as text; nothing if it can't be had, which the host has then heard of.
  std::optional<std::u16string> GetCurrentSelection(bool HTMLText);
  /// Selects by character position; the HTML of what was selected.
  std::u16string selectText(std::int32_t SelStartPos, std::int32_t SelLength);
  void insert_HR();
  /// Types a space that no line is broken at; over an element that is selected as a whole it is refused, as
  /// all that is inserted.
  void insert_hard_space();

 private:
  void tell_inserted();
};

}  // namespace tvx::core
