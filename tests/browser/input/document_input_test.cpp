#include "tvx/browser/input/document_input.h"

#include <gtest/gtest.h>

#include "browser/input/fake_display.h"
#include "tvx/headless/virtual_time_loop.h"

namespace tvx::browser {
namespace {

using dom::Boundary;

/// Input alone: nothing is shown, and the page's answers are the test's.
class DocumentInputTest : public testing::Test {
 protected:
  DocumentInputTest() {
    input_.show(display_.document());
    display_.selection().collapse({&display_.text(), 1});
  }
  void receive(ViewMessage message) {
    message.seen = display_.patch();
    input_.receive(message);
    loop_.settle();
  }
  void key(std::u16string name, std::u16string text = {}) {
    receive({.seen = {}, .what = ViewKey{{.key = std::move(name), .text = std::move(text), .key_code = 1}}});
  }

  FakeDisplay display_{u"<p>one</p><p>other</p>"};
  headless::VirtualTimeLoop loop_;
  DocumentInput input_{display_, loop_};
};

TEST_F(DocumentInputTest, AKeyTypesAndScrollsIntoSight) {
  key(u"x", u"x");
  EXPECT_EQ(display_.html(), "<P>oxne</P><P>other</P>");
  EXPECT_TRUE(display_.reveals);
  EXPECT_TRUE(input_.idle());
}

TEST_F(DocumentInputTest, AMoveByLinesIsAskedOfThePageAsTheTreeIsNow) {
  key(u"ArrowDown");
  ASSERT_EQ(display_.asked.size(), 1u);
  EXPECT_EQ(display_.asked[0].move, ViewMove::LineDown);
  EXPECT_EQ(display_.asked[0].from, (ViewPlace{display_.text().id(), 1}));
  EXPECT_EQ(display_.flushes, 1);
  EXPECT_FALSE(input_.idle());
  receive(
      {.seen = {}, .what = ViewAnswer{display_.asked[0].id, ViewPlace{display_.text(1).id(), 2}, {}, {}}});
  EXPECT_EQ(display_.selection().focus(), (Boundary{&display_.text(1), 2}));
  EXPECT_TRUE(input_.idle());
}

TEST_F(DocumentInputTest, WhatMayNotBeEditedIsPassedByLines) {
  const auto answer = [&](std::size_t question, ViewPlace place) {
    ASSERT_EQ(display_.asked.size(), question + 1);
    receive({.seen = {}, .what = ViewAnswer{display_.asked[question].id, place, {}, {}}});
  };
  const dom::Ref<dom::Element> page(display_.document()->tree().body());
  dom::Element& island = static_cast<dom::Element&>(*page->last_child());
  dom::set_attribute(island, dom::names::contenteditable, u"false");
  const dom::Ref<dom::Node> line(page->first_child());
  key(u"ArrowDown");
  answer(0, {display_.text(1).id(), 2});
  EXPECT_EQ(display_.asked[1].from, (ViewPlace{page->id(), 2})) << "asked again from past it";
  EXPECT_EQ(display_.asked[1].move, ViewMove::LineDown);
  answer(1, {page->id(), 2});
  EXPECT_EQ(display_.selection().focus(), (Boundary{page.get(), 2})) << "there is no further line";
  EXPECT_TRUE(input_.idle());

  dom::insert(*page, dom::remove(*line));
  display_.selection().collapse({page.get(), 0});
  key(u"ArrowDown");
  answer(2, {display_.text(0).id(), 0});
  answer(3, {line->first_child()->id(), 1});
  EXPECT_EQ(display_.selection().focus(), (Boundary{line->first_child(), 1}));
}

TEST_F(DocumentInputTest, KeysWaitForTheAnswerBeforeThem) {
  key(u"ArrowDown");
  key(u"x", u"x");
  EXPECT_EQ(display_.html(), "<P>one</P><P>other</P>");
  receive(
      {.seen = {}, .what = ViewAnswer{display_.asked[0].id, ViewPlace{display_.text(1).id(), 2}, {}, {}}});
  EXPECT_EQ(display_.html(), "<P>one</P><P>otxher</P>");
}

TEST_F(DocumentInputTest, APageThatIsNotThereIsNotAsked) {
  display_.is_answering = false;
  key(u"ArrowDown");
  EXPECT_TRUE(display_.asked.empty());
  EXPECT_TRUE(input_.idle());
}

TEST_F(DocumentInputTest, WhatIsDrawnByTheMouseIsTheSelection) {
  const ViewPlace anchor{display_.text().id(), 0}, focus{display_.text().id(), 2};
  receive({.seen = {}, .what = ViewSelect{anchor, focus, {}}});
  EXPECT_EQ(display_.selection().focus(), (Boundary{&display_.text(), 2}));
  ASSERT_EQ(display_.drawn.size(), 1u);
  EXPECT_EQ(display_.drawn[0].first, anchor);
  EXPECT_FALSE(display_.reveals);
}

TEST_F(DocumentInputTest, ADropGoesWhereThePageSays) {
  ViewDrop drop;
  drop.x = 4;
  drop.data.text = u"new";
  receive({.seen = {}, .what = drop});
  ASSERT_EQ(display_.asked.size(), 1u);
  EXPECT_EQ(display_.asked[0].type, ViewQuestion::Type::Hit);
  EXPECT_EQ(display_.asked[0].x, 4);
  receive(
      {.seen = {}, .what = ViewAnswer{display_.asked[0].id, ViewPlace{display_.text(1).id(), 0}, {}, {}}});
  EXPECT_EQ(display_.html(), "<P>one</P><P>newother</P>");
}

TEST_F(DocumentInputTest, NothingIsDroppedWhereNothingMayBeEdited) {
  display_.is_editable = false;
  ViewDrop drop;
  drop.data.text = u"new";
  receive({.seen = {}, .what = drop});
  EXPECT_TRUE(display_.asked.empty());
  EXPECT_EQ(display_.html(), "<P>one</P><P>other</P>");
}

TEST_F(DocumentInputTest, ComposedTextIsNoted) {
  receive({.seen = {}, .what = ViewText{.text = {}, .composing = u"ni", .cursor = 2}});
  EXPECT_TRUE(display_.composes);
  EXPECT_EQ(display_.html(), "<P>onine</P><P>other</P>");
  receive({.seen = {}, .what = ViewText{.text = u"\u4F60"}});
  EXPECT_FALSE(display_.composes);
  EXPECT_EQ(display_.html(), "<P>o\u4F60ne</P><P>other</P>");
}

TEST_F(DocumentInputTest, AnotherDocumentGetsNothingOfWhatWaited) {
  key(u"ArrowDown");
  key(u"x", u"x");
  input_.show(display_.document());
  EXPECT_TRUE(input_.idle());
  loop_.pump(InputQueue::patience + 10);
  EXPECT_EQ(display_.html(), "<P>one</P><P>other</P>");
}

}  // namespace
}  // namespace tvx::browser
