#include "tvx/browser/input/drag_session.h"

#include <gtest/gtest.h>

#include "browser/input/fake_display.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"

namespace tvx::browser {
namespace {

using dom::Tag;

class DragSessionTest : public testing::Test {
 protected:
  DragSessionTest() { drags_.show(display_.document()); }

  static ViewDrag drag(ViewDrag::Phase phase, ViewDrag::Type type, const dom::Element* element = nullptr) {
    ViewDrag drag;
    drag.phase = phase;
    drag.type = type;
    if (element) drag.node = element->id();
    return drag;
  }
  void start(ViewDrag::Type type, const dom::Element* element = nullptr) {
    drags_.handle(drag(ViewDrag::Phase::Begin, type, element));
  }
  void drop_size(const dom::Element& element, int width) {
    ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Size, &element);
    drop.width = width;
    drags_.handle(drop);
  }

  FakeDisplay display_{u"<p>one<img>two</p>"};
  dom::Element& image_ = display_.first(Tag::Img);
  DragSession drags_{display_};
};

TEST_F(DragSessionTest, AHandleSizesTheSelectedElement) {
  display_.selection().select_control(image_);
  display_.reveals = true;
  start(ViewDrag::Type::Size, &image_);
  drop_size(image_, 40);
  EXPECT_EQ(display_.html(), "<P>one<IMG width=\"40\">two</P>");
  EXPECT_EQ(display_.document()->tree().journal().depth(), 1u);
  EXPECT_FALSE(display_.reveals) << "what the mouse has done is in sight";
  EXPECT_EQ(display_.cancelled_drags, 0);
}

TEST_F(DragSessionTest, WhatIsNotSelectedIsNotCarried) {
  start(ViewDrag::Type::Size, &image_);
  EXPECT_EQ(display_.cancelled_drags, 1);
  drop_size(image_, 40);
  EXPECT_EQ(display_.html(), "<P>one<IMG>two</P>");
}

TEST_F(DragSessionTest, NothingIsCarriedWhereNothingMayBeEdited) {
  display_.is_editable = false;
  display_.selection().select_control(image_);
  start(ViewDrag::Type::Size, &image_);
  EXPECT_EQ(display_.cancelled_drags, 1);
  drop_size(image_, 40);
  EXPECT_EQ(display_.html(), "<P>one<IMG>two</P>");
}

TEST_F(DragSessionTest, CancelledItStaysWhereItIs) {
  display_.selection().select_control(image_);
  EXPECT_FALSE(drags_.cancel()) << "nothing is carried yet";
  start(ViewDrag::Type::Size, &image_);
  EXPECT_TRUE(drags_.cancel());
  EXPECT_EQ(display_.cancelled_drags, 1);
  drop_size(image_, 40);
  EXPECT_EQ(display_.html(), "<P>one<IMG>two</P>");
}

TEST_F(DragSessionTest, AnElementThatIsGoneIsNotSized) {
  display_.selection().select_control(image_);
  start(ViewDrag::Type::Size, &image_);
  const dom::Ref<dom::Element> image(&image_);
  dom::remove(image_);
  drop_size(*image, 40);
  EXPECT_FALSE(image->has_attribute(dom::names::width));
}

TEST_F(DragSessionTest, SelectedTextGoesToAnotherPosition) {
  dom::Node& text = display_.text();
  display_.selection().set({&text, 0}, {&text, 1});
  start(ViewDrag::Type::Content);
  ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Content);
  drop.place = ViewPlace{text.id(), 3};
  drags_.handle(drop);
  EXPECT_EQ(display_.html(), "<P>neo<IMG>two</P>");
}

TEST_F(DragSessionTest, ADropWithoutAStartDoesNothing) {
  display_.selection().select_control(image_);
  drop_size(image_, 40);
  EXPECT_EQ(display_.html(), "<P>one<IMG>two</P>");
}

}  // namespace
}  // namespace tvx::browser
