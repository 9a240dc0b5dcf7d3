#include "tvx/browser/view/mirror.h"

#include <gtest/gtest.h>

#include <random>

#include "tvx/base/error.h"
#include "tvx/base/work_count.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/range.h"
#include "tvx/dom/tree.h"
#include "tvx/headless/shadow_tree.h"

namespace tvx::browser {
namespace {

using dom::Builder;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;
using dom::Text;

/// A document, its mirror, and the tree that a view makes of what the mirror sends.
class MirrorTest : public testing::Test {
 protected:
  MirrorTest() {
    html_ = document_->create_element(Tag::Html);
    body_ = document_->create_element(Tag::Body);
    Builder::insert(*document_, document_->create_document_type(u"html", u"", u""));
    Builder::insert(*document_, html_);
    Builder::insert(*html_, document_->create_element(Tag::Head));
    Builder::insert(*html_, body_);
  }

  Ref<Element> paragraph(std::u16string text) {
    Ref<Element> p = document_->create_element(Tag::P);
    Builder::insert(*p, document_->create_text(std::move(text)));
    return p;
  }
  void add_paragraphs(int count) {
    for (int i = 0; i < count; ++i) Builder::insert(*body_, paragraph(u"text " + to_text(i)));
  }

  /// One flush; the number of operations. No operation may fail.
  std::size_t flush(std::size_t budget, Node* wanted = nullptr) {
    Patch patch;
    patch.operations = mirror().flush(budget, wanted);
    EXPECT_TRUE(shadow_.apply(patch).empty());
    return patch.operations.size();
  }
  void load() {
    for (int i = 0; i < 100000 && (mirror().loading() || mirror().dirty()); ++i) flush(50);
    ASSERT_EQ(print(), expected());
  }
  std::string print() const { return to_utf8(shadow_.print()); }
  std::string expected() const { return to_utf8(print_mirrored(*document_)); }
  Mirror& mirror() {
    if (!mirror_) mirror_ = std::make_unique<Mirror>(*document_);
    return *mirror_;
  }

  Ref<dom::Document> document_ = dom::Document::create();
  Ref<Element> html_, body_;
  std::unique_ptr<Mirror> mirror_;
  headless::ShadowTree shadow_;
};

TEST_F(MirrorTest, SendsADocumentInSlicesAndEachNodeOnce) {
  add_paragraphs(500);
  std::size_t sent = 0, slices = 0;
  do {
    const std::size_t now = flush(100);
    EXPECT_LE(now, 101u);
    sent += now;
    ++slices;
  } while (mirror().loading());
  EXPECT_EQ(sent, 3u + 2 * 500);
  EXPECT_GE(slices, 10u);
  EXPECT_EQ(print(), expected());
}

TEST_F(MirrorTest, ManyEditsOfATextAreOneOperation) {
  add_paragraphs(3);
  load();
  auto& text = static_cast<Text&>(*body_->first_child()->first_child());
  for (int i = 0; i < 100; ++i) dom::replace_data(text, 4, 0, u"x");
  EXPECT_EQ(flush(0), 1u);
  EXPECT_EQ(print(), expected());
  EXPECT_EQ(flush(0), 0u);
}

TEST_F(MirrorTest, WhatWasMadeAndRemovedWithinATurnIsNeverSent) {
  load();
  for (int i = 0; i < 50; ++i) dom::insert(*body_, paragraph(u"gone"));
  dom::clear(*body_);
  EXPECT_EQ(flush(0), 0u);
}

TEST_F(MirrorTest, ChangesBehindTheCursorCostNothing) {
  add_paragraphs(300);
  flush(20);
  auto& last = static_cast<Element&>(*body_->last_child());
  dom::set_attribute(last, dom::names::align, u"center");
  dom::replace_data(static_cast<Text&>(*last.first_child()), 0, 2, u"changed");
  dom::insert(*body_, paragraph(u"new"), &last);
  dom::remove(*last.previous_sibling()->previous_sibling());
  EXPECT_EQ(flush(0), 0u);
  load();
}

TEST_F(MirrorTest, EditsOfTheShownPartGoOutDuringTheLoad) {
  add_paragraphs(300);
  flush(20);
  dom::insert(*body_, paragraph(u"first"), body_->first_child());
  EXPECT_EQ(flush(0), 2u);
  EXPECT_NE(print().find("first"), std::string::npos);
  load();
}

TEST_F(MirrorTest, TheCursorSurvivesTheRemovalOfWhatItStandsOn) {
  add_paragraphs(100);
  flush(43);
  for (int i = 0; i < 25; ++i) dom::remove(*body_->first_child());
  load();
  mirror().reset();
  shadow_ = {};
  flush(43);
  dom::clear(*body_);
  load();
}

// --- out of turn ---

TEST_F(MirrorTest, WhatIsWantedComesBeforeItsTurnWithWhatStandsAroundIt) {
  add_paragraphs(5000);
  flush(50);
  Node& last = *body_->last_child()->first_child();
  flush(700, &last);
  EXPECT_TRUE(mirror().knows(last));
  EXPECT_LT(shadow_.size(), 900u);
  Node* before = body_->last_child();
  for (int i = 0; i < 100; ++i) before = before->previous_sibling();
  EXPECT_TRUE(mirror().knows(*before)) << "a window's height before it";
  EXPECT_TRUE(mirror().loading());
  EXPECT_EQ(flush(0, &last), 0u) << "it is there";
  load();
}

TEST_F(MirrorTest, WhatIsWantedIsReachedHoweverDeepItStands) {
  add_paragraphs(200);
  Element* at = body_.get();
  for (int depth = 0; depth < 30; ++depth) {
    Ref<Element> box = document_->create_element(Tag::Div);
    for (int i = 0; i < 100; ++i) Builder::insert(*box, paragraph(u"before"));
    Ref<Element> inner = document_->create_element(Tag::Div);
    Builder::insert(*box, inner);
    for (int i = 0; i < 100; ++i) Builder::insert(*box, paragraph(u"after"));
    Builder::insert(*at, box);
    at = inner.get();
  }
  Ref<Element> deepest = paragraph(u"deepest");
  Builder::insert(*at, deepest);
  flush(20);
  flush(700, deepest->first_child());
  EXPECT_TRUE(mirror().knows(*deepest->first_child()));
  flush(50, at->parent()->last_child());
  EXPECT_TRUE(mirror().knows(*at->parent()->last_child())) << "sending goes on from there";
  load();
}

TEST_F(MirrorTest, WhatStandsInNothingThatIsShownIsNotSentOutOfTurn) {
  add_paragraphs(300);
  Ref<Element> script = document_->create_element(Tag::Script);
  Builder::insert(*script, document_->create_text(u"code"));
  Builder::insert(*body_, script);
  flush(20);
  flush(500, script->first_child());
  EXPECT_TRUE(mirror().knows(*script));
  EXPECT_FALSE(mirror().knows(*script->first_child()));
  const Ref<Element> loose = paragraph(u"loose");
  flush(0, loose.get());
  EXPECT_FALSE(mirror().knows(*loose));
  load();
}

TEST_F(MirrorTest, EditsBesideAGapKeepTheOrder) {
  add_paragraphs(3000);
  flush(50);
  flush(400, body_->last_child());
  Node* end = body_->last_child();
  while (mirror().knows(*end)) end = end->previous_sibling();
  Node& first_after = *end->next_sibling();
  Node* start = body_->first_child();
  while (mirror().knows(*start)) start = start->next_sibling();
  Node& last_before = *start->previous_sibling();
  dom::insert(*body_, paragraph(u"right after the gap"), &first_after);
  dom::insert(*body_, paragraph(u"right before the gap"), start);
  dom::insert(*body_, paragraph(u"at the end"));
  flush(0);
  EXPECT_NE(print().find("right after"), std::string::npos);
  EXPECT_NE(print().find("at the end"), std::string::npos);
  dom::remove(first_after);
  dom::remove(last_before);
  load();
}

TEST_F(MirrorTest, TwoGapsAreOneWhenWhatStandsBetweenThemGoes) {
  add_paragraphs(6000);
  flush(50);
  std::vector<Node*> all;
  for (Node* node = body_->first_child(); node; node = node->next_sibling()) all.push_back(node);
  flush(400, all[5000]);
  flush(400, all[2500]);
  for (std::size_t i = 2000; i < 3500; ++i)
    if (mirror().knows(*all[i])) dom::remove(*all[i]);
  for (std::size_t i = 4500; i < 5600; ++i)
    if (mirror().knows(*all[i])) dom::insert(*body_, all[i], body_->first_child());
  load();
}

TEST_F(MirrorTest, PositionsAmongChildrenCountWhatTheViewHas) {
  add_paragraphs(3000);
  flush(50);
  flush(400, body_->last_child());
  const dom::NodeId body = body_->id();
  std::size_t asked = 0;
  Node* child = body_->first_child();
  for (Offset offset = 0; offset <= 3000; ++offset) {
    const auto seen = mirror().offset_in_view(*body_, offset);
    const bool known = child && mirror().knows(*child);
    if (known) {
      ASSERT_TRUE(seen) << offset;
      const headless::ShadowTree::Node& shown = *shadow_.find(body);
      ASSERT_EQ(shown.children.at(*seen)->id, child->id()) << offset;
      const Offset back = mirror().offset_in_document(*body_, *seen);
      ASSERT_TRUE(back == offset || !mirror().knows(*dom::child_at(*body_, back))) << "beside the gap";
      ++asked;
    }
    if (child) child = child->next_sibling();
  }
  EXPECT_GT(asked, 100u);
  EXPECT_FALSE(mirror().offset_in_view(*body_, 1000)) << "in the gap";
  EXPECT_EQ(mirror().offset_in_view(*body_, 3000), shadow_.find(body)->children.size());
  EXPECT_EQ(mirror().offset_in_document(*body_, shadow_.find(body)->children.size()), 3000u);
}

/// Nodes that the view has, moved to where the load hasn't come yet: one walk over them for all.
TEST_F(MirrorTest, WhatIsMovedAfterTheCursorIsWalkedOverOnce) {
  const auto steps = [&](std::size_t moved) {
    mirror().reset();
    shadow_ = {};
    dom::clear(*body_);
    add_paragraphs(int(moved) * 2);
    flush(3 + 2 * (moved + 1));
    EXPECT_TRUE(mirror().loading());
    for (std::size_t i = 0; i < moved; ++i) dom::insert(*body_, body_->first_child());
    const std::uint64_t before = work_done;
    flush(0);
    const std::uint64_t done = work_done - before;
    EXPECT_TRUE(mirror().loading()) << "they stood after the cursor";
    load();
    return done;
  };
  const std::uint64_t few = steps(100);
  EXPECT_GE(few, 100u);
  EXPECT_LT(steps(1'000), 15 * few);
}

TEST_F(MirrorTest, AMovedSubtreeIsPlacedAndNotMade) {
  add_paragraphs(100);
  load();
  Ref<Element> box = document_->create_element(Tag::Div);
  for (int i = 0; i < 50; ++i) dom::insert(*box, body_->first_child());
  dom::insert(*body_, box, body_->first_child());
  // Detached and placed, fifty of them, and one element made.
  EXPECT_EQ(flush(1000), 101u);
  EXPECT_EQ(print(), expected());
}

TEST_F(MirrorTest, ALargeInsertionIsSlicedAndKeepsTheOrder) {
  add_paragraphs(10);
  load();
  Node* middle = body_->first_child()->next_sibling();
  for (int i = 0; i < 2000; ++i) dom::insert(*body_, paragraph(u"new " + to_text(i)), middle);
  EXPECT_LE(flush(0), 410u);
  EXPECT_TRUE(mirror().loading());
  // A key typed meanwhile doesn't wait for the rest.
  dom::replace_data(static_cast<Text&>(*body_->first_child()->first_child()), 0, 0, u"typed ");
  EXPECT_LE(flush(0), 410u);
  EXPECT_NE(print().find("typed "), std::string::npos);
  load();
}

TEST_F(MirrorTest, AFailedNodeIsSentAgainAndThenLeftOut) {
  add_paragraphs(3);
  load();
  const dom::NodeId second = body_->first_child()->next_sibling()->id();
  EXPECT_TRUE(mirror().failed(second));
  EXPECT_EQ(flush(0), 3u);  // forgotten, made, its text made
  EXPECT_EQ(print(), expected());
  EXPECT_FALSE(mirror().failed(second));
  flush(0);
  EXPECT_EQ(shadow_.find(body_->id())->children.size(), 3u);  // a comment keeps the place
  EXPECT_NE(print(), expected());
}

TEST_F(MirrorTest, KnowsItsNodesById) {
  add_paragraphs(1);
  load();
  EXPECT_EQ(mirror().node(body_->id()), body_.get());
  Ref<Node> gone = dom::remove(*body_->first_child());
  flush(0);
  EXPECT_EQ(mirror().node(gone->id()), nullptr);
  EXPECT_EQ(mirror().node(dom::NodeId(9999)), nullptr);
}

TEST_F(MirrorTest, RulesHoldForChangesToo) {
  load();
  Ref<Element> link = document_->create_element(Tag::A);
  Ref<Element> script = document_->create_element(Tag::Script);
  Ref<Element> frame = document_->create_element(Tag::Iframe);
  for (const Ref<Element>& element : {link, script, frame}) dom::insert(*body_, element);
  flush(0);
  dom::set_attribute(*link, dom::names::href, u"http://localhost/");
  flush(0);
  dom::set_attribute(*link, dom::names::href, u" java\nscript:alert(1)");
  dom::set_attribute(*link, dom::Name(u"onclick"), u"alert(1)");
  dom::insert(*script, document_->create_text(u"alert(1)"));
  dom::set_attribute(*frame, dom::names::src, u"http://localhost/");
  dom::set_attribute(*frame, dom::names::width, u"300");
  flush(0);
  EXPECT_EQ(print(), expected());
  EXPECT_EQ(print().find("alert"), std::string::npos);
  EXPECT_NE(print().find("width:300px"), std::string::npos);
}

TEST_F(MirrorTest, AnAnimationOfAnAddressIsNotSent) {
  load();
  dom::set_inner_html(*body_,
                      u"<svg><a><text>t</text><set attributeName=' HREF ' to=javascript:alert(1)></set>"
                      u"<animate attributeName=xlink:href values='#a;javascript:alert(1)'/>"
                      u"<animate attributeName=x values='1;2'/></a></svg>");
  flush(0);
  for (const char* name : {"HREF", "href"}) EXPECT_EQ(print().find(name), std::string::npos) << print();
  EXPECT_NE(print().find("attributeName=\"x\""), std::string::npos) << print();
}

// --- laws, on random trees ---

/// Random edits of every kind, also of parts that stand in no tree for a while.
class RandomEdits {
 public:
  RandomEdits(dom::Document& document, Element& body, unsigned seed)
      : document_(document), body_(body), random_(seed) {}

  void step() {
    switch (pick(9)) {
      case 0:
      case 1: attempt([&] { insert(); }); break;
      case 2: attempt([&] { move(); }); break;
      case 3: remove(); break;
      case 4:
      case 5: edit_text(); break;
      case 6: edit_attribute(); break;
      case 7:
        if (!kept_.empty()) attempt([&] { dom::insert(*element(), kept_[pick(kept_.size())]); });
        break;
      case 8: wrap(); break;
    }
    if (kept_.size() > 20) kept_.erase(kept_.begin());
  }

 private:
  std::size_t pick(std::size_t count) { return random_() % count; }
  Node* node() {
    std::vector<Node*> all;
    for (Node* n = body_.first_child(); n; n = dom::next_in_order(*n, &body_)) all.push_back(n);
    if (!kept_.empty() && pick(8) == 0) return kept_[pick(kept_.size())].get();
    return all.empty() ? &body_ : all[pick(all.size())];
  }
  Element* element() {
    Node* found = node();
    parent_ = found->is_element() ? static_cast<Element*>(found) : found->parent_element();
    if (!parent_) parent_ = &body_;
    return parent_;
  }
  Node* place() {
    Node* at = parent_->first_child();
    for (std::size_t n = pick(4); at && n > 0; --n) at = at->next_sibling();
    return at;
  }
  Ref<Node> fresh() {
    if (pick(3) == 0) return document_.create_text(u"t" + to_text(static_cast<int>(pick(1000))));
    if (pick(12) == 0) return document_.create_comment(u"note");
    static constexpr Tag tags[] = {Tag::P, Tag::B, Tag::Div, Tag::Script, Tag::Iframe, Tag::Span, Tag::Link};
    Ref<Element> made = document_.create_element(tags[pick(std::size(tags))]);
    for (std::size_t n = pick(3); n > 0; --n) Builder::insert(*made, fresh());
    return made;
  }
  void insert() {
    Element* to = element();
    dom::insert(*to, fresh(), place());
  }
  void move() {
    Ref<Node> moved(node());
    if (moved.get() == &body_) return;
    Element* to = element();
    dom::insert(*to, moved, place());
  }
  void remove() {
    Ref<Node> gone(node());
    if (gone.get() == &body_) return;
    if (gone->has_children() && pick(3) != 0) return;
    dom::remove(*gone);
    kept_.push_back(gone);
  }
  void edit_text() {
    auto* text = dom::as<dom::CharacterData>(node());
    if (!text) return;
    const Offset at = pick(text->length() + 1);
    dom::replace_data(*text, at, pick(4), pick(2) ? u"new" : u"");
  }
  void edit_attribute() {
    Element* target = element();
    if (target == &body_) return;
    static const dom::Name names[] = {dom::names::align, dom::names::href,  dom::names::rel,
                                      dom::names::style, dom::names::width, dom::Name(u"onclick")};
    const dom::Name name = names[pick(std::size(names))];
    if (pick(3) == 0) {
      dom::remove_attribute(*target, name);
    } else {
      dom::set_attribute(*target, name, pick(2) ? u"stylesheet" : u"12");
    }
  }
  void wrap() {
    Ref<Node> first(node());
    if (first.get() == &body_ || !first->parent()) return;
    Ref<Element> wrapper = document_.create_element(Tag::Div);
    Node& parent = *first->parent();
    dom::insert(parent, wrapper, first.get());
    for (Ref<Node> next(first); next && pick(4) != 0;) {
      Ref<Node> behind(next->next_sibling());
      dom::insert(*wrapper, next);
      next = behind;
    }
  }

  dom::Document& document_;
  Element& body_;
  std::mt19937 random_;
  std::vector<Ref<Node>> kept_;
  Element* parent_ = nullptr;
};

class MirrorLaws : public MirrorTest, public testing::WithParamInterface<unsigned> {};

TEST_P(MirrorLaws, AfterEachSettledFlushTheViewEqualsTheDocument) {
  add_paragraphs(30);
  RandomEdits edits(*document_, *body_, GetParam());
  std::mt19937 random(GetParam() + 1000);
  load();
  for (int round = 0; round < 150; ++round) {
    for (unsigned n = random() % 12; n > 0; --n) edits.step();
    flush(100000);
    ASSERT_FALSE(mirror().loading());
    ASSERT_EQ(print(), expected()) << "seed " << GetParam() << ", round " << round;
  }
}

TEST_P(MirrorLaws, EditsDuringTheLoadEndInTheSameTree) {
  add_paragraphs(120);
  RandomEdits edits(*document_, *body_, GetParam());
  std::mt19937 random(GetParam() + 2000);
  for (int load_round = 0; load_round < 8; ++load_round) {
    mirror().reset();
    shadow_ = {};
    for (int round = 0; round < 60 && mirror().loading(); ++round) {
      flush(random() % 12);
      for (unsigned n = random() % 10; n > 0; --n) edits.step();
      if (random() % 30 == 0) {
        dom::Node* somewhere = body_->first_child();
        if (somewhere && mirror().knows(*somewhere)) mirror().failed(somewhere->id());
        mirror().reset();
        shadow_ = {};
      }
    }
    for (int i = 0; i < 10000 && (mirror().loading() || mirror().dirty()); ++i) flush(7);
    // Left out nodes differ on purpose.
    if (print().find("!\"\"") == std::string::npos) {
      ASSERT_EQ(print(), expected()) << "seed " << GetParam();
    }
    ASSERT_EQ(shadow_.size(), [&] {
      const std::string text = print();
      return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    }()) << "the view keeps nodes that are in no tree";
  }
}

TEST_P(MirrorLaws, EditsAndJumpsDuringTheLoadEndInTheSameTree) {
  add_paragraphs(1500);
  RandomEdits edits(*document_, *body_, GetParam());
  std::mt19937 random(GetParam() + 3000);
  std::size_t jumps = 0;
  for (int round = 0; round < 80 && mirror().loading(); ++round) {
    Node* wanted = body_.get();
    for (std::size_t n = random() % 4000; n > 0 && wanted; --n) wanted = dom::next_in_order(*wanted);
    if (random() % 4 == 0 && wanted && !mirror().knows(*wanted)) {
      const bool reached = (flush(400, wanted), mirror().knows(*wanted));
      jumps += reached;
    } else {
      flush(random() % 12);
    }
    for (unsigned n = random() % 10; n > 0; --n) edits.step();
  }
  for (int i = 0; i < 10000 && (mirror().loading() || mirror().dirty()); ++i) flush(70);
  EXPECT_GT(jumps, 2u);
  ASSERT_EQ(print(), expected()) << "seed " << GetParam();
}

INSTANTIATE_TEST_SUITE_P(Seeds, MirrorLaws, testing::Range(1u, 25u));

}  // namespace
}  // namespace tvx::browser
