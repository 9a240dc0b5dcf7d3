#include "tvx/browser/input/key_table.h"

#include <gtest/gtest.h>

namespace tvx::browser {
namespace {

TEST(KeyTable, KnowsKeysByName) {
  EXPECT_EQ(named_key_code(u"Enter"), 13);
  EXPECT_EQ(named_key_code(u"ArrowLeft"), 37);
  EXPECT_EQ(named_key_code(u" "), 32);
  EXPECT_EQ(named_key_code(u"F1"), 112);
  EXPECT_EQ(named_key_code(u"F24"), 135);
  for (const char16_t* name : {u"F", u"F0", u"F01", u"F25", u"F1x", u"a", u"", u"Nothing"})
    EXPECT_FALSE(named_key_code(name));
}

TEST(KeyTable, BothCharactersOfAKeyHaveItsNumber) {
  EXPECT_EQ(key_code_of(u'a'), 65);
  EXPECT_EQ(key_code_of(u'A'), 65);
  EXPECT_EQ(key_code_of(u'1'), 49);
  EXPECT_EQ(key_code_of(u'!'), 49);
  EXPECT_EQ(key_code_of(u')'), 48);
  EXPECT_EQ(key_code_of(u';'), 186);
  EXPECT_EQ(key_code_of(u':'), 186);
}

TEST(KeyTable, NoCharacterHasTheNumberThatTakesAKeyAway) {
  for (int c = 1; c < 0x10000; ++c) ASSERT_NE(key_code_of(static_cast<char16_t>(c)), 0) << c;
  EXPECT_EQ(key_code_of(u'\u00E4'), unnumbered_key);
}

}  // namespace
}  // namespace tvx::browser
