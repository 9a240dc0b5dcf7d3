#include "tvx/base/relative_address.h"

#include <gtest/gtest.h>

namespace tvx {
namespace {

TEST(RelativeAddress, TheBaseIsTakenOffWhateverItsLetters) {
  EXPECT_EQ(without_base(u"HTTP://Example.ORG/Site/a.gif", u"http://example.org/site/"), u"a.gif");
  EXPECT_EQ(without_base(u"http://h/x?of=http://h/y", u"http://h/"), u"x?of=y") << "every occurrence";
}

TEST(RelativeAddress, NothingIsAnswerForAnotherAddressAndForNoBase) {
  EXPECT_EQ(without_base(u"http://other/a.gif", u"http://h/"), std::nullopt);
  EXPECT_EQ(without_base(u"file:///home/a.gif", u""), std::nullopt);
  EXPECT_EQ(without_base(u"", u"http://h/"), std::nullopt);
  EXPECT_EQ(without_base(u"a.gif", u"http://"), std::nullopt);
}

TEST(RelativeAddress, AnotherSpellingIsTheSameBase) {
  EXPECT_EQ(without_base(u"http://h/a.gif", u"http://h:80/"), u"a.gif");
  EXPECT_EQ(without_base(u"http://h:80/a.gif", u"http://h/"), u"a.gif");
  EXPECT_EQ(without_base(u"http://h:8080/a.gif", u"http://h/"), std::nullopt);
  EXPECT_EQ(without_base(u"http://xn--mller-kva.de/a.gif", u"http://m\u00FCller.de/"), u"a.gif");
  EXPECT_EQ(without_base(u"http://xn--mller-kva.de/a.gif", u"http://M%C3%BCller.de/"), u"a.gif");
  EXPECT_EQ(without_base(u"http://m\u00FCller.de/a.gif", u"http://xn--mller-kva.de/"), u"a.gif");
}

TEST(RelativeAddress, WhatIsLeftBeginsWhereTheBaseEnds) {
  EXPECT_EQ(without_base(u"http://h/a.gif", u"http://h"), u"/a.gif");
  EXPECT_EQ(without_base(u"http://h/a.gif", u"http://h:80"), u"/a.gif");
}

}  // namespace
}  // namespace tvx
