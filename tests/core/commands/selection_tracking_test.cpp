#include "core/control_fixture.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/platform/loaded_dialogs.h"

namespace tvx::core {
namespace {

using browser::MouseButton;

class SelectionTracking : public Control {
 protected:
  void press(dom::Element* target, MouseButton button = MouseButton::Left) {
    control->DOM()->mouse_press(at(target, button));
  }
  int value(int button) { return control->Toolbar1().Item(button).Value(); }
  void select_in(dom::Tag tag) {
    control->DOM()->select([&](editing::Selection& selection) {
      selection.collapse({element(tag)->first_child(), 1});
    });
  }
};

TEST_F(SelectionTracking, WhileTheSpellingDialogIsLoadedNothingMoves) {
  start_with(u"<P>plain<B>bold</B></P>");
  press(element(dom::Tag::P));
  const dom::Ref<dom::Element> before = control->highlightElement();
  const int buttons = control->tlbDOM().Count();
  {
    const platform::LoadedDialog spelling(u"frmSpelling");
    select_in(dom::Tag::B);
    EXPECT_EQ(value(10), 0);
    EXPECT_EQ(control->highlightElement(), before.get());
    EXPECT_EQ(control->tlbDOM().Count(), buttons);
  }
  press(element(dom::Tag::B));
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::B));
  EXPECT_EQ(value(10), 1);
}

TEST_F(SelectionTracking, AnotherDialogLeavesItAlone) {
  start_with(u"<P>plain<B>bold</B></P>");
  const platform::LoadedDialog font(u"frmFont");
  select_in(dom::Tag::B);
  EXPECT_EQ(value(10), 1);
}

TEST_F(SelectionTracking, WhileLoadingOnlyTheButtonsFollow) {
  start_with(u"<P>plain<B>bold</B></P>");
  press(element(dom::Tag::P));
  const dom::Ref<dom::Element> before = control->highlightElement();
  const auto document = control->DOM();
  host.on_navigate = [](std::u16string&, bool& cancel) { cancel = false; };
  control->WBrowser().Navigate(u"file://" + write_file("other.html", "<p>other</p>"));
  ASSERT_NE(control->WBrowser().ReadyState(), browser::ReadyState::Complete);
  ASSERT_EQ(control->DOM(), document);
  select_in(dom::Tag::B);
  EXPECT_EQ(value(10), 1);
  EXPECT_EQ(control->highlightElement(), before.get());
}

TEST_F(SelectionTracking, AClickMovesTheElementAndDrawsNothingByDefault) {
  start_with(u"<P>one</P><H1>two</H1>");
  press(element(dom::Tag::H1));
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::H1));
  ASSERT_EQ(control->tlbDOM().Count(), 1);
  EXPECT_EQ(control->tlbDOM().Item(1).Caption(), u"H1");
  EXPECT_EQ(body(), u"<P>one</P><H1>two</H1>");
}

TEST_F(SelectionTracking, TheElementBeforeGetsItsInlineBorderBackExactly) {
  start_with(u"<P style=\"border-left: 3px solid blue\">one</P><H1>two</H1>");
  control->set_HighlightDOMSelectionOnClick(true);
  press(element(dom::Tag::P));
  EXPECT_NE(body().find(u"dashed"), std::u16string::npos);
  press(element(dom::Tag::H1));
  EXPECT_EQ(body().find(u"<P style=\"border-left: 3px solid blue\">one</P>"), 0u);
  EXPECT_NE(body().find(u"<H1 style="), std::u16string::npos);
  EXPECT_EQ(control->DocumentHTML(), u"<P style=\"border-left: 3px solid blue\">one</P><H1>two</H1>");
}

TEST_F(SelectionTracking, TheBorderIsInNoStepOfUndo) {
  start_with(u"<P>one</P><H1>two</H1>");
  control->set_HighlightDOMSelectionOnClick(true);
  press(element(dom::Tag::P));
  press(element(dom::Tag::H1));
  EXPECT_FALSE(control->DOM()->tree().journal().can_undo());
  select_in(dom::Tag::P);
  key(u"x", 88);
  ASSERT_TRUE(control->IsDirty());
  control->undo_document();
  EXPECT_EQ(control->DocumentHTML(), u"<P>one</P><H1>two</H1>");
}

TEST_F(SelectionTracking, AStyleThatTheHostSetsUnderTheBorderKeepsNothingOfIt) {
  start_with(u"<P>one</P><H1>two</H1>");
  control->set_HighlightDOMSelectionOnClick(true);
  press(element(dom::Tag::P));
  dom::style::set_inline_value(*element(dom::Tag::P), u"color", u"green");
  press(element(dom::Tag::H1));
  EXPECT_EQ(control->DocumentHTML(), u"<P style=\"color: green\">one</P><H1>two</H1>");
  control->undo_document();
  EXPECT_EQ(control->DocumentHTML(), u"<P>one</P><H1>two</H1>");
}

TEST_F(SelectionTracking, ADoubleClickKeepsWhatComesBackUnderTheBorder) {
  start_with(u"<P>one</P>");
  control->set_HighlightDOMSelectionOnClick(true);
  press(element(dom::Tag::P));
  control->DOM()->double_click(at(element(dom::Tag::P)));
  EXPECT_EQ(control->DocumentHTML(), u"<P>one</P>");
}

TEST_F(SelectionTracking, TheButtonsFollowTheCaretIntoBoldTextAndOut) {
  start_with(u"<P>plain<B>bold<I>both</I></B></P>");
  select_in(dom::Tag::B);
  EXPECT_EQ(value(10), 1);
  EXPECT_EQ(value(11), 0);
  select_in(dom::Tag::I);
  EXPECT_EQ(value(11), 1);
  select_in(dom::Tag::P);
  EXPECT_EQ(value(10), 0);
  EXPECT_EQ(value(11), 0);
}

TEST_F(SelectionTracking, TheCaretMovedByKeyTakesTheElementAlong) {
  start_with(u"<P>a<B>b</B></P>");
  load(u"<P>a[]<B>b</B></P>");
  key(u"ArrowRight", 39);
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::B));
  EXPECT_EQ(control->tlbDOM().Count(), 2);
}

TEST_F(SelectionTracking, NoSelectionEnablesOrDisablesAButton) {
  start_with(u"<P>a<IMG></P>");
  press(element(dom::Tag::Img));
  for (int i = 1; i <= 29; ++i) EXPECT_TRUE(control->Toolbar1().Item(i).Enabled()) << i;
  for (const int i : {4, 5, 6}) EXPECT_EQ(value(i), 0) << i;
}

TEST_F(SelectionTracking, WhereNothingIsTheElementIsNothingAndTheButtonsFollowAllTheSame) {
  start_with(u"<P>a<B>b</B></P>");
  press(element(dom::Tag::P));
  load(u"<P>a<B>[]b</B></P>");
  control->Toolbar1().Item(10).set_Value(0);
  browser::MouseInput nowhere = at(nullptr);
  control->DOM()->mouse_press(nowhere);
  EXPECT_EQ(control->highlightElement(), nullptr);
  EXPECT_EQ(control->tlbDOM().Count(), 0);
  EXPECT_EQ(value(10), 1);
}

}  // namespace
}  // namespace tvx::core
