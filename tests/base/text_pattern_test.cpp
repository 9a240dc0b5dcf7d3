#include "tvx/base/text_pattern.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "support/failures.h"
#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Sought {
  std::u16string text;
  TextPattern::Options options = {};
};

std::vector<std::string> found(const Sought& sought, std::u16string_view text) {
  std::vector<std::string> all;
  for (const auto& hit : TextPattern(sought.text, sought.options).hits_in(text))
    all.push_back(std::to_string(hit.from) + " " + to_utf8(text.substr(hit.from, hit.to - hit.from)));
  return all;
}

std::vector<std::string> replaced(const Sought& sought, std::u16string_view text,
                                  std::u16string_view replacement) {
  const TextPattern pattern(sought.text, sought.options);
  std::vector<std::string> all;
  const auto hits = pattern.hits_in(text);
  for (const std::u16string& each : pattern.replacements_of(hits, text, replacement))
    all.push_back(to_utf8(each));
  return all;
}

constexpr TextPattern::Options expression{.regular_expression = true};

TEST(TextPattern, LettersAreFoundWithoutRegardToCase) {
  EXPECT_THAT(found({u"one"}, u"One, oNE and bones"), ElementsAre("0 One", "5 oNE", "14 one"));
  EXPECT_THAT(found({u"one", {.match_case = true}}, u"One, oNE and bones"), ElementsAre("14 one"));
  EXPECT_THAT(found({u"ÄRGER"}, u"ärger"), ElementsAre("0 ärger"));
  EXPECT_THAT(found({u"σας"}, u"ΣΑΣ"), ElementsAre("0 ΣΑΣ"));
}

TEST(TextPattern, HitsDontOverlap) {
  EXPECT_THAT(found({u"aa"}, u"aaaaa"), ElementsAre("0 aa", "2 aa"));
  EXPECT_THAT(found({u""}, u"aaa"), IsEmpty());
}

TEST(TextPattern, ANoBreakSpaceIsABlank) {
  EXPECT_THAT(found({u"a b"}, u"a\u00A0b a b"), ElementsAre("0 a\u00A0b", "4 a b"));
  EXPECT_THAT(found({u"a\u00A0b"}, u"a b"), ElementsAre("0 a b"));
}

TEST(TextPattern, ALetterWithAnAccentOfItsOwnIsAnotherLetter) {
  EXPECT_THAT(found({u"cafe"}, u"cafe\u0301 cafe"), ElementsAre("6 cafe"));
  EXPECT_THAT(found({u"e", expression}, u"e\u0301 e"), ElementsAre("3 e"));
}

TEST(TextPattern, WholeWordsEndWhereUnicodeSaysSo) {
  const TextPattern::Options words{.whole_words = true};
  EXPECT_THAT(found({u"one", words}, u"one bones one's one."), ElementsAre("0 one", "16 one"));
  EXPECT_THAT(found({u"été", words}, u"été, étéx, l'été"), ElementsAre("0 été"));
  EXPECT_THAT(found({u"foo-bar", words}, u"foo-bar foo-bars"), ElementsAre("0 foo-bar"));
  EXPECT_THAT(found({u"猫", words}, u"猫 犬"), ElementsAre("0 猫"));
  EXPECT_THAT(found({u"o\\w+", {.whole_words = true, .regular_expression = true}}, u"one bones"),
              ElementsAre("0 one"));
}

TEST(TextPattern, AWordInAVeryLongLineIsFound) {
  std::u16string line(300000, u'-');
  line += u"Ünter";
  line += std::u16string(300000, u'-');
  EXPECT_THAT(found({u"ünter", {.whole_words = true}}, line), ElementsAre("300000 Ünter"));
}

TEST(TextPattern, ExpressionsStayInTheirLine) {
  EXPECT_THAT(found({u"b[^x]*", expression}, u"abc\nbd"), ElementsAre("1 bc", "4 bd"));
  EXPECT_THAT(found({u"^.", expression}, u"ab\ncd"), ElementsAre("0 a", "3 c"));
  EXPECT_THAT(found({u".$", expression}, u"ab\ncd"), ElementsAre("1 b", "4 d"));
  EXPECT_THAT(found({u"x*", expression}, u"axxb"), ElementsAre("1 xx")) << "an empty hit is none";
}

TEST(TextPattern, ExpressionsGoOverLinesWhereTheyMay) {
  EXPECT_THAT(found({u"b\\s+c", {.regular_expression = true, .across_lines = true}}, u"ab\n  cd"),
              ElementsAre("1 b\n  c"));
  EXPECT_THAT(found({u"^c", {.regular_expression = true, .across_lines = true}}, u"ab\ncd"),
              ElementsAre("3 c"));
}

TEST(TextPattern, GroupsComeIntoTheReplacement) {
  EXPECT_THAT(replaced({u"(\\w+)@(?<host>\\w+)", expression}, u"a@b c@d", u"${host}: $1 ($0)"),
              ElementsAre("b: a (a@b)", "d: c (c@d)"));
  EXPECT_THAT(replaced({u"(a)", expression}, u"a", u"$12\\$1\\n\\t\\\\"), ElementsAre("a2$1\n\t\\"));
  EXPECT_THAT(replaced({u"a"}, u"a A", u"$1\\n"), ElementsAre("$1\\n", "$1\\n")) << "no expression";
  EXPECT_THAT(replaced({u"(?<=x)a|b", expression}, u"xa b", u"[$0]"), ElementsAre("[a]", "[b]"))
      << "what stands before a hit still counts";
}

TEST(TextPattern, WhatIsNoExpressionIsSaid) {
  for (const char16_t* text : {u"(", u"[a", u"*", u"a{2", u"\\"})
    EXPECT_EQ(words_of_failure([&] { TextPattern(text, expression); }), "5 This is no regular expression")
        << to_utf8(text);
}

TEST(TextPattern, AGroupThatIsNotThereIsSaid) {
  for (const char16_t* text : {u"$1", u"${a}", u"${a", u"$", u"$x"})
    EXPECT_EQ(words_of_failure([&] {
                replaced({u"a", expression}, u"a", text);
              }),
              "5 The replacement names a group that the expression doesn't have")
        << to_utf8(text);
}

TEST(TextPattern, AnExpressionThatTriesEverythingIsEnded) {
  const std::u16string text(5000, u'a');
  for (const char16_t* dear : {u"(a+)+$b", u"(a|aa)*c", u"(.*)*x"}) {
    const auto begin = std::chrono::steady_clock::now();
    const std::string told = words_of_failure([&] { found({dear, expression}, text + u"!"); });
    const auto taken = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(told, "5 The regular expression takes too long") << to_utf8(dear);
    EXPECT_LT(taken, std::chrono::seconds(10)) << to_utf8(dear);
  }
}

}  // namespace
}  // namespace tvx
