#pragma once

#include <QByteArray>
#include <QMap>
#include <QProcess>
#include <QString>

namespace tvx::x11 {

/// An X server without a screen, for the life of this object.
class XDisplay {
 public:
  XDisplay();
  ~XDisplay();
  XDisplay(const XDisplay&) = delete;
  XDisplay& operator=(const XDisplay&) = delete;

  /// Why there is none; empty: there is one.
  const QString& problem() const { return problem_; }
  /// ":7"
  const QByteArray& name() const { return name_; }

  /// Why tests can't run here; empty: they can. Only programs that aren't installed are a reason.
  static inline QString skip_reason;

 private:
  QProcess server_;
  QByteArray name_;
  QString problem_;
};

/// What a program writes to its standard output. This program's event loop runs meanwhile, or nobody would
/// answer the other's question for our clipboard. Fails the test if it takes longer than half a minute.
QByteArray output_of(const QString& program, const QStringList& arguments);
/// Has another program offer bytes on the clipboard in one form, until somebody else does.
void offer(const QByteArray& bytes, const QString& target,
           const QString& selection = QStringLiteral("clipboard"));
/// The same in several forms at once, as programs offer what a user copies.
void offer_forms(const QMap<QString, QByteArray>& forms);

}  // namespace tvx::x11
