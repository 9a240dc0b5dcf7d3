#include "tvx/browser/input/mouse_reports.h"

#include <utility>

#include "tvx/browser/html_document.h"
#include "tvx/browser/input/display.h"
#include "tvx/browser/input/drag_session.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/positions.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

constexpr int most_tries = 2;

}  // namespace

void MouseReports::show(std::shared_ptr<HTMLDocument> document) {
  document_ = std::move(document);
  reports_.clear();
  last_hit_ = {};
}

std::optional<QuestionId> MouseReports::handle(std::vector<ViewMouse> reports) {
  if (!document_ || reports.empty()) return {};
  reports_ = std::move(reports);
  tries_ = 0;
  return deliver();
}

std::optional<QuestionId> MouseReports::answer(const ViewAnswer* answer) {
  if (!answer) tries_ = most_tries;
  for (ViewMouse& report : reports_) {
    if (!answer) break;
    report.place = answer->place;
    report.element = answer->element;
    report.anchor = report.focus = {};
    report.seen = answer->seen;
  }
  return deliver();
}

std::optional<QuestionId> MouseReports::deliver() {
  const ViewMouse& first = reports_.front();
  const bool stale = first.place && !boundary_seen(display_.mirror(), first.place, first.seen);
  if (stale && tries_++ < most_tries && display_.answers()) {
    display_.flush();
    return display_.ask({.type = ViewQuestion::Type::Hit, .x = first.x, .y = first.y});
  }
  const auto document = document_;
  for (const ViewMouse& report : std::exchange(reports_, {})) {
    if (document != document_) break;
    deliver(*document, report);
  }
  display_.reveal(false);
  display_.schedule_flush();
  return {};
}

void MouseReports::deliver(HTMLDocument& document, const ViewMouse& report) {
  display_.mouse_dealt_with(report.number);
  const MouseInput input = input_of(report);
  last_hit_ = {report.x, report.y, input.element};
  if (report.anchor && report.focus) display_.selection_drawn(*report.anchor, *report.focus);
  switch (report.type) {
    case ViewMouse::Type::Press:
      held_ = report.held;
      drags_.end();
      display_.selection_unsure();  // the page has let go of what it showed
      document.mouse_press(input);
      break;
    case ViewMouse::Type::Release: release(document, input); break;
    case ViewMouse::Type::Click: document.click(input); break;
    case ViewMouse::Type::DoubleClick: document.double_click(input); break;
  }
}

/// A drag in plain text has drawn a selection; a press on what is selected or on the edge of a column, with
/// no drag after it, sets the caret now.
void MouseReports::release(HTMLDocument& document, const MouseInput& input) {
  drags_.end();
  display_.selection_unsure();  // the caret that the press has set may reach the page only now
  const bool held = std::exchange(held_, false);
  const editing::Selection& selection = document.editor().selection();
  if (!input.place) return;
  const bool drawn = input.anchor && selection.type() == editing::SelectionType::Text &&
                     (selection.anchor() != *input.anchor || selection.focus() != *input.place);
  if (drawn || (held && !input.anchor)) document.mouse_select(input);
}

void MouseReports::missed(const ViewMouse& report) {
  display_.mouse_dealt_with(report.number);
  display_.selection_unsure();
  display_.schedule_flush();
}

dom::Element* MouseReports::element_at(int x, int y) const {
  const bool known = last_hit_.element && last_hit_.x == x && last_hit_.y == y;
  return known && dom::is_connected(*last_hit_.element) ? last_hit_.element.get() : nullptr;
}

MouseInput MouseReports::input_of(const ViewMouse& report) const {
  const Mirror& mirror = display_.mirror();
  MouseInput input;
  input.button = report.button;
  input.x = report.x;
  input.y = report.y;
  input.shift = report.shift;
  input.control = report.control;
  input.alt = report.alt;
  input.element = dom::as<dom::Element>(mirror.node(report.element));
  input.held = report.held;
  input.whole = dom::as<dom::Element>(mirror.node(report.edge));
  const bool stretch = report.anchor && report.focus && !(*report.anchor == *report.focus);
  if (stretch) {
    input.anchor = nearest_boundary(mirror, report.anchor);
    input.place = nearest_boundary(mirror, report.focus);
  } else {
    input.place = nearest_boundary(mirror, report.place);
  }
  return input;
}

}  // namespace tvx::browser
