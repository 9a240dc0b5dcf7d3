#include "tvx/browser/view/shown_selection.h"

#include <algorithm>
#include <utility>

#include "tvx/browser/html_document.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/positions.h"
#include "tvx/browser/view/view.h"
#include "tvx/editing/selection.h"

namespace tvx::browser {
namespace {

bool same(const ViewSelection& a, const ViewSelection& b) {
  return a.type == b.type && a.anchor == b.anchor && a.focus == b.focus && a.control == b.control &&
         a.composing == b.composing && a.composing_length == b.composing_length;
}

}  // namespace

ViewSelection wanted_selection(HTMLDocument& document, const Mirror& mirror) {
  const editing::Selection& selection = document.editor().selection();
  ViewSelection wanted;
  if (const dom::Element* control = selection.control()) {
    if (!mirror.knows(*control)) return wanted;
    wanted.type = ViewSelection::Type::Control;
    wanted.control = control->id();
  } else if (selection.type() == editing::SelectionType::Text) {
    const auto anchor = view_place(mirror, selection.anchor()), focus = view_place(mirror, selection.focus());
    if (!anchor || !focus) return wanted;
    wanted.type = ViewSelection::Type::Text;
    wanted.anchor = *anchor;
    wanted.focus = *focus;
  }
  const auto composed = document.composed();
  if (composed && mirror.knows(*composed->text)) {
    wanted.composing = {composed->text->id(), static_cast<std::uint32_t>(composed->start)};
    wanted.composing_length = static_cast<std::uint32_t>(composed->length);
  }
  return wanted;
}

void ShownSelection::page_began() {
  shown_ = {};
  mouse_ = 0;
}

void ShownSelection::drawn(const ViewPlace& anchor, const ViewPlace& focus) {
  shown_ = {};
  shown_.type = ViewSelection::Type::Text;
  shown_.anchor = anchor;
  shown_.focus = focus;
}

void ShownSelection::mouse_dealt_with(std::uint32_t number) { mouse_ = std::max(mouse_, number); }

void ShownSelection::send(ViewSelection wanted, bool moved) {
  // What the view doesn't have yet comes into sight when it has.
  wanted.reveal = wanted.type != ViewSelection::Type::None && std::exchange(reveal_, false);
  const bool again = std::exchange(unsure_, false) || moved;
  if (!again && same(wanted, shown_)) return;
  shown_ = wanted;
  wanted.mouse = mouse_;
  view_.select(wanted);
}

}  // namespace tvx::browser
