#include "tvx/base/fault.h"

#include <gtest/gtest.h>

namespace tvx {
namespace {

struct Faults : testing::Test {
  void TearDown() override { clear_faults(); }
};

TEST_F(Faults, AnOperationFailsAsOftenAsOrdered) {
  set_fault(u"Print", {.result = 7}, 2);
  EXPECT_EQ(fault_point(u"Save"), std::nullopt);
  EXPECT_EQ(fault_point(u"Print"), 7);
  EXPECT_EQ(fault_point(u"Print"), 7);
  EXPECT_EQ(fault_point(u"Print"), std::nullopt);
}

TEST_F(Faults, OrdersForOneOperationAreUsedUpInTurn) {
  set_fault(u"Print", {.result = 1});
  set_fault(u"Print", {.error = RuntimeError(errors::invalid_call, u"No paper")});
  EXPECT_EQ(fault_point(u"Print"), 1);
  EXPECT_THROW(fault_point(u"Print"), RuntimeError);
  EXPECT_EQ(fault_point(u"Print"), std::nullopt);
}

TEST_F(Faults, NamesCountWithoutRegardToCase) {
  set_fault(u"execCommand copy", {.result = 1});
  EXPECT_EQ(fault_point(u"execCommand Copy"), 1);
}

TEST_F(Faults, AnOrderForNoRunIsNone) {
  set_fault(u"Print", {.result = 1}, 0);
  EXPECT_EQ(fault_point(u"Print"), std::nullopt);
}

TEST_F(Faults, ClearedOrdersAreForgotten) {
  set_fault(u"Print", {.result = 1}, 3);
  clear_faults();
  EXPECT_EQ(fault_point(u"Print"), std::nullopt);
}

}  // namespace
}  // namespace tvx
