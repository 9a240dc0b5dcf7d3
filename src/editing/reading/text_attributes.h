#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "tvx/dom/style/color.h"
#include "tvx/editing/reading/accessible_content.h"

namespace tvx::editing {

/// What a reader may ask of a stretch of text beside its letters.
struct TextAttributes {
  enum class Align : std::uint8_t { Left, Right, Centre, Justified };

  std::u16string font_family;  // the first that is named
  std::u16string language;     // empty: nobody says
  double font_size = 0;        // in pixels
  int font_weight = 400;
  bool italic = false, underlined = false, struck_through = false, lowered = false, raised = false;
  bool right_to_left = false;
  bool wrong = false;  // in a word that no dictionary knows
  Align align = Align::Left;
  dom::style::Color colour, background;
  friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

/// Attributes and the stretch around a unit that has them.
struct AttributeRun {
  TextAttributes attributes;
  Offset from = 0, to = 0;
};

/// The stretches of a text that are marked as wrong.
using WrongWords = std::function<std::vector<std::pair<Offset, Offset>>(const dom::Text& text)>;

/// Of the unit at an offset; at the end, those of the last. `top` is what the content is of.
AttributeRun attributes_at(const dom::Element& top, const AccessibleContent& content, Offset offset,
                           const WrongWords& wrong_words);

}  // namespace tvx::editing
