#include "tvx/files/line_differences.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"

namespace tvx::files {
namespace {

/// One line each: "=same", "-removed", "+added", "~3" lines left out.
std::string compared(std::u16string_view before, std::u16string_view after, std::size_t around = 1) {
  std::string text;
  for (const ComparedLine& line : line_differences(before, after, around))
    text += "=-+~"[std::size_t(line.kind)] + to_utf8(line.text) + "|";
  return text;
}

TEST(LineDifferences, TellWhatWasTakenAwayAndWhatCame) {
  EXPECT_EQ(compared(u"a\nb\nc\n", u"a\nB\nc\n"), "=a|-b|+B|=c|");
  EXPECT_EQ(compared(u"a\nc\n", u"a\nb\nc\n"), "=a|+b|=c|");
  EXPECT_EQ(compared(u"a\nb\nc", u"a\nc"), "=a|-b|=c|");
}

TEST(LineDifferences, OfEqualTextsAreNone) {
  EXPECT_EQ(compared(u"a\nb\n", u"a\nb\n"), "");
  EXPECT_EQ(compared(u"", u""), "");
}

TEST(LineDifferences, CountWhatIsFarFromThem) {
  EXPECT_EQ(compared(u"1\n2\n3\n4\nx\n5\n6\n7\n8\ny\n9\n", u"1\n2\n3\n4\nX\n5\n6\n7\n8\nY\n9\n"),
            "~3|=4|-x|+X|=5|~2|=8|-y|+Y|=9|");
}

TEST(LineDifferences, ShowASingleLineInPlaceOfItsCount) {
  EXPECT_EQ(compared(u"1\n2\nx\n3\n4\n5\ny\n", u"1\n2\nX\n3\n4\n5\nY\n"), "=1|=2|-x|+X|=3|=4|=5|-y|+Y|");
}

TEST(LineDifferences, OfWholeTexts) {
  EXPECT_EQ(compared(u"", u"a\n"), "+a|");
  EXPECT_EQ(compared(u"a\n", u""), "-a|");
}

}  // namespace
}  // namespace tvx::files
