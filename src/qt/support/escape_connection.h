#pragma once

#include <QList>
#include <QtGlobal>
#include <memory>
#include <optional>

namespace tvx::qt {

/// Hears of Escape while the program's own loop doesn't run: a second connection to the X server, on which
/// presses of keys in the program's windows are told as well.
class EscapeConnection {
 public:
  /// Null where the program isn't shown by an X server, or that can't be reached.
  static std::unique_ptr<EscapeConnection> open();
  ~EscapeConnection();
  EscapeConnection(const EscapeConnection&) = delete;
  EscapeConnection& operator=(const EscapeConnection&) = delete;

  /// From now on presses in these windows are heard; with none, nothing is. What came before is forgotten.
  void listen_to(const QList<quint32>& windows);
  /// When Escape was pressed last, in milliseconds of the server's clock; none if it wasn't since it was
  /// asked or listened last.
  std::optional<quint32> last_press();

 private:
  struct Private;
  explicit EscapeConnection(std::unique_ptr<Private> own);
  std::unique_ptr<Private> d_;
};

}  // namespace tvx::qt
