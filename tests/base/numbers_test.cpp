#include "tvx/base/numbers.h"

#include <gtest/gtest.h>

#include "support/failures.h"
#include "tvx/base/error.h"

namespace tvx {
namespace {

TEST(Numbers, AWholeTextIsANumberOrNone) {
  EXPECT_EQ(parse_number(u" 12 "), 12);
  EXPECT_EQ(parse_number(u"-1.5"), -1.5);
  EXPECT_EQ(parse_number(u"+.5"), 0.5);
  EXPECT_EQ(parse_number(u"2."), 2);
  EXPECT_EQ(parse_number(u"1e3"), 1000);
  for (const char16_t* text :
       {u"", u" ", u"x", u"1x", u"1 2", u".", u"-", u"1e", u"--1", u"1,5", u"inf", u"0x1"})
    EXPECT_FALSE(parse_number(text));
  EXPECT_EQ(number_of(u"7"), 7);
  EXPECT_EQ(number_of_failure([] { number_of(u""); }), errors::type_mismatch);
}

TEST(Numbers, WhatWasTypedCountsAsFarAsItIsANumber) {
  EXPECT_EQ(typed_number(u"12"), 12);
  EXPECT_EQ(typed_number(u" 12 rows"), 12);
  EXPECT_EQ(typed_number(u"2.5.7"), 2.5);
  EXPECT_EQ(typed_number(u"2,5"), 2);
  EXPECT_EQ(typed_number(u"-3%"), -3);
  EXPECT_EQ(typed_number(u"1e2x"), 100);
  EXPECT_EQ(typed_number(u"1em"), 1);
  EXPECT_EQ(typed_number(u"four"), 0);
  EXPECT_EQ(typed_number(u""), 0);
  EXPECT_EQ(typed_number(u"."), 0);
}

TEST(Numbers, HalvesGoToTheEvenNeighbour) {
  EXPECT_EQ(rounded_to_16_bits(0.5), 0);
  EXPECT_EQ(rounded_to_16_bits(1.5), 2);
  EXPECT_EQ(rounded_to_16_bits(2.5), 2);
  EXPECT_EQ(rounded_to_32_bits(-1.5), -2);
}

TEST(Numbers, WhatIsTooLargeOverflows) {
  EXPECT_EQ(rounded_to_16_bits(32767.4), 32767);
  EXPECT_EQ(number_of_failure([] { rounded_to_16_bits(32767.5); }), errors::overflow);
  EXPECT_EQ(rounded_to_16_bits(-32768.5), -32768);
  EXPECT_EQ(number_of_failure([] { rounded_to_16_bits(-32769); }), errors::overflow);
  EXPECT_EQ(rounded_to_32_bits(2147483647), 2147483647);
  EXPECT_EQ(number_of_failure([] { rounded_to_32_bits(2147483648.0); }), errors::overflow);
  EXPECT_EQ(number_of_failure([] { rounded_to_16_bits(typed_number(u"1e999")); }), errors::overflow);
}

}  // namespace
}  // namespace tvx
