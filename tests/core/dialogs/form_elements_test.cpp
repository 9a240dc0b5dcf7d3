#include "core/control_fixture.h"
#include "tvx/dom/journal.h"
#include "tvx/platform/form.h"

namespace tvx::core {
namespace {

using platform::Form;

class FormElementsOf : public Control {
 protected:
  void open(std::u16string_view html, const std::function<void(Form&)>& user, std::u16string button) {
    start_with(html);
    forms.expect({.form = u"frmForm", .while_open = user, .press = std::move(button)});
    control->insert_Form();
    EXPECT_EQ(forms.expectations(), 0u);
  }
  static std::u16string text(const Form& form, std::u16string_view name) {
    return form.Controls(name).Text();
  }
  static std::vector<std::u16string> encodings(const Form& form) {
    std::vector<std::u16string> items;
    const platform::FormControl& list = form.Controls(u"cboEncType");
    for (int i = 0; i < list.ListCount(); ++i) items.push_back(list.List(i));
    return items;
  }
  std::size_t steps() const { return control->DOM()->tree().journal().depth(); }
};

TEST_F(FormElementsOf, WithoutAFormAllOfTheBodyBecomesOneAndCancelLeavesIt) {
  open(
      u"<P>one</P><P>two</P>",
      [](Form& form) {
        EXPECT_EQ(form.Caption(), u"Form Properties");
        EXPECT_EQ(text(form, u"txtName"), u"FORM1");
        EXPECT_EQ(text(form, u"cboMethod"), u"get");
      },
      u"CancelButton");
  EXPECT_EQ(body(), u"<FORM name=\"FORM1\"><P>one</P><P>two</P></FORM>");
  EXPECT_EQ(steps(), 1u);
}

TEST_F(FormElementsOf, WhatIsConfirmedIsOneStepWithTheNewForm) {
  open(
      u"<P>one</P>",
      [](Form& form) {
        headless::fill(form.Controls(u"txtName"), u"order");
        headless::fill(form.Controls(u"txtAction"), u"send.php");
        headless::fill(form.Controls(u"cboMethod"), u"Post");
        headless::fill(form.Controls(u"cboTarget"), u"_Blank");
      },
      u"OKButton");
  EXPECT_EQ(body(),
            u"<FORM name=\"order\" method=\"post\" action=\"send.php\" target=\"_Blank\"><P>one</P></FORM>");
  EXPECT_EQ(steps(), 1u);
  EXPECT_TRUE(control->IsDirty());
  control->undo_document();
  EXPECT_EQ(body(), u"<P>one</P>");
}

TEST_F(FormElementsOf, TheCaretStaysWhereItIsAndFieldsComeIntoTheForm) {
  start();
  control->set_showFormToolbar(true);
  load(u"<P>one{}</P>");
  forms.expect({.form = u"frmForm", .press = u"OKButton"});
  EXPECT_TRUE(control->press(control->Toolbar2(), u"Form"));
  EXPECT_TRUE(control->press(control->Toolbar2(), u"TextField"));
  EXPECT_EQ(body(), u"<FORM name=\"FORM1\"><P>one<INPUT type=\"text\" id=\"Textbox1\"></P></FORM>");
}

TEST_F(FormElementsOf, OfTwoFormsTheFirstIsEdited) {
  open(
      u"<FORM name=a></FORM><FORM name=b></FORM>",
      [](Form& form) { headless::fill(form.Controls(u"txtName"), u"c"); }, u"OKButton");
  EXPECT_EQ(body(), u"<FORM name=\"c\"></FORM><FORM name=\"b\"></FORM>");
}

TEST_F(FormElementsOf, APostFormShowsItsEncodingAndGetLeavesOne) {
  open(
      u"<FORM method=Post enctype=multipart/form-data></FORM>",
      [](Form& form) {
        EXPECT_EQ(text(form, u"cboEncType"), u"multipart/form-data");
        EXPECT_EQ(encodings(form), (std::vector<std::u16string>{u"application/x-www-form-urlencoded",
                                                                u"multipart/form-data"}));
        headless::fill(form.Controls(u"cboMethod"), u"Get");
        EXPECT_EQ(encodings(form), (std::vector<std::u16string>{u"application/x-www-form-urlencoded"}));
        EXPECT_EQ(text(form, u"cboEncType"), u"application/x-www-form-urlencoded");
        headless::fill(form.Controls(u"cboMethod"), u"Post");
        EXPECT_EQ(encodings(form).size(), 2u);
        EXPECT_EQ(text(form, u"cboEncType"), u"application/x-www-form-urlencoded");
      },
      u"CancelButton");
}

TEST_F(FormElementsOf, OnlyGetWrittenSoLeavesOneEncoding) {
  open(
      u"<FORM></FORM>",
      [](Form& form) {
        EXPECT_EQ(text(form, u"cboMethod"), u"get");
        EXPECT_EQ(encodings(form).size(), 2u);
      },
      u"CancelButton");
}

TEST_F(FormElementsOf, RemovingTheWrapperGivesTheBodyItsContentBack) {
  open(
      u"<P>one</P><P>two</P>", [](Form&) {}, u"cmdRemove");
  EXPECT_EQ(body(), u"<P>one</P><P>two</P>");
  EXPECT_FALSE(control->IsDirty()) << "who called it marks the document";
}

TEST_F(FormElementsOf, WhatStandsBesideARemovedFormGoesToo) {
  open(
      u"<P>before</P><FORM><P>in</P></FORM>", [](Form&) {}, u"cmdRemove");
  EXPECT_EQ(body(), u"<P>in</P>");
  EXPECT_EQ(steps(), 1u);
}

TEST_F(FormElementsOf, PaintingPutsTheFormsPresentValuesBack) {
  open(
      u"<FORM name=a method=post></FORM>",
      [](Form& form) {
        headless::fill(form.Controls(u"txtName"), u"typed");
        form.paint();
        EXPECT_EQ(text(form, u"txtName"), u"a");
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<FORM name=\"a\" method=\"post\"></FORM>");
}

TEST_F(FormElementsOf, ThePromptInTheListOfTargetsIsATargetToo) {
  open(
      u"<FORM></FORM>",
      [](Form& form) { headless::fill(form.Controls(u"cboTarget"), u"<- type frame name ->"); }, u"OKButton");
  EXPECT_EQ(body(), u"<FORM target=\"&lt;- type frame name -&gt;\"></FORM>");
}

TEST_F(FormElementsOf, WhatIsConfirmedAsItWasChangesNothing) {
  open(
      u"<FORM><P>in</P></FORM>", [](Form&) {}, u"OKButton");
  EXPECT_EQ(body(), u"<FORM><P>in</P></FORM>");
  EXPECT_EQ(steps(), 0u);
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(FormElementsOf, AnEncodingThatIsNoneIsSkippedAndTheRestIsWritten) {
  open(
      u"<FORM></FORM>",
      [](Form& form) {
        headless::fill(form.Controls(u"cboEncType"), u"text/nonsense");
        headless::fill(form.Controls(u"cboTarget"), u"main");
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<FORM target=\"main\"></FORM>");
}

TEST_F(FormElementsOf, AContentThatCameMeanwhileIsLeftAlone) {
  open(
      u"<FORM name=a></FORM>",
      [this](Form& form) {
        headless::fill(form.Controls(u"txtName"), u"b");
        control->set_DocumentHTML(u"<FORM name=new></FORM>");
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<FORM name=\"new\"></FORM>");
}

TEST_F(FormElementsOf, EachButtonPutsItsFieldIn) {
  const std::pair<const char16_t*, const char16_t*> buttons[] = {
      {u"TextField", u"<INPUT type=\"text\" id=\"Textbox1\">"},
      {u"textarea", u"<TEXTAREA id=\"TextArea1\"></TEXTAREA>"},
      {u"FileField", u"<INPUT type=\"file\" id=\"Upload1\">"},
      {u"HiddenField", u"<INPUT type=\"hidden\" id=\"Hidden1\">"},
      {u"ImageField", u"<INPUT type=\"image\" id=\"Image1\">"},
      {u"checkbox", u"<INPUT type=\"checkbox\" id=\"Check1\">"},
      {u"dropdown", u"<SELECT id=\"Select1\"></SELECT>"},
      {u"Button", u"<INPUT type=\"button\" id=\"Button1\">"},
      {u"Submit", u"<INPUT type=\"submit\" id=\"Submit\">"},
      {u"Reset", u"<INPUT type=\"reset\" id=\"Reset\">"},
      {u"Radio", u"<INPUT type=\"radio\" id=\"Radio1\">"}};
  start();
  control->set_showFormToolbar(true);
  for (const auto& [key, html] : buttons) {
    load(u"<P>a{}</P>");
    EXPECT_TRUE(control->press(control->Toolbar2(), key));
    EXPECT_EQ(body(), std::u16string(u"<P>a") + html + u"</P>");
  }
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(FormElementsOf, TwoTextFieldsHaveTheSameId) {
  start();
  control->set_showFormToolbar(true);
  load(u"<P>a{}</P>");
  control->press(control->Toolbar2(), u"TextField");
  control->press(control->Toolbar2(), u"TextField");
  EXPECT_EQ(body(), u"<P>a<INPUT type=\"text\" id=\"Textbox1\"><INPUT type=\"text\" id=\"Textbox1\"></P>");
}

TEST_F(FormElementsOf, ABlankTypedBeforeAFieldIsAPlainOne) {
  start();
  control->set_showFormToolbar(true);
  load(u"<P>Name&nbsp;{}</P>");
  control->press(control->Toolbar2(), u"TextField");
  EXPECT_EQ(body(), u"<P>Name <INPUT type=\"text\" id=\"Textbox1\"></P>");
}

TEST_F(FormElementsOf, AHostThatForbidsAButtonKeepsTheDocument) {
  start();
  control->set_showFormToolbar(true);
  load(u"<P>a{}</P>");
  host.on_button = [](std::u16string&, bool& cancel) { cancel = true; };
  control->press(control->Toolbar2(), u"TextField");
  EXPECT_EQ(body(), u"<P>a</P>");
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(FormElementsOf, AFormHasAnIdWithoutBlanks) {
  open(
      u"<FORM id=one name=a></FORM>",
      [](Form& form) {
        EXPECT_EQ(text(form, u"txtId"), u"one");
        headless::fill(form.Controls(u"txtId"), u"two words");
        EXPECT_EQ(form.Controls(u"txtId").fault(), u"An id has no blanks");
        EXPECT_FALSE(form.Controls(u"OKButton").Enabled());
        headless::fill(form.Controls(u"txtId"), u"two");
        EXPECT_TRUE(form.Controls(u"OKButton").Enabled());
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<FORM id=\"two\" name=\"a\"></FORM>");
  EXPECT_EQ(steps(), 1u);
}

}  // namespace
}  // namespace tvx::core
