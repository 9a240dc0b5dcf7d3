#include "tvx/dom/serialise.h"

#include <gtest/gtest.h>

#include "build_tree.h"
#include "tvx/dom/mutation.h"

namespace tvx::dom {
namespace {

using test::element;
using test::text;

std::u16string written(const test::Spec& spec, Letters letters = Letters::Upper) {
  Ref<Document> document = Document::create();
  return serialise_node(*test::build(*document, spec), letters);
}

TEST(Serialise, ElementNamesAreInCapitalsOrAsTheStandardWritesThem) {
  const auto tree = element(Tag::P, {text(u"a"), element(Tag::Br), element(Tag::Hr), element(Tag::Span)});
  EXPECT_EQ(written(tree), u"<P>a<BR><HR><SPAN></SPAN></P>");
  EXPECT_EQ(written(tree, Letters::Lower), u"<p>a<br><hr><span></span></p>");
}

TEST(Serialise, TextAndValuesAreEscaped) {
  Ref<Document> document = Document::create();
  Ref<Element> p = document->create_element(Tag::P);
  set_attribute(*p, names::title, u"a\"b<c>&\u00A0");
  insert(*p, document->create_text(u"a\"b<c>&\u00A0\U0001F600"));
  EXPECT_EQ(serialise_node(*p),
            u"<P title=\"a&quot;b&lt;c&gt;&amp;&nbsp;\">a\"b&lt;c&gt;&amp;&nbsp;\U0001F600</P>");
}

// Letters are looked at eight at a time, and put together in pieces of some thousand.
TEST(Serialise, ReferencesAreWrittenWhereverTheyStand) {
  const std::pair<char16_t, std::u16string_view> references[] = {
      {u'&', u"&amp;"}, {u'<', u"&lt;"}, {u'>', u"&gt;"}, {0xA0, u"&nbsp;"}};
  Ref<Document> document = Document::create();
  const auto expect_written = [&](const std::u16string& before, char16_t letter,
                                  std::u16string_view reference, const std::u16string& after) {
    Ref<Element> div = document->create_element(Tag::Div);
    insert(*div, document->create_text(before + letter + after));
    EXPECT_EQ(serialise_children(*div), before + std::u16string(reference) + after)
        << before.size() << ' ' << after.size();
  };
  for (const auto& [letter, reference] : references) {
    for (std::size_t before = 0; before < 20; ++before)
      for (std::size_t after = 0; after < 20; ++after)
        expect_written(std::u16string(before, u'\u2020'), letter, reference, std::u16string(after, u'"'));
    for (std::size_t before = 4070; before < 4110; ++before)
      expect_written(std::u16string(before, u'a'), letter, reference, std::u16string(9000, u'b'));
  }
}

TEST(Serialise, LongTextsAreWhole) {
  Ref<Document> document = Document::create();
  for (const std::size_t size : {4080u, 4095u, 4096u, 4097u, 8192u, 100'000u, 5'000'000u}) {
    Ref<Element> div = document->create_element(Tag::Div);
    const std::u16string value(size, u'v'), raw(size, u'<');
    set_attribute(*div, Name(u"title"), value);
    insert(*div, document->create_comment(raw));
    EXPECT_EQ(serialise_node(*div), u"<DIV title=\"" + value + u"\"><!--" + raw + u"--></DIV>");
  }
}

TEST(Serialise, RawTextStandsAsItIs) {
  EXPECT_EQ(written(element(Tag::Script, {text(u"if (a<b && c>d) x()")})),
            u"<SCRIPT>if (a<b && c>d) x()</SCRIPT>");
  EXPECT_EQ(written(element(Tag::Style, {text(u"p > a { }")})), u"<STYLE>p > a { }</STYLE>");
  EXPECT_EQ(written(element(Tag::Noscript, {text(u"a<b")})), u"<NOSCRIPT>a&lt;b</NOSCRIPT>");
}

TEST(Serialise, ForeignElementsKeepTheirLetters) {
  Ref<Document> document = Document::create();
  Ref<Element> svg = document->create_element(Name(Tag::Svg), Namespace::Svg);
  insert(*svg, document->create_element(Name(u"linearGradient"), Namespace::Svg));
  EXPECT_EQ(serialise_node(*svg), u"<svg><linearGradient></linearGradient></svg>");
}

TEST(Serialise, TheLineBreakThatTheParserDropsIsWrittenTwice) {
  EXPECT_EQ(written(element(Tag::Pre, {text(u"\na")})), u"<PRE>\n\na</PRE>");
  EXPECT_EQ(written(element(Tag::Pre, {text(u"a\n")})), u"<PRE>a\n</PRE>");
  EXPECT_EQ(written(element(Tag::Div, {text(u"\na")})), u"<DIV>\na</DIV>");
}

TEST(Serialise, TemplatesWriteTheirContents) {
  Ref<Document> document = Document::create();
  const auto make = [&](std::u16string data) {
    Ref<Element> made = document->create_element(Tag::Template);
    Ref<Node> content = document->create_fragment();
    if (!data.empty()) Builder::insert(*content, test::build(*document, element(Tag::B, {text(data)})));
    Builder::set_template_content(*made, content);
    return made;
  };
  Ref<Element> div = document->create_element(Tag::Div);
  insert(*div, make(u"x"));
  insert(*div, make(u""));
  insert(*div, document->create_text(u"end"));
  Ref<Element> outer = make(u"y");
  Builder::insert(*outer->template_content(), make(u"z"));
  insert(*div, outer);
  EXPECT_EQ(serialise_node(*div),
            u"<DIV><TEMPLATE><B>x</B></TEMPLATE><TEMPLATE></TEMPLATE>end"
            u"<TEMPLATE><B>y</B><TEMPLATE><B>z</B></TEMPLATE></TEMPLATE></DIV>");
  EXPECT_EQ(serialise_children(*outer), u"<B>y</B><TEMPLATE><B>z</B></TEMPLATE>");
}

}  // namespace
}  // namespace tvx::dom
