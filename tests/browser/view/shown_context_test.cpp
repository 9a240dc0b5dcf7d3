#include "tvx/browser/view/shown_context.h"

#include <gtest/gtest.h>

#include "tvx/browser/html_document.h"
#include "tvx/dom/parse.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"

namespace tvx::browser {
namespace {

class ShownContextTest : public testing::Test {
 protected:
  explicit ShownContextTest(std::u16string text = u"one two")
      : document_(
            HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><p>" + text), u"file:///a.html")) {
    document_->set_designMode(u"On");
  }
  dom::Node* text() { return document_->body()->first_child()->first_child(); }
  const InputContext& shown() const { return view_.input_context(); }

  headless::VirtualTimeLoop loop_;
  headless::View view_{loop_};
  ShownContext context_{view_};
  std::shared_ptr<HTMLDocument> document_;
};

TEST_F(ShownContextTest, TellsWhatStandsAroundTheSelection) {
  document_->editor().selection().set({text(), 1}, {text(), 4});
  context_.send(*document_, true);
  EXPECT_EQ(shown().text, u"one two");
  EXPECT_EQ(shown().cursor, 4u);
  EXPECT_EQ(shown().anchor, 1u);
  EXPECT_TRUE(shown().enabled);
}

TEST_F(ShownContextTest, IsOffWhereNothingMayBeEdited) {
  context_.send(*document_, false);
  EXPECT_FALSE(shown().enabled);
  context_.send(*document_, true);
  EXPECT_TRUE(shown().enabled);
  document_->set_designMode(u"Off");
  context_.send(*document_, true);
  EXPECT_FALSE(shown().enabled);
}

TEST_F(ShownContextTest, LeavesOutWhatIsComposed) {
  document_->editor().selection().collapse({text(), 3});
  document_->compose(u"xyz", 1);
  context_.send(*document_, true);
  EXPECT_EQ(shown().text, u"one two");
  EXPECT_EQ(shown().cursor, 3u);
}

TEST_F(ShownContextTest, CountsCompositionsThatTheDocumentHasEnded) {
  document_->editor().selection().collapse({text(), 3});
  document_->compose(u"xyz", 1);
  context_.composing(true);
  context_.send(*document_, true);
  EXPECT_EQ(shown().interruptions, 0u);
  document_->execCommand(u"bold", false, u"");
  context_.send(*document_, true);
  EXPECT_EQ(shown().interruptions, 1u);
  context_.send(*document_, true);
  EXPECT_EQ(shown().interruptions, 1u);
}

class LongText : public ShownContextTest {
 protected:
  LongText() : ShownContextTest(std::u16string(3000, u'a') + u"b") {}
};

TEST_F(LongText, IsCutAroundTheCaret) {
  document_->editor().selection().collapse({text(), 3001});
  context_.send(*document_, true);
  EXPECT_EQ(shown().text, std::u16string(399, u'a') + u"b");
  EXPECT_EQ(shown().cursor, 400u);
}

}  // namespace
}  // namespace tvx::browser
