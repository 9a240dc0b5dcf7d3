#include "tvx/library/members/value.h"

#include <gtest/gtest.h>

#include "support/failures.h"
#include "tvx/base/error.h"

namespace tvx::library {
namespace {

TEST(Value, BooleansAndNumbersConvertAsHostsHaveIt) {
  EXPECT_EQ(Value(true).to_integer32(), -1);
  EXPECT_EQ(Value(false).to_integer32(), 0);
  EXPECT_TRUE(Value(2).to_boolean());
  EXPECT_TRUE(Value(u"TRUE").to_boolean());
  EXPECT_FALSE(Value(u"0").to_boolean());
  EXPECT_EQ(Value(u" 21 ").to_integer32(), 21);
  EXPECT_EQ(Value(2.5).to_integer32(), 2);
  EXPECT_EQ(Value(3.5).to_integer32(), 4);
  EXPECT_EQ(Value(u"1e3").to_number(), 1000);
}

TEST(Value, TextsShowWhatTheyCameFrom) {
  EXPECT_EQ(Value(true).to_text(), u"True");
  EXPECT_EQ(Value(-5).to_text(), u"-5");
  EXPECT_EQ(Value(2.0).to_text(), u"2");
  EXPECT_EQ(Value(0.5).to_text(), u"0.5");
}

TEST(Value, WhatDoesntFitIsRefused) {
  EXPECT_EQ(number_of_failure([] { Value(70000).to_integer16(); }), errors::overflow);
  EXPECT_EQ(number_of_failure([] { Value(3e9).to_integer32(); }), errors::overflow);
  EXPECT_EQ(number_of_failure([] { Value(u"ten").to_integer32(); }), errors::type_mismatch);
  EXPECT_EQ(number_of_failure([] { Value(u"").to_boolean(); }), errors::type_mismatch);
  EXPECT_EQ(number_of_failure([] { Value(u"0x10").to_number(); }), errors::type_mismatch);
  EXPECT_EQ(number_of_failure([] { Value().to_text(); }), errors::type_mismatch);
  EXPECT_EQ(number_of_failure([] { Value(5).to_object(); }), errors::type_mismatch);
  EXPECT_EQ(number_of_failure([] { Value().to_object(); }), 0);
}

}  // namespace
}  // namespace tvx::library
