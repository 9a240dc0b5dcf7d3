#include "tvx/dom/attribute_places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tvx/base/work_count.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"

namespace tvx::dom {
namespace {

class AttributePlacesTest : public ::testing::Test {
 protected:
  static Name name(std::size_t number) {
    return Name(std::u16string_view(u"a" + from_utf8(std::to_string(number))));
  }
  /// Every lookup against a plain search.
  void check(const Element& element, std::size_t names) {
    const auto& list = element.attributes();
    for (std::size_t i = 0; i < names; ++i) {
      const auto found =
          std::find_if(list.begin(), list.end(), [&](auto& each) { return each.name == name(i); });
      const std::size_t place = found == list.end() ? AttributePlaces::nowhere : found - list.begin();
      ASSERT_EQ(AttributePlaces::find(element, name(i)), place) << i << " of " << list.size();
    }
  }
  Ref<Document> document = Document::create();
  Ref<Element> element = document->create_element(Tag::P);
};

TEST_F(AttributePlacesTest, ALongListIsReadAndWrittenInTimeThatGrowsWithIt) {
  const auto cost = [&](std::size_t count) {
    const Ref<Element> many = document->create_element(Tag::P);
    const std::uint64_t before = work_done;
    for (std::size_t i = 0; i < count; ++i) set_attribute(*many, name(i), u"v");
    for (std::size_t i = 0; i < count; ++i) EXPECT_TRUE(many->has_attribute(name(i)));
    return work_done - before;
  };
  EXPECT_LT(cost(20'000), cost(2'000) * 15);
}

TEST_F(AttributePlacesTest, ALongListIsTakenApartInTimeThatGrowsWithIt) {
  const auto cost = [&](std::size_t count, bool from_front) {
    const Ref<Element> many = document->create_element(Tag::P);
    for (std::size_t i = 0; i < count; ++i) set_attribute(*many, name(i), u"v");
    const std::uint64_t before = work_done;
    for (std::size_t i = 0; i < count; ++i) remove_attribute(*many, name(from_front ? i : count - 1 - i));
    EXPECT_TRUE(many->attributes().empty());
    return work_done - before;
  };
  EXPECT_LT(cost(10'000, true), cost(1'000, true) * 15);
  EXPECT_LT(cost(10'000, false), cost(1'000, false) * 15);
}

// Taken off from the front and put back by undo: the list makes room before its first, and gives it back.
// Those moves count no steps.
TEST_F(AttributePlacesTest, ALongListIsTakenApartFromTheFrontAndPutBack) {
  constexpr std::size_t count = 4'000;
  const Ref<Element> many = document->create_element(Tag::P);
  for (std::size_t i = 0; i < count; ++i) set_attribute(*many, name(i), u"v");
  for (std::size_t i = 0; i < count; ++i) {
    ASSERT_EQ(many->attributes()[0].name, name(i));
    remove_attribute(*many, name(i));
  }
  EXPECT_TRUE(many->attributes().empty());
  while (many->attributes().size() < count && document->journal().undo()) {
  }
  ASSERT_EQ(many->attributes().size(), count);
  for (std::size_t i = 0; i < count; ++i) ASSERT_EQ(many->attributes()[i].name, name(i));
}

TEST_F(AttributePlacesTest, TheyAreThoseOfAPlainSearchWhateverIsDone) {
  std::mt19937 random(4);
  constexpr std::size_t names = 150;
  const Ref<Element> other = document->create_element(Tag::Div);
  for (int round = 0; round < 2'000; ++round) {
    Element& target = random() % 4 ? *element : *other;
    switch (random() % 8) {
      case 0: remove_attribute(target, name(random() % names)); break;
      case 1: document->journal().undo(); break;
      case 2: document->journal().redo(); break;
      default: set_attribute(target, name(random() % names), from_utf8(std::to_string(round))); break;
    }
    if (round % 20 == 0) check(round % 40 ? *element : *other, names);
  }
  EXPECT_GT(element->attributes().size(), 64u) << "the list was long";
}

TEST_F(AttributePlacesTest, AnElementMadeWhereOneHasGoneHasItsOwn) {
  for (int i = 0; i < 20; ++i) {
    Ref<Element> made = document->create_element(Tag::P);
    for (std::size_t n = 0; n < 100; ++n) Builder::add_attribute(*made, {name(n + i * 100), u"v"});
    EXPECT_TRUE(made->has_attribute(name(i * 100)));
    EXPECT_FALSE(made->has_attribute(name(i * 100 + 100)));
  }
}

}  // namespace
}  // namespace tvx::dom
