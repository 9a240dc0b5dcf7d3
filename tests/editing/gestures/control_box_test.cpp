#include "tvx/editing/gestures/control_box.h"
#include "tvx/editing/facts/control.h"

#include "editing/editing_fixture.h"
#include "tvx/editing/clipboard/move_content.h"

namespace tvx::editing::test {
namespace {

/// Sizes and places of elements that are taken as wholes, and content on its way to another place.
class ControlBoxes : public EditingFixture {
 protected:
  dom::Element& first(dom::Tag tag) {
    for (dom::Node* node = &host; node; node = dom::next_in_order(*node, &host))
      if (node->is(tag)) return static_cast<dom::Element&>(*node);
    throw std::logic_error("no such element");
  }
  void expect_size(std::string_view before, dom::Tag tag, const ControlBox& box, std::string_view after) {
    load(before);
    EXPECT_TRUE(set_control_box(editor, first(tag), box));
    EXPECT_EQ(html(), after);
    EXPECT_EQ(document->journal().depth(), 1u);
    document->journal().undo();
    EXPECT_EQ(marked(), before);
  }
  void expect_move(std::string_view before, dom::Boundary to, KeepSource keep, std::string_view after) {
    const std::string first_text = marked();
    EXPECT_EQ(first_text, before);
    EXPECT_TRUE(move_selection(editor, to, keep));
    EXPECT_EQ(marked(), after);
    EXPECT_EQ(document->journal().depth(), 1u);
    document->journal().undo();
    EXPECT_EQ(marked(), before);
    document->journal().redo();
    EXPECT_EQ(marked(), after);
  }
};

TEST_F(ControlBoxes, AnImagesSizeStandsInItsAttributes) {
  expect_size("<P>{}a<IMG></P>", dom::Tag::Img, {.width = 40, .height = 30},
              "<P>a<IMG width=\"40\" height=\"30\"></P>");
}

TEST_F(ControlBoxes, ASizeInTheStyleStaysThere) {
  expect_size("<P>{}a<IMG style=\"width: 10px\" height=\"5\"></P>", dom::Tag::Img,
              {.width = 40, .height = 30}, "<P>a<IMG style=\"width: 40px\" height=\"30\"></P>");
}

TEST_F(ControlBoxes, AFieldsSizeStandsInItsStyle) {
  expect_size("<P>{}a<INPUT></P>", dom::Tag::Input, {.width = 40, .height = 30},
              "<P>a<INPUT style=\"width: 40px; height: 30px\"></P>");
}

TEST_F(ControlBoxes, ARulesHeightIsItsSize) {
  expect_size("<P>{}a</P><HR>", dom::Tag::Hr, {.width = 40, .height = 3},
              "<P>a</P><HR width=\"40\" size=\"3\">");
}

TEST_F(ControlBoxes, OneMeasureAlone) {
  expect_size("<P>{}a</P><TABLE width=\"10\"><TBODY><TR><TD>x</TD></TR></TBODY></TABLE>", dom::Tag::Table,
              {.width = 40}, "<P>a</P><TABLE width=\"40\"><TBODY><TR><TD>x</TD></TR></TBODY></TABLE>");
}

TEST_F(ControlBoxes, NothingIsSmallerThanAPixel) {
  expect_size("<P>{}a<IMG></P>", dom::Tag::Img, {.width = -40}, "<P>a<IMG width=\"1\"></P>");
}

TEST_F(ControlBoxes, TheSizeThatItHasIsNoStep) {
  load("<P>{}<IMG width=\"40\"></P>");
  set_control_box(editor, first(dom::Tag::Img), {.width = 40});
  EXPECT_FALSE(document->journal().can_undo());
}

TEST_F(ControlBoxes, APositionedElementMovesOnlyInItsMode) {
  load("<P style=\"position: absolute; right: 5px\">{}a</P>");
  dom::Element& box = first(dom::Tag::P);
  EXPECT_FALSE(move_positioned(editor, box, 1, 2));
  editor.set_two_d_position(true);
  EXPECT_TRUE(move_positioned(editor, box, 1, 2));
  EXPECT_EQ(html(), "<P style=\"position: absolute; left: 1px; top: 2px\">a</P>");
  EXPECT_EQ(document->journal().depth(), 1u);
}

TEST_F(ControlBoxes, WhatIsInTheFlowDoesNotMove) {
  load("<P>{}<IMG></P>");
  editor.set_two_d_position(true);
  EXPECT_FALSE(move_positioned(editor, first(dom::Tag::Img), 1, 2));
}

TEST_F(ControlBoxes, WhatAClickTakesAsAWhole) {
  load("<P>{}a<IMG></P><TABLE><TBODY><TR><TD><SELECT><OPTION>x</OPTION></SELECT></TD></TR></TBODY></TABLE>");
  EXPECT_EQ(control_at(first(dom::Tag::P)), nullptr);
  EXPECT_EQ(control_at(first(dom::Tag::Td)), nullptr);
  EXPECT_EQ(control_at(first(dom::Tag::Img)), &first(dom::Tag::Img));
  EXPECT_EQ(control_at(first(dom::Tag::Table)), &first(dom::Tag::Table));
  EXPECT_EQ(control_at(first(dom::Tag::Option)), &first(dom::Tag::Select));
}

TEST_F(ControlBoxes, TextMovesWithItsLook) {
  load("<P>a<B>b[cd]e</B></P><P>x</P>");
  dom::Node* target = host.last_child()->first_child();
  expect_move("<P>a<B>b[cd]e</B></P><P>x</P>", {target, 1}, KeepSource::No,
              "<P>a<B>be</B></P><P>x[<B>cd]</B></P>");
}

TEST_F(ControlBoxes, ACopyLeavesTheSource) {
  load("<P>a[bc]d</P><P>x</P>");
  expect_move("<P>a[bc]d</P><P>x</P>", {host.last_child()->first_child(), 0}, KeepSource::Yes,
              "<P>abcd</P><P>{bc]x</P>");
}

TEST_F(ControlBoxes, ItemsMoveAsAList) {
  load("<UL><LI>[one</LI><LI>two]</LI><LI>three</LI></UL><P>x</P>");
  EXPECT_TRUE(move_selection(editor, {host.last_child()->first_child(), 1}, KeepSource::Yes));
  EXPECT_EQ(html(),
            "<UL><LI>one</LI><LI>two</LI><LI>three</LI></UL><P>x</P><UL><LI>one</LI><LI>two</LI></UL>");
}

TEST_F(ControlBoxes, LinesMoveAsLines) {
  const auto text = [&](int line) { return dom::child_at(host, line)->first_child(); };
  load("<P>one</P><P>[two</P><P>]three</P>");
  expect_move("<P>one</P><P>[two</P><P>]three</P>", {text(0), 0}, KeepSource::No,
              "{<P>two</P><P>]one</P><P>three</P>");
  load("<P>o</P><H2>[two</H2><P>three]</P><P>four</P>");
  expect_move("<P>o</P><H2>[two</H2><P>three]</P><P>four</P>", {text(0), 1}, KeepSource::Yes,
              "<P>o[two</P><P>three]</P><H2>two</H2><P>three</P><P>four</P>");
  load("<UL><LI>one</LI><LI>[two</LI><LI>]three</LI></UL>");
  EXPECT_TRUE(move_selection(editor, {text(0)->first_child(), 0}, KeepSource::No));
  EXPECT_EQ(html(), "<UL><LI>two</LI><LI>one</LI><LI>three</LI></UL>");
}

TEST_F(ControlBoxes, AWordMovesWithoutJoiningItsNeighbours) {
  load("<P>one two[ three]</P><P>x</P>");
  expect_move("<P>one two[ three]</P><P>x</P>", {host.last_child()->first_child(), 1}, KeepSource::No,
              "<P>one two</P><P>x[ three]</P>");
  load("<P>one [two ]three</P>");
  expect_move("<P>one [two ]three</P>", {host.first_child()->first_child(), 0}, KeepSource::No,
              "<P>{two ]one three</P>");
}

TEST_F(ControlBoxes, WithinItselfNothingMoves) {
  load("<P>a[bcd]e</P>");
  const std::string before = marked();
  for (Offset offset = 1; offset <= 4; ++offset)
    EXPECT_FALSE(move_selection(editor, {host.first_child()->first_child(), offset}, KeepSource::No));
  EXPECT_EQ(marked(), before);
  EXPECT_FALSE(document->journal().can_undo());
}

TEST_F(ControlBoxes, APlaceThatCannotBeEditedTakesNothing) {
  load("<P>a[bcd]e</P>");
  dom::Node* outside = host.next_sibling()->first_child();
  EXPECT_FALSE(move_selection(editor, {outside, 1}, KeepSource::No));
  EXPECT_EQ(html(), "<P>abcde</P>");
}

}  // namespace
}  // namespace tvx::editing::test
