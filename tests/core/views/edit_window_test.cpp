#include "tvx/core/views/edit_window.h"

#include "core/fake_context.h"

namespace tvx::core {
namespace {

struct Window : browser::BrowserWindow {
  int focused = 0, carets = 0, y = -1;
  void focus() override { ++focused; }
  void show_caret() override { ++carets; }
  void scroll_to(int, int line) override { y = line; }
};

struct EditWindowAlone : testing::Test {
  FakeContext context;
  Window window;
  EditWindow edit_window{context};
};

TEST_F(EditWindowAlone, WithoutAWindowNothingHappens) {
  context.values.isAccessContained = true;
  edit_window.got_focus();
  edit_window.lost_focus(u"Picture1", false);
  edit_window.scroll_to_line(7);
  edit_window.focus();
  EXPECT_FALSE(edit_window.found());
}

TEST_F(EditWindowAlone, TheFocusGoesToTheWindowWhereTheHostContainsIt) {
  context.browser().set_window(&window);
  edit_window.got_focus();
  EXPECT_TRUE(edit_window.found());
  EXPECT_EQ(window.focused, 0);
  context.values.isAccessContained = true;
  edit_window.got_focus();
  EXPECT_EQ(window.focused, 1);
  EXPECT_EQ(window.carets, 1);
}

TEST_F(EditWindowAlone, AClickOnAToolbarDoesntTakeTheFocus) {
  context.browser().set_window(&window);
  edit_window.lost_focus(u"Picture1", true);
  edit_window.lost_focus(u"", false);
  edit_window.lost_focus(u"somewhere", false);
  EXPECT_EQ(window.focused, 0);
  edit_window.lost_focus(u"Picture1", false);
  EXPECT_EQ(window.focused, 1);
}

TEST_F(EditWindowAlone, ItScrolls) {
  context.browser().set_window(&window);
  edit_window.scroll_to_line(7);
  EXPECT_EQ(window.y, 7);
}

}  // namespace
}  // namespace tvx::core
