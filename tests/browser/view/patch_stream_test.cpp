#include "tvx/browser/view/patch_stream.h"

#include <gtest/gtest.h>

#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"

namespace tvx::browser {
namespace {

/// A tree, a view, and the stream between them; the test says when a patch is laid out.
class PatchStreamTest : public testing::Test {
 protected:
  PatchStreamTest() { view_.set_receiver({}); }

  void follow(std::u16string_view body) {
    tree_ = dom::parse_document(u"<!DOCTYPE html><body>" + std::u16string(body));
    stream_.follow(*tree_, [this] { return base_; });
    stream_.begin_page();
  }
  std::u16string shown() const { return view_.tree().print(); }
  PatchNumber last() const { return PatchNumber(static_cast<std::uint32_t>(view_.patches())); }

  headless::VirtualTimeLoop loop_;
  headless::View view_{loop_};
  PatchStream stream_{view_, loop_};
  dom::Ref<dom::Document> tree_;
  std::u16string base_ = u"file:///tmp/";
};

TEST_F(PatchStreamTest, TheFirstPatchBeginsAPage) {
  follow(u"<p>one");
  EXPECT_FALSE(stream_.settled());
  EXPECT_TRUE(stream_.flush()) << "the page's selection is no more";
  EXPECT_EQ(view_.pages(), 1u);
  EXPECT_EQ(view_.base(), base_);
  EXPECT_EQ(shown(), print_mirrored(*tree_));
  EXPECT_FALSE(stream_.filled());
  EXPECT_FALSE(stream_.done(last())) << "there is no other slice";
  EXPECT_TRUE(stream_.filled());
  EXPECT_TRUE(stream_.settled());
}

TEST_F(PatchStreamTest, NothingToSendIsNotSent) {
  follow(u"<p>one");
  stream_.flush();
  EXPECT_FALSE(stream_.flush());
  EXPECT_EQ(view_.patches(), 1u);
}

TEST_F(PatchStreamTest, ALargeDocumentComesInSlicesAsTheViewCatchesUp) {
  std::u16string body;
  for (int i = 0; i < 3000; ++i) body += u"<p>text";
  follow(body);
  stream_.flush();
  stream_.flush();
  EXPECT_EQ(view_.patches(), 1u) << "the next slice waits until the view has laid out this one";
  const std::size_t first = view_.tree().size();
  EXPECT_TRUE(stream_.done(last()));
  stream_.flush();
  EXPECT_GT(view_.tree().size(), first);
  for (int i = 0; i < 100 && stream_.done(last()); ++i) stream_.flush();
  EXPECT_TRUE(stream_.settled());
  EXPECT_EQ(shown(), print_mirrored(*tree_));
}

TEST_F(PatchStreamTest, EditsGoWhileASliceIsOnItsWay) {
  std::u16string body = u"<p id=a>text";
  for (int i = 0; i < 3000; ++i) body += u"<p>text";
  follow(body);
  stream_.flush();
  const std::size_t size = view_.tree().size();
  dom::set_attribute(*static_cast<dom::Element*>(tree_->body()->first_child()), dom::names::id, u"b");
  EXPECT_FALSE(stream_.flush()) << "an attribute moves no selection";
  EXPECT_EQ(view_.patches(), 2u);
  EXPECT_EQ(view_.tree().size(), size) << "no more of the document";
}

TEST_F(PatchStreamTest, WhileKeysComeTheRestWaits) {
  std::u16string body = u"<p>text";
  for (int i = 0; i < 3000; ++i) body += u"<p>text";
  follow(body);
  stream_.flush();
  auto& text = static_cast<dom::Text&>(*tree_->body()->first_child()->first_child());
  for (int key = 0; key < 5; ++key) {
    dom::replace_data(text, 0, 0, u"x");  // pressed while the patch before is laid out
    EXPECT_TRUE(stream_.done(last()));
    const std::size_t size = view_.tree().size();
    stream_.flush();
    EXPECT_EQ(view_.tree().size(), size) << "nothing but the key";
    EXPECT_EQ(shown().substr(0, 200), print_mirrored(*tree_).substr(0, 200));
  }
  std::size_t size = view_.tree().size();
  stream_.note_use();
  EXPECT_TRUE(stream_.done(last())) << "the key is shown: now the rest goes on";
  stream_.flush();
  EXPECT_GT(view_.tree().size(), size);
  EXPECT_LT(view_.tree().size(), size + SliceSize::smallest / 2) << "with little, as more keys may come";
  size = view_.tree().size();
  EXPECT_TRUE(stream_.done(last()));
  stream_.flush();
  EXPECT_EQ(view_.tree().size(), size) << "until another key comes, or none for a while";
  ASSERT_TRUE(stream_.resumes_in());
  loop_.pass(*stream_.resumes_in());
  stream_.flush();
  EXPECT_GT(view_.tree().size(), size + SliceSize::smallest / 2);
}

TEST_F(PatchStreamTest, MovesOfTheCaretComeWithoutASlice) {
  std::u16string body;
  for (int i = 0; i < 3000; ++i) body += u"<p>text";
  follow(body);
  stream_.flush();
  EXPECT_FALSE(stream_.resumes_in()) << "the next slice comes when this one is shown";
  for (int key = 0; key < 5; ++key) {
    stream_.done(last());
    stream_.note_use();
    const std::size_t size = view_.tree().size();
    stream_.flush();
    EXPECT_EQ(view_.tree().size(), size);
    loop_.pass(30);
  }
  const std::size_t size = view_.tree().size();
  loop_.pass(200);
  stream_.note_use();
  stream_.flush();
  EXPECT_GT(view_.tree().size(), size) << "whoever holds a key down still gets the rest";
}

TEST_F(PatchStreamTest, WhoChangesThePageAllTheTimeDoesNotKeepTheRestAway) {
  std::u16string body = u"<p>text";
  for (int i = 0; i < 3000; ++i) body += u"<p>text";
  follow(body);
  stream_.flush();
  auto& text = static_cast<dom::Text&>(*tree_->body()->first_child()->first_child());
  for (int turn = 0; turn < 1000 && stream_.mirror()->loading(); ++turn) {
    stream_.done(last());
    loop_.pass(20);
    dom::replace_data(text, 0, 1, u"x");
    stream_.flush();
  }
  EXPECT_FALSE(stream_.mirror()->loading());
}

TEST_F(PatchStreamTest, AnEditOfWhatIsStillToComeDoesNotHoldItUp) {
  std::u16string body;
  for (int i = 0; i < 3000; ++i) body += u"<p>text";
  follow(body);
  stream_.flush();
  stream_.done(last());
  const std::size_t size = view_.tree().size();
  dom::insert(*tree_->body(), tree_->create_element(dom::Tag::Hr));
  stream_.flush();
  EXPECT_GT(view_.tree().size(), size);
}

TEST_F(PatchStreamTest, WhatIsWantedDoesNotWaitForASliceThatIsOnItsWay) {
  std::u16string body;
  for (int i = 0; i < 3000; ++i) body += u"<p>text";
  follow(body);
  dom::Node* wanted = tree_->body()->last_child()->first_child();
  stream_.flush(wanted);
  EXPECT_FALSE(stream_.mirror()->knows(*wanted)) << "a page begins at its top";
  stream_.flush(wanted);
  EXPECT_TRUE(stream_.mirror()->knows(*wanted));
  for (int i = 0; i < 100 && stream_.done(last()); ++i) stream_.flush(wanted);
  EXPECT_TRUE(stream_.settled());
  EXPECT_EQ(shown(), print_mirrored(*tree_));
}

TEST_F(PatchStreamTest, NumbersGoOnFromDocumentToDocument) {
  follow(u"<p>one");
  stream_.flush();
  stream_.done(last());
  follow(u"<p>two");
  EXPECT_FALSE(stream_.filled()) << "the patch that was laid out showed the other one";
  stream_.flush();
  EXPECT_FALSE(stream_.settled());
  stream_.done(PatchNumber(2));
  EXPECT_TRUE(stream_.settled());
}

TEST_F(PatchStreamTest, ChangedTextMayMoveThePagesSelection) {
  follow(u"<p>one");
  stream_.flush();
  dom::replace_data(static_cast<dom::Text&>(*tree_->body()->first_child()->first_child()), 0, 1, u"x");
  EXPECT_TRUE(stream_.flush());
}

TEST_F(PatchStreamTest, APageIsOutdatedWhenItsBaseIsAnotherOne) {
  follow(u"<p>one");
  stream_.flush();
  base_ = u"http://example.org/";
  EXPECT_FALSE(stream_.page_outdated()) << "nobody has said that it may differ";
  stream_.base_may_differ();
  EXPECT_TRUE(stream_.page_outdated());
  stream_.begin_page();
  stream_.flush();
  EXPECT_EQ(view_.pages(), 2u);
  EXPECT_EQ(view_.base(), base_);
  EXPECT_EQ(shown(), print_mirrored(*tree_));
}

TEST_F(PatchStreamTest, WhatIsLostIsNotWaitedFor) {
  follow(u"<p>one");
  stream_.flush();
  EXPECT_FALSE(stream_.settled());
  stream_.lost();
  EXPECT_TRUE(stream_.settled());
}

TEST_F(PatchStreamTest, ANodeThatFailsTwiceIsLeftOut) {
  follow(u"<p>one</p><hr>");
  stream_.flush();
  const dom::NodeId id = tree_->body()->last_child()->id();
  stream_.failed({id, u"refused"});
  stream_.flush();
  EXPECT_EQ(view_.patches(), 2u) << "it is sent once more";
  testing::internal::CaptureStderr();
  stream_.failed({id, u"refused"});
  EXPECT_NE(testing::internal::GetCapturedStderr().find("refused"), std::string::npos);
  stream_.flush();
  const std::size_t patches = view_.patches();
  dom::set_attribute(static_cast<dom::Element&>(*tree_->body()->last_child()), dom::names::id, u"x");
  stream_.flush();
  EXPECT_EQ(view_.patches(), patches) << "what it is like is of no interest any more";
}

}  // namespace
}  // namespace tvx::browser
