#include "tvx/editing/tables/table_rows.h"

#include <vector>

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/tables/table_columns.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// Whose cells stand in the last row of a section.
std::vector<ColumnWalk::Column> columns_of(const Element& last_row) {
  ColumnWalk walk;
  for (const Node* row = last_row.parent()->first_child(); row; row = row->next_sibling()) {
    if (!row->is(Tag::Tr)) continue;
    walk.begin_row();
    for (const Node* node = row->first_child(); node; node = node->next_sibling())
      if (is_cell(*node)) walk.place(static_cast<const Element&>(*node));
    if (row == &last_row) break;
  }
  return walk.columns();
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

// After the last row, or in a body after the head.
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
  for (const ColumnWalk::Column& column : columns_of(last_row)) {
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
