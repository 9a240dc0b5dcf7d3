#include "tvx/browser/input/drags.h"

#include "tvx/browser/input/gesture.h"
#include "tvx/browser/input/paste.h"
#include "tvx/editing/clipboard/move_content.h"

namespace tvx::browser {

using dom::Boundary;
using dom::Element;

namespace {

bool may_change(HTMLDocument& document) {
  return document.editor().design_mode() && document.user_may_edit();
}

}  // namespace

void size_control(HTMLDocument& document, Element& element, const editing::ControlBox& box) {
  if (!may_change(document)) return;
  const HTMLDocument::Gesture gesture(document);
  editing::set_control_box(document.editor(), element, box);
}

void size_columns(HTMLDocument& document, const editing::ColumnEdge& edge) {
  if (!may_change(document)) return;
  const HTMLDocument::Gesture gesture(document);
  editing::size_columns(document.editor(), edge);
}

void place_control(HTMLDocument& document, Element& element, int left, int top) {
  if (!may_change(document)) return;
  const HTMLDocument::Gesture gesture(document);
  editing::move_positioned(document.editor(), element, left, top);
}

void drop_selection(HTMLDocument& document, const Boundary& place, DropEffect effect) {
  if (!may_change(document)) return;
  const HTMLDocument::Gesture gesture(document);
  editing::move_selection(document.editor(), place,
                          effect == DropEffect::Copy ? editing::KeepSource::Yes : editing::KeepSource::No);
}

void paste_at(HTMLDocument& document, const Boundary& place, const platform::TransferData& data) {
  if (!may_change(document)) return;
  const HTMLDocument::Gesture gesture(document);
  document.editor().selection().collapse(place);
  paste_into(document, data);
}

void drop_data(HTMLDocument& document, const Boundary& place, const platform::TransferData& data) {
  if (!may_change(document)) return;
  const HTMLDocument::Gesture gesture(document);
  editing::insert_selected(document.editor(), place, u"Drop",
                           [&](editing::Editor&) { paste_into(document, data, u"Drop"); });
}

}  // namespace tvx::browser
