#include "tvx/source/untouched.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/source/preparation.h"

namespace tvx::source {
namespace {

/// What comes back of `original` when the user replaces `find` in its code.
std::string after(std::u16string_view original, std::u16string_view find, std::u16string_view replacement) {
  const std::u16string entered = with_crlf(code_of(original));
  const std::u16string left = ReplaceAll(find, replacement, entered, true);
  return to_utf8(with_original_lines(original, entered, left));
}

TEST(Untouched, PreformattedLinesComeBackToTheLetter) {
  EXPECT_EQ(after(u"<DIV><PRE>a\n\n   b</PRE></DIV><P>c</P>", u"c", u"d"),
            "<DIV>\r\n  <PRE>a\n\n   b</PRE>\r\n</DIV>\r\n<P>d</P>\r\n");
}

TEST(Untouched, ScriptsComeBackToTheLetterOnBothSidesOfTheChange) {
  EXPECT_EQ(after(u"<SCRIPT>a('<TABLE>')\n  b</SCRIPT>x<SCRIPT>if (a<b)\n\nc</SCRIPT>", u"x", u"y"),
            "<SCRIPT>a('<TABLE>')\n  b</SCRIPT>\r\n  y\r\n  <SCRIPT>if (a<b)\n\nc</SCRIPT>\r\n");
}

TEST(Untouched, CommentsComeBackToTheLetter) {
  EXPECT_EQ(after(u"<!-- a\n  b --><P>c</P>", u"c", u"d"), "<!-- a\n  b -->\r\n<P>d</P>\r\n");
}

TEST(Untouched, TheUsersWorkInPreformattedLinesLosesTheIndentOnly) {
  EXPECT_EQ(after(u"<DIV><PRE>a\n   b\nc</PRE></DIV>", u"   b", u"   B\r\n  new"),
            "<DIV>\r\n  <PRE>a\r\n   B\r\nnew\r\nc</PRE>\r\n</DIV>\r\n");
}

TEST(Untouched, WhatTheUserBringsComesAsItIs) {
  EXPECT_EQ(after(u"<P>a</P>", u"<P>a</P>", u"<DIV><PRE>x\r\n  y</PRE></DIV>"),
            "<DIV><PRE>x\r\n  y</PRE></DIV>\r\n");
}

TEST(Untouched, AChangedTagLeavesItsContentAsItIs) {
  EXPECT_EQ(after(u"<DIV><PRE>a\nb</PRE></DIV>", u"PRE>", u"XMP>"),
            "<DIV>\r\n  <XMP>a\r\n  b</XMP>\r\n</DIV>\r\n");
}

TEST(Untouched, NothingLeftIsNothing) {
  const std::u16string entered = code_of(u"<PRE>a\nb</PRE>");
  EXPECT_EQ(with_original_lines(u"<PRE>a\nb</PRE>", entered, u""), u"");
}

}  // namespace
}  // namespace tvx::source
