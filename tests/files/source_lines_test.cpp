#include "tvx/files/source_lines.h"

#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"

namespace tvx::files {
namespace {

std::string lined(std::u16string page) { return to_utf8(with_source_lines(std::move(page))); }

TEST(SourceLines, BlocksStandOnLinesOfTheirOwn) {
  EXPECT_EQ(lined(u"<p>a <b>b</b></p><p>c<br>d</p><hr><h2>e</h2>"),
            "<p>a <b>b</b></p>\n<p>c<br>d</p>\n<hr>\n<h2>e</h2>");
}

TEST(SourceLines, ListsAndTheirItems) {
  EXPECT_EQ(lined(u"<ul><li>a</li><li>b<ol><li>c</li></ol></li></ul><p>d</p>"),
            "<ul>\n<li>a</li>\n<li>b<ol>\n<li>c</li>\n</ol></li>\n</ul>\n<p>d</p>");
}

TEST(SourceLines, ARowWithItsCellsIsALine) {
  EXPECT_EQ(
      lined(u"<table><tbody><tr><td>a</td><td><p>b</p></td></tr><tr><th>c</th></tr></tbody></table>"),
      "<table>\n<tbody>\n<tr><td>a</td><td><p>b</p></td></tr>\n<tr><th>c</th></tr>\n</tbody>\n</table>");
}

TEST(SourceLines, WhatKeepsItsLinesStays) {
  for (const char16_t* kept : {u"<pre><p>a</p><p>b</p></pre>", u"<textarea><p>a</p><p>b</p></textarea>",
                               u"<script>'</p><p>'</script>", u"<p title=\"</p><p>\">a</p>",
                               u"<!--<p>a</p><p>b</p>-->", u"<p>a</p> <p>b</p>", u"<p>a</p>text<p>b</p>",
                               u"<style>p { white-space: pre-line }</style><p>a</p><p>b</p>"})
    EXPECT_EQ(lined(kept), to_utf8(std::u16string(kept)));
}

TEST(SourceLines, OnceIsEnough) {
  const std::u16string page = u"<ul><li>a</li></ul><table><tr><td>b</td></tr></table><p>c</p><p>d</p>";
  EXPECT_EQ(lined(with_source_lines(page)), lined(page));
}

TEST(SourceLines, BrokenMarkupHarmsNobody) {
  for (const char16_t* broken :
       {u"<", u"</", u"<!--", u"<p", u"<p>a</p>b<p", u"<p a=\"", u"<pre>", u"<pre></pr", u"<>", u"</><p>"})
    EXPECT_EQ(lined(broken), to_utf8(std::u16string(broken)));
}

}  // namespace
}  // namespace tvx::files
