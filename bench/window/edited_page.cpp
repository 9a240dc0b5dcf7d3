#include "window/edited_page.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QKeyEvent>
#include <QPixmap>
#include <QTimer>
#include <QVariant>
#include <functional>
#include <memory>

namespace tvx::bench {

double now() {
  static const QElapsedTimer timer = [] {
    QElapsedTimer started;
    started.start();
    return started;
  }();
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

bool wait_until(const std::function<bool()>& holds, double seconds) {
  const double end = now() + seconds * 1000;
  QTimer wakes;  // what holds may be nobody's event
  wakes.start(2);
  while (!holds()) {
    if (now() > end) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

void rest(int milliseconds) {
  const double end = now() + milliseconds;
  wait_until([end] { return now() >= end; });
}

void EditedPage::to_front() {
  window().raise();
  window().activateWindow();
  if (QWidget* widget = input()) widget->setFocus();
  rest(50);
}

QString EditedPage::ask(const QString& script) {
  const auto answer = std::make_shared<std::optional<QString>>();
  page().runJavaScript(script, world(), [answer](const QVariant& value) { *answer = value.toString(); });
  wait_until([&] { return answer->has_value(); });
  return answer->value_or(QString());
}

void EditedPage::post_key(int key, const QString& text, Qt::KeyboardModifiers held) {
  QWidget* target = input();
  if (!target) return;
  QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyPress, key, held, text));
  QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyRelease, key, held, text));
}

double EditedPage::key(int key, const QString& text) {
  expect_key(!text.isEmpty());
  const double since = now();
  post_key(key, text);
  wait_until([this] { return key_is_laid_out(); }, 20);
  return now() - since;
}

/// The rest of the caret's line: where a letter shows.
QRect EditedPage::after_caret() {
  const QStringList box =
      ask(QStringLiteral("(function () { const r = getSelection().getRangeAt(0).getBoundingClientRect();"
                         "return [r.left, r.top, r.height].map(Math.round).join(); })()"))
          .split(u',');
  if (box.size() != 3) return {};
  return {box[0].toInt() - 2, box[1].toInt(), 100, box[2].toInt()};
}

double EditedPage::letter_to_pixel() {
  const QRect line = after_caret();
  const auto picture = [&] { return input()->grab(line).toImage(); };
  const QImage before = picture();
  const double since = now();
  post_key(Qt::Key_W, QStringLiteral("w"));
  wait_until([&] { return picture() != before; }, 5);
  return now() - since;
}

}  // namespace tvx::bench
