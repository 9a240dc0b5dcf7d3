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
