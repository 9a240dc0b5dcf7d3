#include <QKeyEvent>
#include <random>

#include "qt/real_view.h"
#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"

namespace tvx::qt {
namespace {

constexpr std::u16string_view page =
    u"<!DOCTYPE html><html><head><title>t</title></head><body><h1>Title</h1><p>First <b>bold</b> text.</p>"
    u"<ul><li>one</li><li>two</li></ul><table border=1><tr><td>a</td><td>b</td></tr></table>"
    u"<p>Last <i>words</i> <a href=\"javascript:x()\" onclick=y()>link</a></p><o:p>odd</o:p></body></html>";

/// Edits as users and hosts make them.
class Edits {
 public:
  Edits(browser::HTMLDocument& document, unsigned seed) : document_(document), random_(seed) {}

  void step() {
    switch (pick(14)) {
      case 0:
      case 1:
      case 2:
      case 3: type(); break;
      case 4:
      case 5: move(); break;
      case 6: key(u"Backspace", 8); break;
      case 7: key(u"Delete", 46); break;
      case 8: key(u"Enter", 13); break;
      case 9: command(pick(2) ? u"Bold" : u"Italic"); break;
      case 10: command(u"Undo"); break;
      case 11: command(u"Redo"); break;
      case 12: command(pick(2) ? u"InsertUnorderedList" : u"Indent"); break;
      case 13: set_html(); break;
    }
  }

 private:
  std::size_t pick(std::size_t count) { return random_() % count; }
  std::vector<dom::Text*> texts() {
    std::vector<dom::Text*> all;
    dom::Node* body = document_.body();
    for (dom::Node* node = body; node; node = dom::next_in_order(*node, body)) {
      if (auto* text = dom::as<dom::Text>(node)) all.push_back(text);
    }
    return all;
  }
  dom::Boundary place() {
    const auto all = texts();
    if (all.empty()) return {document_.body(), 0};
    dom::Text* text = all[pick(all.size())];
    return {text, pick(text->length() + 1)};
  }
  void move() {
    const dom::Boundary anchor = place();
    document_.editor().selection().set(anchor, pick(3) ? anchor : place());
  }
  void key(std::u16string name, int code, std::u16string text = {}) {
    attempt([&] { document_.key_down({.key = name, .text = text, .key_code = code}); });
  }
  void type() {
    const auto letter = static_cast<char16_t>(u'a' + pick(26));
    const std::u16string text = pick(10) ? std::u16string(1, letter) : u"\U0001F642";
    key(text, 'A', text);
  }
  void command(std::u16string_view name) {
    attempt([&] { document_.execCommand(name, false, u""); });
  }
  void set_html() {
    static constexpr std::u16string_view contents[] = {u"<p>new</p><p>text</p>",
                                                       u"<script>alert(1)</script>plain",
                                                       u"<iframe src=x width=50></iframe>",
                                                       u"<b a\"b=1>x<a\"c>y</b>",
                                                       u"<svg><a xlink:href='#x'><text>s</text></a></svg>",
                                                       u""};
    attempt([&] {
      std::vector<dom::Element*> all;
      for (dom::Element* element : document_.tree().all()) {
        if (dom::is_ancestor(*document_.body(), *element) && element->parent() == document_.body()) {
          all.push_back(element);
        }
      }
      if (all.size() < 4 || pick(12) == 0) {
        dom::set_inner_html(*document_.body(), u"<p>All <b>new</b></p><ul><li>a<li>b</ul><p>x<p>y<p>z");
      } else {
        dom::set_inner_html(*all[pick(all.size())], contents[pick(std::size(contents))]);
      }
    });
  }

  browser::HTMLDocument& document_;
  std::mt19937 random_;
};

TEST_F(RealView, AgreesWithTheDocumentAfterEachSettledBatchOfRandomEdits) {
  open(page);
  Edits edits(*document_, 20260101);
  int done = 0;
  for (int batch = 0; batch < 100; ++batch) {
    for (int i = 0; i < 20; ++i, ++done) {
      edits.step();
      if (i % 7 == 0) loop_.pump(0);  // some batches are several patches
    }
    ASSERT_TRUE(settle());
    ASSERT_EQ(shown(), expected()) << "after " << done << " edits";
  }
  EXPECT_EQ(done, 2000);
}

TEST_F(RealView, AgreesWithALargeDocumentThatIsEditedWhileItLoads) {
  std::u16string html = u"<!DOCTYPE html><body>";
  for (int i = 0; i < 2500; ++i) {
    html += u"<p>Paragraph <b>" + to_text(i) + u"</b> of <i>many</i> with some text in it.</p>";
  }
  open(html, false);
  Edits edits(*document_, 7);
  for (int i = 0; i < 60; ++i) {
    if (i % 2) edits.step();
    loop_.pump(5);
  }
  ASSERT_TRUE(settle(60'000));
  EXPECT_EQ(shown(), expected());
}

/// A long article of which the window shows the start.
std::u16string long_article(int paragraphs) {
  std::u16string html = u"<!DOCTYPE html><body>";
  for (int i = 0; i < paragraphs; ++i)
    html += u"<p>Paragraph <b>" + to_text(i) +
            u"</b> of <i>many</i> with some text in it.</p><table><tr><td>" + to_text(i) +
            u"</td></tr></table>";
  return html + u"<p id=last>The end</p>";
}

TEST_F(RealView, CtrlEndShowsTheEndBeforeTheRestHasCome) {
  open(long_article(6000), false);
  ASSERT_TRUE(wait_for([this] { return document_view_->filled(); }));
  document_->editor().selection().collapse({document_->body()->first_child()->first_child(), 0});
  post_key(Qt::Key_End, {}, Qt::ControlModifier);
  const std::string end_is_in_window =
      "(function () { const last = document.querySelector('#last');"
      "return String(last && last.getBoundingClientRect().bottom <= innerHeight + 20 && scrollY > 100); })()";
  ASSERT_TRUE(wait_for([&] { return in_page(end_is_in_window) == "true"; }));
  EXPECT_LT(std::stoi(in_page("String(document.body.childNodes.length)")), 9000) << "not all is there";
  EXPECT_FALSE(document_view_->settled());
  post_text("xyz");
  ASSERT_TRUE(settle(60'000));
  EXPECT_NE(html().find("The endxyz"), std::string::npos);
  EXPECT_EQ(in_page(end_is_in_window), "true") << "what came in above it has not moved it away";
  EXPECT_EQ(in_page("document.querySelector('#last').textContent"), "The endxyz");
  EXPECT_EQ(shown(), expected());
}

/// Wherever it is in the document: what comes in above it later doesn't move it away.
TEST_F(RealView, WhatIsScrolledToStaysWhereItIsWhileTheRestComes) {
  for (const int number : {700, 1500, 2499}) {
    SCOPED_TRACE(number);
    std::u16string html = u"<!DOCTYPE html><body>";
    for (int i = 0; i < 2500; ++i) {
      html += u"<p id=p" + to_text(i) + u">A <b>paragraph</b> of <i>many</i> with <u>more</u> in <s>it</s> ";
      html += u"and <q>all</q> that.</p>\n";
    }
    open(html, false);
    ASSERT_TRUE(wait_for([this] { return document_view_->filled(); }));
    dom::Element* wanted = nullptr;
    for (dom::Element* element : document_->tree().all())
      if (element->attribute_or_empty(dom::names::id) == u"p" + to_text(number)) wanted = element;
    document_->viewport()->scroll_into_view(*wanted, number < 2400);
    const auto top = [&] {
      return std::stoi(in_page("(function () { const wanted = document.querySelector('#p" +
                               std::to_string(number) +
                               "'); return wanted ? String(Math.round(wanted.getBoundingClientRect().top)) : "
                               "'99999'; })()"));
    };
    ASSERT_TRUE(wait_for([&] { return top() < 600; }));
    const int first = top();
    ASSERT_TRUE(settle(60'000));
    EXPECT_NEAR(top(), first, 2);
    EXPECT_EQ(shown(), expected());
  }
}

TEST_F(RealView, AgreesWhileWhatIsWantedComesOutOfTurn) {
  open(long_article(2000), false);
  Edits edits(*document_, 11);
  std::mt19937 random(5);
  for (int i = 0; i < 80 && !(i > 3 && document_view_->settled()); ++i) {
    if (i % 3 == 0) {
      auto& all = document_->tree().all();
      document_->viewport()->scroll_into_view(*all[random() % all.size()], true);
    } else {
      edits.step();
    }
    loop_.pump(5);
  }
  ASSERT_TRUE(settle(60'000));
  EXPECT_EQ(shown(), expected());
}

}  // namespace
}  // namespace tvx::qt
