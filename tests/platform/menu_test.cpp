#include "tvx/platform/menu.h"
#include "support/failures.h"
#include "tvx/base/work_count.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tvx/base/error.h"
#include "tvx/base/work_count.h"

namespace tvx::platform {
namespace {

using testing::ElementsAre;

struct Clicks : MenuHandler {
  void MenuItemClick(Menu& item) override { names.push_back(name_with_index(item)); }
  std::vector<std::u16string> names;
};

struct Watch : MenuObserver {
  void item_changed(Menu& item) override { told.push_back(u"changed " + name_with_index(item)); }
  void items_replaced(Menu& menu) override { told.push_back(u"items of " + menu.Name()); }
  std::vector<std::u16string> told;
};

/// A menu with a plain item, a separator, and a submenu that holds an array.
class Menus : public testing::Test {
 protected:
  Menus() {
    menu.Add(u"mnuCut", u"Cut");
    menu.AddSeparator(u"mnuLine");
    menu.Add(u"mnuStyle", u"Style").Add(u"mnuClass", u"(none)", 0);
    menu.set_handler(&clicks);
    style = menu.find(u"mnuStyle");
  }

  Menu menu{u"mnuMisc", u"Misc"};
  Menu* style = nullptr;
  Clicks clicks;
};

TEST_F(Menus, AChoiceReachesTheHandlerOfTheTop) {
  EXPECT_TRUE(menu.find(u"mnucut")->choose());
  EXPECT_TRUE(menu.find(u"mnuClass", 0)->choose());
  EXPECT_THAT(clicks.names, ElementsAre(u"mnuCut", u"mnuClass(0)"));
}

TEST_F(Menus, SeparatorsSubmenusAndWhatCannotBeSeenDoNotAnswer) {
  EXPECT_FALSE(menu.choose());
  EXPECT_FALSE(menu.find(u"mnuLine")->choose());
  EXPECT_FALSE(style->choose());
  menu.find(u"mnuCut")->set_Enabled(false);
  EXPECT_FALSE(menu.find(u"mnuCut")->choose());
  style->set_Visible(false);
  EXPECT_FALSE(menu.find(u"mnuClass", 0)->choose());
  EXPECT_TRUE(clicks.names.empty());
}

TEST_F(Menus, ATopMenusVisibleHasNoEffectOnItsItems) {
  menu.set_Visible(false);
  menu.set_Enabled(false);
  EXPECT_TRUE(menu.has_visible_item());
  EXPECT_TRUE(menu.find(u"mnuCut")->choose());
}

TEST_F(Menus, OnlyLinesAreNothingToChooseFrom) {
  menu.find(u"mnuCut")->set_Visible(false);
  EXPECT_TRUE(menu.has_visible_item());
  style->set_Visible(false);
  EXPECT_FALSE(menu.has_visible_item());
}

TEST_F(Menus, ArraysGrowBehindTheirLastItemWithGaps) {
  menu.find(u"mnuStyle")->Add(u"mnuLast", u"Last");
  style->Item(u"mnuClass", 0).set_Checked(true);
  Menu& second = style->Load(u"mnuClass", 2);
  EXPECT_EQ(second.Caption(), u"(none)");
  EXPECT_TRUE(second.Checked());
  EXPECT_FALSE(second.Visible());
  style->Load(u"mnuclass", 3);
  EXPECT_EQ(style->UBound(u"mnuClass"), 3);
  std::vector<std::u16string> names;
  for (const auto& item : style->items()) names.push_back(name_with_index(*item));
  EXPECT_THAT(names, ElementsAre(u"mnuClass(0)", u"mnuClass(2)", u"mnuClass(3)", u"mnuLast"));
  EXPECT_EQ(number_of_failure([&] { style->Load(u"mnuClass", 3); }), 360);
  EXPECT_EQ(number_of_failure([&] { style->Item(u"mnuClass", 1); }), 340);
  style->Unload(u"mnuClass", 3);
  EXPECT_EQ(style->UBound(u"mnuClass"), 2);
  EXPECT_EQ(number_of_failure([&] { style->Unload(u"mnuClass", 3); }), 340);
}

TEST_F(Menus, ALongArrayCostsNoMoreAnItemThanAShortOne) {
  const auto cost = [&](int items) {
    const std::uint64_t before = work_done;
    for (int i = 1; i <= items; ++i) style->Load(u"mnuClass", i);
    EXPECT_EQ(style->items().size(), static_cast<std::size_t>(items) + 1);
    while (const int last = style->UBound(u"mnuClass")) style->Unload(u"mnuClass", last);
    return work_done - before;
  };
  EXPECT_LT(cost(10'000), 15 * cost(1'000));
}

TEST_F(Menus, TheFirstOfAnArrayStays) {
  EXPECT_EQ(number_of_failure([&] { style->Unload(u"mnuClass", 0); }), 362);
  EXPECT_EQ(style->items().size(), 1u);
  EXPECT_EQ(number_of_failure([&] { style->UBound(u"mnuLast"); }), 340);
  EXPECT_EQ(number_of_failure([&] { menu.Load(u"mnuCut", 1); }), 340) << "no array";
}

TEST_F(Menus, ObserversOfTheTopHearOfEverythingBelow) {
  Watch watch;
  menu.add_observer(watch);
  Menu& item = *menu.find(u"mnuClass", 0);
  item.set_Caption(u"None");
  item.set_Caption(u"None");
  item.set_Enabled(false);
  item.set_Visible(false);
  item.set_Checked(true);
  style->Load(u"mnuClass", 1);
  style->Unload(u"mnuClass", 1);
  EXPECT_THAT(watch.told, ElementsAre(u"changed mnuClass(0)", u"changed mnuClass(0)", u"changed mnuClass(0)",
                                      u"changed mnuClass(0)", u"items of mnuStyle", u"items of mnuStyle"));
  menu.remove_observer(watch);
  item.set_Checked(false);
  EXPECT_EQ(watch.told.size(), 6u);
}

}  // namespace
}  // namespace tvx::platform
