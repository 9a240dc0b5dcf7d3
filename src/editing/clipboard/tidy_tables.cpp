#include "tvx/editing/clipboard/tidy_tables.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/color.h"
#include "tvx/dom/style/declarations.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/foreign_source.h"
#include "tvx/editing/tables/table_grid.h"

namespace tvx::editing {

using dom::Element;
using dom::Name;
using dom::Node;
using dom::Ref;
using dom::Tag;
using dom::style::Declarations;

namespace {

enum Side : std::size_t { Top, Right, Bottom, Left };
constexpr std::u16string_view sides[] = {u"top", u"right", u"bottom", u"left"};

constexpr std::u16string_view cellpadding = u"cellpadding", cellspacing = u"cellspacing", border = u"border",
                              valign = u"valign";

std::u16string_view attribute(const Element& element, std::u16string_view name) {
  return element.attribute_or_empty(Name(name));
}

Declarations style_of(const Element& element) {
  return Declarations(element.attribute_or_empty(dom::names::style));
}

void set_style(Element& element, const Declarations& style) {
  if (style.empty())
    dom::remove_attribute(element, dom::names::style);
  else if (style.css_text() != element.attribute_or_empty(dom::names::style))
    dom::set_attribute(element, dom::names::style, style.css_text());
}

void remove_style(Element& element, std::u16string_view property) {
  if (!element.has_attribute(dom::names::style)) return;
  Declarations style = style_of(element);
  style.remove(property);
  set_style(element, style);
}

/// In pixels; 0 for what is none.
double pixels_of(std::u16string_view length) {
  length = trimmed(length);
  if (length.ends_with(u"em")) return std::strtod(to_utf8(length).c_str(), nullptr) * 16;
  return points_of(length) / 0.75;
}

bool is_number_above_zero(std::u16string_view text) { return std::atof(to_utf8(trimmed(text)).c_str()) > 0; }

// --- lines ---

enum class Line : std::uint8_t { None, Plain, Other };

/// A thin line in black or grey is one that nobody gave a thought.
Line line_at(const Declarations& style, std::u16string_view side) {
  const std::u16string start = u"border-" + std::u16string(side);
  const std::u16string kind = style.get(start + u"-style");
  if (kind.empty() || kind == u"none" || kind == u"hidden") return Line::None;
  const std::u16string width = style.get(start + u"-width");
  const bool is_thin = width == u"thin" || (pixels_of(width) > 0 && pixels_of(width) < 1.4);
  const std::u16string colour = style.get(start + u"-color");
  const auto color = dom::style::parse_color(colour);
  const bool is_grey =
      color && color->alpha == 1 &&
      std::max({color->red, color->green, color->blue}) - std::min({color->red, color->green, color->blue}) <=
          16;
  const bool has_no_colour = colour.empty() || colour == u"initial" || colour == u"currentcolor";
  return kind == u"solid" && is_thin && (is_grey || has_no_colour) ? Line::Plain : Line::Other;
}

using Lines = std::array<Line, 4>;

Lines lines_of(const Element& element) {
  Lines lines{};
  const Declarations style = style_of(element);
  for (std::size_t side = Top; side <= Left; ++side) lines[side] = line_at(style, sides[side]);
  return lines;
}

bool has(const Lines& lines, Line line) { return std::ranges::find(lines, line) != lines.end(); }

void remove_lines(Element& element) {
  Declarations style = style_of(element);
  style.remove(u"border");
  for (const std::u16string_view side : sides) style.remove(u"border-" + std::u16string(side));
  set_style(element, style);
}

class TableTidying {
 public:
  explicit TableTidying(Element& table) : table_(table), grid_(table) {}

  void run() {
    if (grid_.cells().empty()) return;
    tidy_lines();
    tidy_padding();
    tidy_widths();
    tidy_vertical_align();
    drop_zeros();
  }

 private:
  // --- lines ---

  void tidy_lines() {
    table_lines_ = lines_of(table_);
    for (const GridCell& cell : grid_.cells()) cell_lines_.push_back(lines_of(*cell.cell));
    has_lines_ = is_number_above_zero(attribute(table_, border)) || !is_bare(table_lines_);
    bool others = has(table_lines_, Line::Other);
    for (const Lines& lines : cell_lines_) {
      others = others || has(lines, Line::Other);
      has_lines_ = has_lines_ || !is_bare(lines);
    }
    if (others) return;
    const bool all_by_attribute = is_number_above_zero(attribute(table_, border));
    if (!all_by_attribute && !has_all_lines()) return;
    for (const GridCell& cell : grid_.cells()) remove_lines(*cell.cell);
    remove_lines(table_);
    if (all_by_attribute) return;
    dom::set_attribute(table_, Name(border), u"1");
    Declarations style = style_of(table_);
    style.set(u"border-collapse", u"collapse");
    set_style(table_, style);
  }

  static bool is_bare(const Lines& lines) { return !has(lines, Line::Plain) && !has(lines, Line::Other); }

  /// Whether there is a line on each side of each cell: its own, that of its neighbour, or the table's.
  bool has_all_lines() const {
    for (std::size_t row = 0; row < grid_.rows(); ++row)
      for (std::size_t column = 0; column < grid_.columns(); ++column) {
        const GridCell* cell = grid_.at(row, column);
        if (!cell) continue;
        const GridCell* above = row > 0 ? grid_.at(row - 1, column) : nullptr;
        const GridCell* before = column > 0 ? grid_.at(row, column - 1) : nullptr;
        if (cell != above && !is_drawn(above, Bottom, cell, Top)) return false;
        if (cell != before && !is_drawn(before, Right, cell, Left)) return false;
        if (row + 1 == grid_.rows() && !is_drawn(cell, Bottom, nullptr, Bottom)) return false;
        if (column + 1 == grid_.columns() && !is_drawn(cell, Right, nullptr, Right)) return false;
      }
    return true;
  }

  bool is_drawn(const GridCell* one, Side side_of_one, const GridCell* other, Side side_of_other) const {
    const auto line = [&](const GridCell* cell, Side side) {
      return cell ? cell_lines_[std::size_t(cell - grid_.cells().data())][side] : Line::None;
    };
    if (line(one, side_of_one) == Line::Plain || line(other, side_of_other) == Line::Plain) return true;
    return (!one && table_lines_[side_of_other] == Line::Plain) ||
           (!other && table_lines_[side_of_one] == Line::Plain);
  }

  // --- the room in cells ---

  void tidy_padding() {
    const std::u16string padding = style_of(*grid_.cells().front().cell).get(u"padding");
    if (padding.empty()) return;
    for (const GridCell& cell : grid_.cells())
      if (style_of(*cell.cell).get(u"padding") != padding) return;
    for (const GridCell& cell : grid_.cells()) remove_style(*cell.cell, u"padding");
    const auto parts = split_on_space(padding);
    const double upper = pixels_of(parts.front());
    const double beside = parts.size() > 1 ? pixels_of(parts[1]) : upper;
    const auto mean = std::int64_t(std::lround((upper + beside) / 2));
    if (mean > 1)
      dom::set_attribute(table_, Name(cellpadding), to_text(mean));
    else
      dom::remove_attribute(table_, Name(cellpadding));
  }

  // --- widths ---

  void tidy_widths() {
    std::set<std::u16string, std::less<>> widths;
    bool is_said_in_first_row = false;
    for (const GridCell& cell : grid_.cells()) {
      const std::u16string_view width = cell.cell->attribute_or_empty(dom::names::width);
      if (cell.width != 1 || width.empty()) continue;
      widths.emplace(width);
      is_said_in_first_row = is_said_in_first_row || cell.row == 0;
    }
    const std::vector<Element*> columns = column_elements();
    for (const Element* column : columns)
      if (widths.empty() || !is_said_in_first_row)
        widths.emplace(column->attribute_or_empty(dom::names::width));
    const bool all_the_same = widths.size() == 1 && grid_.columns() > 1;
    for (const GridCell& cell : grid_.cells()) {
      const bool is_said_above = cell.row > 0 && (is_said_in_first_row || !columns.empty());
      if (all_the_same || is_said_above) dom::remove_attribute(*cell.cell, dom::names::width);
    }
    if (all_the_same || is_said_in_first_row) drop_columns(columns);
    // In pixels it is what its columns come to.
    if (all_the_same && !table_.attribute_or_empty(dom::names::width).ends_with(u"%"))
      dom::remove_attribute(table_, dom::names::width);
  }

  /// COL elements, and COLGROUP elements without any.
  std::vector<Element*> column_elements() const {
    std::vector<Element*> columns;
    for (Node* node = table_.first_child(); node; node = node->next_sibling()) {
      if (!node->is(Tag::Colgroup)) continue;
      const std::size_t before = columns.size();
      for (Node* column = node->first_child(); column; column = column->next_sibling())
        if (column->is(Tag::Col)) columns.push_back(static_cast<Element*>(column));
      if (columns.size() == before) columns.push_back(static_cast<Element*>(node));
    }
    return columns;
  }

  void drop_columns(const std::vector<Element*>& columns) {
    for (Element* column : columns) {
      dom::remove_attribute(*column, dom::names::width);
      const auto& left = column->attributes();
      if (left.empty() || (left.size() == 1 && column->has_attribute(Name(u"span")))) {
        const Ref<Element> group(column->is(Tag::Col) ? column->parent_element() : nullptr);
        dom::remove(*column);
        if (group && !dom::first_child_element(*group)) dom::remove(*group);
      }
    }
  }

  // --- where text stands in a higher cell ---

  static std::u16string vertical_align_of(const Element& cell) {
    std::u16string said = style_of(cell).get(u"vertical-align");
    if (said.empty()) said = ascii_lower(attribute(cell, valign));
    const Element* row = cell.parent_element();
    return said.empty() && row ? ascii_lower(attribute(*row, valign)) : said;
  }

  void tidy_vertical_align() {
    const std::u16string said = vertical_align_of(*grid_.cells().front().cell);
    for (const GridCell& cell : grid_.cells())
      if (vertical_align_of(*cell.cell) != said) return;
    if (said.empty()) return;
    std::set<Element*> sections;
    for (const GridCell& cell : grid_.cells()) {
      remove_style(*cell.cell, u"vertical-align");
      dom::remove_attribute(*cell.cell, Name(valign));
    }
    for (std::size_t i = 0; i < grid_.rows(); ++i) {
      dom::remove_attribute(grid_.row(i), Name(valign));
      sections.insert(grid_.row(i).parent_element());
    }
    // All else is what a sheet gives each cell.
    if (said != u"top") return;
    for (Element* section : sections)
      if (section != &table_) dom::set_attribute(*section, Name(valign), u"top");
  }

  // --- what says nothing ---

  void drop_zeros() {
    const bool collapses = style_of(table_).get(u"border-collapse") == u"collapse";
    if (attribute(table_, border) == u"0") dom::remove_attribute(table_, Name(border));
    if (attribute(table_, cellpadding) == u"0") dom::remove_attribute(table_, Name(cellpadding));
    if ((collapses || !has_lines_) && attribute(table_, cellspacing) == u"0")
      dom::remove_attribute(table_, Name(cellspacing));
    if (!has_lines_) remove_style(table_, u"border-collapse");
  }

  Element& table_;
  TableGrid grid_;
  Lines table_lines_{};
  std::vector<Lines> cell_lines_;  // as the grid's cells
  bool has_lines_ = false;
};

}  // namespace

void tidy_tables(Node& content) {
  std::vector<Ref<Element>> tables;
  for (Node* node = content.first_child(); node; node = dom::next_in_order(*node, &content))
    if (node->is(Tag::Table)) tables.emplace_back(static_cast<Element*>(node));
  for (const Ref<Element>& table : tables) TableTidying(*table).run();
}

}  // namespace tvx::editing
