#include "tvx/editing/ranges/markup_pointer.h"

#include <algorithm>

#include "editing/editing_fixture.h"
#include "tvx/base/error.h"
#include "tvx/dom/inner_html.h"
#include "tvx/editing/ranges/control_range.h"

namespace tvx::editing::test {

class MarkupPointers : public EditingFixture {
 protected:
  void body(std::string_view html) { dom::set_inner_html(*document->body(), from_utf8(html)); }
  dom::Element& body() { return *document->body(); }

  /// What stands between the stops of a walk through the body, with "|" for each; the walk ends in a failure.
  std::string units(MoveUnitAction action) {
    MarkupPointer pointer(*document), before(*document);
    pointer.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
    std::string result;
    for (int steps = 0; steps < 100; ++steps) {
      before.MoveToPointer(pointer);
      if (!attempt([&] { pointer.MoveUnit(action); })) return result;
      TextRange range = create_body_range(editor);
      MoveRangeToPointers(before, pointer, range);
      result += to_utf8(range.text()) + "|";
    }
    return result + "...";
  }
  std::string characters(std::string_view html) {
    body(html);
    return units(MoveUnitAction::NextCharacter);
  }
  /// All words as a walk by begins and ends finds them.
  std::string words(std::string_view html) {
    body(html);
    MarkupPointer start(*document), end(*document);
    start.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
    end.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
    std::string result;
    while (attempt([&] {
      start.MoveUnit(MoveUnitAction::NextWordBegin);
      end.MoveUnit(MoveUnitAction::NextWordEnd);
    })) {
      TextRange range = create_body_range(editor);
      MoveRangeToPointers(start, end, range);
      result += to_utf8(range.text()) + "|";
    }
    return result;
  }
  int backward_steps(MoveUnitAction action) {
    MarkupPointer pointer(*document);
    pointer.MoveAdjacentToElement(body(), ElementAdjacency::BeforeEnd);
    int steps = 0;
    while (attempt([&] { pointer.MoveUnit(action); })) ++steps;
    return steps;
  }
};

TEST_F(MarkupPointers, ACharacterIsWhatAUserSeesAsOne) {
  EXPECT_EQ(characters("abc"), "a|b|c|");
  EXPECT_EQ(characters("<P>a<B>b</B>c</P>"), "a|b|c|") << "inline elements are no step";
  EXPECT_EQ(characters("e\xCC\x81x"), "e\xCC\x81|x|") << "a combining mark";
  EXPECT_EQ(characters("\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x92\xBBx"),
            "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x92\xBB|x|")
      << "joined emoji";
  EXPECT_EQ(characters("a \n b"), "a| |b|") << "white space that shows as one";
  EXPECT_EQ(characters("a<B> </B> b"), "a| |b|");
}

TEST_F(MarkupPointers, TheWayToTheNextLineIsOneStep) {
  EXPECT_EQ(characters("<P>ab</P>\n<P>cd</P>"), "a|b||c|d|");
  EXPECT_EQ(characters("a<BR>b"), "a|\n|b|");
  EXPECT_EQ(characters("<P>a<BR></P><P>b</P>"), "a|\n|b|") << "a break without effect is no line";
  EXPECT_EQ(characters("<P>a</P><P></P><P>b</P>"), "a|||b|") << "an empty line is a place";
  EXPECT_EQ(characters("<P>a</P><P><BR></P><P>b</P>"), "a||\n|b|");
  EXPECT_EQ(characters("<P>a<BR><BR>b</P>"), "a|\n|\n|b|");
  EXPECT_EQ(characters("<TABLE><TR><TD>a<TD></TD><TD>b</TABLE>"), "a|||b|") << "cells are blocks";
  EXPECT_EQ(characters("a<IMG>b"), "a||b|") << "an image is a character";
  EXPECT_EQ(characters(""), "");
}

TEST_F(MarkupPointers, TheWayBackHasAsManySteps) {
  for (const char* html :
       {"abc", "<P>ab</P>\n<P>cd</P>", "a<BR>b", "<P>a<BR></P><P>b</P>", "<P>a</P><P></P><P>b</P>",
        "<P>a</P><P><BR></P><P>b</P>", "<P>a<BR><BR>b</P>", "a<B> </B> b", "a<IMG>b",
        "<TABLE><TR><TD>a<TD></TD><TD>b</TABLE>", "<UL><LI>a<LI><B>b</B></UL>"}) {
    const std::string forward = characters(html);
    EXPECT_EQ(backward_steps(MoveUnitAction::PreviousCharacter),
              std::count(forward.begin(), forward.end(), '|'))
        << html;
  }
}

TEST_F(MarkupPointers, BehindTheEndIsAFailure) {
  body("<P>a</P>");
  MarkupPointer pointer(*document);
  EXPECT_THROW(pointer.MoveUnit(MoveUnitAction::NextCharacter), RuntimeError) << "placed nowhere";
  pointer.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
  pointer.MoveUnit(MoveUnitAction::NextCharacter);
  const dom::Boundary last = pointer.place();
  EXPECT_THROW(pointer.MoveUnit(MoveUnitAction::NextCharacter), RuntimeError);
  EXPECT_EQ(pointer.place(), last);
}

TEST_F(MarkupPointers, WordsOfAWalk) {
  EXPECT_EQ(words("<P>one two</P><P>three</P>"), "one|two|three|");
  EXPECT_EQ(words("one two"), "one|two|") << "text right in the body";
  EXPECT_EQ(words("<P>  Don't stop, \"well-known\" (3.14) 42nd!</P>"), "Don't|stop|well|known|3.14|42nd|");
  EXPECT_EQ(
      words("<P>d\xC3\xA9j\xC3\xA0 \xD0\xB2\xD0\xB8\xD0\xB4\xD0\xB5\xD0\xBB, \xCE\xB1\xCE\xB2\xCE\xB3.</P>"),
      "d\xC3\xA9j\xC3\xA0|\xD0\xB2\xD0\xB8\xD0\xB4\xD0\xB5\xD0\xBB|\xCE\xB1\xCE\xB2\xCE\xB3|");
  EXPECT_EQ(words("<P>w<B>or</B>d x<BR>y</P>z"), "word|x|y|z|");
  EXPECT_EQ(words("<P>a</P><P>...</P><P></P><P>b</P>"), "a|b|");
  EXPECT_EQ(words("<P>on<!--c-->e</P><STYLE>no</STYLE><P STYLE='display:none'>no</P>two"), "one|two|");
  EXPECT_EQ(words(""), "");
}

TEST_F(MarkupPointers, LongParagraphsWithoutAPlaceToCut) {
  std::string html = "<P>";
  for (int i = 0; i < 3000; ++i)
    html.append("word").append(std::to_string(i)).append(i % 7 ? " " : "<I>,</I> ");
  body(html);
  MarkupPointer pointer(*document);
  pointer.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
  int count = 0;
  while (attempt([&] { pointer.MoveUnit(MoveUnitAction::NextWordEnd); })) ++count;
  EXPECT_EQ(count, 3000);
  EXPECT_EQ(backward_steps(MoveUnitAction::PreviousWordBegin), 3000);
  EXPECT_EQ(backward_steps(MoveUnitAction::PreviousWordEnd), 3000);
}

TEST_F(MarkupPointers, GravityTellsTheSideOfAnInsertion) {
  body("<P>ab</P>");
  dom::Text& text = *dom::as<dom::Text>(body().first_child()->first_child());
  MarkupPointer left(*document), right(*document);
  left.MoveTo({&text, 1});
  right.MoveTo({&text, 1});
  right.SetGravity(PointerGravity::Right);
  dom::replace_data(text, 1, 0, u"xy");
  EXPECT_EQ(left.place().offset, 1u);
  EXPECT_EQ(right.place().offset, 3u);
  EXPECT_TRUE(left.IsLeftOf(right));
  EXPECT_TRUE(right.IsRightOf(left));
  left.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
  right.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
  EXPECT_TRUE(left.IsEqualTo(right));
  dom::insert(body(), document->create_element(dom::Tag::Hr), body().first_child());
  EXPECT_EQ(left.place().offset, 0u);
  EXPECT_EQ(right.place().offset, 1u);
}

TEST_F(MarkupPointers, ContextsNameWhatIsBeside) {
  using Kind = PointerContext::Kind;
  body("<P>ab<BR></P>");
  MarkupPointer pointer(*document);
  pointer.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
  EXPECT_EQ(pointer.LeftContext().kind, Kind::ExitScope);
  EXPECT_EQ(pointer.CurrentScope(), &body());
  EXPECT_EQ(pointer.Right().kind, Kind::EnterScope);
  EXPECT_EQ(pointer.CurrentScope(), body().first_child());
  const PointerContext text = pointer.Right();
  EXPECT_EQ(text.kind, Kind::Text);
  EXPECT_EQ(text.length, 2u);
  EXPECT_EQ(pointer.Right().kind, Kind::NoScope);
  EXPECT_EQ(pointer.RightContext().kind, Kind::ExitScope);
  EXPECT_EQ(pointer.Left().kind, Kind::NoScope);
  EXPECT_EQ(pointer.LeftContext().kind, Kind::Text);
}

TEST_F(MarkupPointers, RangesLieBetweenPointersWhicheverComesFirst) {
  body("<P>abc</P>");
  MarkupPointer a(*document), b(*document);
  a.MoveAdjacentToElement(body(), ElementAdjacency::BeforeEnd);
  b.MoveToContainer(*document, true);
  b.MoveAdjacentToElement(body(), ElementAdjacency::AfterBegin);
  b.MoveUnit(MoveUnitAction::NextCharacter);
  TextRange range = create_body_range(editor);
  MoveRangeToPointers(a, b, range);
  EXPECT_EQ(range.text(), u"bc");
}

}  // namespace tvx::editing::test
