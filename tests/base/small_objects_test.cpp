#include "tvx/base/small_objects.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace tvx {
namespace {

constexpr std::size_t megabyte = 1024 * 1024;

/// Objects that are given back at the end, each filled with a number of its own.
class Objects {
 public:
  ~Objects() {
    while (!all_.empty()) give_back(all_.size() - 1);
  }

  void take(std::size_t size) {
    void* memory = SmallObjects::take(size);
    std::memset(memory, mark_of(all_.size() + first_mark_), size);
    all_.push_back({memory, size, mark_of(all_.size() + first_mark_)});
  }
  void give_back(std::size_t place) {
    SmallObjects::give_back(all_[place].memory, all_[place].size);
    all_[place] = all_.back();
    all_.pop_back();
    ++first_mark_;
  }
  bool all_as_filled() const {
    for (const One& one : all_) {
      const auto* bytes = static_cast<const unsigned char*>(one.memory);
      for (std::size_t i = 0; i < one.size; ++i)
        if (bytes[i] != one.mark) return false;
    }
    return true;
  }
  std::size_t count() const { return all_.size(); }
  void* memory_of(std::size_t place) const { return all_[place].memory; }

 private:
  struct One {
    void* memory;
    std::size_t size;
    unsigned char mark;
  };
  static unsigned char mark_of(std::size_t number) { return static_cast<unsigned char>(number * 37); }

  std::vector<One> all_;
  std::size_t first_mark_ = 0;
};

TEST(SmallObjects, AreAlignedAndApart) {
  Objects objects;
  for (std::size_t size = 16; size <= SmallObjects::largest; ++size) objects.take(size);
  for (std::size_t i = 0; i < objects.count(); ++i)
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(objects.memory_of(i)) % alignof(void*), 0u);
  EXPECT_TRUE(objects.all_as_filled());
}

TEST(SmallObjects, KeepWhatIsInThemWhileOthersComeAndGo) {
  Objects objects;
  std::mt19937 random(1);
  for (int turn = 0; turn < 200'000; ++turn) {
    // Grows to many thousands, shrinks to few, and again.
    const bool growing = turn / 20'000 % 2 == 0;
    if (objects.count() == 0 || random() % 100 < (growing ? 80u : 20u)) {
      objects.take(random() % 2 ? 104 : 120);
    } else {
      objects.give_back(random() % objects.count());
    }
    if (turn % 10'000 == 0) ASSERT_TRUE(objects.all_as_filled()) << turn;
  }
  EXPECT_TRUE(objects.all_as_filled());
}

TEST(SmallObjects, TakeTheMemoryOfThoseThatHaveGone) {
  Objects kept;
  kept.take(104);  // so that nothing is given back to the system
  const std::size_t before = SmallObjects::held();
  for (int turn = 0; turn < 10; ++turn) {
    Objects objects;
    for (int i = 0; i < 1'000; ++i) objects.take(104);
  }
  EXPECT_LE(SmallObjects::held(), before + 1'000 * 104 + megabyte / 16);
}

TEST(SmallObjects, GoBackToTheSystemWhenAllOfManyHaveGone) {
  if (SmallObjects::each_by_itself()) GTEST_SKIP() << "the sanitizer has each by itself";
  const std::size_t before = SmallObjects::held();
  for (const std::size_t megabytes : {32u, 100u, 90u}) {
    std::size_t at_most = 0;
    {
      Objects objects;
      for (std::size_t i = 0; i < megabytes * megabyte / 128; ++i) objects.take(128);
      at_most = SmallObjects::held();
      ASSERT_TRUE(objects.all_as_filled());
    }
    EXPECT_GE(at_most, before + (megabytes - 9) * megabyte);
    EXPECT_LE(SmallObjects::held(), before + 10 * megabyte);  // the rest is kept for the next ones
  }
}

// One large page too many would be 2 MB.
TEST(SmallObjects, HoldLittleMoreThanWasForeseenInLargePages) {
  for (const std::size_t wanted : {megabyte / 2, 2 * megabyte, 5 * megabyte, 9 * megabyte}) {
    const std::size_t before = SmallObjects::held();
    std::size_t made = 0;
    const SmallObjectsToCome coming([&] { return double(made) / double(wanted); });
    Objects objects;
    for (; made < wanted; made += 104) objects.take(104);
    EXPECT_LE(SmallObjects::held(), before + wanted + wanted / 8 + megabyte / 4) << wanted;
    EXPECT_TRUE(objects.all_as_filled());
  }
}

TEST(SmallObjects, ForesightEndsWithWhatItWasFor) {
  if (SmallObjects::each_by_itself()) GTEST_SKIP() << "the sanitizer has each by itself";
  double asked = 0;
  {
    const SmallObjectsToCome coming([&] {
      ++asked;
      return 0.5;
    });
    Objects objects;
    for (std::size_t i = 0; i < megabyte / 104; ++i) objects.take(104);
  }
  EXPECT_GT(asked, 0);
  asked = 0;
  Objects objects;
  for (std::size_t i = 0; i < 3 * megabyte / 104; ++i) objects.take(104);
  EXPECT_EQ(asked, 0);
}

}  // namespace
}  // namespace tvx
