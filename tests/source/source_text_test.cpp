#include "tvx/source/source_text.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/base/text.h"

namespace tvx::source {
namespace {

SourceText source(std::u16string_view markup) {
  return SourceText::formatted(std::make_shared<const std::u16string>(markup));
}

std::string shown(std::u16string_view markup) { return to_utf8(*source(markup).code()); }

/// What becomes of `markup` when the user replaces `find` in its code, everywhere.
std::string after(std::u16string_view markup, std::u16string_view find, std::u16string_view replacement) {
  const SourceText text = source(markup);
  const std::u16string left = ReplaceAll(find, replacement, *text.code(), true);
  EXPECT_NE(left, *text.code()) << to_utf8(*text.code());
  return to_utf8(text.markup_after(left));
}

// --- what is shown ---

TEST(CodeOf, IsTheFormattersText) {
  EXPECT_EQ(shown(u"<TABLE>\n <TR><TD>x</TD></TR></TABLE>"),
            "<TABLE>\r\n  <TR>\r\n    <TD>\r\n      x\r\n    </TD>\r\n  </TR>\r\n</TABLE>\r\n");
  EXPECT_EQ(shown(u"one\n two <SPAN>three</SPAN>"), "one two \r\n<SPAN>\r\n  three\r\n</SPAN>\r\n");
  EXPECT_EQ(shown(u""), "");
}

TEST(CodeOf, DoesNotGrowWhenItComesBack) {
  for (const std::u16string_view text :
       {u"<P>one<BR>two</P>", u"<TABLE><TR><TD>x</TD></TR></TABLE>", u"a <SPAN>b</SPAN> c",
        u"<DIV><P>a</P><!-- b --> c<UL><LI>d<LI>e</UL></DIV>", u"un<SPAN>believ</SPAN>able"}) {
    const std::u16string once = code_of(text);
    const std::u16string twice = code_of(once);
    EXPECT_LE(twice.size(), once.size());
    EXPECT_EQ(to_utf8(code_of(twice)), to_utf8(twice));
  }
}

TEST(CodeOf, PreformattedTextStandsAsItIs) {
  EXPECT_EQ(shown(u"<DIV><PRE>a\n\n   b<BR>c <SPAN>d</SPAN>\n</PRE></DIV>"),
            "<DIV>\r\n  <PRE>a\r\n\r\n   b<BR>c <SPAN>d</SPAN>\r\n</PRE>\r\n</DIV>\r\n");
}

TEST(CodeOf, FieldsStandAsTheyAre) {
  EXPECT_EQ(shown(u"<DIV><TEXTAREA>a\n\n  b</TEXTAREA></DIV>"),
            "<DIV>\r\n  <TEXTAREA>a\r\n\r\n  b</TEXTAREA>\r\n</DIV>\r\n");
}

TEST(CodeOf, ScriptsWithLinesStandAsTheyAre) {
  EXPECT_EQ(shown(u"<DIV><SCRIPT>\na('<TABLE>')\n\n  b\n</SCRIPT></DIV>"),
            "<DIV>\r\n  <SCRIPT>\r\na('<TABLE>')\r\n\r\n  b\r\n</SCRIPT>\r\n</DIV>\r\n");
  EXPECT_EQ(shown(u"<SCRIPT>if (a<b) c('</TD>')</SCRIPT>d"),
            "<SCRIPT>\r\n  if (a<b) c('</TD>')\r\n</SCRIPT>\r\nd\r\n")
      << "one line is a line like others";
}

TEST(CodeOf, StyleSheetsStandAsTheyAre) {
  EXPECT_EQ(shown(u"<STYLE>\np {\n\n  color: red\n}\n</STYLE>"),
            "<STYLE>\r\np {\r\n\r\n  color: red\r\n}\r\n</STYLE>\r\n");
}

TEST(CodeOf, CommentsStandAsTheyAre) {
  EXPECT_EQ(shown(u"<DIV><!-- a\n\n   <TD> b --></DIV>"),
            "<DIV>\r\n  <!-- a\r\n\r\n   <TD> b -->\r\n</DIV>\r\n");
}

TEST(CodeOf, AnEndTagThatIsNoneDoublesNothing) {
  EXPECT_EQ(shown(u"<!-- </TABLE> --><P>a</P>"), "<!-- </TABLE> -->\r\n<P>a</P>\r\n");
  EXPECT_EQ(shown(u"<P title=\"> </TABLE>\">a</P>"), "<P title=\"> </TABLE>\">a</P>\r\n");
  EXPECT_EQ(shown(u"a</TD>b"), "a\r\n</TD>\r\nb\r\n");
}

TEST(CodeOf, ALineBreakInAnAttributeIsOne) {
  EXPECT_EQ(shown(u"<P title=\"a\nb\">c</P>"), "<P title=\"a\r\nb\">c</P>\r\n");
}

// --- what comes back ---

TEST(SourceText, OneEditIsOneChange) {
  EXPECT_EQ(after(u"<DIV>\n\n<P>one\ntwo</P> <P>three</P>\n</DIV>\n", u"three", u"four"),
            "<DIV>\n\n<P>one\ntwo</P> <P>four</P>\n</DIV>\n");
}

TEST(SourceText, NoBlankGetsIntoAWord) {
  EXPECT_EQ(after(u"<P>un<SPAN>believ</SPAN>able <FONT>lunch</FONT>.</P>", u"able", u"ably"),
            "<P>un<SPAN>believ</SPAN>ably <FONT>lunch</FONT>.</P>");
  EXPECT_EQ(after(u"<P>un<SPAN>believ</SPAN>able <FONT>lunch</FONT>.</P>", u"lunch", u"dinner"),
            "<P>un<SPAN>believ</SPAN>able <FONT>dinner</FONT>.</P>");
}

TEST(SourceText, WhatStandsBetweenTwoEditsStays) {
  constexpr std::u16string_view between =
      u"<SCRIPT>if (a<b)\n\n  c('<TABLE>')</SCRIPT><PRE>a\n\n   b</PRE><TEXTAREA>\n\n x\n  y</TEXTAREA>"
      u"<STYLE>\n\np {}</STYLE><!-- c\n\n   d </TABLE> -->";
  const std::u16string markup = u"<P>word</P>" + std::u16string(between) + u"<P>word</P>";
  EXPECT_EQ(after(markup, u"word", u"other"),
            to_utf8(u"<P>other</P>" + std::u16string(between) + u"<P>other</P>"));
}

TEST(SourceText, AnEditWithinAScriptKeepsItsBlankLines) {
  EXPECT_EQ(after(u"<SCRIPT>\na()\n\n  b()\n</SCRIPT>", u"b()", u"c()\r\n\r\n  d()"),
            "<SCRIPT>\na()\n\n  c()\n\n  d()\n</SCRIPT>");
  EXPECT_EQ(after(u"<STYLE>\np {}\n\nb {}\n</STYLE>", u"b {}", u"i {}"), "<STYLE>\np {}\n\ni {}\n</STYLE>");
  EXPECT_EQ(after(u"<DIV><PRE>a\n\n  b\n</PRE></DIV>", u"  b", u"  B\r\nc"),
            "<DIV><PRE>a\n\n  B\nc\n</PRE></DIV>");
}

TEST(SourceText, ABlankLineTakenOutOfPreformattedTextIsGone) {
  EXPECT_EQ(after(u"<DIV><PRE>a\n\n  b</PRE></DIV>", u"a\r\n\r\n", u"a\r\n"), "<DIV><PRE>a\n  b</PRE></DIV>");
}

TEST(SourceText, WhiteSpaceBetweenLinesIsNoText) {
  constexpr std::u16string_view markup = u"<P>un<SPAN>believ</SPAN>able</P>\n\n<P>b</P>";
  EXPECT_EQ(after(markup, u"\r\n", u"\r\n\r\n"), to_utf8(markup));
  EXPECT_EQ(after(markup, u"  believ", u"believ"), to_utf8(markup));
  EXPECT_EQ(after(markup, u"able", u"      able"), to_utf8(markup));
  EXPECT_EQ(after(markup, u"un\r\n<SPAN>\r\n  believ\r\n</SPAN>\r\nable", u"un<SPAN>believ</SPAN>able"),
            to_utf8(markup));
}

TEST(SourceText, ABlankTypedBetweenWordsIsText) {
  EXPECT_EQ(after(u"<P>un<SPAN>believ</SPAN>able</P>", u"un\r\n", u"un \r\n"),
            "<P>un <SPAN>believ</SPAN>able</P>");
  EXPECT_EQ(after(u"<P>onetwo</P>", u"onetwo", u"one two"), "<P>one two</P>");
  EXPECT_EQ(after(u"<P>one\n  two</P>", u"one two", u"onetwo"), "<P>onetwo</P>");
}

TEST(SourceText, TextGoesWhereItWasTyped) {
  constexpr std::u16string_view markup = u"<DIV>\n<P>\none\n</P>\n\n<P>two</P></DIV>";
  EXPECT_EQ(after(markup, u"<P>one", u"<P>Xone"), "<DIV>\n<P>\nXone\n</P>\n\n<P>two</P></DIV>");
  EXPECT_EQ(after(markup, u"one</P>", u"oneX</P>"), "<DIV>\n<P>\noneX\n</P>\n\n<P>two</P></DIV>");
  EXPECT_EQ(after(markup, u"one</P>", u"one</P>X"), "<DIV>\n<P>\none\n</P>X\n\n<P>two</P></DIV>");
  EXPECT_EQ(after(markup, u"<P>two", u"X<P>two"), "<DIV>\n<P>\none\n</P>\n\nX<P>two</P></DIV>");
}

TEST(SourceText, ANewLineIsALine) {
  EXPECT_EQ(after(u"<P>a</P><P>b</P>", u"<P>b", u"<P>new</P>\r\n<P>b"), "<P>a</P>\n<P>new</P><P>b</P>");
  EXPECT_EQ(after(u"<P>a</P>\n<P>b</P>\n", u"<P>b</P>\r\n", u"<P>b</P>\r\n<P>c</P>\r\n"),
            "<P>a</P>\n<P>b</P>\n<P>c</P>\n");
  EXPECT_EQ(to_utf8(source(u"").markup_after(u"<P>new</P>\r\n")), "<P>new</P>\n");
}

TEST(SourceText, ALineTakenOutIsGone) {
  EXPECT_EQ(after(u"<DIV><P>a</P>\n <P>b</P> \n<P>c</P></DIV>", u"  <P>b</P>\r\n", u""),
            "<DIV><P>a</P>\n<P>c</P></DIV>");
  EXPECT_EQ(after(u"<P>a</P><P>b</P><P>c</P>", u"<P>b</P>\r\n", u""), "<P>a</P><P>c</P>");
  EXPECT_EQ(after(u"<P>a</P>", u"<P>a</P>\r\n", u""), "");
}

TEST(SourceText, ALineTakenOutTakesItsLineOfTheMarkupAlong) {
  constexpr std::u16string_view markup = u"<DIV>\n\n  <P>a</P>\n\n  <P>b</P>\n\n  <P>c</P>\n</DIV>";
  EXPECT_EQ(after(markup, u"  <P>b</P>\r\n", u""), "<DIV>\n\n  <P>a</P>\n\n\n  <P>c</P>\n</DIV>");
  EXPECT_EQ(after(markup, u"  <P>a</P>\r\n  <P>b</P>\r\n", u""), "<DIV>\n\n\n  <P>c</P>\n</DIV>");
  EXPECT_EQ(after(u"<DIV>\n  <P>a</P><P>b</P>\n  <P>c</P></DIV>", u"  <P>b</P>\r\n", u""),
            "<DIV>\n  <P>a</P>\n  <P>c</P></DIV>")
      << "where another one stands in its line nothing else goes";
}

TEST(SourceText, ALineTakenOutOfPreformattedTextTakesItsLineBreakAlong) {
  constexpr std::u16string_view markup = u"<DIV><PRE>a\n  b\n c</PRE> <P>d</P></DIV>";
  EXPECT_EQ(after(markup, u"  b\r\n", u""), "<DIV><PRE>a\n c</PRE> <P>d</P></DIV>");
  EXPECT_EQ(after(markup, u"  <PRE>a\r\n", u""), "<DIV>  b\n c</PRE> <P>d</P></DIV>");
  EXPECT_EQ(after(markup, u" c</PRE> \r\n", u""), "<DIV><PRE>a\n  b\n<P>d</P></DIV>");
}

TEST(SourceText, OfNeighboursTheRightOneIsTakenOut) {
  // Only the indentation tells them apart.
  EXPECT_EQ(after(u"<DIV><A>1</A><DIV>2</DIV>3</DIV>\n", u"  </DIV>\r\n  3\r\n</DIV>", u"  </DIV>"),
            "<DIV><A>1</A><DIV>2</DIV>\n");
  // The next line has changed too, and begins like this one.
  EXPECT_EQ(
      after(u"<DIV>\n <P>one</P>\n\n  <P>only</P></DIV>", u"  <P>one</P>\r\n  <P>only", u"  <P>on new ly"),
      "<DIV>\n\n  <P>on new ly</P></DIV>");
}

TEST(SourceText, ALineTakenOutWithTheStartOfTheNextLeavesNoIndentation) {
  EXPECT_EQ(after(u"<UL><LI>a</LI><DIV>one two</DIV></UL>", u"  <DIV>\r\n    one ", u"    "),
            "<UL><LI>a</LI>two</DIV></UL>");
  EXPECT_EQ(after(u"<UL><LI>a b</LI>\n<LI>c</LI>\n\n<LI>d e</LI></UL>", u" b</LI>\r\n  <LI>c</LI>\r\n  <LI>d",
                  u"\r\n  "),
            "<UL><LI>a\n\n e</LI></UL>");
}

TEST(SourceText, LinesThatAreJoinedAreJoined) {
  EXPECT_EQ(
      after(u"<P>one\n<SPAN>two</SPAN></P>", u"one\r\n<SPAN>\r\n  two\r\n</SPAN>", u"one<SPAN>two</SPAN>"),
      "<P>one<SPAN>two</SPAN></P>");
}

TEST(SourceText, ALineThatIsDividedIsDivided) {
  EXPECT_EQ(after(u"<P>one\n two three</P>\n\n<P>four</P>", u"one two three", u"one two</P>\r\n<P>three"),
            "<P>one\n two</P>\n<P>three</P>\n\n<P>four</P>");
}

TEST(SourceText, BothSidesOfALineBreakCanChange) {
  EXPECT_EQ(after(u"<P>one</P>\n\n  <P>two</P>", u"one</P>\r\n<P>two", u"one</P></B>\r\n<B><P>two"),
            "<P>one</P></B>\n\n  <B><P>two</P>");
}

TEST(SourceText, AScriptOfBlanksIsNoLine) {
  EXPECT_EQ(shown(u"<SCRIPT> </SCRIPT>x"), "<SCRIPT>\r\n</SCRIPT>\r\nx\r\n");
  EXPECT_EQ(after(u"<SCRIPT> </SCRIPT>x", u"x", u"y"), "<SCRIPT> </SCRIPT>y");
}

TEST(SourceText, AnElementIsWrapped) {
  EXPECT_EQ(after(u"<P>a</P><P>b</P><P>c</P>", u"<P>b</P>", u"<DIV><P>b</P></DIV>"),
            "<P>a</P><DIV><P>b</P></DIV><P>c</P>");
  EXPECT_EQ(after(u"<UL><LI>a</LI><LI>b</LI></UL>", u"<UL>\r\n  <LI>a</LI>", u"<UL>\r\n  <LI><B>a</B></LI>"),
            "<UL><LI><B>a</B></LI><LI>b</LI></UL>");
}

TEST(SourceText, AnAttributeIsChanged) {
  EXPECT_EQ(after(u"<TABLE id=\"a\"><TBODY>\n<TR><TD>x</TD></TR></TBODY></TABLE>", u"id=\"a\"",
                  u"id=\"b\" x=\"1\""),
            "<TABLE id=\"b\" x=\"1\"><TBODY>\n<TR><TD>x</TD></TR></TBODY></TABLE>");
}

TEST(SourceText, TheUserMayWriteAllAnew) {
  EXPECT_EQ(to_utf8(source(u"<P>a</P>").markup_after(u"<H1>b</H1>\r\n<P>c</P>\r\n")), "<H1>b</H1>\n<P>c</P>");
  EXPECT_EQ(to_utf8(source(u"<PRE>a\nb</PRE>").markup_after(u"")), "");
}

TEST(SourceText, ACarriageReturnOfTheDocumentStaysOne) {
  EXPECT_EQ(after(u"<P title=\"a\rb\">c\rd</P><SCRIPT>e\rf</SCRIPT><P>g</P>", u"<P>g", u"<P>h"),
            "<P title=\"a&#13;b\">c&#13;d</P><SCRIPT>e\rf</SCRIPT><P>h</P>");
}

TEST(SourceText, AGivenTextIsShownAsItIs) {
  const auto text = SourceText::as_it_is(std::make_shared<const std::u16string>(u"<p>a\n  b\r\n<p>c\r"));
  EXPECT_EQ(to_utf8(*text.code()), "<p>a\r\n  b\r\n<p>c\r\n");
  EXPECT_EQ(to_utf8(text.markup_after(u"<p>a\r\n  bx\r\n<p>c\r\n")), "<p>a\n  bx\r\n<p>c\r");
}

}  // namespace
}  // namespace tvx::source
