#include "editing/editing_fixture.h"

namespace tvx::editing::test {

class BlockCommands : public EditingFixture {
 protected:
  static std::string repeated(std::string_view part, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += part;
    return text;
  }
};

// The layout of a source that was written by hand is no line that could be in a list or not.
TEST_F(BlockCommands, ListsGoOffThoughWhiteSpaceStandsBetweenThem) {
  load("<ul>\n<li>[a</li>\n</ul>\n<!-- x -->\n<ul><li>b]</li></ul>\n");
  EXPECT_TRUE(editor.state(u"insertUnorderedList"));
  EXPECT_FALSE(editor.indeterminate(u"insertUnorderedList"));
  expect_edit("<ul><li>[a</li></ul>\n<ul><li>b]</li></ul>", {"insertUnorderedList"}, "<P>[a</P>\n<P>b]</P>");
  load("<ul><li>[a</li></ul>\nline\n<ul><li>b]</li></ul>");
  EXPECT_FALSE(editor.state(u"insertUnorderedList")) << "a line that is seen counts";
  EXPECT_TRUE(editor.indeterminate(u"insertUnorderedList"));
}

TEST_F(BlockCommands, FormatBlock) {
  expect_edit("<p>[a]</p>", {"formatBlock", "<h2>"}, "<H2>[a]</H2>");
  expect_edit("<p>[a</p><p>b]</p>", {"formatBlock", "h2"}, "<H2>[a<BR>b]</H2>");
  load("<p>[a]</p>");
  EXPECT_FALSE(run({"formatBlock", "table"}));
  EXPECT_EQ(editor.value(u"formatblock"), u"p");
}

TEST_F(BlockCommands, AlignmentIsSetAndTold) {
  expect_edit("<p>[a]</p>", {"justifyCenter"}, "<DIV style=\"text-align: center\"><P>[a]</P></DIV>");
  EXPECT_TRUE(editor.state(u"justifyCenter"));
  EXPECT_EQ(editor.value(u"justifyLeft"), u"center");
}

TEST_F(BlockCommands, SelectionsMayBeMixed) {
  load("<p>[a</p><h1>b]</h1>");
  EXPECT_TRUE(editor.indeterminate(u"formatblock"));
  load("<ol><li>[a</li></ol><p>b]</p>");
  EXPECT_TRUE(editor.indeterminate(u"insertOrderedList"));
  EXPECT_FALSE(editor.state(u"insertOrderedList"));
}

// What is long is worked through once, not once for each of its lines.
TEST_F(BlockCommands, LongSelectionsAreTakenBackWhole) {
  const std::string before = "{" + repeated("<p>line</p>", 1500) + "}";
  for (const char* command : {"insertOrderedList", "indent", "justifyCenter", "delete"}) {
    load(before);
    const std::string first = marked();
    EXPECT_TRUE(run({command}));
    expect_laws(first);
  }
  load(before);
  EXPECT_TRUE(run({"formatblock", "h3"}));
  EXPECT_EQ(html().find("<P>"), std::string::npos);
}

}  // namespace tvx::editing::test
