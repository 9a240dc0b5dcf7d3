#pragma once

#include <QObject>
#include <QStringList>

class QMimeData;
class QWidget;

namespace tvx::htmled {

/// Pages dropped on a window are opened, wherever on it they are dropped. A drop without any is left to the
/// widget below: a picture goes into the document.
class FileDrops final : public QObject {
  Q_OBJECT
 public:
  explicit FileDrops(QWidget& window);

  /// The files that are dragged: pages, and the names of what else is among them.
  struct Files {
    QStringList pages, others;
  };
  static Files files_in(const QMimeData& data);

 signals:
  void dropped(const QStringList& pages, const QStringList& others);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;

  QWidget& window_;
};

}  // namespace tvx::htmled
