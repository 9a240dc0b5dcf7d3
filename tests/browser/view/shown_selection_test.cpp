#include "tvx/browser/view/shown_selection.h"

#include <gtest/gtest.h>

#include "tvx/browser/html_document.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/dom/parse.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"

namespace tvx::browser {
namespace {

class ShownSelectionTest : public testing::Test {
 protected:
  static ViewSelection caret(std::uint32_t offset) {
    ViewSelection selection;
    selection.type = ViewSelection::Type::Text;
    selection.anchor = selection.focus = {dom::NodeId(5), offset};
    return selection;
  }
  /// Whether a selection was sent.
  bool sends(const ViewSelection& wanted, bool moved = false) {
    view_.select({});
    shown_.send(wanted, moved);
    return view_.selection().type != ViewSelection::Type::None;
  }

  headless::VirtualTimeLoop loop_;
  headless::View view_{loop_};
  ShownSelection shown_{view_};
};

TEST_F(ShownSelectionTest, IsSentOnce) {
  EXPECT_TRUE(sends(caret(1)));
  EXPECT_FALSE(sends(caret(1)));
  EXPECT_TRUE(sends(caret(2)));
}

TEST_F(ShownSelectionTest, IsSentAgainWhereThePageMayShowAnother) {
  sends(caret(1));
  EXPECT_TRUE(sends(caret(1), true)) << "the tree has moved";
  shown_.unsure();
  EXPECT_TRUE(sends(caret(1)));
  EXPECT_FALSE(sends(caret(1)));
  shown_.page_began();
  EXPECT_TRUE(sends(caret(1)));
}

TEST_F(ShownSelectionTest, WhatThePageHasDrawnIsNotSentBack) {
  shown_.drawn(caret(3).anchor, caret(3).focus);
  EXPECT_FALSE(sends(caret(3)));
  EXPECT_TRUE(sends(caret(4)));
}

TEST_F(ShownSelectionTest, ScrollsIntoSightOnce) {
  shown_.reveal(true);
  sends(caret(1));
  EXPECT_TRUE(view_.selection().reveal);
  sends(caret(2));
  EXPECT_FALSE(view_.selection().reveal);
}

TEST_F(ShownSelectionTest, ComesIntoSightWhenTheViewHasIt) {
  shown_.reveal(true);
  sends({}, true);
  sends(caret(1));
  EXPECT_TRUE(view_.selection().reveal);
}

TEST_F(ShownSelectionTest, NamesTheLastPressThatIsDealtWith) {
  shown_.mouse_dealt_with(4);
  shown_.mouse_dealt_with(3);
  sends(caret(1));
  EXPECT_EQ(view_.selection().mouse, 4u);
  shown_.page_began();
  sends(caret(1));
  EXPECT_EQ(view_.selection().mouse, 0u) << "a new page counts anew";
}

TEST(WantedSelection, IsNoneUntilTheViewHasItsNodes) {
  const auto document =
      HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><p>one<img>"), u"file:///tmp/a.html");
  Mirror mirror(document->tree());
  editing::Selection& selection = document->editor().selection();
  dom::Node* text = document->body()->first_child()->first_child();
  selection.collapse({text, 2});
  EXPECT_EQ(wanted_selection(*document, mirror).type, ViewSelection::Type::None);
  mirror.flush(1000);
  EXPECT_EQ(wanted_selection(*document, mirror).focus, (ViewPlace{text->id(), 2}));
  dom::Element& image = *document->first(dom::Tag::Img);
  selection.select_control(image);
  const ViewSelection wanted = wanted_selection(*document, mirror);
  EXPECT_EQ(wanted.type, ViewSelection::Type::Control);
  EXPECT_EQ(wanted.control, image.id());
}

}  // namespace
}  // namespace tvx::browser
