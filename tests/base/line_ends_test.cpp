#include "tvx/base/line_ends.h"

#include <gtest/gtest.h>

namespace tvx {
namespace {

TEST(LineEnds, AreMadeOneOfAllKinds) {
  EXPECT_EQ(with_crlf(u"a\nb\rc\r\nd\r\r\n"), u"a\r\nb\r\nc\r\nd\r\n\r\n");
  EXPECT_EQ(with_lf(u"a\nb\rc\r\nd\r\r\n"), u"a\nb\nc\nd\n\n");
}

TEST(LineEnds, ATextWithoutAnyStaysAsItIs) {
  EXPECT_EQ(with_crlf(u"a b"), u"a b");
  EXPECT_EQ(with_lf(u"a b"), u"a b");
  EXPECT_EQ(with_lf(u""), u"");
}

}  // namespace
}  // namespace tvx
