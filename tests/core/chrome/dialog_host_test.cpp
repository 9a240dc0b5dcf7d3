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

}  // namespace
}  // namespace tvx::core
