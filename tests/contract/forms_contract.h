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
  virtual void press(std::u16string_view button) = 0;
  /// Escape, or the window's own closing.
  virtual void give_up() = 0;
};

/// A name, a tick, and two buttons; a form without a name isn't accepted.
struct SmallForm final : platform::FormHandler {
  SmallForm() {
    form.add_label(u"lblName", u"Name");
    form.add_text_box(u"txtName");
    form.begin_row();
    form.add_check_box(u"chkKeep", u"Keep");
    form.set_default_button(form.add_closing_button(u"cmdOK", u"OK"));
    form.set_cancel_button(form.add_closing_button(u"cmdCancel", u"Cancel"));
    form.set_handler(this);
  }
  void Click(FormControl& control) override {
    clicked.push_back(control.Name());
    if (on_click) on_click(control);
    if (control.Name() == u"cmdOK" || control.Name() == u"cmdCancel") form.Hide();
  }
  void Change(FormControl& control) override { changed.push_back(control.Name()); }

  Form form{u"frmSmall", u"Small"};
  std::vector<std::u16string> clicked, changed;
  std::function<void(FormControl&)> on_click;
};

/// A `Room` has forms() and lets a user act on the form that opens next: next(user).
template <class Room>
class FormsContract : public testing::Test {
 protected:
  void show(const std::function<void(FormUser&)>& user) {
    room_.next(small.form, user);
    room_.forms().Show(small.form, platform::WindowHandle::none);
  }
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

REGISTER_TYPED_TEST_SUITE_P(FormsContract, IsShownUntilItsButtonHidesIt, GivingUpPressesTheCancelButton,
                            GivingUpClosesAlsoWhereTheCancelButtonCantBePressed, ATickIsAPressAndAChange,
                            WhatCantBeReachedCantBeUsed, AFormThatIsShownIsNotShownOnceMore,
                            IsShownAgainAsItWasLeft);

}  // namespace tvx::contract
