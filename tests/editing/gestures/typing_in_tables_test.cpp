#include "editing/editing_fixture.h"
#include "tvx/editing/gestures/typing.h"

/// What is typed where cells or rows have gone: the caret stands between those that are left.
namespace tvx::editing::test {

class TypingInTables : public EditingFixture {
 protected:
  /// Puts the caret before a child of the first element of a name: no text with marks could say that.
  void load_with_caret(std::string_view html, dom::Tag tag, Offset offset) {
    load(html);
    dom::Node* part = &host;
    while (!part->is(tag)) part = dom::next_in_order(*part, &host);
    editor.selection().collapse({part, offset});
  }
  void expect_typed(std::string_view html, dom::Tag tag, Offset offset, std::string_view after) {
    load_with_caret(html, tag, offset);
    const std::string first = marked();
    type_text(editor, u"x");
    EXPECT_EQ(marked(), after) << "from " << first;
    expect_laws(first);
  }
};

TEST_F(TypingInTables, BetweenCellsItGoesIntoTheNextOne) {
  expect_typed("<table><tr><td>a</table>", dom::Tag::Tr, 0,
               "<TABLE><TBODY><TR><TD>x[]a</TD></TR></TBODY></TABLE>");
  expect_typed("<table><tr><td>a<td></table>", dom::Tag::Tr, 1,
               "<TABLE><TBODY><TR><TD>a</TD><TD>x[]</TD></TR></TBODY></TABLE>");
}

TEST_F(TypingInTables, BehindTheLastCellItGoesOnInTheTable) {
  expect_typed("<table><tr><td>a<tr><td>b</table>", dom::Tag::Tr, 1,
               "<TABLE><TBODY><TR><TD>a</TD></TR><TR><TD>x[]b</TD></TR></TBODY></TABLE>");
  expect_typed("<table><tr><td>a</table>", dom::Tag::Tr, 1,
               "<TABLE><TBODY><TR><TD>ax[]</TD></TR></TBODY></TABLE>");
}

TEST_F(TypingInTables, BetweenRowsAndSections) {
  for (const dom::Tag part : {dom::Tag::Tbody, dom::Tag::Table})
    expect_typed("<table><tr><td>a</table>", part, 0, "<TABLE><TBODY><TR><TD>x[]a</TD></TR></TBODY></TABLE>");
}

TEST_F(TypingInTables, ATableWithoutCellsHasItBehind) {
  expect_typed("<table><tbody></table>", dom::Tag::Tbody, 0, "<TABLE><TBODY></TBODY></TABLE><P>x[]</P>");
  expect_typed("<table><tr></table>", dom::Tag::Tr, 0, "<TABLE><TBODY><TR></TR></TBODY></TABLE><P>x[]</P>");
}

TEST_F(TypingInTables, ReturnBeginsAParagraphInTheCell) {
  load_with_caret("<table><tr><td>a</table>", dom::Tag::Tr, 0);
  const std::string first = marked();
  press_enter(editor);
  EXPECT_NE(html().find("<TR><TD>"), std::string::npos) << html();
  EXPECT_NE(html().find("<P>"), std::string::npos) << html();
  expect_laws(first);
}

}  // namespace tvx::editing::test
