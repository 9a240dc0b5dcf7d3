#include "contract/text_box_contract.h"

#include "tvx/browser/input/key_table.h"
#include "tvx/headless/clipboard.h"
#include "tvx/source/plain_text_box.h"

namespace tvx::contract {
namespace {

/// The box without a screen.
class PlainRoom {
 public:
  platform::TextBox& box() { return box_; }
  platform::Clipboard& clipboard() { return clipboard_; }
  void show(bool shown) { box_.set_shown(shown); }
  void key(std::u16string_view name, int held) {
    const auto named = browser::named_key_code(name);
    const auto code = static_cast<std::int16_t>(named.value_or(browser::key_code_of(name[0])));
    for (const bool down : {true, false})
      box_.key(code, static_cast<std::int16_t>(held), named || (held & control_key) ? u"" : name, down);
  }

 private:
  headless::Clipboard clipboard_;
  source::PlainTextBox box_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Plain, TextBoxContract, PlainRoom);

}  // namespace tvx::contract
