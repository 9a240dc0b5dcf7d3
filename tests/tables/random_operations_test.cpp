#include <functional>
#include <random>
#include <vector>

#include "tables/table_fixture.h"
#include "tvx/headless/dialogs.h"
#include "tvx/tables/cell_dialog.h"
#include "tvx/tables/structure.h"
#include "tvx/tables/table_dialog.h"

namespace tvx::tables::test {

using dom::Element;
using dom::Tag;

namespace {

constexpr std::string_view documents[] = {
    "<table><tr><td>1<td>2<tr><td>3<td>4</table>",
    "<table border=1><caption>c <b>d</b></caption><colgroup><col><col></colgroup><thead><tr><th>h<th>i<tbody>"
    "<tr><td>1<td>2<tr><td>3<td>4<tfoot><tr><td>f<td>g</table>",
    "<p>before</p><table><tr><td colspan=2>1<td rowspan=3>2<tr><td>3<td>4<tr><td rowspan=2 "
    "colspan=2>5<tr><td>6"
    "</table><p>behind</p>",
    "<table><tbody><tr><td>1<td><table><thead><tr><th>in<tbody><tr><td>a<td>b</"
    "table><tbody><tr><td>2<td><p>3</p>"
    "<ul><li>x<li>y</ul></table>",
    "<table></table><table><tr></table><table><tfoot><tr><td>f<tbody><tr><td>1</table>",
};

constexpr void (*operations[])(Element&) = {delete_cell,      delete_row,         insert_row_above,
                                            insert_row_below, insert_cell_before, insert_cell_after,
                                            merge_cell_left,  merge_cell_right,   append_row,
                                            delete_last_row,  append_column,      delete_last_column};

constexpr std::u16string_view texts[] = {u"", u"1", u"2", u"50%", u"red", u"#00FF00", u"\"", u"x y"};

/// Documents don't grow beyond this: what is inserted is taken back.
constexpr std::size_t most_elements = 150;

}  // namespace

/// Everything that can be done to tables, at random, a thousand times in each document.
class RandomOperations : public Tables, public ::testing::WithParamInterface<std::size_t> {
 protected:
  std::mt19937 random;
  headless::Dialogs dialogs;

  std::size_t pick(std::size_t count) { return random() % count; }
  std::u16string_view text() { return texts[pick(std::size(texts))]; }

  /// Any element of the body, and more often one of those that an operation is for.
  Element* target() {
    std::vector<Element*> all, fitting;
    for (Element* element : document->all()) {
      if (!dom::is_inclusive_ancestor(body(), *element) || element == &body()) continue;
      all.push_back(element);
      if (element->is(Tag::Td) || element->is(Tag::Tr) || element->is(Tag::Table)) fitting.push_back(element);
    }
    const std::vector<Element*>& from = pick(5) || fitting.empty() ? fitting : all;
    return from.empty() ? nullptr : from[pick(from.size())];
  }

  void fill(platform::Form& form) {
    for (const auto& control : form.controls())
      if (control->has_text() && pick(3) == 0) control->set_Text(text());
  }
  void table_settings(Element& table) {
    TableDialog dialog(dialogs);
    dom::TableObject object(table);
    dialog.show_settings_of(object);
    fill(dialog.form());
    dialog.write_settings_to(object);
  }
  void cell_or_row(Element& part) {
    CellDialog dialog(dialogs);
    const bool row = part.is(Tag::Tr);
    row ? dialog.set_oRow(part) : dialog.set_oCell(part);
    fill(dialog.form());
    row ? dialog.oRow() : dialog.oCell();
  }
  void act(Element& part) {
    switch (pick(12)) {
      case 0: part.is(Tag::Table) ? table_settings(part) : cell_or_row(part); break;
      case 1: journal().undo(); break;
      case 2: journal().redo(); break;
      default: operations[pick(std::size(operations))](part);
    }
  }
};

TEST_P(RandomOperations, BreakNothing) {
  load(documents[GetParam()]);
  const std::string first = html();
  expect_sound("at first");
  random.seed(20 + GetParam());
  for (int turn = 0; turn < 1000 && !HasFailure(); ++turn) {
    const dom::Ref<Element> part = target();
    // The operations on tables refuse other elements aloud.
    if (part) attempt([&] { act(*part); });
    if (document->all().size() > most_elements) journal().undo();
    expect_sound("turn " + std::to_string(turn));
  }
  const std::string last = html();
  std::size_t steps = 0;
  while (journal().undo()) ++steps;
  EXPECT_GT(steps, 100u);
  EXPECT_EQ(html(), first);
  expect_sound("undone");
  // What was undone before the end comes as well: redo goes to the very last step.
  while (steps-- > 0) journal().redo();
  EXPECT_EQ(html(), last);
  expect_sound("redone");
}

INSTANTIATE_TEST_SUITE_P(Documents, RandomOperations, ::testing::Range(std::size_t{0}, std::size(documents)));

}  // namespace tvx::tables::test
