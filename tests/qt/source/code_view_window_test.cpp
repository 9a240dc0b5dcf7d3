#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>

#include "tvx/base/strings.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/platform/clipboard.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::qt {
namespace {

/// The whole widget, with its engine.
class CodeViewWindow : public testing::Test {
 protected:
  CodeViewWindow() {
    widget.resize(800, 500);
    widget.show();
    widget.start();
    control().set_DocumentHTML(u"<P>one</P><P>two</P>");
  }
  core::HTMLed& control() { return widget.control(); }
  QPlainTextEdit* box() { return widget.findChild<QPlainTextEdit*>(QStringLiteral("TextBox1")); }
  void press(int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(box(), &down);
  }

  MessageLoop loop;
  HTMLedWidget widget{loop};
};

TEST_F(CodeViewWindow, TheToolbarsButtonLeadsThereAndBack) {
  ASSERT_NE(box(), nullptr);
  EXPECT_FALSE(box()->isVisible());
  EXPECT_TRUE(control().press(control().Toolbar1(), u"toggle"));
  EXPECT_TRUE(control().InCodeView());
  EXPECT_TRUE(box()->isVisible());
  EXPECT_EQ(box()->toPlainText(), QStringLiteral("<P>one</P>\n<P>two</P>\n"));
  EXPECT_EQ(control().txtCode().SelStart(), 0) << "the focus has come, and the place is recorded";
  EXPECT_TRUE(control().IsDirty()) << "any press of a toolbar's button marks the document";

  press(Qt::Key_X, {}, QStringLiteral("x"));
  EXPECT_TRUE(control().IsDirty());
  EXPECT_EQ(control().DocumentHTML(), u"x<P>one</P>\r\n<P>two</P>\r\n");
  press(Qt::Key_Z, Qt::ControlModifier, {});
  EXPECT_EQ(control().DocumentHTML(), u"<P>one</P>\r\n<P>two</P>\r\n");
  press(Qt::Key_Y, {}, QStringLiteral("y"));

  EXPECT_TRUE(control().press(control().Toolbar1(), u"toggle"));
  EXPECT_FALSE(control().InCodeView());
  EXPECT_FALSE(box()->isVisible());
  EXPECT_EQ(control().DocumentHTML(), u"y<P>one</P><P>two</P>") << "line ends that were drawn stay out";
  control().undo_document();
  EXPECT_EQ(control().DocumentHTML(), u"<P>one</P><P>two</P>");
}

TEST_F(CodeViewWindow, KeysAndCommandsCutCopyAndPasteInTheCode) {
  control().show_Code();
  ASSERT_TRUE(control().InCodeView());
  control().txtCode().TextBox1().select(3, 3);
  press(Qt::Key_C, Qt::ControlModifier, {});
  EXPECT_EQ(control().clipboard().GetText(), u"one");
  press(Qt::Key_X, Qt::ControlModifier, {});
  EXPECT_EQ(box()->toPlainText(), QStringLiteral("<P></P>\n<P>two</P>\n"));
  press(Qt::Key_V, Qt::ControlModifier, {});
  control().paste_document();
  EXPECT_EQ(box()->toPlainText(), QStringLiteral("<P>oneone</P>\n<P>two</P>\n"));
  control().txtCode().TextBox1().select(3, 6);
  control().cut_document();
  EXPECT_EQ(control().clipboard().GetText(), u"oneone");
  EXPECT_EQ(box()->toPlainText(), QStringLiteral("<P></P>\n<P>two</P>\n"));

  const platform::WindowHandle hwnd = control().txtCode().hwnd();
  EXPECT_NE(platform::SendMessage(hwnd, platform::EM_CANUNDO), 0);
  platform::SendMessage(hwnd, platform::EM_UNDO);
  EXPECT_EQ(box()->toPlainText(), QStringLiteral("<P>oneone</P>\n<P>two</P>\n"));
  platform::SendMessage(hwnd, platform::EM_REDO);
  platform::SendMessage(hwnd, platform::EM_REPLACESEL, 1, reinterpret_cast<platform::Parameter>(u"x"));
  EXPECT_EQ(box()->toPlainText(), QStringLiteral("<P>x</P>\n<P>two</P>\n"));
}

TEST_F(CodeViewWindow, TheCodeStandsWhereTheDocumentStood) {
  control().show_Code();
  QApplication::processEvents();
  const QWidget* face = box()->parentWidget();
  EXPECT_EQ(face->width(), widget.width() - 2);
  EXPECT_GT(face->height(), 300);
  EXPECT_EQ(widget.childAt(400, face->y() + 100)->window(), widget.window());
  EXPECT_TRUE(face->isAncestorOf(widget.childAt(400, face->y() + 100)));
}

TEST_F(CodeViewWindow, ClosingInTheCodeViewIsNoHarm) {
  control().show_Code();
  ASSERT_TRUE(control().InCodeView());
  press(Qt::Key_X, {}, QStringLiteral("x"));
}

}  // namespace
}  // namespace tvx::qt
