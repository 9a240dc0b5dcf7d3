#include "tvx/spelling/string_tokens.h"

#include <gtest/gtest.h>

namespace tvx::spelling {

using Texts = std::vector<std::u16string>;
using Positions = std::vector<std::int32_t>;

class Tokens : public ::testing::Test {
 protected:
  bool scan(std::u16string_view text, std::int32_t start = 0, std::int32_t end = 0) {
    return string.TokenizeStr(text, positions, tokens, count, start, end);
  }
  clsString string;
  Positions positions;
  Texts tokens;
  std::int32_t count = -1;
};

TEST_F(Tokens, BlanksAndControlCharactersEndATokenAndPositionsCountFromOne) {
  EXPECT_TRUE(scan(u" one\ttwo\r\n\u007Fthree"));
  EXPECT_EQ(tokens, (Texts{u"one", u"two", u"three"}));
  EXPECT_EQ(positions, (Positions{2, 6, 12}));
  EXPECT_EQ(count, 3);
}

TEST_F(Tokens, FurtherDelimitersAreBlanks) {
  EXPECT_EQ(string.UserDelim(), u"");
  string.set_UserDelim(u",;");
  EXPECT_TRUE(scan(u"a,b;;c d"));
  EXPECT_EQ(tokens, (Texts{u"a", u"b", u"c", u"d"}));
}

TEST_F(Tokens, APartOfTheText) {
  EXPECT_TRUE(scan(u"one two three", 3, 9));
  EXPECT_EQ(tokens, (Texts{u"e", u"two", u"t"}));
  EXPECT_EQ(positions, (Positions{3, 5, 9}));
  EXPECT_TRUE(scan(u"one two", -4, -1)) << "below 1: the whole";
  EXPECT_EQ(count, 2);
}

TEST_F(Tokens, NothingIsProducedOfAnEmptyTextOrPositionsAfterItsEnd) {
  tokens = {u"kept"};
  EXPECT_FALSE(scan(u""));
  EXPECT_FALSE(scan(u"abc", 1, 4));
  EXPECT_FALSE(scan(u"abc", 4, 3));
  EXPECT_EQ(tokens, Texts{u"kept"});
  EXPECT_EQ(count, -1);
  EXPECT_TRUE(scan(u"abc", 3, 2)) << "an end before the start holds nothing";
  EXPECT_EQ(count, 0);
}

TEST_F(Tokens, LettersAboveTheCodePageAreOrdinary) {
  EXPECT_TRUE(scan(u"\u00E9t\u00E9 \u4E2D"));
  EXPECT_EQ(tokens, (Texts{u"\u00E9t\u00E9", u"\u4E2D"}));
}

TEST_F(Tokens, ControlCharactersAreStripped) {
  EXPECT_EQ(clsString::StripCtrlCharsInStr(u"a\tb\u007F c\u001F\u0080"), u"ab c\u0080");
  EXPECT_EQ(clsString::StripCtrlCharsInStr(u""), u"");
}

}  // namespace tvx::spelling
