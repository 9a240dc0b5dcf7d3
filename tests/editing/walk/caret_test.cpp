#include "tvx/editing/walk/caret.h"

#include "editing/editing_fixture.h"

namespace tvx::editing::test {

class Caret : public EditingFixture {
 protected:
  void expect_move(std::string_view before, Direction direction, Granularity granularity,
                   std::string_view after) {
    load(before);
    move_caret(editor, direction, granularity, Extend::No);
    EXPECT_EQ(marked(), after) << "from " << before;
  }
  void expect_right(std::string_view before, std::string_view after) {
    expect_move(before, Direction::Forward, Granularity::Character, after);
  }
  void expect_left(std::string_view before, std::string_view after) {
    expect_move(before, Direction::Backward, Granularity::Character, after);
  }
};

TEST_F(Caret, StepsByCharactersAsSeen) {
  expect_right("<p>f[]oo</p>", "<P>fo[]o</P>");
  expect_left("<p>f[]oo</p>", "<P>[]foo</P>");
  expect_right("<p>[]\xF0\x9F\x98\x80x</p>", "<P>\xF0\x9F\x98\x80[]x</P>");
  expect_left("<p>e\xCC\x81[]x</p>", "<P>[]e\xCC\x81x</P>");
}

TEST_F(Caret, StepsThroughInlineElements) {
  expect_right("<p>a[]<b>bc</b></p>", "<P>a<B>b[]c</B></P>");
  expect_left("<p><b>ab</b>[]c</p>", "<P><B>a[]b</B>c</P>");
}

TEST_F(Caret, ABlocksEdgeIsOneStep) {
  expect_right("<p>foo[]</p><p>bar</p>", "<P>foo</P><P>[]bar</P>");
  expect_left("<p>foo</p><p>[]bar</p>", "<P>foo[]</P><P>bar</P>");
  expect_right("<ul><li>a[]</li><li>b<ul><li>c</li></ul></li></ul>",
               "<UL><LI>a</LI><LI>[]b<UL><LI>c</LI></UL></LI></UL>");
  expect_right("<p>foo[]</p> \n <p> bar</p>", "<P>foo</P> \n <P> []bar</P>");
}

TEST_F(Caret, EmptyBlocksAndLinesAreVisited) {
  expect_right("<p>a[]</p><p><br></p><p>b</p>", "<P>a</P><P>{}<BR></P><P>b</P>");
  expect_left("<p>a</p><p><br></p><p>[]b</p>", "<P>a</P><P>{}<BR></P><P>b</P>");
  expect_right("<p>a[]</p><p></p><p>b</p>", "<P>a</P><P>{}</P><P>b</P>");
  expect_right("<p>a[]<br>b</p>", "<P>a<BR>[]b</P>");
  expect_left("<p>a<br>[]b</p>", "<P>a[]<BR>b</P>");
  expect_right("<p>a[]<br><br>b</p>", "<P>a<BR>{}<BR>b</P>");
  expect_left("<p>a<br><br>[]b</p>", "<P>a<BR>{}<BR>b</P>");
}

TEST_F(Caret, TheWhiteSpaceBeforeABlockIsNoPlaceForIt) {
  load("<ul>\n<li>a</li>\n</ul><ol><li>\n<h2>b</h2></li></ol>");
  const auto comes_to = [](dom::Node* node) {
    const dom::Boundary place = normalized_caret_place({node, 0});
    const auto* text = dom::as<dom::Text>(place.node);
    return text ? to_utf8(text->data()) : std::string();
  };
  EXPECT_EQ(comes_to(host.first_child()), "a");
  EXPECT_EQ(comes_to(host.last_child()->first_child()), "b");
}

TEST_F(Caret, WhatNobodySeesMakesNoStep) {
  expect_right("<p>a[]<!-- note -->b</p>", "<P>a<!-- note -->b[]</P>");
  expect_right("<p>a[]<span style=\"display: none\">hidden</span>b</p>",
               "<P>a<SPAN style=\"display: none\">hidden</SPAN>b[]</P>");
  expect_right("<p>a[]   b</p>", "<P>a   []b</P>");
}

TEST_F(Caret, ImagesAndWhatIsNotEditableArePassedWhole) {
  expect_right("<p>a[]<img>b</p>", "<P>a<IMG>[]b</P>");
  expect_left("<p>a<img>[]b</p>", "<P>a[]<IMG>b</P>");
  expect_right("<p>a[]<span contenteditable=\"false\">x</span>b</p>",
               "<P>a<SPAN contenteditable=\"false\">x</SPAN>[]b</P>");
}

TEST_F(Caret, CellsFollowEachOther) {
  expect_right("<table><tbody><tr><td>a[]</td><td>b</td></tr></tbody></table>",
               "<TABLE><TBODY><TR><TD>a</TD><TD>[]b</TD></TR></TBODY></TABLE>");
  expect_right("<table><tbody><tr><td>a[]</td><td></td></tr></tbody></table>",
               "<TABLE><TBODY><TR><TD>a</TD><TD>{}</TD></TR></TBODY></TABLE>");
}

TEST_F(Caret, MovesByWords) {
  const auto word = Granularity::Word;
  expect_move("<p>[]one two</p>", Direction::Forward, word, "<P>one[] two</P>");
  expect_move("<p>one[] two</p>", Direction::Forward, word, "<P>one two[]</P>");
  expect_move("<p>one two[]</p>", Direction::Backward, word, "<P>one []two</P>");
  expect_move("<p>[]on<b>e</b> two</p>", Direction::Forward, word, "<P>on<B>e[]</B> two</P>");
  expect_move("<p>one[]</p><p>two</p>", Direction::Forward, word, "<P>one</P><P>[]two</P>");
}

TEST_F(Caret, GoesToTheEndsOfTheHostAndNoFurther) {
  expect_move("<p>o[]ne</p><p>two</p>", Direction::Forward, Granularity::Document, "<P>one</P><P>two[]</P>");
  expect_move("<p>one</p><p>t[]wo</p>", Direction::Backward, Granularity::Document, "<P>[]one</P><P>two</P>");
  load("<p>foo[]</p>");
  EXPECT_FALSE(move_caret(editor, Direction::Forward, Granularity::Character, Extend::No));
  EXPECT_EQ(marked(), "<P>foo[]</P>");
}

TEST_F(Caret, ASelectionStretchesAndCollapses) {
  load("<p>f[]oo</p>");
  move_caret(editor, Direction::Forward, Granularity::Character, Extend::Yes);
  EXPECT_EQ(marked(), "<P>f[o]o</P>");
  move_caret(editor, Direction::Backward, Granularity::Character, Extend::No);
  EXPECT_EQ(marked(), "<P>f[]oo</P>");
}

// Walking through a document and back visits the same number of places.
TEST_F(Caret, TheWayBackIsAsLongAsTheWayThere) {
  load(
      "{}<h1>Title</h1> \n<p>some <b>bold</b> text<br>second<br><br>line</p><ul><li>a</li><li></li></ul>"
      "<table><tbody><tr><td>1</td><td><br></td></tr></tbody></table><p>last</p>");
  dom::Boundary place = *next_caret_place({&host, 0}, Direction::Backward, Granularity::Document);
  int there = 0, back = 0;
  while (const auto next = next_caret_place(place, Direction::Forward, Granularity::Character)) {
    place = *next;
    ASSERT_LT(++there, 1000);
  }
  while (const auto next = next_caret_place(place, Direction::Backward, Granularity::Character)) {
    place = *next;
    ASSERT_LT(++back, 1000);
  }
  EXPECT_EQ(there, back);
  EXPECT_GT(there, 40);
}

}  // namespace tvx::editing::test
