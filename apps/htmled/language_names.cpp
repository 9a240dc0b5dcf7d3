#include "htmled/language_names.h"

#include <QLocale>

namespace tvx::htmled {

QString own_language_name(const QString& tag) {
  const QLocale locale(tag);
  if (locale.language() == QLocale::C) return tag;
  QString name = locale.nativeLanguageName();
  if (name.isEmpty()) return tag;
  name[0] = name[0].toUpper();
  return tag.contains(u'-') ? QStringLiteral("%1 (%2)").arg(name, locale.nativeTerritoryName()) : name;
}

}  // namespace tvx::htmled
