#include "core/control_fixture.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/dom/journal.h"
#include "tvx/headless/form_keys.h"
#include "tvx/platform/form.h"

namespace tvx::core {
namespace {

using dom::Tag;

/// A host that puts another content in while a dialog is open.
class ReplacedContent : public Control {
 protected:
  /// Fills the dialog, replaces the content, and confirms: nothing of it reaches the new content, which is as
  /// it came, and the user is told.
  void expect_left_alone(std::u16string_view html, std::u16string form, std::u16string_view box,
                         std::u16string button, const std::function<void()>& open) {
    start_with(html);
    int told = 0;
    dialogs.on_opened([&](const headless::ShownDialog& shown) {
      const auto* message = std::get_if<platform::MessageBox>(&shown);
      if (message && message->text == u"The document has been replaced meanwhile. It stays as it is.") ++told;
    });
    forms.expect({.form = form,
                  .while_open =
                      [&](platform::Form& shown) {
                        headless::fill(shown.Controls(box), u"5");
                        control->set_DocumentHTML(u"<P>new</P>");
                      },
                  .press = std::move(button)});
    open();
    EXPECT_EQ(forms.expectations(), 0u) << to_utf8(form);
    EXPECT_EQ(menus.expectations(), 0u) << to_utf8(form);
    EXPECT_EQ(body(), u"<P>new</P>") << to_utf8(form);
    EXPECT_FALSE(control->IsDirty()) << to_utf8(form);
    EXPECT_EQ(control->DOM()->tree().journal().depth(), 0u) << to_utf8(form);
    EXPECT_EQ(told, 1) << to_utf8(form);
    dialogs.on_opened({});
  }
  void choose_in_path(Tag tag, std::u16string item) {
    control->DOM()->mouse_press(at(element(tag)));
    menus.expect({.menu = u"mnuToolProp", .choose = std::move(item)});
    const auto place = std::int64_t(control->DOM()->tree().source_index(*element(tag)));
    control->press(control->tlbDOM(), u"KEY" + to_text(place));
  }
  void choose_by_mouse(Tag tag, std::u16string menu, std::u16string item) {
    menus.expect({.menu = std::move(menu), .choose = std::move(item)});
    control->DOM()->mouse_press(at(element(tag), browser::MouseButton::Right));
  }
};

constexpr char16_t table[] = u"<TABLE><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>";

TEST_F(ReplacedContent, TakesNoNewTableAndNoSettingsOfOne) {
  expect_left_alone(u"<P>old</P>", u"Frminserttable", u"txttablerow", u"cmdApply",
                    [this] { control->Table_Document(); });
  expect_left_alone(table, u"Frminserttable", u"txtBorderwidth", u"cmdApply",
                    [this] { choose_by_mouse(Tag::Table, u"mnuT", u"mnuTProp"); });
  expect_left_alone(table, u"Frminserttable", u"txtBorderwidth", u"cmdApply",
                    [this] { choose_in_path(Tag::Table, u"mnuToolProperties"); });
}

TEST_F(ReplacedContent, TakesNoSettingsOfACellOrARow) {
  expect_left_alone(table, u"frmCellProp", u"txtWidth", u"OKButton",
                    [this] { choose_in_path(Tag::Td, u"mnuToolProperties"); });
  expect_left_alone(table, u"frmCellProp", u"txtBgcolor", u"OKButton",
                    [this] { choose_in_path(Tag::Tr, u"mnuToolProperties"); });
}

TEST_F(ReplacedContent, TakesNoTag) {
  expect_left_alone(u"<P>old <B>b</B></P>", u"frmEleCode", u"txtEleCode", u"OKButton",
                    [this] { choose_in_path(Tag::B, u"mnuToolEditTag"); });
}

TEST_F(ReplacedContent, TakesNoFont) {
  expect_left_alone(u"<P>old</P>", u"frmFont", u"Combo2", u"cmdApply", [this] { control->change_Font(); });
}

TEST_F(ReplacedContent, TakesNoSettingsOfAFormOrAField) {
  expect_left_alone(u"<FORM>old</FORM>", u"frmForm", u"txtName", u"OKButton",
                    [this] { control->insert_Form(); });
  expect_left_alone(u"<FORM>old</FORM>", u"frmForm", u"txtName", u"cmdRemove",
                    [this] { control->insert_Form(); });
  expect_left_alone(u"<P><INPUT></P>", u"frmField", u"txtName", u"OKButton",
                    [this] { control->DOM()->double_click(at(element(Tag::Input))); });
  expect_left_alone(u"<P><INPUT></P>", u"frmField", u"txtName", u"OKButton",
                    [this] { choose_in_path(Tag::Input, u"mnuToolField"); });
}

TEST_F(ReplacedContent, TakesNoSettingsOfAnImage) {
  expect_left_alone(u"<P><IMG src=a.png width=4></P>", u"frmImageSettings", u"txtWidth", u"OKButton",
                    [this] { choose_by_mouse(Tag::Img, u"mnuImg", u"mnuImgProperties"); });
  expect_left_alone(u"<P><IMG src=a.png width=4></P>", u"frmImageSettings", u"txtWidth", u"cmdReset",
                    [this] { choose_in_path(Tag::Img, u"mnuToolProperties"); });
}

}  // namespace
}  // namespace tvx::core
