#pragma once

#include <string_view>

namespace tvx::platform {

/// What holds a control: a form at run time, a form designer at design time.
class Container {
 public:
  virtual ~Container() = default;

  /// True at run time. May change in a control's life only before it has started.
  virtual bool user_mode() const = 0;

  /// A persisted property, named by its key, has another value; the container will want to save.
  virtual void property_changed(std::u16string_view key) = 0;
};

}  // namespace tvx::platform
