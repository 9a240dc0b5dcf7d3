#include "tvx/core/chrome/dialog_host.h"

#include "core/fake_context.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/chrome/words.h"

namespace tvx::core {
namespace {

struct Closing : platform::FormHandler {
  bool cancelled = false;
  void Click(platform::FormControl& button) override {
    cancelled = button.Name() == u"CancelButton";
    form->Hide();
  }
  platform::Form* form = nullptr;
};

struct DialogHostAlone : testing::Test {
  DialogHostAlone() {
    closing.form = &form;
    form.set_cancel_button(form.add_closing_button(u"CancelButton", u"Cancel"));
    form.set_handler(&closing);
  }

  FakeContext context;
  Toolbars toolbars;
  ContextMenus menus;
  TableLabels labels;
  Words words{context, toolbars, menus, labels};
  DialogHost dialogs{context, words};
  platform::Form form{u"frmTest", u"Test"};
  Closing closing;
};

TEST_F(DialogHostAlone, WhereNobodyShowsDialogsItCountsAsCancelled) {
  context.around.forms = nullptr;
  dialogs.show(form, u"Test");
  EXPECT_TRUE(closing.cancelled);
}

TEST_F(DialogHostAlone, WithNoneOpenThereIsNothingToCancel) {
  dialogs.cancel_all();
  EXPECT_FALSE(closing.cancelled);
}

TEST_F(DialogHostAlone, AMissingLanguageFileIsToldForTheBarsAndNotForADialog) {
  context.values.LocalizationFile = u"/no/such/file.xml";
  words.localise(form, u"Test");
  EXPECT_TRUE(context.host.heard.empty());
  words.apply_language_file();
  EXPECT_EQ(context.host.count("Error"), 1u);
}

// --- the host replaces the content while a dialog is open ---

TEST_F(DialogHostAlone, WhatWasConfirmedForAFormerContentFailsAndTheUserIsTold) {
  form.set_default_button(form.add_closing_button(u"OKButton", u"OK"));
  std::vector<std::u16string> told;
  context.dialogs.on_opened([&](const headless::ShownDialog& dialog) {
    if (const auto* box = std::get_if<platform::MessageBox>(&dialog)) told.push_back(box->text);
  });
  context.forms.expect({.form = u"frmTest",
                        .while_open = [this](platform::Form&) { context.load(u"<p>another</p>"); },
                        .press = u"OKButton"});
  EXPECT_THROW(dialogs.show(form, u"Test"), RuntimeError);
  EXPECT_THAT(told, testing::ElementsAre(u"The document has been replaced meanwhile. It stays as it is."));
}

TEST_F(DialogHostAlone, WhoCancelsIsNotTold) {
  bool told = false;
  context.dialogs.on_opened([&](const headless::ShownDialog&) { told = true; });
  context.forms.expect(
      {.form = u"frmTest", .while_open = [this](platform::Form&) { context.load(u"<p>another</p>"); }});
  EXPECT_THROW(dialogs.show(form, u"Test"), RuntimeError);
  EXPECT_FALSE(told);
}

TEST_F(DialogHostAlone, AFieldForColoursOffersThoseOfTheDocument) {
  context.load(u"<p style='color: #123456'>text</p>");
  platform::FormControl& box = form.add_text_box(u"txtColour");
  form.add_button(u"cmdColour", u"...").set_colour_field(box);
  dialogs.show(form, u"Test");
  EXPECT_THAT(box.offered(), testing::ElementsAre(u"#123456"));
}

}  // namespace
}  // namespace tvx::core
