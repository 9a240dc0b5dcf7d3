#include "tvx/exported/values.h"

#include "tvx/base/error.h"
#include "tvx/exported/model_object.h"
#include "tvx/exported/texts.h"
#include "tvx/library/members/dispatch.h"

namespace tvx::exported {

using library::Type;
using library::Value;

namespace {

tvx_value of_type(std::uint16_t type) {
  tvx_value value = {};
  value.type = type;
  return value;
}

tvx_value from_number(double number) {
  tvx_value value = of_type(TVX_DOUBLE);
  value.as.number = number;
  return value;
}

/// As it is.
struct ToHost {
  tvx_value operator()(std::monostate) const { return of_type(TVX_EMPTY); }
  tvx_value operator()(bool flag) const {
    tvx_value value = of_type(TVX_BOOLEAN);
    value.as.boolean = flag ? TVX_TRUE : TVX_FALSE;
    return value;
  }
  tvx_value operator()(std::int32_t number) const {
    tvx_value value = of_type(TVX_INTEGER32);
    value.as.integer32 = number;
    return value;
  }
  tvx_value operator()(std::int64_t number) const { return from_number(static_cast<double>(number)); }
  tvx_value operator()(double number) const { return from_number(number); }
  tvx_value operator()(const std::u16string& text) const {
    tvx_value value = of_type(TVX_TEXT);
    value.as.text = new_text(text);
    return value;
  }
  tvx_value operator()(const library::ObjectHandle& object) const {
    tvx_value value = of_type(TVX_OBJECT);
    value.as.object = object ? make_model_object(object) : nullptr;
    return value;
  }
  // No member of the control or its objects gives one: lists are objects.
  tvx_value operator()(const library::Values&) const { return of_type(TVX_EMPTY); }
};

}  // namespace

Value value_from(const tvx_value& value) {
  switch (value.type) {
    case TVX_EMPTY: return {};
    case TVX_BOOLEAN: return value.as.boolean != 0;
    case TVX_INTEGER16: return std::int32_t{value.as.integer16};
    case TVX_INTEGER32: return value.as.integer32;
    case TVX_DOUBLE:
    case TVX_DATE: return value.as.number;
    case TVX_TEXT: return view_of(value.as.text);
    case TVX_OBJECT: return value.as.object ? Value(model_object_of(value.as.object)) : Value();
    case TVX_REFERENCE:
      if (value.as.reference && value.as.reference->type != TVX_REFERENCE)
        return value_from(*value.as.reference);
      break;
    default: break;
  }
  library::type_mismatch();
}

tvx_value value_for(const Value& value, Type type) {
  const Value inside = library::converted(value, type);
  if (type == Type::None) return of_type(TVX_EMPTY);
  if (type == Type::Object && inside.is_null()) return of_type(TVX_OBJECT);
  tvx_value result = std::visit(ToHost{}, inside.data());
  if (type == Type::Integer16) {
    result = of_type(TVX_INTEGER16);
    result.as.integer16 = inside.to_integer16();
  }
  return result;
}

void replace_value(tvx_value& target, const Value& value, Type type) {
  const tvx_value next = value_for(value, type);
  clear_value(target);
  target = next;
}

library::Values values_from(const tvx_value* arguments, std::uint32_t count) {
  library::Values values;
  for (std::uint32_t i = 0; arguments && i < count; ++i) values.push_back(value_from(arguments[i]));
  return values;
}

}  // namespace tvx::exported
