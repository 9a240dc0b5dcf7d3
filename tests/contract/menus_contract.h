#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tvx/platform/menu.h"

/// What a popup menu is, whoever shows it.
namespace tvx::contract {

using platform::Menu;
using testing::ElementsAre;

/// A `Room` has menus(); next(while_open, item) is the user of the popup that opens next: `while_open` runs,
/// then the item of that name is chosen, or Escape is pressed where it is empty. opened() counts popups.
template <class Room>
class MenusContract : public testing::Test, protected platform::MenuHandler {
 protected:
  MenusContract() {
    menu.Add(u"mnuCut", u"Cut");
    menu.Add(u"mnuCopy", u"Copy");
    menu.AddSeparator(u"mnuSep");
    menu.Add(u"mnuStyle", u"Style").Add(u"mnuClass", u"(none)", 0);
    menu.set_handler(this);
  }
  void MenuItemClick(Menu& item) override { clicked.push_back(platform::name_with_index(item)); }
  void popup(
      std::u16string item, const std::function<void()>& while_open = [] {}) {
    room_.next(while_open, std::move(item));
    room_.menus().PopupMenu(menu, platform::WindowHandle::none);
  }

  Room room_;
  Menu menu{u"mnuMisc", u"Misc"};
  std::vector<std::u16string> clicked;
};

TYPED_TEST_SUITE_P(MenusContract);

TYPED_TEST_P(MenusContract, TheChosenItemActsBeforeTheCallReturns) {
  this->popup(u"mnuCopy");
  EXPECT_THAT(this->clicked, ElementsAre(u"mnuCopy"));
  EXPECT_EQ(this->room_.opened(), 1);
}

TYPED_TEST_P(MenusContract, ADismissedMenuDoesNothing) {
  this->popup(u"");
  EXPECT_THAT(this->clicked, ElementsAre());
  EXPECT_EQ(this->room_.opened(), 1);
}

TYPED_TEST_P(MenusContract, WhatIsGreyCantBeChosen) {
  this->menu.find(u"mnuCut")->set_Enabled(false);
  this->popup(u"mnuCut");
  EXPECT_THAT(this->clicked, ElementsAre());
}

TYPED_TEST_P(MenusContract, WhatIsHiddenOrASeparatorCantBeChosen) {
  this->menu.find(u"mnuCut")->set_Visible(false);
  this->popup(u"mnuCut");
  this->popup(u"mnuSep");
  EXPECT_THAT(this->clicked, ElementsAre());
}

TYPED_TEST_P(MenusContract, ItFollowsTheModelWhileItIsOpen) {
  this->popup(u"mnuCut", [this] { this->menu.find(u"mnuCut")->set_Enabled(false); });
  EXPECT_THAT(this->clicked, ElementsAre());
  this->menu.find(u"mnuCut")->set_Visible(false);
  this->popup(u"mnuCut", [this] {
    this->menu.find(u"mnuCut")->set_Enabled(true);
    this->menu.find(u"mnuCut")->set_Visible(true);
  });
  EXPECT_THAT(this->clicked, ElementsAre(u"mnuCut"));
}

TYPED_TEST_P(MenusContract, WithNothingToChooseFromNothingOpens) {
  for (Menu* item : platform::all_items(this->menu))
    if (!item->is_separator()) item->set_Visible(false);
  this->popup(u"mnuCut");
  EXPECT_EQ(this->room_.opened(), 0);
  EXPECT_THAT(this->clicked, ElementsAre());
}

REGISTER_TYPED_TEST_SUITE_P(MenusContract, TheChosenItemActsBeforeTheCallReturns, ADismissedMenuDoesNothing,
                            WhatIsGreyCantBeChosen, WhatIsHiddenOrASeparatorCantBeChosen,
                            ItFollowsTheModelWhileItIsOpen, WithNothingToChooseFromNothingOpens);

}  // namespace tvx::contract
