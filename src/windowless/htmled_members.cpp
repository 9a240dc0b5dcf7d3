#include "tvx/core/htmled.h"
#include "tvx/htmled.h"
#include "tvx/library/members/dispatch.h"

/// Properties and operations: each is the member of the table with that name.
namespace tvx {

using library::Values;

namespace {

/// An argument that needn't be given.
Values given(std::u16string_view text) { return text.empty() ? Values() : Values{library::Value(text)}; }

bool flag_of(const library::Value& value) { return value.to_boolean(); }
std::int32_t number_of(const library::Value& value) { return value.to_integer32(); }
std::u16string text_of(const library::Value& value) { return value.to_text(); }
std::optional<std::u16string> text_or_nothing(const library::Value& value) {
  return value.is_null() ? std::optional<std::u16string>() : value.to_text();
}

}  // namespace

library::Value HTMLed::get(std::u16string_view name) const { return library::get_property(control(), name); }
void HTMLed::put(std::u16string_view name, const library::Value& value) {
  library::set_property(control(), name, value);
}
library::Value HTMLed::call(std::u16string_view name, Values& arguments) const {
  return library::call_method(control(), name, arguments);
}

#include "tvx/interface/host_members.inc"

}  // namespace tvx
