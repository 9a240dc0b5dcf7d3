#include "tvx/editing/tables/table_grid.h"

#include "editing/editing_fixture.h"
#include "tvx/dom/inner_html.h"

namespace tvx::editing::test {
namespace {

class Grid : public EditingFixture {
 protected:
  const dom::Element& table(std::string_view html) {
    dom::set_inner_html(host, from_utf8(html));
    return *dom::first_child_element(host);
  }
};

TEST_F(Grid, ACellOfSeveralRowsAndColumnsIsInEachOfItsPlaces) {
  const TableGrid grid(
      table("<table><tr><td colspan=2 rowspan=2>a</td><td>b</td></tr><tr><td>c</td></tr></table>"));
  EXPECT_EQ(grid.rows(), 2u);
  EXPECT_EQ(grid.columns(), 3u);
  EXPECT_EQ(grid.at(0, 0), grid.at(1, 1));
  EXPECT_NE(grid.at(0, 2), grid.at(1, 2));
  EXPECT_EQ(grid.at(1, 0)->width, 2u);
  EXPECT_EQ(grid.at(1, 0)->height, 2u);
}

TEST_F(Grid, OutsideOfItThereIsNoCell) {
  const TableGrid grid(table("<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>"));
  EXPECT_NE(grid.at(1, 0), nullptr);
  EXPECT_EQ(grid.at(1, 1), nullptr) << "a row may have fewer cells than others";
  EXPECT_EQ(grid.at(2, 0), nullptr);
  EXPECT_EQ(grid.at(0, 2), nullptr);
  EXPECT_EQ(grid.of(host), nullptr);
}

}  // namespace
}  // namespace tvx::editing::test
