#include "htmled/document/failure_words.h"

#include <QCoreApplication>
#include <algorithm>

#include "tvx/qt/support/strings.h"

namespace tvx::htmled {

// Which file it was stands after the words, and why after that.
QString words_of(const RuntimeError& error) {
  const QString text = qt::to_qt(error.text());
  const auto tr = [](const char* words) { return QCoreApplication::translate("Window", words); };
  for (const char* words :
       {QT_TRANSLATE_NOOP("Window", "Can't read %1"), QT_TRANSLATE_NOOP("Window", "Can't save %1")})
    if (const QString start = QString::fromUtf8(words).remove(QStringLiteral("%1")); text.startsWith(start)) {
      const qsizetype reason = std::max(text.lastIndexOf(QStringLiteral(": ")), start.size());
      const QString file = text.mid(start.size(), reason - start.size());
      return file.isEmpty() ? tr(words).arg(text.mid(reason)) : tr(words).arg(file) + text.mid(reason);
    }
  return text;
}

}  // namespace tvx::htmled
