#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "htmled/window.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/message_loop.h"

class QAction;
class QMenu;

namespace tvx::x11 {

/// htmled's window on the X server's screen, with a page in a file. What the user does comes from the server;
/// the test sees what came of it from within.
class EditorOnScreen : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// Starts with this page; the window has the keys, and the document a caret.
  void start(const QByteArray& page);
  void wait_for_caret();

  core::HTMLed& control() { return window_->editor().control(); }
  browser::HTMLDocument& document() { return *control().DOM(); }
  std::string html();  // of the body
  std::string text();
  bool settle();
  QByteArray file(const QString& name = QStringLiteral("page.html")) const;
  QString path_of(const QString& name) const { return folder_.filePath(name); }

  /// The value of an expression in the page.
  std::string in_page(const QString& expression);
  /// Where an element's box is on the screen, from its left top (0, 0) to its right bottom (1, 1).
  QPoint place_of(const QString& selector, double x, double y);
  /// The left edge of a character of the element's first text.
  QPoint place_of_character(const QString& selector, int character);
  /// The middle of a widget.
  static QPoint middle_of(const QWidget& widget);
  QWidget* toolbar_button(std::u16string_view key);

  /// All menus above an item of the window's menus, the one in the bar first.
  std::vector<QMenu*> way_to(const std::string& name);
  QAction* item(const std::string& name);
  /// Through the bar and the menus below to the item, a press each.
  void choose(const std::string& name);

  /// Opens Insert, Table; where the grid has the box for a size.
  QPoint place_in_table_grid(int rows, int columns);

  /// What is done to the next dialog or menu, once it is there. Each has a loop of its own, within which
  /// whoever opened it waits.
  void answer_dialog(std::function<void(QDialog&)> answer);
  void answer_menu(std::function<void(QWidget&)> answer);
  bool answered() const { return !answer_; }
  /// Whether the window asks before it closes; it stays.
  bool closing_asks();

  QTemporaryDir folder_;
  qt::MessageLoop loop_;
  std::unique_ptr<htmled::Window> window_;

 private:
  QPoint on_screen(const std::string& place);

  void watch();

  /// What to do with it now; nothing while it hasn't come.
  std::function<std::function<void()>()> answer_;
  std::unique_ptr<QTimer> watch_;
};

}  // namespace tvx::x11
