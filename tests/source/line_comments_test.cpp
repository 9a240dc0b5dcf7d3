#include "tvx/source/line_comments.h"

#include <gtest/gtest.h>

namespace tvx::source {
namespace {

std::string toggled(std::u16string_view source) {
  return to_utf8(with_comments_toggled(source, 0, source.size()));
}

/// The last line of a source.
std::string last_toggled(std::u16string_view source) {
  return to_utf8(with_comments_toggled(source, source.rfind(u'\n') + 1, source.size()));
}

TEST(LineComments, EachLineIsOneByItself) {
  EXPECT_EQ(toggled(u"<p>a\n\n  <b>c</b> "), "<!-- <p>a -->\n\n  <!-- <b>c</b> --> ");
}

TEST(LineComments, WhereAllAreCommentsTheyAreWrittenOut) {
  EXPECT_EQ(toggled(u"<!-- <p>a -->\n\n  <!--b-->"), "<p>a\n\n  b");
  EXPECT_EQ(toggled(u"<!-- a -->\nb"), "<!-- a -->\n<!-- b -->")
      << "one that isn't makes all of them comments";
}

TEST(LineComments, ALineThatWouldEndTheCommentStays) {
  EXPECT_EQ(toggled(u"a <!-- b --> c\nd"), "a <!-- b --> c\n<!-- d -->");
}

TEST(LineComments, StyleSheetsAndScriptsHaveTheirOwn) {
  EXPECT_EQ(last_toggled(u"<style>\n  p { color: red }"), "  /* p { color: red } */");
  EXPECT_EQ(last_toggled(u"<style>\n  /* p { color: red } */"), "  p { color: red }");
  EXPECT_EQ(last_toggled(u"<script>\n  go();"), "  // go();");
  EXPECT_EQ(last_toggled(u"<script>\n  // go();"), "  go();");
  EXPECT_EQ(last_toggled(u"<style>p {}</style>\n<p>"), "<!-- <p> -->");
}

TEST(LineComments, NothingToWriteIsNoChange) {
  EXPECT_EQ(toggled(u""), "");
  EXPECT_EQ(toggled(u" \n\t"), " \n\t");
  EXPECT_EQ(toggled(u"<!-->"), "<!-->") << "too short to be one with two ends, and it holds an end";
}

}  // namespace
}  // namespace tvx::source
