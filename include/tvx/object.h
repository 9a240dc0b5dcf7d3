#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "tvx/error.h"

namespace tvx::library {
class Object;
}

namespace tvx {

/// What a member of an object has: nothing, a truth value, a whole number, a number, or a text in UTF-16.
using Value = std::variant<std::monostate, bool, std::int32_t, double, std::u16string>;

/// An object of the document's model, an element say, or nothing. Its members are reached by paths of names,
/// without regard to case, arguments in brackets: "tagName", "style.color", "getAttribute(\"href\")",
/// "all.tags(\"P\").item(0).innerHTML".
///
/// Copies stand for the same object. One that has left its document stays valid. Members fail with
/// RuntimeError: 438 for a name that is none, 91 for nothing and where what they need is gone, 424 where a
/// step of the path isn't an object, 5 for what is no path.
class Object {
 public:
  /// Nothing.
  Object() = default;
  explicit Object(std::shared_ptr<library::Object> inside) : inside_(std::move(inside)) {}
  explicit operator bool() const { return inside_ != nullptr; }

  /// "element", "document", "style", "collection", ...; "" for nothing.
  std::u16string kind() const;
  /// A member's value, or the result of a call; nothing where that is an object or a list.
  Value get(std::u16string_view path) const;
  /// The object that a member is; nothing where it is none.
  Object object(std::u16string_view path) const;
  /// Throws RuntimeError(383) for what can only be read.
  void set(std::u16string_view path, const Value& value) const;

 private:
  std::shared_ptr<library::Object> inside_;
};

}  // namespace tvx
