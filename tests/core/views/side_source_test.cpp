#include "tvx/core/views/side_source.h"

#include <random>

#include "core/control_fixture.h"
#include "tvx/core/actions.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"

namespace tvx::core {
namespace {

class SideSourceOfPage : public Control {
 protected:
  void start_beside(std::u16string_view html) {
    start_with(html);
    side().set_wanted(true);
    pause();
    container.clear_changed();
  }
  SideSource& side() { return control->side_source(); }
  platform::TextBox& box() { return side().box().TextBox1(); }
  std::u16string source() {
    std::u16string text = box().Text();
    std::erase(text, u'\r');
    return text;
  }
  /// Longer than both sides wait for one another.
  void pause() {
    const std::int64_t end = loop.now() + 1000;
    while (loop.now() < end) loop.pump(50);
  }
  void turn_to_page() {
    side().box().plain_box().set_shown(false);  // which takes the keys from it
    side().box().plain_box().set_shown(true);
    control->WBrowser_GotFocus();
  }
  void enter_source() {
    box().SetFocus();
    ASSERT_TRUE(side().in_hand());
  }
  /// Types in the source, after the first occurrence of a text in it.
  void type_after(std::u16string_view text, std::u16string_view typed) {
    enter_source();
    const std::size_t at = source().find(text);
    ASSERT_NE(at, std::u16string::npos);
    box().select(at + text.size(), 0);
    for (const char16_t c : typed)
      side().box().plain_box().key(std::int16_t(c), 0, std::u16string(1, c), true);
  }
  void box_key(int key_code, int shift = 0) {
    side().box().plain_box().key(std::int16_t(key_code), std::int16_t(shift), {}, true);
  }
  dom::Journal& journal() { return control->DOM()->tree().journal(); }
  static constexpr int control_key = 2;
};

TEST_F(SideSourceOfPage, ItShowsWhatTheCodeViewWould) {
  start_beside(u"<table><tr><td>x</td></tr></table>");
  const std::u16string beside = box().Text();
  EXPECT_TRUE(side().box().Visible());
  EXPECT_FALSE(control->InCodeView());
  control->show_Code();
  EXPECT_EQ(control->txtCode().Text(), beside);
}

TEST_F(SideSourceOfPage, ItFollowsThePageWhereThePageHasChanged) {
  start_beside(u"<P>one</P><P>two</P>");
  box().select(source().find(u"two"), 3);
  load(u"<P>one[]</P><P>two</P>");
  key(u"x", 'X');
  EXPECT_EQ(source().find(u"onex"), std::u16string::npos) << "not while keys are still typed";
  pause();
  EXPECT_NE(source().find(u"onex"), std::u16string::npos);
  EXPECT_FALSE(side().waits());
}

TEST_F(SideSourceOfPage, ThePageFollowsWhatIsTypedAfterAPause) {
  start_beside(u"<P>one</P><P>two</P>");
  const std::size_t depth = journal().depth();
  type_after(u"on", u"ly on");
  EXPECT_EQ(body(), u"<P>one</P><P>two</P>");
  EXPECT_TRUE(side().waits());
  pause();
  EXPECT_EQ(body(), u"<P>only one</P><P>two</P>");
  EXPECT_FALSE(side().waits());
  EXPECT_EQ(journal().depth(), depth + 1) << "one step";
}

TEST_F(SideSourceOfPage, WhatIsTypedCountsAsAChangeAtOnce) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u"x");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_THAT(container.changed(), testing::Contains(u"DocumentHTML"));
}

TEST_F(SideSourceOfPage, NodesWhereNothingWasTypedStay) {
  start_beside(u"<P>one</P><P>two</P>");
  const dom::Node* first = control->DOM()->body()->first_child();
  const dom::Node* second = first->next_sibling();
  type_after(u"two", u"x");
  pause();
  EXPECT_EQ(control->DOM()->body()->first_child(), first);
  EXPECT_EQ(first->next_sibling(), second);
  EXPECT_EQ(body(), u"<P>one</P><P>twox</P>");
}

TEST_F(SideSourceOfPage, ATagThatIsBeingTypedWaits) {
  start_beside(u"<P>one two</P>");
  type_after(u"one ", u"<b");
  pause();
  EXPECT_EQ(body(), u"<P>one two</P>");
  EXPECT_TRUE(side().waits());
  type_after(u"<b", u">");
  pause();
  EXPECT_EQ(body(), u"<P>one two</P>") << "without an end it would go on into all that follows";
  type_after(u"<b>two", u"</b>");
  pause();
  EXPECT_EQ(body(), u"<P>one <B>two</B></P>");
}

TEST_F(SideSourceOfPage, ThePlaceAndTheLinesOfWhoTypesStay) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u"\n\n   x");
  const std::u16string typed = source();
  const std::size_t place = box().SelStart();
  pause();
  EXPECT_EQ(body(), u"<P>one\n\n   x</P>") << "as the code view would put it in";
  EXPECT_EQ(source(), typed);
  EXPECT_EQ(box().SelStart(), place);
}

TEST_F(SideSourceOfPage, EditsWithDrawnLinesOfOnesOwnAddUp) {
  start_beside(u"<DIV><P>one</P></DIV>");
  type_after(u"<DIV>\n", u"\n\n");
  pause();
  type_after(u"one", u" two");
  pause();
  type_after(u"two", u" three");
  pause();
  EXPECT_EQ(body(), u"<DIV><P>one two three</P></DIV>");
}

TEST_F(SideSourceOfPage, WhoAsksForTheDocumentGetsWhatIsTyped) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u" two");
  EXPECT_EQ(control->DocumentHTML(), u"<P>one two</P>");
  type_after(u"two", u" three");
  EXPECT_NE(control->allHTML().find(u"one two three"), std::u16string::npos);
}

TEST_F(SideSourceOfPage, WhatIsSavedHasWhatIsTypedEvenWithATagThatDoesntFit) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u" <b>two");
  control->Save_document(path("saved.html"), false);
  EXPECT_NE(bytes_of(folder / "saved.html").find("<B>two</B>"), std::string::npos);
}

TEST_F(SideSourceOfPage, ACommandComesAfterWhatIsTyped) {
  start_beside(u"<P>one</P>");
  load(u"<P>[one]</P>");
  pause();
  type_after(u"one", u" two");
  control->bold_document();
  EXPECT_NE(body().find(u"two"), std::u16string::npos);
}

TEST_F(SideSourceOfPage, TurningToThePageTakesWhatIsTypedAndShowsWhatTheParserMadeOfIt) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u" <b>two");
  turn_to_page();
  EXPECT_EQ(body(), u"<P>one <B>two</B></P>");
  EXPECT_NE(source().find(u"</B>"), std::u16string::npos);
  EXPECT_FALSE(side().in_hand());
}

// --- undo ---

TEST_F(SideSourceOfPage, UndoInTheSourceTakesTheDocumentsStepBackAndBothFollow) {
  start_beside(u"<P>one</P>");
  const std::u16string before = source();
  type_after(u"one", u" two");
  pause();
  box_key('Z', control_key);
  EXPECT_EQ(body(), u"<P>one</P>");
  EXPECT_EQ(source(), before);
  box_key('Y', control_key);
  EXPECT_EQ(body(), u"<P>one two</P>");
  EXPECT_NE(source().find(u"one two"), std::u16string::npos);
}

TEST_F(SideSourceOfPage, WhatWaitsIsTakenBackInTheBoxFirst) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u" two");
  pause();
  type_after(u"two", u"<b");
  pause();
  box_key('Z', control_key);
  EXPECT_EQ(body(), u"<P>one two</P>");
  EXPECT_EQ(source().find(u"<b"), std::u16string::npos);
  pause();
  EXPECT_FALSE(side().waits());
  box_key('Z', control_key);
  EXPECT_EQ(body(), u"<P>one</P>");
}

TEST_F(SideSourceOfPage, UndoInThePageTakesBackWhatWasTypedInTheSource) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u" two");
  turn_to_page();
  control->undo_document();
  pause();
  EXPECT_EQ(body(), u"<P>one</P>");
  EXPECT_EQ(source().find(u"two"), std::u16string::npos);
}

TEST_F(SideSourceOfPage, AStepOfThePageIsTakenBackFromTheSource) {
  start_beside(u"<P>one</P>");
  load(u"<P>one[]</P>");
  key(u"x", 'X');
  pause();
  enter_source();
  box_key('Z', control_key);
  EXPECT_EQ(body(), u"<P>one</P>");
  EXPECT_EQ(source().find(u"onex"), std::u16string::npos);
}

TEST_F(SideSourceOfPage, WhatWasTypedInThePageIsOneRunAlsoWhereTheSourceFollowsMeanwhile) {
  start_beside(u"<P>one</P>");
  load(u"<P>one[]</P>");
  const std::size_t depth = journal().depth();
  key(u"x", 'X');
  for (int i = 0; i < 8; ++i) loop.pump(50);
  key(u"y", 'Y');
  pause();
  EXPECT_EQ(journal().depth(), depth + 1);
}

TEST_F(SideSourceOfPage, RedoIsNotLostWhereTheSourceFollows) {
  start_beside(u"<P>one</P>");
  load(u"<P>one[]</P>");
  key(u"x", 'X');
  control->undo_document();
  pause();
  EXPECT_TRUE(journal().can_redo());
}

// --- both at once ---

TEST_F(SideSourceOfPage, AHostThatChangesAnotherPlaceLeavesWhatIsTyped) {
  start_beside(u"<P>one</P><P>two</P>");
  type_after(u"one", u" <b");
  dom::replace_data(*dom::as<dom::Text>(control->DOM()->body()->last_child()->first_child()), 0, 3,
                    u"changed");
  pause();
  EXPECT_NE(source().find(u"one <b"), std::u16string::npos);
  EXPECT_NE(source().find(u"changed"), std::u16string::npos);
  type_after(u"one <b", u">x</b>");
  pause();
  EXPECT_EQ(body(), u"<P>one <B>x</B></P><P>changed</P>");
}

TEST_F(SideSourceOfPage, WhereBothChangedTheSamePlaceTheDocumentCounts) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u" <b");
  dom::replace_data(*dom::as<dom::Text>(control->DOM()->body()->first_child()->first_child()), 0, 3,
                    u"changed");
  pause();
  EXPECT_EQ(body(), u"<P>changed</P>");
  EXPECT_EQ(source().find(u"<b"), std::u16string::npos);
  EXPECT_FALSE(side().waits());
}

// --- carets ---

TEST_F(SideSourceOfPage, TheSourceShowsWhereThePagesCaretIs) {
  start_beside(u"<P>one</P><P>two</P>");
  load(u"<P>one</P><P>tw[]o</P>");
  pause();
  EXPECT_EQ(box().SelStart(), source().find(u"two") + 2);
}

TEST_F(SideSourceOfPage, ThePagesCaretFollowsThatOfTheSource) {
  start_beside(u"<P>one</P><P>two</P>");
  enter_source();
  box().select(source().find(u"two") + 2, 0);
  pause();
  EXPECT_EQ(marked(), u"<P>one</P><P>tw[]o</P>");
}

// --- which side is meant ---

TEST_F(SideSourceOfPage, WhatIsFoundIsInTheSideInHand) {
  start_beside(u"<P title=sought>sought</P>");
  EXPECT_EQ(control->FindText(u"sought", 0), 1);
  enter_source();
  EXPECT_EQ(control->FindText(u"sought", 0), 2);
  EXPECT_EQ(control->ReplaceAllText(u"found"), 2);
  pause();
  EXPECT_EQ(body(), u"<P title=\"found\">found</P>");
  turn_to_page();
  EXPECT_EQ(control->FindText(u"found", 0), 1);
}

TEST_F(SideSourceOfPage, OperationsOfTheClipboardActOnTheSideInHand) {
  start_beside(u"<P>one</P>");
  enter_source();
  box().select(source().find(u"one"), 3);
  ASSERT_TRUE(control->actions().act(u"Copy"));
  EXPECT_EQ(clipboard.GetText(), u"one");
  ASSERT_TRUE(control->actions().act(u"Cut"));
  ASSERT_TRUE(control->actions().act(u"SelectAll"));
  EXPECT_EQ(box().SelLength(), box().length());
  pause();
  EXPECT_EQ(body().find(u"one"), std::u16string::npos);
  ASSERT_TRUE(control->actions().act(u"Undo"));
  EXPECT_NE(body().find(u"one"), std::u16string::npos);
}

// --- when it shows ---

TEST_F(SideSourceOfPage, TheCodeViewTakesItsPlaceAndHasWhatWasTyped) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u" two");
  control->show_Code();
  EXPECT_FALSE(side().shows());
  EXPECT_FALSE(side().box().Visible());
  EXPECT_NE(control->txtCode().Text().find(u"one two"), std::u16string::npos);
  control->show_Code();
  EXPECT_TRUE(side().shows());
  EXPECT_NE(source().find(u"one two"), std::u16string::npos);
}

TEST_F(SideSourceOfPage, AnotherDocumentIsShown) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u" two");
  control->set_DocumentHTML(u"<P>other</P>");
  pause();
  EXPECT_NE(source().find(u"other"), std::u16string::npos);
  EXPECT_EQ(source().find(u"two"), std::u16string::npos);
  EXPECT_EQ(body(), u"<P>other</P>");
}

TEST_F(SideSourceOfPage, ADocumentThatMayNotBeEditedIsOnlyShown) {
  start_beside(u"<P>one</P>");
  control->set_EditorEnabled(false);
  EXPECT_TRUE(box().Locked());
  type_after(u"one", u"x");
  pause();
  EXPECT_EQ(body(), u"<P>one</P>");
  control->set_EditorEnabled(true);
  EXPECT_FALSE(box().Locked());
}

TEST_F(SideSourceOfPage, TheEndOfItTakesWhatIsTyped) {
  start_beside(u"<P>one</P>");
  type_after(u"one", u" two");
  side().set_wanted(false);
  EXPECT_EQ(body(), u"<P>one two</P>");
  EXPECT_FALSE(side().box().Visible());
  pause();
}

TEST_F(SideSourceOfPage, ABorderOfTheCurrentElementIsInNeither) {
  start_beside(u"<P>one</P>");
  control->set_HighlightDOMSelectionOnClick(true);
  control->DOM()->mouse_press(at(element(dom::Tag::P)));
  ASSERT_NE(body().find(u"border"), std::u16string::npos);
  box().select(0, 0);
  dom::replace_data(*dom::as<dom::Text>(element(dom::Tag::P)->first_child()), 0, 0, u"x");
  pause();
  ASSERT_NE(source().find(u"xone"), std::u16string::npos);
  EXPECT_EQ(source().find(u"border"), std::u16string::npos);
  EXPECT_NE(body().find(u"border"), std::u16string::npos) << "it is there for the eye all the same";
  type_after(u"ne", u"z");
  pause();
  EXPECT_EQ(control->DocumentHTML(), u"<P>xonez</P>");
}

// --- anything ---

// Letters, tags that fit, new lines and letters taken away, here and there.
TEST_F(SideSourceOfPage, WhateverIsTypedInEitherBothSayTheSameAndAllOfItIsTakenBack) {
  std::mt19937 random(20261122);
  const auto number = [&](std::size_t below) {
    return std::size_t(random() % std::max<std::size_t>(below, 1));
  };
  constexpr std::u16string_view pieces[] = {u"x", u"<B>y</B>", u"\n", u" ", u"<P>z</P>", u"&amp;", u"<BR>"};
  for (int round = 0; round < 20; ++round) {
    start_beside(u"<H1>One</H1><P>two <I>three</I> four</P><UL><LI>five</LI><LI>six</LI></UL><P>seven</P>");
    const std::u16string before = body();
    const std::size_t depth = journal().depth();
    for (int edit = 0; edit < 12; ++edit) {
      if (number(2) == 0) {
        turn_to_page();
        auto& selection = control->DOM()->editor().selection();
        selection.collapse(boundary_at(*control->DOM()->body(), {number(30), true}));
        number(4) == 0 ? key(u"Backspace", 8) : key(u"k", 'K');
      } else {
        enter_source();
        const std::u16string text = source();
        // Beside a letter, so that no tag is cut.
        const std::size_t letter = text.find_first_of(u"abcdefghijklmnopqrstuvwxyz", number(text.size()));
        if (letter == text.npos || text.rfind(u'<', letter) > text.rfind(u'>', letter)) continue;
        box().select(letter, number(3) == 0 ? 1 : 0);
        box().set_SelText(pieces[number(std::size(pieces))]);
      }
      if (number(3) > 0) pause();
    }
    turn_to_page();
    pause();
    const auto formatted = source::SourceText::formatted(std::make_shared<const std::u16string>(body()));
    ASSERT_EQ(box().Text(), *formatted.code()) << "round " << round;
    const std::u16string after = body();
    while (journal().depth() > depth) control->undo_document();
    EXPECT_EQ(body(), before);
    while (journal().can_redo()) control->redo_document();
    EXPECT_EQ(body(), after);
  }
}

}  // namespace
}  // namespace tvx::core
