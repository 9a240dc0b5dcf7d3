#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "tvx/exported/stage.h"

namespace tvx::exported {

/// What needs a desktop: the library loads it when a control is first shown in a window. It stays until the
/// process ends, for what it is made of can't be unloaded.
class WindowPart {
 public:
  virtual ~WindowPart() = default;
  /// Throws RuntimeError where there is no desktop for it.
  virtual std::unique_ptr<Stage> make_stage(StageOwner& owner, const Position& position) = 0;
  /// Lets the toolkit's loop run: what is to be done now, or else waits that long for something.
  virtual void pump(std::int64_t milliseconds) = 0;
  /// From any thread.
  virtual void post(std::function<void()> task) = 0;
};

/// Under this name the part gives itself; it is one for the process.
inline constexpr const char* window_part_entry = "tvx_window_part";
using WindowPartEntry = WindowPart* (*)();

/// The file "tvxhtml/window.so" beside the library. Throws RuntimeError where it can't be loaded.
WindowPart* load_window_part();

}  // namespace tvx::exported
