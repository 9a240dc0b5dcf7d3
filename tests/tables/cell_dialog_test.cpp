#include "tvx/tables/cell_dialog.h"

#include "tables/table_fixture.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/forms.h"

namespace tvx::tables::test {

using dom::Tag;
using platform::FormControl;

class TheCellDialog : public Tables {
 protected:
  headless::Dialogs dialogs;
  CellDialog dialog{dialogs};

  FormControl& control(std::u16string_view name) { return dialog.form().Controls(name); }
  std::u16string text(std::u16string_view name) { return control(name).Text(); }
  void set(std::u16string_view name, std::u16string_view value) { control(name).set_Text(value); }
  /// One cell with these attributes, in the dialog.
  void take_cell(std::string attributes) {
    load("<table><tr><td " + attributes + ">1</table>");
    dialog.set_oCell(the(Tag::Td));
  }
  void take_row(std::string attributes) {
    load("<table><tr " + attributes + "><td>1</table>");
    dialog.set_oRow(the(Tag::Tr));
  }
  std::string applied() {
    EXPECT_EQ(dialog.oCell(), &the(Tag::Td));
    return to_utf8(dom::outer_html(the(Tag::Td)));
  }
};

TEST_F(TheCellDialog, ItsControlsAreThese) {
  EXPECT_EQ(dialog.form().Name(), u"frmCellProp");
  EXPECT_EQ(dialog.form().Caption(), u"Cell Properties");
  const std::pair<std::u16string_view, std::u16string_view> captions[] = {
      {u"lblHAlign", u"H. Align"},
      {u"lblVAlign", u"V. Align"},
      {u"lblHeight", u"Height"},
      {u"lblWidth", u"Width"},
      {u"lblColSpan", u"Column Span"},
      {u"lblRowSpan", u"Row Span"},
      {u"lblBackground", u"Background"},
      {u"lblStyle", u"Style"},
      {u"lblBGColor", u"bgColor"},
      {u"lblBorderColor", u"border Color"},
      {u"lblBorderColorDark", u"border Color dark"},
      {u"lblBorderColorLight", u"border Color light"},
      {u"CancelButton", u"Cancel"},
  };
  for (const auto& [name, caption] : captions) EXPECT_EQ(control(name).Caption(), caption);
  EXPECT_EQ(dialog.form().default_button(), &control(u"OKButton"));
  EXPECT_EQ(dialog.form().cancel_button(), &control(u"CancelButton"));
  EXPECT_EQ(control(u"cboAlign").ListCount(), 3);
  EXPECT_EQ(control(u"cboAlign").List(2), u"right");
  EXPECT_EQ(control(u"cboVAlign").ListCount(), 4);
  EXPECT_EQ(control(u"cboVAlign").List(3), u"baseline");
  EXPECT_FALSE(dialog.booCancel());
}

TEST_F(TheCellDialog, ACellFillsEveryField) {
  take_cell(
      "align=right valign=middle background=b.png colspan=2 height=10 rowspan=3 width=20% bgcolor=red "
      "bordercolor=green bordercolordark=black bordercolorlight=white");
  EXPECT_EQ(text(u"cboAlign"), u"right");
  EXPECT_EQ(text(u"cboVAlign"), u"middle");
  EXPECT_EQ(text(u"txtBackground"), u"b.png");
  EXPECT_EQ(text(u"txtColSpan"), u"2");
  EXPECT_EQ(text(u"txtHeight"), u"10");
  EXPECT_EQ(text(u"txtRowSpan"), u"3");
  EXPECT_EQ(text(u"txtWidth"), u"20%");
  EXPECT_EQ(text(u"txtBgcolor"), u"red");
  EXPECT_EQ(text(u"txtborderColor"), u"green");
  EXPECT_EQ(text(u"txtBorderColorDark"), u"black");
  EXPECT_EQ(text(u"txtBorderColorLight"), u"white");
}

TEST_F(TheCellDialog, SpansThatNobodyToldShowTheirDefault) {
  take_cell("");
  EXPECT_EQ(text(u"txtRowSpan"), u"1");
  EXPECT_EQ(text(u"txtColSpan"), u"1");
  EXPECT_EQ(applied(), "<TD>1</TD>") << "and aren't told by confirming";
  EXPECT_EQ(journal().depth(), 0u);
}

TEST_F(TheCellDialog, ReadingTheCellWritesTheFieldsInTheirOrder) {
  take_cell("");
  set(u"cboAlign", u"center");
  set(u"cboVAlign", u"baseline");
  set(u"txtBackground", u"b.png");
  set(u"txtColSpan", u"2");
  set(u"txtHeight", u"10");
  set(u"txtRowSpan", u"3");
  set(u"txtWidth", u"20%");
  set(u"txtBgcolor", u"red");
  set(u"txtborderColor", u"green");
  set(u"txtBorderColorDark", u"black");
  set(u"txtBorderColorLight", u"white");
  const std::string first = html();
  EXPECT_EQ(applied(),
            "<TD align=\"center\" valign=\"baseline\" background=\"b.png\" colspan=\"2\" height=\"10\" "
            "rowspan=\"3\" width=\"20%\" bgcolor=\"red\" bordercolor=\"green\" bordercolordark=\"black\" "
            "bordercolorlight=\"white\">1</TD>");
  expect_sound("applied");
  EXPECT_EQ(journal().depth(), 1u);
  journal().undo();
  EXPECT_EQ(html(), first);
}

TEST_F(TheCellDialog, WhatIsNoNumberLeavesTheSpanAndTheRestIsWritten) {
  for (const std::u16string_view wrong : {u"", u"two", u"2 columns", u"0", u"-1", u"99999999999"}) {
    take_cell("colspan=3");
    set(u"txtColSpan", wrong);
    set(u"txtWidth", u"5");
    EXPECT_EQ(applied(), "<TD colspan=\"3\" width=\"5\">1</TD>") << to_utf8(wrong);
  }
}

TEST_F(TheCellDialog, SpansAreRounded) {
  take_cell("");
  set(u"txtColSpan", u"2.5");
  set(u"txtRowSpan", u" 3.6 ");
  EXPECT_EQ(applied(), "<TD colspan=\"2\" rowspan=\"4\">1</TD>");
}

TEST_F(TheCellDialog, EmptyFieldsTakeTheirAttributesAway) {
  take_cell("height=1 bgcolor=red background=b.png");
  set(u"txtHeight", u"");
  set(u"txtBgcolor", u"");
  set(u"txtBackground", u"");
  EXPECT_EQ(applied(), "<TD>1</TD>");
}

// --- lists that only pick ---

TEST_F(TheCellDialog, AValueThatTheListDoesntOfferSurvives) {
  take_cell("align=justify valign=odd");
  EXPECT_EQ(text(u"cboAlign"), u"");
  EXPECT_EQ(control(u"cboVAlign").ListIndex(), -1);
  EXPECT_EQ(applied(), "<TD align=\"justify\" valign=\"odd\">1</TD>");
  set(u"cboAlign", u"left");
  EXPECT_EQ(applied(), "<TD align=\"left\" valign=\"odd\">1</TD>");
}

TEST_F(TheCellDialog, AValueInOtherLettersIsPickedAndStaysAsWritten) {
  take_cell("align=RIGHT");
  EXPECT_EQ(text(u"cboAlign"), u"right");
  EXPECT_EQ(applied(), "<TD align=\"RIGHT\">1</TD>");
}

TEST_F(TheCellDialog, TypedTextIsNoChoice) {
  take_cell("align=left");
  set(u"cboAlign", u"leftmost");
  EXPECT_EQ(text(u"cboAlign"), u"left");
}

TEST_F(TheCellDialog, AnAlignmentThatIsRejectedLeavesTheOldOneAndTheRestIsWritten) {
  take_cell("align=left");
  control(u"cboAlign").AddItem(u"leftmost");
  set(u"cboAlign", u"leftmost");
  set(u"txtWidth", u"5");
  EXPECT_EQ(applied(), "<TD align=\"left\" width=\"5\">1</TD>");
}

// --- rows ---

TEST_F(TheCellDialog, ARowSwitchesItsMode) {
  take_row(
      "align=center valign=top bgcolor=red bordercolor=green bordercolordark=black bordercolorlight=white");
  EXPECT_EQ(dialog.form().Caption(), u"Row Properties");
  EXPECT_EQ(text(u"cboAlign"), u"center");
  EXPECT_EQ(text(u"cboVAlign"), u"top");
  EXPECT_EQ(text(u"txtBgcolor"), u"red");
  EXPECT_EQ(text(u"txtborderColor"), u"green");
  EXPECT_EQ(text(u"txtBorderColorDark"), u"black");
  EXPECT_EQ(text(u"txtBorderColorLight"), u"white");
  for (const std::u16string_view name :
       {u"txtBackground", u"txtColSpan", u"txtRowSpan", u"txtHeight", u"txtWidth"}) {
    EXPECT_FALSE(control(name).Enabled()) << to_utf8(name);
    EXPECT_EQ(control(name).BackColor(), 0x8000000Fu);
    EXPECT_EQ(text(name), u"");
  }
  EXPECT_TRUE(control(u"txtStyle").Enabled());
}

TEST_F(TheCellDialog, ReadingTheRowWritesWhatRowsHave) {
  take_row("");
  set(u"cboAlign", u"right");
  set(u"cboVAlign", u"bottom");
  set(u"txtBgcolor", u"red");
  set(u"txtborderColor", u"green");
  set(u"txtBorderColorDark", u"black");
  set(u"txtBorderColorLight", u"white");
  set(u"txtWidth", u"5");
  EXPECT_EQ(dialog.oRow(), &the(Tag::Tr));
  EXPECT_EQ(to_utf8(dom::outer_html(the(Tag::Tr))),
            "<TR align=\"right\" valign=\"bottom\" bgcolor=\"red\" bordercolor=\"green\" "
            "bordercolordark=\"black\" bordercolorlight=\"white\"><TD>1</TD></TR>");
  EXPECT_EQ(journal().depth(), 1u);
}

// --- buttons ---

TEST_F(TheCellDialog, ColoursGoIntoTheirFieldsAndPaintNothing) {
  const std::pair<std::u16string_view, std::u16string_view> pairs[] = {{u"Command1", u"txtBgcolor"},
                                                                       {u"Command2", u"txtborderColor"},
                                                                       {u"Command3", u"txtBorderColorDark"},
                                                                       {u"Command4", u"txtBorderColorLight"}};
  headless::ColorDialog opened;
  for (const auto& [button, field] : pairs) {
    dialogs.expect({.kind = headless::DialogKind::color,
                    .answer = Colour(0xFF0000),
                    .while_open = [&](const headless::ShownDialog& shown) {
                      opened = std::get<headless::ColorDialog>(shown);
                    }});
    EXPECT_TRUE(control(button).click());
    EXPECT_EQ(text(field), u"#0000FF") << to_utf8(field);
    EXPECT_EQ(control(field).BackColor(), platform::window_background);
    control(button).click();
    EXPECT_EQ(text(field), u"#0000FF") << "cancelled";
  }
  EXPECT_EQ(opened.colour, white);
  EXPECT_EQ(opened.owner, dialog.form().handle());
}

TEST_F(TheCellDialog, CancelRaisesItsFlag) {
  control(u"OKButton").click();
  EXPECT_FALSE(dialog.booCancel());
  control(u"CancelButton").click();
  EXPECT_TRUE(dialog.booCancel());
}

TEST_F(TheCellDialog, BothButtonsCloseIt) {
  headless::Forms forms;
  for (const std::u16string_view button : {u"OKButton", u"CancelButton"}) {
    forms.Open(dialog.form(), platform::WindowHandle(7));
    EXPECT_TRUE(dialog.form().Visible());
    control(button).click();
    EXPECT_FALSE(dialog.form().Visible()) << to_utf8(button);
  }
}

TEST_F(TheCellDialog, WithNothingTakenNothingIsGiven) {
  EXPECT_FALSE(dialog.oCell());
  dialog.set_oCell(nullptr);
  EXPECT_FALSE(dialog.oCell());
}

TEST_F(TheCellDialog, WhatIsNoCellKeepsItsAttributes) {
  load("<p align=left>text");
  dialog.set_oCell(the(Tag::P));
  set(u"txtWidth", u"5");
  EXPECT_EQ(dialog.oCell(), &the(Tag::P));
  EXPECT_EQ(html(), "<P align=\"left\">text</P>");
}

TEST_F(TheCellDialog, WrongNumbersAreMarkedAndSizesMayBePercentages) {
  take_cell("width=50% height=20");
  for (const std::u16string_view name : {u"txtWidth", u"txtHeight", u"txtColSpan", u"txtRowSpan"})
    EXPECT_EQ(control(name).fault(), u"") << to_utf8(name);
  control(u"txtWidth").step(-1);
  EXPECT_EQ(text(u"txtWidth"), u"49%");
  set(u"txtHeight", u"tall");
  EXPECT_EQ(control(u"txtHeight").fault(), u"This is neither a number nor a percentage");
  set(u"txtColSpan", u"0");
  EXPECT_EQ(control(u"txtColSpan").fault(), u"This number is too small");
  set(u"txtRowSpan", u"two");
  EXPECT_EQ(control(u"txtRowSpan").fault(), u"This is no whole number");
  EXPECT_TRUE(control(u"OKButton").Enabled()) << "the rest can be written";
}

}  // namespace tvx::tables::test
