#include "tvx/core/search/finder.h"

#include <map>

#include "core/control_fixture.h"
#include "core/marked_texts.h"
#include "support/failures.h"
#include "tvx/browser/html_document.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"

namespace tvx::core {

using testing::ElementsAre;
using testing::IsEmpty;

/// A control whose document is shown by somebody who writes the marks down.
class FinderTest : public Control {
 protected:
  struct Display final : browser::Viewport, browser::MarkDisplay {
    void scroll_to(int, int) override {}
    void scroll_into_view(dom::Element&, bool) override {}
    void mark(browser::MarkKind kind, const dom::Text& text,
              std::vector<browser::MarkedStretch> stretches) override {
      marks[kind][&text] = std::move(stretches);
      ++told;
    }
    void clear_marks(browser::MarkKind kind) override { marks[kind].clear(); }
    std::map<browser::MarkKind, std::map<const dom::Text*, std::vector<browser::MarkedStretch>>> marks;
    int told = 0;
  };
  void load(std::u16string_view html) {
    start_with(html);
    control->DOM()->set_viewport(&display);
  }
  ~FinderTest() override {
    if (control && control->DOM()) control->DOM()->set_viewport(nullptr);
  }
  dom::Document& tree() { return control->DOM()->tree(); }
  std::string html() { return to_utf8(dom::inner_html(*tree().body())); }
  editing::Selection& selection() { return control->DOM()->editor().selection(); }
  std::string selected() { return to_utf8(dom::inner_text(selection().range())); }
  void caret_in(std::size_t paragraph, Offset at) {
    selection().collapse({dom::child_at(*tree().body(), paragraph)->first_child(), at});
  }
  /// The marked texts, in their order.
  std::vector<std::string> marked(browser::MarkKind kind) {
    return marked_texts(*tree().body(), [&](const dom::Text& text) { return display.marks[kind][&text]; });
  }
  std::vector<std::string> hits() { return marked(browser::MarkKind::Hit); }
  std::vector<std::string> present() { return marked(browser::MarkKind::PresentHit); }
  platform::TextBox& box() { return control->txtCode().TextBox1(); }
  source::PlainTextBox& plain() { return control->txtCode().plain_box(); }
  void pause() {
    for (int i = 0; i < 3; ++i) loop.pump(300);
  }

  Display display;
};

TEST_F(FinderTest, AllHitsAreMarkedAndTheFirstIsSelected) {
  load(u"<P>one two</P><P>t<B>w</B>o three</P>");
  EXPECT_EQ(control->FindText(u"TWO", 0), 2);
  EXPECT_EQ(control->FindPosition(), 1);
  EXPECT_EQ(selected(), "two");
  EXPECT_THAT(present(), ElementsAre("two"));
  EXPECT_THAT(hits(), ElementsAre("t", "w", "o"));
  EXPECT_EQ(html(), "<P>one two</P><P>t<B>w</B>o three</P>") << "marks are no part of the tree";
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(FinderTest, TheSearchBeginsAtTheCaretAndGoesRound) {
  load(u"<P>a x</P><P>b x</P><P>c x</P>");
  caret_in(1, 0);
  EXPECT_EQ(control->FindText(u"x", 0), 3);
  EXPECT_EQ(control->FindPosition(), 2);
  EXPECT_EQ(control->FindNext(), 3);
  EXPECT_EQ(control->FindNext(), 1);
  EXPECT_EQ(control->FindPrevious(), 3);
  EXPECT_EQ(control->FindPrevious(), 2);
  caret_in(2, 0);
  EXPECT_EQ(control->FindPosition(), 0);
  EXPECT_EQ(control->FindPrevious(), 2) << "from where the caret stands";
}

TEST_F(FinderTest, MoreLettersGoOnFromWhereTheSearchBegan) {
  load(u"<P>tea</P><P>ten</P><P>tea</P>");
  caret_in(1, 0);
  control->FindText(u"te", 0);
  EXPECT_EQ(control->FindPosition(), 2);
  control->FindText(u"tea", 0);
  EXPECT_EQ(control->FindPosition(), 2) << "the third paragraph's";
  control->FindText(u"te", 0);
  EXPECT_EQ(control->FindPosition(), 2) << "the second paragraph's again";
}

TEST_F(FinderTest, OptionsCount) {
  load(u"<P>One bone one</P>");
  EXPECT_EQ(control->FindText(u"one", 0), 3);
  EXPECT_EQ(control->FindText(u"one", find_match_case), 2);
  EXPECT_EQ(control->FindText(u"one", find_whole_words), 2);
  EXPECT_EQ(control->FindText(u"\\bo\\w", find_regular_expression), 2);
  EXPECT_EQ(control->FindText(u"none", 0), 0);
  EXPECT_THAT(hits(), IsEmpty());
  EXPECT_EQ(control->FindNext(), 0);
}

TEST_F(FinderTest, WhatIsNoExpressionIsSaidAndNothingIsMarked) {
  load(u"<P>a(b</P>");
  EXPECT_EQ(control->FindText(u"a", 0), 1);
  EXPECT_EQ(words_of_failure([&] { control->FindText(u"(", find_regular_expression); }),
            "5 This is no regular expression");
  EXPECT_EQ(control->FindCount(), 0);
  EXPECT_THAT(present(), IsEmpty());
  EXPECT_EQ(control->FindText(u"(", 0), 1);
}

TEST_F(FinderTest, ASelectionCanBeAllThatIsSearched) {
  load(u"<P>x</P><P>x y x</P><P>x</P>");
  dom::Node& middle = *dom::child_at(*tree().body(), 1);
  selection().set({middle.first_child(), 0}, {middle.first_child(), 5});
  EXPECT_EQ(control->FindText(u"x", find_in_selection), 2);
  EXPECT_EQ(control->FindNext(), 2);
  EXPECT_EQ(control->FindNext(), 1) << "the next one is within the selection too";
  EXPECT_EQ(control->ReplaceAllText(u"longer"), 2);
  EXPECT_EQ(html(), "<P>x</P><P>longer y longer</P><P>x</P>");
}

TEST_F(FinderTest, AHitIsReplacedAndTheNextOneSelected) {
  load(u"<P>one two one</P>");
  control->FindText(u"one", 0);
  EXPECT_TRUE(control->ReplaceText(u"1"));
  EXPECT_EQ(html(), "<P>1 two one</P>");
  EXPECT_EQ(selected(), "one");
  EXPECT_EQ(control->FindPosition(), 1);
  EXPECT_TRUE(control->IsDirty());
  control->undo_document();
  EXPECT_EQ(html(), "<P>one two one</P>");
}

TEST_F(FinderTest, WhatIsPutInIsNotReplacedAgain) {
  load(u"<P>a a</P>");
  control->FindText(u"a", 0);
  EXPECT_TRUE(control->ReplaceText(u"aa"));
  EXPECT_TRUE(control->ReplaceText(u"aa"));
  EXPECT_EQ(html(), "<P>aa aa</P>");
}

TEST_F(FinderTest, ReplacingWithoutASelectedHitGoesToOne) {
  load(u"<P>one two</P>");
  control->FindText(u"two", 0);
  caret_in(0, 0);
  EXPECT_FALSE(control->ReplaceText(u"2"));
  EXPECT_EQ(html(), "<P>one two</P>");
  EXPECT_EQ(selected(), "two");
}

TEST_F(FinderTest, AllHitsAreReplacedAsOneStep) {
  load(u"<P>a@b and c@d</P><UL><LI>e@f</LI></UL>");
  control->FindText(u"(\\w)@(\\w)", find_regular_expression);
  const std::size_t before = tree().journal().depth();
  EXPECT_EQ(control->ReplaceAllText(u"$2 at $1"), 3);
  EXPECT_EQ(html(), "<P>b at a and d at c</P><UL><LI>f at e</LI></UL>");
  EXPECT_EQ(tree().journal().depth(), before + 1);
  EXPECT_EQ(control->FindCount(), 0);
  control->undo_document();
  EXPECT_EQ(html(), "<P>a@b and c@d</P><UL><LI>e@f</LI></UL>");
  EXPECT_EQ(control->FindCount(), 3) << "they are there again";
}

TEST_F(FinderTest, IslandsAreFoundButNotChanged) {
  load(u"<P>one <SPAN contenteditable=false>one</SPAN> one</P>");
  EXPECT_EQ(control->FindText(u"one", 0), 3);
  EXPECT_EQ(control->FindLocked(), 1);
  EXPECT_EQ(control->ReplaceAllText(u"1"), 2);
  EXPECT_EQ(html(), "<P>1 <SPAN contenteditable=\"false\">one</SPAN> 1</P>");
  EXPECT_EQ(control->FindNext(), 1);
  EXPECT_FALSE(control->ReplaceText(u"1"));
}

TEST_F(FinderTest, NothingIsReplacedInADocumentThatIsOnlyRead) {
  load(u"<P>one</P>");
  control->set_EditorEnabled(false);
  EXPECT_EQ(control->FindText(u"one", 0), 1);
  EXPECT_EQ(control->FindLocked(), 1);
  EXPECT_EQ(control->ReplaceAllText(u"1"), 0);
  EXPECT_EQ(html(), "<P>one</P>");
}

TEST_F(FinderTest, HitsFollowWhatIsTyped) {
  load(u"<P>on</P><P>one</P>");
  EXPECT_EQ(control->FindText(u"one", 0), 1);
  caret_in(0, 2);
  container.clear_changed();
  control->DOM()->input_text(u"e");
  EXPECT_THAT(container.changed(), testing::Not(testing::Contains(std::u16string(u"FindCount"))))
      << "no key waits for it";
  pause();
  EXPECT_THAT(container.changed(), testing::Contains(std::u16string(u"FindCount")));
  EXPECT_EQ(control->FindCount(), 2);
  EXPECT_THAT(hits(), ElementsAre("one", "one"));
}

TEST_F(FinderTest, AMarkThatAnEditTookAwayComesBackWithTheWord) {
  load(u"<P>a one</P><P>one</P>");
  caret_in(1, 0);
  control->FindText(u"one", 0);
  auto* text = dom::as<dom::Text>(dom::child_at(*tree().body(), 0)->first_child());
  dom::replace_data(*text, 2, 3, u"");
  dom::replace_data(*text, 2, 0, u"one");
  const int before = display.told;
  pause();
  EXPECT_GT(display.told, before) << "the page has lost it";
  EXPECT_THAT(hits(), ElementsAre("one"));
}

TEST_F(FinderTest, AnotherDocumentIsSearchedToo) {
  load(u"<P>one</P>");
  control->FindText(u"one", 0);
  control->set_DocumentHTML(u"<P>one one</P>");
  pause();
  EXPECT_EQ(control->FindCount(), 2);
}

TEST_F(FinderTest, TheEndTakesAllMarksAway) {
  load(u"<P>one one</P>");
  control->FindText(u"one", 0);
  EXPECT_THAT(hits(), ElementsAre("one"));
  control->FindEnd();
  EXPECT_THAT(hits(), IsEmpty());
  EXPECT_THAT(present(), IsEmpty());
  EXPECT_EQ(selected(), "one") << "the selection stays at the hit";
  EXPECT_EQ(control->FindCount(), 0);
  EXPECT_EQ(control->FindNext(), 0);
  control->DOM()->input_text(u"x");
  container.clear_changed();
  pause();
  EXPECT_THAT(container.changed(), IsEmpty()) << "nothing is watched";
}

TEST_F(FinderTest, TheCodeIsSearchedWhileItShows) {
  load(u"<P>one</P><P>two one</P>");
  control->show_Code();
  EXPECT_EQ(control->FindText(u"one", 0), 2);
  EXPECT_EQ(box().SelText(), u"one");
  EXPECT_EQ(plain().hits().size(), 2u);
  EXPECT_EQ(plain().present_hit(), 0u);
  EXPECT_EQ(control->FindNext(), 2);
  EXPECT_EQ(plain().present_hit(), 1u);
  EXPECT_TRUE(control->ReplaceText(u"1"));
  EXPECT_EQ(to_utf8(box().Text()).find("two 1") != std::string::npos, true);
  EXPECT_EQ(control->FindText(u"</P>\\s+<P>", find_regular_expression), 1) << "over the lines' ends";
  control->FindEnd();
  EXPECT_THAT(plain().hits(), IsEmpty());
  control->show_Code();
  EXPECT_EQ(html(), "<P>one</P><P>two 1</P>");
}

TEST_F(FinderTest, AllOfTheCodeIsReplacedAsOneStep) {
  load(u"<P>one</P><P>one</P>");
  control->show_Code();
  const std::u16string before = box().Text();
  control->FindText(u"<(/?)p>", find_regular_expression);
  EXPECT_EQ(control->ReplaceAllText(u"<$1div>"), 4);
  EXPECT_EQ(to_utf8(box().Text()), "<div>one</div>\r\n<div>one</div>\r\n");
  EXPECT_EQ(control->FindCount(), 0);
  box().Undo();
  EXPECT_EQ(box().Text(), before);
  EXPECT_FALSE(box().can_undo());
  EXPECT_EQ(control->FindCount(), 4);
}

TEST_F(FinderTest, TheSearchGoesAlongIntoTheOtherView) {
  load(u"<P>p</P>");
  EXPECT_EQ(control->FindText(u"p", 0), 1);
  control->show_Code();
  pause();
  EXPECT_EQ(control->FindCount(), 3);
  EXPECT_EQ(plain().hits().size(), 3u);
  control->show_Code();
  pause();
  EXPECT_EQ(control->FindCount(), 1);
}

}  // namespace tvx::core
