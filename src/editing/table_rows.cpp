#include "editing/table_rows.h"

#include <algorithm>
#include <vector>

#include "base/strings.h"
#include "dom/mutation.h"
#include "dom/tree.h"
#include "editing/surgery.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

bool is_cell(const Node& node) { return node.is(Tag::Td) || node.is(Tag::Th); }

/// A cell's span, with the standard's bounds; none written or no number: 1.
int span(const Element& cell, dom::Name name, int least, int most) {
  const auto number = parse_integer(cell.attribute_or_empty(name));
  if (!number || *number < least) return 1;
  return int(std::min<std::int64_t>(*number, most));
}

/// A column as the rows above leave it: the cell that stands in it, and how many rows further down that
/// reaches.
struct Column {
  const Element* cell = nullptr;
  int rows_left = 0;
};

/// HTML standard, section 4.9.12 "forming a table", for one section: whose cells stand in its last row.
std::vector<Column> columns_of(const Element& last_row) {
  constexpr int to_the_end = 1 << 20;
  std::vector<Column> columns;
  for (const Node* row = last_row.parent()->first_child(); row; row = row->next_sibling()) {
    if (!row->is(Tag::Tr)) continue;
    for (Column& column : columns) column.rows_left = std::max(column.rows_left - 1, 0);
    std::size_t at = 0;
    for (const Node* node = row->first_child(); node; node = node->next_sibling()) {
      if (!is_cell(*node)) continue;
      const auto& cell = static_cast<const Element&>(*node);
      while (at < columns.size() && columns[at].rows_left > 0) ++at;
      const int rows = span(cell, dom::names::rowspan, 0, 65534),
                width = span(cell, dom::names::colspan, 1, 1000);
      columns.resize(std::max(columns.size(), at + std::size_t(width)));
      for (int i = 0; i < width; ++i) columns[at++] = {&cell, rows == 0 ? to_the_end : rows};
    }
    if (row == &last_row) break;
  }
  return columns;
}

Ref<Element> copy_of(const Element& element, Tag tag) {
  dom::Document& document = *element.document();
  Ref<Element> copy = document.create_element(tag);
  for (const dom::Attribute& attribute : element.attributes()) {
    if (attribute.name != dom::names::id && attribute.name != dom::names::rowspan)
      dom::set_attribute(*copy, attribute.name, attribute.value, attribute.name_space);
  }
  return copy;
}

// Behind the last row, or in a body behind the head.
void place_row(const Ref<Element>& row, Element& last_row) {
  Node& section = *last_row.parent();
  if (!section.is(Tag::Thead)) return dom::insert(section, row, last_row.next_sibling());
  const Ref<Element> body = last_row.document()->create_element(Tag::Tbody);
  dom::insert(*body, row);
  dom::insert(*section.parent(), body, section.next_sibling());
}

}  // namespace

Ref<Element> add_row_like(Element& last_row) {
  const bool in_head = last_row.parent()->is(Tag::Thead);
  const Ref<Element> row = copy_of(last_row, Tag::Tr);
  Ref<Element> first;
  const Element* before = nullptr;
  for (const Column& column : columns_of(last_row)) {
    // What reaches below its section is cut there for a body of its own, and covers a further row of the
    // same.
    const bool is_covered = column.rows_left > 1 && !in_head;
    if (!column.cell || is_covered || column.cell == before) continue;
    before = column.cell;
    const Ref<Element> cell = copy_of(*column.cell, in_head ? Tag::Td : column.cell->tag());
    append_line_break(*cell);
    dom::insert(*row, cell);
    if (!first) first = cell;
  }
  if (first) place_row(row, last_row);
  return first;
}

}  // namespace tvx::editing
