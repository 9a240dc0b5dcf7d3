#include "htmled/templates/page_templates.h"

#include <QCollator>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>
#include <iterator>

namespace tvx::htmled {
namespace {

/// Beside the program, or where it was installed to.
QString common_folder() {
  const QDir program(QCoreApplication::applicationDirPath());
  for (const char* place : {"templates", "../share/tvxhtml/templates"})
    if (const QString path = program.filePath(QString::fromLatin1(place)); QDir(path).exists()) return path;
  return {};
}

QString translated(const QString& english) {
  return QCoreApplication::translate("PageTemplate", english.toUtf8().constData());
}

QByteArray bytes_of(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The words in double braces are the program's.
QString in_language(const QString& page, const QString& language) {
  static const QRegularExpression marked(QStringLiteral(R"re(\{\{(.+?)\}\})re"));
  QString text;
  qsizetype at = 0;
  for (auto found = marked.globalMatch(page); found.hasNext();) {
    const QRegularExpressionMatch match = found.next();
    text += QStringView(page).mid(at, match.capturedStart() - at);
    text += match.captured(1) == QStringLiteral("date")
                ? QLocale(language).toString(QDate::currentDate(), QLocale::LongFormat)
                : translated(match.captured(1)).toHtmlEscaped();
    at = match.capturedEnd();
  }
  text += QStringView(page).mid(at);
  const QString right = QGuiApplication::isRightToLeft() ? QStringLiteral(" dir=\"rtl\"") : QString();
  return text.replace(QStringLiteral("<html lang=\"en\">"),
                      QStringLiteral("<html lang=\"%1\"%2>").arg(language, right));
}

QString title_of(const QString& page, const QString& language) {
  static const QRegularExpression title(QStringLiteral("<title>(.*?)</title>"));
  return in_language(title.match(page).captured(1), language);
}

std::vector<PageTemplate> templates_in(const QString& folder, bool own, const QString& language) {
  std::vector<PageTemplate> found;
  if (folder.isEmpty()) return found;
  for (const QFileInfo& file :
       QDir(folder).entryInfoList({QStringLiteral("*.html"), QStringLiteral("*.htm")}, QDir::Files)) {
    const QString name =
        own ? file.completeBaseName() : title_of(QString::fromUtf8(bytes_of(file.filePath())), language);
    found.push_back({name, file.filePath(), own});
  }
  const QCollator collator;
  std::ranges::sort(found, [&](const PageTemplate& a, const PageTemplate& b) {
    return collator.compare(a.name, b.name) < 0;
  });
  return found;
}

}  // namespace

std::vector<PageTemplate> page_templates(const QString& language) {
  std::vector<PageTemplate> all = templates_in(common_folder(), false, language);
  std::ranges::move(templates_in(own_templates_folder(), true, language), std::back_inserter(all));
  return all;
}

QByteArray content_of(const PageTemplate& chosen, const QString& language) {
  const QByteArray bytes = bytes_of(chosen.file);
  return chosen.own ? bytes : in_language(QString::fromUtf8(bytes), language).toUtf8();
}

QString own_templates_folder() {
  const QString path = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                       QStringLiteral("/tvxHTML/templates");
  return QDir().mkpath(path) ? path : QString();
}

QString own_template_file(const QString& name) {
  QString file = name.trimmed();
  file.replace(u'/', u'-');
  while (file.startsWith(u'.')) file.remove(0, 1);
  const QString folder = own_templates_folder();
  if (file.isEmpty() || folder.isEmpty()) return {};
  return folder + u'/' + file + QStringLiteral(".html");
}

}  // namespace tvx::htmled
