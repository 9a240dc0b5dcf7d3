#include "automation/control_object.h"
#include "automation/instance.h"
#include "library/members_of.h"

namespace tvx::automation {

using library::MemberOf;
using library::Value;
using library::Values;
using source::OrvelCV;

namespace {

class CodeViewObject final : public library::Object {
 public:
  explicit CodeViewObject(Instance& instance) : instance_(instance) {}
  std::u16string_view kind() const override { return u"codeView"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;

  OrvelCV& operator*() const { return instance_.control().txtCode(); }
  const core::Box& box() const { return instance_.control().layout().txtCode; }

 private:
  Instance& instance_;
};

template <auto Method>
Value call(CodeViewObject& self, Values& arguments) {
  library::expect_arguments(arguments, 0, 0);
  return library::result_of([&] { return ((*self).*Method)(); });
}

/// What the user makes of the text, as one step; `Text` set puts a text in from outside.
Value edit(CodeViewObject& self, Values& arguments) {
  library::expect_arguments(arguments, 1, 1);
  (*self).edit(arguments[0].to_text());
  return {};
}

constexpr MemberOf<CodeViewObject> rows[] = {
    {u"Text", [](CodeViewObject& self) -> Value { return (*self).Text(); },
     [](CodeViewObject& self, const Value& value) { (*self).set_Text(value.to_text()); }},
    {u"Enabled", [](CodeViewObject& self) -> Value { return (*self).Enabled(); },
     [](CodeViewObject& self, const Value& value) { (*self).set_Enabled(value.to_boolean()); }},
    {u"Visible", [](CodeViewObject& self) -> Value { return (*self).Visible(); },
     [](CodeViewObject& self, const Value& value) { (*self).set_Visible(value.to_boolean()); }},
    {u"Left", [](CodeViewObject& self) -> Value { return double{self.box().Left}; }},
    {u"Top", [](CodeViewObject& self) -> Value { return double{self.box().Top}; }},
    {u"Width", [](CodeViewObject& self) -> Value { return double{self.box().Width}; }},
    {u"Height", [](CodeViewObject& self) -> Value { return double{self.box().Height}; }},
    {u"HasFocus", [](CodeViewObject& self) -> Value { return (*self).has_focus(); }},
    {.name = u"Undo", .call = call<&OrvelCV::Undo>},
    {.name = u"Redo", .call = call<&OrvelCV::Redo>},
    {.name = u"SetFocus", .call = call<&OrvelCV::SetFocus>},
    {.name = u"DetachAllMessages", .call = call<&OrvelCV::DetachAllMessages>},
    {.name = u"Edit", .call = edit},
};

Value CodeViewObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<CodeViewObject>(rows, name, *this, arguments);
}
void CodeViewObject::set(std::u16string_view name, const Value& value) {
  library::set_named<CodeViewObject>(rows, name, *this, value);
}

}  // namespace

library::ObjectHandle code_view_object(Instance& instance) {
  return std::make_shared<CodeViewObject>(instance);
}

}  // namespace tvx::automation
