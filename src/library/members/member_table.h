#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "tvx/library/members/value.h"

namespace tvx::core {
class HTMLed;
}

/// The one table of what a host sees of the control: every property, operation and event, with its names,
/// numbers, types, keys and defaults, as src/library/tvxhtml.interface describes them. Calls by name and
/// scripts go by it.
namespace tvx::library {

enum class Type : std::uint8_t {
  None,  // an operation without a result
  Boolean,
  Integer16,
  Integer32,
  String,
  Object,
  Variant,
#include "tvx/interface/type_enumerators.inc"
};
/// As the reference writes it: "boolean", "32-bit number", "EdBorderStyle".
std::u16string_view name_of(Type type);

enum class ByReference : bool { No, Yes };
enum class Optional : bool { No, Yes };

struct Parameter {
  std::u16string_view name;
  Type type;
  ByReference by_reference = ByReference::No;
  Optional optional = Optional::No;
};

/// A value of a table: what a new control's property has.
struct DefaultValue {
  enum class Kind : std::uint8_t { None, Boolean, Number, Text } kind = Kind::None;
  std::int32_t number = 0;
  std::u16string_view text = {};

  constexpr DefaultValue() = default;
  constexpr DefaultValue(bool value) : kind(Kind::Boolean), number(value) {}
  constexpr DefaultValue(std::int32_t value) : kind(Kind::Number), number(value) {}
  constexpr DefaultValue(const char16_t* value) : kind(Kind::Text), text(value) {}
  Value value() const;
};

enum class MemberKind : std::uint8_t { Property, Method };

/// What a host can do with a property.
enum class Access : std::uint8_t {
  ReadWrite,
  DesignTime,  // set at design time only: 382 at run time
  Refused,     // a setter stands but always raises: 387 at design time, 382 at run time
  RefusedDOM,  // as Refused, with 383 at design time
  ReadOnly     // no setter: 383
};

/// A member of `_HTMLed`.
struct Member {
  MemberKind kind;
  std::int32_t number;  // for dispatch; never changes
  std::u16string_view name;
  Type type;  // of the property, of the result
  std::u16string_view description;

  // Properties.
  std::u16string_view key = {};  // in the persisted store, empty: not stored
  DefaultValue initial = {};
  Access access = Access::ReadWrite;
  Value (*get)(core::HTMLed& control) = nullptr;
  void (*set)(core::HTMLed& control, const Value& value) = nullptr;

  // Methods. Arguments come in their parameters' types and go back as the operation left them.
  std::span<const Parameter> parameters = {};
  Value (*call)(core::HTMLed& control, Values& arguments) = nullptr;
};

/// An event of `__HTMLed`. All arguments go by reference.
struct EventMember {
  std::int32_t number;
  std::u16string_view name;
  std::u16string_view description;
  std::span<const Parameter> parameters = {};
};

/// A named number that arguments and properties take.
struct EnumerationMember {
  std::u16string_view name;
  std::int32_t number;
};
struct Enumeration {
  std::u16string_view name;
  std::span<const EnumerationMember> members;
};
std::span<const Enumeration> enumerations();

/// Properties first, each group in the order of its numbers.
std::span<const Member> members();
std::span<const EventMember> events();
/// Names without regard to case; null if there is none.
const Member* find_member(std::u16string_view name);
const EventMember* find_event(std::u16string_view name);

}  // namespace tvx::library
