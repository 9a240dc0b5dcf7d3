#include "tvx/core/views/selection_highlight.h"

#include <gtest/gtest.h>

#include "tvx/dom/inner_html.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"

namespace tvx::core {
namespace {

const BorderLook dashed{u"Dashed", u"1", u"RED"};

class Highlight : public testing::Test {
 protected:
  void load(std::u16string_view body) {
    document = dom::parse_document(u"<body>" + std::u16string(body));
    document->journal().clear();
  }
  dom::Element* at(std::size_t index) { return document->all()[index]; }
  std::u16string html() { return dom::inner_html(*document->body()); }

  dom::Ref<dom::Document> document;
  SelectionHighlight highlight;
};

TEST_F(Highlight, TheVeryStyleTextComesBack) {
  for (const char16_t* body :
       {u"<P>x</P>", u"<P style=\"\">x</P>", u"<P style=\"border-left: 3px solid blue\">x</P>",
        u"<P style=\"BORDER:2px  dotted;;color:Red\">x</P>",
        u"<P style=\"border: nonsense; color: re d\">x</P>",
        u"<P style=\"border-width: 1px 2px 3px 4px !important\">x</P>"}) {
    load(body);
    const std::u16string before = html();
    highlight.set_element(at(3));
    highlight.draw(dashed);
    EXPECT_NE(html(), before);
    highlight.restore();
    EXPECT_EQ(html(), before);
    highlight.set_element({});
  }
}

TEST_F(Highlight, WhatElseTheStyleGotMeanwhileStays) {
  load(u"<P style=\"border-style: solid\">x</P>");
  highlight.set_element(at(3));
  highlight.draw(dashed);
  dom::style::set_inline_value(*at(3), u"color", u"green");
  highlight.restore();
  EXPECT_EQ(dom::style::inline_value(*at(3), u"color"), u"green");
  EXPECT_EQ(dom::style::inline_value(*at(3), u"border-style"), u"solid");
  EXPECT_EQ(dom::style::inline_value(*at(3), u"border-width"), u"");
}

TEST_F(Highlight, DrawingLeavesNoStepOfUndo) {
  load(u"<P>x</P>");
  highlight.set_element(at(3));
  highlight.draw(dashed);
  EXPECT_FALSE(document->journal().can_undo());
  highlight.restore();
  EXPECT_FALSE(document->journal().can_undo());
}

TEST_F(Highlight, UndoReplaysUnderTheBorder) {
  load(u"<P>x</P>");
  highlight.set_element(at(3));
  highlight.draw(dashed);
  const std::u16string marked = html();
  {
    const dom::UndoStep step(document->journal(), u"Type");
    dom::replace_data(*static_cast<dom::Text*>(at(3)->first_child()), 0, 0, u"more ");
  }
  ASSERT_TRUE(document->journal().undo());
  EXPECT_EQ(html(), marked);
  ASSERT_TRUE(document->journal().redo());
  highlight.restore();
  EXPECT_EQ(html(), u"<P>more x</P>");
}

TEST_F(Highlight, AnElementThatUndoTakesAwayComesBackClean) {
  load(u"<P>x</P>");
  {
    const dom::UndoStep step(document->journal(), u"Insert");
    dom::insert(*document->body(), document->create_element(dom::Tag::Div));
  }
  highlight.set_element(at(4));
  highlight.draw(dashed);
  ASSERT_TRUE(document->journal().undo());
  EXPECT_EQ(html(), u"<P>x</P>");
  ASSERT_TRUE(document->journal().redo());
  highlight.restore();
  EXPECT_EQ(html(), u"<P>x</P><DIV></DIV>");
}

// A step that changes the selection, as inserting does, has the border drawn on another element before it
// ends.
TEST_F(Highlight, AnElementThatBecomesCurrentWithinAStepComesBackClean) {
  load(u"<P>x</P><P>y</P>");
  highlight.set_element(at(3));
  highlight.draw(dashed);
  {
    const dom::UndoStep step(document->journal(), u"Insert");
    highlight.restore();
    highlight.set_element(at(4));
    highlight.draw(dashed);
    EXPECT_EQ(html(), u"<P>x</P><P>y</P>") << "while a step is open there is no border";
  }
  EXPECT_NE(html(), u"<P>x</P><P>y</P>");
  EXPECT_TRUE(highlight.is_drawn());
  highlight.restore();
  EXPECT_EQ(html(), u"<P>x</P><P>y</P>");
}

TEST_F(Highlight, TheSameElementMadeCurrentAgainKeepsWhatComesBack) {
  load(u"<P style=\"color: red\">x</P>");
  highlight.set_element(at(3));
  highlight.draw(dashed);
  highlight.set_element(at(3));
  EXPECT_TRUE(highlight.is_drawn());
  highlight.restore();
  EXPECT_EQ(html(), u"<P style=\"color: red\">x</P>");
}

TEST_F(Highlight, ABorderOfAStyleSheetReadsAsEmpty) {
  document = dom::parse_document(u"<style>p { border: 5px solid green }</style><p>x");
  highlight.set_element(document->body()->first_child()->is_element()
                            ? static_cast<dom::Element*>(document->body()->first_child())
                            : nullptr);
  EXPECT_EQ(highlight.saved(), BorderLook());
  highlight.draw(dashed);
  highlight.restore();
  EXPECT_EQ(html(), u"<P>x</P>");
}

TEST_F(Highlight, WithNoElementNothingHappens) {
  highlight.draw(dashed);
  highlight.restore();
  EXPECT_FALSE(highlight.is_drawn());
  EXPECT_EQ(highlight.element(), nullptr);
}

}  // namespace
}  // namespace tvx::core
