#include <gtest/gtest.h>

#include "contract/clipboard_contract.h"
#include "contract/forms_contract.h"
#include "contract/menus_contract.h"
#include "contract/message_loop_contract.h"
#include "contract/view_contract.h"
#include "contract/wait_contract.h"
#include "tvx/base/error.h"
#include "tvx/browser/input/key_table.h"
#include "tvx/headless/clipboard.h"
#include "tvx/headless/form_keys.h"
#include "tvx/headless/forms.h"
#include "tvx/headless/menus.h"
#include "tvx/headless/message_loop.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"

/// The parts without a screen keep what the desktop's keep.
namespace tvx::contract {
namespace {

class ScriptedUser final : public FormUser {
 public:
  explicit ScriptedUser(Form& form) : form_(form) {}
  void type(std::u16string_view box, std::u16string_view text) override {
    attempt([&] { headless::fill(form_.Controls(box), text); });
  }
  void key(std::u16string_view box, std::u16string_view name) override {
    form_.SetFocus(form_.Controls(box));
    browser::KeyInput key{.key = std::u16string(name), .text = {}};
    if (const auto code = browser::named_key_code(name)) {
      key.key_code = *code;
    } else {
      key.text = name;
      key.key_code = browser::key_code_of(name[0]);
    }
    headless::type_key(form_, key);
  }
  void press(std::u16string_view button) override { form_.Controls(button).click(); }
  void pick(std::u16string_view list, int item) override { form_.Controls(list).choose(item); }
  void double_click(std::u16string_view list, int item) override {
    pick(list, item);
    form_.Controls(list).double_click();
  }
  void give_up() override { form_.cancel(); }

 private:
  Form& form_;
};

class FormsRoom {
 public:
  platform::Forms& forms() { return forms_; }
  void next(Form&, std::function<void(FormUser&)> user) {
    forms_.expect({.form = {}, .while_open = [user](Form& form) {
                     ScriptedUser scripted(form);
                     user(scripted);
                   }});
  }

 private:
  headless::Forms forms_;
};

class MenusRoom {
 public:
  platform::PopupMenus& menus() { return menus_; }
  int opened() const { return static_cast<int>(menus_.shown().size()); }
  void next(std::function<void()> while_open, std::u16string item) {
    menus_.expect(
        {.menu = {}, .choose = std::move(item), .while_open = [while_open](Menu&) { while_open(); }});
  }

 private:
  headless::Menus menus_;
};

class ViewRoom {
 public:
  View& view() { return view_; }
  platform::MessageLoop& loop() { return loop_; }

 private:
  headless::VirtualTimeLoop loop_;
  headless::View view_{loop_};
};

class WaitRoom {
 public:
  platform::Forms& forms() { return forms_; }
  void act(Form& form, const std::function<void(FormUser&)>& user) {
    ScriptedUser scripted(form);
    user(scripted);
  }
  void wait(int) {}

 private:
  headless::Forms forms_;
};

}  // namespace

using Loops = testing::Types<headless::MessageLoop, headless::VirtualTimeLoop>;
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, MessageLoopContract, Loops);
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, ClipboardContract, headless::Clipboard);
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, FormsContract, FormsRoom);
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, MenusContract, MenusRoom);
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, WaitContract, WaitRoom);
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, ViewContract, ViewRoom);

}  // namespace tvx::contract
