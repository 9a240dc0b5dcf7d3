#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/range.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"

// Trees deeper, wider and longer than anybody writes. Each question is answered once for each part of them;
// one that costs their square, or that recurses, runs into the test's time limit or off the stack.
namespace tvx::dom {
namespace {

constexpr std::size_t deep = 200'000;
constexpr std::size_t wide = 1'000'000;

Ref<Document> empty_page() { return parse_document(u"<!DOCTYPE html><body></body>"); }

/// A body with DIVs one in the other and a text in the innermost: deeper than the parser allows, as a program
/// may build it.
Ref<Document> deep_page() {
  Ref<Document> document = empty_page();
  Node* parent = document->body();
  for (std::size_t i = 0; i < deep; ++i) {
    Ref<Element> div = document->create_element(Tag::Div);
    Builder::insert(*parent, div);
    parent = div.get();
  }
  Builder::insert(*parent, document->create_text(u"bottom"));
  return document;
}

TEST(Extremes, DeepTreesAreReadAndWritten) {
  const Ref<Document> document = deep_page();
  EXPECT_EQ(document->all().size(), deep + 3);
  Element& innermost = *document->all().back();
  EXPECT_EQ(document->source_index(innermost), deep + 2);
  EXPECT_EQ(depth_of(innermost), deep + 2);
  const std::u16string html = inner_html(*document->body());
  EXPECT_EQ(html.size(), deep * 11 + 6);
  EXPECT_EQ(inner_text(*document->body()), u"bottom");
  EXPECT_EQ(text_content(*document->body()), u"bottom");
  EXPECT_EQ(Collection(*document->body(), CollectionKind::Tag, u"div").length(), deep);
  EXPECT_EQ(style::style_of(*document).display(innermost), style::Display::Block);
  EXPECT_EQ(parse_document(html)->all().size(), deep + 3) << "as siblings";
}

TEST(Extremes, DeepTreesAreChangedAndComeBack) {
  const Ref<Document> document = deep_page();
  Element& outermost = *first_child_element(*document->body());
  Node& bottom = *document->all().back()->first_child();
  LiveRange range(*document, {{&bottom, 1}, {&bottom, 3}});
  const Ref<Node> copy = clone(outermost, *document, Deep::Yes);
  EXPECT_EQ(text_content(*copy), u"bottom");
  remove(outermost);
  EXPECT_EQ(range.start(), (Boundary{document->body(), 0}));
  EXPECT_TRUE(document->journal().undo());
  EXPECT_EQ(document->all().size(), deep + 3);
  EXPECT_TRUE(document->journal().redo());
  EXPECT_TRUE(document->journal().undo());
  insert(*document->body(), copy);
  EXPECT_EQ(document->all().size(), 2 * deep + 3);
  EXPECT_EQ(compare_order(*document->all().back(), bottom), std::strong_ordering::greater);
  EXPECT_EQ(common_ancestor(*document->all().back(), bottom), document->body());
}

TEST(Extremes, LongTexts) {
  const std::size_t length = 25'000'000;  // 50 MB
  const Ref<Document> document = parse_document(u"<p>" + std::u16string(length, u'x'));
  Text& text = *as<Text>(first_child_element(*document->body())->first_child());
  EXPECT_EQ(text.length(), length);
  EXPECT_EQ(inner_html(*document->body()).size(), length + 7);
  EXPECT_EQ(inner_text(*document->body()).size(), length);
  LiveRange range(*document, {{&text, length - 1}, {&text, length}});
  replace_data(text, length / 2, 0, u"in the middle");
  EXPECT_EQ(range.start().offset, length + 12);
  const Ref<Text> tail = split_text(text, length / 2);
  EXPECT_EQ(range.start().node, tail.get());
  EXPECT_TRUE(document->journal().undo());
  EXPECT_TRUE(document->journal().undo());
  while (document->journal().undo()) {
  }
  EXPECT_EQ(text.length(), length);
}

TEST(Extremes, ManyAttributes) {
  constexpr int count = 100'000;
  std::u16string html = u"<p";
  for (int i = 0; i < count; ++i) html += u" a" + to_text(i) + u"=v";
  const Ref<Document> document = parse_document(html + u">");
  Element& p = *first_child_element(*document->body());
  ASSERT_EQ(p.attributes().size(), std::size_t{count});
  EXPECT_EQ(p.attribute_or_empty(Name(u"a99999")), u"v");
  const std::u16string written = outer_html(p);
  EXPECT_EQ(first_child_element(*parse_document(written)->body())->attributes().size(), std::size_t{count});
  set_attribute(p, Name(u"a50000"), u"other");
  remove_attribute(p, Name(u"a0"));
  set_attribute(p, names::align, u"center");
  while (document->journal().undo()) {
  }
  EXPECT_EQ(outer_html(p), written);
  const Ref<Node> copy = clone(p, *document, Deep::Yes);
  EXPECT_EQ(as<Element>(copy)->attributes().size(), std::size_t{count});
  EXPECT_EQ(inner_text(*document->body()), u"");
}

TEST(Extremes, ManySiblings) {
  std::u16string html = u"<body>";
  for (std::size_t i = 0; i < wide; ++i) html += u"<br>";
  const Ref<Document> document = parse_document(html);
  Element& body = *document->body();
  ASSERT_EQ(body.child_count(), wide);
  EXPECT_EQ(inner_html(body).size(), wide * 4);
  EXPECT_EQ(inner_text(body).size(), wide);
  const Collection breaks(*document, CollectionKind::Tag, u"br");
  std::size_t sum = 0;
  for (std::size_t i = 0; i < breaks.length(); ++i) sum += document->source_index(*breaks.item(i)) == i + 3;
  EXPECT_EQ(sum, wide) << "asking for each costs a look-up";
  const Ref<Node> middle = child_at(body, wide / 2);
  LiveRange range(*document, {{&body, wide - 1}, {&body, wide}});
  remove(*middle);
  EXPECT_EQ(range.start().offset, wide - 2);
  EXPECT_TRUE(document->journal().undo());
  EXPECT_EQ(index_of(*middle), wide / 2);
}

TEST(Extremes, AllOfManySiblingsGoAndComeBack) {
  std::u16string html = u"<body>";
  for (std::size_t i = 0; i < wide; ++i) html += u"<br>";
  const Ref<Document> document = parse_document(html);
  Element& body = *document->body();
  LiveRange range(*document, {{&body, wide / 2}, {&body, wide}});
  set_inner_html(body, u"<p>x");
  EXPECT_EQ(body.child_count(), 1u);
  while (document->journal().undo()) {
  }
  EXPECT_EQ(body.child_count(), wide);
  while (document->journal().redo()) {
  }
  EXPECT_EQ(inner_html(body), u"<P>x</P>");
}

}  // namespace
}  // namespace tvx::dom
