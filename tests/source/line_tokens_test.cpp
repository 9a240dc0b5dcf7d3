#include "tvx/source/line_tokens.h"

#include <gmock/gmock.h>

#include "tvx/base/strings.h"

namespace tvx::source {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* names[] = {"<>", "tag",     "attribute", "value",  "comment",  "declaration",
                                 "&",  "keyword", "string",    "number", "selector", "property"};

/// "kind text" of each token of each line.
std::vector<std::string> tokens(std::vector<std::u16string_view> lines) {
  std::vector<std::string> all;
  LineState state = 0;
  for (const std::u16string_view line : lines) {
    LineState passed = state;
    pass_line(line, passed);
    for (const Token& token : tokens_of_line(line, state))
      all.push_back(names[std::size_t(token.kind)] + (" " + to_utf8(line.substr(token.from, token.length))));
    EXPECT_EQ(passed, state) << "the walk alone comes to the same";
  }
  return all;
}

TEST(LineTokens, ATagHasNamesAndValues) {
  EXPECT_THAT(
      tokens({u"a <p class=\"x\" id='y' width=3 hidden>b</p>"}),
      ElementsAre("<> <", "tag p", "attribute class", "value \"x\"", "attribute id", "value 'y'",
                  "attribute width", "value 3", "attribute hidden", "<> >", "<> </", "tag p", "<> >"));
  EXPECT_THAT(tokens({u"<br/><h1>"}), ElementsAre("<> <", "tag br", "<> />", "<> <", "tag h1", "<> >"));
  EXPECT_THAT(tokens({u"a < b, 3<4"}), IsEmpty());
}

TEST(LineTokens, ReferencesCommentsAndDeclarations) {
  EXPECT_THAT(tokens({u"a&amp;b &#xA0; & c&d"}), ElementsAre("& &amp;", "& &#xA0;"));
  EXPECT_THAT(tokens({u"<!-- a <b> --><!DOCTYPE html>"}),
              ElementsAre("comment <!--", "comment  a <b> -->", "declaration <!DOCTYPE html>"));
}

TEST(LineTokens, WhatGoesOverLinesGoesOn) {
  EXPECT_THAT(tokens({u"<!-- a", u"", u"b --><i>"}),
              ElementsAre("comment <!--", "comment  a", "comment b -->", "<> <", "tag i", "<> >"));
  EXPECT_THAT(tokens({u"<a", u" title=\"x", u"y\" href=", u"z>"}),
              ElementsAre("<> <", "tag a", "attribute title", "value \"x", "value y\"", "attribute href",
                          "value z", "<> >"));
}

TEST(LineTokens, AScript) {
  EXPECT_THAT(tokens({u"<script>var a = 'x\\'y', b = 12; // no", u"/* c", u"d */ `e", u"${f}` if</script>g"}),
              ElementsAre("<> <", "tag script", "<> >", "keyword var", "string 'x\\'y'", "number 12",
                          "comment // no", "comment /*", "comment  c", "comment d */", "string `", "string e",
                          "string ${f}`", "keyword if", "<> </", "tag script", "<> >"));
}

TEST(LineTokens, AnEndTagEndsItsElementEvenWithinAString) {
  EXPECT_THAT(tokens({u"<script>'a</script><b>"}),
              ElementsAre("<> <", "tag script", "<> >", "string 'a", "<> </", "tag script", "<> >", "<> <",
                          "tag b", "<> >"));
  EXPECT_THAT(tokens({u"<script>/* a</SCRIPT ><b>"}),
              ElementsAre("<> <", "tag script", "<> >", "comment /*", "comment  a", "<> </", "tag SCRIPT",
                          "<> >", "<> <", "tag b", "<> >"));
}

TEST(LineTokens, ALineEndsWhereItEnds) {
  // In the source the next line, or what is typed next, follows in the same text.
  const std::u16string_view source = u"a <b &amp; </c";
  EXPECT_THAT(tokens({source.substr(0, 3)}), IsEmpty());
  EXPECT_THAT(tokens({source.substr(0, 6)}), ElementsAre("<> <", "tag b"));
}

TEST(LineTokens, AStyleSheet) {
  EXPECT_THAT(tokens({u"<style>p.a, #b { color: #fff; margin: 0 2em }",
                      u"@media print { i { top: 1px } } /* x */</style>"}),
              ElementsAre("<> <", "tag style", "<> >", "selector p", "selector .a", "selector #b",
                          "property color", "number #fff", "property margin", "number 0", "number 2em",
                          "keyword @media", "selector print", "selector i", "property top", "number 1px",
                          "comment /*", "comment  x */", "<> </", "tag style", "<> >"));
}

TEST(LineTokens, AFieldHoldsTextWithoutTags) {
  EXPECT_THAT(tokens({u"<textarea>a <b> &lt;</textarea>"}),
              ElementsAre("<> <", "tag textarea", "<> >", "& &lt;", "<> </", "tag textarea", "<> >"));
}

}  // namespace
}  // namespace tvx::source
