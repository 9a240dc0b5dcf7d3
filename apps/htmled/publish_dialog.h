#pragma once

#include <QDialog>

#include "htmled/publishing.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

namespace tvx::htmled {

/// Asks for the server that images are published to.
class PublishDialog final : public QDialog {
  Q_OBJECT
 public:
  explicit PublishDialog(const PublishAccount& account, QWidget* parent = nullptr);

  /// As the user left it, without white space at the ends of texts.
  PublishAccount account() const;

 private:
  void protocol_changed();
  QLineEdit* add_line(const char* name, const QString& text, const QString& hint = {});

  QComboBox* protocol_;
  QSpinBox* port_;
  QLineEdit *host_, *user_, *password_, *folder_, *address_;
  QCheckBox *passive_, *at_once_;
  Protocol shown_;
};

}  // namespace tvx::htmled
