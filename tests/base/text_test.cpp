#include "tvx/base/text.h"

#include <gtest/gtest.h>

namespace tvx {
namespace {

TEST(FirstOccurrence, IsTheFirst) {
  EXPECT_EQ(FirstOccurrence(u"ab", u"xabab"), 1u);
  EXPECT_EQ(FirstOccurrence(u"aab", u"aaab"), 1u);
  EXPECT_EQ(FirstOccurrence(u"", u"abc"), 0u);
  EXPECT_EQ(FirstOccurrence(u"abc", u"ab"), std::u16string::npos);
  EXPECT_EQ(FirstOccurrence(u"b", u"a"), std::u16string::npos);
}

TEST(ReplaceAll, GoesOnBehindWhatItPutIn) { EXPECT_EQ(ReplaceAll(u"a", u"aa", u"a", true), u"aa"); }

TEST(ReplaceAll, TakesOccurrencesFromTheLeft) {
  EXPECT_EQ(ReplaceAll(u"aa", u"b", u"aaaaa", true), u"bba");
  EXPECT_EQ(ReplaceAll(u"abab", u"-", u"abaababab", true), u"aba-ab");
}

TEST(ReplaceAll, IgnoresCaseOnlyWhenTold) {
  EXPECT_EQ(ReplaceAll(u"HTTP://X/", u"", u"http://x/a http://X/b", false), u"a b");
  EXPECT_EQ(ReplaceAll(u"HTTP://X/", u"", u"http://x/a HTTP://X/b", true), u"http://x/a b");
  EXPECT_EQ(ReplaceAll(u"É", u"e", u"caf\u00e9", false), u"cafe");
}

TEST(ReplaceAll, KeepsTheLettersItDoesNotReplace) {
  EXPECT_EQ(ReplaceAll(u"B", u"-", u"aBcbD", false), u"a-c-D");
}

TEST(ReplaceAll, KeepsPlacesWhereUpperCaseIsLonger) {
  EXPECT_EQ(ReplaceAll(u"x", u"y", u"Stra\u00dfe X", false), u"Stra\u00dfe y");
}

TEST(ReplaceAll, FindsNothingInNothing) {
  EXPECT_EQ(ReplaceAll(u"", u"x", u"abc", true), u"abc");
  EXPECT_EQ(ReplaceAll(u"", u"x", u"", false), u"");
  EXPECT_EQ(ReplaceAll(u"abc", u"x", u"ab", true), u"ab");
  EXPECT_EQ(ReplaceAll(u"a", u"", u"aaa", true), u"");
}

TEST(ReplaceAll, WalksOnceOverTheWorstText) {
  const std::u16string pattern = std::u16string(50'000, u'a') + u"b";
  const std::u16string text(2'000'000, u'a');
  EXPECT_EQ(ReplaceAll(pattern, u"", text, false), text);
}

TEST(NullToEmpty, GivesATextForNothing) {
  EXPECT_EQ(NullToEmpty(std::nullopt), u"");
  EXPECT_EQ(NullToEmpty(u"x"), u"x");
}

TEST(FileNameFromPath, IsThePartBehindTheLastBackslash) {
  EXPECT_EQ(FileNameFromPath(u"C:\\x\\y.gif"), u"y.gif");
  EXPECT_EQ(FileNameFromPath(u"y.gif"), u"y.gif");
  EXPECT_EQ(FileNameFromPath(u"C:\\x\\"), u"");
  EXPECT_EQ(FileNameFromPath(u""), u"");
}

TEST(FileNameFromPath, KnowsTheSlashWhereThereIsNoBackslash) {
  EXPECT_EQ(FileNameFromPath(u"/home/x/y.gif"), u"y.gif");
  EXPECT_EQ(FileNameFromPath(u"C:\\a/b.gif"), u"a/b.gif");
}

TEST(TrimNul, CutsAtTheFirstNul) {
  using namespace std::string_view_literals;
  EXPECT_EQ(TrimNul(u"path\0rest\0"sv), u"path");
  EXPECT_EQ(TrimNul(u"path"), u"path");
  EXPECT_EQ(TrimNul(u"\0"sv), u"");
}

}  // namespace
}  // namespace tvx
