#pragma once

#include <QCoreApplication>
#include <QDialog>
#include <QString>

class QLineEdit;

namespace tvx::qt {

/// Asks for the address of a link. It can be agreed to once there is one.
class LinkDialog final : public QDialog {
  Q_DECLARE_TR_FUNCTIONS(tvx::qt::LinkDialog)

 public:
  explicit LinkDialog(const QString& address, QWidget* parent = nullptr);

  /// Without white space around it.
  QString address() const;

 private:
  const QString given_;
  QLineEdit* address_;
};

}  // namespace tvx::qt
