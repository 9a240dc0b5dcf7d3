#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string_view>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/platform/form.h"

/// What showing a form is, whoever shows it.
namespace tvx::contract {

using platform::Form;
using platform::FormControl;
using testing::ElementsAre;

/// A user in front of a form. Controls are known by their names.
class FormUser {
 public:
  virtual ~FormUser() = default;
  /// Into the box that has the keyboard or gets it; nothing where that can't be.
  virtual void type(std::u16string_view box, std::u16string_view text) = 0;
  /// One key for the box, by its name in the UI Events standard.
  virtual void key(std::u16string_view box, std::u16string_view name) = 0;
  virtual void press(std::u16string_view button) = 0;
  /// The item of a list that stays open.
  virtual void pick(std::u16string_view list, int item) = 0;
  virtual void double_click(std::u16string_view list, int item) = 0;
  /// Escape, or the window's own closing.
  virtual void give_up() = 0;
};

/// A name, a tick, a list and two buttons. The name's box reports its keys.
struct SmallForm final : platform::FormHandler {
  SmallForm() {
    form.add_label(u"lblName", u"Name");
    form.add_text_box(u"txtName").set_reports_keys();
    form.begin_row();
    form.add_check_box(u"chkKeep", u"Keep");
    form.begin_row();
    form.add_list_box(u"lstWords", {u"one", u"two", u"two"});
    form.set_default_button(form.add_closing_button(u"cmdOK", u"OK"));
    form.set_cancel_button(form.add_closing_button(u"cmdCancel", u"Cancel"));
    form.set_handler(this);
  }
  void Click(FormControl& control) override {
    clicked.push_back(control.Name());
    if (on_click) on_click(control);
    if (control.Name() == u"cmdOK" || control.Name() == u"cmdCancel") form.Hide();
  }
  void DblClick(FormControl& control) override { clicked.push_back(u"twice " + control.Name()); }
  void Change(FormControl& control) override { changed.push_back(control.Name()); }
  void Paint(Form&) override { ++painted; }
  void KeyDown(FormControl&, std::int16_t& code, std::int16_t shift) override {
    keys.push_back("down " + std::to_string(code) + (shift ? " with " + std::to_string(shift) : ""));
    if (on_key_down) on_key_down(code);
  }
  void KeyPress(FormControl&, std::int16_t& character) override {
    keys.push_back("press " + std::to_string(character));
    if (on_key_press) on_key_press(character);
  }
  void KeyUp(FormControl& box, std::int16_t& code, std::int16_t) override {
    keys.push_back("up " + std::to_string(code));
    if (on_key_up) on_key_up(box);
  }

  Form form{u"frmSmall", u"Small"};
  std::vector<std::u16string> clicked, changed;
  std::vector<std::string> keys;
  int painted = 0;
  std::function<void(FormControl&)> on_click, on_key_up;
  std::function<void(std::int16_t&)> on_key_down, on_key_press;
};

/// A `Room` has forms() and lets a user act on the form that opens next: next(user).
template <class Room>
class FormsContract : public testing::Test {
 protected:
  void show(const std::function<void(FormUser&)>& user) {
    room_.next(small.form, user);
    room_.forms().Show(small.form, platform::WindowHandle::none);
  }
  FormControl& name() { return small.form.Controls(u"txtName"); }
  FormControl& words() { return small.form.Controls(u"lstWords"); }
  Room room_;
  SmallForm small;
};

TYPED_TEST_SUITE_P(FormsContract);

TYPED_TEST_P(FormsContract, IsShownUntilItsButtonHidesIt) {
  bool visible = false;
  this->show([&](FormUser& user) {
    visible = this->small.form.Visible();
    user.type(u"txtName", u"Ada");
    user.press(u"cmdOK");
    EXPECT_FALSE(this->small.form.Visible());
  });
  EXPECT_TRUE(visible);
  EXPECT_FALSE(this->small.form.Visible());
  EXPECT_EQ(this->small.form.Controls(u"txtName").Text(), u"Ada");
  EXPECT_THAT(this->small.clicked, ElementsAre(u"cmdOK"));
  EXPECT_THAT(this->small.changed, testing::Contains(u"txtName"));
}

TYPED_TEST_P(FormsContract, GivingUpPressesTheCancelButton) {
  this->show([](FormUser& user) { user.give_up(); });
  EXPECT_THAT(this->small.clicked, ElementsAre(u"cmdCancel"));
  EXPECT_FALSE(this->small.form.Visible());
}

TYPED_TEST_P(FormsContract, GivingUpClosesAlsoWhereTheCancelButtonCantBePressed) {
  this->small.form.Controls(u"cmdCancel").set_Enabled(false);
  this->show([](FormUser& user) { user.give_up(); });
  EXPECT_THAT(this->small.clicked, ElementsAre());
  EXPECT_FALSE(this->small.form.Visible());
}

TYPED_TEST_P(FormsContract, ATickIsAPressAndAChange) {
  this->show([&](FormUser& user) {
    user.press(u"chkKeep");
    EXPECT_TRUE(this->small.form.Controls(u"chkKeep").Value());
    user.press(u"chkKeep");
    EXPECT_FALSE(this->small.form.Controls(u"chkKeep").Value());
    user.press(u"cmdOK");
  });
  EXPECT_THAT(this->small.clicked, ElementsAre(u"chkKeep", u"chkKeep", u"cmdOK"));
  EXPECT_THAT(this->small.changed, ElementsAre(u"chkKeep", u"chkKeep"));
}

TYPED_TEST_P(FormsContract, WhatCantBeReachedCantBeUsed) {
  for (const char16_t* name : {u"txtName", u"chkKeep", u"cmdOK"})
    this->small.form.Controls(name).set_Enabled(false);
  this->show([&](FormUser& user) {
    user.type(u"txtName", u"Ada");
    user.press(u"chkKeep");
    user.press(u"cmdOK");
    EXPECT_TRUE(this->small.form.Visible());
    user.press(u"cmdCancel");
  });
  EXPECT_EQ(this->small.form.Controls(u"txtName").Text(), u"");
  EXPECT_FALSE(this->small.form.Controls(u"chkKeep").Value());
  EXPECT_THAT(this->small.clicked, ElementsAre(u"cmdCancel"));
}

TYPED_TEST_P(FormsContract, AFormThatIsShownIsNotShownOnceMore) {
  int failure = 0;
  this->small.on_click = [&](FormControl& control) {
    if (control.Name() != u"chkKeep") return;
    try {
      this->room_.forms().Show(this->small.form, platform::WindowHandle::none);
    } catch (const RuntimeError& error) {
      failure = error.number();
    }
  };
  this->show([](FormUser& user) {
    user.press(u"chkKeep");
    user.press(u"cmdCancel");
  });
  EXPECT_EQ(failure, 400);
}

TYPED_TEST_P(FormsContract, IsShownAgainAsItWasLeft) {
  this->show([](FormUser& user) {
    user.type(u"txtName", u"Ada");
    user.press(u"cmdOK");
  });
  this->show([&](FormUser& user) {
    EXPECT_EQ(this->small.form.Controls(u"txtName").Text(), u"Ada");
    user.press(u"cmdCancel");
  });
  EXPECT_THAT(this->small.clicked, ElementsAre(u"cmdOK", u"cmdCancel"));
}

// --- keys of a box ---

TYPED_TEST_P(FormsContract, AKeyIsToldAsItGoesDownAsItTypesAndAsItComesUp) {
  this->show([](FormUser& user) {
    user.key(u"txtName", u"a");
    user.key(u"txtName", u"Backspace");
    user.key(u"txtName", u"ArrowLeft");
  });
  EXPECT_THAT(this->small.keys,
              ElementsAre("down 65", "press 97", "up 65", "down 8", "press 8", "up 8", "down 37", "up 37"));
}

TYPED_TEST_P(FormsContract, AKeyThatIsTakenAwayAsItGoesDownDoesNothing) {
  this->name().set_Text(u"ab");
  this->small.on_key_down = [](std::int16_t& code) { code = 0; };
  this->show([&](FormUser& user) {
    for (const char16_t* name : {u"Home", u"ArrowRight", u"Delete", u"Tab"}) user.key(u"txtName", name);
    EXPECT_EQ(this->small.form.ActiveControl(), &this->name());
  });
  EXPECT_EQ(this->name().Text(), u"ab");
}

TYPED_TEST_P(FormsContract, WhatAKeyTypesIsTakenAwayByItself) {
  this->small.on_key_down = [](std::int16_t& code) { code = 0; };
  this->small.on_key_press = [](std::int16_t& character) {
    if (character == u'b') character = 0;
  };
  this->show([](FormUser& user) {
    for (const char16_t* name : {u"a", u"b", u"c"}) user.key(u"txtName", name);
  });
  EXPECT_EQ(this->name().Text(), u"ac");
}

TYPED_TEST_P(FormsContract, AnotherCharacterMayBeTypedInstead) {
  this->small.on_key_press = [](std::int16_t& character) { character = u'x'; };
  this->show([](FormUser& user) {
    for (const char16_t* name : {u"a", u"b"}) user.key(u"txtName", name);
  });
  EXPECT_EQ(this->name().Text(), u"xx");
}

TYPED_TEST_P(FormsContract, AnEmptiedBoxMayBeFilledAndSelectedAsTheKeyComesUp) {
  this->name().set_Text(u"7");
  this->small.on_key_up = [](FormControl& box) {
    if (!box.Text().empty()) return;
    box.set_Text(u"0");
    box.select(0, 1);
  };
  this->show([&](FormUser& user) {
    user.key(u"txtName", u"End");
    user.key(u"txtName", u"Backspace");
    EXPECT_EQ(this->name().SelLength(), 1);
    user.key(u"txtName", u"5");
  });
  EXPECT_EQ(this->name().Text(), u"5");
}

TYPED_TEST_P(FormsContract, KeysOfOtherBoxesAreNotTold) {
  this->show([](FormUser& user) { user.key(u"lstWords", u"ArrowDown"); });
  EXPECT_THAT(this->small.keys, ElementsAre());
}

// --- a list that stays open ---

TYPED_TEST_P(FormsContract, AnItemThatIsPickedIsChosenAndAPress) {
  this->show([&](FormUser& user) {
    user.pick(u"lstWords", 1);
    EXPECT_EQ(this->words().Text(), u"two");
    user.pick(u"lstWords", 1);
    user.pick(u"lstWords", 2);
    EXPECT_EQ(this->words().ListIndex(), 2);
  });
  EXPECT_THAT(this->small.clicked, ElementsAre(u"lstWords", u"lstWords", u"lstWords", u"cmdCancel"));
  EXPECT_THAT(this->small.changed, ElementsAre(u"lstWords", u"lstWords"));
}

TYPED_TEST_P(FormsContract, ADoubleClickIsAPressBefore) {
  this->show([](FormUser& user) { user.double_click(u"lstWords", 1); });
  EXPECT_THAT(this->small.clicked, ElementsAre(u"lstWords", u"twice lstWords", u"cmdCancel"));
}

TYPED_TEST_P(FormsContract, TheArrowsWalkAList) {
  this->words().set_ListIndex(0);
  this->show([](FormUser& user) { user.key(u"lstWords", u"ArrowDown"); });
  EXPECT_EQ(this->words().ListIndex(), 1);
  EXPECT_THAT(this->small.clicked, ElementsAre(u"lstWords", u"cmdCancel"));
}

TYPED_TEST_P(FormsContract, AListFollowsTheModel) {
  this->show([&](FormUser& user) {
    this->words().Clear();
    for (const char16_t* word : {u"three", u"four", u"five"}) this->words().AddItem(word);
    this->words().RemoveItem(0);
    user.pick(u"lstWords", 1);
    EXPECT_EQ(this->words().Text(), u"five");
  });
}

TYPED_TEST_P(FormsContract, IsPaintedWhenItIsShown) {
  this->show([&](FormUser&) { EXPECT_GT(this->small.painted, 0); });
}

REGISTER_TYPED_TEST_SUITE_P(FormsContract, IsShownUntilItsButtonHidesIt, GivingUpPressesTheCancelButton,
                            GivingUpClosesAlsoWhereTheCancelButtonCantBePressed, ATickIsAPressAndAChange,
                            WhatCantBeReachedCantBeUsed, AFormThatIsShownIsNotShownOnceMore,
                            IsShownAgainAsItWasLeft, AKeyIsToldAsItGoesDownAsItTypesAndAsItComesUp,
                            AKeyThatIsTakenAwayAsItGoesDownDoesNothing, WhatAKeyTypesIsTakenAwayByItself,
                            AnotherCharacterMayBeTypedInstead,
                            AnEmptiedBoxMayBeFilledAndSelectedAsTheKeyComesUp, KeysOfOtherBoxesAreNotTold,
                            AnItemThatIsPickedIsChosenAndAPress, ADoubleClickIsAPressBefore,
                            TheArrowsWalkAList, AListFollowsTheModel, IsPaintedWhenItIsShown);

}  // namespace tvx::contract
