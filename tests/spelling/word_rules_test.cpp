#include "tvx/spelling/word_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tvx::spelling {

bool address(std::u16string_view text, std::u16string_view word) {
  const std::size_t at = text.find(word);
  EXPECT_NE(at, text.npos);
  return is_in_address(text, at, at + word.size());
}

TEST(WordRules, DigitsDotsAndUnderlinesMakeNames) {
  EXPECT_TRUE(is_asked(u"word"));
  EXPECT_TRUE(is_asked(u"don't"));
  EXPECT_TRUE(is_asked(u"\u05E9\u05DC\u05D5\u05DD"));
  EXPECT_FALSE(is_asked(u"mp3"));
  EXPECT_FALSE(is_asked(u"2nd"));
  EXPECT_FALSE(is_asked(u"1,000"));
  EXPECT_FALSE(is_asked(u"\u0661\u0662"));
  EXPECT_FALSE(is_asked(u"example.com"));
  EXPECT_FALSE(is_asked(u"snake_case"));
  EXPECT_FALSE(is_asked(std::u16string(81, u'a')));
  EXPECT_TRUE(is_asked(std::u16string(80, u'a')));
}

TEST(WordRules, AddressesAreSkipped) {
  EXPECT_TRUE(address(u"see https://exmaple.org/pagge?x=y.", u"pagge"));
  EXPECT_TRUE(address(u"(www.exmaple-shop.org)", u"exmaple"));
  EXPECT_TRUE(address(u"mailto:someboddy", u"someboddy"));
  EXPECT_TRUE(address(u"in /usr/shaer/words now", u"shaer"));
  EXPECT_TRUE(address(u"C:\\wrods\\x", u"wrods"));
  EXPECT_FALSE(address(u"see https://example.org wrold", u"wrold"));
  EXPECT_FALSE(address(u"and/or wrold", u"or")) << "two words";
  EXPECT_FALSE(address(u"he said:wrold", u"wrold"));
}

TEST(WordRules, HyphensBesideAWordMayBelongToIt) {
  const std::u16string text = u"Ein- und Ausfahrt, -weise x";
  EXPECT_THAT(with_hyphens(text, 0, 3), testing::ElementsAre(u"Ein-"));
  EXPECT_THAT(with_hyphens(text, 20, 25), testing::ElementsAre(u"-weise"));
  EXPECT_THAT(with_hyphens(text, 26, 27), testing::IsEmpty());
  EXPECT_THAT(with_hyphens(u"a-b-c", 2, 3), testing::ElementsAre(u"b-", u"-b"));
}

TEST(WordRules, EMailAddressesAreSkipped) {
  EXPECT_TRUE(address(u"write to jhon.deo@exmaple.org, please", u"jhon"));
  EXPECT_TRUE(address(u"write to jhon.deo@exmaple.org, please", u"exmaple"));
  EXPECT_FALSE(address(u"write to jhon @ home", u"jhon"));
  EXPECT_FALSE(address(u"@wrold", u"wrold"));
}

TEST(WordRules, DictionariesAreAskedForComposedLettersAndThePlainApostrophe) {
  EXPECT_EQ(asked_form(u"plain"), u"plain");
  EXPECT_EQ(asked_form(u"e\u0301te\u0301"), u"\u00E9t\u00E9");
  EXPECT_EQ(asked_form(u"don\u2019t"), u"don't");
  EXPECT_EQ(asked_form(u"soft\u00ADhyphen"), u"softhyphen");
}

TEST(WordRules, ASuggestionHasTheCapitalOfTheWord) {
  EXPECT_EQ(like(u"Wrold", u"world"), u"World");
  EXPECT_EQ(like(u"wrold", u"world"), u"world");
  EXPECT_EQ(like(u"germny", u"Germany"), u"Germany");
  EXPECT_EQ(like(u"\u00C9t\u00E9e", u"\u00E9t\u00E9"), u"\u00C9t\u00E9");
  EXPECT_EQ(like(u"don\u2019nt", u"don't"), u"don\u2019t");
}

}  // namespace tvx::spelling
