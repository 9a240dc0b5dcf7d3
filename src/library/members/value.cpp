#include "tvx/library/members/value.h"

#include <cmath>
#include <optional>

#include "tvx/base/error.h"
#include "tvx/base/numbers.h"
#include "tvx/base/strings.h"

namespace tvx::library {

void type_mismatch() { throw RuntimeError(errors::type_mismatch, u"Type mismatch"); }

namespace {

std::u16string print_number(double number) {
  if (number == std::floor(number) && std::abs(number) < 1e15)
    return to_text(static_cast<std::int64_t>(number));
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.15g", number);
  return from_utf8(buffer);
}

}  // namespace

Value::Value(ObjectHandle object) {
  if (object) data_ = std::move(object);
}

bool Value::to_boolean() const {
  if (const bool* flag = std::get_if<bool>(&data_)) return *flag;
  if (const std::u16string* text = std::get_if<std::u16string>(&data_)) {
    if (equals_ignoring_ascii_case(*text, u"true")) return true;
    if (equals_ignoring_ascii_case(*text, u"false")) return false;
  }
  return to_number() != 0;
}

std::int16_t Value::to_integer16() const { return rounded_to_16_bits(to_number()); }
std::int32_t Value::to_integer32() const { return rounded_to_32_bits(to_number()); }

double Value::to_number() const {
  if (const bool* flag = std::get_if<bool>(&data_)) return *flag ? -1 : 0;
  if (const std::int32_t* number = std::get_if<std::int32_t>(&data_)) return *number;
  if (const std::int64_t* number = std::get_if<std::int64_t>(&data_)) return static_cast<double>(*number);
  if (const double* number = std::get_if<double>(&data_)) return *number;
  if (const std::u16string* text = std::get_if<std::u16string>(&data_))
    if (const std::optional<double> number = parse_number(*text)) return *number;
  type_mismatch();
}

std::u16string Value::to_text() const {
  if (const std::u16string* text = std::get_if<std::u16string>(&data_)) return *text;
  if (const bool* flag = std::get_if<bool>(&data_)) return *flag ? u"True" : u"False";
  if (const std::int32_t* number = std::get_if<std::int32_t>(&data_)) return tvx::to_text(*number);
  if (const std::int64_t* number = std::get_if<std::int64_t>(&data_)) return tvx::to_text(*number);
  if (const double* number = std::get_if<double>(&data_)) return print_number(*number);
  type_mismatch();
}

ObjectHandle Value::to_object() const {
  if (is_null()) return {};
  if (const ObjectHandle* object = std::get_if<ObjectHandle>(&data_)) return *object;
  type_mismatch();
}

}  // namespace tvx::library
