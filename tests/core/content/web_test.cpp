#include "core/on_the_web.h"
#include "tvx/dom/style/style_engine.h"

namespace tvx::core {
namespace {

TEST_F(OnTheWeb, OpeningAWholeDocumentFromAServer) {
  server.serve("/page", "<!DOCTYPE html><title>theirs</title><link rel=stylesheet href=a.css><p>b\xE9</p>",
               "text/html; charset=iso-8859-1");
  server.serve("/a.css", ".own { color: red }", "text/css");
  start_with(u"<P>given</P>");
  auto url = web("/page");
  control->Open_document(url, true);
  EXPECT_EQ(body(), u"<P>b\u00E9</P>");
  EXPECT_EQ(control->DOM()->url(), web("/page"));
  EXPECT_TRUE(control->CSShttp());
  EXPECT_EQ(control->CSSText(), u"a.css");
  EXPECT_EQ(host.count("BeforeNavigate"), 0u) << "the control's own navigation";
  EXPECT_EQ(control->DOM()->designMode(), u"On");
  EXPECT_EQ(control->originalHTML(), u"<P>given</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_FALSE(control->openingDocument());
  ASSERT_TRUE(wait_for([&] { return control->WBrowser().ReadyState() == browser::ReadyState::Complete; }));
  EXPECT_EQ(body(), u"<P>b\u00E9</P>");
}

TEST_F(OnTheWeb, OpeningAWholeDocumentDoesNotWaitForItsSheets) {
  server.serve("/page", "<link rel=stylesheet href=/slow.css><p>x");
  server.hold("/slow.css", ".late { color: red }", "text/css");
  start();
  auto url = web("/page");
  control->Open_document(url, true);
  EXPECT_EQ(body(), u"<P>x</P>");
  EXPECT_EQ(control->DOM()->readyState(), u"interactive");
  server.release();
  ASSERT_TRUE(wait_for([&] { return control->DOM()->readyState() == u"complete"; }));
  EXPECT_EQ(control->WBrowser().Document(), control->DOM());
}

TEST_F(OnTheWeb, WhatIsInsertedWhileSheetsOfAnOpenedPageLoadCanBeUndone) {
  server.serve("/page", "<link rel=stylesheet href=/slow.css><p>x");
  server.hold("/slow.css", ".late { color: red }", "text/css");
  start();
  auto url = web("/page");
  control->Open_document(url, true);
  load(u"<P>x[]</P>");
  control->InsertAtCursor(u"new", ed_InsertType::ed_InsertReplaceSelection);
  ASSERT_EQ(body(), u"<P>xnew</P>");
  server.release();
  ASSERT_TRUE(wait_for([&] { return control->DOM()->readyState() == u"complete"; }));
  settle();
  control->undo_document();
  EXPECT_EQ(body(), u"<P>x</P>");
}

TEST_F(OnTheWeb, FramesOfAnOpenedPageAreItsOwn) {
  server.serve("/page", "<link rel=stylesheet href=/slow.css><p>x</p><iframe src=/inner></iframe>");
  server.serve("/inner", "<p>inner</p>");
  server.hold("/slow.css", ".late { color: red }", "text/css");
  start();
  control->set_RemoteContent(3);
  auto url = web("/page");
  control->Open_document(url, true);
  server.release();
  ASSERT_TRUE(wait_for([&] { return control->DOM()->readyState() == u"complete"; }));
  EXPECT_EQ(host.count("BeforeNavigate"), 0u);
  EXPECT_EQ(server.count("/inner"), 1u);
}

TEST_F(OnTheWeb, OpeningTheBodyOfADocumentFromAServer) {
  server.serve("/page", "<title>lost</title><style>p {}</style><p>body");
  start();
  control->set_CSShttp(false);
  control->set_CSSText(u".kept {}");
  const auto document = control->DOM();
  auto url = web("/page");
  control->Open_document(url, false);
  EXPECT_EQ(control->DOM(), document);
  EXPECT_EQ(body(), u"<P>body</P>");
  EXPECT_EQ(control->CSSText(), u".kept {}");
  EXPECT_NE(control->DOM()->title(), u"lost");
}

TEST_F(OnTheWeb, AWholeDocumentThatAServerDoesNotHaveIsReported) {
  start_with(u"<P>x</P>");
  auto url = web("/missing");
  control->Open_document(url, true);
  EXPECT_EQ(host.heard.front(), "Error: 20000 Cant find document : " + server.url("/missing"));
  EXPECT_EQ(body(), u"<P>x</P>");
  EXPECT_FALSE(control->openingDocument());
}

TEST_F(OnTheWeb, ABodyThatAServerDoesNotHaveChangesNothingAndClearsTheFlag) {
  start_with(u"<P>x</P>");
  key(u"Shift", 16);
  host.heard.clear();
  auto url = from_utf8(dead_address());
  control->Open_document(url, false);
  EXPECT_EQ(body(), u"<P>x</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(host.heard.size(), 0u);
}

TEST_F(OnTheWeb, AHostThatAllowsItGoesToTheServersPage) {
  server.redirect("/link", "/page");
  server.serve("/page", "<p>there");
  start_with(u"<P><A href=\"" + web("/link") + u"\">link</A></P>");
  control->set_DocumentTitle(u"Mine");
  let_all_pass();
  control->DOM()->click(Control::at(element(dom::Tag::A)));
  ASSERT_TRUE(wait_for([&] { return body() == u"<P>there</P>"; }));
  settle();
  EXPECT_EQ(control->DOM()->title(), u"Mine");
  EXPECT_EQ(control->DOM()->url(), web("/page"));
}

TEST_F(OnTheWeb, FramesOfAServersPageChangeNothing) {
  server.serve("/page", "<p>page</p><iframe name=box src=/inner></iframe>");
  server.serve("/inner", "<title>inner</title>");
  start();
  let_all_pass();
  control->WBrowser().Navigate(web("/page"));
  ASSERT_TRUE(wait_for([&] { return server.count("/inner") == 1; }));
  settle();
  EXPECT_EQ(host.heard.size(), 2u);
  EXPECT_EQ(host.heard.back(), "BeforeNavigate: " + server.url("/inner") + " box");
  EXPECT_TRUE(body().starts_with(u"<P>page</P>"));
}

// --- style sheets ---

TEST_F(OnTheWeb, ASheetByAddressIsThereWhenItsPropertyIsSet) {
  server.serve("/a.css", ".first { color: red }", "text/css");
  server.serve("/b.css", ".second { color: blue }", "text/css");
  start();
  control->set_CSSText(web("/a.css"));
  EXPECT_EQ(dom::style::style_of(control->DOM()->tree()).sheets()[0]->css_text(), u".first { color: red }");
  control->set_CSSText(web("/b.css"));
  ASSERT_TRUE(wait_for([&] {
    return dom::style::style_of(control->DOM()->tree()).sheets()[0]->css_text() == u".second { color: blue }";
  }));
}

TEST_F(OnTheWeb, AMissingSheetEndsItsWait) {
  start();
  control->set_CSSText(web("/missing.css"));
  EXPECT_EQ(server.count("/missing.css"), 1u);
  EXPECT_EQ(dom::style::style_of(control->DOM()->tree()).sheets()[0]->css_text(), u"");
  EXPECT_EQ(host.count("Error"), 0u);
}

TEST_F(OnTheWeb, ADocumentWhoseFirstSheetIsNoLinkIsNotWaitedFor) {
  start();
  auto page = write_file("page.html", "<style>.own { color: red }</style><p>x</p>");
  control->Open_document(page, true);
  control->set_CSShttp(true);
  control->set_CSSText(web("/a.css"));
  EXPECT_EQ(dom::style::style_of(control->DOM()->tree()).sheets()[0]->css_text(), u".own { color: red }");
}

TEST_F(OnTheWeb, AStoredSheetOfAServerIsThereAtTheStart) {
  server.serve("/a.css", ".first { color: red }", "text/css");
  headless::PropertyBag bag;
  bag.put(u"CSSText", web("/a.css"));
  control = make(container);
  control->UserControl_ReadProperties(bag);
  EXPECT_EQ(dom::style::style_of(control->DOM()->tree()).sheets()[0]->css_text(), u".first { color: red }");
}

// --- while a server takes its time ---

TEST_F(OnTheWeb, ContentGivenWhileAPageIsOnItsWayArrivesInThatPage) {
  server.hold("/slow", "<p>slow");
  start();
  let_all_pass();
  control->WBrowser().Navigate(web("/slow"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow") == 1; }));
  loop.post([&] { server.release(); });
  control->set_DocumentHTML(u"<P>given</P>");
  EXPECT_EQ(body(), u"<P>given</P>");
  EXPECT_EQ(control->DOM()->url(), web("/slow"));
}

TEST_F(OnTheWeb, EndingTheControlEndsWhatItWaitsFor) {
  server.hold("/slow", "<p>slow");
  start();
  loop.post_delayed(100, [&] { control->UserControl_Terminate(); });
  auto url = web("/slow");
  control->Open_document(url, true);
  EXPECT_EQ(control->DOM(), nullptr);
  server.release();
  settle();
  EXPECT_EQ(control->DOM(), nullptr);
}

TEST_F(OnTheWeb, DroppingTheControlWhileAServerIsAskedIsNoHarm) {
  server.hold("/slow", "<p>slow");
  start();
  let_all_pass();
  control->WBrowser().Navigate(web("/slow"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow") == 1; }));
  control.reset();
  server.release();
  settle();
}

}  // namespace
}  // namespace tvx::core
