#include "tvx/library/objects/parts.h"

#include <utility>

#include "tvx/base/strings.h"
#include "tvx/core/htmled.h"
#include "tvx/library/members/dispatch.h"
#include "tvx/library/objects/document_object.h"

namespace tvx::library {

namespace {

class Face final : public Object {
 public:
  explicit Face(core::HTMLed& control) : control_(control) {}
  std::u16string_view kind() const override { return u"control"; }

  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"docHTML")) {
      expect_arguments(arguments, 0, 0);
      return document_object(control_.DOM());
    }
    if (const ObjectHandle part = part_named(control_, name))
      return arguments.empty() ? Value(part) : part->item(arguments);
    const Member* member = find_member(name);
    if (!member || member->kind != MemberKind::Property) return call_method(control_, name, arguments);
    expect_arguments(arguments, 0, 0);
    return get_property(control_, name);
  }

  void set(std::u16string_view name, const Value& value) override { set_property(control_, name, value); }

 private:
  core::HTMLed& control_;
};

}  // namespace

ObjectHandle part_named(core::HTMLed& control, std::u16string_view name) {
  for (platform::Toolbar* toolbar : {&control.Toolbar1(), &control.Toolbar2(), &control.tlbDOM()})
    if (equals_ignoring_ascii_case(toolbar->Name(), name)) return toolbar_object(*toolbar);
  const core::Layout& layout = control.layout();
  const std::pair<const char16_t*, const core::Box&> boxes[] = {
      {u"Picture1", layout.Picture1}, {u"Picture2", layout.Picture2}, {u"Picture3", layout.Picture3}};
  for (const auto& [box_name, box] : boxes)
    if (equals_ignoring_ascii_case(box_name, name)) return box_object(box_name, box);
  platform::Menu* menu = control.menu(name);
  if (!menu) return {};
  return menu->Index() ? menu_array_object(*menu) : menu_object(*menu);
}

ObjectHandle face_of(core::HTMLed& control) { return std::make_shared<Face>(control); }

}  // namespace tvx::library
