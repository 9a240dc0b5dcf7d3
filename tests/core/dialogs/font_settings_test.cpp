#include "core/control_fixture.h"
#include "tvx/dom/journal.h"
#include "tvx/platform/form.h"

namespace tvx::core {
namespace {

using platform::Form;

class ChangeFont : public Control {
 protected:
  void open(std::u16string_view content, const std::function<void(Form&)>& user, std::u16string button) {
    start();
    load(content);
    control->DOM()->tree().journal().clear();
    again(user, std::move(button));
  }
  void again(const std::function<void(Form&)>& user, std::u16string button) {
    forms.expect({.form = u"frmFont", .while_open = user, .press = std::move(button)});
    control->change_Font();
    EXPECT_EQ(forms.expectations(), 0u);
  }
  static std::u16string text(const Form& form, std::u16string_view name) {
    return form.Controls(name).Text();
  }
  std::size_t steps() const { return control->DOM()->tree().journal().depth(); }
};

TEST_F(ChangeFont, ShowsWhatTheSelectionHas) {
  open(
      u"<P><FONT color=#0a00ff face=Courier size=5>{red}</FONT></P>",
      [](Form& form) {
        EXPECT_EQ(form.Caption(), u"Font Settings");
        EXPECT_EQ(text(form, u"Combo1"), u"Courier");
        EXPECT_EQ(text(form, u"Combo2"), u"5");
        EXPECT_EQ(text(form, u"txtColour"), u"#0A00FF") << "six digits, with leading zeros";
        EXPECT_EQ(text(form, u"txtbgColour"), u"#FFFFFF");
      },
      u"cmdCancel");
}

TEST_F(ChangeFont, BlackIsSixZeros) {
  open(
      u"<P>{text}</P>", [](Form& form) { EXPECT_EQ(text(form, u"txtColour"), u"#000000"); }, u"cmdCancel");
}

TEST_F(ChangeFont, OffersTheFontsOfTheScreenAndAnEmptyName) {
  forms.set_fonts({u"Bitter", u"Anton"});
  open(
      u"<P>{a<FONT face=Courier>b</FONT>}</P>",
      [](Form& form) {
        const platform::FormControl& fonts = form.Controls(u"Combo1");
        ASSERT_EQ(fonts.ListCount(), 3);
        EXPECT_EQ(fonts.List(0), u"Bitter");
        EXPECT_EQ(fonts.List(1), u"Anton");
        EXPECT_EQ(fonts.List(2), u"");
        EXPECT_EQ(fonts.Text(), u"Bitter") << "several fonts: the first of the list";
        EXPECT_TRUE(fonts.shows_fonts());
      },
      u"cmdCancel");
}

TEST_F(ChangeFont, OKWritesTheFourValuesAsOneStep) {
  open(
      u"<P>{text}</P>",
      [](Form& form) {
        headless::fill(form.Controls(u"Combo1"), u"Comic Typed");
        headless::fill(form.Controls(u"Combo2"), u"5");
        headless::fill(form.Controls(u"txtColour"), u"#ff0000");
        headless::fill(form.Controls(u"txtbgColour"), u"#ffff00");
      },
      u"cmdApply");
  const std::u16string html = body();
  EXPECT_NE(html.find(u"color=\"#ff0000\""), html.npos);
  EXPECT_NE(html.find(u"size=\"5\""), html.npos);
  EXPECT_NE(html.find(u"face=\"Comic Typed\""), html.npos);
  EXPECT_NE(html.find(u"background-color"), html.npos);
  EXPECT_EQ(steps(), 1u);
  EXPECT_TRUE(control->IsDirty());
  control->undo_document();
  EXPECT_EQ(body(), u"<P>text</P>");
}

TEST_F(ChangeFont, TextWithoutABackgroundKeepsNone) {
  open(
      u"<P>{text}</P>", [](Form& form) { headless::fill(form.Controls(u"Combo2"), u"5"); }, u"cmdApply");
  EXPECT_EQ(body().find(u"background"), std::u16string::npos);
}

TEST_F(ChangeFont, CancelLeavesTheTextsOfTheDialogUnusedAndMarksTheDocument) {
  open(
      u"<P>{text}</P>", [](Form& form) { headless::fill(form.Controls(u"Combo2"), u"7"); }, u"cmdCancel");
  EXPECT_EQ(body(), u"<P>text</P>");
  EXPECT_EQ(steps(), 0u) << "nothing has changed";
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ChangeFont, CancelLevelsNoMixedSelection) {
  const std::u16string mixed =
      u"<P>a<FONT color=\"#ff0000\" face=\"Courier\" size=\"5\">b</FONT>"
      u"<SPAN style=\"background-color: rgb(0, 255, 0)\">c</SPAN></P>";
  open(
      u"<P>{a<FONT color=\"#ff0000\" face=\"Courier\" size=\"5\">b</FONT>"
      u"<SPAN style=\"background-color: rgb(0, 255, 0)\">c</SPAN>}</P>",
      [](Form& form) { EXPECT_EQ(text(form, u"txtColour"), u""); }, u"cmdCancel");
  EXPECT_EQ(body(), mixed);
  EXPECT_EQ(steps(), 0u);
}

TEST_F(ChangeFont, WithNothingSelectedItIsForWhatIsTypedNext) {
  open(
      u"<P>one{}</P>", [](Form& form) { headless::fill(form.Controls(u"Combo2"), u"5"); }, u"cmdApply");
  key(u"x", u'X');
  EXPECT_NE(body().find(u"size=\"5\">x</FONT>"), std::u16string::npos) << to_utf8(body());
}

TEST_F(ChangeFont, AColourIsChosenFromWhiteOnAndACancelledChoiceChangesNothing) {
  std::vector<Colour> at_first;
  dialogs.on_opened([&](const headless::ShownDialog& dialog) {
    at_first.push_back(std::get<headless::ColorDialog>(dialog).colour);
  });
  dialogs.expect({.kind = headless::DialogKind::color, .answer = Colour{0x0000FF}});
  open(
      u"<P>{text}</P>",
      [](Form& form) {
        form.Controls(u"cmdColour").click();
        form.Controls(u"cmdbgColour").click();
        EXPECT_EQ(text(form, u"txtColour"), u"#FF0000");
        EXPECT_EQ(text(form, u"txtbgColour"), u"#FFFFFF");
      },
      u"cmdCancel");
  EXPECT_EQ(at_first, (std::vector<Colour>{white, white}));
}

TEST_F(ChangeFont, WhatIsNoColourIsMarkedAndTheLineShowsTheRest) {
  open(
      u"<P>{text}</P>",
      [](Form& form) {
        headless::fill(form.Controls(u"txtColour"), u"reddish");
        headless::fill(form.Controls(u"Combo1"), u"Courier");
        EXPECT_EQ(form.Controls(u"txtColour").fault(), u"This is no colour");
        const auto& sample = form.Controls(u"lblPreview").sample();
        ASSERT_TRUE(sample);
        EXPECT_EQ(sample->colour, u"");
        EXPECT_EQ(sample->font, u"Courier");
        headless::fill(form.Controls(u"txtColour"), u"red");
        EXPECT_EQ(form.Controls(u"txtColour").fault(), u"");
      },
      u"cmdCancel");
}

TEST_F(ChangeFont, AContentThatCameMeanwhileIsLeftAlone) {
  open(
      u"<P>{text}</P>",
      [this](Form& form) {
        headless::fill(form.Controls(u"Combo2"), u"5");
        control->set_DocumentHTML(u"<P>another</P>");
        control->DOM()->editor().execute(u"selectAll", u"");
      },
      u"cmdApply");
  EXPECT_EQ(body(), u"<P>another</P>");
}

TEST_F(ChangeFont, TheToolbarsButtonOpensIt) {
  start();
  load(u"<P>{text}</P>");
  forms.expect({.form = u"frmFont", .press = u"cmdCancel"});
  EXPECT_TRUE(control->press(control->Toolbar1(), u"Text"));
  EXPECT_EQ(forms.expectations(), 0u);
}

}  // namespace
}  // namespace tvx::core
