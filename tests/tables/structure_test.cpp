#include "tvx/tables/structure.h"

#include "tables/table_fixture.h"

namespace tvx::tables::test {

using dom::Element;
using dom::Tag;

class Structure : public Tables {};

// --- deleting ---

TEST_F(Structure, ACellGoesByItsPlace) {
  expect("<table><tr><td>a<td id=x>b<td>c</table>", delete_cell,
         "<TABLE><TBODY><TR><TD>a</TD><TD>c</TD></TR></TBODY></TABLE>");
  expect("<table><tr><td>a<th id=x>b</table>", delete_cell,
         "<TABLE><TBODY><TR><TD>a</TD></TR></TBODY></TABLE>");
}

TEST_F(Structure, TheLastCellOfARowLeavesTheEmptyRow) {
  expect("<table><tr><td id=x>a</table>", delete_cell, "<TABLE><TBODY><TR></TR></TBODY></TABLE>");
}

TEST_F(Structure, ARowOfTheOnlyBodyGoesByItself) {
  expect("<table><tr><td>1<tr id=x><td>2<tr><td>3</table>", delete_row,
         "<TABLE><TBODY><TR><TD>1</TD></TR><TR><TD>3</TD></TR></TBODY></TABLE>");
}

// A body is addressed by the number that the row has in the whole table.
TEST_F(Structure, BehindAHeadAnotherRowOfTheBodyGoes) {
  expect("<table><thead><tr><th>h<tbody><tr id=x><td>1<tr><td>2<tr><td>3</table>", delete_row,
         "<TABLE><THEAD><TR><TH>h</TH></TR></THEAD><TBODY><TR id=\"x\"><TD>1</TD></TR><TR><TD>3</TD></TR>"
         "</TBODY></TABLE>");
}

TEST_F(Structure, BehindAHeadTheLastRowOfTheBodyStays) {
  const char* unchanged =
      "<TABLE><THEAD><TR><TH>h</TH></TR></THEAD><TBODY><TR id=\"x\"><TD>1</TD></TR></TBODY></TABLE>";
  expect(unchanged, delete_row, unchanged);
}

TEST_F(Structure, HeadsAndFeetCountTheirOwnRows) {
  expect("<table><thead><tr><th>1<tr id=x><th>2<tbody><tr><td>a</table>", delete_row,
         "<TABLE><THEAD><TR><TH>1</TH></TR></THEAD><TBODY><TR><TD>a</TD></TR></TBODY></TABLE>");
  expect("<table><tbody><tr><td>a<tr><td>b<tfoot><tr id=x><td>1<tr><td>2</table>", delete_row,
         "<TABLE><TBODY><TR><TD>a</TD></TR><TR><TD>b</TD></TR></TBODY><TFOOT><TR><TD>2</TD></TR></TFOOT>"
         "</TABLE>");
}

TEST_F(Structure, TheSecondBodyIsAddressedPastItsRows) {
  const char* unchanged =
      "<TABLE><TBODY><TR><TD>1</TD></TR><TR><TD>2</TD></TR></TBODY><TBODY><TR "
      "id=\"x\"><TD>3</TD></TR></TBODY>"
      "</TABLE>";
  expect(unchanged, delete_row, unchanged);
  expect("<table><tbody><tr><td>1<tbody><tr id=x><td>2<tr><td>3</table>", delete_row,
         "<TABLE><TBODY><TR><TD>1</TD></TR></TBODY><TBODY><TR id=\"x\"><TD>2</TD></TR></TBODY></TABLE>");
}

// --- rows above and below ---

TEST_F(Structure, ARowAboveHasAsManyCells) {
  expect("<table><tr><td>1<tr id=x bgcolor=red><td width=9>2<th>3</table>", insert_row_above,
         "<TABLE><TBODY><TR><TD>1</TD></TR><TR><TD></TD><TD></TD></TR>"
         "<TR id=\"x\" bgcolor=\"red\"><TD width=\"9\">2</TD><TH>3</TH></TR></TBODY></TABLE>");
}

TEST_F(Structure, SpansDontCountSoTheNewRowMayBeNarrower) {
  expect("<table><tr><td>1<td>2<td>3<tr id=x><td colspan=2>a<td>b</table>", insert_row_above,
         "<TABLE><TBODY><TR><TD>1</TD><TD>2</TD><TD>3</TD></TR><TR><TD></TD><TD></TD></TR>"
         "<TR id=\"x\"><TD colspan=\"2\">a</TD><TD>b</TD></TR></TBODY></TABLE>");
}

TEST_F(Structure, AboveInAHeadAndBehindOne) {
  expect("<table><thead><tr id=x><th>h<tbody><tr><td>1</table>", insert_row_above,
         "<TABLE><THEAD><TR><TD></TD></TR><TR id=\"x\"><TH>h</TH></TR></THEAD><TBODY><TR><TD>1</TD></TR>"
         "</TBODY></TABLE>");
  expect("<table><thead><tr><th>h<tbody><tr id=x><td>1<tr><td>2</table>", insert_row_above,
         "<TABLE><THEAD><TR><TH>h</TH></TR></THEAD><TBODY><TR id=\"x\"><TD>1</TD></TR><TR><TD></TD></TR>"
         "<TR><TD>2</TD></TR></TBODY></TABLE>");
}

TEST_F(Structure, AnIndexBehindTheBodyDoesNothing) {
  const char* unchanged =
      "<TABLE><THEAD><TR><TH>h</TH></TR><TR><TH>i</TH></TR></THEAD><TBODY><TR "
      "id=\"x\"><TD>1</TD></TR></TBODY>"
      "</TABLE>";
  expect(unchanged, insert_row_above, unchanged);
}

TEST_F(Structure, ARowBelow) {
  expect("<table><tr id=x><td>1<td>2<tr><td>3</table>", insert_row_below,
         "<TABLE><TBODY><TR id=\"x\"><TD>1</TD><TD>2</TD></TR><TR><TD></TD><TD></TD></TR><TR><TD>3</TD></TR>"
         "</TBODY></TABLE>");
  expect("<table><tr><td>1<tr id=x><td>2</table>", insert_row_below,
         "<TABLE><TBODY><TR><TD>1</TD></TR><TR id=\"x\"><TD>2</TD></TR><TR><TD></TD></TR></TBODY></TABLE>");
}

// The row's number in the table meets the number of rows of its section: after them all.
TEST_F(Structure, BelowWhereTheTwoCountsMeetAppends) {
  expect("<table><thead><tr><th>h<tbody><tr><td>1<tr><td>2<tr id=x><td>3</table>", insert_row_below,
         "<TABLE><THEAD><TR><TH>h</TH></TR></THEAD><TBODY><TR><TD>1</TD></TR><TR><TD>2</TD></TR>"
         "<TR id=\"x\"><TD>3</TD></TR><TR><TD></TD></TR></TBODY></TABLE>");
  expect(
      "<table><tbody><tr><td>1<tfoot><tr id=x><td>f</table>", insert_row_below,
      "<TABLE><TBODY><TR><TD>1</TD></TR></TBODY><TFOOT><TR id=\"x\"><TD>f</TD></TR><TR><TD></TD></TR></TFOOT>"
      "</TABLE>");
  expect("<table><tbody><tr><td>1<tr><td>2<tfoot><tr id=x><td>f<tr><td>g</table>", insert_row_below,
         "<TABLE><TBODY><TR><TD>1</TD></TR><TR><TD>2</TD></TR></TBODY><TFOOT><TR id=\"x\"><TD>f</TD></TR>"
         "<TR><TD>g</TD></TR><TR><TD></TD></TR></TFOOT></TABLE>");
}

TEST_F(Structure, BelowInAFootBySectionRows) {
  expect("<table><tbody><tr><td>1<tr><td>2<tr><td>3<tfoot><tr id=x><td>f<tr><td>g</table>", insert_row_below,
         "<TABLE><TBODY><TR><TD>1</TD></TR><TR><TD>2</TD></TR><TR><TD>3</TD></TR></TBODY><TFOOT>"
         "<TR id=\"x\"><TD>f</TD></TR><TR><TD></TD></TR><TR><TD>g</TD></TR></TFOOT></TABLE>");
}

TEST_F(Structure, BelowBehindAHeadPastTheEndDoesNothing) {
  const char* unchanged =
      "<TABLE><THEAD><TR><TH>h</TH></TR><TR><TH>i</TH></TR></THEAD><TBODY><TR "
      "id=\"x\"><TD>1</TD></TR></TBODY>"
      "</TABLE>";
  expect(unchanged, insert_row_below, unchanged);
}

// --- cells before and after ---

TEST_F(Structure, ACellBefore) {
  expect("<table><tr><td>1<td id=x align=right>2</table>", insert_cell_before,
         "<TABLE><TBODY><TR><TD>1</TD><TD></TD><TD id=\"x\" align=\"right\">2</TD></TR></TBODY></TABLE>");
  expect("<table><tr><th id=x>1</table>", insert_cell_before,
         "<TABLE><TBODY><TR><TD></TD><TH id=\"x\">1</TH></TR></TBODY></TABLE>");
}

TEST_F(Structure, ACellAfterTheFirstStandsAtTheEnd) {
  expect("<table><tr><td id=x>1<td>2<td>3</table>", insert_cell_after,
         "<TABLE><TBODY><TR><TD id=\"x\">1</TD><TD>2</TD><TD>3</TD><TD></TD></TR></TBODY></TABLE>");
}

TEST_F(Structure, ACellAfterTheThirdStandsBeforeTheSecond) {
  expect("<table><tr><td>1<td>2<td id=x>3</table>", insert_cell_after,
         "<TABLE><TBODY><TR><TD>1</TD><TD></TD><TD>2</TD><TD id=\"x\">3</TD></TR></TBODY></TABLE>");
}

// --- merging ---

TEST_F(Structure, MergingLeftJoinsInTheOrderOfTheCells) {
  expect("<table><tr><td>1<td id=x><b>2</b><td>3</table>", merge_cell_left,
         "<TABLE><TBODY><TR><TD colspan=\"2\">1<B>2</B></TD><TD>3</TD></TR></TBODY></TABLE>");
}

TEST_F(Structure, MergingLeftTheFirstCellLosesIt) {
  expect("<table><tr><td id=x>1<td>2</table>", merge_cell_left,
         "<TABLE><TBODY><TR><TD>2</TD></TR></TBODY></TABLE>");
}

TEST_F(Structure, MergingRight) {
  expect("<table><tr><td id=x>1<td><p>2</p><td>3</table>", merge_cell_right,
         "<TABLE><TBODY><TR><TD id=\"x\" colspan=\"2\">1<P>2</P></TD><TD>3</TD></TR></TBODY></TABLE>");
}

TEST_F(Structure, MergingRightTheLastCellSetsTheSpanOnly) {
  expect("<table><tr><td>1<td id=x>2</table>", merge_cell_right,
         "<TABLE><TBODY><TR><TD>1</TD><TD id=\"x\" colspan=\"2\">2</TD></TR></TBODY></TABLE>");
}

TEST_F(Structure, EarlierSpansAreForgotten) {
  expect("<table><tr><td id=x colspan=3>1<td colspan=4>2</table>", merge_cell_right,
         "<TABLE><TBODY><TR><TD id=\"x\" colspan=\"2\">12</TD></TR></TBODY></TABLE>");
  expect("<table><tr><td colspan=3>1<td id=x colspan=4>2</table>", merge_cell_left,
         "<TABLE><TBODY><TR><TD colspan=\"2\">12</TD></TR></TBODY></TABLE>");
}

TEST_F(Structure, TablesWithinAreMergedWhole) {
  expect(
      "<table><tr><td id=x>1<td><table><tr><td>in</table></table>", merge_cell_right,
      "<TABLE><TBODY><TR><TD id=\"x\" colspan=\"2\">1<TABLE><TBODY><TR><TD>in</TD></TR></TBODY></TABLE></TD>"
      "</TR></TBODY></TABLE>");
}

// --- what is no cell or row ---

constexpr void (*part_operations[])(Element&) = {delete_cell,      delete_row,         insert_row_above,
                                                 insert_row_below, insert_cell_before, insert_cell_after,
                                                 merge_cell_left,  merge_cell_right};

TEST_F(Structure, OtherElementsAreLeftAlone) {
  const char* unchanged = "<DIV><P id=\"x\">text</P></DIV>";
  for (const auto operation : part_operations) expect(unchanged, operation, unchanged);
}

TEST_F(Structure, RowsRightInATableAreLeftAlone) {
  load("<table></table>");
  const auto row = document->create_element(Tag::Tr);
  dom::insert(the(Tag::Table), row);
  for (const auto operation : {delete_row, insert_row_above, insert_row_below}) operation(*row);
  EXPECT_EQ(html(), "<TABLE><TR></TR></TABLE>");
}

TEST_F(Structure, WhatHasLeftTheDocumentIsLeftAlone) {
  load("<table><tr><td>1<td id=x>2</table>");
  const dom::Ref<Element> cell(x());
  delete_cell(*cell);
  const std::string after = html();
  for (const auto operation : part_operations) operation(*cell);
  EXPECT_EQ(html(), after);
  EXPECT_EQ(to_utf8(dom::outer_html(*cell)), "<TD id=\"x\" colspan=\"2\">2</TD>")
      << "merging needs no row for its last step";
}

TEST_F(Structure, AfterItsDocumentIsGoneACellRefusesQuietly) {
  load("<table><tr><td id=x>1</table>");
  const dom::Ref<Element> cell(x());
  mirror.reset();
  document = nullptr;
  for (const auto operation : part_operations) operation(*cell);
  EXPECT_EQ(failure([&] { append_row(*cell); }), errors::object_not_set);
}

// --- at the end of a table ---

TEST_F(Structure, AppendedRowsAreAsWideAsTheFirst) {
  expect("<table id=x><tr><td colspan=2>1<th>2<tr><td>3</table>", append_row,
         "<TABLE id=\"x\"><TBODY><TR><TD colspan=\"2\">1</TD><TH>2</TH></TR><TR><TD>3</TD></TR>"
         "<TR><TD></TD><TD></TD></TR></TBODY></TABLE>");
}

TEST_F(Structure, AppendedRowsComeIntoTheLastSection) {
  expect("<table id=x><thead><tr><th>1<th>2<tbody><tr><td>3<tfoot><tr><td>4</table>", append_row,
         "<TABLE id=\"x\"><THEAD><TR><TH>1</TH><TH>2</TH></TR></THEAD><TBODY><TR><TD>3</TD></TR></TBODY>"
         "<TFOOT><TR><TD>4</TD></TR><TR><TD></TD><TD></TD></TR></TFOOT></TABLE>");
}

TEST_F(Structure, ATableWithoutRowsGetsAnEmptyOneAndAFailure) {
  load("<table id=x></table>");
  EXPECT_EQ(failure([&] { append_row(x()); }), errors::object_not_set);
  EXPECT_EQ(html(), "<TABLE id=\"x\"><TBODY><TR></TR></TBODY></TABLE>");
  expect_sound("a row without cells");
  EXPECT_TRUE(journal().undo());
  EXPECT_EQ(html(), "<TABLE id=\"x\"></TABLE>");
}

TEST_F(Structure, TheLastRowGoes) {
  expect("<table id=x><tr><td>1<tr><td>2</table>", delete_last_row,
         "<TABLE id=\"x\"><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
  expect("<table id=x><tfoot><tr><td>f<tbody><tr><td>1</table>", delete_last_row,
         "<TABLE id=\"x\"><TFOOT></TFOOT><TBODY><TR><TD>1</TD></TR></TBODY></TABLE>");
  expect("<table id=x></table>", delete_last_row, "<TABLE id=\"x\"></TABLE>");
}

TEST_F(Structure, AColumnIsACellAtTheEndOfEachRow) {
  expect("<table id=x><caption>c</caption><thead><tr><th>h<tbody><tr><td>1<td>2<tr><tfoot><tr><td>f</table>",
         append_column,
         "<TABLE id=\"x\"><CAPTION>c</CAPTION><THEAD><TR><TH>h</TH><TD></TD></TR></THEAD><TBODY>"
         "<TR><TD>1</TD><TD>2</TD><TD></TD></TR><TR><TD></TD></TR></TBODY><TFOOT><TR><TD>f</TD><TD></TD></TR>"
         "</TFOOT></TABLE>");
}

TEST_F(Structure, TheLastCellOfEachRowGoesWhateverItsLength) {
  expect("<table id=x><tr><td>1<td>2<td>3<tr><td>4<tr><td>5<td rowspan=2>6</table>", delete_last_column,
         "<TABLE id=\"x\"><TBODY><TR><TD>1</TD><TD>2</TD></TR><TR></TR><TR><TD>5</TD></TR></TBODY></TABLE>");
  expect("<table id=x><tr><tr><td>1</table>", delete_last_column,
         "<TABLE id=\"x\"><TBODY><TR></TR><TR></TR></TBODY></TABLE>");
}

TEST_F(Structure, TablesWithinKeepTheirColumns) {
  expect(
      "<table id=x><tr><td><table><tr><td>in</table></table>", append_column,
      "<TABLE id=\"x\"><TBODY><TR><TD><TABLE><TBODY><TR><TD>in</TD></TR></TBODY></TABLE></TD><TD></TD></TR>"
      "</TBODY></TABLE>");
}

TEST_F(Structure, WhatIsNoTableIsRefused) {
  load("<p id=x>text");
  for (const auto operation : {append_row, delete_last_row, append_column, delete_last_column})
    EXPECT_EQ(failure([&] { operation(x()); }), errors::type_mismatch);
  EXPECT_EQ(html(), "<P id=\"x\">text</P>");
}

}  // namespace tvx::tables::test
