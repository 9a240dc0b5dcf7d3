#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QObject>
#include <QStringList>
#include <QTimer>

class QLocalSocket;

namespace tvx::htmled {

/// Hands files to the program if the user has it running on this screen already. False: it isn't, or doesn't
/// answer. Needs no application object, so that nothing of the toolkit is started for it.
bool hand_to_running_instance(const QStringList& files);

/// The side that is running: it hears of later starts.
class RunningInstance final : public QObject {
  Q_OBJECT
 public:
  /// What a program that was killed has left is taken over; where another one answers, or there is no folder
  /// for the socket, this one just isn't heard of.
  explicit RunningInstance(QObject* parent = nullptr);
  bool is_listening() const { return server_.isListening(); }

 signals:
  /// Somebody has started the program with these files, which may be none. Not told while a dialog waits for
  /// an answer.
  void started_again(const QStringList& files);

 private:
  void hear(QLocalSocket& socket);
  void tell_when_free();

  QLocalServer server_;
  QList<QStringList> untold_;
  QTimer later_;
};

}  // namespace tvx::htmled
