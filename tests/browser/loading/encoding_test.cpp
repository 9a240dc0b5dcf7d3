#include "tvx/browser/loading/encoding.h"

#include <gtest/gtest.h>

namespace tvx::browser {
namespace {

TEST(Encoding, AByteOrderMarkDecidesOverADeclaration) {
  const auto page = decode_page("\xEF\xBB\xBF<meta charset=windows-1252>\xC3\xA9");
  EXPECT_EQ(page.encoding.name, "utf-8");
  EXPECT_TRUE(page.encoding.byte_order_mark);
  EXPECT_TRUE(page.text.ends_with(u"\u00E9"));
  EXPECT_EQ(decode_page(std::string_view("\xFF\xFE"
                                         "a\0\xE9\0",
                                         6))
                .text,
            u"a\u00E9");
  EXPECT_EQ(decode_page(std::string_view("\xFE\xFF\0a\x20\xAC", 6)).text, u"a\u20AC");
}

TEST(Encoding, ADeclarationIsFoundWhereverItMayStand) {
  EXPECT_EQ(declared_encoding("<meta charset=iso-8859-2>"), "iso-8859-2");
  EXPECT_EQ(
      declared_encoding("<!-- <meta charset=a> --><html x=\"<meta charset=b>\"><META CharSet='KOI8-R'>"),
      "koi8-r");
  EXPECT_EQ(declared_encoding("<meta content=\"text/html; charset = shift_jis\" http-equiv=content-type>"),
            "shift_jis");
  EXPECT_EQ(declared_encoding("<meta content=\"text/html; charset=shift_jis\">"), "") << "no pragma";
  EXPECT_EQ(declared_encoding("<metacharset=utf-8>"), "");
  EXPECT_EQ(declared_encoding("<!--><meta charset=x>"), "x");
  EXPECT_EQ(declared_encoding(std::string(1024, ' ') + "<meta charset=x>"), "") << "too late";
  EXPECT_EQ(declared_encoding("<meta charset"), "");
  EXPECT_EQ(declared_encoding("<meta charset=\"utf"), "");
}

TEST(Encoding, ADeclaredPageIsReadAsDeclared) {
  EXPECT_EQ(decode_page("<meta charset=iso-8859-1>\xE9\x80").text, u"<meta charset=iso-8859-1>\u00E9\u20AC");
  EXPECT_EQ(decode_page("<meta charset=utf-16>\xC3\xA9").encoding.name, "utf-8");
  EXPECT_EQ(decode_page("<meta charset=nonsense>\xC3\xA9").encoding.name, "utf-8");
}

TEST(Encoding, WithoutADeclarationUTF8IsTakenWhereItFits) {
  EXPECT_EQ(decode_page("caf\xC3\xA9").text, u"caf\u00E9");
  EXPECT_EQ(decode_page("caf\xE9").text, u"caf\u00E9");
  EXPECT_EQ(decode_page("caf\xE9").encoding.name, "windows-1252");
  EXPECT_EQ(decode_page("").encoding.name, "utf-8");
}

TEST(Encoding, OnlyWellFormedSequencesAreUTF8) {
  for (std::size_t at = 0; at < 30; ++at) {
    EXPECT_TRUE(is_utf8(std::string(at, 'a') + "\xC3\xA9" + std::string(9, 'a')));
    EXPECT_FALSE(is_utf8(std::string(at, 'a') + "\xE9" + std::string(9, 'a')));
    EXPECT_FALSE(is_utf8(std::string(at, 'a') + "\xC3"));
  }
  EXPECT_TRUE(is_utf8("\xF0\x9F\x98\x80\xEF\xBF\xBF\xC2\x80"));
  for (const char* bad :
       {"\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE0\x80\x80", "\xC3", "\x80", "\xF0\x9F\x98"})
    EXPECT_FALSE(is_utf8(bad));
}

}  // namespace
}  // namespace tvx::browser
