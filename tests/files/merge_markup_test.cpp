#include "tvx/files/merge_markup.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"

namespace tvx::files {
namespace {

std::string merged(std::u16string_view base, std::u16string_view source, std::u16string_view edited) {
  return to_utf8(merge_markup(base, source, edited));
}

TEST(MergeMarkup, WithoutAnEditGivesTheSource) {
  EXPECT_EQ(merged(u"", u"", u""), "");
  EXPECT_EQ(merged(u"<p class=\"a\">b</p>", u"<P CLASS=a>b", u"<p class=\"a\">b</p>"), "<P CLASS=a>b");
}

TEST(MergeMarkup, AWordIsChangedInItsTag) {
  EXPECT_EQ(merged(u"<p class=\"a\">one two</p>", u"<P CLASS=a>one two", u"<p class=\"a\">one three</p>"),
            "<P CLASS=a>one three");
}

TEST(MergeMarkup, TagsThatTheSourceLeavesOutStayOut) {
  EXPECT_EQ(merged(u"<html><head></head><body><p>one\n</p><p>two</p></body></html>", u"<p>one\n<p>two",
                   u"<html><head></head><body><p>one x\n</p><p>two y</p></body></html>"),
            "<p>one x\n<p>two y");
}

TEST(MergeMarkup, OneAttributeOfSeveralIsChanged) {
  EXPECT_EQ(merged(u"<a href=\"x\" title=\"y\" id=\"z\">b</a>", u"<A\n  HREF='x'\n  title=y\n  id=z\n>b</A>",
                   u"<a href=\"x\" title=\"new\" id=\"z\">b</a>"),
            "<A\n  HREF='x'\n  title=\"new\"\n  id=z\n>b</A>");
}

TEST(MergeMarkup, ReferencesStayAsTheyAreWritten) {
  EXPECT_EQ(merged(u"<p>caf\u00E9 &amp; a</p>", u"<p>caf&eacute; & a</p>", u"<p>caf\u00E9 &amp; b</p>"),
            "<p>caf&eacute; & b</p>");
}

TEST(MergeMarkup, ReferencesBesideWhatIsTypedStay) {
  EXPECT_EQ(merged(u"<p>caf\u00E9</p>", u"<p>caf&eacute;", u"<p>caf\u00E9s</p>"), "<p>caf&eacute;s");
  EXPECT_EQ(merged(u"<p>caf\u00E9</p>", u"<p>caf&eacute;", u"<p>xcaf\u00E9</p>"), "<p>xcaf&eacute;");
  EXPECT_EQ(merged(u"<p>\u00E4b\u00E9</p>", u"<p>&auml;b&eacute;", u"<p>\u00E4xb\u00E9</p>"),
            "<p>&auml;xb&eacute;");
  EXPECT_EQ(merged(u"<p>\u00E4\u00E9</p>", u"<p>&auml;&eacute;", u"<p>\u00E9</p>"), "<p>&eacute;");
  // Without its end it would be read with what follows.
  EXPECT_EQ(merged(u"<p>\u00E4</p>", u"<p>&auml", u"<p>\u00E4x</p>"), "<p>\u00E4x");
}

TEST(MergeMarkup, WithMoreBesideTheEditTagsThatCrossAreWrittenAnew) {
  const std::u16string_view base = u"<p>a</p><b></b><p><b>b</b> c</p><p>d</p>",
                            source = u"<P>a<B><P>b</B> c<P>d",
                            edited = u"<p>a</p><b></b><p><b>bx</b> c</p><p>d</p>";
  const MarkupMerge merge(base, source, edited);
  EXPECT_EQ(to_utf8(merge.run(0, 0)), "<P>a<B><P>bx</B> c<P>d");
  EXPECT_EQ(to_utf8(merge.run(2, 2)), "<P>a<B><P><b>bx</b> c<P>d");
  EXPECT_EQ(to_utf8(merge.run(99, 99)), "<p>a</p><b></b><p><b>bx</b> c</p><p>d")
      << "the last end tag, which the file leaves out, isn't brought in";
}

// A slash that ends a BR would end the P before its text, for a parser of XML.
TEST(MergeMarkup, AnotherElementInTheTagsOfABreakTakesNoSlashOver) {
  EXPECT_EQ(merged(u"<p>a<br />b<br />c</p>", u"<p>a<br/>b<br\n/>c</p>", u"<p>a</p><p>b</p><p>c</p>"),
            "<p>a</p><p>b</p><p>c</p>");
  EXPECT_EQ(merged(u"<p>a<br>b</p>", u"<p>a<br />b</p>", u"<p>a</p><p>b</p>"), "<p>a</p><p>b</p>");
  EXPECT_EQ(merged(u"<p>a<br>b</p>", u"<p>a<br />b</p>", u"<p>a c<br>b</p>"), "<p>a c<br />b</p>");
  EXPECT_EQ(merged(u"<img alt=\"x\">", u"<IMG ALT=x />", u"<img alt=\"x\" id=\"i\">"),
            "<IMG ALT=x id=\"i\" />");
}

TEST(MergeMarkup, WhatIsNewIsPutInAsItIs) {
  EXPECT_EQ(merged(u"<ul><li>a\n</li><li>b</li></ul>", u"<UL><LI>a\n<LI>b</UL>",
                   u"<ul><li>a\n</li><li>new</li><li>b</li></ul>"),
            "<UL><LI>a\n<li>new</li><LI>b</UL>");
}

}  // namespace
}  // namespace tvx::files
