#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "tvx/core/htmled.h"
#include "tvx/library/members/member_table.h"
#include "tvx/library/objects/directory_list_object.h"

/// Rows of the member table from members of the class: `get_of<&HTMLed::BaseURL>`.
namespace tvx::library {

template <class T>
Value to_value(const T& value) {
  if constexpr (std::is_enum_v<T>)
    return static_cast<std::int32_t>(value);
  else if constexpr (std::is_same_v<T, std::optional<std::u16string>>)
    return value ? Value(*value) : Value();
  else if constexpr (std::is_same_v<T, std::shared_ptr<transfer::clsDirectoryList>>)
    return directory_list_object(value);
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

/// What an operation's argument is held in during the call.
template <class T>
struct HeldOf {
  using Type = std::remove_cvref_t<T>;
};
template <>
struct HeldOf<std::u16string_view> {
  using Type = std::u16string;
};

/// An argument that may be left out counts as left out where it is nothing, too.
template <class Held>
Held argument_of(const Values& arguments, std::size_t index) {
  if constexpr (std::is_same_v<Held, std::optional<std::u16string>>) {
    if (index >= arguments.size() || arguments[index].is_null()) return std::nullopt;
    return arguments[index].to_text();
  } else {
    return from_value<Held>(arguments[index]);
  }
}

template <class Operation>
struct OperationOf;
template <class Owner, class Result, class... Parameters>
struct OperationOf<Result (Owner::*)(Parameters...)> {
  using Places = std::index_sequence_for<Parameters...>;

  template <auto Operation, std::size_t... Index>
  static Value call(core::HTMLed& control, Values& arguments, std::index_sequence<Index...>) {
    std::tuple<typename HeldOf<Parameters>::Type...> held{
        argument_of<typename HeldOf<Parameters>::Type>(arguments, Index)...};
    const auto run = [&]() -> Result { return (control.*Operation)(std::get<Index>(held)...); };
    Value result;
    if constexpr (std::is_void_v<Result>)
      run();
    else
      result = to_value(run());
    (bring_back<Parameters>(arguments, Index, std::get<Index>(held)), ...);
    return result;
  }

 private:
  template <class Parameter, class Held>
  static void bring_back(Values& arguments, std::size_t index, const Held& held) {
    if constexpr (std::is_lvalue_reference_v<Parameter> &&
                  !std::is_const_v<std::remove_reference_t<Parameter>>)
      arguments[index] = to_value(held);
  }
};

/// An operation of the control with its arguments; those that it takes by reference come back.
template <auto Operation>
Value call_of(core::HTMLed& control, Values& arguments) {
  using Form = OperationOf<decltype(Operation)>;
  return Form::template call<Operation>(control, arguments, typename Form::Places());
}

}  // namespace tvx::library
