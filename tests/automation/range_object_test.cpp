#include "automation/conversation.h"

namespace tvx::automation::test {
namespace {

class RangeObjects : public Conversation {};

TEST_F(RangeObjects, TextRangesByName) {
  set("DocumentHTML", "<p>one two</p>");
  EXPECT_EQ(object("docHTML.selection.type"), "None");
  EXPECT_EQ(object("docHTML.selection.createRange().htmlText"), "");
  object("docHTML.selection.createRange().pasteHTML('<B>x</B>')");
  EXPECT_EQ(object("docHTML.body.innerHTML"), "<B>x</B><P>one two</P>");
  EXPECT_EQ(object("docHTML.selection.createRange().parentElement().tagName"), "BODY");
  EXPECT_EQ(object("docHTML.selection.createRange().move('word')"), 1);
  EXPECT_EQ(object("docHTML.selection.createRange().findText('TWO')"), true);
  EXPECT_EQ(object("docHTML.selection.createRange().duplicate().text"), "");
  EXPECT_EQ(failure("object", {{"path", "docHTML.selection.createRange().nobody"}}), 438);
  EXPECT_EQ(failure("object", {{"path", "docHTML.selection.createRange().expand('furlong')"}}), 5);
}

TEST_F(RangeObjects, ContentIsRefusedWhereItCannotStand) {
  set("DocumentHTML", "<table><tr><td>a</table><p>b</p>");
  EXPECT_EQ(failure("object", {{"path", "docHTML.all.tags('table').item(0).innerHTML"}, {"set", "x"}}), 445);
  EXPECT_EQ(failure("object", {{"path", "docHTML.body.outerHTML"}, {"set", "x"}}), 445);
  result("object", {{"path", "docHTML.all.tags('p').item(0).outerHTML"}, {"set", "<hr>"}});
  EXPECT_EQ(object("docHTML.body.innerHTML"), "<TABLE><TBODY><TR><TD>a</TD></TR></TBODY></TABLE><HR>");
}

}  // namespace
}  // namespace tvx::automation::test
