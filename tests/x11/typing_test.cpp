#include <QFileDialog>
#include <QMessageBox>
#include <QPlainTextEdit>

#include "tvx/qt/bars/branch_face.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Where real keys go: after a start, in another document, in the code view.
namespace tvx::x11 {
namespace {

class TypingOnScreen : public EditorOnScreen {
 protected:
  bool typed(const std::string& part) {
    return wait_for([&] { return text().find(part) != std::string::npos; });
  }
  QPlainTextEdit* code() { return window_->findChild<QPlainTextEdit*>(QStringLiteral("TextBox1")); }
};

TEST_F(TypingOnScreen, TheTabThatNewOpensTakesTheKeys) {
  start("<body>\n  <p>A paragraph");
  hands::type(QStringLiteral("abc"));
  ASSERT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  EXPECT_TRUE(wait_for([&] { return html() == "\n  <P>abcA paragraph</P>"; })) << html();
  hands::press(QStringLiteral("ctrl+n"));
  ASSERT_TRUE(wait_for([&] { return text().find("paragraph") == std::string::npos; }));
  hands::give_focus(*window_);
  wait_for_caret();
  hands::type(QStringLiteral("new words"));
  EXPECT_TRUE(typed("new words")) << text();
  EXPECT_EQ(file(), "<body>\n  <p>A paragraph");
}

TEST_F(TypingOnScreen, AnOpenedFileTakesTheKeys) {
  start("<p>A paragraph");
  QFile other(path_of(QStringLiteral("other.html")));
  ASSERT_TRUE(other.open(QIODevice::WriteOnly) && other.write("<p>Another") > 0);
  other.close();
  answer_dialog([&](QDialog&) {
    hands::type(other.fileName());
    hands::press(QStringLiteral("Return"));
  });
  hands::press(QStringLiteral("ctrl+o"));
  ASSERT_TRUE(wait_for([&] { return answered() && text() == "Another"; })) << text();
  hands::give_focus(*window_);
  wait_for_caret();
  hands::type(QStringLiteral("new "));
  EXPECT_TRUE(typed("new Another")) << text();
}

TEST_F(TypingOnScreen, TheCodeViewThatItsButtonOpensTakesTheKeys) {
  start("<p>A paragraph");
  hands::click(middle_of(*toolbar_button(u"toggle")));
  ASSERT_TRUE(wait_for([&] { return control().InCodeView() && code()->hasFocus(); }));
  EXPECT_FALSE(window_->isWindowModified()) << "to look is no change";
  hands::press(QStringLiteral("ctrl+Home"));
  hands::type(QStringLiteral("x y "));
  ASSERT_TRUE(wait_for([&] { return code()->toPlainText().startsWith(QStringLiteral("x y ")); }))
      << code()->toPlainText().toStdString();
  EXPECT_TRUE(control().InCodeView()) << "the blank has pressed the button";
  EXPECT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  hands::click(middle_of(*toolbar_button(u"toggle")));
  ASSERT_TRUE(wait_for([&] { return !control().InCodeView(); }));
  EXPECT_TRUE(typed("x y"));
  wait_for_caret();
  hands::type(QStringLiteral("z"));
  EXPECT_TRUE(typed("z")) << "the document has the keys again";
}

TEST_F(TypingOnScreen, WhatIsTypedAndUndoneInTheCodeIsNoChange) {
  start("<p>A paragraph");
  hands::click(middle_of(*toolbar_button(u"toggle")));
  ASSERT_TRUE(wait_for([&] { return control().InCodeView() && code()->hasFocus(); }));
  hands::press(QStringLiteral("ctrl+Home"));
  hands::type(QStringLiteral("x"));
  ASSERT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  hands::press(QStringLiteral("ctrl+z"));
  ASSERT_TRUE(wait_for([&] { return !code()->toPlainText().startsWith(u'x'); }));
  hands::click(middle_of(*toolbar_button(u"toggle")));
  ASSERT_TRUE(wait_for([&] { return !control().InCodeView(); }));
  EXPECT_TRUE(wait_for([&] { return !window_->isWindowModified(); }));
  EXPECT_FALSE(closing_asks());
}

TEST_F(TypingOnScreen, AButtonLeavesTheKeysToTheDocument) {
  start("<p>A paragraph");
  hands::click(middle_of(*toolbar_button(u"Bold")));
  hands::type(QStringLiteral("b"));
  EXPECT_TRUE(wait_for([&] { return html() == "<P><B>b</B>A paragraph</P>"; })) << html();
}

TEST_F(TypingOnScreen, AButtonActsAfterTheKeysThatCameBeforeIt) {
  start("<ul><li>one</li></ul>");
  hands::press_and_click({QStringLiteral("End"), QStringLiteral("Return"), QStringLiteral("Tab")},
                         middle_of(*toolbar_button(u"orderedlist")));
  hands::type(QStringLiteral("two"));
  EXPECT_TRUE(wait_for([&] { return html() == "<UL><LI>one<OL><LI>two</LI></OL></LI></UL>"; })) << html();
}

TEST_F(TypingOnScreen, AListsNameStandsInThePathAtOnce) {
  start("<p>A paragraph");
  hands::click(middle_of(*toolbar_button(u"unorderedlist")));
  const auto path = [&] {
    std::string captions;
    for (int i = 1; i <= control().tlbDOM().Count(); ++i)
      captions += to_utf8(control().tlbDOM().Item(i).Caption()) + " ";
    return captions;
  };
  EXPECT_TRUE(wait_for([&] { return path() == "UL LI "; })) << path() << html();
}

// --- the path ---

TEST_F(TypingOnScreen, ANameOfThePathIsHoveredWhileTheMouseIsThere) {
  start("<p>A paragraph");
  const auto* path = window_->editor().findChild<qt::BranchFace*>();
  ASSERT_NE(path, nullptr);
  ASSERT_TRUE(wait_for([&] { return path->button_widget(1) != nullptr; }));
  QWidget* name = path->button_widget(1);
  hands::move(middle_of(*name));
  EXPECT_TRUE(wait_for([&] { return name->underMouse(); }));
  // A press brings a menu, which takes the mouse.
  const QPoint elsewhere = place_of(QStringLiteral("p"), 0.5, 0.5);
  answer_menu([&](QWidget& menu) {
    hands::move(elsewhere);
    hands::press(QStringLiteral("Escape"));
    wait_for([&] { return !menu.isVisible(); });
  });
  hands::click(middle_of(*name));
  ASSERT_TRUE(wait_for([&] { return answered() && !QApplication::activePopupWidget(); }));
  EXPECT_TRUE(wait_for([&] { return !name->underMouse(); }));
}

}  // namespace
}  // namespace tvx::x11
