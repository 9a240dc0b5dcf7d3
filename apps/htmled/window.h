#pragma once

#include <QMainWindow>

#include "qt/document_file.h"

class QAction;

namespace tvx::platform {
class MessageLoop;
}
namespace tvx::qt {
class HTMLedWidget;
}

namespace tvx::htmled {

/// The editor's window: one document, one file.
class Window final : public QMainWindow {
  Q_OBJECT
 public:
  explicit Window(platform::MessageLoop& loop);
  ~Window() override;

  void start();
  /// False, with the user told, if the file can't be read.
  bool open(const QString& path);
  bool save_to(const QString& path);
  bool modified() const { return modified_; }
  qt::HTMLedWidget& editor() { return *editor_; }
  /// The whole document as it would be saved, the HTML element with all it holds.
  std::u16string document_text();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void make_menus();
  void new_document();
  void ask_and_open();
  bool save();
  bool save_as();
  /// Whether to go on: nothing is changed, or the user saved or dropped it.
  bool may_leave_document();
  void set_modified(bool modified);
  void show_title();
  void tell(const QString& text);

  platform::MessageLoop& loop_;
  qt::HTMLedWidget* editor_;
  qt::DocumentFile file_;
  bool modified_ = false;
  bool loading_ = false;
};

}  // namespace tvx::htmled
