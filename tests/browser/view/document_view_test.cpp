#include "tvx/browser/view/document_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/input/input_queue.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"

namespace tvx::browser {
namespace {

using dom::Boundary;
using dom::Element;

/// A document in a view without a screen, and a clock that runs as the test wants.
class DocumentViewTest : public testing::Test {
 protected:
  void open(std::u16string_view body) {
    document_ = HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><body>" + std::u16string(body)),
                                     u"file:///tmp/test.html");
    document_->finish_loading();
    document_->set_designMode(u"On");
    shown_.show(document_);
    pump();
  }
  void pump(std::int64_t milliseconds = 0) {
    // Each message is a turn of its own.
    for (int i = 0; i < 10; ++i) loop_.pump(0);
    if (milliseconds > 0) loop_.pump(milliseconds);
    for (int i = 0; i < 10; ++i) loop_.pump(0);
  }

  std::string html() const { return to_utf8(dom::inner_html(*document_->body())); }
  editing::Selection& selection() { return document_->editor().selection(); }
  Element& first(dom::Tag tag) { return *document_->first(tag); }
  dom::Node* text(int block = 0) {
    dom::Node* node = document_->body()->first_child();
    while (block-- > 0) node = node->next_sibling();
    return node->first_child();
  }
  ViewPlace place(const dom::Node& node, std::uint32_t offset) const { return {node.id(), offset}; }
  std::size_t steps() { return document_->tree().journal().depth(); }

  void type(std::u16string_view letters) {
    for (const char16_t c : letters) view_.key({.key = {c}, .text = {c}, .key_code = c});
  }
  void key(std::u16string name) { view_.key({.key = std::move(name), .key_code = 1}); }
  /// A native press is on its way; the page hasn't told of it.
  void ticket(int x = 0, int y = 0) { view_.tell({.seen = {}, .what = ViewTicket{.x = x, .y = y}}); }
  ViewMouse press_at(const dom::Node& node, std::uint32_t offset) const {
    ViewMouse mouse;
    mouse.element = node.is_element() ? node.id() : node.parent()->id();
    mouse.place = place(node, offset);
    return mouse;
  }
  void tell(ViewMouse mouse) { view_.tell({.seen = {}, .what = mouse}); }
  void press(ViewMouse mouse) {
    ticket(mouse.x, mouse.y);
    tell(mouse);
    pump();
  }
  void release(ViewMouse mouse) {
    view_.tell({.seen = {}, .what = ViewTicket{.type = ViewTicket::Type::Release}});
    mouse.type = ViewMouse::Type::Release;
    tell(mouse);
    pump();
  }
  ViewDrag drag(ViewDrag::Phase phase, ViewDrag::Type type, const Element* element = nullptr) const {
    ViewDrag told;
    told.phase = phase;
    told.type = type;
    if (element) told.node = element->id();
    return told;
  }
  void tell(const ViewDrag& told) {
    view_.tell({.seen = {}, .what = told});
    pump();
  }

  headless::VirtualTimeLoop loop_;
  headless::View view_{loop_};
  DocumentView shown_{view_, loop_};
  std::shared_ptr<HTMLDocument> document_;
};

// --- down ---

TEST_F(DocumentViewTest, ShowsTheTreeTheSelectionAndTheMode) {
  open(u"<p>one <b>two</b></p>");
  selection().collapse({text(), 2});
  pump();
  EXPECT_EQ(view_.tree().print(), print_mirrored(document_->tree()));
  EXPECT_EQ(view_.selection().type, ViewSelection::Type::Text);
  EXPECT_EQ(view_.selection().focus, place(*text(), 2));
  EXPECT_TRUE(view_.mode().editable);
  shown_.set_editable(false);
  EXPECT_FALSE(view_.mode().editable);
}

TEST_F(DocumentViewTest, GathersTheChangesOfATurnInOnePatch) {
  open(u"<p>one</p>");
  const std::size_t patches = view_.patches();
  for (int i = 0; i < 5; ++i) dom::set_attribute(first(dom::Tag::P), dom::names::id, to_text(i));
  pump();
  EXPECT_EQ(view_.patches(), patches + 1);
}

TEST_F(DocumentViewTest, ASelectionThatTheViewShowsAlreadyIsNotSentAgain) {
  open(u"<p>one</p>");
  selection().collapse({text(), 1});
  pump();
  EXPECT_TRUE(shown_.settled());
  const ViewSelection before = view_.selection();
  view_.select({});  // had it been sent again, this would be overwritten
  selection().collapse({text(), 1});
  pump();
  EXPECT_EQ(view_.selection().type, ViewSelection::Type::None);
  EXPECT_EQ(before.type, ViewSelection::Type::Text);
}

TEST_F(DocumentViewTest, AScriptScrollsToAPointAndToAnElement) {
  open(u"<p>one<p>two");
  document_->viewport()->scroll_to(3, 400);
  EXPECT_TRUE(view_.scrolls().empty()) << "nothing goes down within the call";
  EXPECT_FALSE(shown_.settled());
  pump();
  EXPECT_TRUE(shown_.settled());
  EXPECT_THAT(view_.scrolls(), testing::ElementsAre(headless::View::Scroll{.x = 3, .y = 400}));
  EXPECT_EQ(shown_.facts().scroll_y, 400);
  Element& second = *dom::as<Element>(text(1)->parent());
  document_->viewport()->scroll_into_view(second, false);
  pump();
  ASSERT_EQ(view_.scrolls().size(), 2u);
  EXPECT_EQ(view_.scrolls()[1], (headless::View::Scroll{.element = second.id(), .at_top = false}));
}

TEST_F(DocumentViewTest, AnElementMadeInTheSameTurnIsThereBeforeItScrolls) {
  open(u"<p>one");
  const auto made = document_->tree().create_element(dom::Tag::P);
  dom::insert(*document_->body(), made);
  document_->viewport()->scroll_into_view(*made, true);
  pump();
  EXPECT_NE(view_.tree().find(made->id()), nullptr);
  EXPECT_THAT(view_.scrolls(),
              testing::ElementsAre(headless::View::Scroll{.element = made->id(), .at_top = true}));
  const auto loose = document_->tree().create_element(dom::Tag::P);
  document_->viewport()->scroll_into_view(*loose, true);
  pump();
  EXPECT_EQ(view_.scrolls().size(), 1u) << "what stands nowhere is nowhere to be scrolled to";
  EXPECT_TRUE(shown_.settled());
}

TEST_F(DocumentViewTest, WhatIsAskedForLastIsInSight) {
  open(u"<p>one<p>two");
  selection().collapse({text(), 1});
  document_->viewport()->scroll_to(0, 400);
  pump();
  EXPECT_FALSE(view_.selection().reveal);
  EXPECT_EQ(view_.scrolls().size(), 1u);
  document_->viewport()->scroll_to(0, 500);
  selection().collapse({text(1), 1});
  pump();
  EXPECT_TRUE(view_.selection().reveal);
  EXPECT_EQ(view_.scrolls().size(), 1u);
}

TEST_F(DocumentViewTest, APageThatIsStillComingScrollsWhenItIsThere) {
  std::u16string body;
  for (int i = 0; i < 3000; ++i) body += u"<p>x";
  document_ =
      HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><body>" + body), u"file:///tmp/t.html");
  shown_.show(document_);
  Element& last = *dom::as<Element>(document_->body()->last_child());
  document_->viewport()->scroll_into_view(last, true);
  loop_.pump(0);
  EXPECT_TRUE(view_.scrolls().empty());
  for (int i = 0; i < 100; ++i) loop_.pump(0);
  EXPECT_THAT(view_.scrolls(),
              testing::ElementsAre(headless::View::Scroll{.element = last.id(), .at_top = true}));
}

TEST_F(DocumentViewTest, ASheetsAddressSaidAgainIsSentAgain) {
  open(u"<link rel=stylesheet href=a.css><p>x");
  const std::size_t patches = view_.patches(), depth = steps();
  const auto sheet = dom::style::style_of(document_->tree()).sheets().at(0);
  sheet->set_href(u"a.css");
  pump();
  EXPECT_EQ(view_.patches(), patches + 1);
  EXPECT_EQ(to_utf8(view_.tree().print()), to_utf8(print_mirrored(document_->tree())));
  EXPECT_EQ(steps(), depth) << "no edit";
}

TEST_F(DocumentViewTest, TheModeFollowsTheCommand) {
  open(u"<p>one</p>");
  EXPECT_FALSE(view_.mode().free_placement);
  document_->execCommand(u"2D-Position", false, u"true");
  selection().collapse({text(), 1});
  pump();
  EXPECT_TRUE(view_.mode().free_placement);
}

TEST_F(DocumentViewTest, ANewBaseBeginsThePageAnew) {
  open(u"<p>one</p>");
  const std::size_t pages = view_.pages();
  dom::Ref<Element> base = document_->tree().create_element(dom::Tag::Base);
  dom::set_attribute(*base, dom::names::href, u"http://example.org/folder/");
  dom::insert(*document_->tree().head(), base);
  pump();
  EXPECT_EQ(view_.pages(), pages + 1);
  EXPECT_EQ(view_.base(), u"http://example.org/folder/");
  EXPECT_EQ(view_.tree().print(), print_mirrored(document_->tree()));
}

// --- tickets ---

TEST_F(DocumentViewTest, KeysWaitForThePressBeforeThem) {
  open(u"<p>first</p><p>second</p>");
  selection().collapse({text(), 0});
  ticket();
  type(u"x");
  pump();
  EXPECT_EQ(html(), "<P>first</P><P>second</P>");
  tell(press_at(*text(1), 3));
  pump();
  EXPECT_EQ(html(), "<P>first</P><P>secxond</P>");
}

TEST_F(DocumentViewTest, AfterADeadlineTheLastCaretHolds) {
  open(u"<p>first</p><p>second</p>");
  selection().collapse({text(), 0});
  ticket();
  type(u"x");
  pump(InputQueue::deadline - 10);
  EXPECT_EQ(html(), "<P>first</P><P>second</P>");
  pump(20);
  EXPECT_EQ(html(), "<P>xfirst</P><P>second</P>");
}

TEST_F(DocumentViewTest, ASelectionNamesTheLastPressThatItKnowsOf) {
  open(u"<p>first</p><p>second</p>");
  ViewMouse mouse = press_at(*text(1), 3);
  mouse.number = 1;
  press(mouse);
  EXPECT_EQ(view_.selection().mouse, 1u);
  mouse.number = 2;
  release(mouse);
  EXPECT_EQ(view_.selection().mouse, 2u);
  // A tale that comes too late draws nothing here, but the page is told what holds.
  view_.select({});
  mouse.number = 3;
  mouse.x = 90;
  tell(mouse);
  pump();
  EXPECT_EQ(view_.selection().mouse, 3u);
  EXPECT_EQ(view_.selection().focus, place(*text(1), 3));
}

TEST_F(DocumentViewTest, WhileTheViewIsBusyKeysWaitForIt) {
  open(u"<p>first</p><p>second</p>");
  selection().collapse({text(), 0});
  view_.withhold_answers(true);
  ticket();
  type(u"x");
  pump(InputQueue::deadline * 4);
  EXPECT_EQ(html(), "<P>first</P><P>second</P>");
  tell(press_at(*text(1), 3));
  pump();
  EXPECT_EQ(html(), "<P>first</P><P>secxond</P>");
}

TEST_F(DocumentViewTest, ATaleThatComesTooLateIsDropped) {
  open(u"<p>first</p><p>second</p>");
  selection().collapse({text(), 0});
  ticket();
  pump(InputQueue::deadline + 10);
  tell(press_at(*text(1), 3));
  pump();
  EXPECT_EQ(selection().focus(), (Boundary{text(), 0}));
}

TEST_F(DocumentViewTest, KeysWaitForALineMove) {
  open(u"<p>first</p><p>second</p>");
  selection().collapse({text(), 2});
  key(u"ArrowDown");
  type(u"x");
  pump();
  EXPECT_EQ(html(), "<P>first</P><P>sexcond</P>");
}

TEST_F(DocumentViewTest, AnAnswerThatComesTooLateIsDropped) {
  open(u"<p>first</p><p>second</p>");
  selection().collapse({text(), 2});
  view_.withhold_answers(true);
  key(u"ArrowDown");
  type(u"x");
  pump(InputQueue::patience + 10);
  EXPECT_EQ(html(), "<P>fixrst</P><P>second</P>");
  view_.tell({.seen = {}, .what = ViewAnswer{QuestionId(1), place(*text(1), 2), {}, {}}});
  pump();
  EXPECT_EQ(selection().focus(), (Boundary{text(), 3}));
}

TEST_F(DocumentViewTest, NoKeyIsLostOrOvertaken) {
  open(u"<p>first</p><p>second</p>");
  selection().collapse({text(), 0});
  for (int i = 0; i < 20; ++i) {
    press(press_at(*text(i % 2), i % 2 ? 6 + static_cast<std::uint32_t>(i / 2) : 0));
    type(i % 2 ? u"b" : u"a");
  }
  pump();
  EXPECT_EQ(html(), "<P>aaaaaaaaaafirst</P><P>secondbbbbbbbbbb</P>");
}

TEST_F(DocumentViewTest, APlaceInATreeThatHasChangedIsAskedForAgain) {
  open(u"<p>first</p><p>second</p>");
  selection().collapse({text(), 0});
  ticket();
  // The page told of the press before it had the patch that this edit makes.
  dom::replace_data(static_cast<dom::Text&>(*text(1)), 0, 0, u"longer ");
  ViewMouse old = press_at(*text(1), 3);
  tell(old);
  pump();
  EXPECT_TRUE(shown_.settled());
  EXPECT_EQ(selection().type(), editing::SelectionType::Text);
}

// --- death ---

TEST_F(DocumentViewTest, TheViewsDeathAnswersAllThatWaits) {
  open(u"<p>first</p><p>second</p>");
  selection().collapse({text(), 0});
  view_.withhold_answers(true);
  key(u"ArrowDown");
  ticket();
  type(u"x");
  pump();
  EXPECT_EQ(html(), "<P>first</P><P>second</P>");
  view_.withhold_answers(false);
  view_.die();
  pump();
  EXPECT_EQ(html(), "<P>xfirst</P><P>second</P>");
  EXPECT_EQ(view_.tree().print(), print_mirrored(document_->tree())) << "a new page got the tree";
}

TEST_F(DocumentViewTest, AfterTwoDeathsANoticeStandsThere) {
  open(u"<p>first</p>");
  view_.die();
  pump(100);
  EXPECT_FALSE(shown_.shows_notice());
  view_.die();
  pump(100);
  EXPECT_TRUE(shown_.shows_notice());
  EXPECT_FALSE(view_.notice().empty());
  view_.tell({.seen = {}, .what = ViewReady{}});
  pump();
  EXPECT_FALSE(shown_.shows_notice());
  EXPECT_TRUE(view_.notice().empty());
  EXPECT_EQ(view_.tree().print(), print_mirrored(document_->tree()));
}

TEST_F(DocumentViewTest, DeathsFarApartAreForgiven) {
  open(u"<p>first</p>");
  view_.die();
  pump(11'000);
  view_.die();
  pump(100);
  EXPECT_FALSE(shown_.shows_notice());
}

TEST_F(DocumentViewTest, InputForAnotherDocumentIsDropped) {
  open(u"<p>first</p>");
  const auto before = document_;
  ticket();
  type(u"x");
  open(u"<p>other</p>");
  pump(InputQueue::deadline + 10);
  EXPECT_EQ(to_utf8(dom::inner_html(*before->body())), "<P>first</P>");
  EXPECT_EQ(html(), "<P>other</P>");
}

// --- controls ---

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
  EXPECT_EQ(html(), "<P>one&nbsp;</P><P>othertwo</P>");
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

// --- what is told of the user's changes ---

class UserChanges : public DocumentViewTest, private DocumentHandler {
 protected:
  void start(unsigned seed) {
    random_.seed(seed);
    open(
        u"<p>one two three</p><p>four <img id=i> five</p><table "
        u"border=1><tr><td>a</td><td>b</td></tr></table>"
        u"<p>six seven</p>");
    document_->connect(this);
  }
  void TearDown() override { document_->connect(nullptr); }
  std::size_t pick(std::size_t count) { return random_() % count; }
  dom::Text* any_text() {
    std::vector<dom::Text*> texts;
    dom::Node* const body = document_->body();
    for (dom::Node* node = body; node; node = dom::next_in_order(*node, body)) {
      if (auto* found = dom::as<dom::Text>(node)) texts.push_back(found);
    }
    return texts.empty() ? nullptr : texts[pick(texts.size())];
  }
  void choose_caret() {
    if (dom::Text* at = any_text()) press(press_at(*at, std::uint32_t(pick(at->length() + 1))));
  }
  void choose_stretch() {
    dom::Text* at = any_text();
    if (!at) return;
    selection().set({at, pick(at->length() + 1)}, {at, at->length()});
    pump();
  }
  void drag_whole(ViewDrag::Type type, dom::Tag tag, std::int32_t step) {
    Element* const whole = document_->first(tag);
    if (!whole) return;
    if (type == ViewDrag::Type::Size) selection().select_control(*whole);
    pump();
    tell(drag(ViewDrag::Phase::Begin, type, whole));
    ViewDrag drop = drag(ViewDrag::Phase::Drop, type, whole);
    drop.width = 100 + step;
    drop.height = 50 + step;
    if (const dom::Node* next = whole->next_sibling(); next && type == ViewDrag::Type::Column)
      drop.edge = ViewDrag::Edge{
          .after = next->id(), .width = 100 + step, .after_width = 80, .shift = 1, .table_width = 300};
    tell(drop);
  }
  void drag_text() {
    choose_stretch();
    tell(drag(ViewDrag::Phase::Begin, ViewDrag::Type::Content));
    ViewDrag drop = drag(ViewDrag::Phase::Drop, ViewDrag::Type::Content);
    if (dom::Text* at = any_text()) drop.place = place(*at, std::uint32_t(pick(at->length() + 1)));
    tell(drop);
  }
  void drop_text(ViewDrop::Way way) {
    ViewDrop drop;
    drop.way = way;
    drop.y = 20 * static_cast<int>(document_->tree().source_index(first(dom::Tag::Body)) + pick(4));
    drop.data.text = u"new";
    view_.tell({.seen = {}, .what = drop});
    pump();
  }
  void gesture(std::int32_t step) {
    switch (pick(12)) {
      case 0: choose_caret(); break;
      case 1: choose_stretch(); break;
      case 2: type(u"x"); break;
      case 3: key(u"Backspace"); break;
      case 4: key(u"Enter"); break;
      case 5: key(u"ArrowLeft"); break;
      case 6: key(u"F5"); break;
      case 7: drag_whole(ViewDrag::Type::Size, dom::Tag::Img, step); break;
      case 8: drag_whole(ViewDrag::Type::Column, dom::Tag::Td, step); break;
      case 9: drag_text(); break;
      case 10: drop_text(ViewDrop::Way::Drag); break;
      case 11: drop_text(ViewDrop::Way::MiddlePress); break;
    }
    pump();
  }
  void onuserchange() override { ++told_; }

  std::mt19937 random_;
  int told_ = 0;
};

TEST_F(UserChanges, AreToldWhateverMadeThemAndNothingElseIs) {
  int changes = 0;
  for (unsigned seed = 1; seed <= 20; ++seed) {
    start(seed);
    for (std::int32_t step = 0; step < 40; ++step) {
      const std::string before = html();
      told_ = 0;
      gesture(step);
      EXPECT_EQ(told_ > 0, html() != before) << "seed " << seed << " step " << step << "\n"
                                             << before << "\n"
                                             << html();
      changes += html() != before;
      if (HasFailure()) return;
    }
    document_->connect(nullptr);
  }
  EXPECT_GT(changes, 200);
}

TEST_F(UserChanges, AreNotWhatAHostWritesMeanwhile) {
  start(1);
  dom::set_attribute(first(dom::Tag::Img), dom::names::id, u"other");
  choose_caret();
  EXPECT_EQ(told_, 0);
}

// --- the middle press ---

class MiddlePress : public DocumentViewTest {
 protected:
  ViewDrop brings(std::u16string_view html, std::u16string_view plain, const dom::Tag at = dom::Tag::P) {
    ViewDrop drop;
    drop.way = ViewDrop::Way::MiddlePress;
    drop.y = 20 * static_cast<int>(document_->tree().source_index(first(at)));
    drop.data.html = html;
    drop.data.text = plain;
    return drop;
  }
  void press_middle(const ViewDrop& drop, const dom::Node& node, std::uint32_t offset) {
    ViewMouse mouse = press_at(node, offset);
    mouse.button = MouseButton::Middle;
    view_.tell({.seen = {}, .what = ViewTicket{.button = MouseButton::Middle}});
    view_.tell({.seen = {}, .what = drop});
    tell(mouse);
    pump();
  }
};

TEST_F(MiddlePress, PastesAtItsPlaceAsOneStep) {
  open(u"<p>one</p><p>two</p>");
  selection().collapse({text(1), 1});
  press_middle(brings(u"<i>new</i>", u"plain"), *text(), 0);
  EXPECT_EQ(html(), "<P><I>new</I>one</P><P>two</P>");
  EXPECT_TRUE(selection().collapsed()) << "the caret stands behind it";
  type(u"x");
  pump();
  EXPECT_EQ(html(), "<P><I>newx</I>one</P><P>two</P>");
  document_->tree().journal().undo();
  EXPECT_EQ(steps(), 1u);
  document_->tree().journal().undo();
  EXPECT_EQ(html(), "<P>one</P><P>two</P>");
}

TEST_F(MiddlePress, ReplacesNothingThatWasSelected) {
  open(u"<p>one</p><p>two</p>");
  selection().set({text(1), 0}, {text(1), 3});
  press_middle(brings({}, u"<b>"), *text(), 0);
  EXPECT_EQ(html(), "<P>&lt;b&gt;one</P><P>two</P>");
}

TEST_F(MiddlePress, WithoutTheViewsWordItGoesWhereThePressWent) {
  open(u"<p>one</p><p>two</p>");
  selection().collapse({text(1), 1});
  view_.withhold_answers(true);
  press_middle(brings({}, u"new"), *text(), 2);
  pump(InputQueue::patience + 10);
  EXPECT_EQ(html(), "<P>onnewe</P><P>two</P>");
}

TEST_F(MiddlePress, BringsNoScripts) {
  open(u"<p>one</p>");
  press_middle(brings(u"<b onclick=\"go()\">x</b><script>go()</script>", {}), *text(), 0);
  EXPECT_EQ(html(), "<P><B>x</B>one</P>");
}

TEST_F(MiddlePress, PastesNothingWhereNothingCanBeEdited) {
  open(u"<p>one</p>");
  shown_.set_editable(false);
  press_middle(brings({}, u"new"), *text(), 0);
  EXPECT_EQ(html(), "<P>one</P>");
  shown_.set_editable(true);
  document_->set_designMode(u"Off");
  press_middle(brings({}, u"new"), *text(), 0);
  EXPECT_EQ(html(), "<P>one</P>");
}

// --- composing ---

TEST_F(DocumentViewTest, WhatIsComposedStandsInTheDocument) {
  open(u"<p>abc</p>");
  selection().collapse({text(), 1});
  view_.input({.text = u"", .composing = u"ni", .cursor = 1});
  pump();
  EXPECT_EQ(html(), "<P>anibc</P>");
  EXPECT_EQ(selection().focus(), (Boundary{text(), 2}));
  EXPECT_EQ(view_.selection().composing, place(*text(), 1));
  EXPECT_EQ(view_.selection().composing_length, 2u);
  EXPECT_EQ(view_.input_context().text, u"abc") << "an input method doesn't count what it composes";
  EXPECT_EQ(view_.input_context().cursor, 1u);
  EXPECT_FALSE(document_->tree().journal().can_undo()) << "the step is open";
}

TEST_F(DocumentViewTest, ACommitIsOneStep) {
  open(u"<p>abc</p>");
  selection().collapse({text(), 1});
  for (const std::u16string_view text : {u"n", u"ni", u"nih", u"niha"})
    view_.input({.text = u"", .composing = std::u16string(text), .cursor = 1});
  view_.input({.text = u"\u4F60\u597D"});
  pump();
  EXPECT_EQ(html(), "<P>a\u4F60\u597Dbc</P>");
  EXPECT_EQ(steps(), 1u);
  EXPECT_EQ(view_.selection().composing_length, 0u);
  document_->tree().journal().undo();
  EXPECT_EQ(html(), "<P>abc</P>");
  document_->tree().journal().redo();
  EXPECT_EQ(html(), "<P>a\u4F60\u597Dbc</P>");
}

TEST_F(DocumentViewTest, ACancelledCompositionLeavesNothingAndKeepsTheSelection) {
  open(u"<p>abcd</p>");
  selection().set({text(), 1}, {text(), 3});
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  pump();
  EXPECT_EQ(html(), "<P>axd</P>");
  view_.input({});
  pump();
  EXPECT_EQ(html(), "<P>abcd</P>");
  EXPECT_EQ(selection().range(), (dom::Range{{text(), 1}, {text(), 3}}));
  EXPECT_EQ(steps(), 0u);
}

TEST_F(DocumentViewTest, ComposedTextTakesThePendingLook) {
  open(u"<p>ab</p>");
  selection().collapse({text(), 2});
  document_->execCommand(u"bold", false, u"");
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  view_.input({.text = u"", .composing = u"xy", .cursor = 2});
  pump();
  EXPECT_EQ(html(), "<P>ab<B>xy</B></P>");
  view_.input({.text = u"z"});
  pump();
  EXPECT_EQ(html(), "<P>ab<B>z</B></P>");
}

TEST_F(DocumentViewTest, AHostsChangeDuringACompositionStays) {
  open(u"<p>ab</p><p>other</p>");
  selection().collapse({text(), 2});
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  pump();
  dom::set_attribute(first(dom::Tag::P), dom::names::id, u"host");
  view_.input({.text = u"", .composing = u"xy", .cursor = 2});
  view_.input({.text = u"Z"});
  pump();
  EXPECT_EQ(html(), "<P id=\"host\">abZ</P><P>other</P>");
  while (document_->tree().journal().undo()) {
  }
  EXPECT_EQ(html(), "<P>ab</P><P>other</P>");
}

TEST_F(DocumentViewTest, AKeyEndsACompositionAndTheInputMethodIsTold) {
  open(u"<p>ab</p>");
  selection().collapse({text(), 2});
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  pump();
  const std::uint32_t before = view_.input_context().interruptions;
  key(u"ArrowLeft");
  pump();
  EXPECT_EQ(html(), "<P>abx</P>");
  EXPECT_EQ(view_.input_context().interruptions, before + 1);
  EXPECT_EQ(steps(), 1u);
}

TEST_F(DocumentViewTest, NewContentDuringACompositionIsWhole) {
  open(u"<p>ab</p>");
  selection().collapse({text(), 2});
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  pump();
  document_->load_body(u"<P>new</P>");
  view_.input({.text = u"", .composing = u"xy", .cursor = 1});
  view_.input({.text = u"z"});
  pump();
  EXPECT_THAT(html(), testing::HasSubstr("new"));
  EXPECT_THAT(html(), testing::Not(testing::HasSubstr("xy")));
  EXPECT_FALSE(document_->is_composing());
}

TEST_F(DocumentViewTest, OneKeyDownStandsForAComposition) {
  class Counts final : public DocumentHandler {
   public:
    void onkeydown() override { ++keys; }
    int keys = 0;
  } handler;
  open(u"<p>ab</p>");
  selection().collapse({text(), 2});
  document_->connect(&handler);
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  view_.input({.text = u"", .composing = u"xy", .cursor = 1});
  view_.input({.text = u"z"});
  pump();
  EXPECT_EQ(handler.keys, 1);
  view_.text(u"w");
  pump();
  EXPECT_EQ(handler.keys, 2);
  EXPECT_EQ(html(), "<P>abzw</P>");
  document_->connect(nullptr);
}

TEST_F(DocumentViewTest, AHandlerMayTakeACompositionAway) {
  class Refuses final : public DocumentHandler {
   public:
    explicit Refuses(HTMLDocument& document) : document_(document) {}
    void onkeydown() override { document_.set_event_key_code(0); }

   private:
    HTMLDocument& document_;
  };
  open(u"<p>ab</p>");
  selection().collapse({text(), 2});
  Refuses handler(*document_);
  document_->connect(&handler);
  view_.input({.text = u"", .composing = u"x", .cursor = 1});
  view_.input({.text = u"z"});
  pump();
  EXPECT_EQ(html(), "<P>ab</P>");
  document_->connect(nullptr);
}

TEST_F(DocumentViewTest, AnInputMethodMayReplaceWhatStandsBeforeTheCaret) {
  open(u"<p>teh rest</p>");
  selection().collapse({text(), 3});
  ViewText correction{.text = u"the"};
  correction.replaced_from = -3;
  correction.replaced_length = 3;
  view_.input(correction);
  pump();
  EXPECT_EQ(html(), "<P>the rest</P>");
}

}  // namespace
}  // namespace tvx::browser
