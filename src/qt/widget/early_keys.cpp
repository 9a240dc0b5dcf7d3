#include "tvx/qt/widget/early_keys.h"

#include <QCoreApplication>
#include <utility>

namespace tvx::qt {
namespace {

constexpr int poll_milliseconds = 20;
/// A page that takes longer than this won't come.
constexpr qint64 longest_wait = 20'000;
constexpr std::size_t most_keys = 1'000;

}  // namespace

EarlyKeys::EarlyKeys(Page page) : page_(std::move(page)) {
  QObject::connect(&timer_, &QTimer::timeout, this, &EarlyKeys::deliver);
}

void EarlyKeys::start() { QCoreApplication::instance()->installEventFilter(this); }

bool EarlyKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (!widget || !page_.is_page(*widget) || keys_.size() >= most_keys) return false;
  // While some wait, those that follow do.
  if (keys_.empty()) {
    if (!page_.waits_for_caret()) {
      end();
      return false;
    }
    since_.start();
    timer_.start(poll_milliseconds);
  }
  keys_.emplace_back(event->clone());
  event->accept();
  return true;
}

void EarlyKeys::deliver() {
  if (page_.waits_for_caret() && since_.elapsed() < longest_wait) return;
  if (page_.input() || since_.elapsed() >= longest_wait) end();
}

void EarlyKeys::end() {
  timer_.stop();
  QCoreApplication::instance()->removeEventFilter(this);
  const QPointer<QWidget> input = page_.input();
  for (const auto& key : std::exchange(keys_, {}))
    if (input) QCoreApplication::sendEvent(input, key.get());
}

}  // namespace tvx::qt
