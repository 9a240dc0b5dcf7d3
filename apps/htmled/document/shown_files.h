#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

namespace tvx::core {
class HTMLed;
}

namespace tvx::htmled {

/// The files of this computer that a page shows, its style sheets with what these import, and its pictures.
/// Where another program writes one, the page shows what has become of it. That is no change of the page.
class ShownFiles final : public QObject {
 public:
  /// The control outlives this.
  explicit ShownFiles(core::HTMLed& control, QObject* parent = nullptr);

  /// The page may show other files by now: looks when nothing has changed for a while.
  void look_later() { look_.start(); }

 private:
  struct Stamp {
    QDateTime time;
    qint64 size = -1;
    bool operator==(const Stamp&) const = default;
  };

  static Stamp stamp_of(const QString& path);
  void look();
  void compare();
  void show_again(const QSet<QString>& changed);
  void watch();
  /// The sheet's own path and those of all that it imports.
  static QSet<QString> files_of_sheet(const QString& path);

  core::HTMLed& control_;
  QFileSystemWatcher watcher_;
  QTimer look_, compare_;
  QHash<QString, Stamp> files_;  // as they are shown
  QHash<QString, Stamp> seen_;   // as those were that were others at the last look
};

}  // namespace tvx::htmled
