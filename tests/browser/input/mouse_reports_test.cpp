#include "tvx/browser/input/mouse_reports.h"

#include <gtest/gtest.h>

#include "browser/input/fake_display.h"
#include "tvx/browser/input/drag_session.h"
#include "tvx/dom/mutation.h"

namespace tvx::browser {
namespace {

using dom::Boundary;

class MouseReportsTest : public testing::Test {
 protected:
  MouseReportsTest() { mouse_.show(display_.document()); }

  ViewMouse report(ViewMouse::Type type, const dom::Node& text, std::uint32_t offset) const {
    ViewMouse mouse;
    mouse.type = type;
    mouse.x = 7;
    mouse.y = 9;
    mouse.number = 3;
    mouse.element = text.parent()->id();
    mouse.place = ViewPlace{text.id(), offset};
    mouse.seen = display_.patch();
    return mouse;
  }
  ViewMouse press(std::uint32_t offset) const {
    return report(ViewMouse::Type::Press, display_.text(), offset);
  }
  /// The tree changes after the page has reported.
  void change_text() {
    dom::replace_data(static_cast<dom::Text&>(display_.text()), 0, 0, u"new ");
    display_.flush();
  }

  FakeDisplay display_{u"<p>one two</p><p>other</p>"};
  DragSession drags_{display_};
  MouseReports mouse_{display_, drags_};
};

TEST_F(MouseReportsTest, APressSetsTheCaretWithoutScrolling) {
  display_.reveals = true;
  EXPECT_FALSE(mouse_.handle({press(3)}));
  EXPECT_EQ(display_.selection().focus(), (Boundary{&display_.text(), 3}));
  EXPECT_EQ(display_.mouse, 3u);
  EXPECT_FALSE(display_.reveals);
  EXPECT_EQ(display_.unsure, 1);
  EXPECT_TRUE(display_.asked.empty());
}

TEST_F(MouseReportsTest, APositionInATreeThatHasChangedIsAskedForAgain) {
  const ViewMouse stale = press(1);
  change_text();
  const auto question = mouse_.handle({stale});
  ASSERT_TRUE(question);
  EXPECT_TRUE(mouse_.asks());
  ASSERT_EQ(display_.asked.size(), 1u);
  EXPECT_EQ(display_.asked[0].type, ViewQuestion::Type::Hit);
  EXPECT_EQ(display_.asked[0].x, 7);
  const ViewPlace place{display_.text().id(), 5};
  const ViewAnswer answer{*question, place, {}, display_.patch()};
  EXPECT_FALSE(mouse_.answer(&answer));
  EXPECT_EQ(display_.selection().focus(), (Boundary{&display_.text(), 5}));
  EXPECT_FALSE(mouse_.asks());
}

TEST_F(MouseReportsTest, WithoutAnAnswerThePositionAsReportedHolds) {
  const ViewMouse stale = press(1);
  change_text();
  ASSERT_TRUE(mouse_.handle({stale}));
  EXPECT_FALSE(mouse_.answer(nullptr));
  EXPECT_EQ(display_.selection().focus(), (Boundary{&display_.text(), 1}));
}

TEST_F(MouseReportsTest, APageThatIsNotThereIsNotAsked) {
  display_.is_answering = false;
  const ViewMouse stale = press(1);
  change_text();
  EXPECT_FALSE(mouse_.handle({stale}));
  EXPECT_TRUE(display_.asked.empty());
}

TEST_F(MouseReportsTest, AHeldPressSetsTheCaretAtItsRelease) {
  display_.selection().set({&display_.text(), 0}, {&display_.text(), 7});
  ViewMouse held = press(3);
  held.held = true;
  mouse_.handle({held});
  EXPECT_FALSE(display_.selection().collapsed());
  mouse_.handle({report(ViewMouse::Type::Release, display_.text(), 3)});
  EXPECT_EQ(display_.selection().focus(), (Boundary{&display_.text(), 3}));
  EXPECT_TRUE(display_.selection().collapsed());
}

TEST_F(MouseReportsTest, ADragAfterAHeldPressKeepsTheSelection) {
  display_.selection().set({&display_.text(), 0}, {&display_.text(), 7});
  ViewMouse held = press(3);
  held.held = true;
  mouse_.handle({held});
  mouse_.drag_follows();
  mouse_.handle({report(ViewMouse::Type::Release, display_.text(), 3)});
  EXPECT_FALSE(display_.selection().collapsed());
}

TEST_F(MouseReportsTest, WhatWasDrawnByTheReleaseIsTaken) {
  mouse_.handle({press(0)});
  ViewMouse release = report(ViewMouse::Type::Release, display_.text(), 3);
  release.anchor = ViewPlace{display_.text().id(), 0};
  release.focus = ViewPlace{display_.text().id(), 3};
  mouse_.handle({release});
  EXPECT_EQ(display_.selection().range(), (dom::Range{{&display_.text(), 0}, {&display_.text(), 3}}));
  ASSERT_FALSE(display_.drawn.empty());
  EXPECT_EQ(display_.drawn.back().second, *release.focus);
}

TEST_F(MouseReportsTest, TheElementUnderTheLastReportIsKnown) {
  mouse_.handle({press(3)});
  EXPECT_EQ(mouse_.element_at(7, 9), &display_.first(dom::Tag::P));
  EXPECT_EQ(mouse_.element_at(7, 10), nullptr);
  dom::remove(display_.first(dom::Tag::P));
  EXPECT_EQ(mouse_.element_at(7, 9), nullptr) << "it is gone";
}

TEST_F(MouseReportsTest, AMissedReportIsDealtWithAndItsDrawingGoes) {
  display_.selection().collapse({&display_.text(), 1});
  mouse_.missed(press(5));
  EXPECT_EQ(display_.mouse, 3u);
  EXPECT_EQ(display_.unsure, 1);
  EXPECT_EQ(display_.scheduled, 1);
  EXPECT_EQ(display_.selection().focus(), (Boundary{&display_.text(), 1}));
}

TEST_F(MouseReportsTest, AnotherDocumentForgetsWhatWasAsked) {
  const ViewMouse stale = press(1);
  change_text();
  ASSERT_TRUE(mouse_.handle({stale}));
  mouse_.show(nullptr);
  EXPECT_FALSE(mouse_.asks());
  EXPECT_FALSE(mouse_.handle({press(2)}));
}

}  // namespace
}  // namespace tvx::browser
