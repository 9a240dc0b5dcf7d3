#include "support/control_growth.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tvx/base/work_count.h"

/// Ten times as much takes the whole control at most fifteen times the steps: nodes visited, attributes and
/// declarations read, menu items compared, pieces of a source compared, changes made.
namespace tvx::growth {
namespace {

struct Cost {
  std::uint64_t steps = 0;
  bool did_it = false;
};

Cost cost_of(const Case& each, std::size_t count) {
  Stage stage;
  each.before(stage, count);
  const std::uint64_t version = stage.editor().document().version(), steps = work_done;
  each.act(stage, count);
  const std::uint64_t changes = stage.editor().document().version() - version;
  return {work_done - steps + changes, each.does != Does::Edit || changes > 0};
}

class ControlGrowth : public ::testing::TestWithParam<Case> {};

TEST_P(ControlGrowth, TenTimesAsMuch) {
  const Case& each = GetParam();
  const std::size_t count = std::max<std::size_t>(each.count / 20, 10);
  const Cost small = cost_of(each, count), large = cost_of(each, count * 10);
  EXPECT_TRUE(small.did_it && large.did_it) << each.name << " changes nothing";
  EXPECT_LT(double(large.steps), 15 * double(std::max<std::uint64_t>(small.steps, count)))
      << each.name << ": " << small.steps << ", " << large.steps;
  RecordProperty("small", std::to_string(small.steps));
  RecordProperty("large", std::to_string(large.steps));
}

INSTANTIATE_TEST_SUITE_P(Cases, ControlGrowth, ::testing::ValuesIn(control_cases), [](const auto& info) {
  std::string name;
  for (const char* c = info.param.name; *c; ++c) {
    if (std::isalnum(static_cast<unsigned char>(*c)))
      name += *c;
    else if (*c == '<')
      name += "less_than";
    else if (name.empty() || name.back() != '_')
      name += '_';
  }
  return name;
});

}  // namespace
}  // namespace tvx::growth
