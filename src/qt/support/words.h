#pragma once

#include <QCoreApplication>
#include <QString>
#include <string_view>

#include "tvx/qt/support/strings.h"

namespace tvx::qt {

/// A text that the control itself says, in the program's language where that has a translator for it.
inline QString translated(std::u16string_view english) {
  if (english.empty()) return {};
  return QCoreApplication::translate("HTMLed", to_qt(english).toUtf8().constData());
}

}  // namespace tvx::qt
