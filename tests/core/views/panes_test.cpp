#include "tvx/core/views/panes.h"

#include "core/fake_context.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/views/code_pane.h"

namespace tvx::core {
namespace {

struct Watch : HTMLedObserver {
  int times = 0;
  void layout_changed(const Layout&) override { ++times; }
};

struct PanesAlone : testing::Test {
  PanesAlone() {
    context.observer = &watch;
    panes.set_size(9000, 6000);
  }

  FakeContext context;
  Watch watch;
  Toolbars toolbars;
  CodePane code{context};
  Panes panes{context, toolbars, code};
};

TEST_F(PanesAlone, TheBrowserTakesWhatTheBarsLeave) {
  panes.resize();
  const Layout& layout = panes.layout();
  EXPECT_EQ(layout.WBrowser.Width, 9000);
  EXPECT_EQ(layout.WBrowser.Top, layout.Picture1.Height);
  EXPECT_EQ(layout.WBrowser.Height, 6000 - layout.WBrowser.Top - layout.Picture3.Height);
}

TEST_F(PanesAlone, ALayoutThatStaysIsToldOnce) {
  panes.resize();
  panes.resize();
  EXPECT_EQ(watch.times, 1);
}

TEST_F(PanesAlone, AtDesignTimeTheBoxFillsTheControlAndNamesIt) {
  context.at_run_time = false;
  panes.resize();
  EXPECT_EQ(panes.layout().txtCode.Height, 6000);
  EXPECT_FALSE(panes.layout().Picture1.Visible);
  EXPECT_TRUE(code.box().Text().find(u"version") != std::u16string::npos);
}

TEST_F(PanesAlone, WithEditingOffTheFormButtonsAreHidden) {
  context.values.showFormToolbar = true;
  panes.show_toolbars(true);
  EXPECT_TRUE(panes.layout().Picture2.Visible);
  panes.show_toolbars(false);
  EXPECT_FALSE(panes.layout().Picture2.Visible);
}

}  // namespace
}  // namespace tvx::core
