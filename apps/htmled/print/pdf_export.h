#pragma once

class QWidget;

namespace tvx::htmled {

class Window;

/// Asks for a file, and writes the page in front into it as it is printed, with text that can be selected.
void ask_and_export_pdf(Window& window, QWidget* parent);

}  // namespace tvx::htmled
