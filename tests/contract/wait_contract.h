#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "contract/forms_contract.h"
#include "tvx/transfer/wait_dialog.h"

/// What showing a form beside the work is, whoever shows it.
namespace tvx::contract {

/// A `Room` has forms(), gives a user in front of a form that has been opened, act(form, user), and lets time
/// go by, wait(milliseconds).
template <class Room>
class WaitContract : public testing::Test {
 protected:
  void open() { room_.forms().Open(wait->form(), platform::WindowHandle::none); }

  Room room_;
  std::unique_ptr<transfer::frmWait> wait = std::make_unique<transfer::frmWait>();
};

TYPED_TEST_SUITE_P(WaitContract);

TYPED_TEST_P(WaitContract, OpeningReturnsAtOnceWithTheFormOnTheScreen) {
  this->open();
  EXPECT_TRUE(this->wait->form().Visible());
  this->open();  // it is already
  EXPECT_TRUE(this->wait->form().Visible());
  this->wait->form().Hide();
  EXPECT_FALSE(this->wait->form().Visible());
}

TYPED_TEST_P(WaitContract, CancelIsSaidAndTheFormStays) {
  int said = 0;
  this->wait->on_cancel = [&] { ++said; };
  this->open();
  this->room_.act(this->wait->form(), [](FormUser& user) { user.press(u"cmdCancel"); });
  EXPECT_TRUE(this->wait->bCancel);
  EXPECT_EQ(said, 1);
  EXPECT_TRUE(this->wait->form().Visible());
}

TYPED_TEST_P(WaitContract, GivingUpIsCancel) {
  this->open();
  this->room_.act(this->wait->form(), [](FormUser& user) { user.give_up(); });
  EXPECT_TRUE(this->wait->bCancel);
  EXPECT_TRUE(this->wait->form().Visible());
}

TYPED_TEST_P(WaitContract, AFormMayGoRightAfterItsWork) {
  this->open();
  this->wait.reset();
  this->room_.wait(900);
  this->wait = std::make_unique<transfer::frmWait>();
  this->open();
  this->room_.act(this->wait->form(), [](FormUser&) {});
  this->wait.reset();
  this->room_.wait(900);
  EXPECT_FALSE(platform::IsDialogLoaded(u"frmWait"));
}

TYPED_TEST_P(WaitContract, WhatItSaysMayChangeWhileItIsOpen) {
  this->open();
  this->room_.act(this->wait->form(), [&](FormUser&) {
    this->wait->show_action(transfer::frmWait::Action::Uploading);
    this->wait->show_file(u"a.gif");
    this->wait->show_bytes(0, 1000, 0);
    this->wait->show_bytes(1000, 1000, 0);
    EXPECT_EQ(this->wait->form().Controls(u"lblSpeed").Caption(), u"") << "no time has passed to tell it by";
    this->wait->show_bytes(500, 1000, 2000);
    this->wait->show_count(1, 3);
  });
  const platform::Form& form = this->wait->form();
  EXPECT_EQ(form.Controls(u"lblPercent").Caption(), u"50 %");
  EXPECT_EQ(form.Controls(u"lblBytes").Caption(), u"500 B / 1.0 KB");
  EXPECT_EQ(form.Controls(u"lblSpeed").Caption(), u"250 B/s");
  EXPECT_EQ(form.Controls(u"lblTime").Caption(), u"0:02");
  EXPECT_EQ(form.Controls(u"lblCount").Caption(), u"1 / 3");
  EXPECT_TRUE(form.Controls(u"lblUploading").Visible());
  EXPECT_FALSE(form.Controls(u"lblConnecting").Visible());
}

REGISTER_TYPED_TEST_SUITE_P(WaitContract, OpeningReturnsAtOnceWithTheFormOnTheScreen,
                            CancelIsSaidAndTheFormStays, GivingUpIsCancel, AFormMayGoRightAfterItsWork,
                            WhatItSaysMayChangeWhileItIsOpen);

}  // namespace tvx::contract
