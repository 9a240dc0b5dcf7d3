#include "tvx/editing/tables/table_edit.h"

#include <map>
#include <random>

#include "editing/editing_fixture.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/tables/selected_cells.h"

/// Commands on tables, by the thousand, on tables with cells of every shape.
namespace tvx::editing::test {
namespace {

constexpr std::u16string_view commands[] = {
    u"insertRowAbove", u"insertRowBelow", u"insertColumnLeft", u"insertColumnRight", u"deleteRow",
    u"deleteColumn",   u"mergeCells",     u"mergeCellDown",    u"splitCell",         u"headerRow"};

class TableEdits : public EditingFixture {
 protected:
  void make_table(int number) {
    const std::size_t rows = 1 + random() % 5, columns = 1 + random() % 5;
    std::u16string html = u"<p>before</p><table>";
    if (random() % 3 == 0) html += u"<colgroup><col><col span=2></colgroup>";
    const bool sections = random() % 2 == 0;
    for (std::size_t row = 0; row < rows; ++row) {
      if (sections && row % 2 == 0) html += row == 0 ? u"<thead>" : u"<tbody>";
      html += u"<tr>";
      for (std::size_t column = 0; column < columns; ++column) html += u"<td>t</td>";
      html += u"</tr>";
    }
    html += u"</table>";
    if (number % 2) html += u"<p>after</p>";
    dom::set_inner_html(host, html);
    document->journal().clear();
  }

  dom::Element* table() {
    for (dom::Node* node = host.first_child(); node; node = dom::next_in_order(*node, &host))
      if (node->is(dom::Tag::Table)) return static_cast<dom::Element*>(node);
    return nullptr;
  }

  /// A caret in a cell, or a selection from one to another.
  void select_somewhere() {
    const TableGrid grid(*table());
    const auto any = [&]() -> dom::Element& { return *grid.cells()[random() % grid.cells().size()].cell; };
    if (random() % 2)
      select_cells(editor, any(), any());
    else
      editor.selection().collapse({&any(), 0});
  }

  /// Each slot is filled by one cell, and each row and column begins one.
  static std::string fault_of(const dom::Element& table) {
    const TableGrid grid(table);
    std::size_t filled = 0;
    for (const GridCell& cell : grid.cells()) filled += cell.height * cell.width;
    if (filled != grid.rows() * grid.columns()) return "cells overlap or leave holes";
    for (std::size_t row = 0; row < grid.rows(); ++row) {
      if (!grid.first_in_row(row, 0)) return "a row without a cell";
      for (std::size_t column = 0; column < grid.columns(); ++column)
        if (!grid.at(row, column)) return "a hole";
    }
    return {};
  }

  std::mt19937 random{20261122};
};

TEST_F(TableEdits, LeaveEveryTableRectangular) {
  std::map<std::string, int> done;
  int tables = 0, refused = 0;
  for (int operation = 0; operation < 10'000; ++operation) {
    if (operation % 25 == 0 || !table()) make_table(tables++);
    select_somewhere();
    const std::u16string_view command = commands[random() % std::size(commands)];
    const std::string before = to_utf8(dom::inner_html(host));
    const bool enabled = editor.enabled(command);
    ASSERT_EQ(editor.execute(command), enabled) << to_utf8(command);
    const std::string after = to_utf8(dom::inner_html(host));
    if (!enabled) {
      ++refused;
      ASSERT_EQ(before, after) << to_utf8(command);
      continue;
    }
    ++done[to_utf8(command)];
    if (table()) {
      ASSERT_EQ(fault_of(*table()), "") << to_utf8(command) << "\n" << before << "\n" << after;
      ASSERT_TRUE(cell_around(editor.selection().focus().node)) << to_utf8(command) << "\n" << after;
    }
    if (operation % 5 == 0) {
      ASSERT_TRUE(document->journal().undo());
      ASSERT_EQ(to_utf8(dom::inner_html(host)), before) << to_utf8(command);
      ASSERT_TRUE(document->journal().redo());
      ASSERT_EQ(to_utf8(dom::inner_html(host)), after) << to_utf8(command);
    }
  }
  std::cout << "10000 operations on " << tables << " tables, " << refused << " refused";
  for (const auto& [name, count] : done) std::cout << ", " << count << " " << name;
  std::cout << '\n';
  EXPECT_EQ(done.size(), std::size(commands));
}

// A section without a tag of its own in the source goes on without one.
TEST_F(TableEdits, ARowThatGoesTakesItsLineAlong) {
  constexpr std::string_view first = "<tr><td>[]1</td></tr>", second = "<tr><td>[]2</td></tr>";
  const auto table_of = [](std::string_view rows) {
    return "<table>\n  <tbody>" + std::string(rows) + "\n</tbody></table>";
  };
  load(table_of(std::string(first) + "\n  <tr><td>2</td></tr>"));
  ASSERT_TRUE(editor.execute(u"deleteRow"));
  EXPECT_EQ(html(), "<TABLE>\n  <TBODY><TR><TD>2</TD></TR>\n</TBODY></TABLE>");
  load(table_of("<tr><td>1</td></tr>\n  " + std::string(second)));
  ASSERT_TRUE(editor.execute(u"deleteRow"));
  EXPECT_EQ(html(), "<TABLE>\n  <TBODY><TR><TD>1</TD></TR>\n</TBODY></TABLE>");
  ASSERT_TRUE(document->journal().undo());
  EXPECT_EQ(html(), "<TABLE>\n  <TBODY><TR><TD>1</TD></TR>\n  <TR><TD>2</TD></TR>\n</TBODY></TABLE>");
}

TEST_F(TableEdits, AreRefusedOutsideOfTables) {
  load("<p>a[]b</p>");
  for (const std::u16string_view command : commands)
    EXPECT_FALSE(editor.enabled(command)) << to_utf8(command);
  EXPECT_FALSE(editor.enabled(u"selectRow"));
}

TEST_F(TableEdits, TellWhatCanBeDone) {
  const auto can = [&](const char* html, std::u16string_view command) {
    load(html);
    return editor.enabled(command);
  };
  EXPECT_FALSE(can("<table><tr><td>a[]</td></tr></table>", u"mergeCellDown"));
  EXPECT_TRUE(can("<table><tr><td>a[]</td></tr><tr><td>b</td></tr></table>", u"mergeCellDown"));
  // A cell can't reach from the head into the body.
  EXPECT_FALSE(can("<table><thead><tr><th>a[]</th></tr></thead><tbody><tr><td>b</td></tr></tbody></table>",
                   u"mergeCellDown"));
  EXPECT_FALSE(can("<table><tr><td>a[]</td><td>b</td></tr></table>", u"mergeCells"));
  EXPECT_TRUE(can("<table><tr><td>[a</td><td>b]</td></tr></table>", u"mergeCells"));
  EXPECT_FALSE(can("<table><tr><td>[a</td><td>b]</td></tr></table>", u"splitCell"));
  EXPECT_FALSE(can("<table contenteditable=\"false\"><tr><td>a[]</td></tr></table>", u"insertRowAbove"));
}

}  // namespace
}  // namespace tvx::editing::test
