#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QSplitter>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

#include "tvx/htmled_widget.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::qt {
namespace {

/// Qt walks through the widgets of a window while it shows them: whatever else ran there, as events that the
/// host had posted, could take away what Qt comes to next.
TEST(WidgetStart, NothingOfTheHostRunsWithinTheShowOfItsWindow) {
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  HTMLedWidget editor;
  layout->addWidget(&editor);
  editor.set_DocumentHTML(QStringLiteral("<P>words</P>"));
  bool ran = false;
  QTimer::singleShot(0, &window, [&ran] { ran = true; });
  QMetaObject::invokeMethod(
      &window, [&ran] { ran = true; }, Qt::QueuedConnection);
  window.show();
  EXPECT_TRUE(editor.started());
  EXPECT_EQ(editor.DocumentHTML(), QStringLiteral("<P>words</P>"));
  EXPECT_FALSE(ran);
}

TEST(WidgetStart, AHostThatWantsItGoneAsSoonAsItIsShown) {
  const QPointer<HTMLedWidget> editor = new HTMLedWidget;
  QTimer::singleShot(0, editor, [editor] { delete editor; });
  editor->show();
  EXPECT_FALSE(editor.isNull());
  for (int turn = 0; editor && turn < 1000; ++turn) QCoreApplication::processEvents();
  EXPECT_TRUE(editor.isNull());
}

TEST(WidgetStart, AmongOtherWidgetsOfAWindow) {
  QMainWindow window;
  auto* tabs = new QTabWidget;
  window.setCentralWidget(tabs);
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(new QLineEdit);
  auto* split = new QSplitter;
  auto *left = new HTMLedWidget, *right = new HTMLedWidget;
  split->addWidget(left);
  split->addWidget(right);
  layout->addWidget(split, 1);
  tabs->addTab(page, QStringLiteral("One"));
  left->set_DocumentHTML(QStringLiteral("<P>left</P>"));
  right->set_DocumentHTML(QStringLiteral("<P>right</P>"));
  window.addToolBar(QStringLiteral("own"))->addAction(left->action(HTMLedWidget::Action::Bold));
  window.show();
  EXPECT_EQ(left->DocumentHTML(), QStringLiteral("<P>left</P>"));
  EXPECT_EQ(right->DocumentHTML(), QStringLiteral("<P>right</P>"));
  EXPECT_TRUE(left->isVisible());
  EXPECT_TRUE(right->isVisible());
}

// Not the first button of its bar: whoever opens a dialog with an editor in it means to write.
TEST(WidgetStart, AsTheFirstFieldOfADialogItTakesTheKeysInItsPage) {
  QDialog dialog;
  auto* layout = new QVBoxLayout(&dialog);
  auto* editor = new HTMLedWidget;
  editor->set_DocumentHTML(QStringLiteral("<P>words</P>"));
  layout->addWidget(editor);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  layout->addWidget(buttons);
  dialog.open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  EXPECT_TRUE(QTest::qWaitFor([&] {
    const QWidget* focused = QApplication::focusWidget();
    return focused && focused == editor->view().input_widget();
  })) << (QApplication::focusWidget() ? QApplication::focusWidget()->metaObject()->className() : "nobody");
}

}  // namespace
}  // namespace tvx::qt
