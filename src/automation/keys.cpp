#include "tvx/automation/keys.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/browser/input/key_table.h"

namespace tvx::automation {

namespace {

bool is_one_character(std::u16string_view key) {
  return key.size() == 1 || (key.size() == 2 && is_high_surrogate(key[0]) && is_low_surrogate(key[1]));
}

}  // namespace

browser::KeyInput key_input(std::u16string_view key, Modifiers modifiers) {
  browser::KeyInput input;
  input.shift = modifiers.shift;
  input.control = modifiers.control;
  input.alt = modifiers.alt;
  const std::u16string_view name = key == u"Space" ? u" " : key;
  if (const auto code = browser::named_key_code(name)) {
    input.key = name;
    input.key_code = *code;
    if (name == u" " && !modifiers.control && !modifiers.alt) input.text = name;
    return input;
  }
  if (!is_one_character(key))
    throw RuntimeError(errors::invalid_call, u"No such key: " + std::u16string(key));
  input.key = modifiers.shift ? ascii_upper(key) : std::u16string(key);
  input.key_code = browser::key_code_of(key[0]);
  if (!modifiers.control && !modifiers.alt) input.text = input.key;
  return input;
}

}  // namespace tvx::automation
