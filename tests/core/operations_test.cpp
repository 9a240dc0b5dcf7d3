#include "core/control_fixture.h"
#include "tvx/core/actions.h"
#include "tvx/core/commands/selection_formats.h"
#include "tvx/editing/editor.h"

/// The operations by name and the selection's format, as hosts' own bars use them.
namespace tvx::core {
namespace {

class Operations : public Control {
 protected:
  OperationState state(std::u16string_view name) {
    const auto found = control->actions().state(name);
    EXPECT_TRUE(found) << to_utf8(name);
    return found.value_or(OperationState());
  }
  bool act(std::u16string_view name) { return control->actions().act(name); }
  SelectionFormat format() { return control->selection_formats().current(); }
  void load_and_tell(std::u16string_view content) {
    control->DOM()->select([&](editing::Selection&) { load(content); });
  }
};

TEST_F(Operations, AreKnownByNamesThatDiffer) {
  start();
  auto names = ControlActions::operations();
  const std::size_t count = names.size();
  EXPECT_GT(count, 60u);
  std::ranges::sort(names);
  EXPECT_EQ(std::size_t(std::ranges::unique(names).begin() - names.begin()), count);
  for (const auto name : names) EXPECT_TRUE(control->actions().state(name)) << to_utf8(name);
  EXPECT_FALSE(control->actions().state(u"bold"));
  EXPECT_FALSE(control->actions().state(u""));
  EXPECT_FALSE(act(u"nothing"));
}

TEST_F(Operations, BeforeTheStartNoneCanAct) {
  create();
  for (const auto name : ControlActions::operations()) {
    EXPECT_FALSE(state(name).enabled) << to_utf8(name);
    EXPECT_FALSE(act(name)) << to_utf8(name);
  }
}

TEST_F(Operations, FollowTheSelection) {
  start();
  load_and_tell(u"<p>a <b>[b]</b></p>");
  EXPECT_TRUE(state(u"Bold").on);
  EXPECT_TRUE(state(u"Bold").can_be_on);
  EXPECT_FALSE(state(u"Italic").on);
  EXPECT_FALSE(state(u"Rule").can_be_on);
  EXPECT_TRUE(state(u"Cut").enabled);
  load_and_tell(u"<p>a[] <b>b</b></p>");
  EXPECT_FALSE(state(u"Bold").on);
  EXPECT_EQ(state(u"Cut").obstacle, u"Nothing is selected");
  EXPECT_FALSE(state(u"Cut").enabled);
  EXPECT_TRUE(state(u"Subscript").enabled);
  EXPECT_EQ(state(u"RowAbove").obstacle, u"The caret is in no table");
  load_and_tell(u"<table><tbody><tr><td>[]a</td></tr></tbody></table>");
  EXPECT_TRUE(state(u"RowAbove").enabled);
  EXPECT_FALSE(state(u"MergeCells").enabled);
}

// The cell beside stands between them in the tree.
TEST_F(Operations, FollowSelectedCellsAndNothingBetweenThem) {
  start();
  load_and_tell(
      u"<table><tbody><tr><td><sub><font color=red face=Courier>[a</font></sub></td><td>x</td></tr>"
      u"<tr><td><sub><font color=red face=Courier>b]</font></sub></td><td>y</td></tr></tbody>"
      u"</table>");
  EXPECT_TRUE(state(u"Subscript").on);
  EXPECT_FALSE(state(u"Superscript").on);
  EXPECT_EQ(format().font, u"Courier");
  EXPECT_EQ(format().colour, (dom::style::Color{255, 0, 0, 1}));
  load_and_tell(
      u"<table><tbody><tr><td><sub><font face=Courier>[a</font></sub></td><td>x</td></tr>"
      u"<tr><td>b]</td><td>y</td></tr></tbody></table>");
  EXPECT_FALSE(state(u"Subscript").on);
  EXPECT_EQ(format().font, u"") << "several";
}

TEST_F(Operations, ActAsTheirButtonsWithTheHostsVeto) {
  start();
  load_and_tell(u"<p>[a]</p>");
  EXPECT_TRUE(act(u"Bold"));
  EXPECT_EQ(marked(), u"<P><B>[a]</B></P>");
  EXPECT_EQ(host.heard, std::vector<std::string>{"ToolButtonClick: Toolbar1 10 Bold"});
  host.on_button = [](std::u16string&, bool& cancel) { cancel = true; };
  act(u"Bold");
  EXPECT_EQ(marked(), u"<P><B>[a]</B></P>");
}

/// A host that draws its own bars hides the control's.
TEST_F(Operations, ActWhereTheControlsBarsAreHidden) {
  start();
  control->set_showFormattingToolbar1(false);
  control->set_showFormattingToolbar2(false);
  load_and_tell(u"<p>[a]</p>");
  EXPECT_FALSE(control->Toolbar1().Item(u"Bold").Enabled());
  EXPECT_TRUE(state(u"Bold").enabled);
  EXPECT_TRUE(act(u"Bold"));
  EXPECT_EQ(marked(), u"<P><B>[a]</B></P>");
  EXPECT_TRUE(state(u"Bold").on);
}

TEST_F(Operations, WithoutAButtonAreOneStepEach) {
  start();
  load_and_tell(u"<p>[a]</p>");
  for (const auto& [name, made] : std::vector<std::pair<std::u16string_view, std::u16string_view>>{
           {u"Superscript", u"<P><SUP>[a]</SUP></P>"},
           {u"ClearFormatting", u"<P>[a]</P>"},
           {u"Heading2", u"<H2>[a]</H2>"},
           {u"Paragraph", u"<P>[a]</P>"}}) {
    EXPECT_TRUE(act(name)) << to_utf8(name);
    EXPECT_EQ(to_utf8(marked()), to_utf8(made)) << to_utf8(name);
  }
  EXPECT_TRUE(control->IsDirty());
  control->undo_document();
  EXPECT_EQ(marked(), u"<H2>[a]</H2>");
}

TEST_F(Operations, WhereNobodyMayEditOnlyReadingIsLeft) {
  start_with(u"<P>a</P>");
  control->set_EditorEnabled(false);
  std::vector<std::u16string_view> left;
  load_and_tell(u"<p>[a]</p>");
  for (const auto name : ControlActions::operations())
    if (state(name).enabled) left.push_back(name);
  EXPECT_THAT(left, testing::ElementsAre(u"Print", u"Copy", u"SelectAll"));
  EXPECT_EQ(state(u"Bold").obstacle, u"This page can only be read");
}

TEST_F(Operations, OnAPageOfFramesNothingIsDoneToText) {
  start_with(u"<P>a</P>");
  const std::u16string why = u"This page consists of frames. Its source can be edited.";
  auto page =
      write_file("frames.html", "<frameset cols='50%,50%'><frame src=a.html><frame src=b.html></frameset>");
  control->Open_document(page, true);
  for (const auto name : {u"Bold", u"Heading1", u"Link", u"Image", u"Table", u"Form", u"RowAbove", u"Paste",
                          u"SelectAll", u"Spelling"}) {
    EXPECT_EQ(state(name).obstacle, why) << to_utf8(name);
    EXPECT_FALSE(state(name).enabled) << to_utf8(name);
  }
  EXPECT_TRUE(state(u"Source").enabled);
  EXPECT_TRUE(state(u"Print").enabled);
  EXPECT_EQ(control->Toolbar1().Item(u"Bold").Obstacle(), why);
  EXPECT_EQ(control->Toolbar2().Item(u"TextField").Obstacle(), why);
  page = write_file("page.html", "<p>a</p>");
  control->Open_document(page, true);
  load_and_tell(u"<p>[a]</p>");
  EXPECT_TRUE(state(u"Bold").enabled);
  EXPECT_EQ(control->Toolbar1().Item(u"Bold").Obstacle(), u"");
  EXPECT_EQ(control->Toolbar2().Item(u"TextField").Obstacle(), u"");
}

TEST_F(Operations, WithoutADictionaryStayWithoutOneAfterAPageOfFrames) {
  start_with(u"<P>a</P>");
  control->Toolbar1().Item(u"Spell Check").set_Obstacle(u"No dictionary is installed");
  for (const char* text : {"<frameset><frame src=a.html></frameset>", "<p>a</p>"}) {
    auto page = write_file("page.html", text);
    control->Open_document(page, true);
    load_and_tell(u"<p>[a]</p>");
    EXPECT_EQ(control->Toolbar1().Item(u"Spell Check").Obstacle(), u"No dictionary is installed");
  }
}

TEST_F(Operations, InTheCodeOnlyItsOwnAreLeft) {
  start_with(u"<P>a</P>");
  EXPECT_TRUE(act(u"Source"));
  ASSERT_TRUE(control->InCodeView());
  std::vector<std::u16string_view> left;
  for (const auto name : ControlActions::operations())
    if (state(name).enabled) left.push_back(name);
  EXPECT_THAT(left, testing::ElementsAre(u"Source", u"Copy", u"Cut", u"Paste", u"PasteText", u"SelectAll",
                                         u"Undo", u"Redo"));
  EXPECT_TRUE(state(u"Source").on);
  EXPECT_EQ(state(u"Bold").obstacle, u"This works on the page, not on its code");
  EXPECT_TRUE(act(u"SelectAll"));
  EXPECT_EQ(control->txtCode().TextBox1().SelLength(), control->txtCode().TextBox1().length());
  EXPECT_TRUE(act(u"Source"));
  EXPECT_FALSE(control->InCodeView());
}

TEST_F(Operations, OfALinkNeedOne) {
  start();
  load_and_tell(u"<p>a[] <a href=\"x\">b</a></p>");
  EXPECT_EQ(state(u"Unlink").obstacle, u"There is no link");
  load_and_tell(u"<p>a <a href=\"x\">b[]</a></p>");
  EXPECT_TRUE(act(u"Unlink"));
  EXPECT_EQ(marked(), u"<P>a b[]</P>");
}

// --- quotations ---

TEST_F(Operations, AQuotationIsPutAroundAndTakenAway) {
  start();
  load_and_tell(u"<p>a[]</p>");
  EXPECT_TRUE(act(u"Quotation"));
  EXPECT_EQ(marked(), u"<BLOCKQUOTE><P>a[]</P></BLOCKQUOTE>");
  EXPECT_TRUE(state(u"Quotation").on);
  EXPECT_FALSE(state(u"Paragraph").on);
  EXPECT_TRUE(act(u"Quotation"));  // it is one already
  EXPECT_EQ(marked(), u"<BLOCKQUOTE><P>a[]</P></BLOCKQUOTE>");
  EXPECT_TRUE(act(u"Heading1"));
  EXPECT_EQ(marked(), u"<BLOCKQUOTE><H1>a[]</H1></BLOCKQUOTE>");
  control->undo_document();
  EXPECT_EQ(marked(), u"<BLOCKQUOTE><P>a[]</P></BLOCKQUOTE>");
  EXPECT_EQ(format().paragraph_style, u"blockquote");
  EXPECT_TRUE(act(u"Paragraph"));
  EXPECT_EQ(marked(), u"<P>a[]</P>");
  control->undo_document();
  EXPECT_EQ(marked(), u"<BLOCKQUOTE><P>a[]</P></BLOCKQUOTE>");
}

TEST_F(Operations, AListIsNoQuotation) {
  start();
  load_and_tell(u"<ul><li>a[]</li></ul>");
  EXPECT_EQ(state(u"Quotation").obstacle, u"A list can't be a quotation");
  EXPECT_FALSE(act(u"Quotation"));
  EXPECT_EQ(marked(), u"<UL><LI>a[]</LI></UL>");
}

// --- the selection's format ---

TEST_F(Operations, TheFormatIsWhatAllOfTheSelectionHas) {
  start();
  load_and_tell(
      u"<h2 class=\"big\"><font face=\"Arial\" size=\"5\" color=\"#ff0000\"><span style=\"background-color: "
      u"yellow\">[a]</span></font></h2>");
  const SelectionFormat one = format();
  EXPECT_EQ(one.paragraph_style, u"h2");
  EXPECT_EQ(one.font, u"Arial");
  EXPECT_EQ(one.size, 5);
  ASSERT_TRUE(one.colour && one.highlight);
  EXPECT_EQ(one.colour->red, 255);
  EXPECT_EQ(one.highlight->blue, 0);
  EXPECT_EQ(one.style_class, u"big");
  load_and_tell(u"<p>[a <font face=\"Arial\" size=\"5\" color=\"red\">b</font></p><h1>c]</h1>");
  const SelectionFormat several = format();
  EXPECT_TRUE(several.several_paragraph_styles);
  EXPECT_EQ(several.paragraph_style, u"");
  EXPECT_EQ(several.font, u"");
  EXPECT_EQ(several.size, 0);
  EXPECT_FALSE(several.colour || several.highlight);
}

TEST_F(Operations, AFormatIsSetInOneStep) {
  start();
  load_and_tell(u"<p>[a]</p>");
  control->selection_formats().set(u"FontSize", u"5");
  control->selection_formats().set(u"ForeColor", u"#00ff00");
  EXPECT_EQ(format().size, 5);
  EXPECT_EQ(format().colour->green, 255);
  EXPECT_TRUE(control->IsDirty());
  control->undo_document();
  EXPECT_EQ(format().size, 5);
  EXPECT_EQ(format().colour->green, 0);
}

// --- news ---

struct Listener final : HTMLedObserver {
  int states = 0, loads = 0;
  void state_changed() override { ++states; }
  void document_loaded() override { ++loads; }
};

TEST_F(Operations, WhatMayChangeThemIsTold) {
  start_with(u"<P>a</P>");
  Listener listener;
  control->add_observer(listener);
  const auto told = [&] { return std::exchange(listener.states, 0) > 0; };
  load_and_tell(u"<p>[a]</p>");
  EXPECT_TRUE(told());
  key(u"x", 88);
  EXPECT_TRUE(told());
  clipboard.publish({{"text/plain", "pasted"}});
  EXPECT_TRUE(told());
  EXPECT_EQ(listener.loads, 0);
  std::u16string file = write_file("b.html", "<P>b</P>");
  control->Open_document(file, true);
  loop.settle();
  EXPECT_GT(listener.loads, 0);
  control->remove_observer(listener);
}

}  // namespace
}  // namespace tvx::core
