#pragma once

#include <filesystem>

namespace tvx::qt {

/// Whether anything in this machine draws faster than its processor, by what the system has among its
/// devices.
bool has_graphics_card(const std::filesystem::path& devices = "/dev");

/// Lives while a program makes its application object, after prepare_web_engine(), and is for programs that
/// draw with nothing but widgets and the editor. Without a graphics card OpenGL ends in the processor, after
/// a search that takes as long as all the rest of the start, and by a longer way for each frame: so toolkit
/// and engine are told to draw there from the start. What somebody has chosen in the environment stays, and
/// so does what a Wayland session offers. That toolkit and engine miss OpenGL then is no news in a terminal.
class WayToDraw {
 public:
  explicit WayToDraw(const std::filesystem::path& devices = "/dev");
  /// The environment of programs that this one starts doesn't forbid them OpenGL.
  ~WayToDraw();
  WayToDraw(const WayToDraw&) = delete;
  WayToDraw& operator=(const WayToDraw&) = delete;

  bool by_processor() const { return by_processor_; }

 private:
  const bool by_processor_;
};

}  // namespace tvx::qt
