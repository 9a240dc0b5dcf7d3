#include "tvx/library/objects/host_object.h"

#include "tvx/base/error.h"
#include "tvx/library/objects/object_path.h"

namespace tvx {

namespace {

library::Object& known(const std::shared_ptr<library::Object>& object) {
  if (!object) throw RuntimeError(errors::object_not_set, u"The object is nothing");
  return *object;
}

library::Value read(const std::shared_ptr<library::Object>& object, std::u16string_view path) {
  std::vector<library::PathStep> steps = library::parse_path(path);
  return library::read_path(known(object), steps);
}

}  // namespace

std::u16string Object::kind() const { return inside_ ? std::u16string(inside_->kind()) : std::u16string(); }

Value Object::get(std::u16string_view path) const { return library::host_value(read(inside_, path)); }

Object Object::object(std::u16string_view path) const {
  const library::Value value = read(inside_, path);
  return value.is_object() ? Object(value.to_object()) : Object();
}

void Object::set(std::u16string_view path, const Value& value) const {
  std::vector<library::PathStep> steps = library::parse_path(path);
  library::write_path(known(inside_), steps, library::value_of(value));
}

}  // namespace tvx

namespace tvx::library {

namespace {

struct ToHost {
  tvx::Value operator()(bool flag) const { return flag; }
  tvx::Value operator()(std::int32_t number) const { return number; }
  tvx::Value operator()(std::int64_t number) const { return static_cast<double>(number); }
  tvx::Value operator()(double number) const { return number; }
  tvx::Value operator()(const std::u16string& text) const { return text; }
  template <class Other>
  tvx::Value operator()(const Other&) const {
    return {};
  }
};

struct FromHost {
  Value operator()(std::monostate) const { return {}; }
  template <class Plain>
  Value operator()(const Plain& plain) const {
    return plain;
  }
};

}  // namespace

tvx::Value host_value(const Value& value) { return std::visit(ToHost{}, value.data()); }
Value value_of(const tvx::Value& value) { return std::visit(FromHost{}, value); }

}  // namespace tvx::library
