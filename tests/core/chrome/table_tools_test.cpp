#include "core/control_fixture.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/dom/journal.h"
#include "tvx/platform/loaded_dialogs.h"

/// Tables by menu, button and host's call: what the control does around the work itself.
namespace tvx::core {
namespace {

using browser::MouseButton;
using dom::Tag;
using testing::ElementsAre;
using testing::IsEmpty;

class TableTools : public Control {
 protected:
  /// As hosts start: the words of the cell and row submenu come with the stored properties.
  void start_with(std::u16string_view html) {
    control = make(container);
    control->set_size(9000, 6000);
    control->UserControl_ReadProperties(headless::PropertyBag());
    control->UserControl_Show();
    show(html);
  }
  void show(std::u16string_view html) {
    control->set_DocumentHTML(html);
    host.heard.clear();
    container.clear_changed();
  }
  dom::Element* the(Tag tag, std::size_t number = 0) const {
    for (dom::Element* each : control->DOM()->tree().all())
      if (each->is(tag) && number-- == 0) return each;
    return nullptr;
  }
  std::u16string path_key(dom::Element* target) const {
    return u"KEY" + from_utf8(std::to_string(control->DOM()->tree().source_index(*target)));
  }
  /// Presses an element's button in the element path, with an item of the menu that opens then.
  void choose_in_path(dom::Element* target, std::u16string item) {
    control->DOM()->mouse_press(at(target));
    host.heard.clear();
    container.clear_changed();
    menus.expect({.menu = u"mnuToolProp", .choose = std::move(item)});
    ASSERT_TRUE(control->press(control->tlbDOM(), path_key(target)));
  }
  /// A right press on a table, with an item of its menu.
  void choose_in_table_menu(std::u16string item, dom::Element* table = nullptr) {
    menus.expect({.menu = u"mnuT", .choose = std::move(item)});
    control->DOM()->mouse_press(at(table ? table : element(Tag::Table), MouseButton::Right));
  }
  /// What the user does with the next dialog.
  void expect_dialog(std::u16string name, std::function<void(platform::Form&)> fill, std::u16string press) {
    forms.expect({.form = std::move(name), .while_open = std::move(fill), .press = std::move(press)});
  }
  std::size_t steps() const { return control->DOM()->tree().journal().depth(); }
  std::u16string content() { return control->DocumentHTML(); }

  /// Acts once, compares. Also: it was one step of undo, which gives the first text back to the letter, and
  /// redo the second; the document counts as changed.
  void expect_one_step(std::u16string_view before, const std::function<void()>& act,
                       std::u16string_view after) {
    show(before);
    const std::u16string first = content();
    act();
    EXPECT_TRUE(control->IsDirty()) << to_utf8(before);
    EXPECT_EQ(content(), after);
    EXPECT_EQ(steps(), 1u) << to_utf8(before);
    control->undo_document();
    EXPECT_EQ(content(), first);
    control->redo_document();
    EXPECT_EQ(content(), after);
  }
};

constexpr char16_t two_by_two[] =
    u"<TABLE><TBODY><TR><TD>1</TD><TD>2</TD></TR><TR><TD>3</TD><TD>4</TD></TR></TBODY></TABLE>";

// --- cells and rows, by the element path ---

TEST_F(TableTools, ItemsForACell) {
  start_with(two_by_two);
  const std::pair<const char16_t*, const char16_t*> cases[] = {
      {u"MnuCellRowActionsDelete", u"<TR><TD>3</TD></TR>"},
      {u"MnuCellRowActionsInsertCellBefore", u"<TR><TD>3</TD><TD></TD><TD>4</TD></TR>"},
      {u"MnuCellRowActionsInsertCellAfter", u"<TR><TD></TD><TD>3</TD><TD>4</TD></TR>"},
      {u"MnuCellRowActionsMergeCellLeft", u"<TR><TD colspan=\"2\">34</TD></TR>"},
      {u"MnuCellRowActionsMergeCellRight", u"<TR><TD>3</TD><TD colspan=\"2\">4</TD></TR>"}};
  for (const auto& [item, row] : cases)
    expect_one_step(
        two_by_two, [&] { choose_in_path(the(Tag::Td, 3), item); },
        u"<TABLE><TBODY><TR><TD>1</TD><TD>2</TD></TR>" + std::u16string(row) + u"</TBODY></TABLE>");
}

TEST_F(TableTools, ItemsForARow) {
  start_with(two_by_two);
  const std::u16string first = u"<TR><TD>1</TD><TD>2</TD></TR>", second = u"<TR><TD>3</TD><TD>4</TD></TR>",
                       fresh = u"<TR><TD></TD><TD></TD></TR>";
  const std::pair<const char16_t*, std::u16string> cases[] = {
      {u"MnuCellRowActionsDelete", first},
      {u"MnuCellRowActionsInsertRowAbove", first + fresh + second},
      {u"MnuCellRowActionsInsertRowBelow", first + second + fresh}};
  for (const auto& [item, rows] : cases)
    expect_one_step(
        two_by_two, [&] { choose_in_path(the(Tag::Tr, 1), item); },
        u"<TABLE><TBODY>" + rows + u"</TBODY></TABLE>");
}

TEST_F(TableTools, EachItemTellsItsKeyThenTheContainerThenTheFlag) {
  start_with(two_by_two);
  host.inside = [&](const std::string& event) {
    if (event == "MenuClick") {
      EXPECT_FALSE(control->IsDirty());
    }
  };
  choose_in_path(the(Tag::Td), u"MnuCellRowActionsDelete");
  EXPECT_THAT(host.heard, ElementsAre("MenuClick: DOMCELLROWRemove"));
  EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML"));
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(TableTools, AHostThatCancelsLeavesEverything) {
  start_with(two_by_two);
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  for (const platform::Menu* item : platform::all_items(*control->menu(u"MnuCellRowActions"))) {
    const bool row = item->Name().find(u"Row", 17) != std::u16string::npos;
    choose_in_path(the(row ? Tag::Tr : Tag::Td), item->Name());
    EXPECT_THAT(host.heard, ElementsAre("MenuClick: " + to_utf8(ContextMenus::key_of(*item))));
    EXPECT_EQ(content(), two_by_two);
    EXPECT_FALSE(control->IsDirty());
    EXPECT_THAT(container.changed(), IsEmpty());
  }
  EXPECT_EQ(steps(), 0u);
}

TEST_F(TableTools, WhatCantBeDoneMarksAllTheSame) {
  start_with(u"<TABLE><THEAD><TR><TH>h</TH></TR></THEAD><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
  choose_in_path(the(Tag::Tr, 1), u"MnuCellRowActionsDelete");
  EXPECT_EQ(content(),
            u"<TABLE><THEAD><TR><TH>h</TH></TR></THEAD><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(host.heard, testing::Not(testing::Contains(testing::StartsWith("Error"))));
}

TEST_F(TableTools, MergingTheFirstCellLeftLosesItAndMarks) {
  start_with(two_by_two);
  choose_in_path(the(Tag::Td), u"MnuCellRowActionsMergeCellLeft");
  EXPECT_EQ(content(), u"<TABLE><TBODY><TR><TD>2</TD></TR><TR><TD>3</TD><TD>4</TD></TR></TBODY></TABLE>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(TableTools, DeletingTellsCellsFromRowsInAnyLanguage) {
  control = make(container);
  control->set_size(9000, 6000);
  control->UserControl_ReadProperties(headless::PropertyBag());
  control->UserControl_Show();
  show(two_by_two);
  control->DOM()->mouse_press(at(the(Tag::Td)));
  menus.expect(
      {.menu = u"mnuToolProp", .choose = u"MnuCellRowActionsDelete", .while_open = [&](platform::Menu&) {
         // Another program's words: no cell's any more.
         control->menu(u"MnuCellRowActionsDelete")->set_Caption(u"delete cell");
       }});
  control->press(control->tlbDOM(), path_key(the(Tag::Td)));
  EXPECT_EQ(content(), two_by_two) << "a cell is no row, and nothing can be done";
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(TableTools, InTheWordsOfALanguageFileToo) {
  start_with(two_by_two);
  control->set_LocalizationFile(from_utf8(TVX_SOURCE_DIR "/languages/de.xml"));
  choose_in_path(the(Tag::Tr, 1), u"MnuCellRowActionsDelete");
  EXPECT_EQ(control->menu(u"MnuCellRowActionsDelete")->Caption(), control->table_labels().delete_row);
  EXPECT_NE(control->table_labels().delete_row, u"Delete Row");
  EXPECT_EQ(content(), u"<TABLE><TBODY><TR><TD>1</TD><TD>2</TD></TR></TBODY></TABLE>");
  choose_in_path(the(Tag::Td, 1), u"MnuCellRowActionsDelete");
  EXPECT_EQ(content(), u"<TABLE><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
}

TEST_F(TableTools, AfterADeletionTheCurrentElementIsTheOneThatLeft) {
  start_with(two_by_two);
  const dom::Ref<dom::Element> cell = the(Tag::Td);
  choose_in_path(cell.get(), u"MnuCellRowActionsDelete");
  EXPECT_EQ(control->highlightElement(), cell.get());
  EXPECT_FALSE(dom::is_connected(*cell));
  const std::u16string after = content();
  control->menu(u"MnuCellRowActionsDelete")->choose();
  EXPECT_EQ(content(), after);
}

TEST_F(TableTools, WhatIsTypedAfterADeletionStaysInTheTable) {
  start_with(two_by_two);
  for (const auto& [tag, after] :
       {std::pair{Tag::Td,
                  u"<TABLE><TBODY><TR><TD>x2</TD></TR><TR><TD>3</TD><TD>4</TD></TR></TBODY></TABLE>"},
        {Tag::Tr, u"<TABLE><TBODY><TR><TD>x3</TD><TD>4</TD></TR></TBODY></TABLE>"}}) {
    show(two_by_two);
    choose_in_path(the(tag), u"MnuCellRowActionsDelete");
    key(u"x", 88);
    EXPECT_EQ(content(), after);
  }
}

TEST_F(TableTools, TheCaretGoesFromWhatWentIntoACellThatIsLeft) {
  start_with(two_by_two);
  choose_in_path(the(Tag::Td), u"MnuCellRowActionsDelete");
  EXPECT_EQ(marked(), u"<TABLE><TBODY><TR><TD>[]2</TD></TR><TR><TD>3</TD><TD>4</TD></TR></TBODY></TABLE>");
  control->InsertAtCursor(u"<B>x</B>", ed_InsertType::ed_InsertReplaceSelection);
  EXPECT_EQ(content(),
            u"<TABLE><TBODY><TR><TD><B>x</B>2</TD></TR><TR><TD>3</TD><TD>4</TD></TR></TBODY></TABLE>");
  control->undo_document();
  control->undo_document();
  EXPECT_EQ(content(), two_by_two);
  control->redo_document();
  EXPECT_EQ(marked(), u"<TABLE><TBODY><TR><TD>[]2</TD></TR><TR><TD>3</TD><TD>4</TD></TR></TBODY></TABLE>");
}

TEST_F(TableTools, WithoutACellLeftTheCaretGoesBehindTheTable) {
  start_with(u"<TABLE><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
  choose_in_path(the(Tag::Tr), u"MnuCellRowActionsDelete");
  key(u"x", 88);
  EXPECT_EQ(content(), u"<TABLE><TBODY></TBODY></TABLE><P>x</P>");
}

TEST_F(TableTools, TheBorderOfThePressedElementIsInNoStep) {
  start_with(two_by_two);
  choose_in_path(the(Tag::Td), u"MnuCellRowActionsMergeCellRight");
  EXPECT_NE(body().find(u"style"), std::u16string::npos) << "it is drawn";
  control->undo_document();
  EXPECT_EQ(content(), two_by_two);
}

TEST_F(TableTools, AHostMayReplaceTheDocumentInItsEvent) {
  start_with(two_by_two);
  host.on_menu = [&](std::u16string&, bool&) { control->set_DocumentHTML(u"<P>new</P>"); };
  choose_in_path(the(Tag::Td), u"MnuCellRowActionsDelete");
  EXPECT_EQ(content(), u"<P>new</P>");
}

// --- the table's own menu ---

TEST_F(TableTools, ItemsOfTheTablesMenu) {
  start_with(two_by_two);
  const std::pair<const char16_t*, const char16_t*> cases[] = {
      {u"mnuTInsRow",
       u"<TR><TD>1</TD><TD>2</TD></TR><TR><TD>3</TD><TD>4</TD></TR><TR><TD></TD><TD></TD></TR>"},
      {u"mnuTDelRow", u"<TR><TD>1</TD><TD>2</TD></TR>"},
      {u"mnuTInsCol", u"<TR><TD>1</TD><TD>2</TD><TD></TD></TR><TR><TD>3</TD><TD>4</TD><TD></TD></TR>"},
      {u"mnuTDelCol", u"<TR><TD>1</TD></TR><TR><TD>3</TD></TR>"}};
  for (const auto& [item, rows] : cases)
    expect_one_step(
        two_by_two, [&] { choose_in_table_menu(item); },
        u"<TABLE><TBODY>" + std::u16string(rows) + u"</TBODY></TABLE>");
}

TEST_F(TableTools, TheBorderOfAClickedTableIsInNoStep) {
  start_with(u"<P>x</P>");
  control->set_HighlightDOMSelectionOnClick(true);
  expect_one_step(
      two_by_two,
      [&] {
        choose_in_table_menu(u"mnuTDelCol");
        EXPECT_NE(body().find(u"style"), std::u16string::npos) << "it is drawn";
      },
      u"<TABLE><TBODY><TR><TD>1</TD></TR><TR><TD>3</TD></TR></TBODY></TABLE>");
}

TEST_F(TableTools, ATableWithoutRowsKeepsAnEmptyOneAndNoMark) {
  start_with(u"<TABLE></TABLE>");
  choose_in_table_menu(u"mnuTInsRow");
  EXPECT_EQ(content(), u"<TABLE><TBODY><TR></TR></TBODY></TABLE>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(container.changed(), IsEmpty());
}

TEST_F(TableTools, DismissedOrCancelledNothingChanges) {
  start_with(two_by_two);
  control->DOM()->mouse_press(at(element(Tag::Table), MouseButton::Right));
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  for (const char16_t* item : {u"mnuTInsRow", u"mnuTDelRow", u"mnuTInsCol", u"mnuTDelCol", u"mnuTProp"})
    choose_in_table_menu(item);
  EXPECT_EQ(content(), two_by_two);
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(forms.shown(), IsEmpty());
}

TEST_F(TableTools, ADocumentThatComesWhileTheMenuIsOpenEndsTheHandling) {
  start_with(two_by_two);
  menus.expect({.menu = u"mnuT", .choose = u"mnuTDelRow", .while_open = [&](platform::Menu&) {
                  control->set_DocumentHTML(u"<P>new</P>");
                }});
  control->DOM()->mouse_press(at(element(Tag::Table), MouseButton::Right));
  EXPECT_EQ(content(), u"<P>new</P>");
  EXPECT_FALSE(control->IsDirty());
}

// --- a new table ---

TEST_F(TableTools, ANewTableStandsInThePlaceOfTheSelection) {
  start_with(u"<P>x</P>");
  load(u"<P>a[b]c</P>");
  expect_dialog(
      u"Frminserttable", [](platform::Form& form) { form.Controls(u"txttablecolumns").set_Text(u"2"); },
      u"cmdApply");
  control->Table_Document();
  EXPECT_EQ(
      content(),
      u"<P>a</P><TABLE cellspacing=\"0%\" border=\"1%\"><TBODY><TR><TD></TD><TD></TD></TR></TBODY></TABLE>"
      u"<P>c</P>");
  EXPECT_EQ(control->DOM()->editor().selection().focus(), (dom::Boundary{the(Tag::Td), 0})) << "to be filled";
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(container.changed(), testing::Contains(u"DocumentHTML"));
  EXPECT_EQ(forms.last_owner(), platform::WindowHandle(7654321));
  control->undo_document();
  EXPECT_EQ(content(), u"<P>abc</P>");
}

TEST_F(TableTools, CancelledNothingIsPastedAndNothingMarked) {
  start_with(u"<P>text</P>");
  expect_dialog(
      u"Frminserttable", [](platform::Form&) {}, u"cmdCancel");
  control->Table_Document();
  EXPECT_EQ(content(), u"<P>text</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(forms.shown(), ElementsAre(u"Frminserttable"));
}

TEST_F(TableTools, AnElementTakenAsAWholeRefusesAndTheMarkIsSet) {
  start_with(u"<P><IMG src=\"i.png\"></P>");
  control->DOM()->select(
      [&](editing::Selection& selection) { selection.select_control(*element(Tag::Img)); });
  expect_dialog(
      u"Frminserttable", [](platform::Form&) {}, u"cmdApply");
  control->Table_Document();
  EXPECT_EQ(content(), u"<P><IMG src=\"i.png\"></P>");
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(TableTools, TheToolbarsButtonAsks) {
  start_with(u"<P>x</P>");
  load(u"<P>[]x</P>");
  expect_dialog(
      u"Frminserttable", [](platform::Form&) {}, u"cmdApply");
  EXPECT_TRUE(control->press(control->Toolbar1(), u"table"));
  EXPECT_NE(content().find(u"<TABLE"), std::u16string::npos);
  host.on_button = [](std::u16string&, bool& cancel) { cancel = true; };
  EXPECT_TRUE(control->press(control->Toolbar1(), u"table"));
  EXPECT_EQ(forms.shown().size(), 1u);
}

TEST_F(TableTools, WhereNobodyShowsDialogsNothingIsInserted) {
  control = HTMLed::create({.loop = loop, .container = container, .dialogs = dialogs});
  control->UserControl_Initialize();
  control->UserControl_InitProperties();
  control->UserControl_Show();
  control->set_DocumentHTML(u"<P>x</P>");
  control->Table_Document();
  EXPECT_EQ(content(), u"<P>x</P>");
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(TableTools, TheControlMayEndWhileItIsAsked) {
  start_with(u"<P>x</P>");
  expect_dialog(
      u"Frminserttable", [&](platform::Form&) { control->UserControl_Terminate(); }, u"cmdApply");
  control->Table_Document();
  EXPECT_EQ(control->DOM(), nullptr);
}

TEST_F(TableTools, TheLastReferenceMayGoWhileItIsAsked) {
  start_with(u"<P>x</P>");
  HTMLed& asked = *control;
  expect_dialog(
      u"Frminserttable", [&](platform::Form&) { control.reset(); }, u"cmdApply");
  asked.Table_Document();
  EXPECT_EQ(control, nullptr);
  loop.settle();
}

// --- settings, by the table's menu ---

void fill_settings(platform::Form& form) {
  form.Controls(u"txtBackColour").set_Text(u"red");
  form.Controls(u"txtBorderColour").set_Text(u"green");
  form.Controls(u"txtWidth").set_Text(u"50%");
  form.Controls(u"txtStyle").set_Text(u"color: blue");
}

TEST_F(TableTools, SettingsAreWrittenToTheTableAndItsCells) {
  start_with(u"<P>x</P>");
  expect_one_step(
      u"<TABLE border=\"1\"><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>",
      [&] {
        expect_dialog(u"Frminserttable", fill_settings, u"cmdApply");
        choose_in_table_menu(u"mnuTProp");
      },
      u"<TABLE border=\"1\" bgcolor=\"red\" bordercolor=\"green\" width=\"50%\" bordercolordark=\"green\" "
      u"bordercolorlight=\"green\"><TBODY><TR><TD bordercolor=\"green\" bgcolor=\"red\">1</TD></TR></TBODY>"
      u"</TABLE>");
}

TEST_F(TableTools, TheMenusRoadShowsNoStyleAndWritesNone) {
  start_with(u"<TABLE style=\"color: red\"><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
  std::u16string style = u"not read";
  expect_dialog(
      u"Frminserttable",
      [&](platform::Form& form) {
        style = form.Controls(u"txtStyle").Text();
        form.Controls(u"txtStyle").set_Text(u"color: blue");
      },
      u"cmdApply");
  choose_in_table_menu(u"mnuTProp");
  EXPECT_EQ(style, u"");
  EXPECT_EQ(content(), u"<TABLE style=\"color: red\"><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
}

TEST_F(TableTools, CancelledSettingsChangeNothingButTheMark) {
  start_with(two_by_two);
  expect_dialog(u"Frminserttable", fill_settings, u"cmdCancel");
  choose_in_table_menu(u"mnuTProp");
  EXPECT_EQ(content(), two_by_two);
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML"));
}

TEST_F(TableTools, ATableWhoseDocumentGoesMeanwhileTakesNoSettings) {
  start_with(two_by_two);
  expect_dialog(
      u"Frminserttable",
      [&](platform::Form& form) {
        fill_settings(form);
        control->set_DocumentHTML(u"<P>new</P>");
      },
      u"cmdApply");
  choose_in_table_menu(u"mnuTProp");
  EXPECT_EQ(content(), u"<P>new</P>");
}

// --- properties, by the element path ---

TEST_F(TableTools, ACellsPropertiesWithItsStyle) {
  start_with(u"<P>x</P>");
  std::u16string style = u"not read", caption;
  expect_one_step(
      u"<TABLE><TBODY><TR><TD style=\"color: red\">1</TD></TR></TBODY></TABLE>",
      [&] {
        expect_dialog(
            u"frmCellProp",
            [&](platform::Form& form) {
              caption = form.Caption();
              style = form.Controls(u"txtStyle").Text();
              form.Controls(u"txtStyle").set_Text(u"color: blue");
              form.Controls(u"cboAlign").set_Text(u"right");
            },
            u"OKButton");
        choose_in_path(the(Tag::Td), u"mnuToolProperties");
      },
      u"<TABLE><TBODY><TR><TD style=\"color: blue\" align=\"right\">1</TD></TR></TBODY></TABLE>");
  EXPECT_EQ(style, u"color: red") << "without the border of the press";
  EXPECT_EQ(caption, u"Cell Properties");
}

TEST_F(TableTools, ARowsProperties) {
  start_with(u"<P>x</P>");
  std::u16string caption;
  expect_one_step(
      u"<TABLE><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>",
      [&] {
        expect_dialog(
            u"frmCellProp",
            [&](platform::Form& form) {
              caption = form.Caption();
              form.Controls(u"txtBgcolor").set_Text(u"red");
            },
            u"OKButton");
        choose_in_path(the(Tag::Tr), u"mnuToolProperties");
      },
      u"<TABLE><TBODY><TR bgcolor=\"red\"><TD>1</TD></TR></TBODY></TABLE>");
  EXPECT_EQ(caption, u"Row Properties");
}

TEST_F(TableTools, ATablesPropertiesWithItsStyle) {
  start_with(u"<P>x</P>");
  std::u16string style;
  expect_one_step(
      u"<TABLE style=\"color: red\"><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>",
      [&] {
        expect_dialog(
            u"Frminserttable",
            [&](platform::Form& form) {
              style = form.Controls(u"txtStyle").Text();
              fill_settings(form);
            },
            u"cmdApply");
        choose_in_path(the(Tag::Table), u"mnuToolProperties");
      },
      u"<TABLE style=\"color: blue\" bgcolor=\"red\" bordercolor=\"green\" width=\"50%\" "
      u"bordercolordark=\"green\" bordercolorlight=\"green\"><TBODY><TR>"
      u"<TD bordercolor=\"green\" bgcolor=\"red\">1</TD></TR></TBODY></TABLE>");
  EXPECT_EQ(style, u"color: red");
}

TEST_F(TableTools, CancelledPropertiesLeaveStyleAndMark) {
  constexpr char16_t before[] =
      u"<TABLE style=\"color: red\"><TBODY><TR><TD style=\"color: green\">1</TD></TR></TBODY></TABLE>";
  start_with(before);
  for (const auto& [tag, cancel] :
       {std::pair{Tag::Td, u"CancelButton"}, {Tag::Tr, u"CancelButton"}, {Tag::Table, u"cmdCancel"}}) {
    expect_dialog(
        u"", [](platform::Form& form) { form.Controls(u"txtStyle").set_Text(u"color: blue"); }, cancel);
    choose_in_path(the(tag), u"mnuToolProperties");
    EXPECT_EQ(content(), before);
    EXPECT_FALSE(control->IsDirty());
    EXPECT_THAT(container.changed(), IsEmpty());
  }
  EXPECT_EQ(forms.shown().size(), 3u);
}

TEST_F(TableTools, ConfirmingWhatWasThereMarksAndIsNoStep) {
  start_with(two_by_two);
  expect_dialog(
      u"frmCellProp", [](platform::Form&) {}, u"OKButton");
  choose_in_path(the(Tag::Td), u"mnuToolProperties");
  EXPECT_EQ(content(), two_by_two);
  EXPECT_EQ(steps(), 0u);
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(TableTools, AHeadCellHasNoDialog) {
  start_with(u"<TABLE><TBODY><TR><TH>1</TH></TR></TBODY></TABLE>");
  choose_in_path(the(Tag::Th), u"mnuToolProperties");
  EXPECT_THAT(forms.shown(), IsEmpty());
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(TableTools, AHostThatCancelsThePropertiesGetsNoDialog) {
  start_with(two_by_two);
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  choose_in_path(the(Tag::Td), u"mnuToolProperties");
  EXPECT_THAT(forms.shown(), IsEmpty());
  EXPECT_THAT(host.heard, ElementsAre("MenuClick: DOMProperties"));
}

TEST_F(TableTools, TheBorderIsNotDrawnAgainAfterTheDialog) {
  start_with(two_by_two);
  expect_dialog(
      u"frmCellProp",
      [](platform::Form& form) { form.Controls(u"txtStyle").set_Text(u"border: 1px solid red"); },
      u"OKButton");
  choose_in_path(the(Tag::Td), u"mnuToolProperties");
  EXPECT_EQ(body().find(u"dashed"), std::u16string::npos);
  EXPECT_EQ(control->highlightElement(), the(Tag::Td));
  control->DOM()->mouse_press(at(the(Tag::Td, 3)));
  EXPECT_NE(body().find(u"style=\"border: 1px solid red\""), std::u16string::npos) << "the user's own stays";
}

TEST_F(TableTools, TheCellIsCurrentAgainWhereverTheSelectionWentMeanwhile) {
  start_with(two_by_two);
  expect_dialog(
      u"frmCellProp",
      [&](platform::Form& form) {
        form.Controls(u"txtWidth").set_Text(u"5");
        control->DOM()->mouse_press(at(the(Tag::Td, 3)));
      },
      u"OKButton");
  choose_in_path(the(Tag::Td), u"mnuToolProperties");
  EXPECT_EQ(control->highlightElement(), the(Tag::Td));
}

TEST_F(TableTools, ACellWhoseDocumentGoesMeanwhileIsNotKept) {
  start_with(two_by_two);
  expect_dialog(
      u"frmCellProp", [&](platform::Form&) { control->set_DocumentHTML(u"<P>new</P>"); }, u"OKButton");
  choose_in_path(the(Tag::Td), u"mnuToolProperties");
  EXPECT_EQ(content(), u"<P>new</P>");
  EXPECT_EQ(control->highlightElement(), nullptr);
}

TEST_F(TableTools, TheControlMayEndWhileTheDialogIsOpen) {
  start_with(two_by_two);
  expect_dialog(
      u"frmCellProp", [&](platform::Form&) { control->UserControl_Terminate(); }, u"OKButton");
  choose_in_path(the(Tag::Td), u"mnuToolProperties");
  EXPECT_EQ(control->DOM(), nullptr);
}

TEST_F(TableTools, EachDialogHasASectionOfTheLanguageFile) {
  start_with(two_by_two);
  control->set_LocalizationFile(from_utf8(TVX_SOURCE_DIR "/languages/de.xml"));
  std::vector<std::u16string> captions;
  const auto read = [&](platform::Form& form) { captions.push_back(form.Caption()); };
  for (int i = 0; i < 4; ++i) expect_dialog(u"", read, u"");
  control->Table_Document();
  choose_in_table_menu(u"mnuTProp");
  choose_in_path(the(Tag::Td), u"mnuToolProperties");
  choose_in_path(the(Tag::Tr), u"mnuToolProperties");
  EXPECT_THAT(captions, ElementsAre(u"Tabelleneigenschaften", u"Tabelleneigenschaften",
                                    u"Zelleneigenschaften", u"Zeileneigenschaften"));
}

TEST_F(TableTools, NoDialogStaysLoaded) {
  start_with(two_by_two);
  bool loaded = false;
  expect_dialog(
      u"frmCellProp", [&](platform::Form&) { loaded = platform::IsDialogLoaded(u"frmCellProp"); },
      u"OKButton");
  choose_in_path(the(Tag::Td), u"mnuToolProperties");
  control->Table_Document();
  EXPECT_TRUE(loaded);
  EXPECT_FALSE(platform::IsDialogLoaded(u"frmCellProp"));
  EXPECT_FALSE(platform::IsDialogLoaded(u"Frminserttable"));
}

}  // namespace
}  // namespace tvx::core
