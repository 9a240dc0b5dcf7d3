#include <gmock/gmock.h>

#include "browser/view/document_view_fixture.h"
#include "tvx/browser/input/input_queue.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/range.h"
#include "tvx/dom/style/style_engine.h"

namespace tvx::browser {
namespace {

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

TEST_F(DocumentViewTest, WhereTheScrollBarIsMovedToIsSentBeforeItsTurn) {
  std::u16string body;
  for (int i = 0; i < 30'000; ++i) body += u"<p>x";
  document_ =
      HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><body>" + body), u"file:///tmp/t.html");
  shown_.show(document_);
  loop_.pump(0);
  const auto child = [&](std::size_t at) { return dom::child_at(*document_->body(), at); };
  const auto pump_some = [&] {
    for (int i = 0; i < 5; ++i) loop_.pump(0);
  };
  view_.tell({.seen = {}, .what = ViewScrollBar{0.5}});
  pump_some();
  const headless::View::Scroll middle{.element = child(14'999)->id(), .at_top = true};
  EXPECT_THAT(view_.scrolls(), testing::ElementsAre(middle));
  EXPECT_EQ(view_.tree().find(child(10'000)->id()), nullptr) << "what comes before it waits";
  view_.tell({.seen = {}, .what = ViewScrollBar{0.5, child(15'100)->id()}});
  pump_some();
  EXPECT_EQ(view_.scrolls().size(), 1u) << "near enough";
  view_.tell({.seen = {}, .what = ViewScrollBar{0.5, child(10)->id()}});
  pump_some();
  EXPECT_THAT(view_.scrolls(), testing::ElementsAre(middle, middle))
      << "another part of the document is there";
  view_.tell({.seen = {}, .what = ViewScrollBar{1}});
  pump_some();
  const headless::View::Scroll end{.element = child(29'999)->id(), .at_top = false};
  EXPECT_THAT(view_.scrolls(), testing::ElementsAre(middle, middle, end));
  EXPECT_FALSE(shown_.settled()) << "the rest is still to come";
  for (int i = 0; i < 1000 && !shown_.settled(); ++i) loop_.pump(0);
  EXPECT_EQ(view_.tree().print(), print_mirrored(document_->tree()));
}

TEST_F(DocumentViewTest, AsLongAsAPageIsThereUpToSomewhereTheScrollBarIsRightThere) {
  std::u16string body;
  for (int i = 0; i < 30'000; ++i) body += u"<p>x";
  document_ =
      HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><body>" + body), u"file:///tmp/t.html");
  shown_.show(document_);
  loop_.pump(0);
  view_.tell({.seen = {}, .what = ViewScrollBar{0.5, document_->body()->first_child()->id()}});
  for (int i = 0; i < 5; ++i) loop_.pump(0);
  EXPECT_TRUE(view_.scrolls().empty()) << "some parts are higher than others: what is there is no mistake";
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

TEST_F(DocumentViewTest, PicturesOnTheirWayAreShownAsSuch) {
  open(u"<p><img src=a.png><img src=b.png><img src=a.png></p>");
  const auto images = dom::collection_of(document_->tree(), dom::CollectionKind::Images);
  document_->set_under_way({u"a.png"});
  pump();
  EXPECT_THAT(view_.mode().under_way, testing::ElementsAre(images->item(0)->id(), images->item(2)->id()));
  document_->set_under_way({});
  pump();
  EXPECT_TRUE(view_.mode().under_way.empty());
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
  // A report that comes too late draws nothing here, but the page is told what holds.
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

/// The view is found lost in the document, so many times and as far apart as that takes.
#define EXPECT_LOST_IN_IT(times)                                    \
  for (int i = 0; i < (times); ++i) {                               \
    EXPECT_FALSE(shown_.shows_notice()) << i;                       \
    pump(60'000);                                                   \
    view_.tell({.seen = {}, .what = ViewDied{.of_silence = true}}); \
    pump();                                                         \
  }

TEST_F(DocumentViewTest, AContentThatIsNeverShownWholeIsTriedThreeTimes) {
  view_.withhold_answers(true);
  open(u"<p>first</p>");
  EXPECT_LOST_IN_IT(3);
  EXPECT_TRUE(shown_.shows_notice());
  view_.tell({.seen = {}, .what = ViewReady{}});
  pump();
  EXPECT_LOST_IN_IT(3);
  EXPECT_TRUE(shown_.shows_notice()) << "as often when the user asks for it";
}

TEST_F(DocumentViewTest, AContentOfWhichAPartIsShownEachTimeIsTriedThreeTimes) {
  std::u16string page;
  for (int i = 0; i < 5000; ++i) page += u"<p>first</p>";
  view_.withhold_answers(true);
  open(page);
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(shown_.shows_notice()) << i;
    pump(60'000);
    view_.withhold_answers(false);
    view_.tell({.seen = {}, .what = ViewDied{.of_silence = true}});
    const std::size_t before = view_.patches();
    for (int turn = 0; turn < 20 && view_.patches() == before; ++turn) loop_.pump(0);
    view_.withhold_answers(true);
    pump();
  }
  EXPECT_TRUE(shown_.shows_notice());
}

TEST_F(DocumentViewTest, AContentThatWasShownWholeIsNotToBlame) {
  open(u"<p>first</p>");
  for (int i = 0; i < 12; ++i) {
    pump(60'000);
    view_.tell({.seen = {}, .what = ViewDied{.of_silence = true}});
    pump();
    ASSERT_FALSE(shown_.shows_notice()) << i;
  }
}

TEST_F(DocumentViewTest, TheNoticeGoesWhenAnotherDocumentComes) {
  view_.withhold_answers(true);
  open(u"<p>first</p>");
  EXPECT_LOST_IN_IT(3);
  EXPECT_FALSE(view_.notice().empty());
  view_.withhold_answers(false);
  open(u"<p>second</p>");
  EXPECT_TRUE(view_.notice().empty());
  EXPECT_FALSE(shown_.shows_notice());
  EXPECT_EQ(view_.tree().print(), print_mirrored(document_->tree()));
}

TEST_F(DocumentViewTest, TheNoticeGoesWhenTheContentChanges) {
  view_.withhold_answers(true);
  open(u"<p>first</p>");
  EXPECT_LOST_IN_IT(3);
  view_.withhold_answers(false);
  dom::clear(*document_->body());
  EXPECT_FALSE(view_.notice().empty()) << "not within the change";
  pump();
  EXPECT_TRUE(view_.notice().empty());
  EXPECT_EQ(view_.tree().print(), print_mirrored(document_->tree()));
}

TEST_F(DocumentViewTest, TheBorderOfAnElementIsNoNewContent) {
  view_.withhold_answers(true);
  open(u"<p>first</p>");
  EXPECT_LOST_IN_IT(3);
  const dom::MutationScope scope(document_->tree(), dom::MutationKind::Overlay);
  dom::set_attribute(first(dom::Tag::P), dom::names::style, u"border: 1px solid");
  pump(20'000);
  EXPECT_TRUE(shown_.shows_notice());
}

TEST_F(DocumentViewTest, ChangesWithoutEndAreNotTriedWithoutEnd) {
  open(u"<p>first</p>");
  std::size_t pages = 0;
  for (int i = 0; i < 50; ++i) {
    const std::size_t before = view_.pages();
    dom::insert(*document_->body(), document_->tree().create_text(u"more"));
    pump();
    view_.withhold_answers(true);
    view_.die();
    pump();
    if (!shown_.shows_notice()) view_.die();
    pump();
    pages += view_.pages() - before;
  }
  EXPECT_TRUE(shown_.shows_notice());
  EXPECT_LT(pages, 12);
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

// --- what is shown in another way ---

TEST_F(DocumentViewTest, AHiddenFieldIsSentAsAButtonWithWhatItSends) {
  open(u"<p><input type=HIDDEN name=key value=7 disabled>");
  const auto printed = [this] { return to_utf8(view_.tree().print()); };
  EXPECT_NE(printed().find("<input name=\"key\" tvx-hidden=\"\" type=\"button\" value=\"key = 7\">"),
            std::string::npos)
      << printed();
  EXPECT_EQ(html(), "<P><INPUT type=\"HIDDEN\" name=\"key\" value=\"7\" disabled=\"\"></P>");
  dom::set_attribute(first(dom::Tag::Input), dom::names::value, u"8");
  pump();
  EXPECT_NE(printed().find("value=\"key = 8\""), std::string::npos) << printed();
  EXPECT_EQ(view_.tree().print(), print_mirrored(document_->tree()));
}

TEST_F(DocumentViewTest, AHiddenFieldThatBecomesAnotherIsShownAsThat) {
  open(u"<p><input type=hidden name=key value=7>");
  dom::set_attribute(first(dom::Tag::Input), dom::names::type, u"text");
  pump();
  EXPECT_EQ(view_.tree().print(), print_mirrored(document_->tree()));
  EXPECT_EQ(view_.tree().print().find(u"tvx-hidden"), std::u16string::npos);
  dom::set_attribute(first(dom::Tag::Input), dom::names::type, u"hidden");
  pump();
  EXPECT_EQ(view_.tree().print(), print_mirrored(document_->tree()));
  EXPECT_NE(view_.tree().print().find(u"tvx-hidden"), std::u16string::npos);
}

TEST_F(DocumentViewTest, AHiddenFieldWithoutANameIsCalledByItsIdOrByItsType) {
  open(u"<p><input type=hidden id=Hidden1><input type=hidden>");
  EXPECT_NE(view_.tree().print().find(u"value=\"Hidden1\""), std::u16string::npos);
  EXPECT_NE(view_.tree().print().find(u"value=\"hidden\""), std::u16string::npos);
}

// --- pictures ---

TEST_F(DocumentViewTest, APictureHasTheSizeThatTheViewTells) {
  open(u"<p><img src='http://example.com/a.png'>");
  Element& image = first(dom::Tag::Img);
  EXPECT_FALSE(document_->natural_size(image));
  const auto told = [&](int width, int height) {
    view_.tell({.seen = {}, .what = ViewPicture{image.id(), width, height}});
    pump();
  };
  told(640, 480);
  EXPECT_EQ(document_->natural_size(image), (platform::PictureSize{640, 480}));
  dom::set_attribute(image, dom::names::src, u"http://example.com/b.png");
  EXPECT_FALSE(document_->natural_size(image)) << "that is another picture";
  told(20, 10);
  EXPECT_EQ(document_->natural_size(image), (platform::PictureSize{20, 10}));
  told(0, 0);
  EXPECT_FALSE(document_->natural_size(image)) << "it couldn't be had";
}

TEST_F(DocumentViewTest, APictureThatHasLeftTheDocumentIsNoTrouble) {
  open(u"<p><img src='http://example.com/a.png'>");
  const dom::NodeId id = first(dom::Tag::Img).id();
  document_->load_body(u"<p>text");
  pump();
  view_.tell({.seen = {}, .what = ViewPicture{id, 640, 480}});
  pump();
  EXPECT_EQ(html(), "<P>text</P>");
}

}  // namespace
}  // namespace tvx::browser
