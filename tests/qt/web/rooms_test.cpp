#include <QImage>
#include <QWebEnginePage>

#include <random>

#include "qt/real_view.h"
#include "qt/web/room_pages.h"
#include "support/http_server.h"
#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/range.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"

/// Rooms of large elements change nothing but the time that the engine takes.
namespace tvx::qt {
namespace {

/// What the page says of itself: where all elements are, what is at points of the window, where lines go on.
constexpr char account_script[] = R"js((function () {
  window.scrollTo(0, 0);
  const numbers = new Map(), walker = document.createTreeWalker(document);
  for (let node = document; node; node = walker.nextNode()) numbers.set(node, numbers.size);
  const boxes = [...document.querySelectorAll('*:not(tvx-host)')].map((element) => {
    const box = element.getBoundingClientRect();
    return [box.left, box.top, box.width, box.height].map((length) => length.toFixed(2)).join();
  });
  const hits = [];
  for (const top of [0, document.documentElement.scrollHeight / 2, 1e7]) {
    window.scrollTo(0, top);
    window.dispatchEvent(new Event('scroll'));  // what is done a frame later
    for (let y = 1; y < innerHeight; y += 7)
      for (let x = 3; x < innerWidth; x += 61) {
        const caret = document.caretRangeFromPoint(x, y);
        hits.push([numbers.get(document.elementFromPoint(x, y)),
          caret && numbers.get(caret.startContainer) + ':' + caret.startOffset].join());
      }
  }
  window.scrollTo(0, 0);
  const selection = getSelection(), stops = [];
  const stop = () => stops.push(numbers.get(selection.focusNode) + ':' + selection.focusOffset);
  selection.collapse(document.body, 0);
  for (let i = 0; i < 300; ++i) stop(selection.modify('move', 'forward', 'line'));
  for (let i = 0; i < 50; ++i) stop(selection.modify('move', 'backward', 'line'));
  for (let i = 0; i < 100; ++i) stop(selection.modify('move', 'right', 'character'));
  for (const way of ['forward', 'backward']) stop(selection.modify('extend', way, 'lineboundary'));
  selection.removeAllRanges();
  return [boxes.join(' '), hits.join(' '), stops.join(' ')].join('\n');
})())js";

class Rooms : public RealView {
 protected:
  Rooms() {
    window_->resize(800, 1500);
    view_->widget()->setGeometry(0, 0, 800, 1500);
  }

  /// Shows a page that comes in two parts: first what may forbid rooms, then so many children that they are
  /// made.
  void show(const RoomPage& page, bool with_rooms) {
    open(page.head());
    in_page(std::string("tvxView.allowRooms(") + (with_rooms ? "true" : "false") + ")");
    dom::set_inner_html(*document_->body(), page.content());
    ASSERT_TRUE(settle());
  }

  int rooms() { return std::stoi(in_page("String(tvxView.rooms().reduce((a, b) => a + b, 0))")); }

  /// The window as soon as it stays the same.
  QImage picture() {
    // What was asked of the page before is in the frame after the next one.
    in_page(
        "globalThis.framed = 0; requestAnimationFrame(() => requestAnimationFrame(() => { framed = 1; })); "
        "''");
    wait_for([this] { return in_page("String(globalThis.framed)") == "1"; }, 5000);
    QImage last;
    for (int i = 0; i < 40; ++i) {
      wait_for([] { return false; }, 60);
      QImage now = window_->grab().toImage();
      if (i > 2 && now == last) return now;
      last = std::move(now);
    }
    ADD_FAILURE() << "the window doesn't come to rest";
    return last;
  }

  /// The page on paper, without the hour that it was printed at.
  QByteArray paper() {
    QByteArray sheets;
    bool done = false;
    view_->page()->printToPdf([&](const QByteArray& pdf) {
      sheets = pdf;
      done = true;
    });
    wait_for([&] { return done; });
    QList<QByteArray> lines = sheets.split('\n');
    lines.removeIf([](const QByteArray& line) { return line.contains("Date (D:"); });
    return lines.join('\n');
  }
};

/// Where boxes are and what is hit. Where lines go on, an element whose rooms are no boxes tells less: the
/// engine stops at no position beside its blocks.
std::string first_lines(const std::string& account) { return account.substr(0, account.rfind('\n')); }

int count_drawn(const QImage& picture) {
  int drawn = 0;
  for (int y = 0; y < picture.height(); y += 3)
    for (int x = 0; x < picture.width(); x += 3) drawn += qGray(picture.pixel(x, y)) < 230;
  return drawn;
}

TEST_F(Rooms, ChangeNoPicture) {
  for (const RoomPage& page : room_pages) {
    SCOPED_TRACE(page.name);
    show(page, false);
    EXPECT_EQ(rooms(), 0);
    const QImage without = picture();
    EXPECT_GT(count_drawn(without), 50);
    show(page, true);
    EXPECT_EQ(rooms() > 1, page.divided) << rooms();
    EXPECT_EQ(picture(), without);
    in_page("tvxView.allowRooms(false)");  // no boxes, but still there
    EXPECT_EQ(rooms(), 0);
    EXPECT_EQ(picture(), without);
  }
}

TEST_F(Rooms, ChangeNothingOfWhereThingsAreAndWhatIsHit) {
  for (const RoomPage& page : room_pages) {
    SCOPED_TRACE(page.name);
    show(page, false);
    const std::string without = in_page(account_script);
    EXPECT_GT(without.size(), 10'000U);
    show(page, true);
    EXPECT_TRUE(in_page(account_script) == without);
    EXPECT_EQ(shown(), expected());
  }
}

TEST_F(Rooms, AreNotOnPaper) {
  for (const RoomPage& page : room_pages) {
    if (!page.divided) continue;
    SCOPED_TRACE(page.name);
    show(page, false);
    const QByteArray without = paper();
    EXPECT_GT(without.size(), 2000);
    show(page, true);
    EXPECT_GT(rooms(), 1);
    EXPECT_TRUE(paper() == without);
  }
}

/// What is taken out of the flow may stand in the window, though its room is far away.
TEST_F(Rooms, FarAwayChangeNoPicture) {
  const std::u16string fixed =
      u"<div style='position:fixed;top:90px;left:50px;z-index:5;background:#fc0'>fixed #</div>";
  const std::vector<RoomPage> pages = {
      {"what stays in the window",
       true,
       false,
       u"p{position:relative;background:#eef} "
       u".u{position:absolute;top:6000px;right:0;height:900px;width:300px;background:#cfc}",
       {fixed, u"<p>#</p>", u"<p>#</p>", u"<p>#</p>", u"<p>#</p>", u"<div class=u>#</div>"},
       {},
       1000},
      {"floats that hang over",
       true,
       false,
       u".f{float:left;width:200px;height:5000px;background:#fcc} p{background:#eef}",
       {u"<p>#</p>", u"<p>#</p>", u"<p>#</p>", u"<p>#</p>", u"<p>#</p>", u"<p>#</p>",
        u"<div class=f>#</div>"},
       {},
       1000},
  };
  for (const RoomPage& page : pages) {
    SCOPED_TRACE(page.name);
    QImage without;
    for (const bool with : {false, true}) {
      show(page, with);
      in_page("window.scrollTo(0, document.documentElement.scrollHeight / 2)");
      const QImage now = picture();
      if (with)
        EXPECT_EQ(now, without);
      else
        without = now;
    }
    EXPECT_GT(rooms(), 10);
  }
}

/// Edits as users make them, all over a page with rooms.
TEST_F(Rooms, StayWhatThePageIsWhileItIsEdited) {
  const RoomPage page{"",
                      true,
                      false,
                      u"p{margin:9px 0}",
                      {u"<p>one # two</p>", u"<h2>#</h2>", u"<ul><li>a<li>b</ul>", u"loose # <b>text</b>"},
                      {},
                      400};
  show(page, true);
  std::mt19937 random(20261122);
  const auto pick = [&random](std::size_t count) { return random() % count; };
  const auto any_position = [&]() -> dom::Boundary {
    std::vector<dom::Text*> texts;
    for (dom::Node* node = document_->body(); node; node = dom::next_in_order(*node, document_->body()))
      if (auto* text = dom::as<dom::Text>(node); text && text->length() > 2) texts.push_back(text);
    dom::Text* text = texts[pick(texts.size())];
    return {text, pick(text->length() + 1)};
  };
  const auto key = [this](std::u16string name, int code) {
    attempt(
        [&] { document_->key_down({.key = name, .text = name.size() == 1 ? name : u"", .key_code = code}); });
  };
  for (int batch = 0; batch < 6; ++batch) {
    for (int i = 0; i < 20; ++i) {
      const dom::Boundary anchor = any_position();
      document_->editor().selection().set(anchor, {anchor.node, pick(3) ? anchor.offset : 0});
      static constexpr std::u16string_view commands[] = {
          u"Bold", u"Indent", u"InsertUnorderedList", u"InsertHorizontalRule",
          u"Undo", u"Redo",   u"FormatBlock"};
      switch (pick(6)) {
        case 0: key(u"Enter", 13); break;
        case 1: key(u"Backspace", 8); break;
        case 2: key(u"x", 'X'); break;
        case 3: key(u"Delete", 46); break;
        default: attempt([&] { document_->execCommand(std::u16string(commands[pick(7)]), false, u"<h3>"); });
      }
      if (document_->body()->last_child() == nullptr || pick(4) == 0)
        attempt([&] { document_->execCommand(u"Undo", false, u""); });
      if (i % 6 == 0) loop_.pump(0);
    }
    ASSERT_TRUE(settle());
    ASSERT_EQ(shown(), expected());
    in_page("document.activeElement && getSelection().removeAllRanges()");
    const std::string with = in_page(account_script);
    const int count = rooms();
    in_page("tvxView.allowRooms(false)");
    EXPECT_TRUE(first_lines(in_page(account_script)) == first_lines(with))
        << "batch " << batch << ", rooms " << count;
    in_page("tvxView.allowRooms(true)");
    ASSERT_EQ(rooms(), count);
  }
  EXPECT_GT(rooms(), 1);
}

/// Styles that come later.
TEST_F(Rooms, GoWhereAStyleForbidsThem) {
  const RoomPage page{"", true, false, u"", {u"<p>#</p>"}};
  show(page, true);
  EXPECT_GT(rooms(), 1);
  const auto agrees = [this] {
    const std::string now = in_page(account_script);
    in_page("tvxView.allowRooms(false)");
    const bool same = in_page(account_script) == now;
    in_page("tvxView.allowRooms(true)");
    return same;
  };
  dom::Element& body = *document_->body();
  dom::set_attribute(body, dom::Name(u"style"), u"column-count: 2");
  ASSERT_TRUE(settle());
  EXPECT_EQ(rooms(), 0);
  EXPECT_TRUE(agrees());
  dom::remove_attribute(body, dom::Name(u"style"));
  ASSERT_TRUE(settle());
  EXPECT_GT(rooms(), 1);
  const dom::Ref<dom::Element> style = element(dom::Tag::Style);
  const auto write_style = [&](std::u16string_view text) {
    dom::set_inner_html(*style, text);
    return settle();
  };
  ASSERT_TRUE(write_style(u"p { position: sticky; top: 0 }"));
  EXPECT_EQ(rooms(), 0);
  EXPECT_TRUE(agrees());
  ASSERT_TRUE(write_style(u"p:nth-child(odd) { display: inline }"));
  EXPECT_GT(rooms(), 1);
  EXPECT_TRUE(agrees());
  ASSERT_TRUE(write_style(u"p { float: left }"));
  EXPECT_TRUE(agrees());
  ASSERT_TRUE(write_style(u"@media (min-width: 700px) { body { display: flex; flex-wrap: wrap } }"));
  EXPECT_EQ(rooms(), 0);
  view_->widget()->resize(600, 1500);
  EXPECT_TRUE(wait_for([this] { return rooms() > 1; }, 3000));
}

/// The caret goes where it goes without rooms, beside tables and rules and what floats as well, from the
/// first line on.
TEST_F(Rooms, KeysMoveTheCaretAsWithoutThem) {
  const std::u16string table =
      u"<table border=1><tr><td>a#</td><td>b#</td></tr><tr><td>c#</td><td>d#</td></tr></table>";
  const std::u16string floating = u"<div style='float:right;width:80px;height:50px'>f#</div>";
  const std::u16string absolute = u"<div style='position:absolute;right:0;width:50px'>p#</div>";
  const std::vector<RoomPage> pages = {
      {"tables first", true, false, u"", {table, u"<p>#</p>"}},
      {"a float first", true, false, u"", {floating, table, u"<p>#</p>", u"<hr>"}},
      {"what is positioned first", true, false, u"", {absolute, table, table, u"<p>#</p>"}},
      {"rules and tables", true, false, u"", {u"<hr>", table, u"<hr>", u"<hr>", u"<p>#</p>"}},
      {"a comment and a blank first", true, false, u"", {u"<!--x--> ", table, table, u"<ul><li>#</ul>"}},
  };
  for (const RoomPage& page : pages) {
    SCOPED_TRACE(page.name);
    std::vector<std::string> ways[2];
    for (const bool with : {false, true}) {
      show(page, with);
      EXPECT_EQ(rooms() > 1, with);
      editing::Selection& selection = document_->editor().selection();
      selection.collapse({document_->body(), 0});
      const auto press = [&](Qt::Key key, int times) {
        for (int i = 0; i < times; ++i) {
          post_key(key);
          ASSERT_TRUE(settle());
          const dom::Boundary at = selection.focus();
          std::string line = std::to_string(dom::index_of(*at.node)) + ":" + std::to_string(at.offset);
          for (dom::Node* node = at.node; node && node != document_->body(); node = node->parent())
            line = std::to_string(dom::index_of(*node)) + "/" + line;
          ways[with].push_back(line);
        }
      };
      press(Qt::Key_Down, 16);
      press(Qt::Key_Up, 18);
      press(Qt::Key_Right, 12);
      press(Qt::Key_Left, 14);
    }
    for (std::size_t i = 0; i < ways[0].size(); ++i)
      EXPECT_EQ(ways[1][i], ways[0][i]) << "key " << i << ", before: " << (i ? ways[0][i - 1] : "");
  }
}

/// A sheet that the engine lets nobody read: the page is a file, the sheet comes from a server.
TEST_F(Rooms, AreMadeWhereASheetComesFromElsewhere) {
  setenv("no_proxy", "*", 1);
  HttpServer server;
  const auto with_sheet = [&](const char* rules, const std::u16string& item) {
    static int number = 0;
    const std::string path = "/" + std::to_string(++number) + ".css";
    server.serve(path, std::string("p { background: rgb(238, 221, 255) } ") + rules, "text/css");
    const RoomPage page{"", true, false, u"", {u"<p>#</p>", item}, {}, 800};
    const std::u16string link = u"<link rel=stylesheet href='" + from_utf8(server.url(path)) + u"'>";
    open(u"<!DOCTYPE html><html><head>" + link + u"</head><body></body>");
    const std::string coloured =
        "String(getComputedStyle(document.body.lastElementChild).backgroundColor === 'rgb(238, 221, 255)')";
    dom::set_inner_html(*document_->body(), page.content() + u"<p>last</p>");
    EXPECT_TRUE(settle());
    EXPECT_TRUE(wait_for([&] { return in_page(coloured) == "true"; }, 5000));
    wait_for([] { return false; }, 300);  // the page hears of the sheet a task later than it shows it
    in_page("window.scrollTo(0, document.documentElement.scrollHeight / 2)");
  };
  const auto pictures_agree = [this] {
    const QImage with = picture();
    in_page("tvxView.allowRooms(false)");
    in_page("window.scrollTo(0, document.documentElement.scrollHeight / 2)");
    return picture() == with;
  };
  const auto agrees = [&] {
    const std::string account = first_lines(in_page(account_script));
    in_page("tvxView.allowRooms(false)");
    const bool same = first_lines(in_page(account_script)) == account;
    in_page("tvxView.allowRooms(true)");
    in_page("window.scrollTo(0, document.documentElement.scrollHeight / 2)");
    return pictures_agree() && same;
  };
  with_sheet("body { margin: 30px; padding: 7px; border: 3px solid } p { margin: 30px 0 }", u"<p>x</p>");
  EXPECT_EQ(in_page("try { document.styleSheets[0].cssRules; 'read' } catch (error) { 'refused' }"),
            "refused");
  EXPECT_GT(rooms(), 5);
  EXPECT_TRUE(agrees());
  with_sheet("body { margin: 30px; border: 3px solid } .i { margin: inherit }", u"<p class=i>x</p>");
  EXPECT_EQ(rooms(), 0) << "children inherit the margins of the body";
  EXPECT_TRUE(agrees());
  with_sheet(".u { position: fixed; top: 90px; left: 50px; background: #fc0 }",
             u"<div><b class=u>fixed #</b></div>");
  EXPECT_GT(rooms(), 5);
  EXPECT_TRUE(pictures_agree()) << "what is out of the flow stays over all else";
}

}  // namespace
}  // namespace tvx::qt
