#include "tvx/editing/tables/table_sizes.h"

#include "editing/editing_fixture.h"
#include "tvx/base/strings.h"
#include "tvx/editing/tables/table_columns.h"
#include "tvx/editing/tables/written_width.h"

namespace tvx::editing::test {
namespace {

/// Edges of columns, dragged to another place.
class TableSizes : public EditingFixture {
 protected:
  dom::Element& named(std::u16string_view id) {
    for (dom::Node* node = &host; node; node = dom::next_in_order(*node, &host)) {
      auto* element = dom::as<dom::Element>(node);
      if (element && element->attribute_or_empty(dom::names::id) == id) return *element;
    }
    throw std::logic_error("no such element");
  }
  /// The edge between the cells "a" and "b" goes forward by `shift` in a table of 600 pixels.
  bool drag(int before, int after, int shift) {
    return size_columns(editor, {.before = &named(u"a"),
                                 .after = &named(u"b"),
                                 .before_width = before,
                                 .after_width = after,
                                 .shift = shift,
                                 .table_width = 600});
  }
  void expect_drag(const std::string& before, const std::string& after) {
    load("<P>{}x</P><TABLE>" + before + "</TABLE>");
    const std::string first = html();
    EXPECT_TRUE(drag(130, 70, 30));
    EXPECT_EQ(html(), "<P>x</P><TABLE>" + after + "</TABLE>");
    EXPECT_EQ(document->journal().depth(), 1u);
    document->journal().undo();
    EXPECT_EQ(html(), first);
    EXPECT_FALSE(document->journal().can_undo());
  }
};

TEST_F(TableSizes, WidthsStandInTheAttributesOfBothColumns) {
  expect_drag(
      "<TBODY><TR><TD id=\"a\">1</TD><TD id=\"b\" width=\"5\">2</TD><TD>3</TD></TR><TR><TD>4</TD><TD>5</TD>"
      "<TD>6</TD></TR></TBODY>",
      "<TBODY><TR><TD id=\"a\" width=\"130\">1</TD><TD id=\"b\" width=\"70\">2</TD><TD>3</TD></TR><TR><TD "
      "width=\"130\">4</TD><TD width=\"70\">5</TD><TD>6</TD></TR></TBODY>");
}

TEST_F(TableSizes, WhereTheStyleNamesTheWidthItStaysThere) {
  expect_drag(
      "<TBODY><TR><TD id=\"a\" style=\"width: 3em; color: red\">1</TD><TD id=\"b\">2</TD></TR></TBODY>",
      "<TBODY><TR><TD id=\"a\" style=\"width: 130px; color: red\">1</TD><TD id=\"b\" "
      "width=\"70\">2</TD></TR></TBODY>");
}

TEST_F(TableSizes, PercentStaysPercent) {
  expect_drag(
      "<TBODY><TR><TD id=\"a\" width=\"33.3%\">1</TD><TD id=\"b\" style=\"width: 20%\">2</TD></TR></TBODY>",
      "<TBODY><TR><TD id=\"a\" width=\"38.3%\">1</TD><TD id=\"b\" style=\"width: 15%\">2</TD></TR></TBODY>");
}

TEST_F(TableSizes, CellsOfSeveralColumnsGrowWhereTheyNameAWidth) {
  expect_drag(
      "<TBODY><TR><TD>1</TD><TD id=\"a\">2</TD><TD id=\"b\">3</TD></TR><TR><TD colspan=\"2\" "
      "width=\"200\">4</TD><TD>5</TD></TR><TR><TD colspan=\"2\">6</TD><TD>7</TD></TR><TR><TD>8</TD><TD "
      "colspan=\"2\" width=\"150\">9</TD></TR></TBODY>",
      "<TBODY><TR><TD>1</TD><TD id=\"a\" width=\"130\">2</TD><TD id=\"b\" width=\"70\">3</TD></TR><TR><TD "
      "colspan=\"2\" width=\"230\">4</TD><TD width=\"70\">5</TD></TR><TR><TD colspan=\"2\">6</TD><TD "
      "width=\"70\">7</TD></TR><TR><TD>8</TD><TD colspan=\"2\" width=\"150\">9</TD></TR></TBODY>");
}

TEST_F(TableSizes, CellsOfSeveralRowsPushTheOthersOn) {
  expect_drag(
      "<TBODY><TR><TD rowspan=\"2\">1</TD><TD id=\"a\">2</TD><TD id=\"b\">3</TD></TR><TR><TD>4</TD><TD>5</TD>"
      "</TR></TBODY>",
      "<TBODY><TR><TD rowspan=\"2\">1</TD><TD id=\"a\" width=\"130\">2</TD><TD id=\"b\" "
      "width=\"70\">3</TD></TR><TR><TD width=\"130\">4</TD><TD width=\"70\">5</TD></TR></TBODY>");
}

TEST_F(TableSizes, HeadsAndColumnElementsTakePart) {
  expect_drag(
      "<COLGROUP><COL width=\"100\"><COL></COLGROUP><THEAD><TR><TH>1</TH><TH>2</TH></TR></THEAD><TBODY><TR>"
      "<TD id=\"a\">3</TD><TD id=\"b\">4</TD></TR></TBODY>",
      "<COLGROUP><COL width=\"130\"><COL></COLGROUP><THEAD><TR><TH width=\"130\">1</TH><TH "
      "width=\"70\">2</TH></TR></THEAD><TBODY><TR><TD id=\"a\" width=\"130\">3</TD><TD id=\"b\" "
      "width=\"70\">4</TD></TR></TBODY>");
}

TEST_F(TableSizes, TablesInsideStayAsTheyAre) {
  expect_drag(
      "<TBODY><TR><TD id=\"a\"><TABLE><TBODY><TR><TD>1</TD><TD>2</TD></TR></TBODY></TABLE></TD><TD "
      "id=\"b\">3</TD></TR></TBODY>",
      "<TBODY><TR><TD id=\"a\" width=\"130\"><TABLE><TBODY><TR><TD>1</TD><TD>2</TD></TR></TBODY></TABLE></"
      "TD><TD id=\"b\" width=\"70\">3</TD></TR></TBODY>");
}

TEST_F(TableSizes, NothingIsNarrowerThanAPixel) {
  load(
      "<P>{}x</P><TABLE><TBODY><TR><TD id=\"a\">1</TD><TD id=\"b\" width=\"1%\">2</TD></TR></TBODY></TABLE>");
  EXPECT_TRUE(drag(-4, 9, 60));
  EXPECT_EQ(named(u"a").attribute_or_empty(dom::names::width), u"1");
  EXPECT_EQ(named(u"b").attribute_or_empty(dom::names::width), u"0.1%");
}

TEST_F(TableSizes, CellsThatAreNoNeighboursAreRefused) {
  load("<P>{}x</P><TABLE><TBODY><TR><TD id=\"a\">1</TD><TD>2</TD><TD id=\"b\">3</TD></TR></TBODY></TABLE>");
  EXPECT_FALSE(drag(1, 2, 3));
  load("<P>{}x</P><TABLE><TBODY><TR><TD id=\"b\">1</TD><TD id=\"a\">2</TD></TR></TBODY></TABLE>");
  EXPECT_FALSE(drag(1, 2, 3));
  load(
      "<P>{}x</P><TABLE><TBODY><TR><TD id=\"a\">1</TD></TR></TBODY></TABLE><TABLE><TBODY><TR><TD>1</TD><TD "
      "id=\"b\">2</TD></TR></TBODY></TABLE>");
  EXPECT_FALSE(drag(1, 2, 3));
  EXPECT_FALSE(document->journal().can_undo());
}

TEST_F(TableSizes, ACellThatReachesToTheEndOfItsSectionEndsThere) {
  load(
      "<P>{}x</P><TABLE id=\"t\"><THEAD><TR><TD rowspan=\"0\">1</TD><TD>2</TD></TR><TR><TD>3</TD></TR></"
      "THEAD><TBODY><TR><TD>4</TD></TR></TBODY></TABLE>");
  std::vector<std::size_t> first;
  for (const PlacedCell& cell : placed_cells(named(u"t"))) first.push_back(cell.first);
  EXPECT_EQ(first, (std::vector<std::size_t>{0, 1, 1, 0}));
}

TEST(WrittenLengths, AreReadAsTheyStand) {
  EXPECT_EQ(read_length(u" 33.5 % ")->number, 33.5);
  EXPECT_TRUE(read_length(u" 33.5 % ")->in_percent());
  EXPECT_TRUE(read_length(u"12")->in_pixels());
  EXPECT_TRUE(read_length(u"12PX")->in_pixels());
  EXPECT_EQ(read_length(u"2em")->unit, u"em");
  for (const auto* text : {u"", u"auto", u"*", u"-3", u"%", u"1e999"})
    EXPECT_TRUE(!read_length(text) || !read_length(text)->in_pixels()) << to_utf8(text);
}

TEST(WrittenLengths, PercentComeInTenths) {
  EXPECT_EQ(percent_text(50), u"50%");
  EXPECT_EQ(percent_text(33.333), u"33.3%");
  EXPECT_EQ(percent_text(-2), u"0.1%");
}

}  // namespace
}  // namespace tvx::editing::test
