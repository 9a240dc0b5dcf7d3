#include "htmled/document/files_beside.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include "tvx/dom/document.h"
#include "tvx/dom/tree.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

/// The file from the folder on; empty: the address leads elsewhere.
QString relative_file(const std::u16string& address) {
  const QUrl url(qt::to_qt(address).trimmed());
  const QString path = QDir::cleanPath(url.path(QUrl::FullyDecoded));
  if (!url.isValid() || !url.isRelative() || !url.host().isEmpty() || url.path().isEmpty()) return {};
  return QDir::isAbsolutePath(path) || path.startsWith(QStringLiteral("..")) ? QString() : path;
}

}  // namespace

QStringList files_beside(const dom::Document& document, const QString& folder) {
  QStringList files;
  const auto add = [&](const std::u16string* address) {
    const QString file = address ? relative_file(*address) : QString();
    if (!file.isEmpty() && !files.contains(file) && QFileInfo(QDir(folder).filePath(file)).isFile())
      files.append(file);
  };
  for (const dom::Node* node = &document; node; node = dom::next_in_order(*node)) {
    const auto* element = dom::as<dom::Element>(node);
    if (!element) continue;
    for (const char16_t* name : {u"src", u"background", u"poster"}) add(element->attribute(dom::Name(name)));
    if (element->is(dom::Tag::Link)) add(element->attribute(dom::Name(u"href")));
  }
  return files;
}

QString copy_files(const QStringList& files, const QString& from, const QString& to) {
  const QDir source(from), target(to);
  for (const QString& file : files) {
    const QString copy = target.filePath(file);
    if (QFileInfo::exists(copy)) continue;
    if (!target.mkpath(QFileInfo(file).path()) || !QFile::copy(source.filePath(file), copy)) return copy;
  }
  return {};
}

}  // namespace tvx::htmled
