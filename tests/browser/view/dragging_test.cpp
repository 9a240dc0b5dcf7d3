#include <gmock/gmock.h>

#include "browser/view/document_view_fixture.h"
#include "tvx/browser/input/input_queue.h"

namespace tvx::browser {
namespace {

TEST_F(DocumentViewTest, APressOnAnImageSelectsIt) {
  open(u"<p>a<img>b</p>");
  press(press_at(first(dom::Tag::Img), 0));
  EXPECT_EQ(selection().control(), &first(dom::Tag::Img));
  EXPECT_EQ(view_.selection().type, ViewSelection::Type::Control);
  EXPECT_EQ(view_.selection().control, first(dom::Tag::Img).id());
}

TEST_F(DocumentViewTest, ThePageTellsWhoseEdgeWasPressed) {
  open(u"<table><tr><td>cell</table>");
  ViewMouse mouse = press_at(first(dom::Tag::Td), 0);
  press(mouse);
  EXPECT_EQ(selection().control(), nullptr);
  mouse.edge = first(dom::Tag::Table).id();
  press(mouse);
  EXPECT_EQ(selection().control(), &first(dom::Tag::Table));
}

TEST_F(DocumentViewTest, AHandleSizesInOneStep) {
  open(u"<p>a<img>b</p>");
  Element& image = first(dom::Tag::Img);
  press(press_at(image, 0));
  tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Size, &image));
  ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Size, &image);
  drop.width = 120;
  drop.height = 80;
  tell(drop);
  release(press_at(image, 0));
  EXPECT_EQ(html(), "<P>a<IMG width=\"120\" height=\"80\">b</P>");
  EXPECT_EQ(steps(), 1u);
  document_->tree().journal().undo();
  EXPECT_EQ(html(), "<P>a<IMG>b</P>");
  EXPECT_EQ(selection().control(), &image);
}

TEST_F(DocumentViewTest, TheEdgeOfAColumnIsDraggedWithoutTheSelection) {
  open(u"<p>text</p><table><tr><td>a<td>b</table>");
  Element& cell = first(dom::Tag::Td);
  Element& behind = *dom::as<Element>(cell.next_sibling());
  selection().collapse({text(), 2});
  pump();
  ViewMouse mouse = press_at(*cell.first_child(), 1);
  mouse.held = true;
  press(mouse);
  EXPECT_EQ(selection().focus(), (Boundary{text(), 2}));
  tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Column, &cell));
  ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Column, &cell);
  drop.edge =
      ViewDrag::Edge{.after = behind.id(), .width = 90, .after_width = 30, .shift = 20, .table_width = 200};
  tell(drop);
  release(mouse);
  EXPECT_EQ(html(),
            "<P>text</P><TABLE><TBODY><TR><TD width=\"90\">a</TD><TD "
            "width=\"30\">b</TD></TR></TBODY></TABLE>");
  EXPECT_EQ(steps(), 1u);
  EXPECT_EQ(selection().focus(), (Boundary{text(), 2}));
}

TEST_F(DocumentViewTest, APressOnAColumnsEdgeWithoutADragSetsTheCaret) {
  open(u"<p>text</p><table><tr><td>a<td>b</table>");
  const Element& cell = first(dom::Tag::Td);
  selection().select_control(first(dom::Tag::Table));
  pump();
  ViewMouse mouse = press_at(*cell.first_child(), 1);
  mouse.held = true;
  press(mouse);
  EXPECT_EQ(selection().control(), &first(dom::Tag::Table));
  release(mouse);
  EXPECT_EQ(selection().focus(), (Boundary{cell.first_child(), 1}));
}

TEST_F(DocumentViewTest, AnEdgeWhoseCellsAreGoneIsNotDragged) {
  open(u"<table><tr><td>a<td>b</table>");
  Element& cell = first(dom::Tag::Td);
  tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Column, &cell));
  ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Column, &cell);
  drop.edge = ViewDrag::Edge{.after = cell.next_sibling()->id(), .width = 90, .after_width = 30, .shift = 20};
  dom::remove(*cell.next_sibling());
  pump();
  const std::string before = html();
  tell(drop);
  EXPECT_EQ(html(), before);
  EXPECT_TRUE(shown_.settled());
}

TEST_F(DocumentViewTest, AWidthInPercentIsSizedInPercent) {
  open(u"<p>a</p><table width=\"80%\"><tr><td>a</table>");
  Element& table = first(dom::Tag::Table);
  ViewMouse mouse = press_at(first(dom::Tag::Td), 0);
  mouse.edge = table.id();
  press(mouse);
  tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Size, &table));
  ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Size, &table);
  drop.width = 300;
  drop.width_was = 400;
  tell(drop);
  EXPECT_EQ(table.attribute_or_empty(dom::names::width), u"60%");
}

TEST_F(DocumentViewTest, EscapeEndsADragAndNothingElse) {
  open(u"<p>a<img>b</p>");
  Element& image = first(dom::Tag::Img);
  press(press_at(image, 0));
  tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Size, &image));
  key(u"Escape");
  pump();
  EXPECT_EQ(view_.cancelled_drags(), 1u);
  EXPECT_EQ(selection().control(), &image);
  ViewDrag late = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Size, &image);
  late.width = 5;
  tell(late);
  EXPECT_EQ(html(), "<P>a<IMG>b</P>");
  release(press_at(image, 0));
  key(u"Escape");
  pump();
  EXPECT_EQ(selection().control(), nullptr);
}

TEST_F(DocumentViewTest, AHandlerMayForbidADrag) {
  class Refuses final : public DocumentHandler {
    bool ondragstart() override { return false; }
  } handler;
  open(u"<p>some text</p><p>other</p>");
  document_->connect(&handler);
  selection().set({text(), 0}, {text(), 4});
  pump();
  tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Content));
  EXPECT_EQ(view_.cancelled_drags(), 1u);
  ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Content);
  drop.place = place(*text(1), 0);
  tell(drop);
  EXPECT_EQ(html(), "<P>some text</P><P>other</P>");
  document_->connect(nullptr);
}

TEST_F(DocumentViewTest, APositionedElementMovesInItsMode) {
  open(u"<div style=\"position: absolute; right: 4px\">x</div>");
  Element& box = first(dom::Tag::Div);
  ViewMouse mouse = press_at(box, 0);
  mouse.edge = box.id();
  ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Move, &box);
  drop.left = 30;
  drop.top = -5;
  press(mouse);
  tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Move, &box));
  tell(drop);
  EXPECT_EQ(html(), "<DIV style=\"position: absolute; right: 4px\">x</DIV>");
  document_->execCommand(u"2D-Position", false, u"true");
  tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Move, &box));
  tell(drop);
  EXPECT_EQ(html(), "<DIV style=\"position: absolute; left: 30px; top: -5px\">x</DIV>");
  EXPECT_EQ(steps(), 1u);
}

TEST_F(DocumentViewTest, DroppedContentIsSelectedThere) {
  open(u"<p>one two</p><p>other</p>");
  selection().set({text(), 4}, {text(), 7});
  pump();
  tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Content));
  ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Content);
  drop.place = place(*text(1), 5);
  tell(drop);
  EXPECT_EQ(html(), "<P>one</P><P>other two</P>");
  EXPECT_FALSE(selection().collapsed());
  EXPECT_EQ(steps(), 1u);
}

TEST_F(DocumentViewTest, APressOnSelectedTextKeepsItUntilTheRelease) {
  open(u"<p>one two</p>");
  selection().set({text(), 0}, {text(), 7});
  ViewMouse mouse = press_at(*text(), 3);
  mouse.held = true;
  press(mouse);
  EXPECT_EQ(selection().focus(), (Boundary{text(), 7}));
  mouse.held = false;
  release(mouse);
  EXPECT_EQ(selection().focus(), (Boundary{text(), 3}));
  EXPECT_TRUE(selection().collapsed());
}

TEST_F(DocumentViewTest, WhatAnotherProgramDropsGoesToThePlaceUnderTheMouse) {
  open(u"<p>one</p>");
  ViewDrop drop;
  drop.y = 20 * static_cast<int>(document_->tree().source_index(first(dom::Tag::P)));
  drop.data.text = u"new";
  view_.tell({.seen = {}, .what = drop});
  pump();
  EXPECT_EQ(html(), "<P>newone</P>");
  EXPECT_EQ(steps(), 1u);
}

TEST_F(DocumentViewTest, ADropThatTheViewDoesNotPlaceGoesToTheCaret) {
  open(u"<p>one</p><p>two</p>");
  selection().collapse({text(1), 1});
  pump();
  view_.withhold_answers(true);
  ViewDrop drop;
  drop.data.text = u"new";
  view_.tell({.seen = {}, .what = drop});
  type(u"x");
  pump();
  EXPECT_EQ(html(), "<P>one</P><P>two</P>") << "the view still has time";
  pump(InputQueue::patience + 10);
  EXPECT_EQ(html(), "<P>one</P><P>txwo</P>") << "what was dropped is selected, and typing replaces it";
  EXPECT_EQ(steps(), 2u);
  document_->tree().journal().undo();
  EXPECT_EQ(html(), "<P>one</P><P>tnewwo</P>");
}

TEST_F(DocumentViewTest, ADropAtAPlaceThatIsGoneGoesToTheCaret) {
  open(u"<p>one</p><p>two</p>");
  selection().collapse({text(0), 3});
  pump();
  view_.withhold_answers(true);
  const ViewPlace gone = place(*text(1), 1);
  ViewDrop drop;
  drop.data.text = u"new";
  view_.tell({.seen = {}, .what = drop});
  pump();
  dom::remove(*text(1)->parent());
  view_.tell({.seen = {}, .what = ViewAnswer{QuestionId(1), gone, {}, {}}});
  pump();
  EXPECT_EQ(html(), "<P>onenew</P>");
}

TEST_F(DocumentViewTest, ADropWithNoCaretAtAllIsNoHarm) {
  open(u"<p>one</p>");
  selection().clear();
  view_.withhold_answers(true);
  ViewDrop drop;
  drop.data.text = u"new";
  view_.tell({.seen = {}, .what = drop});
  pump(InputQueue::patience + 10);
  EXPECT_EQ(html(), "<P>one</P>");
  EXPECT_TRUE(shown_.settled());
}

}  // namespace
}  // namespace tvx::browser
