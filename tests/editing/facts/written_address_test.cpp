#include "tvx/editing/facts/written_address.h"

#include <gtest/gtest.h>

namespace tvx::editing {
namespace {

TEST(WrittenAddress, IsKnownByItsStart) {
  for (const char16_t* address : {u"http://a", u"HTTPS://example.org/x?y=1", u"ftp://h/f", u"mailto:a@b.org",
                                  u"www.example.org", u"WWW.a.b"})
    EXPECT_EQ(written_address(address), address);
  for (const char16_t* other : {u"", u"http://", u"word", u"www.", u"www.word", u"www..a", u"a.www.b.c"})
    EXPECT_EQ(written_address(other), u"");
}

TEST(WrittenAddress, TheSentencesOwnMarksAreNoPartOfIt) {
  EXPECT_EQ(written_address(u"http://a.org/x."), u"http://a.org/x");
  EXPECT_EQ(written_address(u"http://a.org/x?!"), u"http://a.org/x");
  EXPECT_EQ(written_address(u"http://a.org/x),"), u"http://a.org/x");
  EXPECT_EQ(written_address(u"http://a.org/x_(y)"), u"http://a.org/x_(y)");
  EXPECT_EQ(written_address(u"http://a.org/x_(y)."), u"http://a.org/x_(y)");
}

TEST(WrittenAddress, ANameOfTheWebLeadsThere) {
  EXPECT_EQ(target_of(u"www.example.org"), u"http://www.example.org");
  EXPECT_EQ(target_of(u"https://example.org"), u"https://example.org");
}

}  // namespace
}  // namespace tvx::editing
