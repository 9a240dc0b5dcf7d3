#pragma once

#include "tvx/core/part.h"
#include "tvx/dialogs/font_dialog.h"

namespace tvx::core {

/// The font, its size and the colours of the selection, asked for and set.
class FontSettings final : public Part {
 public:
  explicit FontSettings(Context& context) : Part(context) {}

  void change_Font();
  /// What the dialog was opened with, or has left.
  const dialogs::FontValues& values() const { return values_; }

 private:
  std::u16string colour(std::u16string_view command) const;
  std::u16string text(std::u16string_view command) const;
  void read_values();
  void write_values() const;

  dialogs::FontValues values_;
};

}  // namespace tvx::core
