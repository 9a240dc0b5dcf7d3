#include "tvx/library/objects/object.h"

#include "tvx/base/error.h"

namespace tvx::library {

void unknown_member(std::u16string_view name) {
  throw RuntimeError(errors::unknown_member,
                     u"Object doesn't support this property or method: " + std::u16string(name));
}

void read_only_member() { throw RuntimeError(errors::set_not_permitted_here, u"Set not permitted"); }

void expect_arguments(const Values& arguments, std::size_t least, std::size_t most) {
  if (arguments.size() < least || arguments.size() > most)
    throw RuntimeError(errors::wrong_argument_count, u"Wrong number of arguments");
}

void Object::set(std::u16string_view name, const Value&) { unknown_member(name); }

Value Object::item(Values&) { unknown_member(u"Item"); }

}  // namespace tvx::library
