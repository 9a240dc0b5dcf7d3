#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "qt/real_view.h"
#include "support/http_server.h"
#include "tvx/browser/browser.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/reflection.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::qt {
namespace {

/// A page, a sheet and a picture from a web server, in a real view.
class WebInView : public RealView {
 protected:
  WebInView() {
    setenv("no_proxy", "*", 1);
    browser_.add_observer(shower_);
  }
  ~WebInView() override { browser_.remove_observer(shower_); }

  bool ready() const { return browser_.ReadyState() == browser::ReadyState::Complete; }
  bool go(const std::string& path) {
    browser_.Navigate(from_utf8(server_.url(path)));
    return wait_for([this] { return ready(); });
  }
  std::string style(const char* selector, const char* property) {
    return in_page(std::string("getComputedStyle(document.querySelector('") + selector + "'))." + property);
  }

  struct Shower : browser::BrowserObserver {
    explicit Shower(WebInView& test) : test(test) {}
    void document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) override {
      test.document_ = document;
      test.document_view_->show(document);
    }
    WebInView& test;
  };

  HttpServer server_;
  browser::Browser browser_{loop_};
  Shower shower_{*this};
};

constexpr char page[] =
    "<!DOCTYPE html><link rel=stylesheet href=/a.css><p>text</p><img src=/i.svg width=10>";
constexpr char picture[] =
    "<svg xmlns='http://www.w3.org/2000/svg' width='30' height='30'><rect width='30' height='30'/></svg>";

TEST_F(WebInView, ShowsAPageWithItsSheetAndItsPicture) {
  server_.serve("/page", page);
  server_.serve("/a.css", "p { color: rgb(1, 2, 3) }", "text/css");
  server_.serve("/i.svg", picture, "image/svg+xml");
  ASSERT_TRUE(go("/page"));
  ASSERT_TRUE(settle());
  EXPECT_TRUE(wait_for([this] { return style("p", "color") == "rgb(1, 2, 3)"; })) << style("p", "color");
  EXPECT_TRUE(
      wait_for([this] { return in_page("document.querySelector('img').naturalWidth + ''") == "30"; }));
  EXPECT_EQ(dom::style::computed_value(*document_->first(dom::Tag::P), dom::style::Property::Color),
            u"rgb(1, 2, 3)")
      << "the document's own answer";
  EXPECT_EQ(shown(), expected());
}

/// As a page that will stand in the web, whose newest pictures are still here.
TEST_F(WebInView, ALocalPageWithABaseInTheWebShowsPicturesAndSheetsFromBoth) {
  const auto folder = std::filesystem::temp_directory_path() / ("htmled-base-" + std::to_string(getpid()));
  std::filesystem::create_directory(folder);
  const std::string local = "file://" + folder.string();
  std::ofstream(folder / "i.svg") << picture;
  std::ofstream(folder / "a.css") << "p { color: rgb(1, 2, 3) }";
  std::ofstream(folder / "page.html")
      << "<!DOCTYPE html><base href='" << server_.url("/in/") << "'><link rel=stylesheet href='" << local
      << "/a.css'><style>p { background-image: url(b.svg) }</style><p>text</p><img id=here src='" << local
      << "/i.svg'><img id=there src=w.svg>";
  server_.serve("/in/w.svg", picture, "image/svg+xml");
  server_.serve("/in/b.svg", picture, "image/svg+xml");
  browser_.Navigate(from_utf8((folder / "page.html").string()));
  ASSERT_TRUE(wait_for([this] { return ready(); }));
  ASSERT_TRUE(settle());
  for (const char* name : {"here", "there"}) {
    const std::string width = std::string("document.getElementById('") + name + "').naturalWidth + ''";
    EXPECT_TRUE(wait_for([&] { return in_page(width.c_str()) == "30"; })) << name;
  }
  EXPECT_TRUE(wait_for([this] { return style("p", "color") == "rgb(1, 2, 3)"; })) << style("p", "color");
  EXPECT_EQ(style("p", "backgroundImage"), "url(\"" + server_.url("/in/b.svg") + "\")");
  EXPECT_EQ(shown(), expected());
  std::filesystem::remove_all(folder);
}

TEST_F(WebInView, ALateSheetIsFollowed) {
  server_.serve("/page", "<!DOCTYPE html><link rel=stylesheet href=''><p>text</p>");
  server_.serve("/late.css", "p { color: rgb(4, 5, 6) }", "text/css");
  ASSERT_TRUE(go("/page"));
  ASSERT_TRUE(settle());
  dom::style::style_of(document_->tree()).sheets().at(0)->set_href(u"/late.css");
  EXPECT_TRUE(wait_for([this] { return style("p", "color") == "rgb(4, 5, 6)"; })) << style("p", "color");
}

/// A sheet that is written anew in its own file.
TEST_F(WebInView, ASheetFileWrittenAnewIsShownAnew) {
  const auto folder = std::filesystem::temp_directory_path() / ("htmled-sheet-" + std::to_string(getpid()));
  std::filesystem::create_directory(folder);
  const auto write = [&folder](const char* name, const std::string& text) {
    std::ofstream(folder / name, std::ios::binary) << text;
  };
  write("page.html", "<!DOCTYPE html><link rel=stylesheet href=a.css><p>text</p>");
  write("a.css", "p { color: rgb(1, 2, 3) }");
  browser_.Navigate(from_utf8((folder / "page.html").string()));
  ASSERT_TRUE(wait_for([this] { return ready(); }));
  ASSERT_TRUE(settle());
  ASSERT_TRUE(wait_for([this] { return style("p", "color") == "rgb(1, 2, 3)"; })) << style("p", "color");
  const auto sheet = dom::style::style_of(document_->tree()).sheets().at(0);
  for (const char* colour : {"rgb(4, 5, 6)", "rgb(7, 8, 9)"}) {
    write("a.css", std::string("p { color: ") + colour + " }");
    sheet->set_href(u"a.css");
    EXPECT_TRUE(wait_for([&] { return style("p", "color") == colour; }, 5000)) << style("p", "color");
    EXPECT_EQ(
        to_utf8(dom::style::computed_value(*document_->first(dom::Tag::P), dom::style::Property::Color)),
        colour);
  }
  // What is written to the link later keeps the newest sheet.
  dom::set_attribute(*document_->first(dom::Tag::Link),
                     dom::attribute_named(*document_->first(dom::Tag::Link), u"title"), u"t");
  ASSERT_TRUE(settle());
  EXPECT_TRUE(wait_for([&] { return style("p", "color") == "rgb(7, 8, 9)"; }, 5000)) << style("p", "color");
  EXPECT_EQ(shown(), expected());
  std::filesystem::remove_all(folder);
}

TEST_F(WebInView, AScriptScrolls) {
  server_.serve("/page",
                "<!DOCTYPE html><p style='height:3000px'>a</p><div>b</div><p style='height:3000px'>c</p>");
  ASSERT_TRUE(go("/page"));
  document_->viewport()->scroll_to(0, 700);
  EXPECT_TRUE(wait_for([this] { return document_view_->facts().scroll_y == 700; }, 5000));
  document_->viewport()->scroll_into_view(*document_->first(dom::Tag::Div), true);
  const std::string top = "Math.round(document.querySelector('div').getBoundingClientRect().top) + ''";
  EXPECT_TRUE(wait_for([&] { return in_page(top) == "0"; }, 5000)) << in_page(top);
  document_->viewport()->scroll_into_view(*document_->first(dom::Tag::Div), false);
  const std::string below =
      "Math.round(document.querySelector('div').getBoundingClientRect().bottom - innerHeight) + ''";
  EXPECT_TRUE(wait_for([&] { return in_page(below) == "0"; }, 5000)) << in_page(below);
}

TEST_F(WebInView, TypingGoesOnWhileAServerTakesItsTime) {
  server_.serve("/page", "<!DOCTYPE html><p>abc</p>");
  server_.hold("/slow", "<p>slow</p>");
  ASSERT_TRUE(go("/page"));
  document_->set_designMode(u"On");
  document_view_->set_editable(true);
  ASSERT_TRUE(settle());
  browser_.Navigate(from_utf8(server_.url("/slow")));
  ASSERT_TRUE(wait_for([this] { return server_.count("/slow") == 1; }));
  document_->editor().selection().collapse({document_->body()->first_child()->first_child(), 3});
  post_text("def");
  EXPECT_TRUE(wait_for([this] { return html() == "<P>abcdef</P>"; }, 5000)) << html();
  EXPECT_EQ(browser_.ReadyState(), browser::ReadyState::Loading);
  ASSERT_TRUE(settle());
  EXPECT_EQ(shown(), expected());
  server_.release();
  ASSERT_TRUE(wait_for([this] { return ready(); }));
  EXPECT_EQ(html(), "<P>slow</P>");
}

}  // namespace
}  // namespace tvx::qt
