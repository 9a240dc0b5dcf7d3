#include <gtest/gtest.h>

#include "dom/builder.h"
#include "dom/mutation.h"
#include "dom/range.h"

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

}  // namespace
}  // namespace tvx::dom
