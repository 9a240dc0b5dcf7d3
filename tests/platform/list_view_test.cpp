#include "tvx/platform/list_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Watch : ListViewObserver {
  std::vector<std::string> heard;
  void row_inserted(int row) override { heard.push_back("inserted " + std::to_string(row)); }
  void picture_came(int row, const std::shared_ptr<const std::string>& file) override {
    heard.push_back("picture " + std::to_string(row) + " " + *file);
  }
  void rows_replaced() override { heard.push_back("replaced"); }
  void columns_changed() override { heard.push_back("columns"); }
  void selection_changed() override { heard.push_back("selection"); }
  void note_changed() override { heard.push_back("note"); }
};

struct User : ListViewHandler {
  std::vector<std::string> heard;
  bool takes = true;
  void ColumnClick(ListView&, int column) override { heard.push_back("column " + std::to_string(column)); }
  void DblClick(ListView& list) override { heard.push_back("double " + std::to_string(list.selected())); }
  bool OLEDragOver(ListView&, const TransferSource&) override { return takes; }
  void OLEDragDrop(ListView&, const TransferSource& source) override {
    heard.push_back("drop " + source.read(targets::files));
  }
  void rows_seen(ListView&, int first, int last) override {
    heard.push_back("seen " + std::to_string(first) + " " + std::to_string(last));
  }
};

class ListViews : public testing::Test {
 protected:
  ListViews() {
    list.add_observer(watch);
    list.set_handler(&user);
  }
  ~ListViews() override { list.remove_observer(watch); }
  std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (int row = 0; row < list.count(); ++row) all.push_back(to_utf8(list.item(row).text));
    return all;
  }
  void fill() {
    list.add({u"b", {u"10"}});
    list.add({u"C", {u"9"}});
    list.add({u"a", {u"10"}});
    watch.heard.clear();
  }

  ListView list{{{u"Name"}, {u"Size", ColumnContent::Bytes}, {u"Key"}}};
  Watch watch;
  User user;
};

TEST_F(ListViews, RowsStandInTheirOrderUntilTheyAreSorted) {
  fill();
  EXPECT_THAT(names(), ElementsAre("b", "C", "a"));
  list.sort(0, false);
  EXPECT_THAT(names(), ElementsAre("a", "b", "C")) << "without regard to case";
  list.sort(0, true);
  EXPECT_THAT(names(), ElementsAre("C", "b", "a"));
  EXPECT_THAT(watch.heard, ElementsAre("replaced", "replaced"));
}

TEST_F(ListViews, EqualRowsStayAsTheyWere) {
  fill();
  list.sort(1, false);
  EXPECT_THAT(names(), ElementsAre("b", "a", "C")) << "as texts";
  list.sort(2, false);
  EXPECT_THAT(names(), ElementsAre("b", "a", "C")) << "a column without texts";
}

TEST_F(ListViews, ARowThatComesLaterGoesWhereItBelongs) {
  fill();
  list.sort(0, false);
  EXPECT_EQ(list.add({u"B2"}), 2);
  list.sort(0, true);
  EXPECT_EQ(list.add({u"B1"}), 2);
  EXPECT_THAT(names(), ElementsAre("C", "B2", "B1", "b", "a"));
}

TEST_F(ListViews, TheChosenRowStaysChosenWhereverItGoes) {
  fill();
  list.select(0);
  list.sort(0, false);
  EXPECT_EQ(list.selected(), 1);
  list.select(17);
  EXPECT_EQ(list.selected(), -1);
  list.select(1);
  list.clear();
  EXPECT_EQ(list.selected(), -1);
  EXPECT_EQ(list.count(), 0);
}

TEST_F(ListViews, APictureGoesToItsRow) {
  fill();
  const auto bytes = std::make_shared<const std::string>("PNG");
  list.set_picture(u"a", bytes);
  list.set_picture(u"gone", bytes);
  EXPECT_TRUE(list.item(2).has_picture);
  EXPECT_FALSE(list.item(0).has_picture);
  EXPECT_THAT(watch.heard, ElementsAre("picture 2 PNG"));
}

TEST_F(ListViews, WhatIsTheSameIsNoNews) {
  list.hide_column(2, true);
  list.hide_column(2, true);
  list.set_note(u"Nothing here", u"why");
  list.set_note(u"Nothing here", u"why");
  list.select(-1);
  EXPECT_THAT(watch.heard, ElementsAre("columns", "note"));
}

TEST_F(ListViews, TheUserClicksAndDrops) {
  fill();
  const TransferItemSource source({{std::string(targets::files), "file:///a"}});
  list.click_column(1);
  list.click_column(9);
  list.double_click(1);
  list.double_click(-1);
  EXPECT_TRUE(list.drop(source));
  user.takes = false;
  EXPECT_FALSE(list.drop(source));
  list.see_rows(0, 2);
  EXPECT_THAT(user.heard, ElementsAre("column 1", "double 1", "drop file:///a", "seen 0 2"));
  list.set_handler(nullptr);
  EXPECT_FALSE(list.drag_over(source));
}

}  // namespace
}  // namespace tvx::platform
