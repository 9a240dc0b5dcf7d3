#include "x11/managed_screen.h"

/// The keyboard goes through the fields of a window and the parts of the editor among them, forth and back.
namespace tvx::x11 {
namespace {

class TabOrder : public ManagedScreen {
 protected:
  void SetUp() override {
    ManagedScreen::SetUp();
    if (IsSkipped()) return;
    start(QStringLiteral(TVX_BIN_DIR "/embedding_program"));
    ASSERT_TRUE(is_in("page")) << active_title().toStdString();
  }
  /// The program's title names the part that has the keys.
  bool is_in(const char* part) { return comes_to_front(QStringLiteral("] [%1]").arg(QLatin1String(part))); }
  void expect_to_reach(const char* part, const char* keys) {
    press(QLatin1String(keys));
    ASSERT_TRUE(is_in(part)) << keys << " leads to " << active_title().toStdString();
  }
};

TEST_F(TabOrder, TabGoesFromTheFieldAboveThroughBarPageAndPathToTheFieldBelow) {
  expect_to_reach("tlbDOM", "ctrl+Tab");
  expect_to_reach("below", "Tab");
  expect_to_reach("above", "Tab");
  expect_to_reach("Toolbar1", "Tab");
  expect_to_reach("page", "Tab");
  expect_to_reach("tlbDOM", "ctrl+Tab");
  expect_to_reach("below", "Tab");
  type(QStringLiteral("x"));
  EXPECT_TRUE(comes_to_front(QStringLiteral("[page] [below]"))) << "not typed into the page";
}

TEST_F(TabOrder, ShiftTabGoesBackTheSameWay) {
  expect_to_reach("Toolbar1", "ctrl+shift+Tab");
  expect_to_reach("above", "shift+Tab");
  expect_to_reach("below", "shift+Tab");
  expect_to_reach("tlbDOM", "shift+Tab");
  expect_to_reach("page", "shift+Tab");
  expect_to_reach("Toolbar1", "ctrl+shift+Tab");
  expect_to_reach("above", "shift+Tab");
}

TEST_F(TabOrder, InThePageTabIsTheDocuments) {
  press(QStringLiteral("Tab"));
  type(QStringLiteral("a"));
  EXPECT_TRUE(comes_to_front(QStringLiteral("[apage] [page]"))) << active_title().toStdString();
}

TEST_F(TabOrder, WhoComesBackByTabTypesWhereTheCaretWas) {
  press(QStringLiteral("End"));
  expect_to_reach("Toolbar1", "ctrl+shift+Tab");
  expect_to_reach("page", "Tab");
  type(QStringLiteral("s"));
  EXPECT_TRUE(comes_to_front(QStringLiteral("[pages] [page]"))) << active_title().toStdString();
}

TEST_F(TabOrder, InTheCodeTabTypesAndTheOthersLead) {
  // The first button of the bar changes the view.
  expect_to_reach("Toolbar1", "ctrl+shift+Tab");
  expect_to_reach("txtCode", "space");
  press(QStringLiteral("ctrl+Home"));
  press(QStringLiteral("Tab"));
  type(QStringLiteral("a"));
  expect_to_reach("Toolbar1", "shift+Tab");
  expect_to_reach("txtCode", "Tab");
  expect_to_reach("tlbDOM", "ctrl+Tab");
  expect_to_reach("below", "Tab");
  expect_to_reach("tlbDOM", "shift+Tab");
  expect_to_reach("txtCode", "shift+Tab");
  expect_to_reach("Toolbar1", "ctrl+shift+Tab");
  expect_to_reach("page", "space");
}

}  // namespace
}  // namespace tvx::x11
