#include "tvx/browser/input/typed_character.h"

#include <gtest/gtest.h>

namespace tvx::browser {
namespace {

TEST(TypedCharacter, OfALetterIsTheLetter) {
  EXPECT_EQ(typed_character({.key = u"a", .text = u"a", .key_code = u'A'}), u'a');
  EXPECT_EQ(typed_character({.key = u"F1", .key_code = 112}), 0);
  EXPECT_EQ(typed_character({.key = u"Backspace", .key_code = 8}), 8);
}

TEST(TypedCharacter, WithControlIsTheLettersNumber) {
  EXPECT_EQ(typed_character({.key = u"a", .key_code = u'A', .control = true}), 1);
  EXPECT_EQ(typed_character({.key = u"z", .key_code = u'Z', .control = true}), 26);
  EXPECT_EQ(typed_character({.key = u"1", .text = u"1", .key_code = u'1', .control = true}), u'1');
  EXPECT_EQ(typed_character({.key = u"q", .text = u"@", .key_code = u'Q', .control = true, .alt = true}),
            u'@')
      << "the third level of a keyboard";
}

}  // namespace
}  // namespace tvx::browser
