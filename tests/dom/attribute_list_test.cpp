#include "tvx/dom/attribute_list.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tvx/base/strings.h"

namespace tvx::dom {
namespace {

/// The same done to a plain vector.
class AttributeListTest : public ::testing::Test {
 protected:
  void push_back() {
    const Attribute made{Name(u"a"), from_utf8(std::to_string(++count_)), AttributeNamespace::None};
    list_.push_back(made);
    plain_.push_back(made.value);
  }
  void erase(std::size_t place) {
    list_.erase(place);
    plain_.erase(plain_.begin() + std::ptrdiff_t(place));
  }
  void push_back_at(std::size_t place) {
    push_back();
    list_.move_last_to(place);
    plain_.insert(plain_.begin() + std::ptrdiff_t(place), plain_.back());
    plain_.pop_back();
  }
  void check() {
    ASSERT_EQ(list_.size(), plain_.size());
    ASSERT_EQ(list_.empty(), plain_.empty());
    std::size_t place = 0;
    for (const Attribute& each : list_) {
      ASSERT_EQ(each.value, plain_[place]) << place;
      ASSERT_EQ(list_[place].value, plain_[place]) << place;
      ++place;
    }
    ASSERT_EQ(place, plain_.size());
    if (place) {
      ASSERT_EQ(list_.front().value, plain_.front());
    }
  }

  AttributeList list_;
  std::vector<std::u16string> plain_;
  int count_ = 0;
};

TEST_F(AttributeListTest, IsAPlainListWhateverIsDone) {
  std::mt19937 random(7);
  for (int round = 0; round < 20'000; ++round) {
    const std::size_t size = plain_.size();
    // Now and then much goes, often from the front.
    switch (size == 0 ? 0 : random() % (round / 2'500 % 2 ? 4 : 7)) {
      case 1: erase(random() % size); break;
      case 2:
      case 3: erase(0); break;
      case 4: push_back_at(random() % (size + 1)); break;
      case 5: push_back_at(0); break;
      default: push_back(); break;
    }
    if (round % 50 == 0) check();
  }
  check();
}

TEST_F(AttributeListTest, ACopyIsOfItsOwn) {
  for (int i = 0; i < 100; ++i) push_back();
  for (int i = 0; i < 30; ++i) erase(0);
  const AttributeList copy = list_;
  erase(0);
  push_back_at(0);
  EXPECT_EQ(copy.size(), 70u);
  EXPECT_EQ(copy.front().value, u"31");
  check();
}

TEST_F(AttributeListTest, OneThatComesAndGoesTakesNoMoreRoom) {
  for (int i = 0; i < 3; ++i) push_back();
  for (int round = 0; round < 100'000; ++round) {
    push_back();
    erase(0);
  }
  EXPECT_LT(list_.room(), 1'000u);
  check();
}

}  // namespace
}  // namespace tvx::dom
