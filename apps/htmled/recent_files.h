#pragma once

#include <QObject>
#include <QStringList>

class QMenu;

namespace tvx::htmled {

/// The files that the user had open last, the latest first: kept in the program's settings, for all windows.
class RecentFiles final : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;

  static QStringList all();
  static void add(const QString& path);
  static void clear();
  /// The menu has an item for each of them whenever it opens; what is gone is grey.
  void fill(QMenu& menu);

 signals:
  void chosen(const QString& path);

 private:
  void show_in(QMenu& menu);
};

}  // namespace tvx::htmled
