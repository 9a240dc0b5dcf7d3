#include "tvx/tables/table_dialog.h"

#include "tables/table_fixture.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/forms.h"

namespace tvx::tables::test {

using dom::Tag;
using platform::FormControl;

class TheTableDialog : public Tables {
 protected:
  headless::Dialogs dialogs;
  headless::Forms forms;
  TableDialog dialog{dialogs};

  FormControl& control(std::u16string_view name) { return dialog.form().Controls(name); }
  std::u16string text(std::u16string_view name) { return control(name).Text(); }
  /// What a user does with it; the number of the failure that a press ended with.
  int answer(std::function<void()> fill, std::u16string press = u"cmdApply") {
    int number = 0;
    forms.expect({.while_open = [&](platform::Form&) { fill(); }, .press = std::move(press)});
    forms.on_closed([&](platform::Form&, const headless::ExpectedForm*, const auto& failure) {
      number = failure ? failure->number() : 0;
    });
    forms.Show(dialog.form(), platform::WindowHandle(7));
    return number;
  }
  void choose(std::u16string_view button, Colour colour) {
    dialogs.expect({.kind = headless::DialogKind::color,
                    .answer = colour,
                    .while_open = [&](const headless::ShownDialog& shown) {
                      opened = std::get<headless::ColorDialog>(shown);
                    }});
    EXPECT_TRUE(control(button).click());
  }

  headless::ColorDialog opened;
};

TEST_F(TheTableDialog, ItsControlsAreThese) {
  EXPECT_EQ(dialog.form().Name(), u"Frminserttable");
  EXPECT_EQ(dialog.form().Caption(), u"Table Properties");
  const std::pair<std::u16string_view, std::u16string_view> captions[] = {
      {u"lblTableAttributes", u"Table Settings"},
      {u"lblrows", u"Number of Rows"},
      {u"lblcolumns", u"Number of Columns"},
      {u"lblWidth", u"Width (%)"},
      {u"lblBorderWidth", u"Border Width"},
      {u"lblCellSpacing", u"Cell spacing"},
      {u"lblCellPadding", u"Cell padding"},
      {u"lblBorderColor", u"Border Colour"},
      {u"lblBackgroundColor", u"Background Color"},
      {u"lblStyle", u"Style"},
      {u"lblCellAttributes", u"Cell Settings"},
      {u"lblCellBorderColor", u"Border Color"},
      {u"lblCellBackgroundColor", u"Background Color"},
  };
  for (const auto& [name, caption] : captions) EXPECT_EQ(control(name).Caption(), caption);
  const std::pair<std::u16string_view, std::u16string_view> texts[] = {
      {u"txttablerow", u"1"},        {u"txttablecolumns", u"4"},       {u"txtWidth", u""},
      {u"txtBorderwidth", u"1"},     {u"txtCellSpacing", u"0"},        {u"txtCellPadding", u"0"},
      {u"txtBorderColour", u""},     {u"txtBackColour", u""},          {u"txtStyle", u""},
      {u"txtBorderColourCell", u""}, {u"txtBackgroundColourCell", u""}};
  for (const auto& [name, expected] : texts) EXPECT_EQ(text(name), expected) << to_utf8(name);
  EXPECT_EQ(control(u"txtStyle").ToolTipText(), u"Enter a vaild CSS string");
  EXPECT_EQ(dialog.form().default_button(), &control(u"cmdApply"));
  EXPECT_EQ(dialog.form().cancel_button(), &control(u"cmdCancel"));
  EXPECT_EQ(control(u"txtBackgroundColourCell").container(), &control(u"lblCellAttributes"));
}

TEST_F(TheTableDialog, ApplyingMakesTheMarkupAndHidesIt) {
  answer([&] { control(u"txttablecolumns").set_Text(u"2"); });
  EXPECT_EQ(dialog.table_html(), u"<TABLE cellSpacing=0% border=1%><TR><TD></TD><TD></TD></TR></TABLE>");
  EXPECT_FALSE(dialog.cancelled());
  EXPECT_FALSE(dialog.form().Visible());
}

TEST_F(TheTableDialog, EveryFieldButTwoReachesTheMarkup) {
  answer([&] {
    for (const auto& [name, value] : {std::pair{u"txttablerow", u"1"},
                                      {u"txttablecolumns", u"1"},
                                      {u"txtWidth", u"2"},
                                      {u"txtBorderwidth", u"3"},
                                      {u"txtCellSpacing", u"4"},
                                      {u"txtCellPadding", u"5"},
                                      {u"txtBorderColour", u"six"},
                                      {u"txtBackColour", u"seven"},
                                      {u"txtStyle", u"color: eight"},
                                      {u"txtBorderColourCell", u"nine"},
                                      {u"txtBackgroundColourCell", u"ten"}})
      control(name).set_Text(value);
  });
  EXPECT_EQ(dialog.table_html(),
            u"<TABLE width=2% cellSpacing=4% border=3% bordercolor=six bgcolor=seven>"
            u"<TR><TD bordercolor=nine bgcolor=ten></TD></TR></TABLE>");
}

TEST_F(TheTableDialog, CancellingLeavesNoMarkup) {
  answer([] {}, u"cmdCancel");
  EXPECT_TRUE(dialog.cancelled());
  EXPECT_EQ(dialog.table_html(), u"");
}

TEST_F(TheTableDialog, ANumberTooLargeKeepsItOpen) {
  int number = 0;
  const int failed = answer([&] {
    control(u"txttablerow").set_Text(u"40000");
    number = failure([&] { control(u"cmdApply").click(); });
    EXPECT_TRUE(dialog.form().Visible());
    EXPECT_EQ(dialog.table_html(), u"");
  });
  EXPECT_EQ(number, errors::overflow);
  EXPECT_EQ(failed, errors::overflow) << "the second press";
  EXPECT_EQ(answer([&] { control(u"txttablerow").set_Text(u"2"); }), 0);
  EXPECT_NE(dialog.table_html(), u"");
}

TEST_F(TheTableDialog, AColourGoesIntoItsFieldAndPaintsIt) {
  const std::pair<std::u16string_view, std::u16string_view> pairs[] = {
      {u"cmdBorderColour", u"txtBorderColour"},
      {u"cmdBackColour", u"txtBackColour"},
      {u"cmdBorderColourCell", u"txtBorderColourCell"},
      {u"cmdBackgroundColourCell", u"txtBackgroundColourCell"}};
  for (const auto& [button, field] : pairs) {
    choose(button, 0x0102FF);
    EXPECT_EQ(text(field), u"#FF0201") << to_utf8(field);
    EXPECT_EQ(control(field).BackColor(), 0x0102FFu);
    EXPECT_EQ(control(button).colour_field(), &control(field));
  }
  EXPECT_EQ(opened.colour, white);
  EXPECT_EQ(opened.owner, dialog.form().handle());
}

TEST_F(TheTableDialog, ACancelledColourChangesNothing) {
  control(u"txtBackColour").set_Text(u"red");
  choose(u"cmdBackColour", no_colour);
  EXPECT_EQ(text(u"txtBackColour"), u"red");
  EXPECT_EQ(control(u"txtBackColour").BackColor(), platform::window_background);
}

// --- a table that is there ---

class TheSettings : public TheTableDialog {
 protected:
  void show() {
    const dom::TableObject table(the(Tag::Table));
    dialog.show_settings_of(table);
  }
  void write() {
    dom::TableObject table(the(Tag::Table));
    dialog.write_settings_to(table);
  }
};

TEST_F(TheSettings, FillTheFieldsAndCloseThoseOfNewTables) {
  load(
      "<table bgcolor=red bordercolor=green border=2 width=50% cellspacing=3 "
      "cellpadding=4><tr><td>1</table>");
  show();
  EXPECT_EQ(text(u"txtBackColour"), u"red");
  EXPECT_EQ(text(u"txtBorderColour"), u"green");
  EXPECT_EQ(text(u"txtBorderwidth"), u"2");
  EXPECT_EQ(text(u"txtWidth"), u"50%");
  EXPECT_EQ(text(u"txtCellSpacing"), u"3");
  EXPECT_EQ(text(u"txtCellPadding"), u"4");
  EXPECT_EQ(text(u"txttablerow"), u"1") << "as it was";
  for (const std::u16string_view name :
       {u"txttablecolumns", u"txttablerow", u"txtBackgroundColourCell", u"txtBorderColourCell",
        u"lblCellAttributes", u"lblCellBackgroundColor", u"lblCellBorderColor", u"lblrows", u"lblcolumns",
        u"cmdBackgroundColourCell", u"cmdBorderColourCell"})
    EXPECT_FALSE(control(name).Enabled()) << to_utf8(name);
  for (const std::u16string_view name : {u"txtWidth", u"txtStyle", u"cmdBackColour", u"lblTableAttributes"})
    EXPECT_TRUE(control(name).reachable()) << to_utf8(name);
}

TEST_F(TheSettings, ATableThatTellsNothingEmptiesTheFields) {
  load("<table><tr><td>1</table>");
  show();
  for (const std::u16string_view name : {u"txtBackColour", u"txtBorderColour", u"txtBorderwidth", u"txtWidth",
                                         u"txtCellSpacing", u"txtCellPadding"})
    EXPECT_EQ(text(name), u"") << to_utf8(name);
}

TEST_F(TheSettings, AreWrittenToTheTableAndTheColoursToEveryCell) {
  load("<table><thead><tr><th>h<tbody><tr><td bgcolor=white>1<td><table><tr><td>in</table></table>");
  const std::string first = html();
  show();
  control(u"txtBackColour").set_Text(u"red");
  control(u"txtBorderColour").set_Text(u"green");
  control(u"txtBorderwidth").set_Text(u"2");
  control(u"txtWidth").set_Text(u"50%");
  control(u"txtCellSpacing").set_Text(u"3");
  control(u"txtCellPadding").set_Text(u"4");
  write();
  const std::string after = html();
  EXPECT_EQ(
      after,
      "<TABLE bgcolor=\"red\" bordercolor=\"green\" border=\"2\" width=\"50%\" bordercolordark=\"green\" "
      "bordercolorlight=\"green\" cellspacing=\"3\" cellpadding=\"4\">"
      "<THEAD><TR><TH bordercolor=\"green\" bgcolor=\"red\">h</TH></TR></THEAD>"
      "<TBODY><TR><TD bgcolor=\"red\" bordercolor=\"green\">1</TD><TD bordercolor=\"green\" "
      "bgcolor=\"red\"><TABLE><TBODY><TR><TD>in</TD></TR></TBODY></TABLE></TD></TR></TBODY></TABLE>");
  expect_sound("written");
  EXPECT_EQ(journal().depth(), 1u);
  journal().undo();
  EXPECT_EQ(html(), first);
  journal().redo();
  EXPECT_EQ(html(), after);
}

TEST_F(TheSettings, AnEmptyBorderTakesItAwayAndKeepsTheRest) {
  load("<table border=2 width=100 cellpadding=1><tr><td>1</table>");
  show();
  control(u"txtBorderwidth").set_Text(u"");
  write();
  EXPECT_EQ(html(), "<TABLE width=\"100\" cellpadding=\"1\"><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
}

TEST_F(TheSettings, EmptyColoursEmptyThoseOfEveryCell) {
  load("<table bgcolor=red bordercolor=green><tr><td bgcolor=blue>1<td bordercolor=white>2</table>");
  show();
  control(u"txtBackColour").set_Text(u"");
  control(u"txtBorderColour").set_Text(u"");
  write();
  EXPECT_EQ(html(), "<TABLE><TBODY><TR><TD>1</TD><TD>2</TD></TR></TBODY></TABLE>");
}

TEST_F(TheSettings, UnchangedTheyAreNoStepWhereTheCellsAgree) {
  load("<table border=1><tr><td>1</table>");
  show();
  write();
  EXPECT_EQ(journal().depth(), 0u);
}

TEST_F(TheTableDialog, WrongNumbersAreMarkedWithTheReason) {
  control(u"txttablerow").set_Text(u"many");
  EXPECT_EQ(control(u"txttablerow").fault(), u"This is no whole number");
  control(u"txttablerow").set_Text(u"0");
  EXPECT_EQ(control(u"txttablerow").fault(), u"This number is too small");
  control(u"txttablecolumns").set_Text(u"40000");
  EXPECT_EQ(control(u"txttablecolumns").fault(), u"This number is too large");
  control(u"txtWidth").set_Text(u"50%");
  EXPECT_EQ(control(u"txtWidth").fault(), u"This is no whole number") << "the sign comes by itself";
  for (const std::u16string_view name : {u"txtWidth", u"txtCellSpacing", u"txtBorderwidth"}) {
    control(name).set_Text(u"");
    EXPECT_EQ(control(name).fault(), u"");
  }
  EXPECT_TRUE(control(u"cmdApply").Enabled()) << "what comes of it is known";
}

TEST_F(TheSettings, MayBePercentagesAndAreMarkedWhereTheyAreNothing) {
  load("<table border=1% width=50%><tr><td>1</table>");
  show();
  EXPECT_EQ(control(u"txtBorderwidth").fault(), u"") << "as a new table has it";
  EXPECT_EQ(control(u"txtWidth").fault(), u"");
  control(u"txtWidth").step(1);
  EXPECT_EQ(text(u"txtWidth"), u"51%");
  control(u"txtWidth").set_Text(u"wide");
  EXPECT_EQ(control(u"txtWidth").fault(), u"This is neither a number nor a percentage");
  control(u"txtWidth").set_Text(u"300");
  EXPECT_EQ(control(u"txtWidth").fault(), u"");
}

}  // namespace tvx::tables::test
