#include "tvx/library/objects/members_of.h"
#include "tvx/library/objects/parts.h"
#include "tvx/platform/toolbar.h"

namespace tvx::library {

using platform::Button;
using platform::Toolbar;

namespace {

class ButtonObject final : public Object {
 public:
  explicit ButtonObject(Button& button) : button_(button) {}
  std::u16string_view kind() const override { return u"button"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"Index", std::int32_t{button_.Index()}}, {"Key", button_.Key()}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  Button& operator*() const { return button_; }

 private:
  Button& button_;
};

constexpr MemberOf<ButtonObject> button_rows[] = {
    {u"Index", [](ButtonObject& self) -> Value { return std::int32_t{(*self).Index()}; }},
    {u"Key", [](ButtonObject& self) -> Value { return (*self).Key(); }},
    {u"Image", [](ButtonObject& self) -> Value { return (*self).Image(); }},
    {u"Style", [](ButtonObject& self) -> Value { return static_cast<std::int32_t>((*self).Style()); }},
    {u"Caption", [](ButtonObject& self) -> Value { return (*self).Caption(); },
     [](ButtonObject& self, const Value& value) { (*self).set_Caption(value.to_text()); }},
    {u"ToolTipText", [](ButtonObject& self) -> Value { return (*self).ToolTipText(); },
     [](ButtonObject& self, const Value& value) { (*self).set_ToolTipText(value.to_text()); }},
    {u"Tag", [](ButtonObject& self) -> Value { return (*self).Tag(); },
     [](ButtonObject& self, const Value& value) { (*self).set_Tag(value.to_text()); }},
    {u"Enabled", [](ButtonObject& self) -> Value { return (*self).Enabled(); },
     [](ButtonObject& self, const Value& value) { (*self).set_Enabled(value.to_boolean()); }},
    {u"Visible", [](ButtonObject& self) -> Value { return (*self).Visible(); },
     [](ButtonObject& self, const Value& value) { (*self).set_Visible(value.to_boolean()); }},
    {u"Left", [](ButtonObject& self) -> Value { return double{(*self).Left()}; }},
    {u"Top", [](ButtonObject& self) -> Value { return double{(*self).Top()}; }},
    {u"Width", [](ButtonObject& self) -> Value { return double{(*self).Width()}; }},
    {u"Height", [](ButtonObject& self) -> Value { return double{(*self).Height()}; }},
    {u"Value", [](ButtonObject& self) -> Value { return std::int32_t{(*self).Value()}; },
     [](ButtonObject& self, const Value& value) { (*self).set_Value(value.to_integer32()); }},
};

Value ButtonObject::invoke(std::u16string_view name, Values& arguments) {
  return invoke_named<ButtonObject>(button_rows, name, *this, arguments);
}
void ButtonObject::set(std::u16string_view name, const Value& value) {
  set_named<ButtonObject>(button_rows, name, *this, value);
}

class ButtonsObject final : public Object {
 public:
  explicit ButtonsObject(Toolbar& toolbar) : toolbar_(toolbar) {}
  std::u16string_view kind() const override { return u"buttons"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"Count", std::int32_t{toolbar_.Count()}}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"Item")) return item(arguments);
    if (!equals_ignoring_ascii_case(name, u"Count")) unknown_member(name);
    expect_arguments(arguments, 0, 0);
    return std::int32_t{toolbar_.Count()};
  }
  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    Button& button = arguments[0].is_text() ? toolbar_.Item(arguments[0].to_text())
                                            : toolbar_.Item(arguments[0].to_integer32());
    return ObjectHandle(std::make_shared<ButtonObject>(button));
  }

 private:
  Toolbar& toolbar_;
};

class ToolbarObject final : public Object {
 public:
  explicit ToolbarObject(Toolbar& toolbar) : toolbar_(toolbar) {}
  std::u16string_view kind() const override { return u"toolbar"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"name", toolbar_.Name()}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  Toolbar& operator*() const { return toolbar_; }

 private:
  Toolbar& toolbar_;
};

constexpr MemberOf<ToolbarObject> toolbar_rows[] = {
    {u"Name", [](ToolbarObject& self) -> Value { return (*self).Name(); }},
    {u"Buttons",
     [](ToolbarObject& self) -> Value { return ObjectHandle(std::make_shared<ButtonsObject>(*self)); }},
    // In its holder's corner.
    {u"Left", [](ToolbarObject&) -> Value { return double{0}; }},
    {u"Top", [](ToolbarObject&) -> Value { return double{0}; }},
    {u"Width", [](ToolbarObject& self) -> Value { return double{(*self).Width()}; }},
    // Setting the height is what a window that draws the bar does: it measured it.
    {u"Height", [](ToolbarObject& self) -> Value { return double{(*self).Height()}; },
     [](ToolbarObject& self, const Value& value) {
       (*self).set_measured_height(value.is_null() ? std::optional<float>()
                                                   : static_cast<float>(value.to_number()));
     }},
    {u"ButtonWidth", [](ToolbarObject& self) -> Value { return double{(*self).ButtonWidth()}; }},
    {u"ButtonHeight", [](ToolbarObject& self) -> Value { return double{(*self).ButtonHeight()}; }},
    {u"Visible", [](ToolbarObject& self) -> Value { return (*self).Visible(); },
     [](ToolbarObject& self, const Value& value) { (*self).set_Visible(value.to_boolean()); }},
};

Value ToolbarObject::invoke(std::u16string_view name, Values& arguments) {
  return invoke_named<ToolbarObject>(toolbar_rows, name, *this, arguments);
}
void ToolbarObject::set(std::u16string_view name, const Value& value) {
  set_named<ToolbarObject>(toolbar_rows, name, *this, value);
}

}  // namespace

ObjectHandle toolbar_object(Toolbar& toolbar) { return std::make_shared<ToolbarObject>(toolbar); }

}  // namespace tvx::library
