#pragma once

#include <QString>
#include <string>
#include <string_view>

/// Both sides count 16-bit code units, so nothing is lost on the way.
namespace tvx::qt {

inline QString to_qt(std::u16string_view text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), qsizetype(text.size()));
}
inline std::u16string from_qt(const QString& text) { return text.toStdU16String(); }

}  // namespace tvx::qt
