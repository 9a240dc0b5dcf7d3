#pragma once

#include <functional>

namespace tvx::x11 {

/// Runs the event loop until the condition holds; false if it never does. A loaded machine gets half a
/// minute.
bool wait_for(const std::function<bool()>& condition);

}  // namespace tvx::x11
