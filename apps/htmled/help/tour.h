#pragma once

namespace tvx::htmled {

class Window;

/// Shows a page to read and to try things on, in no file of the user's.
void open_tour(Window& window);

}  // namespace tvx::htmled
