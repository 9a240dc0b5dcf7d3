#include "tvx/dom/journal.h"

#include <gtest/gtest.h>

#include "tvx/base/interruption.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/range.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {
namespace {

/// A document with <HTML><BODY><P>one</P></BODY></HTML>.
class JournalTest : public testing::Test {
 protected:
  void SetUp() override {
    html_ = document_->create_element(Tag::Html);
    body_ = document_->create_element(Tag::Body);
    p_ = document_->create_element(Tag::P);
    text_ = document_->create_text(u"one");
    Builder::insert(*document_, html_);
    Builder::insert(*html_, body_);
    Builder::insert(*body_, p_);
    Builder::insert(*p_, text_);
  }
  std::u16string html() const { return serialise_children(*body_); }
  Journal& journal() { return document_->journal(); }

  Ref<Document> document_ = Document::create();
  Ref<Element> html_, body_, p_;
  Ref<Text> text_;
};

TEST_F(JournalTest, AChangeOutsideAnyStepIsAStepOfItsOwn) {
  replace_data(*text_, 3, 0, u" two");
  set_attribute(*p_, names::align, u"center");
  EXPECT_EQ(journal().depth(), 2u);
  EXPECT_TRUE(journal().undo());
  EXPECT_EQ(html(), u"<P>one two</P>");
  EXPECT_TRUE(journal().undo());
  EXPECT_EQ(html(), u"<P>one</P>");
  EXPECT_FALSE(journal().undo());
  EXPECT_TRUE(journal().redo());
  EXPECT_TRUE(journal().redo());
  EXPECT_EQ(html(), u"<P align=\"center\">one two</P>");
}

TEST_F(JournalTest, StepsNestAndTheOutermostCounts) {
  {
    UndoStep outer(journal(), u"Outer");
    replace_data(*text_, 0, 1, u"O");
    UndoStep inner(journal(), u"Inner");
    remove(*text_);
  }
  EXPECT_EQ(journal().depth(), 1u);
  EXPECT_EQ(journal().undo_label(), u"Outer");
  journal().undo();
  EXPECT_EQ(html(), u"<P>one</P>");
}

TEST_F(JournalTest, TypingRunsJoinUntilTheRunEnds) {
  const auto type = [this](Offset at, std::u16string_view letter) {
    UndoStep step(journal(), u"Typing", StepJoin::TypingRun);
    replace_data(*text_, at, 0, letter);
  };
  type(3, u"a");
  type(4, u"b");
  journal().end_typing_run();
  type(5, u"c");
  EXPECT_EQ(html(), u"<P>oneabc</P>");
  journal().undo();
  EXPECT_EQ(html(), u"<P>oneab</P>");
  journal().undo();
  EXPECT_EQ(html(), u"<P>one</P>");
}

TEST_F(JournalTest, ANewChangeDropsRedo) {
  replace_data(*text_, 0, 0, u"x");
  journal().undo();
  EXPECT_TRUE(journal().can_redo());
  replace_data(*text_, 0, 0, u"y");
  EXPECT_FALSE(journal().can_redo());
}

TEST_F(JournalTest, TidyingJoinsTheLastStepAndKeepsRedo) {
  replace_data(*text_, 0, 0, u"x");
  replace_data(*text_, 0, 0, u"y");
  journal().undo();
  {
    UndoStep step(journal(), u"", StepJoin::LastStep);
    set_attribute(*p_, names::id, u"tidy");
  }
  EXPECT_EQ(journal().depth(), 1u);
  EXPECT_TRUE(journal().redo());
  EXPECT_EQ(html(), u"<P id=\"tidy\">yxone</P>");
  journal().undo();
  journal().undo();
  EXPECT_EQ(html(), u"<P>one</P>");
}

TEST_F(JournalTest, TidyingWithNoStepBeforeMakesNone) {
  {
    UndoStep step(journal(), u"", StepJoin::LastStep);
    set_attribute(*p_, names::id, u"tidy");
  }
  EXPECT_FALSE(journal().can_undo());
  EXPECT_EQ(html(), u"<P id=\"tidy\">one</P>");
}

TEST_F(JournalTest, OverlayAndLoadAreNotJournalled) {
  {
    MutationScope scope(*document_, MutationKind::Overlay);
    set_attribute(*p_, names::style, u"border: 1px");
  }
  {
    MutationScope scope(*document_, MutationKind::Load);
    remove(*text_);
  }
  EXPECT_FALSE(journal().can_undo());
}

/// Lays a border over an element's style.
class Border final : public OverlayKeeper {
 public:
  explicit Border(Element& element) : element_(element) { put_back(); }
  void take_off() override {
    MutationScope scope(document_of(element_), MutationKind::Overlay);
    if (saved_)
      set_attribute(element_, names::style, *saved_);
    else
      remove_attribute(element_, names::style);
  }
  void put_back() override {
    MutationScope scope(document_of(element_), MutationKind::Overlay);
    const std::u16string* style = element_.attribute(names::style);
    saved_ = style ? std::optional(*style) : std::nullopt;
    set_attribute(element_, names::style, saved_.value_or(u"") + u"border: 1px");
  }

 private:
  Element& element_;
  std::optional<std::u16string> saved_;
};

TEST_F(JournalTest, NoStepHoldsATraceOfAnOverlay) {
  Border border(*p_);
  journal().set_overlay_keeper(&border);
  EXPECT_EQ(html(), u"<P style=\"border: 1px\">one</P>");
  {
    UndoStep step(journal(), u"Colour");
    set_attribute(*p_, names::style, u"color: red;");
  }
  EXPECT_EQ(html(), u"<P style=\"color: red;border: 1px\">one</P>");
  set_attribute(*p_, names::style, u"color: blue;");  // outside any step
  EXPECT_EQ(html(), u"<P style=\"color: blue;border: 1px\">one</P>");
  journal().undo();
  EXPECT_EQ(html(), u"<P style=\"color: red;border: 1px\">one</P>");
  journal().undo();
  EXPECT_EQ(html(), u"<P style=\"border: 1px\">one</P>");
  journal().redo();
  border.take_off();
  journal().set_overlay_keeper(nullptr);
  EXPECT_EQ(html(), u"<P style=\"color: red;\">one</P>");
}

// It reads the style before it writes it.
TEST_F(JournalTest, AStyleIsReadAndWrittenWithoutTheOverlay) {
  Border border(*p_);
  journal().set_overlay_keeper(&border);
  style::InlineStyle style(*p_);
  style.set(u"color", u"red");
  style.set(u"margin-top", u"1px");
  style.remove(u"margin-top");
  border.take_off();
  journal().set_overlay_keeper(nullptr);
  EXPECT_EQ(style.css_text().find(u"border"), std::u16string::npos);
  EXPECT_EQ(style.get(u"color"), u"red");
}

TEST_F(JournalTest, AnEqualValueIsNoMutation) {
  set_attribute(*p_, names::id, u"a");
  set_attribute(*p_, names::id, u"a");
  replace_data(*text_, 0, 3, u"one");
  remove_attribute(*p_, names::align);
  EXPECT_EQ(journal().depth(), 1u);
}

TEST_F(JournalTest, ARemovedAttributeComesBackAtItsPlace) {
  for (const auto& name : {u"a", u"b", u"c"}) set_attribute(*p_, Name(name), u"1");
  remove_attribute(*p_, Name(u"b"));
  journal().undo();
  EXPECT_EQ(html(), u"<P a=\"1\" b=\"1\" c=\"1\">one</P>");
}

TEST_F(JournalTest, RollBackTakesTheOpenStepBackAndLeavesItOpen) {
  {
    UndoStep step(journal(), u"Composition");
    replace_data(*text_, 3, 0, u"kana");
    journal().roll_back();
    EXPECT_EQ(html(), u"<P>one</P>");
    replace_data(*text_, 3, 0, u"!");
  }
  EXPECT_EQ(html(), u"<P>one!</P>");
  journal().undo();
  EXPECT_EQ(html(), u"<P>one</P>");
}

TEST_F(JournalTest, AStepThatIsRolledBackLeavesWhatCanBeDoneAgain) {
  set_attribute(*p_, names::id, u"a");
  set_attribute(*p_, names::id, u"b");
  journal().undo();
  journal().undo();
  {
    UndoStep step(journal(), u"Preview");
    replace_data(*text_, 0, 0, u"x");
    journal().roll_back();
    replace_data(*text_, 0, 0, u"y");
    EXPECT_FALSE(journal().can_redo()) << "not while it is open";
    journal().roll_back();
  }
  EXPECT_TRUE(journal().redo());
  EXPECT_TRUE(journal().redo());
  EXPECT_EQ(html(), u"<P id=\"b\">one</P>");
  journal().undo();
  {
    UndoStep step(journal(), u"Preview");
    replace_data(*text_, 0, 0, u"x");
    journal().roll_back();
    replace_data(*text_, 0, 0, u"y");
  }
  EXPECT_FALSE(journal().can_redo()) << "something else was done";
}

/// A user who stops everything at once.
class Impatient final : public InterruptionWatch {
 public:
  Impatient() { set_interruption_watch(this, 1); }
  ~Impatient() override { set_interruption_watch(nullptr); }
  int loop_level() const override { return 0; }
  void started() override {}
  void ended() override {}
  bool wants_to_stop() override { return true; }
};

TEST_F(JournalTest, AStepInAScopeCanBeStopped) {
  const Impatient user;
  EXPECT_FALSE(run_interruptible([&] {
    UndoStep step(journal(), u"Bold");
    replace_data(*text_, 3, 0, u"!");
  }));
  EXPECT_EQ(html(), u"<P>one</P>");
  EXPECT_FALSE(journal().is_open());
  EXPECT_FALSE(journal().can_undo());
}

// Nobody would close it: it outlives the act that has opened it.
TEST_F(JournalTest, AStepClosedByHandIsNotStopped) {
  const Impatient user;
  EXPECT_TRUE(run_interruptible([&] {
    journal().open(u"Composition");
    replace_data(*text_, 3, 0, u"!");
  }));
  EXPECT_TRUE(run_interruptible([&] { replace_data(*text_, 4, 0, u"?"); }));
  journal().close();
  EXPECT_EQ(html(), u"<P>one!?</P>");
}

TEST_F(JournalTest, ClearInsideAnOpenStepForgetsTheStep) {
  {
    UndoStep step(journal(), u"Load");
    replace_data(*text_, 0, 0, u"x");
    journal().clear();
    replace_data(*text_, 0, 0, u"y");
  }
  EXPECT_FALSE(journal().can_undo());
}

TEST_F(JournalTest, LiveRangesFollowUndo) {
  LiveRange range(*document_, {{text_.get(), 1}, {text_.get(), 2}});
  remove(*p_);
  EXPECT_EQ(range.start().node, body_.get());
  journal().undo();
  EXPECT_EQ(html(), u"<P>one</P>");
}

TEST_F(JournalTest, NodesOutliveTheirDocument) {
  Ref<Element> p = p_;
  html_ = body_ = nullptr;
  p_ = nullptr;
  text_ = nullptr;
  document_ = nullptr;
  EXPECT_EQ(p->document(), nullptr);
  EXPECT_ANY_THROW(document_of(*p));
  EXPECT_ANY_THROW(set_attribute(*p, names::id, u"x"));
}

TEST_F(JournalTest, SplitTextMovesRanges) {
  LiveRange inside(*document_, {{text_.get(), 1}, {text_.get(), 3}});
  LiveRange behind(*document_, {{p_.get(), 1}, {p_.get(), 1}});
  Ref<Text> tail = split_text(*text_, 2);
  EXPECT_EQ(inside.start(), (Boundary{text_.get(), 1}));
  EXPECT_EQ(inside.end(), (Boundary{tail.get(), 1}));
  EXPECT_EQ(behind.start(), (Boundary{p_.get(), 2}));
}

TEST(TreeDepth, DeepTreesAreDestroyedClonedAndWrittenWithoutRecursion) {
  Ref<Document> document = Document::create();
  Ref<Node> root = document->create_element(Tag::Div);
  Node* deepest = root.get();
  for (int i = 0; i < 200000; ++i) {
    Ref<Element> child = document->create_element(Tag::Div);
    Builder::insert(*deepest, child);
    deepest = child.get();
  }
  Ref<Node> copy = clone(*root, *document, Deep::Yes);
  EXPECT_EQ(serialise_node(*copy).size(), 200001u * 11);
  copy = nullptr;
  root = nullptr;
}

/// A selection right in the document.
class DocumentSelected final : public SelectionKeeper {
 public:
  explicit DocumentSelected(Document& document) : document_(document) {}
  SelectionRecord capture() const override { return {document_, 0, document_, 1}; }
  void restore(const SelectionRecord& record) override { restored = record; }
  SelectionRecord restored;

 private:
  Document& document_;
};

TEST_F(JournalTest, RecordsDoNotKeepTheirDocumentAlive) {
  DocumentSelected keeper(*document_);
  journal().set_selection_keeper(&keeper);
  remove(*html_);
  EXPECT_TRUE(journal().undo());
  EXPECT_EQ(html_->parent(), document_.get());
  EXPECT_EQ(keeper.restored.anchor_node, document_.get());
  EXPECT_EQ(keeper.restored.focus_offset, 1u);
  keeper.restored = {};
  EXPECT_TRUE(journal().redo());
  EXPECT_EQ(html_->parent(), nullptr);
  keeper.restored = {};
  document_ = nullptr;
  EXPECT_EQ(body_->document(), nullptr) << "the document is gone";
}

TEST_F(JournalTest, WhatWasTakenOutOfACopyOfADocumentComesBack) {
  Builder::insert(*document_, document_->create_document_type(u"html", u"", u""), html_.get());
  const Ref<Node> copy = clone(*document_, *document_, Deep::Yes);
  ASSERT_EQ(copy->child_count(), 1u) << "a fragment holds no document type";
  remove(*copy->first_child());
  EXPECT_TRUE(journal().undo());
  EXPECT_EQ(serialise_children(*copy), serialise_children(*html_->parent()).substr(15));
}

}  // namespace
}  // namespace tvx::dom
