#include "tvx/qt/support/escape_watch.h"

#include <QApplication>
#include <QKeyEvent>
#include <QThread>
#include <QWindow>

#include "tvx/qt/support/escape_connection.h"
#include "tvx/qt/support/words.h"

namespace tvx::qt {
namespace {

// In milliseconds from the start.
constexpr qint64 listens_after = 20, waits_after = 100, says_so_after = 500, between_questions = 20;

QList<quint32> shown_windows() {
  QList<quint32> windows;
  for (const QWindow* window : QGuiApplication::topLevelWindows())
    if (window->isVisible() && window->handle()) windows << quint32(window->winId());
  return windows;
}

}  // namespace

void EscapeWatch::install() {
  static QPointer<EscapeWatch> only;
  if (!only && qGuiApp) only = new EscapeWatch;
}

EscapeWatch::EscapeWatch() : QObject(qGuiApp) { set_interruption_watch(this); }

EscapeWatch::~EscapeWatch() {
  if (interruption_watch() == this) set_interruption_watch(nullptr);
}

int EscapeWatch::loop_level() const { return QThread::currentThread()->loopLevel(); }

void EscapeWatch::started() {
  since_.start();
  asked_ = 0;
}

bool EscapeWatch::wants_to_stop() {
  const qint64 now = since_.elapsed();
  if (now < listens_after || now - asked_ < between_questions) return false;
  asked_ = now;
  if (!listening_) listen();
  if (now >= waits_after && !std::exchange(waits_, true)) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  if (!connection_) return false;
  if (now >= says_so_after && !note_) show_note();
  const auto pressed = connection_->last_press();
  if (!pressed) return false;
  stopped_by_ = *pressed;
  if (!std::exchange(takes_away_, true)) qGuiApp->installEventFilter(this);
  return true;
}

void EscapeWatch::listen() {
  listening_ = true;
  if (!connection_) connection_ = EscapeConnection::open();
  if (connection_) connection_->listen_to(shown_windows());
}

// Escapes that were pressed once more while all was taken back mean the same.
void EscapeWatch::ended() {
  if (!std::exchange(listening_, false)) return;
  if (connection_) {
    if (const auto pressed = connection_->last_press(); pressed && takes_away_) stopped_by_ = *pressed;
    connection_->listen_to({});
  }
  if (std::exchange(waits_, false)) QGuiApplication::restoreOverrideCursor();
  delete note_;
}

// Painted at once: no loop runs that would do it.
void EscapeWatch::show_note() {
  QWidget* window = QApplication::activeWindow();
  if (!window) return;
  note_ = new QLabel(translated(u"Press Escape to stop"), window);
  note_->setObjectName(QStringLiteral("escapeNote"));
  note_->setAutoFillBackground(true);
  note_->setFrameShape(QFrame::Box);
  note_->setMargin(8);
  note_->adjustSize();
  note_->move((window->width() - note_->width()) / 2, window->height() * 3 / 4);
  note_->show();
  note_->raise();
  note_->repaint();
}

// The window gets the key that has stopped something when its loop runs again.
bool EscapeWatch::eventFilter(QObject* watched, QEvent* event) {
  const bool press = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
  if (!press && event->type() != QEvent::KeyRelease) return QObject::eventFilter(watched, event);
  const auto* key = static_cast<const QKeyEvent*>(event);
  if (key->key() != Qt::Key_Escape) return QObject::eventFilter(watched, event);
  // The clock of the server turns over after 49 days.
  const bool later = qint32(quint32(key->timestamp()) - quint32(stopped_by_)) > 0;
  if (later && !key->isAutoRepeat()) {
    takes_away_ = false;
    qGuiApp->removeEventFilter(this);
    if (press) return QObject::eventFilter(watched, event);
  }
  event->accept();
  return true;
}

}  // namespace tvx::qt
