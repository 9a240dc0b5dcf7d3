#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

#include "tvx/tvxhtml.h"

namespace tvx::core {
class HTMLed;
}
namespace tvx::platform {
class PropertyBag;
}

namespace tvx::exported {

/// Who is told what happens to a control.
class StageOwner {
 public:
  virtual ~StageOwner() = default;
  virtual void property_changed(std::u16string_view key) = 0;
  /// The user wants to close the control's own window: whether that may be.
  virtual bool may_close() = 0;
  virtual void window_closed() = 0;
  /// In pixels.
  virtual void resized(std::int32_t width, std::int32_t height) = 0;
  virtual void focus_changed(bool has_focus) = 0;
};

/// For a position that is left to the desktop.
inline constexpr std::int32_t anywhere = std::numeric_limits<std::int32_t>::min();

/// Where a control is shown, in the words of the header.
struct Position {
  std::uint32_t where = TVX_OFF_SCREEN;
  std::uint64_t window = 0;
  tvx_box box = {anywhere, anywhere, 900, 640};
  /// The number by which the control is known until now; 0: a new one.
  std::int32_t handle = 0;
};

/// What stands around a control: nothing that is seen, or a window. The control is there as long as this is.
class Stage {
 public:
  virtual ~Stage() = default;
  virtual core::HTMLed& control() = 0;
  /// Starts the editor, in a program, or lays it out for a form designer.
  virtual void start(bool user_mode) = 0;
  virtual void show() = 0;
  virtual void hide() = 0;
  virtual void resize(const tvx_box& box) = 0;
  virtual void take_focus() = 0;
  /// Of a window of its own.
  virtual void set_title(std::u16string_view title) = 0;
  /// Of the desktop's; 0: none.
  virtual std::uint64_t window() = 0;
  /// The control's life is over, also within a routine of its own: then this stays until that has returned.
  /// The owner is told nothing more.
  virtual void end() = 0;
};

}  // namespace tvx::exported
