#include "browser/web_fixture.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

using testing::ElementsAre;

TEST_F(Web, FramesFromServersRaiseTheirOwnEventsBeforeThePageIsComplete) {
  server.serve("/page", "<iframe name=box src=/inner></iframe>x");
  server.serve("/inner", "inner");
  go(at("/page"));
  EXPECT_THAT(told,
              ElementsAre("BeforeNavigate2 0", "DownloadBegin 1", "NavigateComplete2 3", "DownloadComplete 3",
                          "BeforeNavigate2 of box 3", "DownloadBegin 3", "NavigateComplete2 of a frame 3",
                          "DownloadComplete 3", "DocumentComplete of a frame 3", "DocumentComplete 3"));
  EXPECT_THAT(addresses, ElementsAre(at("/page"), at("/inner"), at("/inner"), at("/page")));
  EXPECT_EQ(body(), "<IFRAME name=\"box\" src=\"/inner\"></IFRAME>x");
}

TEST_F(Web, ASlowFrameHoldsThePagesEndButNobodyUp) {
  server.serve("/page", "<iframe src=/slow></iframe>");
  server.hold("/slow", "inner");
  browser->Navigate(at("/page"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow") == 1; }));
  bool timer = false;
  loop.post_delayed(5, [&] { timer = true; });
  ASSERT_TRUE(wait_for([&] { return timer; }));
  EXPECT_EQ(browser->ReadyState(), ReadyState::Interactive);
  server.release();
  ASSERT_TRUE(wait_for([&] { return ready(); }));
  EXPECT_EQ(told.back(), "DocumentComplete 3");
}

TEST_F(Web, AFrameThatFailsIsToldOfAndHasNoDocumentComplete) {
  server.serve("/page", "<iframe name=box src=/missing></iframe>");
  go(at("/page"));
  EXPECT_EQ(count("NavigateError of box"), 1u);
  EXPECT_EQ(status, 404);
  EXPECT_EQ(failed.url, at("/missing"));
  EXPECT_EQ(failed.target_frame, u"box");
  EXPECT_FALSE(failed.top);
  EXPECT_EQ(count("DocumentComplete of a frame"), 0u);
  EXPECT_EQ(count("DownloadBegin"), count("DownloadComplete"));
  EXPECT_EQ(count("DocumentComplete"), 1u);
}

TEST_F(Web, ARefusedFrameIsNotLoaded) {
  server.serve("/page", "<iframe name=box src=/inner></iframe><iframe name=other src=/inner></iframe>");
  server.serve("/inner", "inner");
  refuse = [](const Navigation& navigation) { return navigation.target_frame == u"box"; };
  go(at("/page"));
  EXPECT_EQ(server.count("/inner"), 1u);
  EXPECT_EQ(count("DocumentComplete of a frame"), 1u);
}

TEST_F(Web, FramesInFramesAreLoadedInsideOut) {
  server.serve("/page", "<frameset><frame name=outer src=/outer></frameset>");
  server.serve("/outer", "<iframe name=inner src=/inner></iframe>");
  server.serve("/inner", "x");
  go(at("/page"));
  EXPECT_EQ(count("BeforeNavigate2 of outer"), 1u);
  EXPECT_EQ(count("BeforeNavigate2 of inner"), 1u);
  EXPECT_THAT(addresses,
              ElementsAre(at("/page"), at("/outer"), at("/inner"), at("/inner"), at("/outer"), at("/page")));
}

TEST_F(Web, APageWithinItselfHasAnEnd) {
  server.serve("/page",
               "<iframe src=/page></iframe><iframe src=/page#part></iframe><iframe src=/b></iframe>");
  server.serve("/b", "<iframe src=/page></iframe>");
  go(at("/page"));
  EXPECT_EQ(server.count("/page"), 1u);
  EXPECT_EQ(count("DocumentComplete of a frame"), 1u);
  server.on("/many", [](const auto& request, auto& to) {
    const std::string next = request.target + "1";
    to.reply("<iframe src='" + next + "'></iframe><iframe src='" + next + "2'></iframe>");
  });
  go(at("/many?"));
  EXPECT_LE(server.requests().size(), 300u);
  EXPECT_TRUE(ready());
}

TEST_F(Web, ALocalPageWithinItselfHasAnEnd) {
  go(file("a.html", "<iframe src=a.html></iframe><iframe src=b.html></iframe>"));
  EXPECT_TRUE(ready());
  EXPECT_EQ(count("NavigateError of "), 1u) << "the missing one alone";
}

TEST_F(Web, AFrameRemovedOnTheWayIsHeardOfNoMore) {
  server.serve("/page", "<iframe name=box src=/slow></iframe>x");
  server.hold("/slow", "<iframe src=/inner></iframe>");
  browser->Navigate(at("/page"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow") == 1; }));
  dom::remove(*browser->Document()->first(dom::Tag::Iframe));
  server.release();
  ASSERT_TRUE(wait_for([&] { return ready(); }));
  settle();
  EXPECT_EQ(count("NavigateComplete2 of a frame"), 0u);
  EXPECT_EQ(count("DocumentComplete of a frame"), 0u);
  EXPECT_EQ(count("DownloadBegin"), count("DownloadComplete"));
  EXPECT_EQ(count("DocumentComplete"), 1u);
  EXPECT_EQ(server.count("/inner"), 0u);
}

TEST_F(Web, ANewPageGivesTheFramesOfTheOldOneUp) {
  server.serve("/page", "<iframe src=/slow></iframe>");
  server.hold("/slow", "x");
  server.serve("/other", "other");
  browser->Navigate(at("/page"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow") == 1; }));
  go(at("/other"));
  server.release();
  settle();
  EXPECT_EQ(body(), "other");
  EXPECT_EQ(count("NavigateComplete2 of a frame"), 0u);
  EXPECT_EQ(count("DownloadBegin"), count("DownloadComplete"));
}

TEST_F(Web, ALinkIntoAFrameLeavesThePage) {
  server.serve("/page", "<iframe name=box src=''></iframe>x");
  server.serve("/inner", "inner");
  go(at("/page"));
  const auto document = browser->Document();
  told.clear();
  Navigation link;
  link.url = at("/inner");
  link.target_frame = u"box";
  browser->follow_link(link);
  ASSERT_TRUE(wait_for([&] { return count("DocumentComplete of a frame") == 1; }));
  EXPECT_THAT(told,
              ElementsAre("BeforeNavigate2 of box 4", "DownloadBegin 4", "NavigateComplete2 of a frame 4",
                          "DownloadComplete 4", "DocumentComplete of a frame 4"));
  EXPECT_EQ(browser->Document(), document);
}

TEST_F(Web, FramesThatRunScriptsOrHoldTheirOwnTextLoadNothing) {
  server.serve("/page",
               "<iframe src='javascript:x()'></iframe><iframe src='data:text/html,x'></iframe>"
               "<iframe srcdoc=x></iframe><iframe src=' '></iframe>");
  go(at("/page"));
  EXPECT_EQ(told.size(), 5u);
}

TEST_F(Web, APageFromElsewhereFramesNoLocalFile) {
  const std::string local = "file://" + to_utf8(file("local.html", "x"));
  server.serve("/page", "<iframe src='" + local + "'></iframe><iframe src=about:blank></iframe>");
  go(at("/page"));
  EXPECT_EQ(count("DocumentComplete of a frame"), 1u) << "the blank one";
}

}  // namespace
}  // namespace tvx::browser
