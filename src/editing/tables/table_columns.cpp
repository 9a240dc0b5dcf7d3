#include "tvx/editing/tables/table_columns.h"

#include <algorithm>

#include "tvx/base/strings.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Tag;

namespace {

constexpr int most_rows = 65534, most_columns = 1000;

/// A cell's span, with the standard's bounds; none written or no number: 1.
int span(const Element& cell, dom::Name name, int least, int most) {
  const auto number = parse_integer(cell.attribute_or_empty(name));
  if (!number || *number < least) return 1;
  return int(std::min<std::int64_t>(*number, most));
}

bool is_section(const Node& node) {
  return node.is(Tag::Thead) || node.is(Tag::Tbody) || node.is(Tag::Tfoot);
}

void place_row(ColumnWalk& walk, const Node& row, std::vector<PlacedCell>& found) {
  walk.begin_row();
  for (Node* node = row.first_child(); node; node = node->next_sibling()) {
    if (!is_cell(*node)) continue;
    auto& cell = static_cast<Element&>(*node);
    const std::size_t first = walk.place(cell);
    found.push_back({&cell, first, walk.next()});
  }
}

}  // namespace

bool is_cell(const Node& node) { return node.is(Tag::Td) || node.is(Tag::Th); }

void ColumnWalk::begin_row() {
  for (Column& column : columns_) column.rows_left = std::max(column.rows_left - 1, 0);
  next_ = 0;
}

std::size_t ColumnWalk::place(const Element& cell) {
  constexpr int to_the_end = 1 << 20;
  while (next_ < columns_.size() && columns_[next_].rows_left > 0) ++next_;
  const int rows = span(cell, dom::names::rowspan, 0, most_rows),
            width = span(cell, dom::names::colspan, 1, most_columns);
  const std::size_t first = next_;
  columns_.resize(std::max(columns_.size(), first + std::size_t(width)));
  for (int i = 0; i < width; ++i) columns_[next_++] = {&cell, rows == 0 ? to_the_end : rows};
  return first;
}

std::vector<PlacedCell> placed_cells(const Element& table) {
  std::vector<PlacedCell> found;
  ColumnWalk outside;  // rows that stand in no section
  for (const Node* part = table.first_child(); part; part = part->next_sibling()) {
    if (part->is(Tag::Tr)) place_row(outside, *part, found);
    if (!is_section(*part)) continue;
    outside = {};
    ColumnWalk walk;
    for (const Node* row = part->first_child(); row; row = row->next_sibling())
      if (row->is(Tag::Tr)) place_row(walk, *row, found);
  }
  return found;
}

std::vector<PlacedCell> placed_columns(const Element& table) {
  std::vector<PlacedCell> found;
  std::size_t next = 0;
  const auto place = [&](Node& node) {
    auto& column = static_cast<Element&>(node);
    const std::size_t behind = next + std::size_t(span(column, dom::Name(u"span"), 1, most_columns));
    found.push_back({&column, next, behind});
    next = behind;
  };
  for (Node* part = table.first_child(); part; part = part->next_sibling()) {
    if (part->is(Tag::Col)) place(*part);
    if (!part->is(Tag::Colgroup)) continue;
    const std::size_t before = found.size();
    for (Node* node = part->first_child(); node; node = node->next_sibling())
      if (node->is(Tag::Col)) place(*node);
    if (found.size() == before) place(*part);
  }
  return found;
}

}  // namespace tvx::editing
