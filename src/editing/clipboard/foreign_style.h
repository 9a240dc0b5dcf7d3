#pragma once

#include <string>
#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/dom/style/color.h"
#include "tvx/dom/style/computed.h"

/// What the elements of another program look like, where they are pasted.
namespace tvx::editing {

class ForeignSource;

/// What the text of a position looks like by itself: there a style that says the same says nothing.
struct GivenLook {
  dom::style::Color color{0, 0, 0, 1};
  dom::style::Color background{255, 255, 255, 1};
  bool bold = false, italic = false;
  std::uint8_t lines = 0;
  double size = 16;       // in pixels; 0: not known
  std::u16string family;  // in small letters without quotes
  dom::style::TextAlign align = dom::style::TextAlign::Start;
};
/// What text has at an element of the document that is pasted into, on an empty page for null.
GivenLook look_at(const dom::Element* place);

/// The style that an element brings along, with what its classes show. Without the layout of the program it
/// comes from: line heights, page breaks, indents of bullets, the sizes of a grid.
std::u16string foreign_style(const ForeignSource& source, const dom::Element& element);
/// Whether an attribute says something to the program alone that wrote it.
bool is_residue(const ForeignSource& source, const dom::Element& element, std::u16string_view name);

/// Takes off the content what its place gives it anyway, from `look` on.
void drop_given_styles(dom::Node& content, const GivenLook& look);

}  // namespace tvx::editing
