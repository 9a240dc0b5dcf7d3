#include "core/control_fixture.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

std::vector<std::u16string> visible(platform::Toolbar& toolbar) {
  std::vector<std::u16string> keys;
  for (int i = 1; i <= toolbar.Count(); ++i)
    if (toolbar.Item(i).Visible()) keys.push_back(toolbar.Item(i).Key());
  return keys;
}

TEST_F(Control, ButtonsStandInTheirPlaces) {
  start();
  auto& bar = control->Toolbar1();
  ASSERT_EQ(bar.Count(), 29);
  EXPECT_EQ(bar.Item(1).Key(), u"toggle");
  EXPECT_EQ(bar.Item(10).Key(), u"Bold");
  EXPECT_EQ(bar.Item(18).Key(), u"Find");
  EXPECT_EQ(bar.Item(25).ToolTipText(), u"Insert Image from remote server");
  EXPECT_EQ(bar.Item(8).Image(), u"Centre");
  EXPECT_EQ(bar.Item(29).Key(), u"HR");
  for (int separator : {3, 14, 20}) EXPECT_EQ(bar.Item(separator).Style(), platform::ButtonStyle::Separator);
  ASSERT_EQ(control->Toolbar2().Count(), 12);
  EXPECT_EQ(control->Toolbar2().Item(12).Key(), u"Radio");
  EXPECT_EQ(control->Toolbar2().Item(6).ToolTipText(), u"");
}

TEST_F(Control, WithoutBothGroupsOnlyTheToggleIsLeft) {
  start();
  control->set_showFormattingToolbar1(false);
  control->set_showFormattingToolbar2(false);
  EXPECT_THAT(visible(control->Toolbar1()), ElementsAre(u"toggle"));
  EXPECT_TRUE(control->Toolbar1().Item(1).Enabled());
}

TEST_F(Control, HiddenButtonsMatchWithoutRegardToCaseOnBothToolbars) {
  start();
  control->set_showFormToolbar(true);
  control->set_HiddenButtons(u"print;HR;TextField");
  EXPECT_FALSE(control->Toolbar1().Item(u"Print").Visible());
  EXPECT_FALSE(control->Toolbar1().Item(u"HR").Visible());
  EXPECT_FALSE(control->Toolbar2().Item(u"TextField").Visible());
  EXPECT_TRUE(control->Toolbar2().Item(u"Form").Visible());
}

TEST_F(Control, WithoutTheFormToolbarItsButtonsStay) {
  start();
  control->set_HiddenButtons(u"TextField");
  EXPECT_TRUE(control->Toolbar2().Item(u"TextField").Visible());
}

TEST_F(Control, EntriesAreNotTrimmedAndSeparatorsHaveNoKey) {
  start();
  control->set_HiddenButtons(u"Print; HR;;nothing");
  EXPECT_FALSE(control->Toolbar1().Item(u"Print").Visible());
  EXPECT_TRUE(control->Toolbar1().Item(u"HR").Visible());
  EXPECT_TRUE(control->Toolbar1().Item(3).Visible());
}

TEST_F(Control, TheToggleCanBeHidden) {
  start();
  control->set_HiddenButtons(u"toggle");
  EXPECT_FALSE(control->Toolbar1().Item(1).Visible());
  EXPECT_FALSE(control->Toolbar1().Item(1).Enabled());
  EXPECT_FALSE(control->press(control->Toolbar1(), u"toggle"));
}

TEST_F(Control, AtDesignTimeHiddenButtonsAreOnlyStored) {
  start_at_design_time();
  control->set_HiddenButtons(u"Bold");
  EXPECT_EQ(control->HiddenButtons(), u"Bold");
  EXPECT_TRUE(control->Toolbar1().Item(u"Bold").Visible());
}

TEST_F(Control, FindNeverShows) {
  start();
  EXPECT_FALSE(control->Toolbar1().Item(18).Visible());
  control->set_showFormattingToolbar1(true);
  EXPECT_FALSE(control->Toolbar1().Item(18).Visible());
}

TEST_F(Control, AHostThatCancelsBoldGetsNoCommandAndNoMark) {
  start();
  load(u"<P>[one]</P>");
  host.on_button = [](std::u16string&, bool& cancel) { cancel = true; };
  EXPECT_TRUE(control->press(control->Toolbar1(), u"Bold"));
  EXPECT_EQ(body(), u"<P>one</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(host.heard, ElementsAre("ToolButtonClick: Toolbar1 10 Bold"));
}

TEST_F(Control, WhatAHostWritesIntoTheButtonsNameIsIgnored) {
  start();
  load(u"<P>[one]</P>");
  host.on_button = [](std::u16string& name, bool&) { name = u"Italic"; };
  control->press(control->Toolbar1(), u"Bold");
  EXPECT_EQ(body(), u"<P><B>one</B></P>");
}

TEST_F(Control, UndoOfADocumentThatIsNotDirtyDoesNothing) {
  start();
  load(u"<P>one[]</P>");
  key(u"x", 88);
  std::u16string file = path("saved.html");
  control->Save_document(file, false);
  ASSERT_FALSE(control->IsDirty());
  control->press(control->Toolbar1(), u"Undo");
  EXPECT_EQ(body(), u"<P>onex</P>");
  EXPECT_FALSE(control->IsDirty());
  key(u"Shift", 16);
  control->press(control->Toolbar1(), u"Undo");
  EXPECT_EQ(body(), u"<P>one</P>");
}

TEST_F(Control, FindMadeVisibleSaysItsName) {
  start();
  control->Toolbar1().Item(18).set_Visible(true);
  std::u16string said;
  dialogs.expect(
      {.kind = headless::DialogKind::msgbox, .while_open = [&](const headless::ShownDialog& dialog) {
         said = std::get<platform::MessageBox>(dialog).text;
       }});
  control->press(control->Toolbar1(), u"Find");
  EXPECT_EQ(said, u"Find");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Control, EveryButtonLeavesTheMark) {
  start();
  control->press(control->Toolbar1(), u"Print");
  EXPECT_TRUE(control->IsDirty());
  control->RevertToOriginal();
  control->set_showFormToolbar(true);
  host.heard.clear();
  control->press(control->Toolbar2(), u"Radio");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(host.heard, ElementsAre("ToolButtonClick: FormsToolbar 12 Radio"));
}

// --- layout ---

TEST_F(Control, WithoutToolbarsTheBrowserStartsAtTheTop) {
  start();
  control->set_showFormattingToolbar1(false);
  control->set_showFormattingToolbar2(false);
  control->set_showFormToolbar(false);
  EXPECT_EQ(control->layout().WBrowser.Top, 0);
}

TEST_F(Control, TheFormToolbarMovesTheBrowserDownByItsHeight) {
  start();
  const float before = control->layout().WBrowser.Top;
  control->set_showFormToolbar(true);
  EXPECT_GT(control->layout().Picture2.Height, 0);
  EXPECT_EQ(control->layout().WBrowser.Top, before + control->layout().Picture2.Height);
  EXPECT_EQ(control->layout().Picture2.Top, control->layout().Picture1.Height);
}

TEST_F(Control, AHolderHasOneHeightForARowAndTheToolbarsOwnBeyond) {
  start();
  for (const auto& [natural, holder] :
       {std::pair{500.f, 500.f}, {501.f, 840.f}, {999.f, 840.f}, {1000.f, 1000.f}, {1400.f, 1400.f}}) {
    control->Toolbar1().set_measured_height(natural);
    control->UserControl_Resize();
    EXPECT_EQ(control->layout().Picture1.Height, holder) << natural;
  }
}

TEST_F(Control, ADisabledEditorShowsNoToolbarAndFillsTheArea) {
  start();
  control->set_showFormToolbar(true);
  control->set_EditorEnabled(false);
  const Layout& layout = control->layout();
  EXPECT_FALSE(layout.Picture1.Visible || layout.Picture2.Visible || layout.Picture3.Visible);
  EXPECT_EQ(layout.WBrowser.Top, 10);
  EXPECT_EQ(layout.WBrowser.Width, 9000);
  EXPECT_EQ(layout.WBrowser.Height, 6000 - 15);
}

TEST_F(Control, TheBranchToolbarStandsAtTheBottom) {
  start();
  const Layout& layout = control->layout();
  EXPECT_EQ(layout.Picture3.Width, 9030);
  EXPECT_EQ(control->tlbDOM().Width(), 9060);
  EXPECT_EQ(layout.Picture3.Height, control->tlbDOM().Height() + 2);
  EXPECT_EQ(layout.Picture3.Top, 6000 - layout.Picture3.Height - 19);
  EXPECT_EQ(layout.WBrowser.Height, 6000 - layout.WBrowser.Top - layout.Picture3.Height);
  EXPECT_EQ(layout.txtCode.Height, 6000 - layout.Picture1.Height - 15);
}

// --- formatting operations ---

TEST_F(Control, BoldRunsPressesItsButtonAndMarks) {
  start();
  load(u"<P>[one]</P>");
  control->bold_document();
  EXPECT_EQ(body(), u"<P><B>one</B></P>");
  EXPECT_EQ(control->Toolbar1().Item(10).Value(), 1);
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(Control, BoldIsRefusedWhereItIsNotEnabled) {
  start_with(u"<P>one</P>");
  control->set_EditorEnabled(false);
  container.clear_changed();
  control->bold_document();
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(container.changed(), ElementsAre());
}

TEST_F(Control, StrikeHasNoGuard) {
  start_with(u"<P>one</P>");
  control->set_EditorEnabled(false);
  control->strike_document();
  EXPECT_TRUE(control->IsDirty());
  EXPECT_EQ(body(), u"<P>one</P>");
}

TEST_F(Control, FormattingGoesThroughTheDocumentsCommands) {
  start();
  load(u"<P>[one]</P>");
  control->italic_document();
  control->underline_document();
  control->strike_document();
  EXPECT_EQ(control->Toolbar1().Item(11).Value(), 1);
  EXPECT_EQ(control->Toolbar1().Item(12).Value(), 1);
  EXPECT_EQ(control->Toolbar1().Item(13).Value(), 1);
  control->undo_document();
  control->undo_document();
  control->undo_document();
  EXPECT_EQ(body(), u"<P>one</P>");
  control->redo_document();
  EXPECT_TRUE(contains(body(), u"<I>"));
}

TEST_F(Control, ListsIndentsAndAlignment) {
  start();
  load(u"<P>[one]</P>");
  control->numbered_list();
  EXPECT_TRUE(contains(body(), u"<OL>")) << to_utf8(body());
  control->unnumbered_list();
  EXPECT_TRUE(contains(body(), u"<UL>")) << to_utf8(body());
  start();
  load(u"<P>[one]</P>");
  control->Center_justify();
  EXPECT_TRUE(contains(ascii_lower(body()), u"center")) << to_utf8(body());
  start();
  load(u"<P>[one]</P>");
  control->indent_document();
  EXPECT_TRUE(contains(body(), u"<BLOCKQUOTE")) << to_utf8(body());
  control->unindent_document();
  EXPECT_FALSE(contains(body(), u"<BLOCKQUOTE")) << to_utf8(body());
}

}  // namespace
}  // namespace tvx::core
