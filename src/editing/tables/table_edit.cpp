#include "tvx/editing/tables/table_edit.h"

#include <algorithm>
#include <optional>

#include "tvx/dom/document.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tables/grid_memo.h"
#include "tvx/editing/tables/table_columns.h"
#include "tvx/editing/tables/table_removal.h"
#include "tvx/editing/tables/table_spans.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// An empty cell of that kind, aligned and framed as a neighbour is; not of its size.
Ref<Element> new_cell(dom::Document& document, Tag tag, const Element* neighbour) {
  const Ref<Element> cell = document.create_element(tag);
  if (neighbour) {
    for (const dom::Name kept :
         {dom::names::align, dom::names::valign, dom::names::class_, dom::names::style})
      if (const std::u16string* value = neighbour->attribute(kept)) dom::set_attribute(*cell, kept, *value);
    for (const std::u16string_view size : {u"width", u"height"}) dom::style::remove_inline_value(*cell, size);
  }
  append_line_break(*cell);
  return cell;
}
Ref<Element> cell_like(dom::Document& document, const Element* neighbour) {
  return new_cell(document, neighbour ? neighbour->tag() : Tag::Td, neighbour);
}

bool is_header_row(const TableGrid& grid, std::size_t row) {
  if (grid.row(row).parent()->is(Tag::Thead)) return true;
  for (std::size_t column = 0; column < grid.columns(); ++column)
    if (const GridCell* cell = grid.at(row, column); !cell || !cell->cell->is(Tag::Th)) return false;
  return grid.columns() > 0;
}

/// Below a row of headers come ordinary cells, or what the row after it has.
Tag kind_below(const TableGrid& grid, std::size_t row, std::size_t column) {
  const GridCell* above = grid.at(row, column);
  if (!is_header_row(grid, row)) return above ? above->cell->tag() : Tag::Td;
  const GridCell* below =
      row + 1 < grid.rows() && !is_header_row(grid, row + 1) ? grid.at(row + 1, column) : nullptr;
  return below ? below->cell->tag() : Tag::Td;
}

/// Where a row below that one goes: a head has one row for its own, further ones are the body's.
void put_row_below(const TableGrid& grid, std::size_t row, const Ref<Element>& created) {
  Element& neighbour = grid.row(row);
  Node& section = *neighbour.parent();
  const bool ends_section = row + 1 >= grid.rows() || grid.row(row + 1).parent() != &section;
  if (!section.is(Tag::Thead) || !ends_section)
    return dom::insert(section, created, neighbour.next_sibling());
  if (row + 1 < grid.rows() && grid.row(row + 1).parent()->is(Tag::Tbody))
    return dom::insert(*grid.row(row + 1).parent(), created, &grid.row(row + 1));
  const Ref<Element> body = neighbour.document()->create_element(Tag::Tbody);
  dom::insert(*body, created);
  dom::insert(*section.parent(), body, section.next_sibling());
}

/// Before the first cell of the row that begins at the column or after it.
void put_cell(const TableGrid& grid, std::size_t row, std::size_t column, const Ref<Element>& cell) {
  const GridCell* next = grid.first_in_row(row, column);
  dom::insert(grid.row(row), cell, next ? next->cell : nullptr);
}

void insert_column_element(Element& table, std::size_t at) {
  for (const PlacedCell& column : placed_columns(table)) {
    if (!column.cell->is(Tag::Col) || at < column.first || at > column.behind) continue;
    if (column.behind - column.first > 1) {
      set_span(*column.cell, dom::Name(u"span"), column.behind - column.first + 1);
    } else {
      Node* before = at == column.first ? column.cell : column.cell->next_sibling();
      dom::insert(*column.cell->parent(), table.document()->create_element(Tag::Col), before);
    }
    return;
  }
}

bool is_nearly_empty(const Element& cell) { return is_empty_line(cell) || !cell.has_children(); }

/// What is in `from` comes after what is in `to`, on a line of its own.
void append_content(Element& to, Element& from) {
  if (is_nearly_empty(from)) return;
  if (is_nearly_empty(to)) {
    dom::clear(to);
  } else if (!is_block_piece(*to.last_child()) && !is_block_piece(*from.first_child()) &&
             !to.last_child()->is(Tag::Br)) {
    dom::insert(to, to.document()->create_element(Tag::Br));
  }
  move_run_preserving_ranges(children_of(from), to, nullptr);
}

}  // namespace

void empty_cell(Element& cell) {
  dom::clear(cell);
  append_line_break(cell);
}

Ref<Element> insert_row(Element& cell, RowSide side) {
  Element* table = table_of(cell);
  if (!table) return {};
  const TableGrid grid(*table);
  const GridCell* place = grid.of(cell);
  if (!place) return {};
  const bool below = side == RowSide::Below;
  const std::size_t beside = below ? place->row + place->height - 1 : place->row;
  const Ref<Element> row = table->document()->create_element(Tag::Tr);
  Ref<Element> result;
  for (std::size_t column = 0; column < grid.columns();) {
    const GridCell* here = grid.at(beside, column);
    const bool goes_over = here && (below ? here->row + here->height > beside + 1 : here->row < beside);
    if (goes_over) {
      set_span(*here->cell, dom::names::rowspan, here->height + 1);
      column += here->width;
      continue;
    }
    const Element* neighbour = here ? here->cell : nullptr;
    const Ref<Element> created =
        below ? new_cell(*table->document(), kind_below(grid, beside, column), neighbour)
              : cell_like(*table->document(), neighbour);
    dom::insert(*row, created);
    if (column >= place->column && !result) result = created;
    ++column;
  }
  if (below)
    put_row_below(grid, beside, row);
  else
    dom::insert(*grid.row(beside).parent(), row, &grid.row(beside));
  return result;
}

Ref<Element> insert_column(Element& cell, ColumnSide side) {
  Element* table = table_of(cell);
  if (!table) return {};
  const TableGrid grid(*table);
  const GridCell* place = grid.of(cell);
  if (!place) return {};
  const bool right = side == ColumnSide::Right;
  const std::size_t at = right ? place->column + place->width : place->column;
  const std::size_t beside = right ? at - 1 : at;
  Ref<Element> result;
  for (std::size_t row = 0; row < grid.rows();) {
    const GridCell* here = grid.at(row, beside);
    const bool goes_over = here && here->column < at && here->column + here->width > at;
    if (goes_over) {
      set_span(*here->cell, dom::names::colspan, here->width + 1);
      row += here->height;
      continue;
    }
    const Ref<Element> created = cell_like(*table->document(), here ? here->cell : nullptr);
    put_cell(grid, row, at, created);
    if (row >= place->row && !result) result = created;
    ++row;
  }
  insert_column_element(*table, at);
  return result;
}

Ref<Element> merge_cells(const TableGrid& grid, const GridPart& part) {
  const std::vector<Element*> cells = grid.cells_in(part);
  if (cells.empty()) return {};
  // The one at the top left holds all; it need not come first in the text.
  const GridCell* first = grid.at(part.top, part.left);
  const Ref<Element> held(first ? first->cell : cells.front());
  for (Element* cell : cells) {
    if (cell == held.get()) continue;
    const Ref<Element> gone(cell);
    append_content(*held, *cell);
    dom::remove(*cell);
  }
  set_span(*held, dom::names::rowspan, part.bottom - part.top);
  set_span(*held, dom::names::colspan, part.right - part.left);
  close_up(*table_of(*held));
  return held;
}

namespace {

/// The cell with what is below it in its section; nothing where there is none, or a hole.
std::optional<GridPart> part_with_below(const TableGrid& grid, const Element& cell) {
  const GridCell* place = grid.of(cell);
  if (!place) return {};
  const std::size_t below = place->row + place->height;
  if (below >= grid.rows() || grid.row(below).parent() != grid.row(place->row).parent()) return {};
  const GridPart part =
      grid.whole_cells({place->row, place->column, below + 1, place->column + place->width});
  return is_filled(grid, part) ? std::optional(part) : std::nullopt;
}

}  // namespace

bool is_filled(const TableGrid& grid, const GridPart& part) {
  for (std::size_t row = part.top; row < part.bottom; ++row) {
    if (grid.row(row).parent() != grid.row(part.top).parent()) return false;
    for (std::size_t column = part.left; column < part.right; ++column)
      if (!grid.at(row, column)) return false;
  }
  return true;
}

bool can_merge_down(const Element& cell) {
  const Element* table = table_of(cell);
  return table && part_with_below(*grid_of(*table), cell);
}

Ref<Element> merge_down(Element& cell) {
  Element* table = table_of(cell);
  if (!table) return {};
  const TableGrid grid(*table);
  const std::optional<GridPart> part = part_with_below(grid, cell);
  return part ? merge_cells(grid, *part) : Ref<Element>();
}

void split_cell(Element& cell) {
  Element* table = table_of(cell);
  if (!table) return;
  const TableGrid grid(*table);
  const GridCell* place = grid.of(cell);
  if (!place) return;
  if (place->height == 1 && place->width == 1) {
    // Beside it there is one column more; all other cells in its column reach over both.
    for (std::size_t row = 0; row < grid.rows();) {
      const GridCell* here = grid.at(row, place->column);
      if (here && here->cell != &cell)
        set_span(*here->cell, dom::names::colspan, here->width + 1);
      else if (!here)
        put_cell(grid, row, place->column, cell_like(*table->document(), nullptr));
      row += here ? here->height : 1;
    }
    put_cell(grid, place->row, place->column + 1, cell_like(*table->document(), &cell));
    insert_column_element(*table, place->column + 1);
    return;
  }
  for (std::size_t row = place->row; row < place->row + place->height; ++row) {
    for (std::size_t column = place->column; column < place->column + place->width; ++column)
      if (row != place->row || column != place->column)
        put_cell(grid, row, place->column + place->width, cell_like(*table->document(), &cell));
  }
  set_span(cell, dom::names::rowspan, 1);
  set_span(cell, dom::names::colspan, 1);
}

bool has_header_row(const Element& table) {
  const auto grid = grid_of(table);
  if (grid->rows() == 0) return false;
  if (grid->row(0).parent()->is(Tag::Thead)) return true;
  bool any = false;
  for (std::size_t column = 0; column < grid->columns(); ++column) {
    const GridCell* cell = grid->at(0, column);
    if (cell && !cell->cell->is(Tag::Th)) return false;
    any = any || cell;
  }
  return any;
}

namespace {

void name_cells(Element& row, Tag tag) {
  NodeList cells;
  for (Node* node = row.first_child(); node; node = node->next_sibling())
    if (is_cell(*node)) cells.emplace_back(node);
  for (const Ref<Node>& cell : cells) set_tag_name(static_cast<Element&>(*cell), dom::Name(tag));
}

void make_head(Element& table, const TableGrid& grid) {
  const Ref<Element> row(grid.row(0));
  bool reaches_below = false;
  for (std::size_t column = 0; column < grid.columns(); ++column)
    if (const GridCell* cell = grid.at(0, column)) reaches_below = reaches_below || cell->height > 1;
  name_cells(*row, Tag::Th);
  // A cell can't reach from the head into the body.
  if (reaches_below || row->parent()->is(Tag::Thead)) return;
  Node* first = row->parent() == &table ? static_cast<Node*>(row.get()) : row->parent();
  const Ref<Element> head = table.document()->create_element(Tag::Thead);
  const Ref<Node> section(row->parent());
  dom::insert(table, head, first);
  move_preserving_ranges(row, *head, nullptr);
  if (section.get() != &table && !dom::first_child_element(*section)) dom::remove(*section);
}

void dissolve_head(Element& table, const TableGrid& grid) {
  const Ref<Node> section(grid.row(0).parent());
  if (!section->is(Tag::Thead)) return name_cells(grid.row(0), Tag::Td);
  NodeList rows;
  for (Node* row = section->first_child(); row; row = row->next_sibling())
    if (row->is(Tag::Tr)) rows.emplace_back(row);
  Node* body = section->next_sibling();
  while (body && !body->is(Tag::Tbody)) body = body->next_sibling();
  const Ref<Node> target(body ? Ref<Node>(body) : Ref<Node>(table.document()->create_element(Tag::Tbody)));
  if (!body) dom::insert(table, target, section->next_sibling());
  for (const Ref<Node>& row : rows) name_cells(static_cast<Element&>(*row), Tag::Td);
  move_run_preserving_ranges(rows, *target, target->first_child());
  dom::remove(*section);
}

}  // namespace

void set_header_row(Element& table, bool on) {
  const TableGrid grid(table);
  if (grid.rows() == 0 || has_header_row(table) == on) return;
  if (on)
    make_head(table, grid);
  else
    dissolve_head(table, grid);
}

void grow_table(Element& table, std::size_t rows, std::size_t columns) {
  for (;;) {
    const TableGrid grid(table);
    if (grid.rows() == 0 || grid.rows() >= rows) break;
    const GridCell* last = nullptr;
    for (const GridCell& cell : grid.cells())
      if (cell.row + cell.height == grid.rows()) last = &cell;
    if (!last || !insert_row(*last->cell, RowSide::Below)) break;
  }
  const TableGrid grid(table);
  for (std::size_t row = 0; row < grid.rows(); ++row) {
    for (std::size_t column = 0; column < columns; ++column) {
      if (grid.at(row, column)) continue;
      const GridCell* before = column > 0 ? grid.at(row, std::min(column, grid.columns()) - 1) : nullptr;
      const GridCell* next = column < grid.columns() ? grid.first_in_row(row, column) : nullptr;
      dom::insert(grid.row(row), cell_like(*table.document(), before ? before->cell : nullptr),
                  next ? next->cell : nullptr);
    }
  }
}

}  // namespace tvx::editing
