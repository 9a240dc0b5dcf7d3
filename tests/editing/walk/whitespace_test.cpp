#include "tvx/editing/walk/whitespace.h"

#include <functional>

#include "editing/editing_fixture.h"
#include "tvx/editing/clipboard/paste.h"
#include "tvx/editing/gestures/typing.h"

namespace tvx::editing::test {

/// Nothing that is seen between two words gets lost, whatever is done beside it.
class Whitespace : public EditingFixture {
 protected:
  using Gesture = std::function<void()>;
  void expect_gestures(std::string_view before, const std::vector<Gesture>& gestures,
                       std::string_view after) {
    load(before);
    const std::string first = marked();
    for (const Gesture& gesture : gestures) gesture();
    EXPECT_EQ(marked(), after) << "from " << before;
    expect_laws(first);
  }
  Gesture type(std::u16string text) {
    return [this, text] { type_text(editor, text); };
  }
  Gesture paste(std::u16string html) {
    return [this, html] {
      const dom::UndoStep step(document->journal(), u"Paste");
      paste_html(editor, html);
    };
  }
  Gesture enter = [this] { press_enter(editor); };
  Gesture shift_enter = [this] { press_shift_enter(editor); };
  Gesture backspace = [this] { delete_backward(editor); };
  Gesture del = [this] { delete_forward(editor); };
};

TEST_F(Whitespace, CanonicalSpacesAlternate) {
  EXPECT_EQ(canonical_spaces(0, true, true), u"");
  EXPECT_EQ(canonical_spaces(1, false, false), u" ");
  EXPECT_EQ(canonical_spaces(1, true, false), u"\u00A0");
  EXPECT_EQ(canonical_spaces(2, false, false), u"\u00A0 ");
  EXPECT_EQ(canonical_spaces(2, false, true), u" \u00A0");
  EXPECT_EQ(canonical_spaces(3, false, false), u" \u00A0 ");
  EXPECT_EQ(canonical_spaces(3, true, true), u"\u00A0 \u00A0");
  EXPECT_EQ(canonical_spaces(5, false, false), u" \u00A0 \u00A0 ");
}

TEST_F(Whitespace, ABreakBesideABlankKeepsIt) {
  expect_gestures("<P>Really[] here</P>", {enter}, "<P>Really</P><P>[]&nbsp;here</P>");
  expect_gestures("<P>Really[] here</P>", {enter, type(u"x")}, "<P>Really</P><P>x[] here</P>");
  expect_gestures("<P>Really []here</P>", {enter}, "<P>Really&nbsp;</P><P>[]here</P>");
  expect_gestures("<P>Really <B>[]here</B></P>", {enter}, "<P>Really&nbsp;</P><P><B>[]here</B></P>");
  expect_gestures("<UL><LI>Really[] here</LI></UL>", {enter},
                  "<UL><LI>Really</LI><LI>[]&nbsp;here</LI></UL>");
  expect_gestures("<P>Really[] here</P>", {shift_enter}, "<P>Really<BR>[]&nbsp;here</P>");
  expect_gestures("<P>Really []here</P>", {shift_enter}, "<P>Really&nbsp;<BR>[]here</P>");
  expect_gestures("<P>a []  b</P>", {enter}, "<P>a&nbsp;</P><P>[]b</P>");
  expect_gestures("<P>a [x] b</P>", {enter}, "<P>a&nbsp;</P><P>[]&nbsp;b</P>");
  expect_edit("<P>Really[] here</P>", {"insertHorizontalRule"}, "<P>Really</P><HR>{}<P>&nbsp;here</P>");
}

TEST_F(Whitespace, LinesThatAreJoinedAgainReadAsBefore) {
  expect_gestures("<P>Really[] here</P>", {enter, backspace}, "<P>Really[] here</P>");
  expect_gestures("<P>Really []here</P>", {enter, backspace}, "<P>Really []here</P>");
  expect_gestures("<P>Really[] here</P>", {shift_enter, backspace}, "<P>Really[] here</P>");
  expect_gestures("<H1>Tit[le</H1><P>Some] text</P>", {del}, "<H1>Tit[] text</H1>");
  expect_gestures("<H1>Title[]</H1><P>text</P>", {type(u" "), del}, "<H1>Title []text</H1>");
}

TEST_F(Whitespace, InPreformattedTextABlankIsABlank) {
  expect_gestures("<PRE>a[] b</PRE>", {enter}, "<PRE>a\n[] b</PRE>");
}

TEST_F(Whitespace, AnImageBetweenBlanksTakesNoneAlong) {
  expect_gestures("<P>nothing <IMG>[] after</P>", {backspace, type(u"x")}, "<P>nothing x[] after</P>");
  expect_gestures("<P>nothing []<IMG> after</P>", {del, type(u"x")}, "<P>nothing x[] after</P>");
  expect_gestures("<P>nothing {<INPUT>} after</P>", {del, type(u"x")}, "<P>nothing x[] after</P>");
}

TEST_F(Whitespace, AnImageTakenAsAWholeTakesNoBlankAlong) {
  load("<P>nothing <IMG> after</P>");
  dom::Node* image = dom::child_at(*host.first_child(), 1);
  editor.selection().select_control(static_cast<dom::Element&>(*image));
  const std::string first = marked();
  delete_backward(editor);
  EXPECT_EQ(marked(), "<P>nothing&nbsp;[] after</P>");
  type_text(editor, u"x");
  EXPECT_EQ(marked(), "<P>nothing x[] after</P>");
  expect_laws(first);
}

TEST_F(Whitespace, BlanksOnBothSidesOfAnImageAreTwo) {
  expect_gestures("<P>a <IMG>[] b</P>", {type(u"x")}, "<P>a <IMG>x[] b</P>");
  expect_gestures("<P>a[] <IMG> b</P>", {type(u"x")}, "<P>ax[] <IMG> b</P>");
}

TEST_F(Whitespace, PasteBehindATypedBlankLeavesABlank) {
  expect_gestures("<P>foo[]</P>", {type(u" "), paste(u"bar")}, "<P>foo bar[]</P>");
  expect_gestures("<P>foo[] baz</P>", {type(u" "), paste(u"<B>bar</B>")}, "<P>foo <B>bar[]</B> baz</P>");
  expect_gestures("<P>foo&nbsp;[]baz</P>", {paste(u"<B>bar</B>")}, "<P>foo&nbsp;<B>bar[]</B>baz</P>");
}

TEST_F(Whitespace, PastedBlanksAreSeen) {
  expect_gestures("<P>foo[]</P>", {paste(u" bar ")}, "<P>foo bar&nbsp;[]</P>");
  expect_gestures("<P>foo[]</P>", {paste(u" bar "), type(u"x")}, "<P>foo bar x[]</P>");
  expect_gestures("<P>foo []bar</P>", {paste(u" x ")}, "<P>foo&nbsp; x []bar</P>");
  expect_gestures("<P>foo[] bar</P>", {paste(u"<UL><LI>x</LI></UL>")},
                  "<P>foo</P><UL><LI>x[]</LI></UL><P>&nbsp;bar</P>");
}

}  // namespace tvx::editing::test
