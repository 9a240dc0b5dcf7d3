#include "core/control_fixture.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;

/// The style sheet's text goes into the first sheet, which the template brings.
class Formatting : public Control {
 protected:
  void start_with_sheet(std::u16string_view sheet, std::u16string_view html) {
    create();
    control->set_CSShttp(false);
    control->set_CSSText(sheet);
    control->UserControl_Show();
    control->set_DocumentHTML(html);
    host.heard.clear();
    container.clear_changed();
  }
  std::vector<std::string> classes() const {
    std::vector<std::string> names;
    for (const auto& item : control->style_classes())
      names.push_back(std::to_string(item.index) + " " + to_utf8(item.name));
    return names;
  }
  void select_image() { control->DOM()->mouse_press(at(element(dom::Tag::Img))); }
};

TEST_F(Formatting, EveryOperationRunsItsCommandAndMarksTheDocument) {
  const struct {
    void (HTMLed::*operation)();
    std::u16string_view before, after;
  } cases[] = {
      {&HTMLed::bold_document, u"<P>[one]</P>", u"<P><B>[one]</B></P>"},
      {&HTMLed::italic_document, u"<P>[one]</P>", u"<P><I>[one]</I></P>"},
      {&HTMLed::underline_document, u"<P>[one]</P>", u"<P><U>[one]</U></P>"},
      {&HTMLed::strike_document, u"<P>[one]</P>", u"<P><S>[one]</S></P>"},
      {&HTMLed::indent_document, u"<P>[one]</P>", u"<BLOCKQUOTE><P>[one]</P></BLOCKQUOTE>"},
      {&HTMLed::unindent_document, u"<BLOCKQUOTE><P>[one]</P></BLOCKQUOTE>", u"<P>[one]</P>"},
      {&HTMLed::Left_Justify, u"<DIV style=\"text-align: center\"><P>[one]</P></DIV>", u"<P>[one]</P>"},
      {&HTMLed::Center_justify, u"<P>[one]</P>", u"<DIV style=\"text-align: center\"><P>[one]</P></DIV>"},
      {&HTMLed::Right_justify, u"<P>[one]</P>", u"<DIV style=\"text-align: right\"><P>[one]</P></DIV>"},
      {&HTMLed::numbered_list, u"<P>[one]</P>", u"<OL><LI>[one]</LI></OL>"},
      {&HTMLed::unnumbered_list, u"<P>[one]</P>", u"<UL><LI>[one]</LI></UL>"},
  };
  start();
  for (const auto& [operation, before, after] : cases) {
    control->set_DocumentHTML(u"");
    load(before);
    container.clear_changed();
    ASSERT_FALSE(control->IsDirty());
    (control.get()->*operation)();
    EXPECT_EQ(to_utf8(marked()), to_utf8(after));
    EXPECT_TRUE(control->IsDirty()) << to_utf8(after);
    EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML")) << to_utf8(after);
    control->undo_document();
    EXPECT_EQ(to_utf8(marked()), to_utf8(before)) << "one step";
  }
}

TEST_F(Formatting, BoldOverAControlDoesNothingAndLeavesTheFlag) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  select_image();
  ASSERT_FALSE(control->DOM()->queryCommandEnabled(u"Bold"));
  container.clear_changed();
  control->Toolbar1().Item(10).set_Value(1);
  control->bold_document();
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(control->Toolbar1().Item(10).Value(), 1) << "the button was left alone";
  EXPECT_THAT(container.changed(), ElementsAre());
  control->italic_document();
  control->underline_document();
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(Formatting, StrikeThroughHasNoGuard) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  select_image();
  control->Toolbar1().Item(13).set_Value(1);
  control->strike_document();
  EXPECT_TRUE(control->IsDirty());
  EXPECT_EQ(control->Toolbar1().Item(13).Value(), 0) << "the button was asked for";
  EXPECT_EQ(body(), u"<P>x<IMG src=\"a.gif\"></P>");
}

TEST_F(Formatting, AToggleSetsItsButton) {
  start_with(u"");
  load(u"<P>[one]</P>");
  control->bold_document();
  EXPECT_EQ(control->Toolbar1().Item(10).Value(), 1);
  control->bold_document();
  EXPECT_EQ(control->Toolbar1().Item(10).Value(), 0);
  control->italic_document();
  EXPECT_EQ(control->Toolbar1().Item(11).Value(), 1);
  control->underline_document();
  EXPECT_EQ(control->Toolbar1().Item(12).Value(), 1);
}

TEST_F(Formatting, AFailingCommandStillMarksTheDocument) {
  start_with(u"<P>x</P>");
  control->set_EditorEnabled(false);
  ASSERT_FALSE(control->IsDirty());
  control->indent_document();
  EXPECT_EQ(body(), u"<P>x</P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Formatting, UndoAndRedoGoToTheViewInFront) {
  start_with(u"");
  load(u"<P>[one]</P>");
  control->bold_document();
  control->show_Code();
  control->txtCode().edit(u"<P>typed</P>");
  control->undo_document();
  EXPECT_EQ(control->DOM()->tree().body() ? body() : u"", u"<P><B>one</B></P>")
      << "the document is not the view in front";
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Formatting, ARuleTakesTheSelectionsPlace) {
  start_with(u"");
  load(u"<P>one[two]three</P>");
  control->insert_HR();
  EXPECT_EQ(body(), u"<P>one</P><HR><P>three</P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Formatting, ARuleOverAControlIsReportedAndTheDocumentMarked) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  select_image();
  host.heard.clear();
  control->insert_HR();
  EXPECT_THAT(host.heard,
              ElementsAre("Error: 993 InsertAtCursor failed : Can not insert over a single control element"));
  EXPECT_TRUE(control->IsDirty());
}

// --- FormatSelection ---

TEST_F(Formatting, FormatSelectionWrapsTheWordAtTheCaret) {
  start_with(u"");
  load(u"<P>one t[]wo three</P>");
  control->FormatSelection(u"<B>", u"</B>");
  EXPECT_EQ(body(), u"<P>one <B>two</B> three</P>");
  EXPECT_TRUE(control->IsDirty());
  control->undo_document();
  EXPECT_EQ(body(), u"<P>one two three</P>");
}

TEST_F(Formatting, FormatSelectionWrapsTheSelectionWithItsMarkup) {
  start_with(u"");
  load(u"<P>one [two <I>three</I>] four</P>");
  control->FormatSelection(u"<EM>", u"</EM>");
  EXPECT_EQ(body(), u"<P>one <EM>two <I>three</I></EM> four</P>");
}

TEST_F(Formatting, FormatSelectionAcrossBlocksKeepsTheWrapperAndTheBlocks) {
  start_with(u"");
  const auto expect_wrapped = [&](std::u16string_view before, std::string_view after) {
    load(before);
    control->FormatSelection(u"<A href=\"x\">", u"</A>");
    EXPECT_EQ(to_utf8(body()), after);
    control->undo_document();
    EXPECT_EQ(to_utf8(marked()), to_utf8(before));
  };
  expect_wrapped(u"<P>[one</P><P>two]</P><P>three</P>", "<A href=\"x\"><P>one</P><P>two</P></A><P>three</P>");
  expect_wrapped(u"<P>a[b</P><P>c]d</P>", "<P>a</P><A href=\"x\"><P>b</P><P>c</P></A><P>d</P>");
  expect_wrapped(u"<H1>[one]</H1>", "<A href=\"x\"><H1>one</H1></A>");
  expect_wrapped(u"<UL><LI>[one]</LI><LI>two</LI></UL>",
                 "<UL><LI><A href=\"x\">one</A></LI><LI>two</LI></UL>");
  expect_wrapped(u"<UL><LI>[one</LI><LI>two]</LI><LI>three</LI></UL>",
                 "<UL><LI><A href=\"x\">one</A></LI><LI><A href=\"x\">two</A></LI><LI>three</LI></UL>");
  expect_wrapped(u"<TABLE><TBODY><TR><TD>[one]</TD></TR></TBODY></TABLE>",
                 "<TABLE><TBODY><TR><TD><A href=\"x\">one</A></TD></TR></TBODY></TABLE>");
}

TEST_F(Formatting, FormatSelectionPutsABlockIntoEachItem) {
  start_with(u"");
  const auto expect_wrapped = [&](std::u16string_view before, std::string_view after) {
    load(before);
    control->FormatSelection(u"<DIV>", u"</DIV>");
    EXPECT_EQ(to_utf8(body()), after);
    control->undo_document();
    EXPECT_EQ(to_utf8(marked()), to_utf8(before));
  };
  expect_wrapped(u"<UL><LI>[one]</LI><LI>two</LI></UL>", "<UL><LI><DIV>one</DIV></LI><LI>two</LI></UL>");
  expect_wrapped(u"<UL><LI>o[ne</LI><LI>tw]o</LI></UL>",
                 "<UL><LI>o</LI><LI><DIV>ne</DIV></LI><LI><DIV>tw</DIV></LI><LI>o</LI></UL>");
  expect_wrapped(u"<DL><DT>[one]</DT><DD>two</DD></DL>", "<DL><DT><DIV>one</DIV></DT><DD>two</DD></DL>");
  expect_wrapped(u"<UL><LI>[one</LI><LI>two]</LI></UL>", "<DIV><UL><LI>one</LI><LI>two</LI></UL></DIV>");
}

TEST_F(Formatting, FormatSelectionOverAControlIsReportedAndLeavesAll) {
  start_with(u"<P>x<IMG src=\"a.gif\"></P>");
  select_image();
  host.heard.clear();
  control->FormatSelection(u"<B>", u"</B>");
  EXPECT_THAT(host.heard, ElementsAre("Error: 5 Selection fomatting could not be applied : "
                                      "Object doesn't support this property or method"));
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(body(), u"<P>x<IMG src=\"a.gif\"></P>");
  EXPECT_EQ(control->DOM()->editor().selection().control(), element(dom::Tag::Img)) << "the selection stands";
}

// --- classes ---

TEST_F(Formatting, ClassesKeepTheirRulesPlacesInTheSheet) {
  start_with_sheet(u"p { } .a { } .b { }", u"<P>x</P>");
  EXPECT_THAT(classes(), ElementsAre("2 a", "3 b"));
}

TEST_F(Formatting, ClassesAreTakenAsTheyAreWritten) {
  start_with_sheet(u".a:hover { } p.note { } .a .b { } .c, .d { } @media print { .e { } } .f { }", u"");
  EXPECT_THAT(classes(), ElementsAre("1 a:hover", "3 a .b", "4 c, .d", "6 f"));
}

TEST_F(Formatting, ASheetWithoutRulesLeavesNoClass) {
  start_with_sheet(u".a { }", u"<P>x</P>");
  ASSERT_THAT(classes(), ElementsAre("1 a"));
  control->set_CSSText(u"");
  EXPECT_THAT(classes(), ElementsAre());
}

TEST_F(Formatting, ADocumentWithoutASheetHasNoClasses) {
  start_with_sheet(u".a { }", u"<P>x</P>");
  auto file = write_file("7654321.html", "<title>t</title><p>no sheet</p>");
  control->WBrowser().Navigate(file);
  loop.settle();
  EXPECT_THAT(classes(), ElementsAre());
}

TEST_F(Formatting, AClassGoesAroundSeveralParagraphs) {
  start_with_sheet(u".a { } .b { }", u"<P>one</P><P>two</P><P>three</P>");
  load(u"<P>[one</P><P>two]</P><P>three</P>");
  control->mnuMiscClass_Click(2);
  EXPECT_EQ(to_utf8(body()), "<SPAN class=\"b\"><P>one</P><P>two</P></SPAN><P>three</P>");
}

TEST_F(Formatting, ALineBreakIsNoKeyForASelectedImage) {
  start_with(u"<P>x<IMG src=\"a.gif\">y</P>");
  select_image();
  control->sendCR(true);
  EXPECT_EQ(body(), u"<P>x<IMG src=\"a.gif\">y</P>");
}

TEST_F(Formatting, AHostsLineBreakIsOneBreakWhereverTheCaretStands) {
  start_with(u"");
  const auto expect_broken = [&](std::u16string_view before, std::string_view after) {
    load(before);
    control->sendCR(true);
    EXPECT_EQ(to_utf8(marked()), after) << to_utf8(before);
    control->undo_document();
    EXPECT_EQ(to_utf8(marked()), to_utf8(before)) << "in one step";
  };
  expect_broken(u"<P>one[]two</P>", "<P>one<BR>[]two</P>");
  expect_broken(u"<P>one[]</P>", "<P>one<BR>{}</P>");
  expect_broken(u"<P>one<B>two[]</B></P>", "<P>one<B>two<BR>{}</B></P>");
  expect_broken(u"<P>{}<BR></P>", "<P><BR>{}</P>");
  expect_broken(u"<UL><LI>{}<BR></LI></UL>", "<UL><LI><BR>{}</LI></UL>");
  expect_broken(u"{}", "<P><BR>{}</P>");
}

TEST_F(Formatting, AFontWithoutANameChangesNothing) {
  start_with(u"");
  load(u"<P>one [two] three</P>");
  EXPECT_FALSE(control->DOM()->execCommand(u"FontName", false, u""));
  EXPECT_EQ(to_utf8(marked()), "<P>one [two] three</P>");
}

TEST_F(Formatting, TheCurrentElementGetsAClassAndLosesIt) {
  start_with_sheet(u".a { } .b { }", u"<P>one</P><DIV>two</DIV>");
  control->DOM()->mouse_press(at(element(dom::Tag::Div)));
  host.heard.clear();
  control->mnuClass_Click(2);
  EXPECT_EQ(body(), u"<P>one</P><DIV class=\"b\">two</DIV>");
  EXPECT_TRUE(control->IsDirty());
  control->mnuClass_Click(0);
  EXPECT_EQ(body(), u"<P>one</P><DIV>two</DIV>");
  EXPECT_EQ(host.count("MenuClick: DOMCSSClass"), 2u);
  control->undo_document();
  EXPECT_EQ(body(), u"<P>one</P><DIV class=\"b\">two</DIV>");
}

TEST_F(Formatting, AClassForNoCurrentElementStillMarksTheDocument) {
  start_with_sheet(u".a { }", u"<P>one</P>");
  control->UserControl_ExitFocus();
  control->mnuClass_Click(1);
  EXPECT_EQ(body(), u"<P>one</P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Formatting, AHostForbidsAClass) {
  start_with_sheet(u".a { }", u"<P>one</P>");
  control->DOM()->mouse_press(at(element(dom::Tag::P)));
  host.on_menu = [](std::u16string&, bool& cancel) {
    EXPECT_FALSE(cancel) << "false on entry";
    cancel = true;
  };
  control->mnuClass_Click(1);
  load(u"<P>o[n]e</P>");
  control->mnuMiscClass_Click(1);
  EXPECT_EQ(body(), u"<P>one</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(host.count("MenuClick: DOMCSSClass"), 1u);
  EXPECT_EQ(host.count("MenuClick: ContextCSSClass"), 1u);
}

TEST_F(Formatting, APartOfAParagraphGetsASpanWithTheClass) {
  start_with_sheet(u".a { } .b { }", u"");
  load(u"<P>one [two] three</P>");
  control->mnuMiscClass_Click(1);
  EXPECT_EQ(body(), u"<P>one <SPAN class=\"a\">two</SPAN> three</P>");
}

TEST_F(Formatting, TheWordAtTheCaretGetsASpanWithTheClass) {
  start_with_sheet(u".a { }", u"");
  load(u"<P>one t[]wo three</P>");
  control->mnuMiscClass_Click(1);
  EXPECT_EQ(body(), u"<P>one <SPAN class=\"a\">two</SPAN> three</P>");
}

TEST_F(Formatting, ASecondClassForTheSameSpanReplacesTheFirst) {
  start_with_sheet(u".a { } .b { }", u"");
  load(u"<P>one [two] three</P>");
  control->mnuMiscClass_Click(1);
  load(u"<P>one <SPAN class=\"a\">[two]</SPAN> three</P>");
  control->mnuMiscClass_Click(2);
  EXPECT_EQ(body(), u"<P>one <SPAN class=\"b\">two</SPAN> three</P>");
  load(u"<P>one <SPAN class=\"b\">t[]wo</SPAN> three</P>");
  control->mnuMiscClass_Click(1);
  EXPECT_EQ(body(), u"<P>one <SPAN class=\"a\">two</SPAN> three</P>") << "the word is all of the span";
  load(u"<P>one <SPAN class=\"a\">[two]</SPAN> three</P>");
  control->mnuMiscClass_Click(0);
  EXPECT_EQ(body(), u"<P>one <SPAN>two</SPAN> three</P>");
}

TEST_F(Formatting, AWholeElementGetsTheClassItself) {
  start_with_sheet(u".a { }", u"");
  load(u"<P>one</P><P>[two]</P>");
  control->mnuMiscClass_Click(1);
  EXPECT_EQ(body(), u"<P>one</P><P class=\"a\">two</P>");
}

TEST_F(Formatting, NoClassForAPartOfAParagraphChangesNothingAndMarksTheDocument) {
  start_with_sheet(u".a { }", u"");
  load(u"<P>one [two] three</P>");
  ASSERT_FALSE(control->IsDirty());
  control->mnuMiscClass_Click(0);
  EXPECT_EQ(body(), u"<P>one two three</P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Formatting, AClassOverAControlIsReported) {
  start_with_sheet(u".a { }", u"<P>x<IMG src=\"a.gif\"></P>");
  select_image();
  host.heard.clear();
  control->mnuMiscClass_Click(1);
  EXPECT_THAT(host.heard,
              ElementsAre("MenuClick: ContextCSSClass",
                          "Error: 4 When applying styles the selection cannot span control elements"));
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(body(), u"<P>x<IMG src=\"a.gif\"></P>");
}

// --- links ---

TEST_F(Formatting, ALinkUnderTheMouseBecomesRelativeBeforeTheDialogOpens) {
  start();
  control->set_BaseURL(u"http://example.org/site/page.html");
  control->set_relativeURLs(true);
  control->set_DocumentHTML(u"<P><A href=\"HTTP://EXAMPLE.ORG/site/page.html#part\"><B>link</B></A></P>");
  host.inside = [&](const std::string& name) {
    if (name == "DocumentClick") control->insert_Link();
  };
  control->DOM()->click(at(element(dom::Tag::B)));
  EXPECT_EQ(body(), u"<P><A href=\"#part\"><B>link</B></A></P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Formatting, AnAnchorWithoutAnAddressGetsNone) {
  start();
  control->set_relativeURLs(true);
  control->set_DocumentHTML(u"<P><A name=\"n\">place</A></P>");
  host.inside = [&](const std::string& name) {
    if (name == "DocumentClick") control->insert_Link();
  };
  control->DOM()->click(at(element(dom::Tag::A)));
  EXPECT_EQ(body(), u"<P><A name=\"n\">place</A></P>");
}

TEST_F(Formatting, ALinkMadeRelativeIsNoStepOfItsOwn) {
  start();
  control->set_BaseURL(u"http://example.org/");
  control->set_relativeURLs(true);
  control->set_DocumentHTML(u"<P><A href=\"http://example.org/a.html\">link</A></P>");
  host.inside = [&](const std::string& name) {
    if (name == "DocumentClick") control->insert_Link();
  };
  control->DOM()->click(at(element(dom::Tag::A)));
  EXPECT_EQ(body(), u"<P><A href=\"a.html\">link</A></P>");
  EXPECT_EQ(control->DOM()->tree().journal().depth(), 0u) << "the dialog was cancelled";
}

TEST_F(Formatting, WithAbsoluteAddressesALinkIsLeftAsItIs) {
  start();
  control->set_BaseURL(u"http://example.org/site/");
  control->set_DocumentHTML(u"<P><A href=\"http://example.org/site/page.html#part\">link</A></P>");
  host.inside = [&](const std::string& name) {
    if (name == "DocumentClick") control->insert_Link();
  };
  control->DOM()->click(at(element(dom::Tag::A)));
  EXPECT_EQ(body(), u"<P><A href=\"http://example.org/site/page.html#part\">link</A></P>");
}

}  // namespace
}  // namespace tvx::core
