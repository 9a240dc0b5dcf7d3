#include "tvx/files/merge_lines.h"

#include <gtest/gtest.h>

#include <random>

namespace tvx::files {
namespace {

TEST(MergeLines, WithoutAnEditTheSourceStays) {
  EXPECT_EQ(merge_lines(u"A\nB\nC\n", u"a\nB\nc c\nd\n", u"A\nB\nC\n"), u"a\nB\nc c\nd\n");
  EXPECT_EQ(merge_lines(u"", u"", u""), u"");
  EXPECT_EQ(merge_lines(u"A", u"a", u"A"), u"a");
}

TEST(MergeLines, WithoutAWayOfItsOwnTheEditCounts) {
  EXPECT_EQ(merge_lines(u"a\nb\nc\n", u"a\nb\nc\n", u"a\nx\ny\nc\n"), u"a\nx\ny\nc\n");
  EXPECT_EQ(merge_lines(u"a\nb\nc\n", u"a\nb\nc\n", u""), u"");
}

TEST(MergeLines, OnlyTheEditedLineIsWrittenAnew) {
  EXPECT_EQ(merge_lines(u"A\nB\nC\nD\n", u"a\nb\nc\nd\n", u"A\nX\nC\nD\n"), u"a\nX\nc\nd\n");
  EXPECT_EQ(merge_lines(u"A\nB\nC\n", u"a\nb\nc\n", u"A\nB\nnew\nC\n"), u"a\nb\nnew\nc\n");
  EXPECT_EQ(merge_lines(u"A\nB\nC\n", u"a\nb\nc\n", u"A\nC\n"), u"a\nc\n");
}

// Many lines look alike: which of them is meant is told by those around it.
TEST(MergeLines, EqualLinesStayWithTheLineBeforeThem) {
  EXPECT_EQ(
      merge_lines(u"A\nq\nr\nq\nr\nold\nZ\n", u"A\nq\nr1\nr2\nq\nr\nold\nZ\n", u"A\nq\nr\nq\nr\nnew\nZ\n"),
      u"A\nq\nr1\nr2\nq\nr\nnew\nZ\n");
}

// A page whose last paragraph isn't closed: its text goes on after the end of the page.
TEST(MergeLines, AnEmptyLineIsNotTheEndOfThePage) {
  EXPECT_EQ(merge_lines(u"<p>last\n\n</p></body></html>", u"<p>last\n</body></html>\n",
                        u"<p>last\n\n</p><p>typed</p></body></html>"),
            u"<p>last\n\n</p><p>typed</p></body></html>");
  EXPECT_EQ(merge_lines(u"<P>a</P>\n</BODY>\n", u"<p>a\n</body>\n", u"<P>b</P>\n</BODY>\n"),
            u"<P>b</P>\n</body>\n");
}

// The two laws, on texts with many equal lines.
TEST(MergeLines, HoldsOnRandomTexts) {
  for (unsigned seed = 1; seed <= 3000; ++seed) {
    std::mt19937 random(seed);
    const auto text = [&] {
      std::u16string result;
      for (unsigned i = random() % 12; i > 0; --i)
        result += std::u16string(1, char16_t(u'a' + random() % 6)) + u'\n';
      return result;
    };
    const std::u16string base = text(), other = text();
    ASSERT_EQ(merge_lines(base, other, base), other) << seed;
    ASSERT_EQ(merge_lines(base, base, other), other) << seed;
    ASSERT_EQ(merge_lines(base, other, other), other) << seed;
  }
}

}  // namespace
}  // namespace tvx::files
