#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/view.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/platform/message_loop.h"

/// What every view of a document does.
namespace tvx::contract {

using namespace browser;

/// A `Room` has a view() and the loop() that its messages come from.
template <class Room>
class ViewContract : public testing::Test {
 protected:
  ViewContract() {
    room_.view().set_receiver([this](const ViewMessage& message) { heard.push_back(message); });
  }
  ~ViewContract() override { room_.view().set_receiver(nullptr); }
  View& view() { return room_.view(); }

  void open(std::u16string_view body) {
    tree_ = dom::parse_document(u"<!DOCTYPE html><body>" + std::u16string(body));
    mirror_ = std::make_unique<Mirror>(*tree_);
    send(true);
    ASSERT_TRUE(wait([&] { return done() == number_; }));
  }
  /// Sends all that has changed as the next patch.
  void send(bool reset = false) {
    Patch patch;
    patch.number = number_ = next(number_);
    patch.reset = reset;
    if (reset) patch.base = u"file:///tmp/";
    mirror_->set_patch(number_);
    patch.operations = mirror_->flush(100'000);
    view().apply(patch);
  }
  static PatchNumber next(PatchNumber number) { return PatchNumber(static_cast<std::uint32_t>(number) + 1); }
  bool wait(const std::function<bool()>& condition) {
    const std::int64_t end = room_.loop().now() + 30'000;
    while (!condition() && room_.loop().now() < end) room_.loop().pump(20);
    return condition();
  }
  /// The last patch that is laid out.
  PatchNumber done() const {
    PatchNumber number{};
    for (const ViewMessage& message : heard)
      if (const auto* patch = std::get_if<PatchDone>(&message.what)) number = patch->number;
    return number;
  }
  const ViewAnswer* answer(QuestionId id) const {
    for (const ViewMessage& message : heard)
      if (const auto* answer = std::get_if<ViewAnswer>(&message.what); answer && answer->id == id)
        return answer;
    return nullptr;
  }
  std::optional<ViewPlace> move(ViewMove move, ViewPlace from) {
    const QuestionId id = QuestionId(++questions_);
    view().ask({.id = id, .type = ViewQuestion::Type::Move, .move = move, .from = from});
    EXPECT_EQ(answer(id), nullptr) << "never within the call";
    EXPECT_TRUE(wait([&] { return answer(id) != nullptr; }));
    return answer(id) ? answer(id)->place : std::nullopt;
  }
  dom::Node& text(int block) const {
    dom::Node* node = tree_->body()->first_child();
    while (block-- > 0) node = node->next_sibling();
    return *node->first_child();
  }
  dom::Node& text_of(std::u16string_view id) const {
    dom::Node* node = tree_->body();
    const auto is_wanted = [&] {
      const auto* element = dom::as<dom::Element>(node);
      return element && element->attribute_or_empty(dom::names::id) == id;
    };
    while (!is_wanted()) node = dom::next_in_order(*node, tree_->body());
    return *node->first_child();
  }

  Room room_;
  dom::Ref<dom::Document> tree_;
  std::unique_ptr<Mirror> mirror_;
  std::vector<ViewMessage> heard;
  PatchNumber number_{};
  std::uint32_t questions_ = 0;
};

TYPED_TEST_SUITE_P(ViewContract);

TYPED_TEST_P(ViewContract, EachPatchIsReportedWhenItIsLaidOutAndNeverWithinTheCall) {
  this->open(u"<p>one</p>");
  dom::replace_data(static_cast<dom::Text&>(this->text(0)), 0, 3, u"two");
  const std::size_t before = this->heard.size();
  this->send();
  EXPECT_EQ(this->heard.size(), before);
  EXPECT_TRUE(this->wait([&] { return this->done() == this->number_; }));
  EXPECT_EQ(this->heard.back().seen, this->number_) << "messages name the last patch";
}

TYPED_TEST_P(ViewContract, AnOperationOnANodeThatIsNotKnownFailsAndTheOthersAreDone) {
  this->open(u"<p>one</p>");
  Patch patch;
  patch.number = this->number_ = this->next(this->number_);
  PatchOperation wrong{.type = PatchOperation::Type::Data};
  wrong.node = dom::NodeId(9999);
  PatchOperation right{.type = PatchOperation::Type::Data};
  right.node = this->text(0).id();
  right.length = 3;
  right.text = u"a longer one";
  patch.operations = {wrong, right};
  this->view().apply(patch);
  ASSERT_TRUE(this->wait([&] { return this->done() == this->number_; }));
  int failures = 0;
  for (const ViewMessage& message : this->heard)
    if (const auto* failure = std::get_if<PatchFailed>(&message.what))
      failures += failure->node == dom::NodeId(9999) ? 1 : 100;
  EXPECT_EQ(failures, 1);
  EXPECT_EQ(this->move(ViewMove::LineEnd, {this->text(0).id(), 0}), (ViewPlace{this->text(0).id(), 12}));
}

TYPED_TEST_P(ViewContract, APingIsAnsweredAfterAllThatCameBefore) {
  this->open(u"<p>one</p>");
  dom::set_attribute(*dom::as<dom::Element>(this->tree_->body()->first_child()), dom::names::id, u"x");
  this->send();
  this->view().ask({.id = QuestionId(77), .type = ViewQuestion::Type::Ping});
  ASSERT_TRUE(this->wait([&] { return this->answer(QuestionId(77)) != nullptr; }));
  EXPECT_FALSE(this->answer(QuestionId(77))->place);
  ASSERT_TRUE(this->wait([&] { return this->done() == this->number_; }));
}

TYPED_TEST_P(ViewContract, TheCaretMovesByLinesAndStaysAtTheEnds) {
  this->open(u"<p>one two</p><p>three</p>");
  const dom::NodeId first = this->text(0).id(), second = this->text(1).id();
  EXPECT_EQ(this->move(ViewMove::LineEnd, {first, 2}), (ViewPlace{first, 7}));
  EXPECT_EQ(this->move(ViewMove::LineStart, {first, 2}), (ViewPlace{first, 0}));
  const auto below = this->move(ViewMove::LineDown, {first, 0});
  EXPECT_EQ(below, (ViewPlace{second, 0}));
  EXPECT_EQ(this->move(ViewMove::LineUp, {second, 0}), (ViewPlace{first, 0}));
}

TYPED_TEST_P(ViewContract, ALineInACellIsOverTheCellBelowIt) {
  this->open(
      u"<p>text</p><table><tbody><tr><td id=a>one<td id=b>two<tr><td id=c>four<td "
      u"id=d>five</table><p>end</p>");
  const auto in = [&](std::u16string_view id) { return this->text_of(id).id(); };
  const dom::NodeId one = in(u"a"), two = in(u"b"), four = in(u"c"), five = in(u"d");
  EXPECT_EQ(this->move(ViewMove::LineDown, {two, 0}), (ViewPlace{five, 0}));
  EXPECT_EQ(this->move(ViewMove::LineUp, {four, 0}), (ViewPlace{one, 0}));
  const auto above = this->move(ViewMove::LineUp, {one, 0});
  EXPECT_EQ(above ? above->node : dom::NodeId(), this->text(0).id());
  const auto after = this->move(ViewMove::LineDown, {four, 0});
  EXPECT_EQ(after ? after->node : dom::NodeId(), this->text(2).id());
}

TYPED_TEST_P(ViewContract, ATableThatIsAllStaysAroundTheCaret) {
  this->open(u"<table><tbody><tr><td id=a>one<td id=b>two</table>");
  const dom::NodeId one = this->text_of(u"a").id();
  EXPECT_EQ(this->move(ViewMove::LineDown, {one, 1}), (ViewPlace{one, 1}));
  EXPECT_EQ(this->move(ViewMove::LineUp, {one, 1}), (ViewPlace{one, 1}));
}

TYPED_TEST_P(ViewContract, ARuleIsNoLine) {
  this->open(u"<p>one</p><hr><hr><p>two</p><hr>");
  const dom::NodeId one = this->text(0).id(), two = this->text(3).id();
  EXPECT_EQ(this->move(ViewMove::LineDown, {one, 0}), (ViewPlace{two, 0}));
  EXPECT_EQ(this->move(ViewMove::LineUp, {two, 0}), (ViewPlace{one, 0}));
  EXPECT_EQ(this->move(ViewMove::LineDown, {two, 0}), (ViewPlace{two, 0}));
}

TYPED_TEST_P(ViewContract, BetweenBlocksTheNextLineIsTheOneBeside) {
  this->open(u"<p>one</p><hr><hr><p>two</p><table><tbody><tr><td id=a>three</table><hr>");
  const dom::NodeId page = this->tree_->body()->id(), one = this->text(0).id(), two = this->text(3).id();
  const dom::NodeId three = this->text_of(u"a").id();
  EXPECT_EQ(this->move(ViewMove::LineUp, {page, 2}), (ViewPlace{one, 0}));
  EXPECT_EQ(this->move(ViewMove::LineDown, {page, 2}), (ViewPlace{two, 0}));
  EXPECT_EQ(this->move(ViewMove::LineUp, {page, 6}), (ViewPlace{three, 0}));
  EXPECT_EQ(this->move(ViewMove::LineDown, {page, 6}), (ViewPlace{page, 6}));
}

TYPED_TEST_P(ViewContract, AQuestionAboutANodeThatIsNotKnownIsAnsweredWithNothing) {
  this->open(u"<p>one</p>");
  EXPECT_EQ(this->move(ViewMove::LineDown, {dom::NodeId(9999), 0}), std::nullopt);
}

TYPED_TEST_P(ViewContract, WhoIsGoneHearsNothing) {
  this->open(u"<p>one</p>");
  dom::replace_data(static_cast<dom::Text&>(this->text(0)), 0, 3, u"two");
  this->send();
  const std::size_t before = this->heard.size();
  this->view().set_receiver(nullptr);
  for (int i = 0; i < 20; ++i) this->room_.loop().pump(10);
  EXPECT_EQ(this->heard.size(), before);
}

REGISTER_TYPED_TEST_SUITE_P(ViewContract, EachPatchIsReportedWhenItIsLaidOutAndNeverWithinTheCall,
                            AnOperationOnANodeThatIsNotKnownFailsAndTheOthersAreDone,
                            APingIsAnsweredAfterAllThatCameBefore, TheCaretMovesByLinesAndStaysAtTheEnds,
                            ALineInACellIsOverTheCellBelowIt, ATableThatIsAllStaysAroundTheCaret,
                            ARuleIsNoLine, BetweenBlocksTheNextLineIsTheOneBeside,
                            AQuestionAboutANodeThatIsNotKnownIsAnsweredWithNothing, WhoIsGoneHearsNothing);

}  // namespace tvx::contract
