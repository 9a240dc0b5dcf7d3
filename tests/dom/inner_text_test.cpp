#include "tvx/dom/inner_text.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/document.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"

namespace tvx::dom {
namespace {

Element* by_id(const Document& document, std::u16string_view id) {
  for (Element* element : document.all()) {
    if (element->attribute_or_empty(names::id) == id) return element;
  }
  return nullptr;
}

/// The text of the element "x", or of the body where there is none.
std::string text_of(std::u16string_view body) {
  const Ref<Document> document = parse_document(u"<!DOCTYPE html><body>" + std::u16string(body));
  const Element* element = by_id(*document, u"x");
  return to_utf8(inner_text(element ? *element : *document->body()));
}

struct Case {
  const char16_t* body;
  const char* text;
};

void check(std::initializer_list<Case> cases) {
  for (const Case& c : cases) EXPECT_EQ(text_of(c.body), c.text) << to_utf8(c.body);
}

TEST(InnerText, WhiteSpaceAsShown) {
  check({{u"abc", "abc"},
         {u" abc", "abc"},
         {u"abc ", "abc"},
         {u"abc \n\t def", "abc def"},
         {u"<p>abc <b> def</b></p>", "abc def"},
         {u"<p>abc<b> </b> def</p>", "abc def"},
         {u"<p>abc <!-- --> def", "abc def"},
         {u"abc&nbsp; def", "abc\xC2\xA0 def"},
         {u"<pre> abc  def</pre>", " abc  def"},
         {u"<pre>abc\ndef</pre>", "abc\ndef"},
         {u"<div style='white-space:pre-line'> abc \n  def ", "abc\ndef"},
         {u"<div style='white-space:nowrap'>abc\n  def", "abc def"},
         {u"abc <img src=x> def", "abc  def"},
         {u"abc<img src=x>def", "abcdef"},
         {u"123<span style='display:inline-block'> abc </span>def", "123abcdef"},
         {u"123 <span style='display:inline-block'> abc </span> def", "123 abc def"},
         {u"<span style='text-transform:uppercase'>abc</span> Def", "ABC Def"},
         {u"<span style='text-transform:capitalize'>one two-three</span>", "One Two-Three"}});
}

TEST(InnerText, BlanksAtTheEdgesOfInlineElements) {
  check({{u"<p>foo <b id=x>bar </b>baz", "bar "},
         {u"<p>foo<b id=x> bar</b>", " bar"},
         {u"<p>foo <b id=x> bar</b>", "bar"},
         {u"<p>foo <b id=x>bar </b></p><p>baz", "bar"},
         {u"<p>foo <b id=x>bar </b> ", "bar"},
         {u"<p>foo <i><b id=x>bar </b></i><img>", "bar "},
         {u"<p>foo <b id=x>bar </b><br>baz", "bar"},
         {u"<p><b id=x> bar</b>", "bar"},
         {u"<p>a<br><b id=x> bar</b>", "bar"},
         {u"<p>a<span hidden> </span><b id=x> bar</b>", " bar"},
         {u"<p>a<img><b id=x> bar</b>", " bar"}});
}

TEST(InnerText, LinesAndParagraphs) {
  check({{u"abc<br>def", "abc\ndef"},
         {u"abc<br>", "abc\n"},
         {u" abc <br> def ", "abc\ndef"},
         {u"<div>abc</div>def", "abc\ndef"},
         {u"<div>abc</div>\n\n<div>def</div>", "abc\ndef"},
         {u"<p>abc</p>def", "abc\n\ndef"},
         {u"<p>abc</p>\n<p>def</p>", "abc\n\ndef"},
         {u"<div><p>abc</p></div><div><p>def</p></div>", "abc\n\ndef"},
         {u"<p>abc</p><p></p><p></p><p>def</p>", "abc\n\ndef"},
         {u"<p>abc</p><br><p>def</p>", "abc\n\n\n\n\ndef"},
         {u"<div>abc<div></div>def</div>", "abc\ndef"},
         {u"abc<hr>def", "abc\ndef"},
         {u"<ul><li>abc<li>def</ul>", "abc\ndef"},
         {u"<h1>abc</h1>def", "abc\ndef"},
         {u"abc<span style='display:block'>def</span>ghi", "abc\ndef\nghi"},
         {u"abc<div style='display:inline'>def</div>ghi", "abcdefghi"},
         {u"abc<div style='float:left'>def</div>ghi", "abc\ndef\nghi"},
         {u"", ""},
         {u"<p></p>", ""}});
}

TEST(InnerText, Tables) {
  check({{u"<table><tr><td>a<td>b", "a\tb"},
         {u"<table>\n<tr>\n<td>a</td>\n<td>b</td>\n</tr>\n<tr><td>c</td><td> d </td></tr></table>x",
          "a\tb\nc\td\nx"},
         {u"<table><thead><tr><td>a<tbody><tr><td>b<tfoot><tr><td>c", "a\nb\nc"},
         {u"<table><caption>x</caption><tr><td>a", "x\na"},
         {u"<table><tr><td>a<table><tr><td>b<td>c</table><td>d", "a\nb\tc\n\td"},
         {u"<table><tr><td><td>", "\t"},
         {u"<table><tr><td><p>a</p><td>b", "a\n\n\tb"}});
}

TEST(InnerText, HiddenThings) {
  check({{u"abc<span hidden>x</span>def", "abcdef"},
         {u"abc<script>x</script><style>y{}</style>def", "abcdef"},
         {u"abc<span style='visibility:hidden'>x<b style='visibility:visible'>y</b></span>def", "abcydef"},
         {u"abc<textarea>x</textarea><iframe>y</iframe>def", "abcdef"},
         {u"<textarea id=x>abc", "abc"},
         {u"<p id=x hidden> a <b>b</b>", " a b"},
         {u"<div hidden><p id=x> a", " a"},
         {u"<ruby>a<rp>(</rp><rt>b</rt></ruby>", "ab"},
         {u"<style>.h{display:none}</style>a<b class=h>b</b>", "a"},
         {u"<select><option>a<option>b</select>", "a\nb"},
         {u"<template>x</template>a", "a"}});
}

TEST(InnerText, OutsideTheTreeItIsTheTextContent) {
  const Ref<Document> document = parse_document(u"");
  Ref<Element> p = document->create_element(Tag::P);
  Builder::insert(*p, document->create_text(u" a  b "));
  EXPECT_EQ(to_utf8(inner_text(*p)), " a  b ");
}

TEST(InnerText, DeepTrees) {
  const Ref<Document> document = parse_document(u"<body>");
  Ref<Element> top = document->create_element(Tag::Div);
  Element* current = top.get();
  for (int i = 0; i < 100000; ++i) {
    Ref<Element> next = document->create_element(i % 2 ? Tag::Div : Tag::Span);
    Builder::insert(*current, next);
    current = next.get();
  }
  Builder::insert(*current, document->create_text(u"deep "));
  insert(*document->body(), top);
  EXPECT_EQ(to_utf8(inner_text(*document->body())), "deep");
  EXPECT_EQ(to_utf8(inner_text(*current)), "deep");
}

TEST(InnerText, WritingMakesLines) {
  const Ref<Document> document = parse_document(u"<p id=x>old <b>text</b>");
  Element& p = *by_id(*document, u"x");
  const auto written = [&](const char16_t* text) {
    set_inner_text(p, text);
    return to_utf8(serialise_children(p));
  };
  EXPECT_EQ(written(u"a\nb\r\nc\rd"), "a<BR>b<BR>c<BR>d");
  EXPECT_EQ(written(u"\n\na"), "<BR><BR>a");
  EXPECT_EQ(written(u"a\n"), "a<BR>");
  EXPECT_EQ(written(u"<b> & "), "&lt;b&gt; &amp; ");
  EXPECT_EQ(written(u""), "");
}

}  // namespace
}  // namespace tvx::dom
