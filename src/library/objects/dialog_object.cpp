#include "tvx/library/objects/members_of.h"
#include "tvx/library/objects/parts.h"
#include "tvx/platform/form.h"
#include "tvx/platform/form_places.h"

namespace tvx::library {

using platform::Form;
using platform::FormColour;
using platform::FormControl;

namespace {

class FormControlObject final : public Object {
 public:
  explicit FormControlObject(FormControl& control) : control_(control) {}
  std::u16string_view kind() const override { return u"control"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"name", control_.Name()}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  FormControl& operator*() const { return control_; }

 private:
  FormControl& control_;
};

/// A list that stays open knows no other choice than the user's.
void choose(FormControl& list, int index) {
  if (list.kind() != platform::ControlKind::ListBox || !list.choose(index)) list.set_ListIndex(index);
}

/// One of the three that ask about a key: what has become of the code.
template <std::int16_t (FormControl::*ask)(std::int16_t, std::int16_t)>
Value key_call(FormControlObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  const auto shift = arguments.size() > 1 ? arguments[1].to_integer32() : 0;
  const auto code = static_cast<std::int16_t>(arguments[0].to_integer32());
  return std::int32_t{((*self).*ask)(code, static_cast<std::int16_t>(shift))};
}

Value offered(FormControlObject& self) {
  Values texts;
  for (const std::u16string& text : (*self).offered()) texts.emplace_back(text);
  return texts;
}

// A double click of the user's is on what is chosen.
bool double_click(FormControl& control) {
  if (control.kind() != platform::ControlKind::ListView) return control.double_click();
  if (!control.reachable() || control.list_view().selected() < 0) return false;
  control.list_view().double_click(control.list_view().selected());
  return true;
}

template <auto Length>
Value place(FormControlObject& self) {
  return double{platform::place_of(*self).*Length};
}

constexpr MemberOf<FormControlObject> control_rows[] = {
    {u"Name", [](FormControlObject& self) -> Value { return (*self).Name(); }},
    {u"Caption", [](FormControlObject& self) -> Value { return (*self).Caption(); },
     [](FormControlObject& self, const Value& value) { (*self).set_Caption(value.to_text()); }},
    {u"Text", [](FormControlObject& self) -> Value { return (*self).Text(); },
     [](FormControlObject& self, const Value& value) { (*self).set_Text(value.to_text()); }},
    {u"Value", [](FormControlObject& self) -> Value { return (*self).Value(); },
     [](FormControlObject& self, const Value& value) { (*self).set_Value(value.to_boolean()); }},
    {u"Enabled", [](FormControlObject& self) -> Value { return (*self).Enabled(); },
     [](FormControlObject& self, const Value& value) { (*self).set_Enabled(value.to_boolean()); }},
    {u"Visible", [](FormControlObject& self) -> Value { return (*self).Visible(); },
     [](FormControlObject& self, const Value& value) { (*self).set_Visible(value.to_boolean()); }},
    {u"ToolTipText", [](FormControlObject& self) -> Value { return (*self).ToolTipText(); },
     [](FormControlObject& self, const Value& value) { (*self).set_ToolTipText(value.to_text()); }},
    {u"Tag", [](FormControlObject& self) -> Value { return (*self).Tag(); },
     [](FormControlObject& self, const Value& value) { (*self).set_Tag(value.to_text()); }},
    {u"BackColor", [](FormControlObject& self) -> Value { return static_cast<double>((*self).BackColor()); },
     [](FormControlObject& self, const Value& value) {
       (*self).set_BackColor(static_cast<FormColour>(static_cast<std::int64_t>(value.to_number())));
     }},
    {u"Picture", [](FormControlObject& self) -> Value { return (*self).Picture(); },
     [](FormControlObject& self, const Value& value) { (*self).set_Picture(value.to_text()); }},
    {u"Left", place<&platform::ControlPlace::Left>},
    {u"Top", place<&platform::ControlPlace::Top>},
    {u"Width", place<&platform::ControlPlace::Width>},
    {u"Height", place<&platform::ControlPlace::Height>},
    {u"ListCount", [](FormControlObject& self) -> Value { return std::int32_t{(*self).ListCount()}; }},
    {u"ListIndex", [](FormControlObject& self) -> Value { return std::int32_t{(*self).ListIndex()}; },
     [](FormControlObject& self, const Value& value) { choose(*self, value.to_integer32()); }},
    {u"SelStart", [](FormControlObject& self) -> Value { return std::int32_t{(*self).SelStart()}; },
     [](FormControlObject& self, const Value& value) { (*self).select(value.to_integer32(), 0); }},
    {u"SelLength", [](FormControlObject& self) -> Value { return std::int32_t{(*self).SelLength()}; },
     [](FormControlObject& self, const Value& value) {
       (*self).select((*self).SelStart(), value.to_integer32());
     }},
    {u"Fault", [](FormControlObject& self) -> Value { return (*self).fault(); }},
    {u"Offered", offered},
    {u"ListItems", [](FormControlObject& self) { return list_items(*self); }},
    {u"ColumnHeaders", [](FormControlObject& self) { return column_headers(*self); }},
    {u"SelectedItem", [](FormControlObject& self) { return selected_item(*self); },
     [](FormControlObject& self, const Value& value) { select_item(*self, value); }},
    {u"SortKey",
     [](FormControlObject& self) -> Value { return std::int32_t{(*self).list_view().SortKey()}; }},
    {u"SortOrder",
     [](FormControlObject& self) -> Value { return std::int32_t{(*self).list_view().descending()}; }},
    {u"Sorted", [](FormControlObject& self) -> Value { return (*self).list_view().Sorted(); }},
    {u"Note", [](FormControlObject& self) -> Value { return (*self).list_view().note(); }},
    {u"NoteDetail", [](FormControlObject& self) -> Value { return (*self).list_view().note_detail(); }},
    {.name = u"ColumnClick",
     .call = [](FormControlObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 1, 1);
       click_column(*self, arguments[0]);
       return {};
     }},
    {.name = u"OLEDragDrop",
     .call = [](FormControlObject& self, Values& arguments) -> Value {
       return drop_files(*self, arguments);
     }},
    {.name = u"List",
     .call = [](FormControlObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 1, 1);
       return (*self).List(arguments[0].to_integer32());
     }},
    {.name = u"Click",
     .call = [](FormControlObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 0, 0);
       return (*self).click();
     }},
    {.name = u"DblClick",
     .call = [](FormControlObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 0, 0);
       return double_click(*self);
     }},
    {.name = u"SetFocus",
     .call = [](FormControlObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 0, 0);
       (*self).form().SetFocus(*self);
       return {};
     }},
    {.name = u"KeyDown", .call = key_call<&FormControl::key_down>},
    {.name = u"KeyUp", .call = key_call<&FormControl::key_up>},
    {.name = u"KeyPress",
     .call = [](FormControlObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 1, 1);
       return std::int32_t{(*self).key_press(static_cast<std::int16_t>(arguments[0].to_integer32()))};
     }},
};

Value FormControlObject::invoke(std::u16string_view name, Values& arguments) {
  return invoke_named<FormControlObject>(control_rows, name, *this, arguments);
}
void FormControlObject::set(std::u16string_view name, const Value& value) {
  set_named<FormControlObject>(control_rows, name, *this, value);
}

class FormObject final : public Object {
 public:
  explicit FormObject(Form& form) : form_(form) {}
  std::u16string_view kind() const override { return u"form"; }
  std::vector<std::pair<std::string, Value>> description() const override { return {{"name", form_.Name()}}; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  Form& operator*() const { return form_; }

 private:
  Form& form_;
};

constexpr MemberOf<FormObject> form_rows[] = {
    {u"Name", [](FormObject& self) -> Value { return (*self).Name(); }},
    {u"Caption", [](FormObject& self) -> Value { return (*self).Caption(); },
     [](FormObject& self, const Value& value) { (*self).set_Caption(value.to_text()); }},
    {u"Visible", [](FormObject& self) -> Value { return (*self).Visible(); }},
    {u"Width", [](FormObject& self) -> Value { return double{(*self).Width()}; },
     [](FormObject& self, const Value& value) { (*self).set_Width(static_cast<float>(value.to_number())); }},
    {u"Height", [](FormObject& self) -> Value { return double{(*self).Height()}; },
     [](FormObject& self, const Value& value) { (*self).set_Height(static_cast<float>(value.to_number())); }},
    {u"Names",
     [](FormObject& self) -> Value {
       Values names;
       for (const auto& control : (*self).controls()) names.emplace_back(control->Name());
       return names;
     }},
    {.name = u"Controls",
     .call = [](FormObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 1, 1);
       return form_control_object((*self).Controls(arguments[0].to_text()));
     }},
    {.name = u"Refresh",
     .call = [](FormObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 0, 0);
       (*self).paint();
       return {};
     }},
    {u"ActiveControl",
     [](FormObject& self) -> Value {
       FormControl* active = (*self).ActiveControl();
       return active ? Value(form_control_object(*active)) : Value();
     }},
    {.name = u"Hide",
     .call = [](FormObject& self, Values& arguments) -> Value {
       expect_arguments(arguments, 0, 0);
       (*self).Hide();
       return {};
     }},
};

Value FormObject::invoke(std::u16string_view name, Values& arguments) {
  const std::span<const MemberOf<FormObject>> rows(form_rows);
  if (const auto* row = find_member(rows, name)) return invoke_member(*row, *this, arguments);
  FormControl* control = form_.find(name);
  if (!control) unknown_member(name);
  expect_arguments(arguments, 0, 0);
  return form_control_object(*control);
}
void FormObject::set(std::u16string_view name, const Value& value) {
  set_named<FormObject>(form_rows, name, *this, value);
}

}  // namespace

ObjectHandle form_control_object(FormControl& control) {
  return std::make_shared<FormControlObject>(control);
}
ObjectHandle form_object(Form& form) { return std::make_shared<FormObject>(form); }

}  // namespace tvx::library
