#include "tvx/platform/property_bag.h"

#include <gtest/gtest.h>

#include "support/failures.h"
#include "tvx/base/error.h"

namespace tvx::platform {
namespace {

PropertyValue text(std::u16string value) { return value; }
PropertyValue small(int value) { return static_cast<std::int16_t>(value); }
PropertyValue large(int value) { return static_cast<std::int32_t>(value); }

TEST(PropertyValue, NumbersAreComparedAsTheyStand) {
  EXPECT_TRUE(equal_in_store(true, small(-1)));
  EXPECT_TRUE(equal_in_store(false, large(0)));
  EXPECT_TRUE(equal_in_store(small(7), large(7)));
  EXPECT_FALSE(equal_in_store(true, small(1)));
  EXPECT_FALSE(equal_in_store(small(0), text(u"0")));
  EXPECT_FALSE(equal_in_store(text(u""), false));
  EXPECT_TRUE(equal_in_store(text(u"a"), text(u"a")));
  EXPECT_FALSE(equal_in_store(text(u"a"), text(u"A")));
}

TEST(PropertyValue, AnyNumberButZeroIsTrue) {
  for (const PropertyValue& value : {small(-1), small(1), large(42), PropertyValue(true), text(u"True")}) {
    EXPECT_TRUE(as_bool(value));
  }
  for (const PropertyValue& value :
       {small(0), large(0), PropertyValue(false), text(u" false "), text(u"0")}) {
    EXPECT_FALSE(as_bool(value));
  }
}

TEST(PropertyValue, ComesInTheKindAskedFor) {
  EXPECT_EQ(as_int16(true), -1);
  EXPECT_EQ(as_int32(text(u" -70000 ")), -70000);
  EXPECT_EQ(as_text(large(21)), u"21");
  EXPECT_EQ(as_text(true), u"True");
  EXPECT_EQ(as_text(text(u"x")), u"x");
}

TEST(PropertyValue, FailsWhereItHasNoSuchForm) {
  EXPECT_EQ(number_of_failure([] { as_bool(text(u"yes")); }), errors::type_mismatch);
  EXPECT_EQ(number_of_failure([] { as_int16(text(u"")); }), errors::type_mismatch);
  EXPECT_EQ(number_of_failure([] { as_int16(large(32768)); }), errors::overflow);
  EXPECT_EQ(number_of_failure([] { as_int32(text(u"2147483648")); }), errors::overflow);
  EXPECT_EQ(number_of_failure([] { as_int16(large(-32768)); }), 0);
}

}  // namespace
}  // namespace tvx::platform
