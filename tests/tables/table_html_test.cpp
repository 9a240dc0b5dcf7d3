#include "tvx/tables/table_html.h"

#include <gtest/gtest.h>

#include "support/failures.h"
#include "tvx/base/error.h"

namespace tvx::tables {
namespace {

/// The dialog's fields as they are at first.
NewTable usual() {
  return {.rows = u"1", .columns = u"4", .width = u"", .cell_spacing = u"0", .border = u"1"};
}

std::u16string with(std::u16string_view rows, std::u16string_view columns) {
  NewTable table;
  table.rows = rows;
  table.columns = columns;
  return html_of(table);
}

int failure(std::u16string_view rows, std::u16string_view columns) {
  return number_of_failure([&] { with(rows, columns); });
}

TEST(TableHtml, TheDefaultsMakeOneRowOfFourCells) {
  EXPECT_EQ(html_of(usual()),
            u"<TABLE cellSpacing=0% border=1%><TR><TD></TD><TD></TD><TD></TD><TD></TD></TR></TABLE>");
}

TEST(TableHtml, AttributesComeInTheirOrderWithoutQuotationMarks) {
  NewTable table = usual();
  table.columns = u"1";
  table.width = u"50";
  table.border_colour = u"#FF0000";
  table.background = u"light blue";
  table.cell_border_colour = u"green";
  table.cell_background = u"#00FF00";
  EXPECT_EQ(html_of(table),
            u"<TABLE width=50% cellSpacing=0% border=1% bordercolor=#FF0000 bgcolor=light blue>"
            u"<TR><TD bordercolor=green bgcolor=#00FF00></TD></TR></TABLE>");
}

TEST(TableHtml, EmptyFieldsMakeNoAttributes) {
  EXPECT_EQ(with(u"1", u"1"), u"<TABLE><TR><TD></TD></TR></TABLE>");
}

TEST(TableHtml, WhatIsNoNumberMakesNoRows) {
  EXPECT_EQ(with(u"two", u"3"), u"<TABLE></TABLE>");
  EXPECT_EQ(with(u"", u"3"), u"<TABLE></TABLE>");
  EXPECT_EQ(with(u"0", u"3"), u"<TABLE></TABLE>");
  EXPECT_EQ(with(u"-5", u"3"), u"<TABLE></TABLE>");
  EXPECT_EQ(with(u"2", u"none"), u"<TABLE><TR></TR><TR></TR></TABLE>");
}

// Less one, then to the nearest, halves to the even: 2.5 counts to 2, from 0 on.
TEST(TableHtml, FractionsAreRoundedAfterOneIsTaken) {
  const std::u16string row = u"<TR></TR>";
  EXPECT_EQ(with(u"2.5", u"0"), u"<TABLE>" + row + row + row + u"</TABLE>");
  EXPECT_EQ(with(u"1.5", u"0"), u"<TABLE>" + row + u"</TABLE>");
  EXPECT_EQ(with(u"1.6", u"0"), u"<TABLE>" + row + row + u"</TABLE>");
  EXPECT_EQ(with(u"0.5", u"0"), u"<TABLE>" + row + u"</TABLE>") << "minus a half counts to 0";
  EXPECT_EQ(with(u"3 rows", u"0"), u"<TABLE>" + row + row + row + u"</TABLE>");
}

TEST(TableHtml, NumbersBeyondSixteenBitsFail) {
  EXPECT_EQ(failure(u"32769", u"1"), errors::overflow);
  EXPECT_EQ(failure(u"1", u"40000"), errors::overflow);
  EXPECT_EQ(failure(u"-32768", u"1"), errors::overflow) << "one less is too little";
  EXPECT_EQ(failure(u"32768", u"0"), 0);
  EXPECT_EQ(failure(u"0", u"40000"), 0) << "without rows nobody looks at the columns";
}

TEST(TableHtml, ATableThatNoTextCanHoldFails) {
  EXPECT_EQ(failure(u"32768", u"32768"), 7);
  EXPECT_EQ(failure(u"1", u"32768"), 0);
}

}  // namespace
}  // namespace tvx::tables
