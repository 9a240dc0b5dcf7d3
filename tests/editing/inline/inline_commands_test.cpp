#include "editing/editing_fixture.h"

namespace tvx::editing::test {

using InlineCommands = EditingFixture;

TEST_F(InlineCommands, CssModeMakesStyles) {
  editor.set_style_with_css(true);
  expect_edit("[one]", {"bold"}, "<SPAN style=\"font-weight: bold\">[one]</SPAN>");
}

TEST_F(InlineCommands, BackwardSelectionsStayBackward) {
  load("<P>o]n[e</P>");
  ASSERT_TRUE(run({"bold"}));
  EXPECT_EQ(html(), "<P>o<B>n</B>e</P>");
  const Selection& selection = editor.selection();
  EXPECT_EQ(selection.range().start, selection.focus());
  EXPECT_EQ(selection.range().end, selection.anchor());
}

TEST_F(InlineCommands, WhatIsNoColourIsRefused) {
  load("[one]");
  for (const char* value : {"potato", "currentColor", ""}) EXPECT_FALSE(run({"foreColor", value})) << value;
  EXPECT_EQ(html(), "one");
  EXPECT_FALSE(document->journal().can_undo());
}

TEST_F(InlineCommands, FontSizesAreNumbersFromOneToSeven) {
  expect_edit("[one]", {"fontSize", "4"}, "<FONT size=\"4\">[one]</FONT>");
  expect_edit("[one]", {"fontSize", "+2"}, "<FONT size=\"5\">[one]</FONT>");
  expect_edit("[one]", {"fontSize", "-9"}, "<FONT size=\"1\">[one]</FONT>");
  expect_edit("[one]", {"fontSize", " 99 "}, "<FONT size=\"7\">[one]</FONT>");
  load("[one]");
  for (const char* value : {"", "big", "4px", "+-3"}) EXPECT_FALSE(run({"fontSize", value})) << value;
}

TEST_F(InlineCommands, FontSizeAnswersInTheSameNumbers) {
  load("<FONT size=\"6\">o[n]e</FONT>");
  EXPECT_EQ(editor.value(u"fontSize"), u"6");
  load("o[n]e");
  EXPECT_EQ(editor.value(u"fontSize"), u"3");
}

TEST_F(InlineCommands, SubscriptAndSuperscriptExcludeEachOther) {
  expect_edit("a<SUP>[b]</SUP>", {"subscript"}, "a<SUB>[b]</SUB>");
  load("a<SUP><SUB>[b]</SUB></SUP>");
  EXPECT_TRUE(editor.indeterminate(u"subscript"));
  EXPECT_FALSE(editor.state(u"subscript"));
  EXPECT_FALSE(editor.state(u"superscript"));
}

TEST_F(InlineCommands, UnderlineAndStrikethroughKeepEachOther) {
  editor.set_style_with_css(true);
  expect_edit("<SPAN style=\"text-decoration: underline line-through\">[one]</SPAN>", {"underline"},
              "<SPAN style=\"text-decoration: line-through\">[one]</SPAN>");
}

TEST_F(InlineCommands, StatesOfAPartlyBoldSelection) {
  load("[one<B>two]</B>");
  EXPECT_FALSE(editor.state(u"BOLD"));
  EXPECT_TRUE(editor.indeterminate(u"Bold"));
  load("<B>[two]</B>");
  EXPECT_TRUE(editor.state(u"bold"));
  EXPECT_FALSE(editor.indeterminate(u"bold"));
}

TEST_F(InlineCommands, DeepNestingNeedsNoDeepStack) {
  std::string open, close;
  for (int i = 0; i < 200; ++i) open += "<SPAN title=\"x\">", close += "</SPAN>";
  const std::string content = std::string("{").append(open).append("a").append(close).append("b}");
  load(content);
  run({"bold"});
  EXPECT_TRUE(html() == std::string("<B>").append(open).append("a").append(close).append("b</B>"));
}

}  // namespace tvx::editing::test
