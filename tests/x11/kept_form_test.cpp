#include <QDialog>
#include <QMenu>
#include <QToolButton>

#include "htmled/document/document_page.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// How the user wants a file spelled, over the program's death.
namespace tvx::x11 {
namespace {

class KeptFormOnScreen : public EditorOnScreen {
 protected:
  /// The window is gone as if nobody had closed it, and another one comes.
  void lose_window() {
    window_->keep_everything();
    window_.reset();
    window_ = std::make_unique<htmled::Window>(loop_);
    window_->show();
    window_->start(QString());
    hands::give_focus(*window_);
  }
};

TEST_F(KeptFormOnScreen, ChosenLineEndsAreThereAgain) {
  start("<!DOCTYPE html>\n<p>one</p>\n");
  auto& button = *window_->findChild<QToolButton*>(QStringLiteral("line_end"));
  answer_menu([](QWidget& menu) {
    const QList<QAction*> choices = menu.actions();
    ASSERT_GE(choices.size(), 2);
    hands::click(menu.mapToGlobal(static_cast<QMenu&>(menu).actionGeometry(choices.at(1)).center()));
  });
  hands::click(middle_of(button));
  ASSERT_TRUE(wait_for([&] { return window_->front().form().line_end == files::LineEnd::CrLf; }));
  ASSERT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  lose_window();
  answer_dialog([](QDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), QStringLiteral("unsaved"));
    hands::press(QStringLiteral("Return"));  // Restore
  });
  window_->offer_unsaved();
  ASSERT_TRUE(wait_for([&] { return answered() && window_->front().name() == QStringLiteral("page.html"); }));
  EXPECT_TRUE(wait_for([&] { return window_->front().form().line_end == files::LineEnd::CrLf; }));
  EXPECT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  hands::give_focus(*window_);
  hands::press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] { return file() == "<!DOCTYPE html>\r\n<p>one</p>\r\n"; }))
      << file().toStdString();
}

}  // namespace
}  // namespace tvx::x11
