#pragma once

#include <cstdint>
#include <string>

#include "tvx/dom/style/color.h"

namespace tvx::dom {
class Element;
}

namespace tvx::dom::style {

/// The properties whose computed values are known here: what commands and texts ask for.
enum class Property : std::uint8_t {
  Display,
  Visibility,
  WhiteSpace,
  Direction,
  TextAlign,
  TextTransform,
  FontWeight,
  FontStyle,
  FontSize,
  FontFamily,
  TextDecorationLine,
  Color,
  BackgroundColor,
  VerticalAlign,
  ListStyleType,
  Float,
  Position,
  Count
};

enum class Display : std::uint8_t {
  Inline,
  Block,
  None,
  InlineBlock,
  ListItem,
  Table,
  InlineTable,
  TableRowGroup,
  TableHeaderGroup,
  TableFooterGroup,
  TableRow,
  TableCell,
  TableColumn,
  TableColumnGroup,
  TableCaption,
  Flex,
  InlineFlex,
  Grid,
  InlineGrid,
  FlowRoot,
  Contents,
  Ruby,
  RubyText
};
enum class Visibility : std::uint8_t { Visible, Hidden, Collapse };
enum class WhiteSpace : std::uint8_t { Normal, Pre, NoWrap, PreWrap, PreLine, BreakSpaces };
enum class Direction : std::uint8_t { LeftToRight, RightToLeft };
enum class TextAlign : std::uint8_t { Start, End, Left, Right, Center, Justify };
enum class TextTransform : std::uint8_t { None, Uppercase, Lowercase, Capitalize };
enum class FontStyle : std::uint8_t { Normal, Italic, Oblique };
enum class VerticalAlign : std::uint8_t {
  Baseline,
  Sub,
  Super,
  Top,
  TextTop,
  Middle,
  Bottom,
  TextBottom,
  Length,
  Percentage
};
enum class ListStyleType : std::uint8_t {
  Disc,
  Circle,
  Square,
  Decimal,
  LowerAlpha,
  UpperAlpha,
  LowerRoman,
  UpperRoman,
  LowerLatin,
  UpperLatin,
  LowerGreek,
  DecimalLeadingZero,
  Armenian,
  Georgian,
  None
};
enum class Float : std::uint8_t { None, Left, Right };
enum class Position : std::uint8_t { Static, Relative, Absolute, Fixed, Sticky };

/// The lines that an element itself draws, as bits. Descendants are drawn over by them without inheriting.
namespace text_decoration {
inline constexpr std::uint8_t none = 0, underline = 1, overline = 2, line_through = 4, blink = 8;
}

namespace script {
inline constexpr std::uint8_t none = 0, lowered = 1, raised = 2;
}

/// What an element's properties come to. The initial values are those of CSS; `font-family` begins as
/// "serif".
struct ComputedValues {
  Display display = Display::Inline;
  Visibility visibility = Visibility::Visible;
  WhiteSpace white_space = WhiteSpace::Normal;
  Direction direction = Direction::LeftToRight;
  TextAlign text_align = TextAlign::Start;
  TextTransform text_transform = TextTransform::None;
  FontStyle font_style = FontStyle::Normal;
  VerticalAlign vertical_align = VerticalAlign::Baseline;
  ListStyleType list_style_type = ListStyleType::Disc;
  Float float_side = Float::None;
  Position position = Position::Static;
  bool rendered = true;  // neither it nor what it stands in is "display: none"
  std::uint8_t text_decoration_line = text_decoration::none;
  std::uint16_t font_weight = 400;
  std::uint32_t font_family = 0;   // an entry of the engine's table
  double font_size = 16;           // in pixels
  double vertical_align_size = 0;  // pixels for Length, percent for Percentage
  Color color{0, 0, 0, 1};
  Color background_color = transparent;

  // --- no properties, but what comes of them and of those above: nobody has to climb for it ---
  std::uint8_t lines_drawn = text_decoration::none;  // over its text, by itself or by what it stands in
  std::uint8_t scripts = script::none;   // the SUB and SUP around it in its line, itself among them
  Color shown_background = transparent;  // its own or the nearest that shows through it
  const Element* link = nullptr;         // the A with an address that it stands in, or is
  // Of the block whose lines it stands in; of the element itself if that is no part of a line.
  TextAlign line_align = TextAlign::Left;
  Direction line_direction = Direction::LeftToRight;
};

}  // namespace tvx::dom::style
