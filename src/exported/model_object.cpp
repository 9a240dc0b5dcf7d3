#include "tvx/exported/model_object.h"

#include <algorithm>
#include <utility>

#include "tvx/base/strings.h"
#include "tvx/exported/invocation.h"
#include "tvx/exported/member_names.h"
#include "tvx/exported/object_faces.h"

namespace tvx::exported {

using library::Value;

namespace {

/// A member that is a date, of objects of a kind.
struct DateMember {
  std::u16string_view kind, name;
};
constexpr DateMember date_members[] = {
#include "tvx/interface/date_members.inc"
};

bool is_date(const library::Object& object, std::u16string_view name) {
  return std::ranges::any_of(date_members, [&](const DateMember& member) {
    return member.kind == object.kind() && equals_ignoring_ascii_case(member.name, name);
  });
}

class ModelObject final : public Counted {
 public:
  explicit ModelObject(library::ObjectHandle object) : object_(std::move(object)) {}

  void* face(const tvx_id& id) override {
    return id == tvx_id_dispatch || id == tvx_id_unknown ? &dispatch_ : nullptr;
  }
  tvx_dispatch* dispatch() { return &dispatch_; }
  const library::ObjectHandle& object() const { return object_; }

  tvx_result call(std::int32_t number, std::uint16_t how, Arguments arguments, tvx_value& result) {
    const library::ObjectHandle object = object_;  // a member may release this
    const auto name = name_of_number(number);
    if (!name && number != item_number) return TVX_NO_MEMBER;
    if (how == TVX_SET) {
      if (!name) return TVX_NO_MEMBER;
      library::expect_arguments(arguments.values, 1, 1);
      object->set(*name, arguments.values[0]);
      return TVX_OK;
    }
    if ((how & ~(TVX_CALL | TVX_GET)) != 0 || how == 0) return TVX_NO_MEMBER;
    if (how == TVX_GET && name && object->is_operation(*name)) return TVX_NO_MEMBER;
    const library::Values before = arguments.values;
    result = value_for(name ? object->invoke(*name, arguments.values) : object->item(arguments.values));
    if (result.type == TVX_DOUBLE && name && is_date(*object, *name)) result.type = TVX_DATE;
    for (std::size_t i = 0; i < before.size(); ++i)
      if (!(arguments.values[i] == before[i])) arguments.give_back(i, library::Type::Variant);
    return TVX_OK;
  }

 private:
  static const tvx_dispatch_functions functions;
  friend library::ObjectHandle tvx::exported::model_object_of(const tvx_dispatch* object);

  Face<tvx_dispatch> dispatch_{functions, *this};
  library::ObjectHandle object_;
};

tvx_result get_numbers(tvx_dispatch*, const tvx_text* names, std::uint32_t count, std::int32_t* numbers) {
  return numbers_of_names(names, count, numbers,
                          [](std::u16string_view name) { return number_of_name(name); });
}

tvx_result invoke_member(tvx_dispatch* self, std::int32_t number, std::uint16_t how, tvx_value* arguments,
                         std::uint32_t count, tvx_value* result, tvx_error* error) {
  if (!arguments && count > 0) return TVX_POINTER;
  return invoke(result, error, [&](tvx_value& value) {
    return owner_of<ModelObject>(self).call(number, how, Arguments(arguments, count), value);
  });
}

const tvx_dispatch_functions ModelObject::functions = {
    query_interface<tvx_dispatch>, add_reference<tvx_dispatch>, release_reference<tvx_dispatch>, get_numbers,
    invoke_member};

}  // namespace

tvx_dispatch* make_model_object(library::ObjectHandle object) {
  return (new ModelObject(std::move(object)))->dispatch();
}

library::ObjectHandle model_object_of(const tvx_dispatch* object) {
  if (object->functions != &ModelObject::functions) library::type_mismatch();
  return owner_of<ModelObject>(const_cast<tvx_dispatch*>(object)).object();
}

}  // namespace tvx::exported
