#include "tvx/source/preparation.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"

namespace tvx::source {
namespace {

struct Example {
  const char* name;
  std::u16string_view text, prepared;
};

class Preparing : public testing::TestWithParam<Example> {};

TEST_P(Preparing, Gives) {
  EXPECT_EQ(to_utf8(prepare_for_formatting(GetParam().text).text), to_utf8(GetParam().prepared));
}

constexpr Example examples[] = {
    {"NothingForNothing", u"", u""},
    {"ALineBreakIsABlank", u"one\ntwo", u"one two"},
    {"ARunIsOneBlank", u"one \t\r\n  \n two", u"one two"},
    {"BlanksWithoutALineBreakStay", u"one  two\tthree", u"one  two\tthree"},
    {"BlocksHaveNoneAtTheirEdges", u"\n<P>\n one\n</P>\n<P>two</P>\n", u"<P>one</P><P>two</P>"},
    {"TablesHaveNoneAtTheirEdges", u"<TABLE>\n  <TR>\n    <TD>x</TD>\n  </TR>\n</TABLE>",
     u"<TABLE><TR><TD>x</TD></TR></TABLE>"},
    {"ALineBreakElementIsAnEdge", u"one\n<BR>\ntwo", u"one<BR>two"},
    {"InlineElementsAreNoEdges", u"one\n<B>two</B>\nthree", u"one <B>two</B> three"},
    {"BehindAnInlineTagInABlockABlankStays", u"<P><B>\none</B></P>", u"<P><B> one</B></P>"},
    {"InFrontOfABlockNothingStaysBehindAnInlineTag", u"<B>one</B>\n<P>two", u"<B>one</B><P>two"},
    {"WhereTheFormatterBreaksTheLineNothingStays", u"one\n<SPAN>\ntwo\n</SPAN>", u"one<SPAN>two</SPAN>"},
    {"PreformattedLinesStay", u"<P>a\nb</P>\n<PRE>\n a\n\n  b</PRE>\nc",
     u"<P>a b</P><PRE>\r\n a\r\n\r\n  b</PRE>c"},
    {"ElementsWithinPreformattedTextStay", u"<PRE>a\n<B>b\n</B>\n<P>c\n</P>\n</PRE>\n",
     u"<PRE>a\r\n<B>b\r\n</B>\r\n<P>c\r\n</P>\r\n</PRE>"},
    {"ScriptsStay", u"<SCRIPT>a\nif (b < c) \"</P>\n\"\n</SCRIPT>\nd",
     u"<SCRIPT>a\r\nif (b < c) \"</P>\r\n\"\r\n</SCRIPT>d"},
    {"StyleSheetsStay", u"<STYLE>\np {}\n</STYLE>", u"<STYLE>\r\np {}\r\n</STYLE>"},
    {"FieldTextsStay", u"a\n<TEXTAREA>\nx\n <P>\n</TEXTAREA>\nb",
     u"a <TEXTAREA>\r\nx\r\n <P>\r\n</TEXTAREA> b"},
    {"LineEndsThatAreOnesAlreadyStayOnes", u"<PRE>a\r\nb\rc\nd</PRE>", u"<PRE>a\r\nb\r\nc\r\nd</PRE>"},
    {"TagsStay", u"<P title=\"a\nb > c\"\nid=x>\nd</P>", u"<P title=\"a\r\nb > c\"\r\nid=x>d</P>"},
    {"CommentsStay", u"<P>a</P>\n<!-- b\n  c\n -->\n<P>d</P>", u"<P>a</P><!-- b\r\n  c\r\n --><P>d</P>"},
    {"TagsInCommentsAreNone", u"a <!-- <P>\nb</P>\n --> c", u"a <!-- <P>\r\nb</P>\r\n --> c"},
    {"NoBreakSpacesAreNoWhiteSpace", u"a\u00A0\nb", u"a\u00A0 b"},
    {"ATextThatEndsInATagEndsThere", u"a\n<P title=\"b\n", u"a<P title=\"b\r\n"},
    {"ATextThatEndsInACommentEndsThere", u"a\n<!-- b\n", u"a <!-- b\r\n"},
};

INSTANTIATE_TEST_SUITE_P(Example, Preparing, testing::ValuesIn(examples),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace tvx::source
