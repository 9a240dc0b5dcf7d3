#include "tvx/browser/input/typed_character.h"

namespace tvx::browser {

std::int16_t typed_character(const KeyInput& key) {
  constexpr std::int16_t backspace = 8;
  if (key.key == u"Backspace") return backspace;
  if (key.control && !key.alt && key.key_code >= u'A' && key.key_code <= u'Z')
    return static_cast<std::int16_t>(key.key_code - u'A' + 1);
  return key.text.empty() ? std::int16_t{0} : static_cast<std::int16_t>(key.text[0]);
}

}  // namespace tvx::browser
