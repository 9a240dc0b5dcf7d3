#include "tvx/browser/browser.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/headless/virtual_time_loop.h"

namespace tvx::browser {
namespace {

using testing::ElementsAre;

class Navigating : public testing::Test, protected BrowserEvents {
 protected:
  Navigating() : browser(std::make_unique<Browser>(loop)) {
    folder = std::filesystem::temp_directory_path() / ("tvx-browser-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    browser->set_events(this);
  }
  ~Navigating() override {
    clear_faults();
    std::filesystem::remove_all(folder);
  }

  std::u16string file(const std::string& name, const std::string& bytes) {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return from_utf8((folder / name).string());
  }
  void say(const std::string& what) {
    told.push_back(what + " " + std::to_string(int(browser->ReadyState())));
    if (inside) inside(what);
  }
  void BeforeNavigate2(const Navigation& navigation, bool& cancel) override {
    cancel = refuse;
    say(navigation.top ? "BeforeNavigate2" : "BeforeNavigate2 of " + to_utf8(navigation.target_frame));
  }
  void NavigateComplete2(bool top, const std::u16string&) override {
    say(top ? "NavigateComplete2" : "NavigateComplete2 of a frame");
  }
  void DocumentComplete(bool top, const std::u16string&) override {
    say(top ? "DocumentComplete" : "DocumentComplete of a frame");
  }
  void DownloadBegin() override { say("DownloadBegin"); }
  void DownloadComplete() override { say("DownloadComplete"); }
  void NavigateError(const Navigation&, std::int32_t) override { say("NavigateError"); }

  std::filesystem::path folder;
  headless::VirtualTimeLoop loop;
  std::unique_ptr<Browser> browser;
  std::vector<std::string> told;
  std::function<void(const std::string&)> inside;
  bool refuse = false;
};

TEST_F(Navigating, TellsOfALoadInItsOrderAndFromTheLoop) {
  browser->Navigate(file("a.html", "<title>t</title><p>a</p>"));
  EXPECT_EQ(browser->ReadyState(), ReadyState::Loading);
  EXPECT_THAT(told, ElementsAre());
  loop.settle();
  EXPECT_THAT(told, ElementsAre("BeforeNavigate2 0", "DownloadBegin 1", "NavigateComplete2 3",
                                "DownloadComplete 3", "DocumentComplete 3"));
  EXPECT_EQ(browser->ReadyState(), ReadyState::Complete);
  EXPECT_EQ(browser->Document()->readyState(), u"complete");
  EXPECT_EQ(browser->Document()->title(), u"t");
  EXPECT_TRUE(browser->Document()->url().starts_with(u"file:///"));
}

TEST_F(Navigating, GoesToFileAddressesWithEscapesAndFragments) {
  file("a b.html", "<p>x</p>");
  browser->Navigate(u"file://" + from_utf8(folder.string()) + u"/a%20b.html#place");
  loop.settle();
  EXPECT_EQ(dom::inner_html(*browser->Document()->body()), u"<P>x</P>");
}

TEST_F(Navigating, AboutBlankIsAnEmptyDocument) {
  browser->Navigate(u"about:blank");
  loop.settle();
  EXPECT_EQ(dom::inner_html(*browser->Document()->body()), u"");
  EXPECT_EQ(browser->Document()->url(), u"about:blank");
}

TEST_F(Navigating, ARefusedNavigationChangesNothing) {
  browser->Navigate(u"about:blank");
  loop.settle();
  const auto document = browser->Document();
  told.clear();
  refuse = true;
  browser->Navigate(file("a.html", "x"));
  loop.settle();
  EXPECT_THAT(told, ElementsAre("BeforeNavigate2 4"));
  EXPECT_EQ(browser->Document(), document);
  EXPECT_EQ(browser->ReadyState(), ReadyState::Complete);
}

TEST_F(Navigating, AFailedFirstLoadLeavesAnEmptyCompleteDocument) {
  browser->Navigate(from_utf8((folder / "missing.html").string()));
  loop.settle();
  EXPECT_THAT(told, ElementsAre("BeforeNavigate2 0", "DownloadBegin 1", "NavigateError 1",
                                "DownloadComplete 1", "DocumentComplete 1"));
  ASSERT_NE(browser->Document(), nullptr);
  EXPECT_EQ(browser->Document()->readyState(), u"complete");
  EXPECT_EQ(browser->ReadyState(), ReadyState::Complete);
}

TEST_F(Navigating, AFailedLaterLoadKeepsTheDocument) {
  browser->Navigate(u"about:blank");
  loop.settle();
  const auto document = browser->Document();
  told.clear();
  browser->Navigate(from_utf8((folder / "missing.html").string()));
  loop.settle();
  EXPECT_THAT(told,
              ElementsAre("BeforeNavigate2 4", "DownloadBegin 1", "NavigateError 1", "DownloadComplete 1"));
  EXPECT_EQ(browser->Document(), document);
  EXPECT_EQ(browser->ReadyState(), ReadyState::Complete);
}

TEST_F(Navigating, AReadThatFailsOnRequestIsAFailedLoad) {
  set_fault(u"ReadPage", {RuntimeError(53, u"gone")});
  browser->Navigate(file("a.html", "x"));
  loop.settle();
  EXPECT_EQ(told[2], "NavigateError 1");
}

TEST_F(Navigating, ALaterNavigationTakesTheEarlierOnesPlace) {
  browser->Navigate(file("a.html", "first"));
  browser->Navigate(file("b.html", "second"));
  loop.settle();
  EXPECT_EQ(dom::inner_html(*browser->Document()->body()), u"second");
  EXPECT_EQ(told.size(), 5u);
}

TEST_F(Navigating, ANavigationWithinAnyEventIsTheOneThatCounts) {
  for (const std::string event :
       {"BeforeNavigate2", "DownloadBegin", "NavigateComplete2", "DownloadComplete", "DocumentComplete"}) {
    bool done = false;
    inside = [&](const std::string& name) {
      if (name != event || std::exchange(done, true)) return;
      browser->Navigate(file("b.html", "second"));
    };
    browser->Navigate(file("a.html", "first"));
    loop.settle();
    EXPECT_EQ(dom::inner_html(*browser->Document()->body()), u"second") << event;
    EXPECT_EQ(browser->ReadyState(), ReadyState::Complete) << event;
  }
}

TEST_F(Navigating, TheBrowserMayGoWithinAnyEvent) {
  for (const std::string event :
       {"BeforeNavigate2", "DownloadBegin", "NavigateComplete2", "DownloadComplete", "DocumentComplete"}) {
    browser = std::make_unique<Browser>(loop);
    browser->set_events(this);
    told.clear();
    inside = [&](const std::string& name) {
      if (name == event) browser.reset();
    };
    browser->Navigate(file("a.html", "first"));
    loop.settle();
    EXPECT_EQ(browser, nullptr) << event;
    EXPECT_TRUE(told.back().starts_with(event)) << told.back();
  }
}

TEST_F(Navigating, ALinkLeavesTheReadyStateUntilItIsLetThrough) {
  browser->Navigate(file("a.html", "<a href='b.html'>b</a>"));
  loop.settle();
  file("b.html", "second");
  told.clear();
  MouseInput mouse;
  mouse.element = browser->Document()->first(dom::Tag::A);
  refuse = true;
  browser->Document()->click(mouse);
  EXPECT_EQ(browser->ReadyState(), ReadyState::Complete);
  loop.settle();
  EXPECT_THAT(told, ElementsAre("BeforeNavigate2 4"));
  refuse = false;
  browser->Document()->click(mouse);
  loop.settle();
  EXPECT_EQ(dom::inner_html(*browser->Document()->body()), u"second");
}

TEST_F(Navigating, ARefusedLinkLeavesALoadOnItsWay) {
  browser->Navigate(u"about:blank");
  loop.settle();
  Navigation link;
  link.url = u"http://example.org/";
  inside = [&](const std::string& name) { refuse = name == "DownloadBegin"; };
  browser->Navigate(file("a.html", "loaded"));
  browser->follow_link(link);
  loop.settle();
  EXPECT_EQ(dom::inner_html(*browser->Document()->body()), u"loaded");
}

TEST_F(Navigating, FramesRaiseTheirOwnEvents) {
  const auto inner = file("inner.html", "inner");
  browser->Navigate(file("a.html", "<iframe name=box src='inner.html'></iframe><iframe></iframe>"));
  loop.settle();
  EXPECT_THAT(told,
              ElementsAre("BeforeNavigate2 0", "DownloadBegin 1", "NavigateComplete2 3", "DownloadComplete 3",
                          "BeforeNavigate2 of box 3", "DownloadBegin 3", "NavigateComplete2 of a frame 3",
                          "DownloadComplete 3", "DocumentComplete of a frame 3", "DocumentComplete 3"));
}

TEST_F(Navigating, SheetsOfLinksAreLoadedWithThePageAndAgainWhenTheirAddressChanges) {
  file("one.css", ".a { color: red }");
  file("two.css", "\xEF\xBB\xBF.b {}");
  browser->Navigate(file("a.html", "<link rel=stylesheet href=one.css><link rel=stylesheet href=''>"));
  loop.settle();
  auto& styles = dom::style::style_of(browser->Document()->tree());
  ASSERT_EQ(styles.sheets().size(), 2u);
  EXPECT_EQ(styles.sheets()[0]->css_text(), u".a { color: red }");
  told.clear();
  styles.sheets()[0]->set_href(u"two.css");
  EXPECT_THAT(told, ElementsAre()) << "nothing is loaded inside a mutation";
  loop.settle();
  EXPECT_THAT(told, ElementsAre("DownloadBegin 4", "DownloadComplete 4"));
  EXPECT_EQ(styles.sheets()[0]->css_text(), u".b {}");
  told.clear();
  styles.sheets()[0]->set_href(u"missing.css");
  loop.settle();
  EXPECT_THAT(told, ElementsAre("DownloadBegin 4", "DownloadComplete 4"))
      << "a failure ends the download too";
  EXPECT_EQ(styles.sheets()[0]->css_text(), u"");
}

TEST_F(Navigating, ScriptsOfAPageStayTextAndDoNothing) {
  browser->Navigate(file(
      "a.html", "<body onload=\"x()\"><script>document.title='run'</script><a href='javascript:x()'>a</a>"));
  loop.settle();
  EXPECT_EQ(browser->Document()->title(), u"");
  EXPECT_EQ(dom::inner_html(*browser->Document()->body()),
            u"<SCRIPT>document.title='run'</SCRIPT><A href=\"javascript:x()\">a</A>");
}

TEST_F(Navigating, LoadingBesideTouchesNothing) {
  const auto document = browser->createDocumentFromUrl(file("a.html", "<p>beside</p>"));
  EXPECT_EQ(dom::inner_html(*document->body()), u"<P>beside</P>");
  EXPECT_EQ(browser->Document(), nullptr);
  EXPECT_THAT(told, ElementsAre());
  EXPECT_EQ(document->readyState(), u"complete");
  EXPECT_THROW(browser->createDocumentFromUrl(from_utf8((folder / "missing.html").string())), RuntimeError);
}

TEST_F(Navigating, PrintingNeedsAWindow) {
  EXPECT_EQ(browser->QueryStatusWB(6), 0);
  EXPECT_THROW(browser->ExecWB(6, 1), RuntimeError);
  set_fault(u"QueryStatusWB", {{}, 2});
  EXPECT_EQ(browser->QueryStatusWB(6), 2);
}

}  // namespace
}  // namespace tvx::browser
