#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "support/failures.h"
#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/core/htmled.h"
#include "tvx/headless/container.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/property_bag.h"
#include "tvx/headless/virtual_time_loop.h"
#include "tvx/library/members/dispatch.h"
#include "tvx/library/members/member_table.h"
#include "tvx/library/members/reference.h"

/// What the page that is written from the description says, against what a control answers.
namespace tvx::library {
namespace {

/// A row of one of the page's tables, without the bars around its cells.
using Row = std::vector<std::string>;

std::string plain(std::string cell) {
  std::erase(cell, '`');
  const std::size_t first = cell.find_first_not_of(' ');
  return first == cell.npos ? "" : cell.substr(first, cell.find_last_not_of(' ') + 1 - first);
}

std::vector<Row> rows_below(const std::string& title) {
  const std::string page = reference();
  std::istringstream lines(page.substr(page.find("\n## " + title + "\n")));
  std::vector<Row> rows;
  for (std::string line; std::getline(lines, line) && (rows.empty() || line.starts_with('|'));) {
    if (!line.starts_with("| ") || line.starts_with("| No.")) continue;
    std::istringstream cells(line.substr(1));
    rows.emplace_back();
    for (std::string cell; std::getline(cells, cell, '|');) rows.back().push_back(plain(cell));
  }
  return rows;
}

/// The names of a paragraph that follows these words.
std::vector<std::u16string> names_after(const std::string& words) {
  const std::string page = reference();
  const std::size_t start = page.find(words) + words.size();
  std::istringstream names(page.substr(start, page.find(".\n", start) - start));
  std::vector<std::u16string> found;
  for (std::string name; std::getline(names >> std::ws, name, ',');) found.push_back(from_utf8(plain(name)));
  return found;
}

std::string type_of(const Value& value) {
  if (value.is_null() || value.is_object()) return "object";
  if (value.is_text()) return "string";
  return std::holds_alternative<bool>(value.data()) ? "boolean" : "number";
}

std::string expected_type(const std::string& type) {
  if (type == "string" || type == "boolean") return type;
  const bool is_number =
      type.ends_with("number") ||
      std::ranges::find(enumerations(), from_utf8(type), &Enumeration::name) != enumerations().end();
  return is_number ? "number" : "object";
}

/// As the page writes a default.
std::string text_of(const Value& value, const std::string& type) {
  if (value.is_text()) return "\"" + to_utf8(value.to_text()) + "\"";
  if (const bool* flag = std::get_if<bool>(&value.data())) return *flag ? "true" : "false";
  const auto enumeration = std::ranges::find(enumerations(), from_utf8(type), &Enumeration::name);
  const std::string number = to_utf8(value.to_text());
  if (enumeration == enumerations().end()) return number;
  const auto member =
      std::ranges::find(enumeration->members, value.to_integer32(), &EnumerationMember::number);
  return to_utf8(member->name) + " (" + number + ")";
}

class Description : public testing::Test {
 protected:
  std::shared_ptr<core::HTMLed> make(headless::Container& in) {
    auto made = core::HTMLed::create({loop, in, dialogs});
    made->UserControl_Initialize();
    made->UserControl_InitProperties();
    return made;
  }

  headless::VirtualTimeLoop loop;
  headless::Container designer{false}, form{true};
  headless::Dialogs dialogs;
};

TEST_F(Description, PropertiesHaveTheTypesAndDefaultsThatThePageGives) {
  const auto control = make(designer);
  const std::vector<Row> rows = rows_below("Properties");
  ASSERT_GT(rows.size(), 50u);
  for (const Row& row : rows) {
    const Value value = get_property(*control, from_utf8(row[1]));
    EXPECT_EQ(type_of(value), expected_type(row[2])) << row[1];
    if (!row[3].empty()) {
      EXPECT_EQ(text_of(value, row[2]), row[3]) << row[1];
    }
  }
}

TEST_F(Description, PropertiesCanBeSetWhereThePageSaysSo) {
  const auto designed = make(designer), running = make(form);
  for (const Row& row : rows_below("Properties")) {
    const std::u16string name = from_utf8(row[1]);
    const Value value = find_member(name)->initial.value();
    const int in_designer = number_of_failure([&] { set_property(*designed, name, value); });
    const int in_form = row[5] == "yes" ? 0 : number_of_failure([&] { set_property(*running, name, value); });
    std::string answer = "yes";
    if (in_form == 383)
      answer = "no: 383";
    else if (in_form == 382 && in_designer == 0)
      answer = "at design time; at run time 382";
    else if (in_form != 0)
      answer = "no: " + std::to_string(in_form) + ", at design time " + std::to_string(in_designer);
    EXPECT_EQ(answer, row[5]) << row[1];
  }
}

TEST_F(Description, TheContainerHearsTheKeyThatThePageGives) {
  const auto control = make(designer);
  for (const Row& row : rows_below("Properties")) {
    if (row[5] != "yes") continue;
    designer.clear_changed();
    set_property(*control, from_utf8(row[1]), find_member(from_utf8(row[1]))->initial.value());
    EXPECT_EQ(designer.changed(), std::vector<std::u16string>{from_utf8(row[4])}) << row[1];
  }
}

TEST_F(Description, TheStoreIsReadAndWrittenInTheOrdersOfThePage) {
  struct Reading : headless::PropertyBag {
    mutable std::vector<std::u16string> read;
    platform::PropertyValue ReadProperty(std::u16string_view key,
                                         const platform::PropertyValue& otherwise) const override {
      read.emplace_back(key);
      return otherwise;
    }
  } bag;
  const auto control = make(designer);
  control->UserControl_ReadProperties(bag);
  EXPECT_EQ(bag.read, names_after("Reading goes:\n\n"));
  control->set_RemoteContent(2);
  control->set_AutoFormat(true);
  control->UserControl_WriteProperties(bag);
  EXPECT_EQ(bag.written(), names_after("Writing goes:\n\n"));
}

TEST_F(Description, OperationsTakeAsManyArgumentsAsThePageLists) {
  const auto control = make(designer);
  for (const Row& row : rows_below("Operations")) {
    const std::string name = row[1].substr(0, row[1].find(' '));
    const std::size_t most = name == row[1] ? 0 : std::size_t(std::ranges::count(row[1], ',')) + 1;
    Values too_many(most + 1, Value(1));
    EXPECT_EQ(number_of_failure([&] { call_method(*control, from_utf8(name), too_many); }), 450) << name;
    if (most == 0 || row[1].find('[') != std::string::npos) continue;
    Values too_few(most - 1, Value(1));
    EXPECT_EQ(number_of_failure([&] { call_method(*control, from_utf8(name), too_few); }), 450) << name;
  }
}

}  // namespace
}  // namespace tvx::library
