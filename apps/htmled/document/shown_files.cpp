#include "htmled/document/shown_files.h"

#include <QFile>
#include <QFileInfo>
#include <string>
#include <utility>

#include "tvx/base/strings.h"
#include "tvx/base/url.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/set_attribute_again.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/files/file_addresses.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

using qt::from_qt;
using qt::to_qt;

constexpr int pause_of_typing = 1000;
/// A program that writes a file takes a moment, in which it may be empty, or gone.
constexpr int pause_of_writing = 150;
/// The system keeps a list of all that is watched, and not an endless one.
constexpr qsizetype most_files = 500;

bool is_sheet(const files::FileAddress& address) {
  return address.place.element->is(dom::Tag::Link) && address.place.attribute == dom::names::href;
}

std::u16string text_of(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? from_utf8(file.readAll().toStdString()) : u"";
}

/// To the engine and to whoever shows the page, for both of which the address alone is the same.
void say_again(const files::FileAddress& address) {
  dom::Element& element = *address.place.element;
  if (is_sheet(address)) {
    const auto sheet = dom::style::style_of(dom::document_of(element)).sheet_of(element);
    if (sheet) sheet->set_href(sheet->href());
  } else if (!address.place.attribute.empty()) {
    dom::set_attribute_again(element, address.place.attribute);
  }
}

}  // namespace

ShownFiles::ShownFiles(core::HTMLed& control, QObject* parent) : QObject(parent), control_(control) {
  look_.setSingleShot(true);
  look_.setInterval(pause_of_typing);
  compare_.setSingleShot(true);
  compare_.setInterval(pause_of_writing);
  connect(&look_, &QTimer::timeout, this, &ShownFiles::look);
  connect(&compare_, &QTimer::timeout, this, &ShownFiles::compare);
  const auto later = [this] { compare_.start(); };
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, later);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, later);
}

ShownFiles::Stamp ShownFiles::stamp_of(const QString& path) {
  const QFileInfo file(path);
  return file.exists() ? Stamp{file.lastModified(), file.size()} : Stamp{};
}

QSet<QString> ShownFiles::files_of_sheet(const QString& path) {
  QSet<QString> found{path};
  QStringList open{path};
  while (!open.isEmpty() && found.size() < most_files) {
    const QString sheet = open.takeLast();
    const std::u16string text = text_of(sheet);
    if (!contains(text, u"@")) continue;
    for (const dom::style::Import& import : dom::style::imports_of(dom::style::parse_rules(text))) {
      const auto address = resolve_url(trimmed(import.url), file_url(from_qt(sheet)));
      const auto imported = address ? local_path(*address) : std::nullopt;
      if (!imported || found.contains(to_qt(*imported))) continue;
      found.insert(to_qt(*imported));
      open.append(to_qt(*imported));
    }
  }
  return found;
}

// A file that has gone for the moment is waited for: it is what the page names, until the page names another.
void ShownFiles::look() {
  const auto document = control_.DOM();
  if (!document) return;
  QHash<QString, Stamp> shown;
  const auto add = [&](const QString& path) {
    if (shown.size() < most_files) shown.insert(path, files_.contains(path) ? files_[path] : stamp_of(path));
  };
  for (const files::FileAddress& each : files::file_addresses(document->tree(), document->url())) {
    if (!each.shown) continue;
    if (!is_sheet(each)) {
      add(to_qt(each.path));
      continue;
    }
    for (const QString& file : files_of_sheet(to_qt(each.path))) add(file);
  }
  for (auto gone = files_.cbegin(); gone != files_.cend(); ++gone)
    if (!QFileInfo::exists(gone.key())) shown.insert(gone.key(), gone.value());
  files_ = std::move(shown);
  watch();
}

// A file that is replaced by another one isn't watched any more; its folder tells of the new one.
void ShownFiles::watch() {
  QSet<QString> wanted;
  for (auto file = files_.cbegin(); file != files_.cend(); ++file) {
    if (QFileInfo::exists(file.key())) wanted.insert(file.key());
    wanted.insert(QFileInfo(file.key()).absolutePath());
  }
  const QStringList now = watcher_.files() + watcher_.directories();
  const QSet<QString> watched(now.begin(), now.end());
  const QSet<QString> more = wanted - watched, less = watched - wanted;
  if (!less.isEmpty()) watcher_.removePaths(less.values());
  if (!more.isEmpty()) watcher_.addPaths(more.values());
}

// What is another file than was shown is shown once it stays so.
void ShownFiles::compare() {
  QSet<QString> changed;
  QHash<QString, Stamp> waiting;
  for (auto file = files_.begin(); file != files_.end(); ++file) {
    const Stamp now = stamp_of(file.key());
    if (now == Stamp{} || now == file.value()) continue;
    if (seen_.value(file.key()) == now) {
      changed.insert(file.key());
      file.value() = now;
    } else {
      waiting.insert(file.key(), now);
    }
  }
  seen_ = std::move(waiting);
  watch();
  if (!seen_.isEmpty()) compare_.start();
  if (!changed.isEmpty()) show_again(changed);
}

void ShownFiles::show_again(const QSet<QString>& changed) {
  const auto document = control_.DOM();
  if (!document) return;
  for (const files::FileAddress& each : files::file_addresses(document->tree(), document->url())) {
    if (!each.shown) continue;
    const QString path = to_qt(each.path);
    const bool concerned = is_sheet(each) ? files_of_sheet(path).intersects(changed) : changed.contains(path);
    if (concerned) say_again(each);
  }
  look_later();
}

}  // namespace tvx::htmled
