#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QObject>
#include <QPointer>
#include <memory>

#include "tvx/base/interruption.h"

namespace tvx::qt {

class EscapeConnection;

/// Escape stops what takes long: all the window hears meanwhile. Nothing else is dealt with, neither keys nor
/// timers, so that nothing can act on a document that is half changed.
///
/// The display server is asked on a connection of our own, of keys in our own windows only. The window gets
/// the same Escape later; where it has stopped something it means nothing else any more and is taken away.
/// Without X11 nobody is asked, and everything runs to its end.
///
/// After a tenth of a second the pointer says that something is going on, after half a second a note says
/// what stops it.
class EscapeWatch final : public QObject, public InterruptionWatch {
 public:
  /// From now on, for all windows of the program.
  static void install();
  ~EscapeWatch() override;

  int loop_level() const override;
  void started() override;
  void ended() override;
  bool wants_to_stop() override;

 private:
  EscapeWatch();
  bool eventFilter(QObject* watched, QEvent* event) override;
  void listen();
  void show_note();

  std::unique_ptr<EscapeConnection> connection_;
  QElapsedTimer since_;
  qint64 asked_ = 0;
  bool listening_ = false, waits_ = false;
  QPointer<QLabel> note_;
  quint64 stopped_by_ = 0;   // when the Escape was pressed, by the server's clock
  bool takes_away_ = false;  // that Escape is still to come
};

}  // namespace tvx::qt
