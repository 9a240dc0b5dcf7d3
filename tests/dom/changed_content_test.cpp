#include "tvx/dom/changed_content.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "dom/generated_html.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/range.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {
namespace {

/// What has been done to a tree, by letters: i, r, d and a. What comes in has been removed from the tree of
/// the markup: "ri".
struct Deeds final : MutationObserver {
  explicit Deeds(Document& document) : of(document) { of.add_observer(*this); }
  ~Deeds() override { of.remove_observer(*this); }
  void mutated(const Mutation& mutation) override {
    switch (mutation.type) {
      case Mutation::Type::Insert: done += 'i'; break;
      case Mutation::Type::Remove: done += 'r'; break;
      case Mutation::Type::ReplaceData:
        done += 'd', removed = mutation.removed, inserted = mutation.inserted;
        break;
      case Mutation::Type::SetAttribute: done += 'a'; break;
    }
  }
  Document& of;
  std::string done;
  std::u16string removed, inserted;
};

class ChangedContent : public testing::Test {
 protected:
  void start(std::u16string_view html) { document = parse_document(html); }
  Element& body() {
    Node* root = document->document_element();
    return *as<Element>(root->last_child());
  }
  std::string change(std::u16string_view html) {
    Deeds deeds(*document);
    change_content(body(), html);
    removed = deeds.removed;
    inserted = deeds.inserted;
    return deeds.done;
  }
  Ref<Document> document;
  std::u16string removed, inserted;
};

TEST_F(ChangedContent, WhatIsTheSameIsLeftAlone) {
  start(u"<P>one</P><UL><LI>two</LI></UL><!--c-->");
  EXPECT_EQ(change(u"<P>one</P><UL><LI>two</LI></UL><!--c-->"), "");
}

TEST_F(ChangedContent, OfATextTheLettersThatDiffer) {
  start(u"<P>one</P><P>a <B>great</B> day</P>");
  EXPECT_EQ(change(u"<P>one</P><P>a <B>grey</B> day</P>"), "d");
  EXPECT_EQ(removed, u"at");
  EXPECT_EQ(inserted, u"y");
}

TEST_F(ChangedContent, OfATagTheAttributes) {
  start(u"<P class=a title=t>one</P>");
  EXPECT_EQ(change(u"<P class=b id=i>one</P>"), "aaa");
  EXPECT_EQ(inner_html(body()), u"<P class=\"b\" id=\"i\">one</P>");
}

TEST_F(ChangedContent, AttributesStandInTheOrderOfTheMarkup) {
  start(u"<P class=a title=t>one</P>");
  change(u"<P title=t class=a>one</P>");
  EXPECT_EQ(inner_html(body()), u"<P title=\"t\" class=\"a\">one</P>");
}

TEST_F(ChangedContent, ANewChildComesBetweenThoseThatStay) {
  start(u"<UL><LI>1</LI><LI>2</LI></UL>");
  EXPECT_EQ(change(u"<UL><LI>1</LI><LI>new</LI><LI>2</LI></UL>"), "ri");
}

TEST_F(ChangedContent, AChildThatIsGoneGoesAlone) {
  start(u"<P>1</P><HR><P>2</P>");
  EXPECT_EQ(change(u"<P>1</P><P>2</P>"), "r");
}

TEST_F(ChangedContent, ACaretBesideTheChangeStays) {
  start(u"<P>first</P><P>second</P>");
  auto* text = as<Text>(body().last_child()->first_child());
  const LiveRange caret(*document, {{text, 3}, {text, 3}});
  change(u"<P>first changed</P><P>second</P>");
  EXPECT_EQ(caret.start(), (Boundary{text, 3}));
  change(u"<P>first changed</P><P>a second</P>");
  EXPECT_EQ(caret.start(), (Boundary{text, 5}));
}

TEST_F(ChangedContent, TextsInARowAreOne) {
  start(u"<P>one two</P><P>x</P>");
  split_text(*as<Text>(body().first_child()->first_child()), 3);
  EXPECT_EQ(change(u"<P>one two</P><P>y</P>"), "drrri");
  EXPECT_EQ(inner_html(body()), u"<P>one two</P><P>y</P>");
}

TEST_F(ChangedContent, ATemplatesContentIsGoneInto) {
  start(u"<TEMPLATE><P>a</P></TEMPLATE>");
  change(u"<TEMPLATE><P>b</P></TEMPLATE>");
  EXPECT_EQ(inner_html(body()), u"<TEMPLATE><P>b</P></TEMPLATE>");
}

TEST_F(ChangedContent, AllCanGoAndComeBack) {
  start(u"<P>1</P>text<P>2</P>");
  change(u"");
  EXPECT_EQ(inner_html(body()), u"");
  change(u"text<P>2</P>");
  EXPECT_EQ(inner_html(body()), u"text<P>2</P>");
}

TEST_F(ChangedContent, ADeepTreeIsNoMatterOfTheStack) {
  std::u16string deep, other;
  for (int i = 0; i < 400; ++i) deep += u"<DIV>";
  other = deep + u"b";
  start(u"<BODY>" + deep + u"a");
  EXPECT_EQ(change(other), "d");
}

TEST_F(ChangedContent, AnyContentBecomesAnyOtherAndComesBackByUndo) {
  for (std::uint64_t round = 0; round < 300; ++round) {
    const std::u16string one = test::generated_html(round, 30),
                         other = test::generated_html(round + (round % 3 == 0 ? 0 : 1000), 29);
    start(u"<BODY>");
    set_inner_html(body(), one);
    const std::u16string before = inner_html(body());
    Document* const own = document.get();
    {
      const UndoStep step(own->journal(), u"test");
      change_content(body(), other);
    }
    const Ref<Document> wanted = parse_document(u"<BODY>");
    auto& fresh = *as<Element>(wanted->document_element()->last_child());
    set_inner_html(fresh, other);
    ASSERT_EQ(inner_html(body()), inner_html(fresh));
    if (inner_html(body()) == before) continue;
    own->journal().undo();
    ASSERT_EQ(inner_html(body()), before);
  }
}

}  // namespace
}  // namespace tvx::dom
