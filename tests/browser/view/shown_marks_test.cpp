#include "tvx/browser/view/shown_marks.h"

#include <gtest/gtest.h>

#include "tvx/browser/view/patch_stream.h"
#include "tvx/dom/parse.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"

namespace tvx::browser {
namespace {

/// A document of 3,000 paragraphs, of which a view gets more with each patch.
class ShownMarksTest : public testing::Test {
 protected:
  ShownMarksTest() {
    view_.set_receiver({});
    std::u16string body = u"<!DOCTYPE html><body>";
    for (int i = 0; i < 3000; ++i) body += u"<p>text";
    tree_ = dom::parse_document(body);
    stream_.set_on_sent([this](const std::vector<PatchOperation>& operations) { marks_.came(operations); });
    stream_.follow(*tree_, [] { return std::u16string(u"file:///tmp/"); });
    stream_.begin_page();
    stream_.flush();
  }
  static dom::Text& text_in(dom::Node& paragraph) {
    return static_cast<dom::Text&>(*paragraph.first_child());
  }
  dom::Text& last() { return text_in(*tree_->body()->last_child()); }
  void load_the_rest() {
    while (stream_.done(PatchNumber(static_cast<std::uint32_t>(view_.patches())))) stream_.flush();
  }
  std::size_t shown() const { return view_.marks().size(); }

  headless::VirtualTimeLoop loop_;
  headless::View view_{loop_};
  PatchStream stream_{view_, loop_};
  ShownMarks marks_{view_};
  dom::Ref<dom::Document> tree_;
};

TEST_F(ShownMarksTest, OfATextThatIsStillToComeTheyComeWithIt) {
  marks_.set(MarkKind::WrongWord, text_in(*tree_->body()->first_child()), {{0, 2}});
  marks_.set(MarkKind::WrongWord, last(), {{0, 4}});
  marks_.send(*stream_.mirror());
  EXPECT_EQ(shown(), 1u);
  load_the_rest();
  marks_.send(*stream_.mirror());
  EXPECT_EQ(shown(), 2u);
}

TEST_F(ShownMarksTest, TakenAwayBeforeTheTextHasComeTheyNeverCome) {
  marks_.set(MarkKind::WrongWord, last(), {{0, 4}});
  marks_.send(*stream_.mirror());
  marks_.set(MarkKind::WrongWord, last(), {});
  marks_.send(*stream_.mirror());
  load_the_rest();
  marks_.send(*stream_.mirror());
  EXPECT_EQ(shown(), 0u);
}

TEST_F(ShownMarksTest, OfAnotherKindTheyWaitForThemselves) {
  marks_.set(MarkKind::WrongWord, last(), {{0, 4}});
  marks_.set(MarkKind::Hit, last(), {{1, 3}});
  marks_.send(*stream_.mirror());
  load_the_rest();
  marks_.send(*stream_.mirror());
  EXPECT_EQ(shown(), 1u);
  EXPECT_EQ(view_.marks(MarkKind::Hit).size(), 1u);
}

}  // namespace
}  // namespace tvx::browser
