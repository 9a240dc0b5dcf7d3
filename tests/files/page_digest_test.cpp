#include "tvx/files/page_digest.h"

#include <gtest/gtest.h>

#include <set>

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"

namespace tvx::files {
namespace {

std::uint64_t digest(std::u16string_view page) { return page_digest(*dom::parse_document(page)); }

TEST(PageDigests, PagesThatAreWrittenOtherwiseHaveOthers) {
  const std::u16string_view pages[] = {
      u"",
      u"<!DOCTYPE html>",
      u"<!DOCTYPE html PUBLIC \"a\" \"b\">",
      u"<!DOCTYPE html PUBLIC \"ab\" \"\">",
      u"<!-- a -->",
      u"<p>",
      u"<p></p><p></p>",
      u"<div><p></p></div>",
      u"<div></div><p></p>",
      u"<p>a",
      u"<p>b",
      u"<p>aa",
      u"<p>abcdefgh",
      u"<p>abcdefghi",
      u"<p>abcdefgi",
      u"<p>\u00FEa",
      u"<p>a<b>b</b>c",
      u"<p>a<i>b</i>c",
      u"<p>ab<b></b>c",
      u"<p><b>a</b>bc",
      u"<p>a<!--b-->c",
      u"<p id=a>",
      u"<p id=b>",
      u"<p id=a id=b class=b>",
      u"<p class=b id=a>",
      u"<p class=\"\" id=ba>",
      u"<p id=\"\">a",
      u"<p>&lt;p>",
      u"<template><p>a</template>",
      u"<template><p>b</template>",
      u"<template></template><p>a",
      u"<template><template>a</template></template>",
      u"<template><template></template>a</template>",
      u"<svg><a></a></svg>",
      u"<a></a>",
  };
  std::set<std::uint64_t> digests;
  for (const std::u16string_view page : pages) {
    EXPECT_EQ(digest(page), digest(page)) << to_utf8(page);
    EXPECT_TRUE(digests.insert(digest(page)).second) << to_utf8(page);
  }
}

TEST(PageDigests, HowATextIsDividedMakesNoDifference) {
  const auto whole = dom::parse_document(u"<p>one text of many letters</p><p></p>");
  const auto divided = dom::parse_document(u"<p></p><p></p>");
  dom::Node& first = *divided->body()->first_child();
  for (const std::u16string_view part : {u"o", u"ne te", u"", u"xt of many ", u"letters"})
    dom::insert(first, divided->create_text(std::u16string(part)));
  dom::insert(*first.next_sibling(), divided->create_text(u""));
  ASSERT_EQ(dom::serialise_node(*divided), dom::serialise_node(*whole));
  EXPECT_EQ(page_digest(*divided), page_digest(*whole));
}

}  // namespace
}  // namespace tvx::files
