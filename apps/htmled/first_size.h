#pragma once

#include <QSize>

class QWidget;

namespace tvx::htmled {

/// Gives a window the size that it has at first: the wanted one, or as much of it as its screen has room for
/// beside the frame that the desktop puts around it.
void set_first_size(QWidget& window, QSize wanted);

}  // namespace tvx::htmled
