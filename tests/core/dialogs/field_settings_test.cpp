#include "core/control_fixture.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/dom/journal.h"
#include "tvx/headless/form_keys.h"
#include "tvx/platform/form.h"

namespace tvx::core {
namespace {

using platform::Form;

class FieldSettingsOf : public Control {
 protected:
  /// By a double click on the first element of that tag.
  void open(std::u16string_view html, dom::Tag tag, const std::function<void(Form&)>& user,
            std::u16string button = u"OKButton") {
    start_with(html);
    forms.expect({.form = u"frmField", .while_open = user, .press = std::move(button)});
    control->DOM()->double_click(at(element(tag)));
    EXPECT_EQ(forms.expectations(), 0u);
  }
  static void fill(Form& form, std::u16string_view name, std::u16string_view text) {
    headless::fill(form.Controls(name), text);
  }
  static void add_option(Form& form, std::u16string_view text, std::u16string_view value = {}) {
    form.Controls(u"cmdAddOption").click();
    fill(form, u"txtOptionText", text);
    if (!value.empty()) fill(form, u"txtOptionValue", value);
  }
  std::size_t steps() const { return control->DOM()->tree().journal().depth(); }
};

TEST_F(FieldSettingsOf, ATextFieldIsNamedSizedAndFilledInOneStep) {
  open(u"<P><INPUT type=text id=Textbox1></P>", dom::Tag::Input, [](Form& form) {
    EXPECT_EQ(form.Controls(u"txtId").Text(), u"Textbox1");
    EXPECT_EQ(form.Controls(u"cboType").Text(), u"text");
    fill(form, u"txtName", u"surname");
    fill(form, u"txtId", u"surname");
    fill(form, u"txtSize", u"30");
    fill(form, u"txtValue", u"Lovelace");
  });
  EXPECT_EQ(body(),
            u"<P><INPUT type=\"text\" id=\"surname\" name=\"surname\" value=\"Lovelace\" size=\"30\"></P>");
  EXPECT_EQ(steps(), 1u);
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(FieldSettingsOf, CancelAndAnUnchangedOKLeaveNoStep) {
  const std::u16string html = u"<P><INPUT type=\"checkbox\" name=\"a\" checked=\"\"></P>";
  open(
      html, dom::Tag::Input, [](Form& form) { fill(form, u"txtName", u"b"); }, u"CancelButton");
  EXPECT_EQ(body(), html);
  EXPECT_FALSE(control->IsDirty());
  open(html, dom::Tag::Input, [](Form&) {});
  EXPECT_EQ(body(), html);
  EXPECT_EQ(steps(), 0u);
}

TEST_F(FieldSettingsOf, CheckingAnOptionButtonTakesTheCheckFromTheOthersOfItsName) {
  open(u"<FORM><INPUT type=radio><INPUT type=radio name=size value=l checked></FORM>", dom::Tag::Input,
       [](Form& form) {
         fill(form, u"txtName", u"size");
         fill(form, u"txtValue", u"s");
         headless::tick(form.Controls(u"chkChecked"), true);
       });
  EXPECT_EQ(body(),
            u"<FORM><INPUT type=\"radio\" name=\"size\" value=\"s\" checked=\"\">"
            u"<INPUT type=\"radio\" name=\"size\" value=\"l\"></FORM>");
}

TEST_F(FieldSettingsOf, WhatAKindHasNotIsNotShown) {
  open(u"<P><TEXTAREA></TEXTAREA></P>", dom::Tag::Textarea, [](Form& form) {
    for (const std::u16string_view name : {u"cboType", u"txtSize", u"chkChecked", u"fraOptions"})
      EXPECT_FALSE(form.Controls(name).Visible());
    fill(form, u"txtRows", u"4");
    fill(form, u"txtCols", u"40");
  });
  EXPECT_EQ(body(), u"<P><TEXTAREA cols=\"40\" rows=\"4\"></TEXTAREA></P>");
}

TEST_F(FieldSettingsOf, ATextOfSeveralLinesStays) {
  open(u"<P><TEXTAREA>one\ntwo</TEXTAREA></P>", dom::Tag::Textarea,
       [](Form& form) { fill(form, u"txtName", u"note"); });
  EXPECT_EQ(body(), u"<P><TEXTAREA name=\"note\">one\ntwo</TEXTAREA></P>");
}

TEST_F(FieldSettingsOf, OptionsAreMadeOneAfterTheOther) {
  open(u"<P><SELECT id=Select1></SELECT></P>", dom::Tag::Select, [](Form& form) {
    add_option(form, u"Small", u"s");
    add_option(form, u"Medium", u"m");
    headless::tick(form.Controls(u"chkOptionSelected"), true);
    add_option(form, u"Large");
    EXPECT_EQ(form.Controls(u"lstOptions").ListCount(), 3);
  });
  EXPECT_EQ(body(),
            u"<P><SELECT id=\"Select1\"><OPTION value=\"s\">Small</OPTION>"
            u"<OPTION value=\"m\" selected=\"\">Medium</OPTION><OPTION>Large</OPTION></SELECT></P>");
  EXPECT_EQ(steps(), 1u);
}

TEST_F(FieldSettingsOf, OptionsAreMovedRemovedAndRewritten) {
  open(u"<P><SELECT><OPTION class=x>a</OPTION><OPTION>b</OPTION><OPTION>c</OPTION></SELECT></P>",
       dom::Tag::Select, [](Form& form) {
         form.Controls(u"lstOptions").choose(0);
         form.Controls(u"cmdOptionDown").click();
         EXPECT_EQ(form.Controls(u"lstOptions").ListIndex(), 1);
         form.Controls(u"lstOptions").choose(2);
         form.Controls(u"cmdRemoveOption").click();
         form.Controls(u"lstOptions").choose(0);
         fill(form, u"txtOptionText", u"first");
       });
  EXPECT_EQ(body(), u"<P><SELECT><OPTION>first</OPTION><OPTION class=\"x\">a</OPTION></SELECT></P>");
}

TEST_F(FieldSettingsOf, OptionsInGroupsStayInThem) {
  open(u"<P><SELECT><OPTGROUP label=g><OPTION>a</OPTION></OPTGROUP><OPTION>b</OPTION></SELECT></P>",
       dom::Tag::Select, [](Form& form) {
         form.Controls(u"lstOptions").choose(0);
         add_option(form, u"new");
       });
  EXPECT_EQ(body(),
            u"<P><SELECT><OPTGROUP label=\"g\"><OPTION>a</OPTION><OPTION>new</OPTION></OPTGROUP>"
            u"<OPTION>b</OPTION></SELECT></P>");
}

TEST_F(FieldSettingsOf, AllOptionsMayGo) {
  open(u"<P><SELECT><OPTION>a</OPTION></SELECT></P>", dom::Tag::Select, [](Form& form) {
    form.Controls(u"cmdRemoveOption").click();
    EXPECT_FALSE(form.Controls(u"cmdRemoveOption").Enabled());
    EXPECT_FALSE(form.Controls(u"txtOptionText").Enabled());
  });
  EXPECT_EQ(body(), u"<P><SELECT></SELECT></P>");
}

TEST_F(FieldSettingsOf, WrongInputIsMarkedAndCantBeConfirmed) {
  open(
      u"<P><INPUT type=text></P>", dom::Tag::Input,
      [](Form& form) {
        fill(form, u"txtSize", u"wide");
        EXPECT_EQ(form.Controls(u"txtSize").fault(), u"This is no whole number");
        EXPECT_FALSE(form.Controls(u"OKButton").Enabled());
        fill(form, u"txtSize", u"0");
        EXPECT_EQ(form.Controls(u"txtSize").fault(), u"This number is too small");
        fill(form, u"txtSize", u"");
        EXPECT_EQ(form.Controls(u"txtSize").fault(), u"");
        EXPECT_TRUE(form.Controls(u"OKButton").Enabled());
        fill(form, u"txtId", u"two words");
        EXPECT_FALSE(form.Controls(u"OKButton").Enabled());
      },
      u"CancelButton");
}

TEST_F(FieldSettingsOf, TheMenuOfTheMouseHasItForFieldsAlone) {
  start_with(u"<P>text</P><P><INPUT type=text></P>");
  menus.expect({.menu = u"mnuMisc", .while_open = [](platform::Menu& menu) {
                  EXPECT_FALSE(menu.find(u"mnuMiscField")->Visible());
                  EXPECT_FALSE(menu.find(u"mnuMiscForm")->Visible());
                  EXPECT_FALSE(menu.find(u"mnuMiscFieldSep")->Visible());
                }});
  control->DOM()->mouse_press(at(element(dom::Tag::P), browser::MouseButton::Right));
  EXPECT_EQ(menus.expectations(), 0u);
  menus.expect({.menu = u"mnuMisc", .choose = u"mnuMiscField"});
  forms.expect({.form = u"frmField",
                .while_open = [](Form& form) { fill(form, u"txtName", u"a"); },
                .press = u"OKButton"});
  control->DOM()->mouse_press(at(element(dom::Tag::Input), browser::MouseButton::Right));
  EXPECT_EQ(*element(dom::Tag::Input)->attribute(dom::names::name), u"a");
  EXPECT_GE(host.count("MenuClick: ContextMISCFieldSettings"), 1u);
}

TEST_F(FieldSettingsOf, AHostsListHidesTheItem) {
  start_with(u"<P><INPUT type=text></P>");
  control->set_HiddenContextMenus(u"MiscField");
  menus.expect({.menu = u"mnuMisc", .while_open = [](platform::Menu& menu) {
                  EXPECT_FALSE(menu.find(u"mnuMiscField")->Visible());
                }});
  control->DOM()->mouse_press(at(element(dom::Tag::Input), browser::MouseButton::Right));
  EXPECT_EQ(menus.expectations(), 0u);
}

TEST_F(FieldSettingsOf, TheFormAroundTheMouseHasItsSettingsThere) {
  start_with(u"<FORM name=a></FORM><FORM name=b><P>text</P></FORM>");
  menus.expect({.menu = u"mnuMisc", .choose = u"mnuMiscForm"});
  forms.expect({.form = u"frmForm",
                .while_open = [](Form& form) { fill(form, u"txtName", u"c"); },
                .press = u"OKButton"});
  control->DOM()->mouse_press(at(element(dom::Tag::P), browser::MouseButton::Right));
  EXPECT_EQ(body(), u"<FORM name=\"a\"></FORM><FORM name=\"c\"><P>text</P></FORM>");
  EXPECT_GE(host.count("MenuClick: ContextMISCFormSettings"), 1u);
}

TEST_F(FieldSettingsOf, NobodyOpensItWhereTheDocumentMayNotBeEdited) {
  start_with(u"<P><INPUT type=text></P>");
  control->set_EditorEnabled(false);
  control->DOM()->double_click(at(element(dom::Tag::Input)));
  EXPECT_TRUE(forms.shown().empty());
}

TEST_F(FieldSettingsOf, AContentThatCameMeanwhileIsLeftAlone) {
  open(u"<P><INPUT type=text></P>", dom::Tag::Input, [this](Form& form) {
    fill(form, u"txtName", u"a");
    control->set_DocumentHTML(u"<P><INPUT type=text></P>");
  });
  EXPECT_EQ(body(), u"<P><INPUT type=\"text\"></P>");
}

// --- by the element path ---

class FieldSettingsByThePath : public FieldSettingsOf {
 protected:
  void press(dom::Tag tag) {
    const auto at_index = control->DOM()->tree().source_index(*element(tag));
    ASSERT_TRUE(control->press(control->tlbDOM(), u"KEY" + to_text(std::int64_t(at_index))));
    EXPECT_EQ(menus.expectations(), 0u);
  }
  void start_in_field() {
    start_with(u"<FORM><P><INPUT type=hidden id=a></P></FORM>");
    control->DOM()->mouse_press(at(element(dom::Tag::Input)));
  }
};

TEST_F(FieldSettingsByThePath, AFieldHasItsSettingsInItsMenu) {
  start_in_field();
  menus.expect({.menu = u"mnuToolProp", .choose = u"mnuToolField", .while_open = [](platform::Menu& menu) {
                  EXPECT_TRUE(menu.find(u"mnuToolField")->Visible());
                  EXPECT_FALSE(menu.find(u"mnuToolForm")->Visible());
                  EXPECT_TRUE(menu.find(u"mnuToolFieldSep")->Visible());
                }});
  forms.expect({.form = u"frmField",
                .while_open = [](Form& form) { fill(form, u"txtName", u"key"); },
                .press = u"OKButton"});
  press(dom::Tag::Input);
  EXPECT_EQ(control->DocumentHTML(), u"<FORM><P><INPUT type=\"hidden\" id=\"a\" name=\"key\"></P></FORM>");
  EXPECT_GE(host.count("MenuClick: DOMFieldSettings"), 1u);
  EXPECT_EQ(steps(), 1u);
}

TEST_F(FieldSettingsByThePath, AFormHasThemToo) {
  start_in_field();
  menus.expect({.menu = u"mnuToolProp", .choose = u"mnuToolForm"});
  forms.expect({.form = u"frmForm",
                .while_open = [](Form& form) { fill(form, u"txtId", u"order"); },
                .press = u"OKButton"});
  press(dom::Tag::Form);
  EXPECT_EQ(control->DocumentHTML(), u"<FORM id=\"order\"><P><INPUT type=\"hidden\" id=\"a\"></P></FORM>");
  EXPECT_GE(host.count("MenuClick: DOMFormSettings"), 1u);
}

TEST_F(FieldSettingsByThePath, WhatIsNeitherHasNone) {
  start_in_field();
  menus.expect({.menu = u"mnuToolProp", .while_open = [](platform::Menu& menu) {
                  for (const auto* name : {u"mnuToolField", u"mnuToolForm", u"mnuToolFieldSep"})
                    EXPECT_FALSE(menu.find(name)->Visible());
                }});
  press(dom::Tag::P);
  control->set_HiddenContextMenus(u"ToolField");
  menus.expect({.menu = u"mnuToolProp", .while_open = [](platform::Menu& menu) {
                  EXPECT_FALSE(menu.find(u"mnuToolField")->Visible());
                }});
  press(dom::Tag::Input);
}

}  // namespace
}  // namespace tvx::core
