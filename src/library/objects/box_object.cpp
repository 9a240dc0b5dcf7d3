#include "tvx/library/objects/members_of.h"
#include "tvx/library/objects/parts.h"

namespace tvx::library {

namespace {

/// Where a part stands in the control, in twips.
class BoxObject final : public Object {
 public:
  BoxObject(std::u16string_view name, const core::Box& box) : name_(name), box_(box) {}
  std::u16string_view kind() const override { return u"box"; }
  std::vector<std::pair<std::string, Value>> description() const override { return {{"name", name_}}; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  const core::Box& operator*() const { return box_; }

 private:
  std::u16string name_;
  core::Box box_;
};

constexpr MemberOf<BoxObject> rows[] = {
    {u"Left", [](BoxObject& self) -> Value { return double{(*self).Left}; }},
    {u"Top", [](BoxObject& self) -> Value { return double{(*self).Top}; }},
    {u"Width", [](BoxObject& self) -> Value { return double{(*self).Width}; }},
    {u"Height", [](BoxObject& self) -> Value { return double{(*self).Height}; }},
    {u"Visible", [](BoxObject& self) -> Value { return (*self).Visible; }},
};

Value BoxObject::invoke(std::u16string_view name, Values& arguments) {
  return invoke_named<BoxObject>(rows, name, *this, arguments);
}

}  // namespace

ObjectHandle box_object(std::u16string_view name, const core::Box& box) {
  return std::make_shared<BoxObject>(name, box);
}

}  // namespace tvx::library
