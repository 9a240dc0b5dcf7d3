#pragma once

#include <QDialog>

class QFormLayout;
class QTabWidget;

namespace tvx::htmled {

class Window;

/// What the program does for all documents. Each change holds at once, in all windows' documents, and is kept
/// for the next start.
class PreferencesDialog final : public QDialog {
  Q_OBJECT
 public:
  explicit PreferencesDialog(Window& window);

 protected:
  // Also in another language.
  void changeEvent(QEvent* event) override;

 private:
  void fill();
  QWidget* make_general();
  QWidget* make_writing();
  QWidget* make_source();
  void add_program_language(QFormLayout& form);
  void add_new_pages(QFormLayout& form);
  void add_keeping(QFormLayout& form);
  /// The source of all documents is to look so from now on.
  void follow_source();

  Window& window_;
  QTabWidget* tabs_ = nullptr;
};

}  // namespace tvx::htmled
