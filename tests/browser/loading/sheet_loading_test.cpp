#include "browser/web_fixture.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

using dom::style::style_of;
using testing::ElementsAre;

class Sheets : public Web {
 protected:
  void serve_sheet(const std::string& path, const std::string& text) { server.serve(path, text, "text/css"); }
  dom::style::StyleEngine& styles() { return style_of(browser->Document()->tree()); }
  std::string text_of(std::size_t index) { return to_utf8(styles().sheets().at(index)->css_text()); }
  std::string color() {
    return to_utf8(styles().computed(*browser->Document()->first(dom::Tag::P), dom::style::Property::Color));
  }
  static constexpr const char *red = "rgb(255, 0, 0)", *green = "rgb(0, 128, 0)", *blue = "rgb(0, 0, 255)",
                              *black = "rgb(0, 0, 0)";
};

TEST_F(Sheets, ComeWithThePageAndCountInTheDocumentsOrder) {
  server.serve("/page", "<link rel=stylesheet href=/a.css><link rel=stylesheet href=b.css><p>x");
  server.hold("/a.css", "p { color: red }", "text/css");
  serve_sheet("/b.css", "p { color: blue }");
  browser->Navigate(at("/page"));
  ASSERT_TRUE(wait_for([&] { return server.count("/b.css") == 1; }));
  settle();
  EXPECT_EQ(browser->ReadyState(), ReadyState::Interactive) << "complete means: with its sheets";
  EXPECT_EQ(color(), blue);
  server.release();
  ASSERT_TRUE(wait_for([&] { return ready(); }));
  EXPECT_EQ(color(), blue) << "the one that came last stands first";
  EXPECT_EQ(text_of(0), "p { color: red }");
  EXPECT_EQ(count("DownloadBegin"), 1u);
  EXPECT_EQ(count("DownloadComplete"), 1u);
}

TEST_F(Sheets, ALateSheetRestyles) {
  server.serve("/page", "<link rel=stylesheet href=''><p>x");
  serve_sheet("/late.css", "p { color: green }");
  go(at("/page"));
  EXPECT_EQ(color(), black);
  told.clear();
  styles().sheets()[0]->set_href(u"/late.css");
  EXPECT_THAT(told, ElementsAre()) << "nothing is loaded inside a mutation";
  ASSERT_TRUE(wait_for([&] { return count("DownloadComplete") == 1; }));
  EXPECT_THAT(told, ElementsAre("DownloadBegin 4", "DownloadComplete 4"));
  EXPECT_EQ(color(), green);
}

TEST_F(Sheets, AnEmptyOrDeadAddressIsAnEmptySheetInTheList) {
  server.serve("/page",
               "<link rel=stylesheet href=''><link rel=stylesheet href=/missing.css>"
               "<link rel=stylesheet href=" +
                   dead_address() + "><p>x");
  go(at("/page"));
  ASSERT_EQ(styles().sheets().size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(text_of(i), "") << i;
    EXPECT_TRUE(styles().sheets()[i]->rules().empty());
  }
  EXPECT_EQ(server.requests().size(), 2u) << "an empty address loads nothing";
  EXPECT_EQ(count("DownloadComplete"), 1u);
  EXPECT_EQ(count("NavigateError"), 0u);
}

TEST_F(Sheets, WhatAServerCallsSomethingElseIsNoSheetButForItsOwnPagesOfOld) {
  server.serve("/standards", "<!DOCTYPE html><link rel=stylesheet href=/x.css><p>x");
  server.serve("/quirks", "<link rel=stylesheet href=/x.css><p>x");
  server.serve("/x.css", "p { color: red }", "text/html");
  go(at("/standards"));
  EXPECT_EQ(color(), black);
  go(at("/quirks"));
  EXPECT_EQ(color(), red);
  go(file("quirks.html", "<link rel=stylesheet href=" + server.url("/x.css") + "><p>x"));
  EXPECT_EQ(color(), black) << "another origin";
  server.serve("/x.css", "p { color: red }", "");
  go(at("/standards"));
  EXPECT_EQ(color(), red) << "no type at all";
}

TEST_F(Sheets, AnErrorPageIsNoSheet) {
  server.serve("/page", "<link rel=stylesheet href=/x.css><p>x");
  server.on("/x.css",
            [](const auto&, auto& to) { to.reply("p { color: red }", "text/css", "404 Not Found"); });
  go(at("/page"));
  EXPECT_EQ(color(), black);
  EXPECT_EQ(text_of(0), "");
}

TEST_F(Sheets, ASheetBehindARedirectSeesItsImportsFromThere) {
  server.serve("/page", "<link rel=stylesheet href=/a.css><p>x");
  server.redirect("/a.css", "/folder/b.css");
  serve_sheet("/folder/b.css", "@import 'c.css';");
  serve_sheet("/folder/c.css", "p { color: red }");
  go(at("/page"));
  EXPECT_EQ(color(), red);
  EXPECT_EQ(text_of(0), "@import 'c.css';") << "a sheet's text is its own";
  EXPECT_EQ(styles().sheets().size(), 1u);
}

TEST_F(Sheets, ASheetsCharacterSet) {
  server.serve("/page", "<meta charset=windows-1251><link rel=stylesheet href=/x.css><p>x");
  const std::pair<const char*, std::pair<std::string, std::u16string>> cases[] = {
      {"text/css; charset=iso-8859-2", {"@charset \"utf-8\";/*\xB1*/", u"\u0105"}},
      {"text/css; charset=iso-8859-2", {"\xEF\xBB\xBF/*\xC4\x85*/", u"\u0105"}},
      {"text/css", {"@charset \"koi8-r\";/*\xC1*/", u"\u0430"}},
      {"text/css", {" @charset \"koi8-r\";/*\xE0*/", u"\u0430"}},  // no declaration: it isn't at the start
      {"text/css", {"/*\xE0*/", u"\u0430"}},                       // as the document
      {"text/css", {"/*\xC3\xA9*/", u"\u00E9"}},
  };
  for (const auto& [type, sheet] : cases) {
    server.serve("/x.css", sheet.first, type);
    go(at("/page"));
    EXPECT_TRUE(contains(styles().sheets()[0]->css_text(), sheet.second)) << type << sheet.first;
  }
}

// --- imports ---

TEST_F(Sheets, ImportsCountBeforeTheRestInTheirOrder) {
  server.serve("/page", "<link rel=stylesheet href=/a.css><p class=a id=i>x");
  serve_sheet("/a.css", "@import url(/b.css); @import \"/c.css\"; .z {}");
  server.hold("/b.css", "p { color: red; font-weight: bold }", "text/css");
  serve_sheet("/c.css", "@import '/d.css'; p { color: blue }");
  serve_sheet("/d.css", "p { color: green; font-style: italic }");
  browser->Navigate(at("/page"));
  ASSERT_TRUE(wait_for([&] { return server.count("/d.css") == 1; }));
  server.release();
  ASSERT_TRUE(wait_for([&] { return ready(); }));
  EXPECT_EQ(color(), blue);
  const dom::Element& p = *browser->Document()->first(dom::Tag::P);
  EXPECT_EQ(styles().computed(p, dom::style::Property::FontWeight), u"700");
  EXPECT_EQ(styles().computed(p, dom::style::Property::FontStyle), u"italic");
  EXPECT_EQ(styles().sheets()[0]->rules().size(), 3u);
}

TEST_F(Sheets, AnImportOfAnotherMediumIsNotLoaded) {
  server.serve("/page", "<link rel=stylesheet href=/a.css><p>x");
  serve_sheet("/a.css",
              "@import '/print.css' print; @import url('/wide.css') screen and (min-width: 10px);"
              "@import '/small.css' (max-width: 10px);");
  serve_sheet("/print.css", "p { color: red }");
  serve_sheet("/small.css", "p { color: red }");
  serve_sheet("/wide.css", "p { color: blue }");
  go(at("/page"));
  EXPECT_EQ(color(), blue);
  EXPECT_EQ(server.count("/print.css") + server.count("/small.css"), 0u);
}

TEST_F(Sheets, CyclesOfImportsEnd) {
  server.serve("/page", "<link rel=stylesheet href=/a.css><p>x");
  serve_sheet("/a.css", "@import '/b.css'; @import '/a.css';");
  serve_sheet("/b.css", "@import '/a.css'; p { color: red }");
  go(at("/page"));
  EXPECT_EQ(color(), red);
  EXPECT_EQ(server.count("/a.css"), 1u);
  EXPECT_EQ(server.count("/b.css"), 1u);
}

TEST_F(Sheets, ImportsWithoutEndAreBounded) {
  server.serve("/page", "<link rel=stylesheet href=/x.css?0><p>x");
  int number = 0;
  server.on("/x.css", [&](const auto&, auto& to) {
    const std::string one = std::to_string(++number), two = std::to_string(++number);
    to.reply("@import 'x.css?" + one + "'; @import 'x.css?" + two + "'; p { color: red }", "text/css");
  });
  go(at("/page"));
  EXPECT_EQ(color(), red);
  EXPECT_LE(server.requests().size(), 300u);
}

TEST_F(Sheets, AStyleElementImportsToo) {
  serve_sheet("/a.css", "p { color: red }");
  serve_sheet("/b.css", "p { color: blue }");
  server.serve("/page", "<style>@import '/a.css';</style><p>x");
  go(at("/page"));
  EXPECT_EQ(color(), red);
  styles().sheets()[0]->set_css_text(u"@import '/b.css';");
  ASSERT_TRUE(wait_for([&] { return color() == blue; }));
  styles().sheets()[0]->set_css_text(u"b {}");
  ASSERT_TRUE(wait_for([&] { return color() == black; })) << "what isn't imported any more doesn't count";
  EXPECT_EQ(count("DownloadBegin"), count("DownloadComplete"));
}

TEST_F(Sheets, LocalSheetsImportLocalOnes) {
  std::filesystem::create_directories(folder / "css");
  file("css/a.css", "@import 'b.css'; @import url(missing.css);");
  file("css/b.css", "p { color: red }");
  go(file("page.html", "<link rel=stylesheet href=css/a.css><p>x"));
  EXPECT_EQ(color(), red);
}

TEST_F(Sheets, APageFromElsewhereBringsInNoLocalFile) {
  const std::string local = "file://" + to_utf8(file("local.css", "p { color: red }"));
  server.serve("/page", "<link rel=stylesheet href='" + local + "'><style>@import '" + local +
                            "';</style><link rel=stylesheet href=/a.css><p>x");
  serve_sheet("/a.css", "@import '" + local + "';");
  go(at("/page"));
  EXPECT_EQ(color(), black);
  // What the host links to is the host's wish.
  styles().sheets()[0]->set_href(from_utf8(local));
  ASSERT_TRUE(wait_for([&] { return color() == red; }));
}

// --- changes on the way ---

TEST_F(Sheets, TheLaterAddressOfALinkCountsWhicheverComesFirst) {
  server.serve("/page", "<link rel=stylesheet href=/slow.css><p>x");
  server.hold("/slow.css", "p { color: red }", "text/css");
  serve_sheet("/quick.css", "p { color: blue }");
  browser->Navigate(at("/page"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow.css") == 1; }));
  styles().sheets()[0]->set_href(u"/quick.css");
  ASSERT_TRUE(wait_for([&] { return ready(); })) << "nobody waits for the first any more";
  server.release();
  settle();
  EXPECT_EQ(color(), blue);
  EXPECT_EQ(count("DownloadBegin"), 2u);
  EXPECT_EQ(count("DownloadComplete"), 2u);
}

TEST_F(Sheets, ALinkRemovedOnTheWayIsNoHarm) {
  server.serve("/page", "<link rel=stylesheet href=/slow.css><p>x");
  server.hold("/slow.css", "p { color: red }", "text/css");
  browser->Navigate(at("/page"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow.css") == 1; }));
  dom::remove(*browser->Document()->first(dom::Tag::Link));
  server.release();
  ASSERT_TRUE(wait_for([&] { return ready(); }));
  EXPECT_EQ(color(), black);
  EXPECT_TRUE(styles().sheets().empty());
}

TEST_F(Sheets, ADocumentThatIsReplacedForgetsItsSheets) {
  server.serve("/page", "<link rel=stylesheet href=''>first");
  server.hold("/slow.css", "p { color: red }", "text/css");
  server.serve("/other", "<p>other");
  go(at("/page"));
  styles().sheets()[0]->set_href(u"/slow.css");
  ASSERT_TRUE(wait_for([&] { return server.count("/slow.css") == 1; }));
  go(at("/other"));
  EXPECT_EQ(count("DownloadBegin"), 3u);
  EXPECT_EQ(count("DownloadComplete"), 3u);
  server.release();
  settle();
  EXPECT_EQ(count("DownloadComplete"), 3u);
}

TEST(Imports, AddressAndMediaOfAnImport) {
  using dom::style::parse_import;
  const struct {
    std::u16string_view prelude, url, media;
  } cases[] = {
      {u"'a.css'", u"a.css", u""},
      {u"url(a.css) print", u"a.css", u"print"},
      {u"url( \"a b.css\" )screen, print", u"a b.css", u"screen, print"},
      {u" /* x */ \"a\\62.css\"  all", u"ab.css", u"all"},
      {u"'a' layer print", u"a", u"print"},
      {u"'a' layer(base) supports(display: grid) (min-width: 1px)", u"a", u"(min-width: 1px)"},
  };
  for (const auto& row : cases) {
    const auto import = parse_import(row.prelude);
    ASSERT_TRUE(import) << to_utf8(row.prelude);
    EXPECT_EQ(import->url, row.url) << to_utf8(row.prelude);
    EXPECT_EQ(import->media, row.media) << to_utf8(row.prelude);
  }
  for (const char16_t* none : {u"", u"a.css", u"url()", u"''", u"url(a b)", u"print 'a'", u"url(var(--x))"})
    EXPECT_FALSE(parse_import(none)) << to_utf8(none);
}

}  // namespace
}  // namespace tvx::browser
