#pragma once

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

namespace tvx::qt {

/// Keys that the user presses after the window has come and before the page has its first caret: they wait
/// for it, in their order. Nobody sees when an editor is ready, and who types at once means the page.
class EarlyKeys final : public QObject {
 public:
  struct Page {
    std::function<bool()> waits_for_caret;
    std::function<bool(const QWidget&)> is_page;
    std::function<QWidget*()> input;  // what takes the keys of the page; null: there is none yet
  };
  explicit EarlyKeys(Page page);

  /// From here on until the first caret stands.
  void start();
  /// Keys wait. They do so for a limited time.
  bool has_keys() const { return !keys_.empty(); }

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void deliver();
  void end();

  Page page_;
  QTimer timer_;
  QElapsedTimer since_;
  std::vector<std::unique_ptr<QEvent>> keys_;
};

}  // namespace tvx::qt
