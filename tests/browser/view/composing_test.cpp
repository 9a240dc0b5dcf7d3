#include <gmock/gmock.h>

#include "browser/view/document_view_fixture.h"
#include "tvx/dom/mutation.h"

namespace tvx::browser {
namespace {

TEST_F(DocumentViewTest, WhatIsComposedStandsInTheDocument) {
  open(u"<p>abc</p>");
  selection().collapse({text(), 1});
  view_.input({.text = u"", .composing = u"ni", .cursor = 1});
  pump();
  EXPECT_EQ(html(), "<P>anibc</P>");
  EXPECT_EQ(selection().focus(), (Boundary{text(), 2}));
  EXPECT_EQ(view_.selection().composing, place(*text(), 1));
  EXPECT_EQ(view_.selection().composing_length, 2u);
  EXPECT_EQ(view_.input_context().text, u"abc") << "an input method doesn't count what it composes";
  EXPECT_EQ(view_.input_context().cursor, 1u);
  EXPECT_FALSE(document_->tree().journal().can_undo()) << "the step is open";
}

TEST_F(DocumentViewTest, ACommitIsOneStep) {
  open(u"<p>abc</p>");
  selection().collapse({text(), 1});
  for (const std::u16string_view text : {u"n", u"ni", u"nih", u"niha"})
    view_.input({.text = u"", .composing = std::u16string(text), .cursor = 1});
  view_.input({.text = u"\u4F60\u597D"});
  pump();
  EXPECT_EQ(html(), "<P>a\u4F60\u597Dbc</P>");
  EXPECT_EQ(steps(), 1u);
  EXPECT_EQ(view_.selection().composing_length, 0u);
  document_->tree().journal().undo();
  EXPECT_EQ(html(), "<P>abc</P>");
  document_->tree().journal().redo();
  EXPECT_EQ(html(), "<P>a\u4F60\u597Dbc</P>");
}

TEST_F(DocumentViewTest, ACancelledCompositionLeavesNothingAndKeepsTheSelection) {
  open(u"<p>abcd</p>");
  selection().set({text(), 1}, {text(), 3});
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  pump();
  EXPECT_EQ(html(), "<P>axd</P>");
  view_.input({});
  pump();
  EXPECT_EQ(html(), "<P>abcd</P>");
  EXPECT_EQ(selection().range(), (dom::Range{{text(), 1}, {text(), 3}}));
  EXPECT_EQ(steps(), 0u);
}

TEST_F(DocumentViewTest, ComposedTextTakesThePendingLook) {
  open(u"<p>ab</p>");
  selection().collapse({text(), 2});
  document_->execCommand(u"bold", false, u"");
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  view_.input({.text = u"", .composing = u"xy", .cursor = 2});
  pump();
  EXPECT_EQ(html(), "<P>ab<B>xy</B></P>");
  view_.input({.text = u"z"});
  pump();
  EXPECT_EQ(html(), "<P>ab<B>z</B></P>");
}

TEST_F(DocumentViewTest, AHostsChangeDuringACompositionStays) {
  open(u"<p>ab</p><p>other</p>");
  selection().collapse({text(), 2});
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  pump();
  dom::set_attribute(first(dom::Tag::P), dom::names::id, u"host");
  view_.input({.text = u"", .composing = u"xy", .cursor = 2});
  view_.input({.text = u"Z"});
  pump();
  EXPECT_EQ(html(), "<P id=\"host\">abZ</P><P>other</P>");
  while (document_->tree().journal().undo()) {
  }
  EXPECT_EQ(html(), "<P>ab</P><P>other</P>");
}

TEST_F(DocumentViewTest, AKeyEndsACompositionAndTheInputMethodIsTold) {
  open(u"<p>ab</p>");
  selection().collapse({text(), 2});
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  pump();
  const std::uint32_t before = view_.input_context().interruptions;
  key(u"ArrowLeft");
  pump();
  EXPECT_EQ(html(), "<P>abx</P>");
  EXPECT_EQ(view_.input_context().interruptions, before + 1);
  EXPECT_EQ(steps(), 1u);
}

TEST_F(DocumentViewTest, NewContentDuringACompositionIsWhole) {
  open(u"<p>ab</p>");
  selection().collapse({text(), 2});
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  pump();
  document_->load_body(u"<P>new</P>");
  view_.input({.text = u"", .composing = u"xy", .cursor = 1});
  view_.input({.text = u"z"});
  pump();
  EXPECT_THAT(html(), testing::HasSubstr("new"));
  EXPECT_THAT(html(), testing::Not(testing::HasSubstr("xy")));
  EXPECT_FALSE(document_->is_composing());
}

TEST_F(DocumentViewTest, OneKeyDownStandsForAComposition) {
  class Counts final : public DocumentHandler {
   public:
    void onkeydown() override { ++keys; }
    int keys = 0;
  } handler;
  open(u"<p>ab</p>");
  selection().collapse({text(), 2});
  document_->connect(&handler);
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  view_.input({.text = u"", .composing = u"xy", .cursor = 1});
  view_.input({.text = u"z"});
  pump();
  EXPECT_EQ(handler.keys, 1);
  view_.text(u"w");
  pump();
  EXPECT_EQ(handler.keys, 2);
  EXPECT_EQ(html(), "<P>abzw</P>");
  document_->connect(nullptr);
}

TEST_F(DocumentViewTest, AHandlerMayTakeACompositionAway) {
  class Refuses final : public DocumentHandler {
   public:
    explicit Refuses(HTMLDocument& document) : document_(document) {}
    void onkeydown() override { document_.set_event_key_code(0); }

   private:
    HTMLDocument& document_;
  };
  open(u"<p>ab</p>");
  selection().collapse({text(), 2});
  Refuses handler(*document_);
  document_->connect(&handler);
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  view_.input({.text = u"z"});
  pump();
  EXPECT_EQ(html(), "<P>ab</P>");
  document_->connect(nullptr);
}

TEST_F(DocumentViewTest, AnInputMethodMayReplaceWhatStandsBeforeTheCaret) {
  open(u"<p>teh rest</p>");
  selection().collapse({text(), 3});
  ViewText correction{.text = u"the"};
  correction.replaced_from = -3;
  correction.replaced_length = 3;
  view_.input(correction);
  pump();
  EXPECT_EQ(html(), "<P>the rest</P>");
}

}  // namespace
}  // namespace tvx::browser
