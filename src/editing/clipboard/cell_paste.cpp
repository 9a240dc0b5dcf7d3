#include "tvx/editing/clipboard/cell_paste.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/tables/table_edit.h"
#include "tvx/editing/tables/table_removal.h"
#include "tvx/editing/tables/table_spans.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/caret.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

void fill_cell(Element& target, Element& source) {
  dom::clear(target);
  insert_all({Ref<Node>(target), {}}, children_of(source));
  for (const dom::Name kept : {dom::names::style, dom::names::align, dom::names::bgcolor}) {
    const std::u16string* value = source.attribute(kept);
    if (value && !target.has_attribute(kept)) dom::set_attribute(target, kept, *value);
  }
  if (!has_visible_child(target)) append_line_break(target);
}

/// The cell at which the selection stands, or where its cells begin.
Element* first_target(Editor& editor) {
  const dom::Range range = editor.selection().range();
  if (!range.start || editor.selection().type() != SelectionType::Text) return nullptr;
  Element* first = cell_around(range.start.node);
  Element* last = cell_around(range.end.node);
  if (!first || !last) return nullptr;
  // Of nested tables the one that holds all of the selection.
  while (first && table_of(*first) && !dom::is_inclusive_ancestor(*table_of(*first), *range.end.node))
    first = cell_around(table_of(*first)->parent());
  if (!first || !table_of(*first)) return nullptr;
  while (last && table_of(*last) != table_of(*first))
    last = table_of(*last) ? cell_around(table_of(*last)->parent()) : nullptr;
  if (!last) return nullptr;
  const TableGrid grid(*table_of(*first));
  const GridPart part = grid.part_between(*first, *last);
  const GridCell* cell = grid.at(part.top, part.left);
  return cell ? cell->cell : first;
}

bool is_within(const GridCell& cell, const GridPart& part) {
  return cell.row >= part.top && cell.column >= part.left && cell.row + cell.height <= part.bottom &&
         cell.column + cell.width <= part.right;
}

/// Cells that reach over several of those that come, and over nothing else, become as many.
void split_cells_in(Element& table, const GridPart& part) {
  std::vector<Ref<Element>> wide;
  const TableGrid grid(table);
  for (const GridCell& cell : grid.cells())
    if ((cell.height > 1 || cell.width > 1) && is_within(cell, part) && is_editable(*cell.cell))
      wide.emplace_back(cell.cell);
  for (const Ref<Element>& cell : wide) split_cell(*cell);
}

/// The cells of a table that others are pasted into.
class Targets {
 public:
  explicit Targets(Element& table) : table_(table), grid_(std::in_place, table) {}

  /// The cell for one that fills this part: it reaches as far where no other is cut by that.
  Element* cell_for(const GridPart& part) {
    const GridCell* first = grid_->at(part.top, part.left);
    if (!first) return nullptr;
    const Ref<Element> target(first->cell);
    if ((part.bottom - part.top > 1 || part.right - part.left > 1) && can_be_one(part)) join(*target, part);
    return target.get();
  }
  /// Rows and columns in which no cell begins any more go.
  void finish() {
    if (joined_) close_up(table_);
  }

 private:
  bool can_be_one(const GridPart& part) const {
    return is_filled(*grid_, part) && std::ranges::all_of(grid_->cells_in(part), [&](Element* cell) {
             return is_within(*grid_->of(*cell), part) && is_editable(*cell);
           });
  }
  void join(Element& target, const GridPart& part) {
    for (Element* cell : grid_->cells_in(part))
      if (cell != &target) dom::remove(*cell);
    set_span(target, dom::names::rowspan, part.bottom - part.top);
    set_span(target, dom::names::colspan, part.right - part.left);
    grid_.emplace(table_);
    joined_ = true;
  }

  Element& table_;
  std::optional<TableGrid> grid_;
  bool joined_ = false;
};

}  // namespace

Element* only_table(const Node& content) {
  Element* only = nullptr;
  for (Node* node = content.first_child(); node; node = node->next_sibling()) {
    if (is_filling(*node)) continue;
    if (only || !node->is(Tag::Table)) return nullptr;
    only = static_cast<Element*>(node);
  }
  return only;
}

void unwrap_single_cell(const Ref<dom::DocumentFragment>& content) {
  Element* table = only_table(*content);
  if (!table) return;
  const TableGrid grid(*table);
  if (grid.cells().size() != 1) return;
  const Ref<Element> held(table), cell(grid.cells()[0].cell);
  dom::clear(*content);
  insert_all({Ref<Node>(content), {}}, children_of(*cell));
  // The cell's own white space is its source's layout.
  while (content->last_child() && is_filling(*content->last_child())) dom::remove(*content->last_child());
  while (content->first_child() && is_filling(*content->first_child())) dom::remove(*content->first_child());
}

bool paste_into_cells(Editor& editor, const Ref<dom::DocumentFragment>& content) {
  Element* source = only_table(*content);
  Element* first = source ? first_target(editor) : nullptr;
  if (!first) return false;
  const TableGrid from(*source);
  if (from.cells().size() < 2) return false;
  const Ref<Element> table(table_of(*first));
  const GridCell start = *TableGrid(*table).of(*first);
  grow_table(*table, start.row + from.rows(), start.column + from.columns());
  split_cells_in(*table, {start.row, start.column, start.row + from.rows(), start.column + from.columns()});
  Targets targets(*table);
  std::vector<const Element*> filled;
  Ref<Element> last;
  for (const GridCell& cell : from.cells()) {
    const std::size_t row = start.row + cell.row, column = start.column + cell.column;
    Element* target = targets.cell_for({row, column, row + cell.height, column + cell.width});
    if (!target || !is_editable(*target)) continue;
    // A cell that reaches out of what comes takes the first that comes to it.
    if (std::find(filled.begin(), filled.end(), target) != filled.end()) continue;
    fill_cell(*target, *cell.cell);
    filled.push_back(target);
    last = Ref<Element>(target);
  }
  targets.finish();
  if (last) editor.selection().collapse(normalized_caret_place({last.get(), dom::length_of(*last)}));
  return true;
}

}  // namespace tvx::editing
