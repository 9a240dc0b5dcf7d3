#include "tvx/dom/parse.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {
namespace {

std::u16string body_of(std::u16string_view html) { return serialise_children(*parse_document(html)->body()); }

std::u16string fragment(std::u16string_view html, FragmentContext context = {}) {
  const Ref<Document> document = Document::create();
  return serialise_children(*parse_fragment(*document, context, html));
}

FragmentContext in(Tag tag) { return {.name = Name(tag), .encoding = {}}; }

TEST(Parse, ADocumentHasItsSkeleton) {
  EXPECT_EQ(serialise_children(*parse_document(u"")), u"<HTML><HEAD></HEAD><BODY></BODY></HTML>");
  EXPECT_EQ(serialise_children(*parse_document(u"<!-- a --><title>t</title>x")),
            u"<!-- a --><HTML><HEAD><TITLE>t</TITLE></HEAD><BODY>x</BODY></HTML>");
}

TEST(Parse, FormattingThatOverlapsIsPutInOrder) {
  EXPECT_EQ(body_of(u"<p>1<b>2<i>3</b>4</i>5</p>"), u"<P>1<B>2<I>3</I></B><I>4</I>5</P>");
  EXPECT_EQ(body_of(u"<b>1<p>2</b>3</p>"), u"<B>1</B><P><B>2</B>3</P>");
  EXPECT_EQ(body_of(u"<p><b>1<p>2"), u"<P><B>1</B></P><P><B>2</B></P>");
}

TEST(Parse, WhatDoesNotBelongIntoATableGoesBeforeIt) {
  EXPECT_EQ(body_of(u"<table>a<tr><td>b</table>c"), u"a<TABLE><TBODY><TR><TD>b</TD></TR></TBODY></TABLE>c");
}

TEST(Parse, LineEndsBecomeLineFeeds) {
  EXPECT_EQ(body_of(u"<p>a\r\nb\rc\nd"), u"<P>a\nb\nc\nd</P>");
  EXPECT_EQ(body_of(u"<pre>\r\na</pre>"), u"<PRE>a</PRE>");
}

TEST(Parse, ReferencesToBothHalvesOfACharacterAreThatCharacter) {
  EXPECT_EQ(body_of(u"a&#55357;&#56832;b&#xD83D;&#xde00"), u"a\U0001F600b\U0001F600");
  EXPECT_EQ(body_of(u"<p title='&#55357;&#56832;'>"), u"<P title=\"\U0001F600\"></P>");
  EXPECT_EQ(body_of(u"&#55357;&#55357;&#56832;"), u"\uFFFD\U0001F600") << "the first has no other half";
  EXPECT_EQ(body_of(u"&#56832;&#55357; &#56832;"), u"\uFFFD\uFFFD \uFFFD");
}

TEST(Parse, ReferencesAreResolved) {
  EXPECT_EQ(body_of(u"&amp;&lt;&copy&#65;&#x41;&#128;&NotEqualTilde;&bogus;&#0;"),
            u"&amp;&lt;\u00A9AA\u20AC\u2242\u0338&amp;bogus;\uFFFD");
  EXPECT_EQ(body_of(u"<a href='?a=1&copy=2&amp;b'>"), u"<A href=\"?a=1&amp;copy=2&amp;b\"></A>");
  EXPECT_EQ(body_of(u"&#x1F600;&Afr;"), u"\U0001F600\U0001D504");
}

TEST(Parse, TheDocumentTypeDecidesTheMode) {
  const auto mode = [](std::u16string_view html) { return parse_document(html)->compatibility_mode(); };
  EXPECT_EQ(mode(u"<!DOCTYPE html>"), CompatibilityMode::NoQuirks);
  EXPECT_EQ(mode(u"<p>"), CompatibilityMode::Quirks);
  EXPECT_EQ(mode(u"<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">"),
            CompatibilityMode::Quirks);
  EXPECT_EQ(mode(u"<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\" \"x\">"),
            CompatibilityMode::LimitedQuirks);
  EXPECT_EQ(mode(u"<!DOCTYPE HTML PUBLIC \"-//W3C//DTD XHTML 1.0 Transitional//EN\" \"x\">"),
            CompatibilityMode::LimitedQuirks);
}

TEST(Parse, ForeignElementsGetTheirLetters) {
  EXPECT_EQ(body_of(u"<SVG VIEWBOX='0 0 1 1'><LINEARGRADIENT/><foreignobject><b>x</b></svg>y"),
            u"<svg viewBox=\"0 0 1 1\"><linearGradient></linearGradient>"
            u"<foreignObject><B>x</B></foreignObject></svg>y");
}

TEST(Parse, TemplatesHoldTheirContentsApart) {
  const Ref<Document> document = parse_document(u"<template><td>x</td></template>");
  const Element* made = first_child_element(*document->head());
  ASSERT_TRUE(made && made->template_content());
  EXPECT_FALSE(made->has_children());
  EXPECT_TRUE(made->template_content()->first_child()->is(Tag::Td));
}

TEST(Parse, NoscriptHoldsElements) {
  EXPECT_EQ(body_of(u"<body><noscript><b>x</b></noscript>"), u"<NOSCRIPT><B>x</B></NOSCRIPT>");
}

TEST(ParseFragment, DependsOnItsContext) {
  EXPECT_EQ(fragment(u"<td>x"), u"x");
  EXPECT_EQ(fragment(u"<td>x", in(Tag::Tr)), u"<TD>x</TD>");
  EXPECT_EQ(fragment(u"<tr><td>x", in(Tag::Table)), u"<TBODY><TR><TD>x</TD></TR></TBODY>");
  EXPECT_EQ(fragment(u"<body a=b><html><p>x"), u"<P>x</P>");
  EXPECT_EQ(fragment(u"<option>x<input>y", in(Tag::Select)), u"<OPTION>xy</OPTION>");
  EXPECT_EQ(fragment(u"<td>x", in(Tag::Template)), u"<TD>x</TD>");
}

TEST(ParseFragment, RawTextContextsTakeTextAsItIs) {
  const Ref<Document> document = Document::create();
  const Ref<DocumentFragment> title = parse_fragment(*document, in(Tag::Title), u"<b>&amp;");
  EXPECT_EQ(text_content(*title), u"<b>&");
  const Ref<DocumentFragment> style = parse_fragment(*document, in(Tag::Style), u"<b>&amp;");
  EXPECT_EQ(text_content(*style), u"<b>&amp;");
}

TEST(ParseFragment, FormsDontNest) {
  FragmentContext context;
  EXPECT_EQ(fragment(u"<form>x", context), u"<FORM>x</FORM>");
  context.inside_form = true;
  EXPECT_EQ(fragment(u"<form>x", context), u"x");
}

TEST(ParseFragment, QuirksLetTablesStandInParagraphs) {
  FragmentContext context;
  EXPECT_EQ(fragment(u"<p><table></table>", context), u"<P></P><TABLE></TABLE>");
  context.compatibility_mode = CompatibilityMode::Quirks;
  EXPECT_EQ(fragment(u"<p><table></table>", context), u"<P><TABLE></TABLE></P>");
}

TEST(ParseFragment, TheContextOfAnElementSaysWhereItStands) {
  const Ref<Document> document =
      parse_document(u"<form><div id=a></div></form><math><annotation-xml encoding='text/html'>");
  const Element* div = first_child_element(*first_child_element(*document->body()));
  const FragmentContext inside = context_of(*div);
  EXPECT_EQ(inside.name, Name(Tag::Div));
  EXPECT_TRUE(inside.inside_form);
  EXPECT_EQ(inside.compatibility_mode, CompatibilityMode::Quirks);
  const Element* annotation = first_child_element(*next_element_sibling(*div->parent()));
  const FragmentContext foreign = context_of(*annotation);
  EXPECT_EQ(foreign.name_space, Namespace::MathMl);
  EXPECT_EQ(foreign.encoding, u"text/html");
  EXPECT_EQ(fragment(u"<p>x", foreign), u"<P>x</P>");
}

TEST(ParseFragment, ItsNodesBelongToTheDocumentAndToNoTree) {
  const Ref<Document> document = parse_document(u"<p>a</p>");
  const std::uint64_t version = document->version();
  const Ref<DocumentFragment> made = parse_fragment(*document, context_of(*document->body()), u"<p>b</p>");
  EXPECT_EQ(made->first_child()->document(), document.get());
  EXPECT_EQ(document->version(), version);
  insert(*document->body(), made);
  EXPECT_EQ(serialise_children(*document->body()), u"<P>a</P><P>b</P>");
  EXPECT_EQ(document->source_index(*as<Element>(document->body()->last_child())), 4u);
}

}  // namespace
}  // namespace tvx::dom
