#include "tvx/dom/objects/form.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/option.h"
#include "tvx/dom/objects/reflection.h"
#include "tvx/library/members/facade_members.h"
#include "tvx/library/objects/element_kinds.h"

namespace tvx::library {

namespace {

using dom::FieldObject;
using dom::FormObject;
using dom::OptionObject;
using dom::SelectObject;

Value field_count(ElementObject& self) {
  return static_cast<std::int32_t>(FormObject(*self).elements().size());
}

constexpr MemberOf<ElementObject> form_rows[] = {
    {u"elements", facade_list<&FormObject::elements>},
    {u"length", field_count},
    {u"name", facade_get<&FormObject::name>, facade_set<&FormObject::set_name>},
    {u"method", facade_get<&FormObject::method>, facade_set<&FormObject::set_method>},
    {u"action", facade_get<&FormObject::action>, facade_set<&FormObject::set_action>},
    {u"encoding", facade_get<&FormObject::encoding>, facade_set<&FormObject::set_encoding>},
    {u"target", facade_get<&FormObject::target>, facade_set<&FormObject::set_target>},
};

constexpr MemberOf<ElementObject> field_rows[] = {
    {u"form", facade_get<&FieldObject::form>},
    {u"name", facade_get<&FieldObject::name>, facade_set<&FieldObject::set_name>},
    {u"type", facade_get<&FieldObject::type>, facade_set<&FieldObject::set_type>},
    {u"value", facade_get<&FieldObject::value>, facade_set<&FieldObject::set_value>},
    {u"checked", facade_get<&FieldObject::checked>, facade_set<&FieldObject::set_checked>},
    {u"disabled", facade_get<&FieldObject::disabled>, facade_set<&FieldObject::set_disabled>},
    {u"readOnly", facade_get<&FieldObject::readOnly>, facade_set<&FieldObject::set_readOnly>},
    {u"size", facade_get<&FieldObject::size>, facade_set<&FieldObject::set_size>},
};

constexpr MemberOf<ElementObject> select_rows[] = {
    {u"options", facade_list<&SelectObject::options>},
    {u"length", facade_get<&SelectObject::length>},
    {u"multiple", facade_get<&SelectObject::multiple>, facade_set<&SelectObject::set_multiple>},
    {u"selectedIndex", facade_get<&SelectObject::selectedIndex>,
     facade_set<&SelectObject::set_selectedIndex>},
};

constexpr MemberOf<ElementObject> option_rows[] = {
    {u"text", facade_get<&OptionObject::text>, facade_set<&OptionObject::set_text>},
    {u"value", facade_get<&OptionObject::value>, facade_set<&OptionObject::set_value>},
    {u"index", facade_get<&OptionObject::index>},
    {u"selected", facade_get<&OptionObject::selected>, facade_set<&OptionObject::set_selected>},
    {u"disabled", facade_get<&OptionObject::disabled>, facade_set<&OptionObject::set_disabled>},
};

Value label_target(ElementObject& self) { return dom::reflected_text(*self, dom::names::for_); }
void set_label_target(ElementObject& self, const Value& value) {
  dom::set_reflected_text(*self, dom::names::for_, text_or_nothing(value));
}

constexpr MemberOf<ElementObject> label_rows[] = {
    {u"htmlFor", label_target, set_label_target},
};

}  // namespace

ElementRows form_members() { return form_rows; }
ElementRows field_members() { return field_rows; }
ElementRows select_members() { return select_rows; }
ElementRows option_members() { return option_rows; }
ElementRows label_members() { return label_rows; }

}  // namespace tvx::library
