#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tvx/library/members/value.h"

namespace tvx::library {

/// An object whose members are reached by name, without regard to case. Unknown names throw
/// RuntimeError(438), a set of what can only be read RuntimeError(383).
///
/// A member with arguments is both: `Buttons(10)` gets an item, `getAttribute("href")` calls. `invoke` takes
/// either; `arguments` come back as the callee left them.
class Object {
 public:
  virtual ~Object() = default;
  /// What it is: "element", "document", "style", "collection", ...
  virtual std::u16string_view kind() const = 0;
  /// What tells it from others of its kind when it travels as a value: name and value.
  virtual std::vector<std::pair<std::string, Value>> description() const { return {}; }
  virtual Value invoke(std::u16string_view name, Values& arguments) = 0;
  /// Whether a member without arguments does something, or makes something anew: a language that tells
  /// reading from calling doesn't invoke it to read it.
  virtual bool is_operation(std::u16string_view) const { return false; }
  virtual void set(std::u16string_view name, const Value& value);
  /// What `object(arguments)` means: an item of a collection. RuntimeError(438) where it has none.
  virtual Value item(Values& arguments);

  Value get(std::u16string_view name) {
    Values none;
    return invoke(name, none);
  }
};

[[noreturn]] void unknown_member(std::u16string_view name);
[[noreturn]] void read_only_member();
/// Throws RuntimeError(450) unless there are between `least` and `most` arguments.
void expect_arguments(const Values& arguments, std::size_t least, std::size_t most);

}  // namespace tvx::library
