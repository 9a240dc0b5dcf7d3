#include "core/control_fixture.h"
#include "tvx/dom/journal.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(Control, AHostThatSaysNothingKeepsItsDocument) {
  start_with(u"<P><A href=\"http://example.org/\">link</A></P>");
  const auto document = control->DOM();
  document->click(at(element(dom::Tag::A)));
  loop.settle();
  EXPECT_THAT(host.heard, ElementsAre("DocumentClick: A", "BeforeNavigate: http://example.org/"));
  EXPECT_EQ(control->DOM(), document);
  EXPECT_EQ(control->WBrowser().ReadyState(), browser::ReadyState::Complete);
}

TEST_F(Control, AboutBlankIsAskedForLikeAnyOther) {
  start();
  const auto document = control->DOM();
  control->WBrowser().Navigate(u"about:blank");
  EXPECT_EQ(control->WBrowser().ReadyState(), browser::ReadyState::Loading);
  loop.settle();
  EXPECT_THAT(host.heard, ElementsAre("BeforeNavigate: about:blank"));
  EXPECT_EQ(control->DOM(), document);
  EXPECT_EQ(control->WBrowser().ReadyState(), browser::ReadyState::Complete);
}

TEST_F(Control, AHostThatAllowsItGoesToTheOtherPage) {
  start();
  const auto other = write_file("other.html", "<title>Other</title><p>there</p>");
  const auto document = control->DOM();
  control->set_DocumentTitle(u"Mine");
  host.on_navigate = [](std::u16string&, bool& cancel) {
    EXPECT_TRUE(cancel) << "true on entry";
    cancel = false;
  };
  control->WBrowser().Navigate(other);
  loop.settle();
  EXPECT_NE(control->DOM(), document);
  EXPECT_EQ(body(), u"<P>there</P>");
  EXPECT_EQ(control->DOM()->title(), u"Mine");
}

TEST_F(Control, ThePageOfAnAllowedNavigationCanBeEdited) {
  start();
  const auto other = write_file("other.html", "<p>there</p>");
  host.on_navigate = [](std::u16string&, bool& cancel) { cancel = false; };
  control->WBrowser().Navigate(other);
  loop.settle();
  ASSERT_EQ(body(), u"<P>there</P>");
  EXPECT_EQ(control->DOM()->designMode(), u"On");
  control->set_EditorEnabled(false);
  control->WBrowser().Navigate(write_file("third.html", "<p>third</p>"));
  loop.settle();
  EXPECT_EQ(control->DOM()->designMode(), u"Off");
}

// The page waits for the handler, so that waiting for the page has no end.
TEST_F(Control, ContentGivenWhileAFrameIsAskedForDoesNotWaitForThePage) {
  start();
  write_file("inner.html", "<p>inner</p>");
  const auto other = write_file("other.html", "<p>there</p><iframe src=inner.html></iframe>");
  host.on_navigate = [&](std::u16string& url, bool& cancel) {
    cancel = false;
    if (contains(url, u"inner.html")) control->set_DocumentHTML(u"<P>given</P>");
  };
  control->WBrowser().Navigate(other);
  loop.settle();
  EXPECT_EQ(body(), u"<P>given</P>");
  EXPECT_EQ(control->WBrowser().ReadyState(), browser::ReadyState::Complete);
}

TEST_F(Control, TheTargetFrameIsTold) {
  start_with(u"<A href=\"http://example.org/\" target=\"side\">link</A>");
  control->DOM()->click(at(element(dom::Tag::A)));
  loop.settle();
  EXPECT_EQ(host.heard.back(), "BeforeNavigate: http://example.org/ side");
}

TEST_F(Control, AnAddressWithTheDigitsOfTheWindowHandlePassesWithoutTheEvent) {
  start();
  const auto other = write_file("a7654321b.html", "<p>passed</p>");
  control->WBrowser().Navigate(other);
  loop.settle();
  EXPECT_EQ(host.count("BeforeNavigate"), 0u);
  EXPECT_EQ(body(), u"<P>passed</P>");
}

TEST_F(Control, TheEndOfAnInnerFrameChangesNothing) {
  start_with(u"<P>x</P>");
  control->set_DocumentTitle(u"before");
  const auto document = control->DOM();
  document->set_title(u"after");
  control->WBrowser().events()->DocumentComplete(false, u"http://example.org/frame");
  EXPECT_EQ(control->DOM(), document);
  EXPECT_EQ(document->title(), u"after");
}

TEST_F(Control, FramesOfAPageAreAskedForByTheirNamesAndChangeNothing) {
  start();
  const auto inner = write_file("inner.html", "<title>inner</title>");
  const auto page =
      write_file("7654321.html", "<p>page</p><iframe name=box src=\"" + to_utf8(inner) + "\"></iframe>");
  host.on_navigate = [](std::u16string&, bool& cancel) { cancel = false; };
  control->WBrowser().Navigate(page);
  loop.settle();
  ASSERT_EQ(host.heard.size(), 1u);
  EXPECT_TRUE(host.heard[0].ends_with("inner.html box")) << host.heard[0];
  EXPECT_TRUE(body().starts_with(u"<P>page</P>"));
}

TEST_F(Control, ADocumentWithoutASheetLeavesNoneActiveUntilTheNextShow) {
  start();
  const auto other = write_file("7654321.html", "<title>t</title><p>no sheet</p>");
  control->WBrowser().Navigate(other);
  loop.settle();
  EXPECT_FALSE(std::filesystem::exists(folder / "7654321tvxStyle.css"));
  control->UserControl_Show();
  EXPECT_TRUE(std::filesystem::exists(folder / "7654321tvxStyle.css")) << "the style sheet was applied";
}

TEST_F(Control, ALoadedDocumentHasTheBaseAndNoUndo) {
  start();
  control->set_BaseURL(u"http://example.org/");
  const auto other = write_file("7654321.html", "<base href='x'><title>t</title><p>y</p>");
  control->WBrowser().Navigate(other);
  loop.settle();
  EXPECT_EQ(element(dom::Tag::Base)->attribute_or_empty(dom::names::href), u"http://example.org/");
  EXPECT_FALSE(control->DOM()->tree().journal().can_undo());
}

TEST_F(Control, AFailedLoadIsReportedAndTheDocumentStays) {
  start_with(u"<P>x</P>");
  const auto document = control->DOM();
  host.on_navigate = [](std::u16string&, bool& cancel) { cancel = false; };
  control->WBrowser().Navigate(path("missing.html"));
  loop.settle();
  EXPECT_EQ(host.heard.back(), "Error: 20000 Cant find document : " + (folder / "missing.html").string());
  EXPECT_EQ(control->DOM(), document);
  EXPECT_EQ(control->WBrowser().ReadyState(), browser::ReadyState::Complete);
}

TEST_F(Control, SendCRTrueLeavesOneLineBreakAndNoNoBreakSpace) {
  start();
  load(u"<P>one[]two</P>");
  control->sendCR(true);
  EXPECT_EQ(marked(), u"<P>one<BR>[]two</P>");
  EXPECT_FALSE(contains(body(), u"nbsp"));
  control->undo_document();
  EXPECT_EQ(body(), u"<P>onetwo</P>") << "one step";
}

TEST_F(Control, SendCRFalseMakesAParagraphWithoutASecondKeyDown) {
  start();
  load(u"<P>one[]two</P>");
  control->sendCR(false);
  EXPECT_EQ(body(), u"<P>one</P><P>two</P>");
  EXPECT_EQ(host.count("ASCIIKeyPress"), 0u);
}

TEST_F(Control, ScrollingGoesToTheEnds) {
  start();
  control->scrollToTop();
  control->scrollToBottom();
  EXPECT_THAT(window.told, ElementsAre("scroll 0 0", "scroll 0 999999"));
}

TEST_F(Control, FocusGoesToTheInnerWindowOnlyWhereAccessIsContained) {
  start();
  control->WBrowser_GotFocus();
  EXPECT_THAT(window.told, ElementsAre());
  control->set_isAccessContained(true);
  control->WBrowser_GotFocus();
  EXPECT_THAT(window.told, ElementsAre("focus", "caret"));
}

TEST_F(Control, AToolbarGivesTheFocusBack) {
  start();
  control->WBrowser_LostFocus(u"");
  control->WBrowser_LostFocus(u"txtOther");
  EXPECT_THAT(window.told, ElementsAre());
  control->WBrowser_LostFocus(u"Picture1");
  control->WBrowser_LostFocus(u"txtCode");
  EXPECT_THAT(window.told, ElementsAre("focus", "focus"));
  control->show_Code();
  window.told.clear();
  control->WBrowser_LostFocus(u"Picture1");
  EXPECT_THAT(window.told, ElementsAre());
}

TEST_F(Control, AtDesignTimeNavigationsStayAsTheyCame) {
  start_at_design_time();
  bool cancel = true;
  control->WBrowser().events()->BeforeNavigate2({}, cancel);
  EXPECT_TRUE(cancel);
  EXPECT_EQ(host.heard.size(), 0u);
}

}  // namespace
}  // namespace tvx::core
