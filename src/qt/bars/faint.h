#pragma once

#include <QColor>

namespace tvx::qt {

/// A colour that lets through what is below it: 0 nothing of its own, 1 all.
inline QColor faint(QColor colour, float opacity) {
  colour.setAlphaF(opacity);
  return colour;
}

}  // namespace tvx::qt
