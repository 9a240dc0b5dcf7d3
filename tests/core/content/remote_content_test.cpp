#include "tvx/core/content/remote_content.h"
#include "core/on_the_web.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/style_engine.h"

namespace tvx::core {
namespace {

/// A page with a sheet that imports another, a picture, and frames that name frames.
class RemoteContentTest : public OnTheWeb {
 protected:
  RemoteContentTest() {
    server.serve("/a.css", "@import url(b.css); .a { color: red }", "text/css");
    server.serve("/b.css", ".b { color: blue }", "text/css");
    server.serve("/frame", "<p>inner</p><iframe src=/deeper></iframe>");
    server.serve("/deeper", "<p>deeper</p>");
    page_ = write_file("page.html", "<link rel=stylesheet href=\"" + server.url("/a.css") + "\"><p>page</p>" +
                                        "<iframe src=\"" + server.url("/frame") + "\"></iframe>");
  }
  void open_with(std::int32_t which) {
    start();
    control->set_RemoteContent(which);
    host.heard.clear();
    control->Open_document(page_, true);
    ASSERT_TRUE(wait_for([&] { return control->DOM()->readyState() == u"complete"; }));
    settle();
  }
  std::size_t requests() {
    std::size_t all = 0;
    for (const char* path : {"/a.css", "/b.css", "/frame", "/deeper"}) all += server.count(path);
    return all;
  }
  bool has_rule(const char16_t* selector) {
    for (const auto& sheet : dom::style::style_of(control->DOM()->tree()).sheets())
      if (contains(sheet->css_text(), selector)) return true;
    return false;
  }
  std::u16string page_;
};

TEST_F(RemoteContentTest, ByDefaultSheetsComeAndNoFrameDoes) {
  start();
  EXPECT_EQ(control->RemoteContent(), 1);
  control->Open_document(page_, true);
  ASSERT_TRUE(wait_for([&] { return control->DOM()->readyState() == u"complete"; }));
  settle();
  EXPECT_EQ(server.count("/a.css"), 1u);
  EXPECT_EQ(server.count("/b.css"), 1u);
  EXPECT_EQ(server.count("/frame"), 0u) << "nobody asked for it, and nobody sees it";
  EXPECT_EQ(host.count("BeforeNavigate"), 0u);
  EXPECT_FALSE(control->RemoteContentWithheld());
}

TEST_F(RemoteContentTest, OffNothingIsFetched) {
  open_with(0);
  EXPECT_EQ(requests(), 0u);
  EXPECT_FALSE(has_rule(u".a"));
  EXPECT_TRUE(control->RemoteContentWithheld());
}

TEST_F(RemoteContentTest, AskedNothingIsFetchedUntilItIsShown) {
  open_with(2);
  EXPECT_EQ(requests(), 0u);
  EXPECT_TRUE(control->RemoteContentWithheld());
  control->ShowRemoteContent();
  ASSERT_TRUE(wait_for([&] { return has_rule(u".a"); }));
  settle();
  EXPECT_EQ(server.count("/b.css"), 1u) << "what it imports too";
  EXPECT_EQ(server.count("/frame"), 0u);
  EXPECT_FALSE(control->RemoteContentWithheld());
  EXPECT_EQ(control->RemoteContent(), 2);
}

TEST_F(RemoteContentTest, WhatWasShownOfOneDocumentIsNotOfTheNext) {
  open_with(2);
  control->ShowRemoteContent();
  ASSERT_TRUE(wait_for([&] { return has_rule(u".a"); }));
  control->Open_document(page_, true);
  ASSERT_TRUE(wait_for([&] { return control->DOM()->readyState() == u"complete"; }));
  settle();
  EXPECT_EQ(server.count("/a.css"), 1u);
  EXPECT_TRUE(control->RemoteContentWithheld());
}

TEST_F(RemoteContentTest, AllFetchesFramesToo) {
  open_with(3);
  EXPECT_EQ(server.count("/frame"), 1u);
  EXPECT_EQ(server.count("/deeper"), 1u);
  EXPECT_EQ(host.count("BeforeNavigate"), 0u) << "the control's own";
}

TEST_F(RemoteContentTest, AFrameOfAPageThatTheHostLetsThroughIsAskedFor) {
  server.serve("/page", "<p>x</p><iframe src=/frame></iframe>");
  start();
  let_all_pass();
  control->WBrowser().Navigate(web("/page"));
  ASSERT_TRUE(wait_for([&] { return server.count("/deeper") == 1; })) << "the host has said so";
}

TEST_F(RemoteContentTest, ALocalFrameOfALocalPageIsNotRemote) {
  start();
  write_file("inner.html", "<p>inner</p><iframe src=\"" + server.url("/frame") + "\"></iframe>");
  auto page = write_file("outer.html", "<iframe src=inner.html></iframe>");
  control->Open_document(page, true);
  settle();
  EXPECT_EQ(requests(), 0u) << "what a local frame names is";
}

TEST_F(RemoteContentTest, SwitchedOnLaterItLoadsWhatIsMissing) {
  open_with(0);
  control->set_RemoteContent(1);
  ASSERT_TRUE(wait_for([&] { return has_rule(u".a") && server.count("/b.css") == 1; }));
  EXPECT_FALSE(control->RemoteContentWithheld());
}

TEST_F(RemoteContentTest, WhatIsInsertedLaterIsAskedForToo) {
  start_with(u"<P>x</P>");
  control->set_RemoteContent(2);
  auto link = control->DOM()->tree().create_element(dom::Tag::Link);
  dom::set_attribute(*link, dom::Name(u"rel"), u"stylesheet");
  dom::set_attribute(*link, dom::names::href, web("/a.css"));
  dom::insert(*control->DOM()->body(), link);
  settle();
  EXPECT_EQ(requests(), 0u);
  EXPECT_TRUE(control->RemoteContentWithheld());
}

TEST_F(RemoteContentTest, TheContainerHearsOfItOnce) {
  open_with(2);
  std::size_t told = 0;
  for (const auto& key : container.changed()) told += key == u"RemoteContentWithheld";
  EXPECT_EQ(told, 1u);
}

TEST_F(RemoteContentTest, OnlyItsNumbersCanBeSet) {
  start();
  for (const std::int32_t which : {-1, 4, 100})
    EXPECT_THROW(control->set_RemoteContent(which), RuntimeError) << which;
  EXPECT_EQ(control->RemoteContent(), 1);
}

TEST_F(RemoteContentTest, ItIsPersistedWhereItIsNotTheDefault) {
  start();
  headless::PropertyBag bag;
  control->UserControl_WriteProperties(bag);
  EXPECT_THAT(bag.written(), testing::Not(testing::Contains(u"RemoteContent")))
      << "containers of old get what they always got";
  control->set_RemoteContent(2);
  control->UserControl_WriteProperties(bag);
  Properties read;
  TableLabels labels;
  read_properties(read, labels, bag);
  EXPECT_EQ(read.RemoteContent, 2);
}

TEST_F(RemoteContentTest, WhatIsReadFromAStoreCountsAtOnce) {
  start();
  headless::PropertyBag bag;
  bag.WriteProperty(u"RemoteContent", std::int32_t(0), std::int32_t(1));
  control->UserControl_ReadProperties(bag);
  control->Open_document(page_, true);
  settle();
  EXPECT_EQ(requests(), 0u);
}

TEST_F(RemoteContentTest, AStoredNumberThatMeansNothingLetsNothingIn) {
  headless::PropertyBag bag;
  bag.WriteProperty(u"RemoteContent", std::int32_t(77), std::int32_t(1));
  Properties read;
  TableLabels labels;
  read_properties(read, labels, bag);
  EXPECT_EQ(policy_of(read), browser::ResourcePolicy::nothing_remote());
}

// --- budgets ---

TEST_F(RemoteContentTest, ImportsOfAPageHaveAnEnd) {
  std::string page;
  for (int sheet = 0; sheet < 40; ++sheet) {
    page += "<style>";
    for (int i = 0; i < 40; ++i)
      page +=
          "@import url(" + server.url("/s" + std::to_string(sheet) + "-" + std::to_string(i) + ".css") + ");";
    page += "</style>";
  }
  start();
  auto url = write_file("many.html", page);
  control->Open_document(url, true);
  ASSERT_TRUE(wait_for([&] { return control->DOM()->readyState() == u"complete"; }));
  settle();
  EXPECT_EQ(server.requests().size(), std::size_t(browser::ResourceBudget().imports));
}

TEST_F(RemoteContentTest, RequestsOfAPageHaveAnEnd) {
  std::string page;
  for (int i = 0; i < 2100; ++i)
    page += "<link rel=stylesheet href=\"" + server.url("/s" + std::to_string(i) + ".css") + "\">";
  start();
  auto url = write_file("many.html", page);
  control->Open_document(url, true);
  ASSERT_TRUE(wait_for([&] { return control->DOM()->readyState() == u"complete"; }));
  settle();
  EXPECT_EQ(server.requests().size(), std::size_t(browser::ResourceBudget().requests));
}

}  // namespace
}  // namespace tvx::core
