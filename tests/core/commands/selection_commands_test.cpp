#include "core/control_fixture.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;

constexpr auto replace = ed_InsertType::ed_InsertReplaceSelection;
constexpr auto before = ed_InsertType::ed_InsertBeforeSelection;
constexpr auto after = ed_InsertType::ed_InsertAfterSelection;

TEST_F(Control, InsertingNothingMarksTheDocumentAllTheSame) {
  start_with(u"<P>x</P>");
  control->InsertAtCursor(u"", replace);
  EXPECT_EQ(body(), u"<P>x</P>");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML"));
}

TEST_F(Control, InsertingBeforeBehindAndInsteadOfTheSelection) {
  start();
  load(u"<P>one[two]three</P>");
  control->InsertAtCursor(u"<B>x</B>", before);
  EXPECT_EQ(body(), u"<P>one<B>x</B>twothree</P>");
  load(u"<P>one[two]three</P>");
  control->InsertAtCursor(u"<B>x</B>", after);
  EXPECT_EQ(body(), u"<P>onetwo<B>x</B>three</P>");
  load(u"<P>one[two]three</P>");
  control->InsertAtCursor(u"<B>x</B>", replace);
  EXPECT_EQ(body(), u"<P>one<B>x</B>three</P>");
  load(u"<P>one[two]three</P>");
  control->InsertAtCursor(u"<B>x</B>", ed_InsertType(17));
  EXPECT_EQ(body(), u"<P>one<B>x</B>three</P>") << "any other number replaces";
}

TEST_F(Control, AllKindsOfInsertGoToACaret) {
  start();
  for (const ed_InsertType kind : {replace, before, after}) {
    load(u"<P>one[]two</P>");
    control->InsertAtCursor(u"<B>x</B>", kind);
    EXPECT_EQ(body(), u"<P>one<B>x</B>two</P>") << int(kind);
  }
}

TEST_F(Control, WithoutASelectionTheBodysStartIsTheCaret) {
  start_with(u"<P>x</P>");
  control->DOM()->select([](editing::Selection& selection) { selection.clear(); });
  control->InsertAtCursor(u"<B>y</B>", replace);
  EXPECT_EQ(body(), u"<B>y</B><P>x</P>");
}

TEST_F(Control, InsertingOverAnImageIsReportedAndMarksTheDocument) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  control->DOM()->mouse_press(at(element(dom::Tag::Img)));
  host.heard.clear();
  control->InsertAtCursor(u"<B>y</B>", replace);
  EXPECT_THAT(host.heard,
              ElementsAre("Error: 993 InsertAtCursor failed : Can not insert over a single control element"));
  EXPECT_EQ(body(), u"<P>x<IMG src=\"a.gif\"></P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Control, AnInsertThatFailsOtherwiseSaysWhyAndMarksNothing) {
  create();
  host.heard.clear();
  control->InsertAtCursor(u"<B>y</B>", replace);
  EXPECT_THAT(host.heard, ElementsAre("Error: 993 InsertAtCursor failed There is no document"));
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(Control, AnInsertIsOneStepOfUndo) {
  start();
  load(u"<P>one[two]three</P>");
  control->InsertAtCursor(u"<UL><LI>a<LI>b</UL>", replace);
  control->undo_document();
  EXPECT_EQ(marked(), u"<P>one[two]three</P>");
}

// --- what is inserted stays what it is ---

TEST_F(Control, AnInlineElementAroundBlocksIsInserted) {
  start();
  for (const std::u16string_view opening :
       {u"<A href=\"x\">", u"<SPAN class=\"c\">", u"<ABBR>", u"<LABEL>", u"<MY-CARD>"}) {
    const std::u16string name(opening.substr(1, opening.find_first_of(u" >") - 1));
    const std::u16string html = std::u16string(opening) + u"<DIV>card</DIV></" + name + u">";
    load(u"<P>one[]two</P>");
    control->InsertAtCursor(html, replace);
    EXPECT_EQ(to_utf8(body()), to_utf8(u"<P>one</P>" + html + u"<P>two</P>"));
    load(u"<P>{}<BR></P>");
    control->InsertAtCursor(html, replace);
    EXPECT_EQ(to_utf8(body()), to_utf8(html)) << "an empty paragraph gives way";
    control->undo_document();
    EXPECT_EQ(body(), u"<P><BR></P>");
  }
}

TEST_F(Control, ALinkIsNeverPutIntoALink) {
  start();
  load(u"<P><A href=\"a\">one[]two</A></P>");
  control->InsertAtCursor(u"<B><A href=\"b\">x</A></B>", replace);
  EXPECT_EQ(to_utf8(body()), "<P><A href=\"a\">one</A><B><A href=\"b\">x</A></B><A href=\"a\">two</A></P>");
}

TEST_F(Control, ReplacingAllOfABlockKeepsIt) {
  start();
  const auto expect_kept = [&](std::u16string_view before, std::string_view after) {
    load(before);
    control->InsertAtCursor(u"&nbsp;", replace);
    EXPECT_EQ(to_utf8(marked()), after);
    control->undo_document();
    EXPECT_EQ(to_utf8(marked()), to_utf8(before));
  };
  expect_kept(u"<UL><LI>[one]</LI><LI>two</LI></UL>", "<UL><LI>&nbsp;{}</LI><LI>two</LI></UL>");
  expect_kept(u"<H1>[one]</H1>", "<H1>&nbsp;{}</H1>");
  expect_kept(u"<P>[one]</P>", "<P>&nbsp;{}</P>");
  expect_kept(u"<P>[one <B>two</B>]</P>", "<P>&nbsp;{}</P>");
  expect_kept(u"<TABLE><TBODY><TR><TD>[one]</TD></TR></TBODY></TABLE>",
              "<TABLE><TBODY><TR><TD>&nbsp;{}</TD></TR></TBODY></TABLE>");
}

TEST_F(Control, BlocksTakeThePlaceOfTheBlockThatWasSelected) {
  start();
  load(u"<P>[one]</P><P>two</P>");
  control->InsertAtCursor(u"<P class=\"c\">x</P><P>y</P>", replace);
  EXPECT_EQ(body(), u"<P class=\"c\">x</P><P>y</P><P>two</P>");
  load(u"<UL><LI>[one]</LI><LI>two</LI></UL>");
  control->InsertAtCursor(u"<P>x</P>", replace);
  EXPECT_EQ(body(), u"<UL><LI><P>x</P></LI><LI>two</LI></UL>") << "an item stays an item";
}

TEST_F(Control, SmallHiddenContentDoesNoHarm) {
  start();
  for (const std::u16string_view before :
       {u"<P>one[]two</P>", u"<P>one[]</P>", u"{}", u"<P>[one]</P>", u"<P>{}<BR></P>",
        u"<UL><LI>[one]</LI></UL>", u"<UL><LI>{}</LI></UL>"}) {
    for (const std::u16string_view html :
         {u"&nbsp;<ul style=\"display:none\"><br></br>", u"<img><span><main><pre hidden>"}) {
      load(before);
      control->InsertAtCursor(html, replace);
      EXPECT_NE(body().find(html.starts_with(u"&") ? u"<UL style=\"display:none\"><BR>" : u"<PRE hidden"),
                std::u16string::npos)
          << to_utf8(before) << " gave " << to_utf8(body());
      control->undo_document();
      EXPECT_EQ(to_utf8(marked()), to_utf8(before));
      control->FormatSelection(html, u"");
      control->InsertAtCursor(html, after);
    }
  }
}

TEST_F(Control, TheCurrentSelectionIsTheWordAtACaret) {
  start_with(u"");
  load(u"<P>one w[]ord two</P>");
  EXPECT_EQ(control->GetCurrentSelection(false), u"word");
  EXPECT_EQ(control->GetCurrentSelection(true), u"word");
  EXPECT_EQ(marked(), u"<P>one w[]ord two</P>") << "the selection stays";
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(Control, TheCurrentSelectionInEmptySpaceIsEmpty) {
  start_with(u"");
  load(u"<P>one</P><P>[]<BR></P>");
  EXPECT_EQ(control->GetCurrentSelection(false), u"");
}

TEST_F(Control, TheCurrentSelectionIsHtmlOrText) {
  start_with(u"");
  load(u"<P>one [two <B>three</B>] four</P>");
  EXPECT_EQ(control->GetCurrentSelection(true), u"two <B>three</B>");
  EXPECT_EQ(control->GetCurrentSelection(false), u"two three");
}

TEST_F(Control, AControlSelectionIsNoCurrentSelection) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  control->DOM()->mouse_press(at(element(dom::Tag::Img)));
  host.heard.clear();
  EXPECT_EQ(control->GetCurrentSelection(true), std::nullopt);
  EXPECT_THAT(host.heard, ElementsAre("Error: 6 Current Selection could not be retreived : "
                                      "Object doesn't support this property or method"));
}

// --- selecting by characters ---

TEST_F(Control, SelectTextSelectsCharactersOfTheBody) {
  start_with(u"<P>one <B>two</B> three</P>");
  EXPECT_EQ(control->selectText(4, 3), u"<B>two</B>");
  EXPECT_EQ(control->GetCurrentSelection(false), u"two");
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(Control, SelectTextCountsAStepForEachBlock) {
  start_with(u"<P>ab</P><P>cd</P>");
  EXPECT_EQ(control->selectText(3, 1), u"c");
  EXPECT_EQ(marked(), u"<P>ab</P><P>[c]d</P>");
}

TEST_F(Control, SelectTextOfNothingPutsTheCaretAtTheBodysStart) {
  start_with(u"<P>one</P>");
  load(u"<P>o[ne]</P>");
  EXPECT_EQ(control->selectText(0, 0), u"");
  EXPECT_EQ(marked(), u"<P>[]one</P>");
}

TEST_F(Control, SelectTextBeyondTheEndSelectsToTheEnd) {
  start_with(u"<P>one two</P><P>three</P>");
  EXPECT_EQ(control->selectText(5, 100000), u"<P>wo</P><P>three</P>");
  EXPECT_EQ(control->GetCurrentSelection(false), u"wo\n\nthree");
  EXPECT_EQ(control->selectText(2, 0x7FFFFFFF), u"<P>e two</P><P>three</P>");
}

TEST_F(Control, SelectTextCountsWhatTheCaretStepsOver) {
  start_with(u"<P>\U0001F600\U0001F601\U0001F602</P>");
  EXPECT_EQ(control->selectText(1, 1), u"\U0001F601");
  EXPECT_EQ(control->selectText(0, 3), u"<P>\U0001F600\U0001F601\U0001F602</P>");
  EXPECT_EQ(control->selectText(1, 3), u"\U0001F601\U0001F602")
      << "past the end, though not past the text's length";
  EXPECT_EQ(control->selectText(0, 5), u"<P>\U0001F600\U0001F601\U0001F602</P>");
  start_with(u"<P>a<IMG><IMG><IMG>bc</P>");
  EXPECT_EQ(control->selectText(0, 4), u"a<IMG><IMG><IMG>");
  EXPECT_EQ(control->selectText(3, 2), u"<IMG>b");
}

TEST_F(Control, SelectTextFromBeyondTheEndSelectsNothingAndSaysNothing) {
  start_with(u"<P>one</P>");
  load(u"<P>[one]</P>");
  host.heard.clear();
  EXPECT_EQ(control->selectText(1000, 1), u"");
  EXPECT_EQ(marked(), u"<P>one[]</P>");
  EXPECT_EQ(host.heard.size(), 0u);
}

TEST_F(Control, SelectTextInAnEmptyBodyFindsNothing) {
  start_with(u"");
  EXPECT_EQ(control->selectText(0, 5), u"");
  EXPECT_EQ(host.heard.size(), 0u);
}

TEST_F(Control, TheControlHearsOfSelectText) {
  start_with(u"<DIV>one two</DIV>");
  control->UserControl_ExitFocus();
  ASSERT_EQ(control->highlightElement(), nullptr);
  control->selectText(0, 3);
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::Div));
}

}  // namespace
}  // namespace tvx::core
