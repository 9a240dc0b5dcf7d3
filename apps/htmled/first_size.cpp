#include "htmled/first_size.h"

#include <QScreen>
#include <QWidget>

namespace tvx::htmled {

void set_first_size(QWidget& window, QSize wanted) {
  constexpr QSize frame(16, 48);
  const QWidget* owner = window.parentWidget() ? window.parentWidget()->window() : &window;
  window.resize(wanted.boundedTo(owner->screen()->availableSize() - frame));
}

}  // namespace tvx::htmled
