#pragma once

#include <QDialog>
#include <QString>
#include <vector>

namespace tvx::htmled {

class Commands;

/// All keys of the program, from its menus, and those that the editor has beside them.
class KeysDialog final : public QDialog {
  Q_OBJECT
 public:
  KeysDialog(const Commands& commands, QWidget* parent);

  struct Line {
    QString menu, command, keys;
  };
  /// In the order of the menus.
  static std::vector<Line> lines(const Commands& commands);
};

}  // namespace tvx::htmled
