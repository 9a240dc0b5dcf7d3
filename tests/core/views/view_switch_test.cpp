#include "core/control_fixture.h"
#include "tvx/dom/journal.h"
#include "tvx/source/source_text.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;

class ViewSwitch : public Control {
 protected:
  source::OrvelCV& code() { return control->txtCode(); }
  void enter() {
    control->show_Code();
    ASSERT_TRUE(control->InCodeView());
  }
  void code_key(int key_code, int shift = 0, std::u16string_view text = {}) {
    code().TextBox1();
    code().plain_box().key(std::int16_t(key_code), std::int16_t(shift), text, true);
  }
  void replace_in_code(std::u16string_view find, std::u16string_view by) {
    std::u16string text = code().Text();
    const std::size_t at = text.find(find);
    ASSERT_NE(at, text.npos) << to_utf8(text);
    code().edit(text.replace(at, find.size(), by));
  }
  void lose_body() { dom::remove(*control->DOM()->body()); }
  void clear_dirty() {
    std::u16string none;
    control->Open_document(none, false);  // cancelled, which clears the flag
    container.clear_changed();
  }
  static constexpr int control_key = 2;
};

TEST_F(ViewSwitch, TheCodeIsFormatted) {
  start_with(u"<table><tr><td>x</td></tr></table>");
  enter();
  EXPECT_EQ(code().Text(),
            u"<TABLE>\r\n  <TBODY>\r\n    <TR>\r\n      <TD>\r\n        x\r\n      </TD>\r\n    </TR>\r\n"
            u"  </TBODY>\r\n</TABLE>\r\n");
}

TEST_F(ViewSwitch, OneOfTheTwoIsInFrontWithTheFocusAndTheMessages) {
  start_with(u"<P>x</P>");
  EXPECT_FALSE(code().Visible());
  enter();
  EXPECT_TRUE(code().Visible());
  EXPECT_TRUE(code().in_front());
  EXPECT_TRUE(code().TabStop());
  EXPECT_TRUE(code().has_focus());
  EXPECT_TRUE(code().attached());
  EXPECT_TRUE(control->layout().txtCode.Visible);
  window.told.clear();
  control->show_Code();
  EXPECT_FALSE(control->InCodeView());
  EXPECT_FALSE(code().Visible());
  EXPECT_FALSE(code().in_front());
  EXPECT_FALSE(code().TabStop());
  EXPECT_FALSE(code().has_focus());
  EXPECT_FALSE(code().attached());
  EXPECT_THAT(window.told, ElementsAre("focus"));
}

TEST_F(ViewSwitch, ToolbarsAreDisabledInTheCodeView) {
  start_with(u"<P>x</P>");
  enter();
  EXPECT_FALSE(control->Toolbar1().Item(10).Enabled());
  EXPECT_TRUE(control->Toolbar1().Item(1).Enabled());
  control->show_Code();
  EXPECT_TRUE(control->Toolbar1().Item(10).Enabled());
}

TEST_F(ViewSwitch, TheCodeOfADocumentThatMayNotBeEditedIsLocked) {
  start_with(u"<P>x</P>");
  control->set_EditorEnabled(false);
  enter();
  clipboard.SetText(u"pasted");
  code_key('A', 0, u"a");
  code_key(8);
  code_key(46);
  code_key(9);
  code_key('V', control_key);
  code_key('A', control_key);
  code_key('X', control_key);
  control->paste_document();
  control->cut_document();
  EXPECT_EQ(control->FindText(u"x", 0), 1);
  EXPECT_EQ(control->ReplaceAllText(u"y"), 0);
  EXPECT_THROW(code().edit(u"<P>z</P>"), RuntimeError);
  EXPECT_EQ(code().Text(), u"<P>x</P>\r\n");
  control->set_EditorEnabled(true);
  code_key('A', 0, u"a");
  EXPECT_NE(code().Text(), u"<P>x</P>\r\n");
}

TEST_F(ViewSwitch, AHostThatKeepsTheCodeInFrontKeepsItLocked) {
  start_with(u"<P>x</P>");
  enter();
  code_key('A', 0, u"a");
  host.on_view_change = [](bool&, bool& cancel) { cancel = true; };
  control->set_EditorEnabled(false);
  ASSERT_TRUE(control->InCodeView());
  code_key('A', 0, u"b");
  EXPECT_EQ(code().Text(), u"a<P>x</P>\r\n");
  host.on_view_change = nullptr;
  control->show_Code();
  EXPECT_EQ(control->DOM()->body()->first_child()->type(), dom::NodeType::Text) << "typed before the lock";
}

TEST_F(ViewSwitch, TheHostHearsWhichViewIsLeft) {
  start_with(u"<P>x</P>");
  control->show_Code();
  control->show_Code();
  EXPECT_THAT(host.heard, ElementsAre("BeforeCodeViewChange: design", "BeforeCodeViewChange: code"));
}

TEST_F(ViewSwitch, AHostThatCancelsKeepsTheViewAndTheLayoutStillRuns) {
  start_with(u"<P>x</P>");
  host.on_view_change = [](bool&, bool& cancel) { cancel = true; };
  control->set_size(12000, 9000);
  control->show_Code();
  EXPECT_FALSE(control->InCodeView());
  EXPECT_EQ(control->layout().WBrowser.Width, 12000);
  host.on_view_change = {};
  enter();
  host.on_view_change = [](bool&, bool& cancel) { cancel = true; };
  control->show_Code();
  EXPECT_TRUE(control->InCodeView());
  EXPECT_TRUE(code().attached());
}

// --- what was selected ---

TEST_F(ViewSwitch, TextTakesTheInnerHtmlOfTheCurrentElement) {
  start_with(u"<P>one <B>two</B></P>");
  load(u"<P>o[n]e <B>two</B></P>");
  control->UserControl_EnterFocus();  // the body's first element is the current one
  enter();
  EXPECT_EQ(code().SelLength(), std::int32_t(std::u16string_view(u"one <B>two</B>").size()));
  EXPECT_EQ(code().SelStart(), 3) << "behind the start tag";
}

TEST_F(ViewSwitch, AControlTakesTheOuterHtml) {
  start_with(u"<P>a<IMG src=\"x.gif\"></P>");
  control->UserControl_EnterFocus();
  control->DOM()->editor().selection().select_control(*element(dom::Tag::Img));
  const std::u16string outer = dom::outer_html(*control->highlightElement());
  enter();
  EXPECT_EQ(code().SelLength(), std::int32_t(outer.size()));
}

TEST_F(ViewSwitch, WithNothingSelectedTheOldTextIsSoughtInTheNewSource) {
  start_with(u"<P>word</P>");
  load(u"<P>w[or]d</P>");
  control->UserControl_EnterFocus();
  enter();
  EXPECT_EQ(code().SelLength(), 4);
  control->show_Code();
  load(u"<H1>title</H1><P>word[]</P>");
  enter();
  EXPECT_EQ(code().SelLength(), 4);
  EXPECT_EQ(code().SelStart(), std::int32_t(code().Text().find(u"word")));
}

TEST_F(ViewSwitch, AnEmptySelectionStandsAtTheBeginning) {
  start_with(u"<P>x</P>");
  enter();
  EXPECT_EQ(code().SelStart(), 0);
  EXPECT_EQ(code().SelLength(), 0);
}

TEST_F(ViewSwitch, WhatIsNotFoundStandsAtMinusOne) {
  start_with(u"<P>word</P>");
  load(u"<P>w[or]d</P>");
  control->UserControl_EnterFocus();
  enter();
  control->show_Code();
  load(u"<P>other[]</P>");
  enter();
  EXPECT_EQ(code().SelStart(), -1);
}

TEST_F(ViewSwitch, TheBoxsOwnCaretStaysWhereItIs) {
  start_with(u"<P>word</P>");
  load(u"<P>w[or]d</P>");
  control->UserControl_EnterFocus();
  enter();
  EXPECT_EQ(code().TextBox1().SelStart(), 0u);
  EXPECT_EQ(code().TextBox1().SelLength(), 0u);
}

TEST_F(ViewSwitch, TheSelectionBorderIsNotInTheSource) {
  start_with(u"<P>x</P>");
  control->set_HighlightDOMSelectionOnClick(true);
  load(u"<P>[x]</P>");
  control->DOM()->click(at(element(dom::Tag::P)));
  enter();
  EXPECT_FALSE(contains(code().Text(), u"border")) << to_utf8(code().Text());
}

// --- leaving ---

TEST_F(ViewSwitch, UntouchedCodeLeavesTheTreeAndItsUndo) {
  start_with(u"<DIV>\n<P>one\n<P>two</DIV>");
  load(u"<DIV>\n<P>one[]</P>\n<P>two</P></DIV>");
  key(u"x", 88);
  const std::u16string before = body();
  const dom::Ref<dom::Element> paragraph = element(dom::Tag::P);
  const std::size_t steps = control->DOM()->tree().journal().depth();
  enter();
  control->show_Code();
  EXPECT_EQ(body(), before);
  EXPECT_EQ(element(dom::Tag::P), paragraph.get()) << "the very same nodes";
  EXPECT_EQ(control->DOM()->tree().journal().depth(), steps);
}

TEST_F(ViewSwitch, AnEditTakenBackLeavesTheTreeToo) {
  start_with(u"<P>one</P>");
  const dom::Ref<dom::Element> paragraph = element(dom::Tag::P);
  enter();
  code_key(u'X', 0, u"x");
  code_key(u'Z', control_key);
  control->show_Code();
  EXPECT_EQ(element(dom::Tag::P), paragraph.get());
}

TEST_F(ViewSwitch, ChangedCodeIsOneStepOfUndo) {
  start_with(u"<P>one</P><P>two</P>");
  enter();
  replace_in_code(u"one", u"three");
  replace_in_code(u"two", u"four");
  control->show_Code();
  EXPECT_EQ(body(), u"<P>three</P><P>four</P>");
  control->undo_document();
  EXPECT_EQ(body(), u"<P>one</P><P>two</P>");
  control->redo_document();
  EXPECT_EQ(body(), u"<P>three</P><P>four</P>");
}

TEST_F(ViewSwitch, TheDocumentIsNotTouchedWhileTheCodeShows) {
  start_with(u"<P>one</P>");
  enter();
  replace_in_code(u"one", u"two");
  EXPECT_EQ(body(), u"<P>one</P>");
  EXPECT_EQ(control->DocumentHTML(), u"<P>two</P>\r\n");
}

TEST_F(ViewSwitch, PreformattedTextIsKeptWhereTheEditIsElsewhere) {
  start_with(u"<DIV><PRE>a\n\n  b</PRE></DIV><P>c</P>");
  enter();
  replace_in_code(u"<P>c", u"<P>d");
  control->show_Code();
  EXPECT_TRUE(contains(body(), u"<PRE>a\n\n  b</PRE>")) << to_utf8(body());
}

TEST_F(ViewSwitch, TheDesignViewShowsTheCurrentElement) {
  start_with(u"<P>x</P>");
  control->UserControl_EnterFocus();
  enter();
  window.told.clear();
  control->show_Code();
  EXPECT_THAT(window.told, ElementsAre("into view P", "focus"));
}

// --- dirty ---

TEST_F(ViewSwitch, LeavingWithTheOriginalTextIsNoChange) {
  start_with(u"<P>x</P>");
  control->show_Code();
  control->show_Code();
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(ViewSwitch, LeavingWithAnotherTextThanTheOriginalIsAChange) {
  start_with(u"<p>x</p>");
  control->show_Code();
  EXPECT_FALSE(control->IsDirty());
  control->show_Code();
  EXPECT_TRUE(control->IsDirty()) << "the capitals differ";
  EXPECT_THAT(container.changed(), testing::Contains(u"DocumentHTML"));
}

TEST_F(ViewSwitch, AKeyPressBeforeLeavesTheMark) {
  start_with(u"<P>x</P>");
  enter();
  code_key(39);
  control->show_Code();
  EXPECT_EQ(body(), u"<P>x</P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ViewSwitch, AMereArrowMarksTheDocument) {
  start_with(u"<P>x</P>");
  enter();
  container.clear_changed();
  EXPECT_FALSE(control->IsDirty());
  code_key(39);
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML"));
}

TEST_F(ViewSwitch, EveryChangeMarksTheDocument) {
  start_with(u"<P>x</P>");
  enter();
  code().TextBox1().set_SelText(u"y");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ViewSwitch, ATextPutInIsNoChange) {
  start_with(u"<P>x</P>");
  enter();
  code().set_Text(u"other");
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(ViewSwitch, CopyingMarksNothingInAnAccessContainer) {
  start_with(u"<P>x</P>");
  control->set_isAccessContained(true);
  enter();
  code().DetachAllMessages();  // so that the key reaches the box
  container.clear_changed();
  code_key(u'C', control_key);
  EXPECT_FALSE(control->IsDirty());
  code_key(u'Z', control_key);
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ViewSwitch, WithoutAnAccessContainerEveryKeyThatComesThroughMarks) {
  start_with(u"<P>x</P>");
  enter();
  code().DetachAllMessages();
  code_key(u'C', control_key);
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ViewSwitch, UndoInTheCodeViewGoesByTheBoxsKeys) {
  for (const bool contained : {false, true}) {
    start_with(u"<P>x</P>");
    control->set_isAccessContained(contained);
    enter();
    code_key(u'Y', 0, u"y");
    ASSERT_EQ(code().Text(), u"y<P>x</P>\r\n");
    code_key(u'Z', control_key);
    EXPECT_EQ(code().Text(), u"<P>x</P>\r\n");
    code_key(u'Y', control_key);
    EXPECT_EQ(code().Text(), u"y<P>x</P>\r\n");
    control->undo_document();
    EXPECT_EQ(code().Text(), u"y<P>x</P>\r\n") << "the operation is empty in the code view";
    control.reset();
    loop.settle();
  }
}

// --- failures ---

TEST_F(ViewSwitch, EnteringWithoutABodyIsReported) {
  start_with(u"<P>x</P>");
  lose_body();
  control->set_size(12000, 9000);
  control->show_Code();
  EXPECT_EQ(host.heard.back(), "Error: 106 the editor cannot parse the code and cant show the code");
  EXPECT_FALSE(control->InCodeView());
  EXPECT_FALSE(code().Visible());
  EXPECT_FALSE(control->Toolbar1().Item(10).Enabled()) << "what had run stays done";
  EXPECT_EQ(control->layout().WBrowser.Width, 12000);
}

TEST_F(ViewSwitch, AFailedExitStaysInTheCodeViewBehindTheDesign) {
  start_with(u"<P>x</P>");
  enter();
  replace_in_code(u"x", u"y");
  set_fault(u"body.innerHTML", {RuntimeError(600, u"refused")});
  control->show_Code();
  EXPECT_EQ(host.heard.back(), "Error: 106 the editor cannot parse the code and cant show the code");
  EXPECT_TRUE(control->InCodeView());
  EXPECT_FALSE(code().in_front());
  EXPECT_TRUE(code().attached());
  EXPECT_TRUE(code().Visible());
  EXPECT_EQ(body(), u"<P>x</P>");
  control->show_Code();
  EXPECT_FALSE(control->InCodeView());
  EXPECT_EQ(body(), u"<P>y</P>");
}

TEST_F(ViewSwitch, SourceThatNoCodeCanShowIsReported) {
  std::u16string areas;  // each indents the rest
  for (int i = 0; i < 10'000; ++i) areas += u"<AREA>";
  start_with(areas);
  control->show_Code();
  EXPECT_EQ(host.heard.back(), "Error: 106 the editor cannot parse the code and cant show the code");
  EXPECT_FALSE(control->InCodeView());
}

TEST_F(ViewSwitch, BeforeTheStartItIsReported) {
  create();
  control->show_Code();
  EXPECT_EQ(host.heard.back(), "Error: 106 the editor cannot parse the code and cant show the code");
}

// --- other ways ---

TEST_F(ViewSwitch, AFileOpenedInTheCodeViewIsFormatted) {
  start_with(u"<P>x</P>");
  enter();
  auto file = write_file("page.html", "<div><p>one</div>");
  control->Open_document(file, false);
  EXPECT_EQ(code().Text(), u"<DIV>\r\n  <P>one</P>\r\n</DIV>\r\n");
  const dom::Ref<dom::Element> block = element(dom::Tag::Div);
  control->show_Code();
  EXPECT_EQ(element(dom::Tag::Div), block.get()) << "nobody has edited it";
}

TEST_F(ViewSwitch, AGivenDocumentIsAPlainCopyInTheCodeView) {
  start_with(u"<P>x</P>");
  enter();
  control->set_DocumentHTML(u"<p>given</p>");
  EXPECT_EQ(code().Text(), u"<p>given</p>");
  EXPECT_EQ(body(), u"<P>given</P>");
  control->show_Code();
  EXPECT_EQ(body(), u"<P>given</P>");
}

TEST_F(ViewSwitch, AddressesAndCharactersAreFilteredOnTheWayIn) {
  start();
  control->set_BaseURL(u"http://example.org/");
  control->set_relativeURLs(true);
  control->set_AlwaysConvertUnicodeCharacters(true);
  control->set_DocumentHTML(u"<IMG src=\"http://example.org/x.gif\">\u00E9");
  enter();
  EXPECT_EQ(code().Text(), u"<IMG src=\"x.gif\">&#233;\r\n");
}

TEST_F(ViewSwitch, ACharacterInTwoReferencesComesBackAsOne) {
  start();
  control->set_AlwaysConvertUnicodeCharacters(true);
  control->set_DocumentHTML(u"<P title=\"\U0001F600\">\U0001F600</P>");
  const std::u16string before = body();
  enter();
  EXPECT_TRUE(contains(code().Text(), u"&#55357;&#56832;</P>")) << to_utf8(code().Text());
  replace_in_code(u"</P>", u"x</P>");
  control->show_Code();
  EXPECT_EQ(body(), u"<P title=\"\U0001F600\">\U0001F600x</P>");
  control->set_DocumentHTML(control->DocumentHTML());
  EXPECT_EQ(body(), u"<P title=\"\U0001F600\">\U0001F600x</P>");
}

TEST_F(ViewSwitch, TheCodeFollowsADocumentThatIsReverted) {
  start_with(u"<P>one</P>");
  enter();
  replace_in_code(u"one", u"two");
  control->RevertToOriginal();
  EXPECT_EQ(code().Text(), u"<P>one</P>\r\n");
  control->show_Code();
  EXPECT_EQ(body(), u"<P>one</P>");
}

TEST_F(ViewSwitch, TheCodeFollowsALineBreakOfTheHosts) {
  start_with(u"<P>one</P>");
  load(u"<P>one[]</P>");
  enter();
  control->sendCR(false);
  EXPECT_EQ(code().Text(), source::code_of(body()));
  EXPECT_NE(body(), u"<P>one</P>");
  const std::u16string with_line = body();
  control->show_Code();
  EXPECT_EQ(body(), with_line);
}

TEST_F(ViewSwitch, TheCodeFollowsWhatAHostInsertsAndFormats) {
  start_with(u"<P>one</P>");
  load(u"<P>[one]</P>");
  enter();
  control->bold_document();
  EXPECT_EQ(code().Text(), u"<P><B>one</B></P>\r\n");
  control->InsertAtCursor(u"<I>two</I>", ed_InsertType(0));
  EXPECT_EQ(code().Text(), source::code_of(body()));
  EXPECT_TRUE(contains(body(), u"<I>two</I>")) << to_utf8(body());
  control->insert_HR();
  EXPECT_TRUE(contains(code().Text(), u"<HR")) << to_utf8(code().Text());
  const std::u16string made = body();
  control->show_Code();
  EXPECT_EQ(body(), made);
}

TEST_F(ViewSwitch, WhatWasTypedIsInTheDocumentBeforeTheHostsCall) {
  start_with(u"<P>one</P>");
  enter();
  replace_in_code(u"one", u"two");
  control->sendCR(false);
  EXPECT_TRUE(contains(code().Text(), u"two")) << to_utf8(code().Text());
  EXPECT_TRUE(contains(body(), u"two")) << to_utf8(body());
}

TEST_F(ViewSwitch, DisablingTheEditorInTheCodeViewComesBackUntouched) {
  start_with(u"<P>x</P>");
  enter();
  control->set_EditorEnabled(false);
  EXPECT_FALSE(control->InCodeView());
  EXPECT_FALSE(code().attached());
}

TEST_F(ViewSwitch, ClosingInTheCodeViewDetaches) {
  start_with(u"<P>x</P>");
  enter();
  control->UserControl_Terminate();
  EXPECT_FALSE(code().attached());
}

TEST_F(ViewSwitch, AHostMaySwitchBackFromWithin) {
  start_with(u"<P>x</P>");
  int times = 0;
  host.on_view_change = [&](bool&, bool& cancel) {
    if (++times > 1) return;
    control->show_Code();
    cancel = true;
  };
  control->show_Code();
  EXPECT_TRUE(control->InCodeView());
  EXPECT_TRUE(code().attached());
}

}  // namespace
}  // namespace tvx::core
