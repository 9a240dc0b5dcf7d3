#include "htmled/counted.h"

#include <QLocale>
#include <QStringList>
#include <algorithm>

namespace tvx::htmled {
namespace {

/// Arabic's: none, one, two, a few as 3 to 10, many as 11 to 99, and the others. The last two digits count.
qsizetype among_six(qulonglong number) {
  if (number <= 2) return qsizetype(number);
  const qulonglong end = number % 100;
  return end >= 3 && end <= 10 ? 3 : end >= 11 ? 4 : 5;
}

}  // namespace

QString form_for(const QString& forms, qulonglong number) {
  const QStringList all = forms.split(u'|');
  switch (all.size()) {
    case 2: return all[number == 1 ? 0 : 1];
    case 3: return all[qsizetype(std::min<qulonglong>(number, 2))];
    case 6: return all[among_six(number)];
    default: return all.last();
  }
}

// Some forms are without the number, as a dual: an argument that finds no room would be a warning.
QString counted(const QString& forms, qulonglong number) {
  return form_for(forms, number).replace(QStringLiteral("%1"), QLocale().toString(number));
}

QString counted_of(const QString& forms, qulonglong some, qulonglong all) {
  return form_for(forms, all)
      .replace(QStringLiteral("%1"), QLocale().toString(some))
      .replace(QStringLiteral("%2"), QLocale().toString(all));
}

}  // namespace tvx::htmled
