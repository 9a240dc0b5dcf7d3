#include "tvx/source/code_completion.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tvx::source {
namespace {

/// What is offered first for the name that ends the source.
std::string first(std::u16string_view source) {
  const Completion completion = completion_at(source, source.size());
  const std::u16string_view written = source.substr(completion.from);
  const auto found = std::ranges::find_if(
      completion.names, [&](std::u16string_view name) { return name.starts_with(written); });
  return found == completion.names.end() ? std::string() : to_utf8(*found);
}

TEST(CodeCompletion, WhatPagesHaveMostOfComesFirst) {
  EXPECT_EQ(first(u"<di"), "div");
  EXPECT_EQ(first(u"<st"), "strong");
  EXPECT_EQ(first(u"<p c"), "class");
  EXPECT_EQ(first(u"<a h"), "href");
}

TEST(CodeCompletion, ANameThatIsWrittenIsTheFirst) {
  EXPECT_EQ(first(u"<b"), "b");
  EXPECT_EQ(first(u"<dialog"), "dialog");
}

TEST(CodeCompletion, CharactersHaveNames) {
  EXPECT_EQ(first(u"a &nb"), "nbsp;");
  EXPECT_EQ(first(u"&ea"), "eacute;");
  EXPECT_EQ(first(u"&Ea"), "Eacute;");
  EXPECT_EQ(first(u"<p title=\"&nd"), "ndash;");
  EXPECT_EQ(first(u"&"), "") << "most that are typed stand for themselves";
  EXPECT_EQ(first(u"AT&T"), "") << "who goes on to the next line by Return means no character";
  EXPECT_EQ(first(u"AT&T p"), "");
}

TEST(CodeCompletion, AttributesWantValuesUnlessTheirNameSaysAll) {
  EXPECT_TRUE(completion_at(u"<p c", 4).of_attributes);
  EXPECT_FALSE(completion_at(u"<p", 2).of_attributes);
  EXPECT_TRUE(wants_value(u"class"));
  EXPECT_FALSE(wants_value(u"disabled"));
}

}  // namespace
}  // namespace tvx::source
