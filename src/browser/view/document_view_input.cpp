#include <algorithm>
#include <utility>

#include "tvx/browser/input/drags.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"

/// What comes up from the view, and what it does to the document.
namespace tvx::browser {

using dom::Boundary;
using dom::Element;
using dom::Node;

namespace {

/// What the page's own selection amounts to.
ViewSelection stretch_of(const ViewPlace& anchor, const ViewPlace& focus) {
  ViewSelection selection;
  selection.type = ViewSelection::Type::Text;
  selection.anchor = anchor;
  selection.focus = focus;
  return selection;
}

}  // namespace

// --- places of the view ---

/// A place as the view named it; none if the view was showing another tree there.
std::optional<Boundary> DocumentView::boundary(const std::optional<ViewPlace>& place) const {
  if (!place || mirror_->last_change(place->node) > seen_) return {};
  return nearest_boundary(place);
}

std::optional<Boundary> DocumentView::nearest_boundary(const std::optional<ViewPlace>& place) const {
  Node* node = place ? mirror_->node(place->node) : nullptr;
  if (!node || !dom::is_connected(*node)) return {};
  return Boundary{node, std::min<Offset>(place->offset, dom::length_of(*node))};
}

MouseInput DocumentView::mouse_input(const ViewMouse& mouse) const {
  MouseInput input;
  input.button = mouse.button;
  input.x = mouse.x;
  input.y = mouse.y;
  input.shift = mouse.shift;
  input.control = mouse.control;
  input.alt = mouse.alt;
  Node* hit = mirror_->node(mouse.element);
  input.element = hit && hit->is_element() ? static_cast<Element*>(hit) : nullptr;
  input.held = mouse.held;
  if (Node* edge = mirror_->node(mouse.edge)) input.whole = dom::as<Element>(edge);
  const bool stretch = mouse.anchor && mouse.focus && !(*mouse.anchor == *mouse.focus);
  if (stretch) {
    input.anchor = nearest_boundary(mouse.anchor);
    input.place = nearest_boundary(mouse.focus);
  } else {
    input.place = nearest_boundary(mouse.place);
  }
  return input;
}

QuestionId DocumentView::ask(ViewQuestion question) {
  question.id = QuestionId(++last_question_);
  view_.ask(question);
  return question.id;
}

QuestionId DocumentView::ask_for_sign() { return ask({.type = ViewQuestion::Type::Sign}); }

// --- input, in its order ---

// The one door for what the user changes: all input comes through the queue, and this is after each item.
void DocumentView::handled() {
  if (const auto document = document_; document && std::exchange(input_changed_tree_, false))
    document->tell_user_change();
}

std::optional<QuestionId> DocumentView::handle_key(const ViewKey& key) {
  const auto document = document_;
  if (!document) return {};
  if (drag_.active && key.down && key.key.key == u"Escape") {
    cancel_drag();
    return {};
  }
  reveal_ = true;
  if (!key.down) {
    document->key_up(key.key);
    return {};
  }
  const KeyOutcome outcome = document->key_down(key.key);
  if (!outcome.ask || document != document_ || notice_) return {};
  flush();  // the view is asked about the tree as it is now
  const auto from = view_place(document->editor().selection().focus());
  if (!from) return {};
  open_ = {};
  open_.extend = outcome.extend;
  return ask(
      {.type = ViewQuestion::Type::Move, .move = *outcome.ask, .from = *from, .extend = outcome.extend});
}

void DocumentView::handle_text(const ViewText& input) {
  const auto document = document_;
  if (!document) return;
  reveal_ = true;
  input_composes_ = !input.composing.empty();
  if (input.replaced_length > 0) select_around_caret(*document, input.replaced_from, input.replaced_length);
  if (!input.text.empty()) document->input_text(input.text);
  if (document == document_) document->compose(input.composing, input.cursor);
  schedule_flush();
}

/// Units that an input method means to replace, counted from the caret or from what it composes.
void DocumentView::select_around_caret(HTMLDocument& document, std::int32_t from, std::uint32_t length) {
  document.compose({}, 0);
  const Boundary caret = document.editor().selection().focus();
  const auto* text = dom::as<dom::Text>(caret.node);
  const std::int64_t start = static_cast<std::int64_t>(caret.offset) + from;
  if (!text || start < 0 || static_cast<Offset>(start) + length > text->length()) return;
  const auto at = static_cast<Offset>(start);
  document.select([&](editing::Selection& selection) {
    selection.set({caret.node, at}, {caret.node, at + length});
  });
}

std::optional<QuestionId> DocumentView::handle_mouse(const ViewTicket&, const std::vector<ViewMouse>& told) {
  if (!document_ || told.empty()) return {};
  open_ = {};
  open_.mouse = told;
  return deliver_mouse();
}

/// Acts on what the page told of a mouse event, or asks again about the same point where the tree has
/// changed under the answer.
std::optional<QuestionId> DocumentView::deliver_mouse() {
  const ViewMouse& first = open_.mouse.front();
  seen_ = first.seen;
  const bool stale = first.place && !boundary(first.place);
  if (stale && open_.tries++ < 2 && !notice_) {
    flush();
    return ask({.type = ViewQuestion::Type::Hit, .x = first.x, .y = first.y});
  }
  const auto document = document_;
  for (const ViewMouse& mouse : std::exchange(open_.mouse, {})) {
    if (document != document_) break;
    mouse_seen_ = std::max(mouse_seen_, mouse.number);
    const MouseInput input = mouse_input(mouse);
    last_hit_ = {mouse.x, mouse.y, input.element};
    if (mouse.anchor && mouse.focus) {
      shown_selection_ = stretch_of(*mouse.anchor, *mouse.focus);
    }
    switch (mouse.type) {
      case ViewMouse::Type::Press:
        held_ = mouse.held;
        drag_ = {};
        selection_unsure_ = true;  // the page has let go of what it showed
        document->mouse_press(input);
        break;
      case ViewMouse::Type::Release: deliver_release(*document, input); break;
      case ViewMouse::Type::Click: document->click(input); break;
      case ViewMouse::Type::DoubleClick: document->double_click(input); break;
    }
  }
  input_changed_tree_ = false;  // a press edits nothing; what a menu did that it opened has been told of
  reveal_ = false;
  schedule_flush();
  return {};
}

/// What came too late changes nothing here; what it has drawn in the page goes.
void DocumentView::forget_mouse(const ViewMouse& mouse) {
  mouse_seen_ = std::max(mouse_seen_, mouse.number);
  selection_unsure_ = true;
  schedule_flush();
}

/// A drag in plain text has drawn a selection; a press on what is selected or on the edge of a column, with
/// no drag behind it, sets the caret now.
void DocumentView::deliver_release(HTMLDocument& document, const MouseInput& input) {
  drag_ = {};
  selection_unsure_ = true;  // the caret that the press has set may reach the page only now
  const bool held = std::exchange(held_, false);
  const editing::Selection& selection = document.editor().selection();
  if (!input.place) return;
  const bool drawn = input.anchor && selection.type() == editing::SelectionType::Text &&
                     (selection.anchor() != *input.anchor || selection.focus() != *input.place);
  if (drawn || (held && !input.anchor)) document.mouse_select(input);
}

// --- drags ---

void DocumentView::cancel_drag() {
  drag_ = {};
  view_.cancel_drag();
}

void DocumentView::handle_drag(const ViewDrag& drag) {
  if (!document_) return;
  seen_ = drag.seen;
  held_ = false;
  if (drag.phase == ViewDrag::Phase::Begin) return begin_drag(drag);
  if (std::exchange(drag_.active, false)) end_drag(drag);
}

void DocumentView::begin_drag(const ViewDrag& drag) {
  const auto document = document_;
  const editing::Selection& selection = document->editor().selection();
  Element* const element = dom::as<Element>(mirror_->node(drag.node));
  // The document has the last word on what is selected.
  const bool fits = drag.type == ViewDrag::Type::Column ? element && editing::is_editable(*element)
                    : element                           ? selection.control() == element
                              : selection.type() == editing::SelectionType::Text && !selection.collapsed();
  MouseInput input;
  input.x = drag.x;
  input.y = drag.y;
  input.shift = drag.shift;
  input.control = drag.control;
  input.alt = drag.alt;
  input.element = element;
  drag_ = {true, element};
  if (fits && mode_.editable && document->drag_start(input)) return;
  if (document == document_) cancel_drag();
}

void DocumentView::end_drag(const ViewDrag& drag) {
  const auto document = document_;
  const dom::Ref<Element> element = std::exchange(drag_.element, {});
  const bool stands = element && dom::is_connected(*element);
  switch (drag.type) {
    case ViewDrag::Type::Size:
      if (stands)
        size_control(*document, *element, {drag.width, drag.height, drag.left, drag.top, drag.width_was});
      break;
    case ViewDrag::Type::Column:
      if (stands && drag.edge) size_columns(*document, column_edge(*element, *drag.edge));
      break;
    case ViewDrag::Type::Move:
      if (stands && drag.left && drag.top) place_control(*document, *element, *drag.left, *drag.top);
      break;
    case ViewDrag::Type::Content:
      if (const auto place = nearest_boundary(drag.place))
        drop_selection(*document, *place, drag.control ? DropEffect::Copy : DropEffect::Move);
      break;
  }
  reveal_ = false;
  schedule_flush();
}

editing::ColumnEdge DocumentView::column_edge(Element& before, const ViewDrag::Edge& edge) const {
  return {.before = &before,
          .after = dom::as<Element>(mirror_->node(edge.after)),
          .before_width = edge.width,
          .after_width = edge.after_width,
          .shift = edge.shift,
          .table_width = edge.table_width};
}

std::optional<QuestionId> DocumentView::handle_drop(const ViewDrop& drop) {
  if (!document_ || notice_ || !mode_.editable) return {};
  flush();
  open_ = {};
  open_.drop = drop;
  return ask({.type = ViewQuestion::Type::Hit, .x = drop.x, .y = drop.y});
}

void DocumentView::handle_select(const ViewSelect& select) {
  if (!document_) return;
  seen_ = select.seen;
  const auto anchor = boundary(select.anchor), focus = boundary(select.focus);
  if (!anchor || !focus) return;
  shown_selection_ = stretch_of(select.anchor, select.focus);
  MouseInput input;
  input.anchor = anchor;
  input.place = focus;
  document_->mouse_select(input);
  reveal_ = false;
}

/// Where the view doesn't say in time what is under the mouse, the last known caret takes it.
void DocumentView::deliver_drop(const ViewDrop& drop, const std::optional<ViewPlace>& at) {
  const auto document = document_;
  if (!may_drop(drop) || document != document_) return;
  const Boundary place = nearest_boundary(at).value_or(document->editor().selection().focus());
  if (drop.way == ViewDrop::Way::MiddlePress)
    paste_at(*document, place, drop.data);
  else
    drop_data(*document, place, drop.data);
  schedule_flush();
}

bool DocumentView::may_drop(const ViewDrop& drop) {
  if (drop.way == ViewDrop::Way::MiddlePress) return true;
  MouseInput input;
  input.x = drop.x;
  input.y = drop.y;
  return document_->drag_start(input);
}

std::optional<QuestionId> DocumentView::handle_answer(const ViewAnswer* answer) {
  const auto document = document_;
  if (!document) return {};
  if (!open_.mouse.empty()) {
    if (!answer) open_.tries = 2;
    for (ViewMouse& mouse : open_.mouse) {
      if (!answer) break;
      mouse.place = answer->place;
      mouse.element = answer->element;
      mouse.anchor = mouse.focus = {};
      mouse.seen = answer->seen;
    }
    return deliver_mouse();
  }
  if (answer) seen_ = answer->seen;
  if (const auto drop = std::exchange(open_.drop, {})) {
    deliver_drop(*drop, answer ? answer->place : std::nullopt);
    return {};
  }
  if (!answer) return {};
  const auto place = boundary(answer->place);
  if (place) document->move_caret_to(*place, open_.extend);
  reveal_ = true;
  schedule_flush();
  return {};
}

}  // namespace tvx::browser
