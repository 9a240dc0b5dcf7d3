#include "tvx/browser/view/positions.h"

#include <gtest/gtest.h>

#include "tvx/browser/view/mirror.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

class PositionsTest : public testing::Test {
 protected:
  void flush(std::uint32_t number) {
    mirror_.set_patch(PatchNumber(number));
    mirror_.flush(1000);
  }

  dom::Ref<dom::Document> tree_ =
      dom::parse_document(u"<!DOCTYPE html><body><p>one</p><script>code</script>");
  dom::Node& paragraph_ = *tree_->body()->first_child();
  dom::Text& text_ = static_cast<dom::Text&>(*paragraph_.first_child());
  Mirror mirror_{*tree_};
};

TEST_F(PositionsTest, GoDownWhereTheViewHasThem) {
  EXPECT_FALSE(view_place(mirror_, {&text_, 2}));
  flush(1);
  EXPECT_EQ(view_place(mirror_, {&text_, 2}), (ViewPlace{text_.id(), 2}));
  EXPECT_FALSE(view_place(mirror_, {}));
}

TEST_F(PositionsTest, InsideWhatIsNotShownTheyAreBeforeIt) {
  flush(1);
  dom::Node& script = *paragraph_.next_sibling();
  EXPECT_EQ(view_place(mirror_, {script.first_child(), 3}), (ViewPlace{tree_->body()->id(), 1}));
}

TEST_F(PositionsTest, ComeUpWithinTheTextAsItIsNow) {
  flush(1);
  EXPECT_EQ(nearest_boundary(mirror_, ViewPlace{text_.id(), 2}), (dom::Boundary{&text_, 2}));
  EXPECT_EQ(nearest_boundary(mirror_, ViewPlace{text_.id(), 99}), (dom::Boundary{&text_, 3}));
  EXPECT_FALSE(nearest_boundary(mirror_, std::nullopt));
  const dom::NodeId id = text_.id();
  const dom::Ref<dom::Node> kept(&paragraph_);
  dom::remove(paragraph_);
  EXPECT_FALSE(nearest_boundary(mirror_, ViewPlace{id, 0})) << "it has left the document";
}

TEST(PositionsInPart, NameWhatIsMissing) {
  std::u16string source = u"<!DOCTYPE html><body>";
  for (int i = 0; i < 2000; ++i) source += u"<p>one";
  const auto tree = dom::parse_document(source);
  dom::Element& body = *tree->body();
  Mirror mirror(*tree);
  dom::Node& text = *body.last_child()->first_child();
  EXPECT_EQ(missing_at(mirror, {&text, 2}), &text);
  mirror.flush(50);
  EXPECT_EQ(missing_at(mirror, {&body, 3}), nullptr);
  EXPECT_EQ(missing_at(mirror, {&body, 1000}), dom::child_at(body, 1000));
  EXPECT_EQ(missing_at(mirror, {&body, 2000}), body.last_child());
  EXPECT_FALSE(view_place(mirror, {&body, 2000}));
  mirror.set_patch(PatchNumber(3));
  mirror.flush(400, &text);
  EXPECT_EQ(missing_at(mirror, {&body, 2000}), nullptr);
  const auto end = view_place(mirror, {&body, 2000});
  ASSERT_TRUE(end);
  EXPECT_LT(end->offset, 400u) << "as the view counts";
  EXPECT_EQ(nearest_boundary(mirror, end), (dom::Boundary{&body, 2000}));
  mirror.set_patch(PatchNumber(4));
  EXPECT_TRUE(boundary_seen(mirror, end, PatchNumber(3)));
  mirror.flush(400);
  EXPECT_FALSE(boundary_seen(mirror, end, PatchNumber(3))) << "the gap is smaller by now";
}

TEST_F(PositionsTest, OfAnOlderTreeAreNone) {
  flush(1);
  const ViewPlace place{text_.id(), 1};
  EXPECT_TRUE(boundary_seen(mirror_, place, PatchNumber(1)));
  mirror_.set_patch(PatchNumber(2));
  dom::replace_data(text_, 0, 0, u"new ");
  EXPECT_FALSE(boundary_seen(mirror_, place, PatchNumber(1)));
  EXPECT_TRUE(nearest_boundary(mirror_, place));
  mirror_.flush(1000);
  EXPECT_TRUE(boundary_seen(mirror_, place, PatchNumber(2)));
}

}  // namespace
}  // namespace tvx::browser
