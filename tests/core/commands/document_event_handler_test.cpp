#include "core/control_fixture.h"
#include "tvx/platform/form.h"

namespace tvx::core {
namespace {

using browser::MouseButton;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;

TEST_F(Control, EveryKeyRaisesTheEventOnceAlsoOneThatIsTakenAway) {
  start();
  control->set_useEnterAsBR(true);
  load(u"<P>a[]</P>");
  container.clear_changed();
  EXPECT_TRUE(key(u"Enter", 13).taken);
  key(u"b", 66);
  key(u"Shift", 16, false, true);
  EXPECT_THAT(host.heard, ElementsAre("ASCIIKeyPress: 13", "ASCIIKeyPress: 66", "ASCIIKeyPress: 16 shift"));
}

TEST_F(Control, AnArrowKeyMarksTheDocumentChanged) {
  start_with(u"<P>x</P>");
  load(u"<P>x[]y</P>");
  key(u"ArrowLeft", 37);
  EXPECT_TRUE(control->IsDirty());
  EXPECT_EQ(body(), u"<P>xy</P>");
  EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML"));
}

TEST_F(Control, EnterIsLeftToTheDocumentByDefault) {
  start();
  load(u"<P>one[]two</P>");
  key(u"Enter", 13);
  EXPECT_EQ(body(), u"<P>one</P><P>two</P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Control, WithUseEnterAsBREnterIsABareLineBreak) {
  start();
  control->set_useEnterAsBR(true);
  load(u"<P>one[]two</P>");
  key(u"Enter", 13);
  EXPECT_EQ(body(), u"<P>one<BR>two</P>");
}

TEST_F(Control, WithUseEnterAsBREnterLeavesTheCaretOnTheNewLine) {
  start();
  for (const bool contained : {false, true}) {
    control->set_useEnterAsBR(true);
    control->set_isAccessContained(contained);
    load(u"<P>one[]</P>");
    EXPECT_TRUE(key(u"Enter", 13).taken);
    EXPECT_EQ(to_utf8(marked()), "<P>one<BR>{}<BR></P>")
        << "a break at the end alone begins no line that is seen";
    control->DOM()->input_text(u"two");
    EXPECT_EQ(body(), u"<P>one<BR>two</P>");
    load(u"<P>{}<BR></P>");
    key(u"Enter", 13);
    EXPECT_EQ(to_utf8(marked()), "<P><BR>{}<BR></P>");
  }
}

TEST_F(Control, ContainedAccessSendsEnterWithoutASecondKeyDown) {
  start();
  control->set_isAccessContained(true);
  load(u"<P>one[]two</P>");
  EXPECT_TRUE(key(u"Enter", 13).taken);
  EXPECT_EQ(body(), u"<P>one</P><P>two</P>");
  EXPECT_EQ(host.count("ASCIIKeyPress"), 1u);
}

TEST_F(Control, WithAutoFormatShortFormsBecomeWhatTheyStandFor) {
  start();
  const auto type_dash = [&] {
    load(u"<P>{}<BR></P>");
    control->DOM()->input_text(u"- ");
    control->DOM()->tell_user_change();
  };
  EXPECT_FALSE(control->AutoFormat());
  type_dash();
  EXPECT_EQ(body(), u"<P>-&nbsp;</P>");
  control->set_AutoFormat(true);
  type_dash();
  EXPECT_EQ(body(), u"<UL><LI><BR></LI></UL>");
  EXPECT_TRUE(control->IsDirty());
  control->DOM()->editor().execute(u"undo");
  EXPECT_EQ(body(), u"<P>-&nbsp;</P>") << "what was typed is there again";
  control->DOM()->tell_user_change();
  EXPECT_EQ(body(), u"<P>-&nbsp;</P>") << "and stays";
}

TEST_F(Control, TheFirstRowThatFitsTakesTheKey) {
  start();
  control->set_useEnterAsBR(true);
  for (const bool shift : {false, true}) {
    load(u"<P>one[]two</P>");
    EXPECT_TRUE(key(u"Enter", 13, true, shift).taken);
    EXPECT_EQ(body(), u"<P>one<BR>two</P>") << "Enter is looked for before any other key is asked for";
  }
  load(u"<P>one[two]three</P>");
  EXPECT_TRUE(key(u" ", 32, true, true).taken);
  EXPECT_EQ(body(), u"<P>one&nbsp;three</P>") << "with Ctrl as well";
  load(u"<P>one[]two</P>");
  key(u" ", 32);
  EXPECT_EQ(body(), u"<P>one two</P>") << "a blank alone is the document's";
}

TEST_F(Control, ContainedAccessWithLineBreaksMakesALineBreak) {
  start();
  control->set_isAccessContained(true);
  control->set_useEnterAsBR(true);
  load(u"<P>one[]two</P>");
  EXPECT_TRUE(key(u"Enter", 13).taken);
  EXPECT_EQ(body(), u"<P>one<BR>two</P>");
  EXPECT_EQ(host.count("ASCIIKeyPress"), 1u);
}

TEST_F(Control, KeysWithoutARowAreTheDocuments) {
  start();
  load(u"<P>ab[]cd</P>");
  key(u"Backspace", 8);
  key(u"Delete", 46);
  EXPECT_EQ(body(), u"<P>ad</P>");
  EXPECT_EQ(host.count("ASCIIKeyPress"), 2u);
}

TEST_F(Control, AKeyGoingUpMarksTheDocument) {
  start_with(u"<P>x</P>");
  control->DOM()->key_up({u"Shift", u"", 16});
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(host.heard, ElementsAre());
}

TEST_F(Control, ShiftSpaceReplacesTheSelectionByANoBreakSpace) {
  start();
  load(u"<P>one[two]three</P>");
  EXPECT_TRUE(key(u" ", 32, false, true).taken);
  EXPECT_EQ(body(), u"<P>one&nbsp;three</P>");
}

TEST_F(Control, AHardSpaceStaysOneWhenTypingGoesOn) {
  start();
  load(u"<P>10[]</P>");
  EXPECT_TRUE(key(u" ", 32, true, true).taken);
  EXPECT_TRUE(control->IsDirty());
  key(u"k", 75);
  key(u"m", 77);
  EXPECT_EQ(body(), u"<P>10&nbsp;km</P>");
}

TEST_F(Control, ShiftSpaceOverAControlIsRefused) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  control->DOM()->mouse_press(at(element(dom::Tag::Img)));
  host.heard.clear();
  key(u" ", 32, false, true);
  EXPECT_EQ(host.heard.back(),
            "Error: 993 InsertAtCursor failed : Can not insert over a single control element");
  EXPECT_EQ(body(), u"<P>x<IMG src=\"a.gif\"></P>");
}

TEST_F(Control, WhatAHostWritesIntoTheKeyCodeIsIgnored) {
  start();
  load(u"<P>one[]two</P>");
  host.on_key = [](std::int32_t& code) { code = 0; };
  key(u"x", 88);
  EXPECT_EQ(body(), u"<P>onextwo</P>");
}

TEST_F(Control, AHostTakesAKeyAwayThroughTheEvent) {
  start();
  load(u"<P>one[]two</P>");
  host.on_key = [&](std::int32_t&) { control->DOM()->set_event_key_code(0); };
  EXPECT_TRUE(key(u"x", 88).taken);
  EXPECT_EQ(body(), u"<P>onetwo</P>");
}

TEST_F(Control, ADisabledEditorHearsOfAClickAndLetsNoSelectionBegin) {
  start_with(u"<P>text</P>");
  control->set_EditorEnabled(false);
  host.heard.clear();
  const auto document = control->DOM();
  document->mouse_press(at(element(dom::Tag::P)));
  document->click(at(element(dom::Tag::P)));
  EXPECT_THAT(host.heard, ElementsAre("DocumentClick: P"));
  EXPECT_EQ(document->editor().selection().type(), editing::SelectionType::None);
}

TEST_F(Control, ADisabledEditorFollowsNoLink) {
  start_with(u"<A href=\"http://example.org/\">x</A>");
  control->set_EditorEnabled(false);
  host.heard.clear();
  control->DOM()->click(at(element(dom::Tag::A)));
  loop.settle();
  EXPECT_THAT(host.heard, ElementsAre("DocumentClick: A"));
}

TEST_F(Control, AClickOnNothingHasNothingAsItsElement) {
  start_with(u"<P>text</P>");
  control->DOM()->click(at(nullptr));
  EXPECT_THAT(host.heard, ElementsAre("DocumentClick: nothing"));
}

TEST_F(Control, ADoubleClickMovesTheCurrentElementToTheLastEventsPlace) {
  start_with(u"<P>one</P><DIV>two</DIV>");
  control->DOM()->mouse_press(at(element(dom::Tag::P)));
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::P));
  control->UserControl_ExitFocus();
  control->DOM()->double_click(at(element(dom::Tag::Div)));
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::P))
      << "the press's coordinates, not the double click's";
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(Control, ADoubleClickOnAnImageWhosePropertiesAreHiddenChangesNothing) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  control->set_HiddenContextMenus(u"ImgProperties");
  control->DOM()->mouse_press(at(element(dom::Tag::Img)));
  EXPECT_FALSE(control->DOM()->double_click(at(element(dom::Tag::Img)))) << "always cancelled";
  EXPECT_EQ(body(), u"<P>x<IMG src=\"a.gif\"></P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::Img));
}

class DoubleClicks : public Control {
 protected:
  /// Both presses of it, with what is done in the dialog of the image.
  void double_click_image(std::u16string button, const std::function<void(platform::Form&)>& user = {}) {
    forms.expect({.form = u"frmImageSettings", .while_open = user, .press = std::move(button)});
    const browser::MouseInput place = at(element(dom::Tag::Img));
    control->DOM()->mouse_press(place);
    control->DOM()->mouse_press(place);
    EXPECT_FALSE(control->DOM()->double_click(place));
    EXPECT_EQ(forms.expectations(), 0u);
  }
};

TEST_F(DoubleClicks, OnAnImageOpenItsSettings) {
  start_with(u"<P>x<IMG src=\"a.gif\" width=\"4\"></P>");
  double_click_image(u"OKButton", [](platform::Form& form) { form.Controls(u"txtWidth").set_Text(u"9"); });
  EXPECT_EQ(body(), u"<P>x<IMG src=\"a.gif\" width=\"9\"></P>");
  EXPECT_FALSE(control->IsDirty()) << "as where the menu's item opens them";
}

TEST_F(DoubleClicks, ThatAreCancelledMarkTheDocument) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  double_click_image(u"CancelButton");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(container.changed(), Contains(u"DocumentHTML"));
}

TEST_F(DoubleClicks, OnAnImageThatMayNotBeEditedOpenNothing) {
  start_with(u"<P>x<IMG src=\"a.gif\" style=\"float: left\"></P>");
  control->set_EditorEnabled(false);
  control->DOM()->mouse_press(at(element(dom::Tag::Img)));
  control->DOM()->double_click(at(element(dom::Tag::Img)));
  EXPECT_TRUE(forms.shown().empty());
  EXPECT_EQ(body(), u"<P>x<IMG src=\"a.gif\" style=\"float: left\"></P>");
}

TEST_F(DoubleClicks, OnAnythingElseOpenNothing) {
  start_with(u"<P>x <A href=\"#a\">link</A></P><HR><TABLE><TR><TD>cell</TD></TR></TABLE>");
  for (const dom::Tag tag : {dom::Tag::P, dom::Tag::A, dom::Tag::Hr, dom::Tag::Td, dom::Tag::Table}) {
    control->DOM()->mouse_press(at(element(tag)));
    EXPECT_FALSE(control->DOM()->double_click(at(element(tag))));
    EXPECT_EQ(control->highlightElement(), element(tag));
  }
  EXPECT_TRUE(forms.shown().empty());
  EXPECT_FALSE(control->IsDirty());
}

// The view has nothing to say of another place than that of its last report.
TEST_F(DoubleClicks, FindTheImageWhereThePressHasFoundIt) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  struct Nowhere final : browser::Geometry {
    dom::Element* element_at(const browser::HTMLDocument&, int, int) const override { return nullptr; }
    std::pair<int, int> caret_place(const browser::HTMLDocument&) const override { return {0, 0}; }
  } nowhere;
  control->DOM()->mouse_press(at(element(dom::Tag::Img)));
  control->DOM()->set_geometry(&nowhere);
  forms.expect({.form = u"frmImageSettings", .press = u"CancelButton"});
  browser::MouseInput moved = at(element(dom::Tag::Img));
  ++moved.x;
  control->DOM()->double_click(moved);
  EXPECT_EQ(forms.expectations(), 0u);
}

TEST_F(Control, DraggingMarksTheDocumentChangedAsItBegins) {
  start_with(u"<P>text</P>");
  EXPECT_TRUE(control->DOM()->drag_start(at(element(dom::Tag::P))));
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Control, AControlSelectionRaisesDocumentClick) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  control->DOM()->mouse_press(at(element(dom::Tag::Img)));
  EXPECT_THAT(host.heard, ElementsAre("DocumentClick: IMG"));
  EXPECT_EQ(control->DOM()->editor().selection().control(), element(dom::Tag::Img));
}

// --- the selection's news ---

TEST_F(Control, APressMovesTheCurrentElementAndDrawsNoBorder) {
  start_with(u"<P>one</P><DIV>two</DIV>");
  control->DOM()->mouse_press(at(element(dom::Tag::Div)));
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::Div));
  EXPECT_EQ(body(), u"<P>one</P><DIV>two</DIV>");
  ASSERT_NE(control->lastEvent(), nullptr);
  EXPECT_EQ(control->lastEvent()->button, MouseButton::Left);
}

TEST_F(Control, TheBorderMovesWithTheSelectionAndGivesTheStyleBackExactly) {
  start_with(u"<P style=\"border-left: 3px  solid blue\">one</P><DIV>two</DIV>");
  control->set_HighlightDOMSelectionOnClick(true);
  control->set_SelectionBorderStyle(EdHighLightStyle::edDotted);
  control->DOM()->mouse_press(at(element(dom::Tag::P)));
  EXPECT_TRUE(contains(body(), u"dotted")) << to_utf8(body());
  control->DOM()->mouse_press(at(element(dom::Tag::Div)));
  EXPECT_TRUE(body().starts_with(u"<P style=\"border-left: 3px  solid blue\">one</P><DIV style="))
      << to_utf8(body());
  EXPECT_EQ(control->DocumentHTML(), u"<P style=\"border-left: 3px  solid blue\">one</P><DIV>two</DIV>");
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::Div)) << "kept, without its border";
}

TEST_F(Control, TheBorderIsNoChangeForUndo) {
  start_with(u"<P>one</P><DIV>two</DIV>");
  load(u"<P>one[]</P><DIV>two</DIV>");
  key(u"x", 88);
  control->set_HighlightDOMSelectionOnClick(true);
  control->DOM()->mouse_press(at(element(dom::Tag::Div)));
  control->undo_document();
  EXPECT_EQ(control->DocumentHTML(), u"<P>one</P><DIV>two</DIV>");
  control->redo_document();
  EXPECT_EQ(control->DocumentHTML(), u"<P>onex</P><DIV>two</DIV>");
}

TEST_F(Control, CaretInBoldTextPressesTheButton) {
  start();
  load(u"<P>one<B>two[]</B></P>");
  control->DOM()->select([&](editing::Selection& selection) { selection.set(selection.range()); });
  EXPECT_EQ(control->Toolbar1().Item(10).Value(), 1);
  load(u"<P>one[]<B>two</B></P>");
  control->DOM()->select([&](editing::Selection& selection) { selection.set(selection.range()); });
  EXPECT_EQ(control->Toolbar1().Item(10).Value(), 0);
}

TEST_F(Control, AHostMayUseTheControlWithinAKeyEvent) {
  start();
  load(u"<P>one[]two</P>");
  host.on_key = [&](std::int32_t&) { control->set_DocumentHTML(u"<P>replaced</P>"); };
  key(u"x", 88);
  EXPECT_TRUE(contains(body(), u"replaced"));
}

}  // namespace
}  // namespace tvx::core
