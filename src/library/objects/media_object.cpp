#include "tvx/dom/objects/media.h"

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/address.h"
#include "tvx/dom/objects/element_content.h"
#include "tvx/dom/objects/reflection.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"
#include "tvx/library/members/facade_members.h"
#include "tvx/library/objects/element_kinds.h"

namespace tvx::library {

namespace {

using dom::BaseObject;
using dom::ImageObject;
using dom::LinkObject;

constexpr MemberOf<ElementObject> image_rows[] = {
    {u"src", facade_get<&ImageObject::src>, facade_set<&ImageObject::set_src>},
    {u"protocol", facade_get<&ImageObject::protocol>},
    {u"width", facade_get<&ImageObject::width>, facade_set<&ImageObject::set_width>},
    {u"height", facade_get<&ImageObject::height>, facade_set<&ImageObject::set_height>},
    {u"alt", facade_get<&ImageObject::alt>, facade_set<&ImageObject::set_alt>},
    {u"border", facade_get<&ImageObject::border>, facade_set<&ImageObject::set_border>},
    {u"align", facade_get<&ImageObject::align>, facade_set<&ImageObject::set_align>},
    {u"name", facade_get<&ImageObject::name>, facade_set<&ImageObject::set_name>},
};

constexpr MemberOf<ElementObject> link_rows[] = {
    {u"href", facade_get<&LinkObject::href>, facade_set<&LinkObject::set_href>},
    {u"hash", facade_get<&LinkObject::hash>, facade_set<&LinkObject::set_hash>},
    {u"protocol", facade_get<&LinkObject::protocol>},
    {u"target", facade_get<&LinkObject::target>, facade_set<&LinkObject::set_target>},
    {u"name", facade_get<&LinkObject::name>, facade_set<&LinkObject::set_name>},
};

constexpr MemberOf<ElementObject> base_rows[] = {
    {u"href", facade_get<&BaseObject::href>, facade_set<&BaseObject::set_href>},
    {u"target", facade_get<&BaseObject::target>, facade_set<&BaseObject::set_target>},
};

Value sheet_of(ElementObject& self) {
  dom::Document& document = dom::document_of(*self);
  const dom::style::StyleSheetHandle sheet = dom::style::style_of(document).sheet_of(*self);
  return sheet ? style_sheet_object(sheet) : Value();
}

constexpr MemberOf<ElementObject> sheet_rows[] = {
    {u"styleSheet", sheet_of},
    {u"sheet", sheet_of},
};

Value script_text(ElementObject& self) { return dom::text_content(*self); }
void set_script_text(ElementObject& self, const Value& value) {
  dom::assign_inner_text(*self, text_or_nothing(value));
}
Value script_address(ElementObject& self) {
  return dom::absolute_address(dom::document_of(*self), self.document_address(),
                               self->attribute_or_empty(dom::names::src));
}
void set_script_address(ElementObject& self, const Value& value) {
  dom::set_attribute(*self, dom::names::src, text_or_nothing(value));
}

constexpr MemberOf<ElementObject> script_rows[] = {
    {u"src", script_address, set_script_address},
    {u"text", script_text, set_script_text},
};

}  // namespace

ElementRows image_members() { return image_rows; }
ElementRows link_members() { return link_rows; }
ElementRows base_members() { return base_rows; }
ElementRows sheet_owner_members() { return sheet_rows; }
ElementRows script_members() { return script_rows; }

}  // namespace tvx::library
