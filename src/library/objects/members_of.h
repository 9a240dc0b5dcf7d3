#pragma once

#include <span>
#include <string_view>
#include <type_traits>

#include "tvx/base/strings.h"
#include "tvx/library/objects/object.h"

namespace tvx::library {

/// A member of a kind of object: a row. `get` or `call` answers `invoke`; a row without `set` is read-only.
template <class Self>
struct MemberOf {
  std::u16string_view name;
  Value (*get)(Self& self) = nullptr;
  void (*set)(Self& self, const Value& value) = nullptr;
  Value (*call)(Self& self, Values& arguments) = nullptr;
};

template <class Self>
const MemberOf<Self>* find_member(std::span<const MemberOf<Self>> rows, std::u16string_view name) {
  for (const MemberOf<Self>& row : rows)
    if (equals_ignoring_ascii_case(row.name, name)) return &row;
  return nullptr;
}

template <class Self>
bool is_operation_named(std::span<const MemberOf<Self>> rows, std::u16string_view name) {
  const MemberOf<Self>* row = find_member(rows, name);
  return row && row->call;
}

/// Answers `invoke` from a row. Arguments after a property are an item of what it gives: `rows(2)`.
template <class Self>
Value invoke_member(const MemberOf<Self>& row, Self& self, Values& arguments) {
  if (row.call) return row.call(self, arguments);
  const Value value = row.get(self);
  if (arguments.empty()) return value;
  const ObjectHandle object = value.to_object();
  if (!object) type_mismatch();
  return object->item(arguments);
}

template <class Self>
void set_member(const MemberOf<Self>& row, Self& self, const Value& value) {
  if (!row.set) read_only_member();
  row.set(self, value);
}

/// A member by its name, of a kind with these rows.
template <class Self>
Value invoke_named(std::span<const MemberOf<Self>> rows, std::u16string_view name, Self& self,
                   Values& arguments) {
  const MemberOf<Self>* row = find_member(rows, name);
  if (!row) unknown_member(name);
  return invoke_member(*row, self, arguments);
}

template <class Self>
void set_named(std::span<const MemberOf<Self>> rows, std::u16string_view name, Self& self,
               const Value& value) {
  const MemberOf<Self>* row = find_member(rows, name);
  if (!row) unknown_member(name);
  set_member(*row, self, value);
}

/// What a call gives, nothing where it gives nothing.
template <class Call>
Value result_of(Call&& call) {
  if constexpr (std::is_void_v<decltype(call())>) {
    call();
    return {};
  } else {
    return call();
  }
}

}  // namespace tvx::library
