#include "editing/deletion.h"

#include "editing/editing_fixture.h"

namespace tvx::editing::test {

class Deletion : public EditingFixture {};

TEST_F(Deletion, CanonicalSpacesAlternate) {
  EXPECT_EQ(canonical_spaces(0, true, true), u"");
  EXPECT_EQ(canonical_spaces(1, false, false), u" ");
  EXPECT_EQ(canonical_spaces(1, true, false), u"\u00A0");
  EXPECT_EQ(canonical_spaces(2, false, false), u"\u00A0 ");
  EXPECT_EQ(canonical_spaces(2, false, true), u" \u00A0");
  EXPECT_EQ(canonical_spaces(3, false, false), u" \u00A0 ");
  EXPECT_EQ(canonical_spaces(3, true, true), u"\u00A0 \u00A0");
  EXPECT_EQ(canonical_spaces(5, false, false), u" \u00A0 \u00A0 ");
}

TEST_F(Deletion, TextAndWrappers) {
  expect_edit("<p>f[o]o</p>", {"delete"}, "<P>f[]o</P>");
  expect_edit("<p>foo<b>[bar]</b>baz</p>", {"delete"}, "<P>foo{}baz</P>");
  expect_edit("<p>[foo]</p>", {"delete"}, "<P>{}<BR></P>");
}

TEST_F(Deletion, BlocksMerge) {
  expect_edit("<p>fo[o</p><pre>b]ar</pre>", {"delete"}, "<P>fo{}ar</P>");
  expect_edit("<p>a[</p><div><p>b</p><p>c]d</p></div>", {"delete"}, "<P>a{}d</P>");
  expect_edit("<ol><li>a[b</li></ol><p>x</p><ol><li>c]d</li><li>e</li></ol>", {"delete"},
              "<OL><LI>a{}d</LI><LI>e</LI></OL>");
}

TEST_F(Deletion, TablesKeepTheirStructure) {
  expect_edit("<table><tbody><tr><td>a[b</td><td>c]d</td></tr></tbody></table>", {"delete"},
              "<TABLE><TBODY><TR><TD>a[]</TD><TD>d</TD></TR></TBODY></TABLE>");
}

TEST_F(Deletion, TheLookOfWhatWentIsTypedNext) {
  load("<p>foo<b>[bar]</b></p>");
  run({"delete"});
  run({"inserttext", "x"});
  EXPECT_EQ(marked(), "<P>foo<B>x[]</B></P>");
}

}  // namespace tvx::editing::test
