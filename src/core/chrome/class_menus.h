#pragma once

#include <cstdint>

#include "tvx/core/part.h"

namespace tvx::core {

class SelectionHighlight;
class StyleSheetBinding;

/// The items of the class menus: 0 takes a class away, the others are those of the style sheet.
class ClassMenus final : public Part {
 public:
  ClassMenus(Context& context, SelectionHighlight& highlight, const StyleSheetBinding& sheet)
      : Part(context), highlight_(highlight), sheet_(sheet) {}

  /// The class of the current element.
  void give_to_element(std::int16_t index);
  /// The class of the selection.
  void give_to_selection(std::int16_t index);

 private:
  SelectionHighlight& highlight_;
  const StyleSheetBinding& sheet_;
};

}  // namespace tvx::core
