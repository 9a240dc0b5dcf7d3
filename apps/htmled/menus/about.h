#pragma once

class QWidget;

namespace tvx::htmled {

/// The program's name, version and what it is built on.
void show_about(QWidget& window);

}  // namespace tvx::htmled
