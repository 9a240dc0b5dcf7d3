#include "tvx/dom/style/cascade.h"

#include <algorithm>

namespace tvx::dom::style {
namespace {

void inherit(ComputedValues& values, const ComputedValues& from, Property property) {
  switch (property) {
    case Property::Display: values.display = from.display; break;
    case Property::Visibility: values.visibility = from.visibility; break;
    case Property::WhiteSpace: values.white_space = from.white_space; break;
    case Property::Direction: values.direction = from.direction; break;
    case Property::TextAlign: values.text_align = from.text_align; break;
    case Property::TextTransform: values.text_transform = from.text_transform; break;
    case Property::FontWeight: values.font_weight = from.font_weight; break;
    case Property::FontStyle: values.font_style = from.font_style; break;
    case Property::FontSize: values.font_size = from.font_size; break;
    case Property::FontFamily: values.font_family = from.font_family; break;
    case Property::TextDecorationLine: values.text_decoration_line = from.text_decoration_line; break;
    case Property::Color: values.color = from.color; break;
    case Property::BackgroundColor: values.background_color = from.background_color; break;
    case Property::VerticalAlign:
      values.vertical_align = from.vertical_align;
      values.vertical_align_size = from.vertical_align_size;
      break;
    case Property::ListStyleType: values.list_style_type = from.list_style_type; break;
    case Property::Float: values.float_side = from.float_side; break;
    case Property::Position: values.position = from.position; break;
    case Property::Count: break;
  }
}

/// CSS Fonts 4, section 2.5 "<relative-size>": the neighbour among the sizes that have names; between them a
/// factor.
double relative_font_size(double inherited, bool larger) {
  static constexpr double named[] = {9, 10, 13, 16, 18, 24, 32, 48};
  const auto* const found = std::find(std::begin(named), std::end(named), inherited);
  if (found != std::end(named) && (larger ? found + 1 != std::end(named) : found != std::begin(named)))
    return larger ? found[1] : found[-1];
  return larger ? inherited * 1.2 : inherited / 1.2;
}

/// CSS Fonts 4, section 2.2.1 "Relative Weights".
std::uint16_t relative_weight(std::uint16_t weight, bool bolder) {
  if (bolder) return weight < 350 ? 400 : weight < 550 ? 700 : std::max<std::uint16_t>(weight, 900);
  return weight < 100 ? weight : weight < 550 ? 100 : weight < 750 ? 400 : 700;
}

/// CSS Display, section 2.7: what floats, is taken out of the flow or is a root has a block's display.
Display blockified(Display display) {
  switch (display) {
    case Display::Inline:
    case Display::InlineBlock:
    case Display::TableRowGroup:
    case Display::TableHeaderGroup:
    case Display::TableFooterGroup:
    case Display::TableRow:
    case Display::TableCell:
    case Display::TableColumn:
    case Display::TableColumnGroup:
    case Display::TableCaption:
    case Display::Ruby:
    case Display::RubyText: return Display::Block;
    case Display::InlineTable: return Display::Table;
    case Display::InlineFlex: return Display::Flex;
    case Display::InlineGrid: return Display::Grid;
    default: return display;
  }
}

class Computation {
 public:
  Computation(ComputedValues& values, const ComputedValues& parent, const Surroundings& surroundings)
      : values_(values), parent_(parent), surroundings_(surroundings) {}

  void apply(Property property, const StyleValue& value) {
    switch (value.kind) {
      case ValueKind::Inherit: return inherit(values_, parent_, property);
      case ValueKind::Initial: return inherit(values_, initial_, property);
      case ValueKind::Revert:
      case ValueKind::Unset: return inherit(values_, is_inherited(property) ? parent_ : initial_, property);
      default: break;
    }
    switch (property) {
      case Property::FontSize: return font_size(value);
      case Property::FontWeight:
        values_.font_weight = value.kind == ValueKind::Relative
                                  ? relative_weight(parent_.font_weight, value.number > 0)
                                  : std::uint16_t(value.number);
        return;
      case Property::FontFamily: values_.font_family = surroundings_.family_number(value.text); return;
      case Property::Color:
        values_.color = value.kind == ValueKind::CurrentColor ? parent_.color : value.color;
        return;
      case Property::BackgroundColor:
        values_.background_color = value.kind == ValueKind::CurrentColor ? values_.color : value.color;
        return;
      case Property::VerticalAlign: return vertical_align(value);
      default: return keyword(property, value);
    }
  }

 private:
  void keyword(Property property, const StyleValue& value) {
    if (value.kind == ValueKind::CellCenter) {
      if (parent_.text_align == TextAlign::Start) values_.text_align = TextAlign::Center;
      return;
    }
    const auto number = std::uint8_t(value.number);
    switch (property) {
      case Property::Display: values_.display = Display(number); break;
      case Property::Visibility: values_.visibility = Visibility(number); break;
      case Property::WhiteSpace: values_.white_space = WhiteSpace(number); break;
      case Property::Direction: values_.direction = Direction(number); break;
      case Property::TextAlign: values_.text_align = TextAlign(number); break;
      case Property::TextTransform: values_.text_transform = TextTransform(number); break;
      case Property::FontStyle: values_.font_style = FontStyle(number); break;
      case Property::TextDecorationLine: values_.text_decoration_line = number; break;
      case Property::ListStyleType: values_.list_style_type = ListStyleType(number); break;
      case Property::Float: values_.float_side = Float(number); break;
      case Property::Position: values_.position = Position(number); break;
      default: break;
    }
  }

  void font_size(const StyleValue& value) {
    const double inherited = parent_.font_size;
    switch (value.kind) {
      case ValueKind::Pixels: values_.font_size = value.number; break;
      case ValueKind::Unitless:
        if (surroundings_.quirks) values_.font_size = value.number;
        break;
      case ValueKind::Em: values_.font_size = value.number * inherited; break;
      case ValueKind::RootEm: values_.font_size = value.number * surroundings_.root_font_size; break;
      case ValueKind::Percentage: values_.font_size = value.number * inherited / 100; break;
      case ValueKind::Relative: values_.font_size = relative_font_size(inherited, value.number > 0); break;
      default: break;
    }
  }

  void vertical_align(const StyleValue& value) {
    values_.vertical_align = VerticalAlign::Length;
    switch (value.kind) {
      case ValueKind::Keyword: values_.vertical_align = VerticalAlign(std::uint8_t(value.number)); break;
      case ValueKind::Em: values_.vertical_align_size = value.number * values_.font_size; break;
      case ValueKind::RootEm:
        values_.vertical_align_size = value.number * surroundings_.root_font_size;
        break;
      case ValueKind::Percentage: values_.vertical_align = VerticalAlign::Percentage; [[fallthrough]];
      default: values_.vertical_align_size = value.number;
    }
  }

  ComputedValues& values_;
  const ComputedValues& parent_;
  const Surroundings& surroundings_;
  const ComputedValues initial_;
};

bool blockifies_children(Display display) {
  return display == Display::Flex || display == Display::InlineFlex || display == Display::Grid ||
         display == Display::InlineGrid;
}

}  // namespace

void Cascade::take(const std::vector<PropertyValue>& values, bool important) {
  for (const PropertyValue& value : values) {
    if (value.important == important) winners_[std::size_t(value.property)] = &value.value;
  }
}

ComputedValues Cascade::compute(const Surroundings& surroundings) const {
  const ComputedValues initial;
  const ComputedValues& parent = surroundings.parent ? *surroundings.parent : initial;
  // What isn't inherited starts anew.
  ComputedValues values = parent;
  values.display = initial.display;
  values.text_decoration_line = initial.text_decoration_line;
  values.background_color = initial.background_color;
  values.vertical_align = initial.vertical_align;
  values.vertical_align_size = 0;
  values.float_side = initial.float_side;
  values.position = initial.position;

  // In the order of Property what measures by another comes after it: vertical-align after the font size,
  // the background's currentcolor after the colour.
  Computation computation(values, parent, surroundings);
  for (std::size_t i = 0; i < winners_.size(); ++i) {
    const StyleValue* winner = winners_[i];
    if (winner && winner->kind == ValueKind::Revert) winner = defaults_[i] ? defaults_[i] : winner;
    if (winner) computation.apply(Property(i), *winner);
  }
  const bool out_of_flow = values.position == Position::Absolute || values.position == Position::Fixed;
  if (out_of_flow) values.float_side = Float::None;
  if (out_of_flow || values.float_side != Float::None || !surroundings.parent ||
      blockifies_children(parent.display)) {
    values.display = blockified(values.display);
  }
  values.rendered = parent.rendered && values.display != Display::None;
  // All else that comes of what is above has been copied from there.
  values.lines_drawn |= values.text_decoration_line;
  if (values.background_color.alpha != 0 || !surroundings.parent)
    values.shown_background = values.background_color;
  if (values.display != Display::Inline && values.display != Display::None) {
    values.line_align = values.text_align;
    values.line_direction = values.direction;
  }
  return values;
}

}  // namespace tvx::dom::style
