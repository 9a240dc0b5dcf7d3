#include "tvx/platform/form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/failures.h"
#include "tvx/base/error.h"

namespace tvx::platform {
namespace {

using testing::ElementsAre;

struct Acts : FormHandler {
  void Click(FormControl& control) override {
    heard.push_back(u"Click " + control.Name());
    if (on_click) on_click(control);
  }
  void Change(FormControl& control) override { heard.push_back(u"Change " + control.Name()); }
  std::vector<std::u16string> heard;
  std::function<void(FormControl&)> on_click;
};

struct Face : FormObserver {
  void control_changed(FormControl& control) override { told.push_back(control.Name()); }
  void caption_changed(Form& form) override { told.push_back(form.Caption()); }
  void form_hidden(Form&) override { told.push_back(u"hidden"); }
  std::vector<std::u16string> told;
};

/// Shows by doing what the test wants.
struct Screen : Forms {
  std::function<void(Form&)> show;
  void run(Form& form, WindowHandle) override { show(form); }
  void open(Form& form, WindowHandle) override { show(form); }
  std::vector<std::u16string> fonts() const override { return {}; }
};

class AForm : public testing::Test {
 protected:
  AForm() {
    frame.set_ToolTipText(u"all of it");
    form.begin_row(&frame);
    form.add_label(u"lblSize", u"Size");
    form.add_text_box(u"txtSize", u"12");
    form.add_list(u"cboUnit", {u"px", u"pt"});
    form.begin_row(&frame);
    form.add_check_box(u"chkKeep", u"Keep");
    form.add_picture(u"picSample");
    FormControl& ok = form.add_closing_button(u"cmdOK", u"OK");
    FormControl& cancel = form.add_closing_button(u"cmdCancel", u"Cancel");
    form.set_default_button(ok);
    form.set_cancel_button(cancel);
    form.set_handler(&acts);
    form.add_observer(face);
  }
  ~AForm() override { form.remove_observer(face); }

  FormControl& operator[](std::u16string_view name) { return form.Controls(name); }

  Acts acts;
  Face face;
  Form form{u"frmSize", u"Size of it"};
  FormControl& frame = form.add_frame(u"fraSize", u"Sizes");
};

TEST_F(AForm, HasItsControlsByNameInAnyLetters) {
  EXPECT_EQ(&form.Controls(u"TXTSIZE"), form.find(u"txtSize"));
  EXPECT_EQ(form.find(u"txtNone"), nullptr);
  EXPECT_EQ(number_of_failure([&] { form.Controls(u"txtNone"); }), 730);
}

TEST_F(AForm, RowsStandInTheirFrames) {
  ASSERT_EQ(form.rows().size(), 3u);
  EXPECT_EQ(form.rows()[0].frame, nullptr);
  EXPECT_EQ(form.rows()[1].frame, &frame);
  EXPECT_THAT(form.rows()[1].controls,
              ElementsAre(&(*this)[u"lblSize"], &(*this)[u"txtSize"], &(*this)[u"cboUnit"]));
  EXPECT_EQ((*this)[u"chkKeep"].container(), &frame);
  EXPECT_EQ((*this)[u"cmdOK"].container(), nullptr);
}

TEST_F(AForm, AMemberThatAKindDoesntHaveFails) {
  EXPECT_EQ(number_of_failure([&] { (*this)[u"txtSize"].set_Caption(u"x"); }), 438);
  EXPECT_EQ(number_of_failure([&] { (*this)[u"lblSize"].set_Text(u"x"); }), 438);
  EXPECT_EQ(number_of_failure([&] { (*this)[u"cmdOK"].set_Value(true); }), 438);
  EXPECT_EQ(number_of_failure([&] { (*this)[u"txtSize"].AddItem(u"x"); }), 438);
  EXPECT_EQ(number_of_failure([&] { (*this)[u"txtSize"].set_Picture(u"x"); }), 438);
  EXPECT_EQ((*this)[u"fraSize"].Caption(), u"Sizes");
}

TEST_F(AForm, ChangesAreToldOnce) {
  (*this)[u"txtSize"].set_Text(u"14");
  (*this)[u"txtSize"].set_Text(u"14");
  (*this)[u"lblSize"].set_Caption(u"Größe");
  (*this)[u"cmdOK"].set_Enabled(false);
  (*this)[u"cmdOK"].set_Enabled(false);
  form.set_Caption(u"Größe davon");
  EXPECT_THAT(face.told, ElementsAre(u"txtSize", u"lblSize", u"cmdOK", u"Größe davon"));
  EXPECT_THAT(acts.heard, ElementsAre(u"Change txtSize"));
}

TEST_F(AForm, AListThatTakesTypedTextTakesAnyText) {
  FormControl& font = form.add_combo_box(u"cboFont", {u"Arial", u"Times"});
  EXPECT_TRUE(font.takes_text());
  EXPECT_FALSE((*this)[u"cboUnit"].takes_text());
  font.set_Text(u"Comic");
  EXPECT_EQ(font.Text(), u"Comic");
  EXPECT_EQ(font.ListIndex(), -1);
  font.set_Text(u"Times");
  EXPECT_EQ(font.ListIndex(), 1);
  font.RemoveItem(1);
  EXPECT_EQ(font.Text(), u"Times") << "what is typed stays";
}

TEST_F(AForm, AListThatStaysOpenKnowsAlikeItemsApart) {
  FormControl& words = form.add_list_box(u"lst", {u"one", u"two", u"two"});
  EXPECT_EQ(words.ListIndex(), -1);
  words.set_ListIndex(2);
  EXPECT_EQ(words.Text(), u"two");
  words.RemoveItem(0);
  EXPECT_EQ(words.ListIndex(), 1);
  words.set_List(1, u"three");
  EXPECT_EQ(words.Text(), u"three");
  words.set_ListIndex(-1);
  EXPECT_EQ(words.Text(), u"");
  EXPECT_EQ(number_of_failure([&] { words.set_ListIndex(2); }), 381);
  words.set_ListIndex(0);
  words.RemoveItem(0);
  EXPECT_EQ(words.ListIndex(), -1);
}

TEST_F(AForm, ASelectionStaysWithinTheText) {
  FormControl& box = (*this)[u"txtSize"];
  box.select(1, 9);
  EXPECT_EQ(box.SelStart(), 1);
  EXPECT_EQ(box.SelLength(), 1);
  box.set_Text(u"140");
  EXPECT_EQ(box.SelStart(), 0);
  EXPECT_EQ(box.SelLength(), 0);
  EXPECT_EQ(number_of_failure([&] { (*this)[u"cboUnit"].select(0, 1); }), 438);
}

TEST_F(AForm, ANumberIsSteppedWithinItsRange) {
  FormControl& box = (*this)[u"txtSize"];
  EXPECT_FALSE(box.step(1)) << "not for numbers";
  box.set_number({.least = 1, .most = 20, .step = 5});
  EXPECT_TRUE(box.step(1));
  EXPECT_EQ(box.Text(), u"17");
  box.step(1);
  EXPECT_EQ(box.Text(), u"20");
  box.step(-9);
  EXPECT_EQ(box.Text(), u"1");
  box.set_Text(u"wide");
  box.step(1);
  EXPECT_EQ(box.Text(), u"5");
}

TEST_F(AForm, AListTakesItsItemsOnly) {
  FormControl& unit = (*this)[u"cboUnit"];
  EXPECT_EQ(unit.Text(), u"");
  EXPECT_EQ(unit.ListIndex(), -1);
  unit.set_Text(u"pt");
  EXPECT_EQ(unit.ListIndex(), 1);
  unit.set_Text(u"em");
  EXPECT_EQ(unit.Text(), u"pt") << "no item of it";
  unit.set_ListIndex(0);
  EXPECT_EQ(unit.Text(), u"px");
  EXPECT_EQ(number_of_failure([&] { unit.set_ListIndex(2); }), 381);
  EXPECT_EQ(number_of_failure([&] { unit.List(-1); }), 381);
  unit.Clear();
  EXPECT_EQ(unit.Text(), u"");
  EXPECT_EQ(unit.ListCount(), 0);
}

TEST_F(AForm, APressReachesOnlyWhatCanBeReached) {
  EXPECT_TRUE((*this)[u"cmdOK"].click());
  EXPECT_TRUE((*this)[u"chkKeep"].click());
  EXPECT_TRUE((*this)[u"chkKeep"].Value());
  EXPECT_FALSE((*this)[u"lblSize"].click());
  frame.set_Enabled(false);
  EXPECT_FALSE((*this)[u"chkKeep"].click()) << "its frame is grey";
  (*this)[u"cmdOK"].set_Visible(false);
  EXPECT_FALSE((*this)[u"cmdOK"].click());
  EXPECT_THAT(acts.heard, ElementsAre(u"Click cmdOK", u"Change chkKeep", u"Click chkKeep"));
}

TEST_F(AForm, IsLoadedFromItsMakingToItsEnd) {
  EXPECT_TRUE(IsDialogLoaded(u"FRMSIZE"));
  EXPECT_FALSE(IsDialogLoaded(u"frmOther"));
  {
    const Form other(u"frmOther", u"");
    EXPECT_TRUE(IsDialogLoaded(u"frmOther"));
    EXPECT_TRUE(IsWindow(other.handle()));
  }
  EXPECT_FALSE(IsDialogLoaded(u"frmOther"));
}

TEST_F(AForm, IsShownUntilItIsHidden) {
  Screen screen;
  screen.show = [&](Form& shown) {
    EXPECT_TRUE(shown.Visible());
    EXPECT_EQ(number_of_failure([&] { screen.Show(shown, WindowHandle::none); }), 400);
    shown.Hide();
    EXPECT_FALSE(shown.Visible());
  };
  screen.Show(form, WindowHandle::none);
  EXPECT_THAT(face.told, ElementsAre(u"hidden"));
  EXPECT_TRUE(IsDialogLoaded(u"frmSize")) << "hidden, not unloaded";
}

TEST_F(AForm, AFaceThatGoesLeavesNothingOnTheScreen) {
  Screen screen;
  screen.show = [](Form&) {};
  screen.Show(form, WindowHandle::none);
  EXPECT_FALSE(form.Visible());
  screen.show = [](Form&) { throw RuntimeError(errors::invalid_call, u"no screen"); };
  EXPECT_EQ(number_of_failure([&] { screen.Show(form, WindowHandle::none); }), errors::invalid_call);
  EXPECT_FALSE(form.Visible());
}

TEST_F(AForm, GivingUpPressesCancelOrHides) {
  Screen screen;
  screen.show = [](Form& shown) { shown.cancel(); };
  acts.on_click = [this](FormControl&) { form.Hide(); };
  screen.Show(form, WindowHandle::none);
  EXPECT_THAT(acts.heard, ElementsAre(u"Click cmdCancel"));

  acts.on_click = [](FormControl&) { throw RuntimeError(errors::overflow, u"Overflow"); };
  screen.show = [](Form& shown) {
    shown.cancel();
    EXPECT_FALSE(shown.Visible()) << "a cancel that fails hides as well";
  };
  screen.Show(form, WindowHandle::none);

  acts.heard.clear();
  (*this)[u"cmdCancel"].set_Enabled(false);
  screen.show = [](Form& shown) {
    shown.cancel();
    EXPECT_FALSE(shown.Visible());
  };
  screen.Show(form, WindowHandle::none);
  EXPECT_TRUE(acts.heard.empty());
}

}  // namespace
}  // namespace tvx::platform
