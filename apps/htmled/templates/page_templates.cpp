#include "htmled/templates/page_templates.h"

#include <QCollator>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>
#include <iterator>
#include <map>

#include "tvx/base/url.h"
#include "tvx/files/brought_files.h"
#include "tvx/qt/support/strings.h"

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
  if (!chosen.own) return in_language(QString::fromUtf8(bytes), language).toUtf8();
  return QByteArray::fromStdString(files::with_brought_files(
      bytes.toStdString(), qt::from_qt(QFileInfo(chosen.file).absolutePath()), file_url));
}

QByteArray with_copies(const QByteArray& page, const QString& folder, const QString& file) {
  const QFileInfo target(file);
  const QString beside = target.completeBaseName() + QStringLiteral("_files");
  const QDir copies(target.dir().filePath(beside));
  QSet<QString> taken;
  std::map<QString, QString> addresses;
  const auto copy = [&](const QString& source) {
    QString name = QFileInfo(source).fileName();
    for (int number = 2; taken.contains(name); ++number)
      name = QStringLiteral("%1-%2").arg(number).arg(QFileInfo(source).fileName());
    taken.insert(name);
    const QString path = copies.filePath(name);
    if (QFileInfo(path) != QFileInfo(source)) {
      QDir().mkpath(copies.path());
      QFile::remove(path);
      if (!QFile::copy(source, path)) return QUrl::fromLocalFile(source).toString(QUrl::FullyEncoded);
    }
    return QString::fromLatin1(QUrl::toPercentEncoding(beside) + '/' + QUrl::toPercentEncoding(name));
  };
  return QByteArray::fromStdString(
      files::with_brought_files(page.toStdString(), qt::from_qt(folder), [&](std::u16string_view path) {
        const QString source = qt::to_qt(path);
        const auto [known, is_new] = addresses.try_emplace(source);
        if (is_new) known->second = copy(source);
        return qt::from_qt(known->second);
      }));
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
