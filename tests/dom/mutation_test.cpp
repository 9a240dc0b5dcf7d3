#include "tvx/dom/mutation.h"

#include <gtest/gtest.h>

#include <random>

#include "build_tree.h"
#include "tvx/base/error.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/range.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/set_attribute_again.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {
namespace {

using test::element;
using test::text;

class Recorder final : public MutationObserver {
 public:
  void mutated(const Mutation& mutation) override { types.push_back(mutation.type); }
  std::vector<Mutation::Type> types;
};

class MutationTest : public testing::Test {
 protected:
  Ref<Document> document_ = test::document_with(
      {element(Tag::P, {text(u"one")}), element(Tag::P, {text(u"two")}), element(Tag::P, {text(u"three")})});
  Element& body() { return *document_->body(); }
  Node& paragraph(Offset index) { return *child_at(body(), index); }
  std::u16string html() { return serialise_children(body()); }
};

TEST_F(MutationTest, MovingANodeIsARemovalAndAnInsertion) {
  Recorder recorder;
  document_->add_observer(recorder);
  insert(body(), paragraph(2), &paragraph(0));
  EXPECT_EQ(html(), u"<P>three</P><P>one</P><P>two</P>");
  EXPECT_EQ(recorder.types, (std::vector{Mutation::Type::Remove, Mutation::Type::Insert}));
  document_->remove_observer(recorder);
}

TEST_F(MutationTest, ANodeInsertedBeforeItselfStaysWhereItIs) {
  insert(body(), paragraph(1), &paragraph(1));
  EXPECT_EQ(html(), u"<P>one</P><P>two</P><P>three</P>");
}

TEST_F(MutationTest, AFragmentCannotBePutIntoItself) {
  Ref<DocumentFragment> fragment = document_->create_fragment();
  insert(*fragment, document_->create_text(u"1"), nullptr);
  insert(*fragment, document_->create_element(Tag::B), nullptr);
  Node& inner = *fragment->last_child();
  const std::size_t depth = document_->journal().depth();
  EXPECT_THROW(insert(*fragment, fragment, nullptr), RuntimeError);
  EXPECT_THROW(insert(inner, fragment, nullptr), RuntimeError);
  EXPECT_EQ(fragment->child_count(), 2u);
  EXPECT_FALSE(inner.has_children()) << "nothing has gone before the refusal";
  EXPECT_EQ(document_->journal().depth(), depth);
}

/// The tree stays as it is; who follows it hears of the attribute.
TEST_F(MutationTest, AnAttributeSaidAgainIsNoEdit) {
  auto& link = static_cast<Element&>(paragraph(1));
  set_attribute(link, names::href, u"a.css");
  const std::size_t depth = document_->journal().depth();
  Recorder recorder;
  document_->add_observer(recorder);
  set_attribute_again(link, names::href);
  set_attribute_again(link, names::src);
  document_->remove_observer(recorder);
  EXPECT_EQ(recorder.types, (std::vector{Mutation::Type::SetAttribute}));
  EXPECT_EQ(link.attribute_or_empty(names::href), u"a.css");
  EXPECT_EQ(document_->journal().depth(), depth);
}

TEST_F(MutationTest, AFragmentGivesItsChildrenInOrder) {
  Ref<DocumentFragment> fragment = document_->create_fragment();
  Builder::insert(*fragment, document_->create_text(u"a"));
  Builder::insert(*fragment, document_->create_element(Tag::Br));
  insert(body(), fragment, &paragraph(1));
  EXPECT_EQ(html(), u"<P>one</P>a<BR><P>two</P><P>three</P>");
  EXPECT_FALSE(fragment->has_children());
}

TEST_F(MutationTest, RefusesWhatIsNoTree) {
  Node& first = paragraph(0);
  EXPECT_THROW(insert(*first.first_child(), document_->create_text(u"x")), RuntimeError);
  EXPECT_THROW(insert(first, Ref<Node>(body())), RuntimeError);
  EXPECT_THROW(insert(first, Ref<Node>(first)), RuntimeError);
  EXPECT_THROW(insert(first, document_->create_text(u"x"), &paragraph(1)), RuntimeError);
  EXPECT_THROW(insert(*document_, document_->create_text(u"x")), RuntimeError);
  Ref<Document> other = Document::create();
  EXPECT_THROW(insert(first, other->create_text(u"x")), RuntimeError);
  EXPECT_EQ(html(), u"<P>one</P><P>two</P><P>three</P>");
  EXPECT_FALSE(document_->journal().can_undo());
}

TEST_F(MutationTest, DataBehindTheEndIsRefusedAndALongCountIsCut) {
  auto& data = static_cast<Text&>(*paragraph(0).first_child());
  EXPECT_THROW(replace_data(data, 4, 0, u"x"), RuntimeError);
  replace_data(data, 1, 99, u"x");
  EXPECT_EQ(data.data(), u"ox");
}

TEST_F(MutationTest, RangesMoveAsTheDomStandardTells) {
  auto& data = static_cast<Text&>(*paragraph(0).first_child());
  LiveRange in_text(*document_, {{&data, 1}, {&data, 3}});
  LiveRange in_body(*document_, {{&body(), 1}, {&body(), 2}});
  replace_data(data, 1, 1, u"NNN");
  EXPECT_EQ(in_text.range(), (Range{{&data, 1}, {&data, 5}}));
  insert(body(), document_->create_element(Tag::Hr), &paragraph(0));
  EXPECT_EQ(in_body.range(), (Range{{&body(), 2}, {&body(), 3}}));
  insert(body(), document_->create_element(Tag::Hr), &paragraph(2));  // at the start: the start stays
  EXPECT_EQ(in_body.range(), (Range{{&body(), 2}, {&body(), 4}}));
  remove(paragraph(1));
  EXPECT_EQ(in_text.range(), (Range{{&body(), 1}, {&body(), 1}}));
  EXPECT_EQ(in_body.range(), (Range{{&body(), 1}, {&body(), 3}}));
}

TEST_F(MutationTest, BoundariesCompareInTreeOrder) {
  Node *p = &paragraph(1), *t = p->first_child();
  EXPECT_TRUE(compare({&body(), 1}, {p, 0}) < 0);
  EXPECT_TRUE(compare({&body(), 2}, {p, 1}) > 0);
  EXPECT_TRUE(compare({t, 3}, {p, 1}) < 0);
  EXPECT_TRUE(compare({t, 0}, {&body(), 1}) > 0);
  EXPECT_TRUE(compare({&paragraph(2), 0}, {t, 2}) > 0);
  EXPECT_TRUE(compare({t, 2}, {t, 2}) == 0);
  EXPECT_TRUE(contains({{&body(), 1}, {&body(), 2}}, *t));
  EXPECT_FALSE(contains({{t, 0}, {t, 3}}, *t));
}

TEST_F(MutationTest, SourceIndexFollowsTheStructure) {
  EXPECT_EQ(document_->all().size(), 6u);
  auto& last = static_cast<Element&>(paragraph(2));
  EXPECT_EQ(document_->source_index(last), 5u);
  insert(body(), document_->create_element(Tag::Hr), &paragraph(0));
  EXPECT_EQ(document_->source_index(last), 6u);
}

// Any sequence of changes, undone to its start, is the first text; redone to its end, the last.
TEST(MutationLaw, UndoingEverythingGivesTheFirstTextAndRedoingTheLast) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    std::mt19937 random(seed);
    const auto pick = [&random](std::size_t below) { return random() % below; };
    Ref<Document> document =
        test::document_with({element(Tag::P, {text(u"one"), element(Tag::B, {text(u"two")})}),
                             element(Tag::Ul, {element(Tag::Li)})});
    Element& body = *document->body();
    const std::u16string first = serialise_children(body);
    for (int change = 0; change < 200; ++change) {
      std::vector<Node*> nodes;
      for (Node* node = body.first_child(); node; node = next_in_order(*node, &body)) nodes.push_back(node);
      nodes.push_back(&body);
      Node& node = *nodes[pick(nodes.size())];
      attempt([&] {
        switch (pick(5)) {
          case 0:
            insert(node, document->create_element(pick(2) ? Tag::I : Tag::P), child_at(node, pick(3)));
            break;
          case 1: insert(node, Ref<Node>(*nodes[pick(nodes.size())]), node.first_child()); break;
          case 2:
            if (&node != &body) remove(node);
            break;
          case 3:
            if (auto* data = as<Text>(&node)) replace_data(*data, pick(data->length() + 1), pick(3), u"xy");
            break;
          case 4:
            if (auto* target = as<Element>(&node)) {
              if (pick(3)) {
                set_attribute(*target, pick(2) ? names::id : names::title, u"v" + to_text(change));
              } else {
                remove_attribute(*target, names::id);
              }
            }
            break;
        }
      });
    }
    const std::u16string last = serialise_children(body);
    while (document->journal().undo()) continue;
    ASSERT_EQ(serialise_children(body), first) << "seed " << seed;
    while (document->journal().redo()) continue;
    ASSERT_EQ(serialise_children(body), last) << "seed " << seed;
  }
}

}  // namespace
}  // namespace tvx::dom
