#pragma once

#include <QObject>

namespace tvx::htmled {

/// Hears when the system, or somebody at a terminal, wants the program to end (SIGTERM, SIGINT, SIGHUP).
/// There is one at a time.
class Termination final : public QObject {
  Q_OBJECT
 public:
  Termination();
  ~Termination() override;

 signals:
  /// In the loop's thread, some time after the signal.
  void asked(int signal);
};

}  // namespace tvx::htmled
