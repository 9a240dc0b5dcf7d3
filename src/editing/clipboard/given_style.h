#pragma once

#include <string>

#include "tvx/dom/node.h"
#include "tvx/dom/style/color.h"
#include "tvx/dom/style/computed.h"

/// Styles that say nothing where they are pasted.
namespace tvx::editing {

class ForeignSource;

/// What the text of a position has by itself: there a style that says the same says nothing.
struct GivenStyle {
  dom::style::Color color{0, 0, 0, 1};
  dom::style::Color background{255, 255, 255, 1};
  bool bold = false, italic = false;
  std::uint8_t lines = 0;
  double size = 16;       // in pixels; 0: not known
  std::u16string family;  // in small letters without quotes
  dom::style::TextAlign align = dom::style::TextAlign::Start;
};
/// What text has at an element of the document that is pasted into, on an empty page for null.
GivenStyle style_given_at(const dom::Element* place);

/// What is given, with the font that the page of the content sets for all that it shows: most of its text
/// has that.
GivenStyle with_font_of_source(const ForeignSource& source, dom::Node& content, const GivenStyle& given);

/// Takes off the content of a program whose habits are known:
///
/// - What its place gives it anyway, from `given` on. A black or white that is nearly the place's is the
///   other page's.
/// - What style sheets do to headings, links, code and quotations: lines around them, fonts, the colours of
///   links. What these are like is the matter of the page that is pasted into.
void drop_given_styles(dom::Node& content, const GivenStyle& given);

}  // namespace tvx::editing
