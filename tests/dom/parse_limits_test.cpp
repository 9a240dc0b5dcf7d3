#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "tvx/dom/parse.h"
#include "tvx/dom/parser/tree_builder.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"

// Hostile texts: deep, wide, and made to grow. Each must cost about as much as it is long; a parser that
// is quadratic in any of them runs into the time limit of the test program.
namespace tvx::dom {
namespace {

std::u16string repeated(std::u16string_view text, std::size_t count) {
  std::u16string result;
  result.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) result += text;
  return result;
}

// The number of elements above and with the deepest element.
std::size_t deepest(const Document& document) {
  std::size_t depth = 0, most = 0;
  const Node* node = document.first_child();
  while (node) {
    if (node->is_element()) most = std::max(most, depth + 1);
    if (node->first_child()) {
      node = node->first_child();
      ++depth;
      continue;
    }
    while (node && !node->next_sibling()) {
      node = node->parent();
      --depth;
    }
    if (node) node = node->next_sibling();
  }
  return most;
}

std::size_t count(const Document& document, Tag tag) {
  return static_cast<std::size_t>(std::count_if(document.all().begin(), document.all().end(),
                                                [tag](const Element* element) { return element->is(tag); }));
}

constexpr std::size_t deepest_allowed = parser::TreeBuilder::maximum_depth + 1;  // with the html element

TEST(ParseLimits, ElementsNestedTooDeepBecomeSiblings) {
  const Ref<Document> document = parse_document(repeated(u"<div>", 200'000));
  EXPECT_EQ(count(*document, Tag::Div), 200'000u);
  EXPECT_EQ(deepest(*document), deepest_allowed);
}

TEST(ParseLimits, EndTagsFindTheirOwnElementsBelowTheLimit) {
  const std::u16string html =
      u"<p id=a>" + repeated(u"<span>", 1000) + u"x" + repeated(u"</span>", 999) + u"<i>y</i>" + u"</span>z";
  const Ref<Document> document = parse_document(html);
  const Element* outer = first_child_element(*first_child_element(*document->body()));
  ASSERT_TRUE(outer && outer->name().text() == u"span");
  EXPECT_TRUE(outer->last_child()->is(Tag::I));
  EXPECT_EQ(static_cast<const Text&>(*outer->next_sibling()).data(), u"z");
}

TEST(ParseLimits, ContentStaysInItsElementAtTheLimit) {
  const Ref<Document> document =
      parse_document(repeated(u"<div>", 600) + u"<p>a<p>b<title>c</title><textarea>d</textarea>");
  const std::u16string html = serialise_children(*document);
  EXPECT_NE(html.find(u"<P>a</P><P>b</P><TITLE>c</TITLE><TEXTAREA>d</TEXTAREA>"), html.npos);
}

// What the document's size and depth may be when its text is made to blow both up.
struct Hostile {
  const char* name;
  std::u16string html;
};

class HostileText : public testing::TestWithParam<Hostile> {};

TEST_P(HostileText, StaysInBounds) {
  const std::u16string& html = GetParam().html;
  const auto begin = std::chrono::steady_clock::now();
  const Ref<Document> document = parse_document(html);
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  RecordProperty("milliseconds", static_cast<int>(seconds.count() * 1000));
  std::size_t nodes = 0;
  for (const Node* node = document.get(); node; node = next_in_order(*node)) ++nodes;
  // An end tag in the wrong place makes at most eight turns of four elements.
  EXPECT_LT(nodes, parser::TreeBuilder::reconstruction_allowance + 10 * html.size());
  // Adopting puts up to a few levels between a block and its content.
  EXPECT_LE(deepest(*document), deepest_allowed + 8);
  const std::u16string written = serialise_children(*document);
  EXPECT_FALSE(written.empty());
}

constexpr std::size_t many = 100'000;

std::vector<Hostile> repeated_texts() {
  std::vector<Hostile> texts;
  const auto add = [&texts](const char* name, std::u16string html) {
    texts.push_back({name, std::move(html)});
  };
  add("unclosed_blocks_then_end_tags", repeated(u"<div>", many) + repeated(u"</p>", many));
  add("unclosed_blocks_then_paragraphs", repeated(u"<div>", many) + repeated(u"<p>x", many));
  add("unclosed_inlines_then_unknown_end_tags", repeated(u"<x>", many) + repeated(u"</y>", many));
  add("unclosed_inlines_then_items", u"<ul>" + repeated(u"<span>", many) + repeated(u"<li></li>", many));
  add("unclosed_inlines_then_definitions", repeated(u"<span>", many) + repeated(u"<dd></dd>", many));
  add("unclosed_foreign_then_end_tags", u"<svg>" + repeated(u"<g>", many) + repeated(u"</x>", many));
  add("unclosed_foreign_then_breakouts", repeated(u"<svg><g><g>", many) + repeated(u"</p>", many));
  add("links", repeated(u"<a>", many));
  add("links_with_text", repeated(u"<a href=x>y", many));
  add("links_around_blocks", repeated(u"<a><div>", many));
  add("links_over_deep_blocks", u"<a>" + repeated(u"<div>", many) + repeated(u"</a>", many));
  add("links_over_blocks", u"<a>" + repeated(u"<div>", 1000) + repeated(u"</a>", many));
  add("bold_over_inlines", u"<b>" + repeated(u"<x>", 1000) + u"<div>" + repeated(u"</b><b>", many));
  add("nobr", repeated(u"<nobr>", many));
  add("tables", repeated(u"<table>", many));
  add("tables_in_cells", repeated(u"<table><tr><td>", many));
  add("tables_with_fostered_text", repeated(u"<table>x<b>", many));
  add("closed_tables_in_deep_blocks", repeated(u"<div>", many) + repeated(u"<table></table>", many));
  add("templates", repeated(u"<template>", many));
  add("templates_in_cells", repeated(u"<template><td>", many));
  add("selects", repeated(u"<select><option>x", many));
  add("selected_content", u"<select>" + repeated(u"<selectedcontent><option selected>x", many));
  add("selected_options_with_blocks",
      u"<select><selectedcontent></selectedcontent>" + repeated(u"<option selected><div>", 20'000));
  add("selects_in_selected_options",
      repeated(u"<select><selectedcontent></selectedcontent><option selected>x<table><td>", 5'000));
  add("selects_in_templates_in_selected_options",
      repeated(u"<select><selectedcontent></selectedcontent><option selected>x<template>", 5'000));
  add("buttons", repeated(u"<button>", many));
  add("forms", repeated(u"<form><div></form>", many));
  add("forms_in_tables", repeated(u"<form><table></form><td>", 20'000));
  add("links_in_tables", repeated(u"<a><table><a><td>", 20'000));
  add("links_in_lists", repeated(u"<a><ul><li></a>", 20'000));
  add("headings", repeated(u"<h1><div></h2>", many));
  add("markers", repeated(u"<object><b>", many) + repeated(u"</object>x", many));
  add("marquees", repeated(u"<marquee></b>", many) + u"x");
  add("ruby", u"<ruby>" + repeated(u"<rt><rp>", many));
  add("equal_attributes", u"<p" + repeated(u" a=x", many) + u">");
  add("siblings", repeated(u"<br>", 1'000'000));
  add("formatting_and_blocks_in_turn", repeated(u"<b><p><i><div>", 20'000) + repeated(u"</b></i>", 20'000));
  add("framesets", repeated(u"<frameset>", many) + repeated(u"</frameset>", many));
  add("comments", u"<!--" + repeated(u"--!", 300'000));
  add("less_than", repeated(u"<", 1'000'000));
  add("ampersands", repeated(u"&", 1'000'000));
  add("references", repeated(u"&CounterClockwiseContourIntegra", many));
  add("digits", u"&#" + std::u16string(1'000'000, u'9'));
  add("script_escapes", u"<script><!--" + repeated(u"<script></script ", many));
  add("title_end_tags", u"<title>" + repeated(u"</titl", many));
  add("nulls", repeated(std::u16string_view(u"a\0", 2), 500'000));
  add("cdata", u"<svg>" + repeated(u"<![CDATA[x]]", many));
  return texts;
}

/// With a number that grows, so that no two of what is repeated are the same.
std::vector<Hostile> numbered_texts() {
  std::vector<Hostile> texts;
  const auto add = [&texts](const char* name, std::u16string html) {
    texts.push_back({name, std::move(html)});
  };
  add("bodies_with_attributes", [] {
    std::u16string html;
    for (int i = 0; i < 50'000; ++i) html += u"<body a" + to_text(i) + u"=x>";
    return html;
  }());
  add("attributes", [] {
    std::u16string html = u"<p";
    for (int i = 0; i < 100'000; ++i) html += u" a" + to_text(i) + u"=x";
    return html + u">";
  }());
  add("unclosed_formatting", [] {
    std::u16string html;
    for (int i = 0; html.size() < 59'000; ++i) html += u"<p><b id=" + to_text(i) + u">";
    return html;
  }());
  add("unclosed_formatting_of_all_kinds", [] {
    std::u16string html;
    for (int i = 0; html.size() < 200'000; ++i) {
      for (const char16_t* tag : {u"b", u"i", u"u", u"s", u"em", u"tt", u"big", u"font", u"code"})
        html.append(u"<").append(tag).append(u" c=").append(to_text(i)).append(u">");
      html += u"<p>x</p></div><div>y";
    }
    return html;
  }());
  add("formatting_closed_over_blocks", [] {
    std::u16string html;
    for (int i = 0; i < 500; ++i) html += u"<b id=" + to_text(i) + u">";
    return html + u"<div>x" + repeated(u"</b>", 500) + repeated(u"<p>y</b>", 20'000);
  }());
  return texts;
}

std::string name_of(const testing::TestParamInfo<Hostile>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(ParseLimits, HostileText, testing::ValuesIn(repeated_texts()), name_of);
INSTANTIATE_TEST_SUITE_P(ParseLimitsNumbered, HostileText, testing::ValuesIn(numbered_texts()), name_of);

TEST(ParseLimits, UnclosedFormattingHasABudget) {
  std::u16string html;
  for (int i = 0; html.size() < 59'000; ++i) html += u"<p><b id=" + to_text(i) + u">";
  const Ref<Document> document = parse_document(html);
  EXPECT_LT(document->all().size(), parser::TreeBuilder::reconstruction_allowance + 2 * html.size());
  EXPECT_GT(count(*document, Tag::B), parser::TreeBuilder::reconstruction_allowance);
}

TEST(ParseLimits, FormattingOfAnOrdinaryLengthIsOpenedAgain) {
  const std::u16string html =
      u"<body><font color=red><b>" + repeated(u"<p>Ten words or so stand in each paragraph.", 3000);
  const Ref<Document> document = parse_document(html);
  EXPECT_EQ(count(*document, Tag::Font), 1u);
  const Ref<Document> reopened =
      parse_document(u"<div><font color=red><b></div>" + repeated(u"<p>Text</p>", 3000));
  EXPECT_EQ(count(*reopened, Tag::Font), 3001u);
  EXPECT_EQ(count(*reopened, Tag::B), 3001u);
}

TEST(ParseLimits, FiftyMegabytesOfText) {
  const Ref<Document> document = parse_document(std::u16string(50'000'000, u'x'));
  EXPECT_EQ(static_cast<const Text&>(*document->body()->first_child()).data().size(), 50'000'000u);
}

}  // namespace
}  // namespace tvx::dom
