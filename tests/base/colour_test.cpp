#include "tvx/base/colour.h"

#include <gtest/gtest.h>

#include "support/failures.h"
#include "tvx/base/error.h"

namespace tvx {
namespace {

TEST(ColourToRGB, PutsRedFirst) {
  EXPECT_EQ(ColourToRGB(255, u","), u"255,0,0");
  EXPECT_EQ(ColourToRGB(0x030201, u","), u"1,2,3");
  EXPECT_EQ(ColourToRGB(white, u" - "), u"255 - 255 - 255");
  EXPECT_EQ(ColourToRGB(0, u""), u"000");
}

TEST(ColourToRGB, CutsNothingOffOtherNumbers) {
  EXPECT_EQ(ColourToRGB(0x1000000, u","), u"0,0,256");
  EXPECT_EQ(ColourToRGB(no_colour, u","), u"-1,0,0");
}

TEST(RGBToHex, WritesTwoCapitalDigitsAPart) {
  EXPECT_EQ(RGBToHex(u"255,0,0", u","), u"FF0000");
  EXPECT_EQ(RGBToHex(u"1,2,3", u","), u"010203");
  EXPECT_EQ(RGBToHex(u"10;171;205", u";"), u"0AABCD");
  EXPECT_EQ(RGBToHex(ColourToRGB(0xEFCDAB, u","), u","), u"ABCDEF");
}

TEST(RGBToHex, TakesTheFirstThreePartsAsTheyAre) {
  EXPECT_EQ(RGBToHex(u"1,2,3,4", u","), u"010203");
  EXPECT_EQ(RGBToHex(u"0,0,256", u","), u"0000100");
  EXPECT_EQ(RGBToHex(u"-1,0,0", u","), u"FFFFFFFF0000");
}

int failure_of(std::u16string_view text) {
  return number_of_failure([&] { RGBToHex(text, u","); });
}

TEST(RGBToHex, FailsWithoutThreeNumbers) {
  EXPECT_EQ(failure_of(u"1,2"), errors::type_mismatch);
  EXPECT_EQ(failure_of(u""), errors::type_mismatch);
  EXPECT_EQ(failure_of(u"1,red,3"), errors::type_mismatch);
  EXPECT_EQ(failure_of(u"1,2,4294967296"), errors::overflow);
}

}  // namespace
}  // namespace tvx
