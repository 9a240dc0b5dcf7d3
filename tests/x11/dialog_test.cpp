#include <QDialog>
#include <QVBoxLayout>

#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// An editor as part of a host's dialog.
namespace tvx::x11 {
namespace {

using InADialogOnScreen = EditorOnScreen;

TEST_F(InADialogOnScreen, TheWindowBelowTakesNoPresses) {
  start("<p>below</p>");
  int presses = 0;
  QObject::connect(&window_->editor(), &qt::HTMLedWidget::ToolButtonClick, [&presses] { ++presses; });
  QDialog dialog(window_.get());
  auto* editor = new qt::HTMLedWidget;
  (new QVBoxLayout(&dialog))->addWidget(editor);
  editor->set_DocumentHTML(QStringLiteral("<P></P>"));
  dialog.setModal(true);
  dialog.resize(500, 300);
  dialog.move(300, 350);
  dialog.show();
  hands::give_focus(dialog);
  EXPECT_EQ(QApplication::activeModalWidget(), &dialog);
  hands::click(middle_of(*toolbar_button(u"Bold")));
  hands::click(middle_of(*editor));
  hands::type(QStringLiteral("above"));
  EXPECT_TRUE(wait_for([&] { return editor->DocumentHTML().contains(QStringLiteral("above")); }))
      << editor->DocumentHTML().toStdString();
  EXPECT_EQ(presses, 0);
  EXPECT_EQ(text(), "below");
}

}  // namespace
}  // namespace tvx::x11
