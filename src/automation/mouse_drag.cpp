#include "automation/mouse_drag.h"

#include "automation/json.h"
#include "browser/drags.h"
#include "dom/style/inline_style.h"
#include "headless/view.h"

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

/// A length in the inline style; 0 where it has none in pixels.
int pixels(const Element& element, std::u16string_view property) {
  const std::u16string value = dom::style::inline_value(element, property);
  std::size_t end = value.starts_with(u"-") ? 1 : 0;
  while (end < value.size() && is_ascii_digit(value[end])) ++end;
  return static_cast<int>(parse_integer(value.substr(0, end)).value_or(0));
}

}  // namespace

bool run_drag(HTMLDocument& document, const MouseDrag& drag) {
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
