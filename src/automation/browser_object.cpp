#include "tvx/automation/control_object.h"
#include "tvx/automation/instance.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/library/objects/members_of.h"

namespace tvx::automation {

using library::MemberOf;
using library::Value;
using library::Values;

namespace {

class BrowserObject final : public library::Object {
 public:
  explicit BrowserObject(Instance& instance) : instance_(instance) {}
  std::u16string_view kind() const override { return u"browser"; }
  std::vector<std::pair<std::string, Value>> description() const override;
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;

  browser::Browser& operator*() const { return instance_.control().WBrowser(); }
  const core::Box& box() const { return instance_.control().layout().WBrowser; }
  library::ObjectHandle again() const { return std::make_shared<BrowserObject>(instance_); }

 private:
  Instance& instance_;
};

Value ready_state(BrowserObject& self) { return static_cast<std::int32_t>((*self).ReadyState()); }

std::vector<std::pair<std::string, Value>> BrowserObject::description() const {
  return {{"ReadyState", static_cast<std::int32_t>((**this).ReadyState())}};
}

Value navigate(BrowserObject& self, Values& arguments) {
  library::expect_arguments(arguments, 1, 5);
  (*self).Navigate(arguments[0].to_text());
  return {};
}

Value query_status(BrowserObject& self, Values& arguments) {
  library::expect_arguments(arguments, 1, 1);
  return (*self).QueryStatusWB(arguments[0].to_integer32());
}

Value execute(BrowserObject& self, Values& arguments) {
  library::expect_arguments(arguments, 2, 2);
  (*self).ExecWB(arguments[0].to_integer32(), arguments[1].to_integer32());
  return {};
}

constexpr MemberOf<BrowserObject> rows[] = {
    // A hosted control is reached through its `object`.
    {u"object", [](BrowserObject& self) -> Value { return self.again(); }},
    {u"ReadyState", ready_state},
    {u"Silent", [](BrowserObject& self) -> Value { return (*self).Silent(); },
     [](BrowserObject& self, const Value& value) { (*self).set_Silent(value.to_boolean()); }},
    {u"Document", [](BrowserObject& self) { return library::document_object((*self).Document()); }},
    {u"Left", [](BrowserObject& self) -> Value { return double{self.box().Left}; }},
    {u"Top", [](BrowserObject& self) -> Value { return double{self.box().Top}; }},
    {u"Width", [](BrowserObject& self) -> Value { return double{self.box().Width}; }},
    {u"Height", [](BrowserObject& self) -> Value { return double{self.box().Height}; }},
    {u"Visible", [](BrowserObject& self) -> Value { return self.box().Visible; }},
    {.name = u"Navigate", .call = navigate},
    {.name = u"QueryStatusWB", .call = query_status},
    {.name = u"ExecWB", .call = execute},
};

Value BrowserObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<BrowserObject>(rows, name, *this, arguments);
}
void BrowserObject::set(std::u16string_view name, const Value& value) {
  library::set_named<BrowserObject>(rows, name, *this, value);
}

}  // namespace

library::ObjectHandle browser_object(Instance& instance) { return std::make_shared<BrowserObject>(instance); }

}  // namespace tvx::automation
