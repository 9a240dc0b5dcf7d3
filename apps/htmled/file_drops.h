#pragma once

#include <QObject>
#include <QStringList>

class QMimeData;
class QWidget;

namespace tvx::htmled {

/// Pages dropped on a window are opened, wherever on it they are dropped. All else is left to the widget
/// below: a picture goes into the document.
class FileDrops final : public QObject {
  Q_OBJECT
 public:
  explicit FileDrops(QWidget& window);

  /// The pages among what is dragged; none where anything else is among it.
  static QStringList pages_in(const QMimeData& data);

 signals:
  void dropped(const QStringList& paths);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;

  QWidget& window_;
};

}  // namespace tvx::htmled
