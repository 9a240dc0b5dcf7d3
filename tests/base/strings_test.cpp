#include "tvx/base/strings.h"

#include <gtest/gtest.h>

#include "tvx/base/error.h"

namespace tvx {
namespace {

TEST(Strings, GoThroughUtf8) {
  EXPECT_EQ(to_utf8(u"a\u00e9\u20ac\U0001F600"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(from_utf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), u"a\u00e9\u20ac\U0001F600");
  EXPECT_EQ(to_utf8(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");
}

/// ASCII goes many letters at a time: any other letter may stand anywhere among them.
TEST(Strings, GoThroughUtf8WhereverLettersStand) {
  const std::pair<std::u16string, std::string> letters[] = {
      {u"\u00e9", "\xC3\xA9"},     {u"\u0080", "\xC2\x80"},
      {u"\u20ac", "\xE2\x82\xAC"}, {u"\U0001F600", "\xF0\x9F\x98\x80"},
      {u"\u007f", "\x7F"},         {std::u16string(1, u'\0'), std::string(1, '\0')}};
  for (std::size_t length = 0; length < 40; ++length)
    for (std::size_t at = 0; at <= length; ++at)
      for (const auto& [units, bytes] : letters) {
        std::u16string text(length, u'a');
        std::string encoded(length, 'a');
        text.insert(at, units);
        encoded.insert(at, bytes);
        ASSERT_EQ(to_utf8(text), encoded) << length << " " << at;
        ASSERT_EQ(from_utf8(encoded), text) << length << " " << at;
      }
  const std::u16string long_letters(1000, u'\u20ac');
  EXPECT_EQ(to_utf8(long_letters).size(), 3000u) << "three bytes for each unit";
  EXPECT_EQ(from_utf8(to_utf8(long_letters)), long_letters);
  EXPECT_EQ(from_utf8(std::string(20, 'a') + "\xE2\x82"), std::u16string(20, u'a') + u"\uFFFD");
}

TEST(Strings, MalformedUtf8IsMendedBySubparts) {
  EXPECT_EQ(from_utf8("\xF0\x9F\x98"
                      "a"),
            u"\uFFFDa");
  EXPECT_EQ(from_utf8("\xC0\x80"), u"\uFFFD\uFFFD");
  EXPECT_EQ(from_utf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
}

TEST(Strings, AsciiCaseLeavesOtherLetters) {
  EXPECT_EQ(ascii_upper(u"a\u00e9z[`{"), u"A\u00e9Z[`{");
  EXPECT_EQ(ascii_lower(u"A\u00c9Z"), u"a\u00c9z");
  EXPECT_TRUE(equals_ignoring_ascii_case(u"Div", u"dIV"));
  EXPECT_FALSE(equals_ignoring_ascii_case(u"Div", u"Divs"));
}

TEST(Strings, AreSplit) {
  EXPECT_EQ(split(u"a,,b,", u','), (std::vector<std::u16string_view>{u"a", u"", u"b", u""}));
  EXPECT_EQ(split_on_space(u" a\n\tb "), (std::vector<std::u16string_view>{u"a", u"b"}));
  EXPECT_EQ(trimmed(u" \t\na b\f\r "), u"a b");
}

TEST(Strings, NumbersGoBothWays) {
  EXPECT_EQ(to_text(-9223372036854775807 - 1), u"-9223372036854775808");
  EXPECT_EQ(parse_integer(u"-42"), -42);
  EXPECT_EQ(parse_integer(u"+7"), 7);
  for (const auto text : {u"", u"-", u"4x", u" 4", u"1.5"}) EXPECT_EQ(parse_integer(text), std::nullopt);
}

TEST(Attempt, StepsOverAFailingOperation) {
  int steps = 0;
  EXPECT_TRUE(attempt([&] { ++steps; }));
  EXPECT_FALSE(attempt([&] {
    ++steps;
    throw RuntimeError(errors::invalid_call, u"Invalid procedure call or argument");
  }));
  EXPECT_EQ(steps, 2);
}

TEST(RuntimeError, CarriesItsNumberAndText) {
  const RuntimeError error(106, u"caf\u00e9");
  EXPECT_EQ(error.number(), 106);
  EXPECT_EQ(error.text(), u"caf\u00e9");
  EXPECT_STREQ(error.what(), "caf\xC3\xA9");
}

}  // namespace
}  // namespace tvx
