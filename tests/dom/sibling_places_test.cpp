#include <gtest/gtest.h>

#include <random>

#include "tvx/dom/builder.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/range.h"

namespace tvx::dom {
namespace {

class SiblingPlaces : public ::testing::Test {
 protected:
  void fill(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) insert(*parent, document->create_text(u"x"));
  }
  Ref<Document> document = Document::create();
  Ref<Element> parent = document->create_element(Tag::Div);
};

TEST_F(SiblingPlaces, CountIndexAndChildAgree) {
  for (const std::size_t count : {0u, 1u, 2u, 3u, 8u}) {
    clear(*parent);
    fill(count);
    ASSERT_EQ(parent->child_count(), count);
    ASSERT_EQ(length_of(*parent), count);
    std::size_t index = 0;
    for (Node* child = parent->first_child(); child; child = child->next_sibling(), ++index) {
      EXPECT_EQ(index_of(*child), index);
      EXPECT_EQ(child_at(*parent, index), child);
      for (Offset offset = 0; offset <= count; ++offset) {
        EXPECT_EQ(stands_before(*child, offset), index < offset)
            << index << " of " << count << ", " << offset;
      }
    }
    EXPECT_EQ(child_at(*parent, count), nullptr);
  }
}

TEST_F(SiblingPlaces, RangesFollowInsertionsAndRemovalsAtEveryPlace) {
  constexpr std::size_t count = 5;
  for (std::size_t place = 0; place < count; ++place) {
    for (Offset offset = 0; offset <= count; ++offset) {
      clear(*parent);
      fill(count);
      LiveRange range(*document, {{parent.get(), offset}, {parent.get(), offset}});
      const Ref<Node> added = document->create_text(u"y");
      insert(*parent, added, child_at(*parent, place));
      EXPECT_EQ(range.start().offset, offset > place ? offset + 1 : offset);
      remove(*added);
      EXPECT_EQ(range.start().offset, offset);
      remove(*child_at(*parent, place));
      EXPECT_EQ(range.start().offset, offset > place ? offset - 1 : offset);
    }
  }
}

// Whatever was asked and changed before: the answers are those of counting.
TEST_F(SiblingPlaces, ALongListStaysRightThroughChanges) {
  std::mt19937 random(1);
  fill(200);
  const Ref<Element> other = document->create_element(Tag::P);
  for (std::size_t i = 0; i < 100; ++i) insert(*other, document->create_text(u"y"));
  const auto pick = [&](std::size_t count) { return std::size_t(random() % count); };
  const auto nth = [](const Node& holder, std::size_t place) {
    Node* child = holder.first_child();
    for (; place > 0; --place) child = child->next_sibling();
    return child;
  };
  for (int round = 0; round < 5000; ++round) {
    Element& holder = pick(4) == 0 ? *other : *parent;
    const std::size_t place = pick(holder.child_count());
    switch (pick(6)) {
      case 0: EXPECT_EQ(child_at(holder, place), nth(holder, place)); break;
      case 1: EXPECT_EQ(index_of(*nth(holder, place)), place); break;
      case 2:
        ASSERT_EQ(index_of(*child_at(holder, place)), place);
        insert(holder, document->create_text(u"z"), nth(holder, place));
        break;
      case 3:
        ASSERT_EQ(child_at(holder, place), nth(holder, place));
        if (holder.child_count() > 50) remove(*nth(holder, place));
        break;
      case 4: insert(holder, document->create_text(u"z")); break;
      default: {
        const std::size_t near = std::min(place + pick(3), holder.child_count() - 1);
        EXPECT_EQ(index_of(*nth(holder, near)), near);
      }
    }
    ASSERT_FALSE(HasFailure()) << "round " << round;
  }
}

TEST_F(SiblingPlaces, AnotherParentAtTheSamePlaceInMemoryIsAnother) {
  for (int round = 0; round < 50; ++round) {
    Ref<Element> gone = document->create_element(Tag::Div);
    for (std::size_t i = 0; i < 60; ++i) insert(*gone, document->create_text(u"x"));
    EXPECT_EQ(index_of(*child_at(*gone, 30 + round % 5)), 30u + round % 5);
    gone = nullptr;
    document->journal().clear();
  }
}

}  // namespace
}  // namespace tvx::dom
