#include "tvx/base/code_page.h"

#include <gtest/gtest.h>

namespace tvx {
namespace {

using namespace std::string_view_literals;

TEST(CodePage, Utf8HoldsEverything) {
  const std::u16string text = u"a\u00e9\u20ac\U0001F600";
  EXPECT_EQ(CodePage::utf8().encode(text), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(CodePage::utf8().decode(CodePage::utf8().encode(text)), text);
}

TEST(CodePage, Utf8MendsMalformedBytes) { EXPECT_EQ(CodePage::utf8().decode("a\xE9z"), u"a\uFFFDz"); }

TEST(CodePage, Windows1252DecodesByTheStandardsTable) {
  EXPECT_EQ(CodePage::windows_1252().decode("\x80\x8A\x93\x9F\xA0\xE9\xFF"),
            u"\u20ac\u0160\u201c\u0178\u00a0\u00e9\u00ff");
  EXPECT_EQ(CodePage::windows_1252().decode("\x81\x8D\x8F\x90\x9D"), u"\u0081\u008d\u008f\u0090\u009d");
}

TEST(CodePage, Windows1252KeepsEachByte) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  EXPECT_EQ(CodePage::windows_1252().encode(CodePage::windows_1252().decode(bytes)), bytes);
}

TEST(CodePage, WhatItCannotHoldBecomesAQuestionMark) {
  EXPECT_EQ(CodePage::windows_1252().encode(u"a\u0416\u20ac\U0001F600b"), "a?\x80?b");
  EXPECT_EQ(CodePage::windows_1252().encode(u"\u0080"), "?");
  EXPECT_EQ(CodePage::by_name("koi8-r")->encode(u"\u0416\u20ac\U0001F600"), "\xF6??");
}

TEST(CodePage, ALoneSurrogateIsHeldByNone) {
  const std::u16string lone = {u'a', char16_t(0xD800), u'b', char16_t(0xDC00)};
  EXPECT_EQ(CodePage::utf8().encode(lone), "a?b?");
  EXPECT_EQ(CodePage::windows_1252().encode(lone), "a?b?");
  EXPECT_EQ(CodePage::by_name("gb18030")->encode(lone), "a?b?");
}

TEST(CodePage, IsFoundByTheStandardsLabels) {
  EXPECT_EQ(CodePage::by_name(" UTF8 "), CodePage::utf8());
  EXPECT_EQ(CodePage::by_name("ISO-8859-1"), CodePage::windows_1252());
  EXPECT_EQ(CodePage::by_name("us-ascii"), CodePage::windows_1252());
  EXPECT_EQ(CodePage::by_name("Shift_JIS")->decode("\x93\xFA\x96\x7B"), u"\u65e5\u672c");
  EXPECT_EQ(CodePage::by_name("utf-16")->decode("a\0\xE9\0"sv), u"a\u00e9");
  EXPECT_EQ(CodePage::by_name("utf-16")->encode(u"a"), "a\0"sv);
  EXPECT_FALSE(CodePage::by_name("no-such-page"));
  EXPECT_FALSE(CodePage::by_name(""));
}

TEST(CodePage, DecodesLongTextsWhole) {
  const std::string bytes(100'000, '\xC1');
  EXPECT_EQ(CodePage::by_name("iso-8859-5")->decode(bytes), std::u16string(100'000, u'\u0421'));
}

TEST(CodePage, DecodesBytesThatStandForSeveralUnits) {
  EXPECT_EQ(CodePage::by_name("gb18030")->decode("\x94\x39\xDA\x33"), u"\U0001F4A9");
  // SCSU: three bytes choose a block of 128 characters, then each byte is one of them.
  std::u16string faces;
  for (int i = 0; i < 100; ++i) faces += u"\U0001F600";
  EXPECT_EQ(CodePage::by_name("scsu")->decode("\x0B\x01\xEC" + std::string(100, '\x80')), faces);
}

TEST(CodePage, TheSystemsOneCanBeChosen) {
  const CodePage before = CodePage::system();
  {
    const SystemCodePageScope scope(CodePage::windows_1252());
    EXPECT_EQ(CodePage::system(), CodePage::windows_1252());
  }
  EXPECT_EQ(CodePage::system(), before);
}

}  // namespace
}  // namespace tvx
