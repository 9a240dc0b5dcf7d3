#include "tvx/browser/view/slice_size.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace tvx::browser {
namespace {

/// What showing takes, in milliseconds: for each slice, for each node, and for each node that is there
/// already when a slice comes.
struct Costs {
  double slice, node, node_there;
};

/// Shows `nodes` in slices. What it took in all.
double show(SliceSize& size, std::size_t nodes, Costs costs) {
  double all = 0;
  for (std::size_t shown = 0; shown < nodes;) {
    const std::size_t now = std::min(size.nodes(), nodes - shown);
    const double time =
        costs.slice + costs.node * static_cast<double>(now) + costs.node_there * static_cast<double>(shown);
    all += time;
    shown += now;
    if (shown < nodes) size.took(time);
  }
  return all;
}

TEST(SliceSizes, FillTheTimeThatASliceMayTake) {
  SliceSize size;
  EXPECT_EQ(size.nodes(), SliceSize::first);
  show(size, 50'000, {4, 0.02, 0});
  const double time = 4 + 0.02 * static_cast<double>(size.nodes());
  EXPECT_GT(time, 20);
  EXPECT_LE(time, 26);
}

TEST(SliceSizes, StayWithinTheirBounds) {
  SliceSize fast, slow;
  show(fast, 500'000, {0, 0.0001, 0});
  EXPECT_EQ(fast.nodes(), SliceSize::largest);
  show(slow, 50'000, {0, 1, 0});
  EXPECT_EQ(slow.nodes(), SliceSize::smallest);
}

TEST(SliceSizes, GrowWhereAllThatIsThereIsLaidOutAnew) {
  const auto cost = [](std::size_t nodes) {
    SliceSize size;
    return show(size, nodes, {4, 0.02, 0.004});
  };
  EXPECT_LT(cost(200'000), 13 * cost(20'000)) << "ten times the nodes";
}

// Times of a machine that does other work as well: most are a little off, and some far.
TEST(SliceSizes, NoSliceIsFarTooLargeBecauseOthersWereSlow) {
  for (unsigned seed = 1; seed <= 400; ++seed) {
    std::minstd_rand random(seed);
    std::normal_distribution<double> noise(0, 0.25);
    SliceSize size;
    double longest = 0;
    int slice = 0;
    for (std::size_t shown = 0; shown < 50'000; ++slice) {
      const std::size_t now = size.nodes();
      const double time = 4 + 0.02 * static_cast<double>(now);
      longest = std::max(longest, time);
      shown += now;
      const double delay = random() % 10 == 0 ? 2.5 : 1, cold = 1 + 2 * std::exp(-slice / 2.0);
      size.took(time * std::exp(noise(random)) * delay * cold);
    }
    EXPECT_LT(longest, 45) << "seed " << seed;
    EXPECT_LT(slice, 90) << "seed " << seed;
  }
}

// In a very large article what is there costs little for each node and much in the end. Whoever can't tell
// that from what the new nodes cost sends ever larger slices.
TEST(SliceSizes, StaySmallInAVeryLargeArticle) {
  int too_large = 0;
  for (unsigned seed = 1; seed <= 40; ++seed) {
    std::minstd_rand random(seed);
    std::normal_distribution<double> noise(0, 0.25);
    SliceSize size;
    double longest = 0;
    for (std::size_t shown = 0; shown < 490'000;) {
      const double nodes = static_cast<double>(size.nodes()), there = static_cast<double>(shown);
      const double time = 4 + 0.0095 * nodes + 0.00004 * there;
      longest = std::max(longest, time);
      shown += size.nodes();
      const double delay = random() % 10 == 0 ? 2.5 : 1;
      size.took(time * std::exp(noise(random)) * delay);
    }
    if (longest > 60) ++too_large;
  }
  EXPECT_LT(too_large, 3);
}

TEST(SliceSizes, OneSlowSliceIsForgotten) {
  SliceSize size;
  show(size, 50'000, {4, 0.02, 0});
  const std::size_t before = size.nodes();
  size.took(400);
  show(size, 50'000, {4, 0.02, 0});
  EXPECT_NEAR(double(size.nodes()), double(before), double(before) / 10);
}

}  // namespace
}  // namespace tvx::browser
