#pragma once

#include <utility>

#include "tvx/exported/module.h"
#include "tvx/exported/texts.h"
#include "tvx/exported/values.h"

/// What the calls of all kinds of objects have in common.
namespace tvx::exported {

/// The arguments of a call: values, and the references that some of them are.
struct Arguments {
  const tvx_value* given;
  library::Values values;

  Arguments(const tvx_value* arguments, std::uint32_t count)
      : given(arguments), values(values_from(arguments, count)) {}
  /// What a call has left in an argument goes to where its reference leads.
  void give_back(std::size_t index, library::Type type) const {
    if (given[index].type == TVX_REFERENCE) replace_value(*given[index].as.reference, values[index], type);
  }
};

/// GetIDsOfNames: the number that `number_of` has for each name, -1 for one that means nothing.
template <class NumberOf>
tvx_result numbers_of_names(const tvx_text* names, std::uint32_t count, std::int32_t* numbers,
                            NumberOf&& number_of) noexcept {
  if ((!names || !numbers) && count > 0) return TVX_POINTER;
  return guarded([&] {
    tvx_result answer = TVX_OK;
    for (std::uint32_t i = 0; i < count; ++i) {
      numbers[i] = number_of(view_of(names[i]));
      if (numbers[i] < 0) answer = TVX_NO_NAME;
    }
    return answer;
  });
}

/// Runs a member's work, which gives its result; what it throws is told as the host's `error`.
template <class Call>
tvx_result invoke(tvx_value* result, tvx_error* error, Call&& call) noexcept {
  if (result) *result = {};
  if (error) *error = {};
  return guarded([&]() -> tvx_result {
    try {
      tvx_value value = {};
      const tvx_result answer = call(value);
      if (result)
        *result = value;
      else
        clear_value(value);
      return answer;
    } catch (...) {
      const tvx_result failed = Module::only().caught(std::current_exception());
      const auto& failure = Module::only().last_failure();
      if (error && failure && failed != TVX_NO_MEMORY) *error = {failure->number, 0, new_text(failure->text)};
      return failed;
    }
  });
}

}  // namespace tvx::exported
