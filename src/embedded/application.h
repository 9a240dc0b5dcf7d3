#pragma once

#include <cstdint>

namespace tvx::embedded {

/// Sees to it that there is a QApplication: the program's own, or one of ours, off screen where there is no
/// desktop. Throws RuntimeError where the program's own can't be used from here, and where `on_x11` is wanted
/// and there is no such desktop.
void need_application(bool on_x11);

/// Whether the X Window System has a window of this number.
bool is_window_on_x11(std::uint64_t number);

/// Whether windows have a number in the X Window System.
bool is_on_x11();

}  // namespace tvx::embedded
