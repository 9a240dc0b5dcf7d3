#include "tvx/headless/menus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tvx::headless {
namespace {

using platform::Menu;
using platform::WindowHandle;
using testing::ElementsAre;

struct Clicks : platform::MenuHandler {
  void MenuItemClick(Menu& item) override { names.push_back(platform::name_with_index(item)); }
  std::vector<std::u16string> names;
};

class PopupMenus : public testing::Test {
 protected:
  PopupMenus() {
    menu.Add(u"mnuCut", u"Cut");
    menu.Add(u"mnuStyle", u"Style").Add(u"mnuClass", u"(none)", 0);
    menu.set_handler(&clicks);
  }
  void popup() { menus.PopupMenu(menu, WindowHandle::none); }

  Menu menu{u"mnuMisc", u"Misc"};
  Clicks clicks;
  Menus menus;
};

TEST_F(PopupMenus, OneThatNobodyExpectsIsDismissed) {
  popup();
  EXPECT_THAT(menus.shown(), ElementsAre(u"mnuMisc"));
  EXPECT_TRUE(clicks.names.empty());
}

TEST_F(PopupMenus, AnItemIsChosenByNameByIndexAndByCaption) {
  for (const char16_t* item : {u"mnuCut", u"mnuClass(0)", u"Cut"}) {
    menus.expect({.menu = u"mnuMisc", .choose = item});
    popup();
  }
  EXPECT_THAT(clicks.names, ElementsAre(u"mnuCut", u"mnuClass(0)", u"mnuCut"));
  EXPECT_EQ(menus.expectations(), 0u);
}

TEST_F(PopupMenus, AnExpectationOfAnotherMenuWaits) {
  menus.expect({.menu = u"mnuImg", .choose = u"mnuCut"});
  popup();
  EXPECT_TRUE(clicks.names.empty());
  EXPECT_EQ(menus.expectations(), 1u);
  menus.forget(0);
  EXPECT_EQ(menus.expectations(), 0u);
}

TEST_F(PopupMenus, WhatIsGreyOrHiddenCannotBeChosen) {
  menus.expect({.menu = u"mnuMisc", .choose = u"mnuCut", .times = 2});
  menu.find(u"mnuCut")->set_Enabled(false);
  popup();
  menu.find(u"mnuCut")->set_Enabled(true);
  menu.find(u"mnuCut")->set_Visible(false);
  popup();
  EXPECT_TRUE(clicks.names.empty());
}

TEST_F(PopupMenus, TheItemActsAfterThePopupIsClosedAndBeforeTheCallReturns) {
  std::vector<std::string> order;
  menus.on_opened([&](Menu&) { order.push_back("opened"); });
  menus.on_closed([&](Menu&, const ExpectedPopup*, const Menu* chosen) {
    order.push_back(chosen && clicks.names.empty() ? "closed" : "too early");
  });
  menus.expect(
      {.menu = u"mnuMisc", .choose = u"mnuCut", .while_open = [&](Menu&) { order.push_back("open"); }});
  popup();
  EXPECT_THAT(order, ElementsAre("opened", "open", "closed"));
  EXPECT_THAT(clicks.names, ElementsAre(u"mnuCut"));
}

TEST_F(PopupMenus, WithNothingToChooseFromItDoesNotOpen) {
  menus.expect({.menu = u"mnuMisc", .choose = u"mnuCut"});
  menu.find(u"mnuCut")->set_Visible(false);
  menu.find(u"mnuStyle")->set_Visible(false);
  popup();
  EXPECT_TRUE(menus.shown().empty());
  EXPECT_EQ(menus.expectations(), 1u);
}

}  // namespace
}  // namespace tvx::headless
