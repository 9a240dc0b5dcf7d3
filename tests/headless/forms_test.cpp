#include "tvx/headless/forms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tvx::headless {
namespace {

using platform::Form;
using platform::FormControl;
using platform::WindowHandle;
using testing::ElementsAre;

/// A dialog that remembers what closed it.
class ScriptedForms : public testing::Test, private platform::FormHandler {
 protected:
  ScriptedForms() {
    form.add_text_box(u"txtName");
    form.set_default_button(form.add_closing_button(u"cmdOK", u"OK"));
    form.set_cancel_button(form.add_closing_button(u"cmdCancel", u"Cancel"));
    form.set_handler(this);
  }
  void show() { forms.Show(form, WindowHandle{77}); }
  void Click(FormControl& control) override {
    pressed.push_back(control.Name());
    if (control.Name() == u"cmdOK" && form.Controls(u"txtName").Text().empty())
      throw RuntimeError(errors::invalid_call, u"A name, please");
    form.Hide();
  }

  Form form{u"frmName", u"Name"};
  Forms forms;
  std::vector<std::u16string> pressed;
};

TEST_F(ScriptedForms, OneThatNobodyExpectsIsCancelled) {
  show();
  EXPECT_THAT(pressed, ElementsAre(u"cmdCancel"));
  EXPECT_THAT(forms.shown(), ElementsAre(u"frmName"));
  EXPECT_EQ(forms.last_owner(), WindowHandle{77});
}

TEST_F(ScriptedForms, IsFilledAndItsButtonPressedByNameOrCaption) {
  for (const char16_t* button : {u"cmdOK", u"OK"}) {
    pressed.clear();
    forms.expect({.form = u"frmname",
                  .while_open =
                      [this](Form& open) {
                        EXPECT_EQ(forms.open(), &open);
                        open.Controls(u"txtName").set_Text(u"Ada");
                      },
                  .press = button});
    show();
    EXPECT_THAT(pressed, ElementsAre(u"cmdOK"));
    EXPECT_EQ(forms.open(), nullptr);
  }
}

TEST_F(ScriptedForms, APressThatFailsIsToldAndTheDialogCancelled) {
  std::optional<RuntimeError> told;
  forms.on_closed([&](Form&, const ExpectedForm* expected, const std::optional<RuntimeError>& failure) {
    EXPECT_EQ(expected->id, 3);
    told = failure;
  });
  forms.expect({.form = u"frmName", .press = u"cmdOK", .id = 3});
  show();
  ASSERT_TRUE(told);
  EXPECT_EQ(told->text(), u"A name, please");
  EXPECT_THAT(pressed, ElementsAre(u"cmdOK", u"cmdCancel"));

  forms.expect({.form = u"frmName", .press = u"cmdNone", .id = 3});
  show();
  EXPECT_EQ(told->number(), 730);
}

TEST_F(ScriptedForms, AGreyButtonIsNotPressed) {
  form.Controls(u"cmdOK").set_Enabled(false);
  std::optional<RuntimeError> told;
  forms.on_closed([&](Form&, const ExpectedForm*, const auto& failure) { told = failure; });
  forms.expect({.form = u"frmName", .press = u"cmdOK"});
  show();
  ASSERT_TRUE(told);
  EXPECT_EQ(told->number(), errors::invalid_call);
}

TEST_F(ScriptedForms, ExpectationsAreUsedUpInTheirOrder) {
  std::vector<int> used;
  forms.on_closed(
      [&](Form&, const ExpectedForm* expected, const auto&) { used.push_back(expected ? expected->id : 0); });
  forms.expect({.form = u"frmOther", .id = 1});
  forms.expect({.form = u"frmName", .times = 2, .id = 2});
  forms.expect({.form = {}, .id = 3});
  for (int i = 0; i < 4; ++i) show();
  EXPECT_THAT(used, ElementsAre(2, 2, 3, 0));
  forms.forget(1);
  EXPECT_EQ(forms.expectations(), 0u);
}

TEST_F(ScriptedForms, OneOpensAboveTheOther) {
  Form inner(u"frmInner", u"Inner");
  forms.expect({.form = u"frmName", .while_open = [&](Form&) {
                  forms.expect({.form = u"frmInner",
                                .while_open = [&](Form& open) { EXPECT_EQ(forms.open(), &open); }});
                  forms.Show(inner, form.handle());
                  EXPECT_EQ(forms.open(), &form);
                }});
  show();
  EXPECT_THAT(forms.shown(), ElementsAre(u"frmName", u"frmInner"));
}

}  // namespace
}  // namespace tvx::headless
