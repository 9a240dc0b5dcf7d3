#include "tvx/editing/gestures/control_box.h"

#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/tables/written_width.h"

namespace tvx::editing {

using dom::Element;
using dom::Tag;

namespace {

/// Their sizes stand in attributes, where nobody has put them into the style.
bool takes_size_attributes(const Element& element) {
  static const TagSet tags{Tag::Img,    Tag::Table, Tag::Object, Tag::Embed,  Tag::Applet,
                           Tag::Iframe, Tag::Video, Tag::Hr,     Tag::Canvas, Tag::Marquee};
  return tags.has(element) || !element.is_html();
}

dom::Name attribute_for(const Element& element, std::u16string_view property) {
  if (property == u"width") return dom::names::width;
  return element.is(Tag::Hr) ? dom::Name(u"size") : dom::names::height;
}

std::u16string pixels(int length) { return to_text(length) + u"px"; }

void write_size(Element& element, std::u16string_view property, std::optional<int> length) {
  if (!length) return;
  const int at_least_one = std::max(*length, 1);
  if (takes_size_attributes(element) && dom::style::inline_value(element, property).empty()) {
    dom::set_attribute(element, attribute_for(element, property), to_text(at_least_one));
  } else {
    dom::style::set_inline_value(element, property, pixels(at_least_one));
  }
}

/// A width in percent grows and shrinks with the box. False where there is none.
bool scale_width(Element& element, const ControlBox& box) {
  if (!box.width || !box.width_was || *box.width_was < 1) return false;
  WrittenWidth width(element);
  if (!width.now() || !width.now()->in_percent()) return false;
  if (!width.in_style() && !takes_size_attributes(element)) return false;
  width.set_percent(width.now()->number * *box.width / *box.width_was);
  return true;
}

void write_place(Element& element, std::u16string_view property, std::u16string_view opposite,
                 std::optional<int> length) {
  if (!length) return;
  dom::style::set_inline_value(element, property, pixels(*length));
  if (!dom::style::inline_value(element, opposite).empty())
    dom::style::remove_inline_value(element, opposite);
}

}  // namespace

bool set_control_box(Editor& editor, Element& element, const ControlBox& box) {
  if (!is_editable(element)) return false;
  const dom::UndoStep step(editor.document().journal(), u"Size");
  if (!scale_width(element, box)) write_size(element, u"width", box.width);
  write_size(element, u"height", box.height);
  if (is_absolutely_positioned(element)) {
    write_place(element, u"left", u"right", box.left);
    write_place(element, u"top", u"bottom", box.top);
  }
  return true;
}

bool is_absolutely_positioned(const Element& element) {
  return equals_ignoring_ascii_case(dom::style::inline_value(element, u"position"), u"absolute");
}

bool is_movable(const Editor& editor, const Element& element) {
  return editor.two_d_position() && is_absolutely_positioned(element) && is_editable(element);
}

bool move_positioned(Editor& editor, Element& element, int left, int top) {
  if (!is_movable(editor, element)) return false;
  const dom::UndoStep step(editor.document().journal(), u"Move");
  write_place(element, u"left", u"right", left);
  write_place(element, u"top", u"bottom", top);
  return true;
}

}  // namespace tvx::editing
