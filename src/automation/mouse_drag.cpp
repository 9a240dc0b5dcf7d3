#include "tvx/automation/mouse_drag.h"

#include "tvx/automation/json.h"
#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/input/drags.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/editing/tables/table_columns.h"
#include "tvx/editing/tables/written_width.h"
#include "tvx/headless/view.h"

namespace tvx::automation {

namespace {

using browser::HTMLDocument;
using browser::MouseInput;
using dom::Element;

bool is_selected(HTMLDocument& document, const MouseInput& at) {
  const editing::Selection& selection = document.editor().selection();
  if (!at.element || selection.type() != editing::SelectionType::Text || selection.collapsed()) return false;
  const dom::Range range = selection.range();
  return compare(range.start, dom::after(*at.element)) < 0 &&
         compare(dom::before(*at.element), range.end) < 0;
}

/// In the fixed geometry an element begins at the left edge, at the top of its row.
void size_by_handle(HTMLDocument& document, Element& element, const MouseDrag& drag) {
  const int top =
      static_cast<int>(document.tree().source_index(element)) * headless::FixedGeometry::row_height;
  editing::ControlBox box;
  if (contains(drag.handle, u"e")) box.width = drag.to.x;
  if (contains(drag.handle, u"s")) box.height = drag.to.y - top;
  browser::size_control(document, element, box);
}

std::optional<int> known_pixels(Element& cell) {
  const auto width = editing::WrittenWidth(cell).now();
  if (!width || !width->in_pixels()) return {};
  return static_cast<int>(width->number);
}

/// In the fixed geometry a cell begins at the left edge. What it gains its neighbour loses, as far as both
/// have told how wide they are.
editing::ColumnEdge column_edge(Element& cell, Element& next, int width) {
  editing::ColumnEdge edge{.before = &cell, .after = &next, .before_width = width, .after_width = {}};
  const auto before = known_pixels(cell), after = known_pixels(next);
  if (before) edge.shift = width - *before;
  if (before && after) edge.after_width = *after - edge.shift;
  return edge;
}

bool drag_column(HTMLDocument& document, MouseDrag drag) {
  Element* cell = drag.from.element.get();
  while (cell && !editing::is_cell(*cell)) cell = cell->parent_element();
  Element* next = cell ? editing::cell_behind(*cell) : nullptr;
  if (!next) throw RuntimeError(errors::invalid_call, u"No column stands after that cell");
  drag.from.element = cell;
  drag.from.held = true;
  document.mouse_press(drag.from);
  if (!document.drag_start(drag.from)) return false;
  browser::size_columns(document, column_edge(*cell, *next, drag.to.x));
  return true;
}

/// A length in the inline style; 0 where it has none in pixels.
int pixels(const Element& element, std::u16string_view property) {
  const std::u16string value = dom::style::inline_value(element, property);
  std::size_t end = value.starts_with(u"-") ? 1 : 0;
  while (end < value.size() && is_ascii_digit(value[end])) ++end;
  return static_cast<int>(parse_integer(value.substr(0, end)).value_or(0));
}

}  // namespace

bool run_drag(HTMLDocument& document, const MouseDrag& drag) {
  if (drag.handle == u"column") return drag_column(document, drag);
  MouseInput press = drag.from;
  press.held = is_selected(document, press);
  document.mouse_press(press);
  if (!document.drag_start(drag.from)) return false;
  const dom::Ref<Element> control(document.editor().selection().control());
  if (!drag.handle.empty()) {
    if (control) size_by_handle(document, *control, drag);
  } else if (control && editing::is_movable(document.editor(), *control)) {
    browser::place_control(document, *control, pixels(*control, u"left") + drag.to.x - drag.from.x,
                           pixels(*control, u"top") + drag.to.y - drag.from.y);
  } else if (drag.to.place) {
    browser::drop_selection(document, *drag.to.place,
                            drag.to.control ? browser::DropEffect::Copy : browser::DropEffect::Move);
  }
  return true;
}

}  // namespace tvx::automation
