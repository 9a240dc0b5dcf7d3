#include <gtest/gtest.h>

#include "tvx/base/url.h"

namespace tvx {
namespace {

using Text = std::u16string;

TEST(EncodeURL, EscapesWhatCannotStandInAnAddress) {
  EXPECT_EQ(EncodeURL(u"file:///C:/pics/a b.gif"), u"file:///C:/pics/a%20b.gif");
  EXPECT_EQ(EncodeURL(u"\"<>\\^`{|}"), u"%22%3C%3E%5C%5E%60%7B%7C%7D");
  EXPECT_EQ(EncodeURL(Text(u"\u0001\n\u007f")), u"%01%0A%7F");
  EXPECT_EQ(EncodeURL(u"\u00e9\u20ac\U0001F600"), u"%C3%A9%E2%82%AC%F0%9F%98%80");
}

TEST(EncodeURL, LeavesTheRest) {
  const Text kept = u"http://u:p@h:8/~a/b;c,d/e.html?x=1&y='2'#top!$()*+[]";
  EXPECT_EQ(EncodeURL(kept), kept);
  EXPECT_EQ(EncodeURL(u"100%"), u"100%");
  EXPECT_EQ(EncodeURL(EncodeURL(u"a b\u00e9")), EncodeURL(u"a b\u00e9"));
  EXPECT_EQ(EncodeURL(u"http://h/a/../b"), u"http://h/a/../b");
  EXPECT_EQ(EncodeURL(u""), u"");
}

TEST(DecodeURL, UndoesEveryEscape) {
  EXPECT_EQ(DecodeURL(u"a%20b%2fc%C3%A9%E2%82%AC%25"), u"a b/c\u00e9\u20ac%");
  EXPECT_EQ(DecodeURL(u"a%2"), u"a%2");
  EXPECT_EQ(DecodeURL(u"%zz%"), u"%zz%");
  EXPECT_EQ(DecodeURL(u"%2541"), u"%41");
  EXPECT_EQ(DecodeURL(u"x?a%20b#c%20d"), u"x?a b#c d");
  EXPECT_EQ(DecodeURL(u""), u"");
}

TEST(DecodeURL, ReadsOldEscapesOfOneByteACharacter) { EXPECT_EQ(DecodeURL(u"caf%E9.gif"), u"caf\u00e9.gif"); }

TEST(DecodeURL, UndoesEncodeURL) {
  const Text text = u"file:///tmp/\u00fc b{1}.gif";
  EXPECT_EQ(DecodeURL(EncodeURL(text)), text);
}

TEST(PlainUrl, TheResultAndItsEndFit260) {
  EXPECT_EQ(EncodeURL(Text(259, u'a')), Text(259, u'a'));
  EXPECT_EQ(EncodeURL(Text(260, u'a')), u"");
  EXPECT_EQ(DecodeURL(Text(259, u'a')).size(), 259u);
  EXPECT_EQ(DecodeURL(Text(260, u'a')), u"");
  EXPECT_EQ(CanonicalURL(Text(259, u'a'), 0).size(), 259u);
  EXPECT_EQ(CanonicalURL(Text(260, u'a'), URL_UNESCAPE), u"");
}

TEST(PlainUrl, TheResultIsMeasuredNotTheInput) {
  EXPECT_EQ(EncodeURL(Text(257, u'a') + u" "), u"");
  EXPECT_EQ(EncodeURL(Text(256, u'a') + u" ").size(), 259u);
  EXPECT_EQ(DecodeURL(Text(258, u'a') + u"%20").size(), 259u);
}

TEST(CanonicalURL, UndoesEscapesWhenTold) {
  EXPECT_EQ(CanonicalURL(u"file:///tmp/a%20b.gif", URL_UNESCAPE), u"file:///tmp/a b.gif");
  EXPECT_EQ(CanonicalURL(u"file:///tmp/a%20b.gif", 0), u"file:///tmp/a%20b.gif");
  EXPECT_EQ(CanonicalURL(u"", URL_UNESCAPE), u"");
}

TEST(CanonicalURL, TakesDotSegmentsAway) {
  EXPECT_EQ(CanonicalURL(u"http://h/a/./b/../c.css?x/../y", 0), u"http://h/a/c.css?x/../y");
  EXPECT_EQ(CanonicalURL(u"http://h/../../c", 0), u"http://h/c");
  EXPECT_EQ(CanonicalURL(u"http://h/a/b/..", 0), u"http://h/a/");
  EXPECT_EQ(CanonicalURL(u"http://h/a/../b", URL_DONT_SIMPLIFY), u"http://h/a/../b");
  EXPECT_EQ(CanonicalURL(u"http://h", 0), u"http://h");
  EXPECT_EQ(CanonicalURL(u"http://h?x", 0), u"http://h?x");
}

TEST(CanonicalURL, ARelativeTextKeepsWhatLeadsOut) {
  EXPECT_EQ(CanonicalURL(u"../a/../b", 0), u"../b");
  EXPECT_EQ(CanonicalURL(u"../../b", 0), u"../../b");
  EXPECT_EQ(CanonicalURL(u"a/..", 0), u"");
  EXPECT_EQ(CanonicalURL(u"a/b/..", 0), u"a/");
  EXPECT_EQ(CanonicalURL(u"a/.", 0), u"a/");
  EXPECT_EQ(CanonicalURL(u"./b", 0), u"b");
}

TEST(CanonicalURL, TurnsBackslashesAndKeepsOpaqueAddresses) {
  EXPECT_EQ(CanonicalURL(u"file:///C:\\x\\..\\y.css", 0), u"file:///C:/y.css");
  EXPECT_EQ(CanonicalURL(u"  http://h/x \n", 0), u"http://h/x");
  EXPECT_EQ(CanonicalURL(u"data:a\\b/../c", 0), u"data:a\\b/../c");
}

TEST(CanonicalURL, EscapesWhenTold) {
  EXPECT_EQ(CanonicalURL(u"http://h/a b{", URL_ESCAPE_UNSAFE), u"http://h/a%20b%7B");
  EXPECT_EQ(CanonicalURL(u"http://h/a b{", URL_ESCAPE_SPACES_ONLY), u"http://h/a%20b{");
}

}  // namespace
}  // namespace tvx
