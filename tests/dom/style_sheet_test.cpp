#include "tvx/dom/style/style_sheet.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::style {
namespace {

std::string utf8(std::u16string_view text) { return to_utf8(text); }

std::string selectors(const std::vector<Rule>& rules) {
  std::string text;
  for (const Rule& rule : rules) text.append("[").append(utf8(rule.selector_text)).append("]");
  return text;
}

TEST(Rules, OneForEachAsWritten) {
  const std::pair<const char16_t*, const char*> cases[] = {
      {u"", ""},
      {u"p{} .a{} .b{}", "[p][.a][.b]"},
      {u"  .a ,\n .b  { color: red }", "[.a ,\n .b]"},
      {u".a:hover { } .a .b {}", "[.a:hover][.a .b]"},
      {u"@import 'x.css'; p {}", "[][p]"},
      {u"p {} @import 'x.css'; .a {}", "[p][.a]"},
      {u"@media print { .a { } .b { } } .c {}", "[][.c]"},
      {u"@charset \"utf-8\"; .a {}", "[.a]"},
      {u".a { } ..bad { } .b {}", "[.a][.b]"},
      {u".a { color } p:nope {} .b { x: y", "[.a][.b]"},
      {u"<!-- .a {} -->", "[.a]"},
      {u"/* .x {} */ .a { content: '}' } .b{}", "[.a][.b]"},
      {u"@frobnicate { .x {} } .a {}", "[.a]"},
      {u"@font-face { src: url(x) } .a {}", "[][.a]"},
      {u".a { { } } .b {}", "[.a][.b]"},
      {u".a", ""}};
  for (const auto& [text, result] : cases) EXPECT_EQ(selectors(parse_rules(text)), result) << utf8(text);
  const auto media = parse_rules(u"@media print { .a { } .b { } }");
  EXPECT_EQ(selectors(media[0].child_rules), "[.a][.b]");
  EXPECT_EQ(utf8(media[0].prelude), "print");
  // A rule that can't be decided here holds for nothing, and one without a block has nothing in it.
  for (const std::u16string_view text : {u"@container (width > 1px) { .a { } }", u"@media print; .a { }"})
    for (const Rule& rule : parse_rules(text)) EXPECT_TRUE(rule.child_rules.empty()) << utf8(text);
  EXPECT_EQ(utf8(parse_rules(u".a { color: red; }")[0].block), "color: red;");
}

TEST(Sheets, ListStandsInDocumentOrderAndLives) {
  const Ref<Document> document = parse_document(
      u"<head><link rel='Alternate StyleSheet' href='dead.css'><style>p { color: red }</style>"
      u"<link rel=icon href=x><link rel=stylesheet href=''></head><body><style>.a{}</style>");
  StyleEngine& engine = style_of(*document);
  ASSERT_EQ(engine.sheets().size(), 4u);
  EXPECT_EQ(utf8(engine.sheets()[0]->href()), "dead.css");
  EXPECT_EQ(utf8(engine.sheets()[1]->css_text()), "p { color: red }");
  EXPECT_EQ(utf8(engine.sheets()[2]->href()), "");
  EXPECT_TRUE(engine.sheets()[2]->rules().empty());
  EXPECT_EQ(engine.sheets()[3]->rules().size(), 1u);

  const StyleSheetHandle first = engine.sheets()[1];
  EXPECT_EQ(engine.sheet_of(first->owner()), first);
  remove(first->owner());
  EXPECT_EQ(engine.sheets().size(), 3u);
  EXPECT_EQ(utf8(first->css_text()), "p { color: red }");
  insert(*document->body(), first->owner());
  EXPECT_EQ(engine.sheets().size(), 4u);
  EXPECT_EQ(&engine.sheets()[3]->owner(), &first->owner());
}

TEST(Sheets, LinksAreLoadedFromOutside) {
  const Ref<Document> document = parse_document(u"<link rel=stylesheet href=a.css><p id=x>");
  StyleEngine& engine = style_of(*document);
  struct Counter : LinkObserver {
    int count = 0;
    void links_changed() override { ++count; }
  } observer;
  engine.set_link_observer(&observer);
  ASSERT_EQ(engine.take_sheets_to_load().size(), 1u);
  EXPECT_TRUE(engine.take_sheets_to_load().empty());
  const StyleSheetHandle sheet = engine.sheets()[0];
  Element& p = *document->all().back();
  EXPECT_EQ(utf8(computed_value(p, Property::Color)), "rgb(0, 0, 0)");
  engine.set_link_text(sheet->owner(), u"p { color: lime } .a {}");
  EXPECT_EQ(utf8(computed_value(p, Property::Color)), "rgb(0, 255, 0)");
  EXPECT_EQ(sheet->rules().size(), 2u);

  sheet->set_href(u"b.css");
  EXPECT_GE(observer.count, 1);
  ASSERT_EQ(engine.take_sheets_to_load().size(), 1u);
  const std::uint64_t version = document->version();
  sheet->set_href(u"b.css");
  EXPECT_EQ(document->version(), version);
  EXPECT_EQ(engine.take_sheets_to_load().size(), 1u);
  engine.set_link_text(sheet->owner(), std::nullopt);
  EXPECT_EQ(utf8(computed_value(p, Property::Color)), "rgb(0, 0, 0)");
  EXPECT_TRUE(sheet->rules().empty());
  engine.set_link_observer(nullptr);
}

TEST(Sheets, HandlesOutliveTheDocument) {
  StyleSheetHandle sheet;
  {
    const Ref<Document> document = parse_document(u"<link rel=stylesheet href=a.css>");
    sheet = style_of(*document).sheets()[0];
  }
  EXPECT_EQ(utf8(sheet->href()), "a.css");
  sheet->set_css_text(u"p {}");
  EXPECT_EQ(sheet->rules().size(), 1u);
}

TEST(Sheets, TextOfAStyleElementIsItsContent) {
  const Ref<Document> document = parse_document(u"<style>p { color: red }</style><p id=x>");
  const StyleSheetHandle sheet = style_of(*document).sheets()[0];
  Element& p = *document->all().back();
  EXPECT_EQ(utf8(computed_value(p, Property::Color)), "rgb(255, 0, 0)");
  sheet->set_css_text(u"p { color: lime }");
  EXPECT_EQ(utf8(computed_value(p, Property::Color)), "rgb(0, 255, 0)");
  EXPECT_EQ(utf8(text_content(sheet->owner())), "p { color: lime }");
}

// Whatever a sheet comes from, and whatever was asked before it comes: the tree, a fragment, an element that
// stands nowhere. `around` has the sheet in it and is moved as a whole.
TEST(StyleSheetsOfMovedNodes, AreNoticedWhereverTheyComeFrom) {
  for (const bool within : {false, true}) {
    for (const int from : {0, 1, 2}) {
      const Ref<Document> document = parse_document(u"<p>x</p><div></div>");
      Element& body = *document->body();
      Element& paragraph = *first_child_element(body);
      const auto colour = [&] { return computed_value(paragraph, style::Property::Color); };
      Ref<Element> sheet = document->create_element(Tag::Style);
      insert(*sheet, document->create_text(u"p { color: red }"));
      Ref<Node> around = sheet;
      if (within) {
        around = document->create_element(Tag::Div);
        insert(*around, sheet);
      }
      EXPECT_EQ(colour(), u"rgb(0, 0, 0)");
      if (from == 0) insert(body, around);
      if (from == 1) {
        Ref<Node> fragment = document->create_fragment();
        insert(*fragment, around);
        insert(body, fragment);
      }
      if (from == 2) {
        Ref<Node> loose = document->create_element(Tag::Div);
        insert(*loose, around);
        EXPECT_EQ(colour(), u"rgb(0, 0, 0)");
        insert(body, around);
      }
      EXPECT_EQ(colour(), u"rgb(255, 0, 0)") << within << from;
      insert(*next_element_sibling(paragraph), around);
      EXPECT_EQ(colour(), u"rgb(255, 0, 0)") << within << from;
      remove(*around);
      EXPECT_EQ(colour(), u"rgb(0, 0, 0)") << within << from;
      insert(body, around);
      EXPECT_EQ(colour(), u"rgb(255, 0, 0)") << within << from;
    }
  }
}

}  // namespace
}  // namespace tvx::dom::style
