#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include "tvx/core/htmled.h"
#include "tvx/library/members/member_table.h"

/// Rows of the member table from members of the class: `get_of<&HTMLed::BaseURL>`.
namespace tvx::library {

template <class T>
Value to_value(const T& value) {
  if constexpr (std::is_enum_v<T>)
    return static_cast<std::int32_t>(value);
  else
    return Value(value);
}

/// A value as a setter's parameter. Throws RuntimeError(13) or (6) as Value's conversions do.
template <class T>
T from_value(const Value& value) {
  if constexpr (std::is_same_v<T, bool>)
    return value.to_boolean();
  else if constexpr (std::is_enum_v<T>)
    return static_cast<T>(value.to_integer32());
  else if constexpr (std::is_same_v<T, std::int32_t>)
    return value.to_integer32();
  else
    return value.to_text();
}

template <class T>
struct SetterOf;
template <class Owner, class T>  // the control, or the class of its properties
struct SetterOf<void (Owner::*)(T)> {
  // A view needs somebody who holds the text during the call.
  using Held = std::conditional_t<std::is_same_v<T, std::u16string_view>, std::u16string, T>;
};

template <auto Getter>
Value get_of(core::HTMLed& control) {
  return to_value((control.*Getter)());
}

template <auto Setter>
void set_of(core::HTMLed& control, const Value& value) {
  const auto held = from_value<typename SetterOf<decltype(Setter)>::Held>(value);
  (control.*Setter)(held);
}

/// An operation without arguments and result.
template <auto Operation>
Value call_of(core::HTMLed& control, Values&) {
  (control.*Operation)();
  return {};
}

template <auto Getter, auto Setter>
constexpr Member property(std::int32_t number, std::u16string_view name, Type type, DefaultValue initial,
                          std::u16string_view description, Access access = Access::ReadWrite) {
  return {.kind = MemberKind::Property,
          .number = number,
          .name = name,
          .type = type,
          .description = description,
          .key = name,
          .initial = initial,
          .access = access,
          .get = get_of<Getter>,
          .set = set_of<Setter>};
}

template <auto Operation>
constexpr Member operation(std::int32_t number, std::u16string_view name, std::u16string_view description) {
  return {.kind = MemberKind::Method,
          .number = number,
          .name = name,
          .type = Type::None,
          .description = description,
          .call = call_of<Operation>};
}

/// An operation with arguments or a result. No `call`: it isn't built into this control.
constexpr Member operation(std::int32_t number, std::u16string_view name, Type result,
                           std::span<const Parameter> parameters, std::u16string_view description,
                           Value (*call)(core::HTMLed&, Values&) = nullptr) {
  return {.kind = MemberKind::Method,
          .number = number,
          .name = name,
          .type = result,
          .description = description,
          .parameters = parameters,
          .call = call};
}

}  // namespace tvx::library
