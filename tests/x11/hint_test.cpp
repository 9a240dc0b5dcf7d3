#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// What an empty page says to who opens it.
namespace tvx::x11 {
namespace {

class HintOnScreen : public EditorOnScreen {
 protected:
  std::string sentence() { return in_page(QStringLiteral("tvxView.drawn().sentence || ''")); }
  bool shows() {
    return wait_for([&] { return sentence().find("Start writing") == 0; });
  }
  bool shows_none() {
    return wait_for([&] { return sentence().empty(); });
  }
};

TEST_F(HintOnScreen, ANewPageHasItUntilTheFirstLetterAndAgainWithoutLetters) {
  start("<p>A paragraph");
  EXPECT_TRUE(shows_none());
  hands::press(QStringLiteral("ctrl+n"));
  ASSERT_TRUE(wait_for([&] { return text().find("paragraph") == std::string::npos; }));
  hands::give_focus(*window_);
  wait_for_caret();
  EXPECT_TRUE(shows()) << sentence();
  hands::type(QStringLiteral("x"));
  EXPECT_TRUE(shows_none()) << sentence();
  hands::press(QStringLiteral("BackSpace"));
  EXPECT_TRUE(shows()) << sentence();
  hands::type(QStringLiteral("- "));
  EXPECT_TRUE(shows_none()) << "in a list: " << html();
  hands::press(QStringLiteral("BackSpace"));
  EXPECT_TRUE(shows()) << "the item is a paragraph again: " << html();
}

TEST_F(HintOnScreen, APageWhoseAllIsTakenAwayHasItToo) {
  start("<h1>One</h1><p>Two</p><ul><li>Three</ul>");
  EXPECT_TRUE(shows_none());
  hands::press(QStringLiteral("ctrl+a"));
  hands::press(QStringLiteral("Delete"));
  EXPECT_TRUE(shows()) << html();
  hands::press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] { return !file().contains("Three"); }));
  EXPECT_FALSE(file().contains("Start writing")) << file().toStdString();
}

}  // namespace
}  // namespace tvx::x11
