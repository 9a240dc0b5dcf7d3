#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tvx::library {

class Object;
/// A shared handle on an object of the model. It may outlive what it stands for; its members then fail
/// with RuntimeError(91).
using ObjectHandle = std::shared_ptr<Object>;

class Value;
using Values = std::vector<Value>;

/// What passes between a host and a control whose members are called by name: nothing, a boolean, a number,
/// a text, an object, or a list of these. Numbers know their width, because a setter's overflow depends on
/// it.
///
/// The conversions are those of late-bound hosts: a text that reads as a number is that number, true is -1,
/// a number but 0 is true. What can't be converted throws RuntimeError(13) "Type mismatch", what doesn't fit
/// RuntimeError(6) "Overflow".
class Value {
 public:
  Value() = default;
  Value(std::nullptr_t) {}
  Value(bool value) : data_(value) {}
  Value(std::int32_t value) : data_(value) {}
  Value(std::int64_t value) : data_(value) {}
  Value(double value) : data_(value) {}
  Value(std::u16string value) : data_(std::move(value)) {}
  Value(std::u16string_view value) : data_(std::u16string(value)) {}
  Value(const char16_t* value) : data_(std::u16string(value)) {}
  /// An empty handle is nothing.
  Value(ObjectHandle object);
  Value(Values values) : data_(std::move(values)) {}

  bool is_null() const { return std::holds_alternative<std::monostate>(data_); }
  bool is_text() const { return std::holds_alternative<std::u16string>(data_); }
  bool is_object() const { return std::holds_alternative<ObjectHandle>(data_); }

  bool to_boolean() const;
  std::int16_t to_integer16() const;
  std::int32_t to_integer32() const;
  double to_number() const;
  std::u16string to_text() const;
  /// The object, an empty handle for nothing.
  ObjectHandle to_object() const;

  using Data = std::variant<std::monostate, bool, std::int32_t, std::int64_t, double, std::u16string,
                            ObjectHandle, Values>;
  const Data& data() const { return data_; }

  /// Same kind and same content; objects by identity.
  friend bool operator==(const Value& a, const Value& b) { return a.data_ == b.data_; }

 private:
  Data data_;
};

[[noreturn]] void type_mismatch();

}  // namespace tvx::library
