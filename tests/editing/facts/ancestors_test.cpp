#include <gtest/gtest.h>

#include <random>

#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/blocks/justification.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/line_memo.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/said_above.h"

/// What nodes have from their ancestors is remembered while trees change. Each answer is compared with that
/// of a climb by hand, after each of many random changes of deep trees.
namespace tvx::editing {
namespace {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

bool is_off(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return element && element->attribute_or_empty(dom::names::contenteditable) == u"false";
}
bool is_on(const Node& node) {
  const auto* element = dom::as<Element>(&node);
  return element && element->attribute_or_empty(dom::names::contenteditable) == u"true";
}
const Node* climbed_host(const Node& node, const Node* body) {
  for (const Node* at = &node; at; at = at->parent()) {
    if (is_on(*at) || (at == body && !is_off(*at))) return at;
    if (is_off(*at)) return nullptr;
  }
  return nullptr;
}

const Element* nearest(const Node& node, const auto& fits) {
  const auto* element = dom::as<Element>(&node);
  for (element = element ? element : node.parent_element(); element; element = element->parent_element())
    if (fits(*element)) return element;
  return nullptr;
}
bool is_link(const Element& element) { return element.is(Tag::A) && element.has_attribute(dom::names::href); }
bool is_block(const Element& element) {
  const auto display = dom::style::display_of(element);
  return display != dom::style::Display::Inline && display != dom::style::Display::None;
}
std::u16string_view climbed_alignment(const Node& node) {
  const Element* block = nearest(node, is_block);
  if (!block) return u"left";
  return dom::style::computed_values(*block).text_align == dom::style::TextAlign::Center ? u"center"
                                                                                         : u"left";
}

/// A deep tree, and random changes of it.
class ChangingTree {
 public:
  explicit ChangingTree(unsigned seed) : random_(seed), document_(dom::parse_document(u"<p>x</p>")) {
    nodes_.emplace_back(document_->body());
    for (int i = 0; i < 60; ++i) add();
  }

  dom::Document& document() { return *document_; }
  const std::vector<Ref<Node>>& nodes() const { return nodes_; }

  void change() {
    switch (pick(6)) {
      case 0: return add();
      case 1: dom::remove(*nodes_[1 + pick(nodes_.size() - 1)]); return;
      case 2: return write(*nodes_[1 + pick(nodes_.size() - 1)]);
      default: move();
    }
  }

 private:
  std::size_t pick(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }
  // Mostly into what was made last, so that the tree grows deep.
  Node& some_parent() {
    const std::size_t last = nodes_.size() - 1;
    Node& node = *nodes_[pick(3) > 0 ? last - std::min(last, pick(3)) : pick(nodes_.size())];
    return node.is_text() ? *document_->body() : node;
  }
  void add() {
    static constexpr Tag tags[] = {Tag::Span, Tag::B, Tag::Div, Tag::U, Tag::A, Tag::Sub, Tag::Font};
    Ref<Node> made;
    if (pick(6) == 0) {
      made = document_->create_text(pick(3) ? u"text" : u" ");
    } else {
      made = document_->create_element(tags[pick(std::size(tags))]);
      if (pick(3) == 0) write(*made);
    }
    dom::insert(some_parent(), made);
    nodes_.push_back(made);
  }
  void move() {
    Node& node = *nodes_[1 + pick(nodes_.size() - 1)];
    Node* to = pick(2) && node.parent() && node.parent()->parent() ? node.parent()->parent() : &some_parent();
    if (to->is_element() && !dom::is_inclusive_ancestor(node, *to)) dom::insert(*to, Ref<Node>(node));
  }
  void write(Node& node) {
    auto* element = dom::as<Element>(&node);
    if (!element) return;
    switch (pick(6)) {
      case 0: return dom::set_attribute(*element, dom::names::contenteditable, u"false");
      case 1: return dom::set_attribute(*element, dom::names::contenteditable, u"true");
      case 2: return dom::remove_attribute(*element, dom::names::contenteditable);
      case 3: return dom::set_attribute(*element, dom::names::href, u"x");
      case 4: return dom::remove_attribute(*element, dom::names::href);
      default: return dom::set_attribute(*element, dom::names::style, pick(2) ? u"text-align:center" : u"");
    }
  }

  std::mt19937 random_;
  Ref<dom::Document> document_;
  std::vector<Ref<Node>> nodes_;  // those that were taken out among them
};

TEST(Ancestors, WhatIsRememberedIsWhatAClimbFinds) {
  std::size_t deepest = 0, editable = 0, linked = 0, underlined = 0;
  for (unsigned seed = 1; seed <= 40; ++seed) {
    ChangingTree tree(seed);
    Editor editor(tree.document());
    editor.set_design_mode(true);
    SaidAbove bold(tree.document(), InlineCommand::Bold);
    for (int step = 0; step < 100; ++step) {
      tree.change();
      for (const Ref<Node>& node : tree.nodes()) {
        const Node* const host = climbed_host(*node, tree.document().body());
        ASSERT_EQ(editing_host_of(*node), host) << "seed " << seed << ", step " << step;
        editable += host != nullptr;
        deepest = std::max(deepest, dom::depth_of(*node));
        const Element* link = nearest(*node, is_link);
        const InlineValue address =
            link ? InlineValue(link->attribute_or_empty(dom::names::href)) : std::nullopt;
        ASSERT_EQ(effective_command_value(*node, InlineCommand::CreateLink), address) << seed << ", " << step;
        linked += link != nullptr;
        // Links are underlined by themselves.
        const bool line = link || nearest(*node, [](const Element& element) { return element.is(Tag::U); });
        ASSERT_EQ(effective_command_value(*node, InlineCommand::Underline).has_value(), line);
        underlined += line;
        ASSERT_EQ(alignment_of(*node), climbed_alignment(*node)) << seed << ", " << step;
        const Element* said =
            node->parent()
                ? nearest(*node->parent(), [](const Element& element) { return element.is(Tag::B); })
                : nullptr;
        ASSERT_EQ(bold.is_above(*node), said != nullptr) << seed << ", " << step;
      }
    }
  }
  // Deep enough to be remembered at all, and all answers are met.
  EXPECT_GT(deepest, 20u);
  EXPECT_GT(editable, 1'000u);
  EXPECT_GT(linked, 1'000u);
  EXPECT_GT(underlined, 1'000u);
}

TEST(Ancestors, WhatIsSeenIsTheSameWhereItIsRemembered) {
  std::size_t seen = 0, unseen = 0;
  for (unsigned seed = 100; seed < 130; ++seed) {
    ChangingTree tree(seed);
    for (int step = 0; step < 100; ++step) {
      tree.change();
      std::vector<bool> plain;
      for (const Ref<Node>& node : tree.nodes()) plain.push_back(is_visible(*node));
      const LineMemo memo;
      for (int again = 0; again < 2; ++again) {
        for (std::size_t i = 0; i < plain.size(); ++i) {
          ASSERT_EQ(is_visible(*tree.nodes()[i]), plain[i]) << "seed " << seed << ", step " << step;
          ++(plain[i] ? seen : unseen);
        }
      }
    }
  }
  EXPECT_GT(seen, 1'000u);
  EXPECT_GT(unseen, 1'000u);
}

}  // namespace
}  // namespace tvx::editing
