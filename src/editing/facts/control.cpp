#include "tvx/editing/facts/control.h"

#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Element;
using dom::Tag;

bool is_control(const Element& element) {
  static const TagSet tags{Tag::Img,      Tag::Table,  Tag::Input,  Tag::Button, Tag::Select,
                           Tag::Textarea, Tag::Object, Tag::Iframe, Tag::Embed,  Tag::Applet,
                           Tag::Video,    Tag::Audio,  Tag::Canvas, Tag::Hr,     Tag::Marquee};
  return tags.has(element);
}

Element* control_at(Element& element) {
  if (element.is(Tag::Table)) return &element;
  Element* found = nullptr;
  for (Element* outer = &element; outer && !outer->is(Tag::Body); outer = outer->parent_element()) {
    const bool foreign_root =
        !outer->is_html() && outer->parent_element() && outer->parent_element()->is_html();
    if (outer->is(Tag::Table)) break;
    if (is_control(*outer) || foreign_root) found = outer;
  }
  return found;
}

}  // namespace tvx::editing
