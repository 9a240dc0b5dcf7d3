#include "tvx/browser/input/drag_session.h"

#include <utility>

#include "tvx/browser/html_document.h"
#include "tvx/browser/input/display.h"
#include "tvx/browser/input/drags.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/positions.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"

namespace tvx::browser {

using dom::Element;

namespace {

MouseInput mouse_of(const ViewDrag& drag, Element* element) {
  MouseInput input;
  input.x = drag.x;
  input.y = drag.y;
  input.shift = drag.shift;
  input.control = drag.control;
  input.alt = drag.alt;
  input.element = element;
  return input;
}

/// The document has the last word on what is selected.
bool may_carry(HTMLDocument& document, const ViewDrag& drag, const Element* element) {
  const editing::Selection& selection = document.editor().selection();
  if (drag.type == ViewDrag::Type::Column) return element && editing::is_editable(*element);
  if (element) return selection.control() == element;
  return selection.type() == editing::SelectionType::Text && !selection.collapsed();
}

editing::ColumnEdge column_edge(const Mirror& mirror, Element& before, const ViewDrag::Edge& edge) {
  return {.before = &before,
          .after = dom::as<Element>(mirror.node(edge.after)),
          .before_width = edge.width,
          .after_width = edge.after_width,
          .shift = edge.shift,
          .table_width = edge.table_width};
}

}  // namespace

void DragSession::show(std::shared_ptr<HTMLDocument> document) {
  document_ = std::move(document);
  end();
}

void DragSession::handle(const ViewDrag& drag) {
  if (!document_) return;
  if (drag.phase == ViewDrag::Phase::Begin) return start(drag);
  if (std::exchange(carried_.active, false)) drop(drag);
}

void DragSession::start(const ViewDrag& drag) {
  const auto document = document_;
  Element* const element = dom::as<Element>(display_.mirror().node(drag.node));
  const bool fits = may_carry(*document, drag, element);
  const MouseInput input = mouse_of(drag, element);
  carried_ = {true, element};
  if (fits && display_.editable() && document->drag_start(input)) return;
  if (document != document_) return;
  end();
  display_.cancel_drag();
}

bool DragSession::cancel() {
  if (!std::exchange(carried_, {}).active) return false;
  display_.cancel_drag();
  return true;
}

void DragSession::drop(const ViewDrag& drag) {
  const auto document = document_;
  const dom::Ref<Element> element = std::exchange(carried_.element, {});
  const bool stands = element && dom::is_connected(*element);
  switch (drag.type) {
    case ViewDrag::Type::Size:
      if (stands)
        size_control(*document, *element, {drag.width, drag.height, drag.left, drag.top, drag.width_was});
      break;
    case ViewDrag::Type::Column:
      if (stands && drag.edge) size_columns(*document, column_edge(display_.mirror(), *element, *drag.edge));
      break;
    case ViewDrag::Type::Move:
      if (stands && drag.left && drag.top) place_control(*document, *element, *drag.left, *drag.top);
      break;
    case ViewDrag::Type::Content:
      if (const auto place = nearest_boundary(display_.mirror(), drag.place))
        drop_selection(*document, *place, drag.control ? DropEffect::Copy : DropEffect::Move);
      break;
  }
  display_.reveal(false);
  display_.schedule_flush();
}

}  // namespace tvx::browser
