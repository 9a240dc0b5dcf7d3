#include "tvx/library/objects/members_of.h"
#include "tvx/library/objects/parts.h"
#include "tvx/platform/menu.h"

namespace tvx::library {

using platform::Menu;

namespace {

class MenuObject final : public Object {
 public:
  explicit MenuObject(Menu& menu) : menu_(menu) {}
  std::u16string_view kind() const override { return u"menu"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"name", platform::name_with_index(menu_)}, {"caption", menu_.Caption()}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  Menu& operator*() const { return menu_; }

 private:
  Menu& menu_;
};

constexpr MemberOf<MenuObject> rows[] = {
    {u"Name", [](MenuObject& self) -> Value { return (*self).Name(); }},
    {u"Index",
     [](MenuObject& self) -> Value {
       return (*self).Index() ? Value(std::int32_t{*(*self).Index()}) : Value();
     }},
    {u"Caption", [](MenuObject& self) -> Value { return (*self).Caption(); },
     [](MenuObject& self, const Value& value) { (*self).set_Caption(value.to_text()); }},
    {u"Enabled", [](MenuObject& self) -> Value { return (*self).Enabled(); },
     [](MenuObject& self, const Value& value) { (*self).set_Enabled(value.to_boolean()); }},
    {u"Visible", [](MenuObject& self) -> Value { return (*self).Visible(); },
     [](MenuObject& self, const Value& value) { (*self).set_Visible(value.to_boolean()); }},
    {u"Checked", [](MenuObject& self) -> Value { return (*self).Checked(); },
     [](MenuObject& self, const Value& value) { (*self).set_Checked(value.to_boolean()); }},
    {u"Count",
     [](MenuObject& self) -> Value {
       return static_cast<std::int32_t>(
           std::ranges::count_if((*self).items(), [](const auto& item) { return item->is_listed(); }));
     }},
    {u"Names",
     [](MenuObject& self) -> Value {
       Values names;
       for (const auto& item : (*self).items())
         if (item->is_listed()) names.emplace_back(platform::name_with_index(*item));
       return names;
     }},
};

Value MenuObject::invoke(std::u16string_view name, Values& arguments) {
  return invoke_named<MenuObject>(rows, name, *this, arguments);
}
void MenuObject::set(std::u16string_view name, const Value& value) {
  set_named<MenuObject>(rows, name, *this, value);
}

class MenuArrayObject final : public Object {
 public:
  MenuArrayObject(Menu& parent, std::u16string name) : parent_(parent), name_(std::move(name)) {}
  std::u16string_view kind() const override { return u"menuArray"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"name", name_}, {"UBound", std::int32_t{parent_.UBound(name_)}}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"Item")) return item(arguments);
    if (!equals_ignoring_ascii_case(name, u"UBound")) unknown_member(name);
    expect_arguments(arguments, 0, 0);
    return std::int32_t{parent_.UBound(name_)};
  }
  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    return menu_object(parent_.Item(name_, arguments[0].to_integer32()));
  }

 private:
  Menu& parent_;
  std::u16string name_;
};

}  // namespace

ObjectHandle menu_object(Menu& menu) { return std::make_shared<MenuObject>(menu); }

ObjectHandle menu_array_object(Menu& item) {
  return std::make_shared<MenuArrayObject>(*item.parent(), item.Name());
}

}  // namespace tvx::library
