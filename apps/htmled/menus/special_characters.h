#pragma once

#include <QDialog>
#include <functional>

class QComboBox;
class QGridLayout;
class QLabel;

namespace tvx::htmled {

/// Characters that keyboards lack, by subject. A press types one into the page; the dialog stays for more.
class SpecialCharacters final : public QDialog {
  Q_OBJECT
 public:
  SpecialCharacters(std::function<void(const QString&)> type, QWidget* parent);

 private:
  void show_group(int index);

  std::function<void(const QString&)> type_;
  QComboBox* groups_;
  QWidget* field_;
  QGridLayout* grid_;
  QLabel* sample_;
};

class Window;
/// For the editor in front, beside the page.
void open_special_characters(Window& window);

}  // namespace tvx::htmled
