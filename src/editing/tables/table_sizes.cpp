#include "tvx/editing/tables/table_sizes.h"

#include <algorithm>

#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tables/table_columns.h"
#include "tvx/editing/tables/written_width.h"

namespace tvx::editing {

using dom::Element;
using dom::Tag;

namespace {

/// What happens on one side of the edge.
struct Side {
  PlacedCell model;
  std::optional<int> width;  // what cells like the model get
  int growth = 0;
  int table_width = 0;
};

bool is_like(const PlacedCell& cell, const PlacedCell& model) {
  return cell.first == model.first && cell.behind == model.behind;
}

/// A width in percent grows by as much of the table as the edge is moved; one in pixels is the one measured,
/// or grows where the element fills other columns than the one measured.
void size(const PlacedCell& placed, const Side& side, bool names_it) {
  WrittenWidth width(*placed.cell);
  const auto now = width.now();
  if (now && now->in_percent()) {
    if (side.table_width > 0) width.set_percent(now->number + 100.0 * side.growth / side.table_width);
  } else if (is_like(placed, side.model)) {
    if (side.width && (now || names_it)) width.set_pixels(*side.width);
  } else if (now && now->in_pixels()) {
    width.set_pixels(int(now->number) + side.growth);
  }
}

void size_all(const std::vector<PlacedCell>& cells, const Side& before, const Side& after, bool names_it) {
  const std::size_t edge = before.model.behind;
  for (const PlacedCell& placed : cells) {
    if (!is_editable(*placed.cell)) continue;
    if (placed.behind == edge) size(placed, before, names_it);
    if (placed.first == edge) size(placed, after, names_it);
  }
}

}  // namespace

bool size_columns(Editor& editor, const ColumnEdge& edge) {
  if (!edge.before || !edge.after || !is_editable(*edge.before)) return false;
  const Element* table = dom::enclosing(*edge.before, Tag::Table);
  if (!table) return false;
  const std::vector<PlacedCell> cells = placed_cells(*table);
  const auto placed = [&](const Element* cell) {
    return std::find_if(cells.begin(), cells.end(), [&](const PlacedCell& one) { return one.cell == cell; });
  };
  const auto before = placed(edge.before), after = placed(edge.after);
  if (before == cells.end() || after == cells.end() || before->behind != after->first) return false;
  const dom::UndoStep step(editor.document().journal(), u"Size columns");
  const Side left{*before, edge.before_width, edge.shift, edge.table_width},
      right{*after, edge.after_width, -edge.shift, edge.table_width};
  size_all(cells, left, right, true);
  size_all(placed_columns(*table), left, right, false);
  return true;
}

dom::Element* cell_behind(const Element& cell) {
  const Element* table = dom::enclosing(cell, Tag::Table);
  if (!table) return nullptr;
  const std::vector<PlacedCell> cells = placed_cells(*table);
  const auto here =
      std::find_if(cells.begin(), cells.end(), [&](const PlacedCell& one) { return one.cell == &cell; });
  if (here == cells.end()) return nullptr;
  Element* found = nullptr;
  for (const PlacedCell& one : cells) {
    if (one.first != here->behind) continue;
    if (one.cell->parent() == cell.parent()) return one.cell;
    if (!found) found = one.cell;
  }
  return found;
}

}  // namespace tvx::editing
