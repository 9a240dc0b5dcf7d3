#include "tvx/core/spelling/spelling_marks.h"

#include "core/fake_context.h"
#include "core/marked_texts.h"
#include "spelling/fake_application.h"
#include "spelling/temporary_folder.h"
#include "tvx/core/spelling/speller.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"

namespace tvx::core {

using testing::ElementsAre;
using testing::IsEmpty;

class SpellingMarksTest : public testing::Test {
 protected:
  SpellingMarksTest() {
    speller.set_application(fake.start());
    context.values.CheckSpellingAsYouType = true;
    for (const char16_t* word : {u"wrold", u"teh", u"unbeleivable"}) fake.wrong[word] = {u"right"};
  }
  void load(std::u16string_view html) {
    context.load(html);
    marks.apply();
    settle();
  }
  void settle() {
    for (int turn = 0; turn < 1000 && !marks.settled(); ++turn) context.loop.settle();
    EXPECT_TRUE(marks.settled());
  }
  /// All marked stretches of the body's texts, in their order.
  std::vector<std::string> marked() {
    return marked_texts(context.body(), [this](const dom::Text& text) { return marks.marks_of(text); });
  }
  dom::Text& text(std::size_t paragraph = 0) {
    return *dom::as<dom::Text>(dom::child_at(context.body(), paragraph)->first_child());
  }
  void caret(Offset at, std::size_t paragraph = 0) {
    context.document().editor().selection().collapse({&text(paragraph), at});
  }
  void type(std::u16string_view letters) {
    for (const char16_t letter : letters) {
      context.document().input_text(std::u16string_view(&letter, 1));
      settle();
    }
  }
  std::size_t asked() {
    return std::size_t(std::ranges::count_if(
        fake.calls, [](const auto& call) { return call.starts_with("CheckSpelling"); }));
  }

  FakeContext context;
  spelling::FakeSpeller fake;
  Speller speller{context};
  SpellingMarks marks{context, speller};
};

TEST_F(SpellingMarksTest, WrongWordsAreMarkedOverInlineElementsToo) {
  load(u"<P>hello wrold and un<B>beleiv</B>able</P><UL><LI>teh</LI></UL>");
  EXPECT_THAT(marked(), ElementsAre("wrold", "un", "beleiv", "able", "teh"));
  EXPECT_EQ(context.document().tree().journal().depth(), 0u);
  EXPECT_FALSE(context.values.IsDirty);
}

TEST_F(SpellingMarksTest, WhatComesIntoTheViewGoesFirst) {
  struct Display final : browser::Viewport, browser::MarkDisplay {
    void scroll_to(int, int) override {}
    void scroll_into_view(dom::Element&, bool) override {}
    void mark(browser::MarkKind, const dom::Text&, std::vector<browser::MarkedStretch>) override {}
    void clear_marks(browser::MarkKind) override {}
    bool is_busy() const override { return busy; }
    bool busy = true;
  } display;
  fake.slow = true;
  std::u16string words;
  for (int i = 0; i < 40; ++i) words += u"<P>hello wrold</P>";
  context.load(words);
  context.document().set_viewport(&display);
  marks.apply();
  context.loop.settle();
  EXPECT_TRUE(fake.calls.empty()) << "the page comes before the dictionary";
  context.loop.pump(250);
  EXPECT_FALSE(marks.settled()) << "after a turn the view has the loop to itself";
  EXPECT_FALSE(marked().empty()) << "what is in the window comes first";
  context.loop.pump(100);
  display.busy = false;
  context.loop.pump(100);
  context.loop.settle();
  EXPECT_TRUE(marks.settled()) << "then without a pause";
  EXPECT_EQ(marked().size(), 40u);
  context.document().set_viewport(nullptr);
}

TEST_F(SpellingMarksTest, NothingIsMarkedWithoutTheProperty) {
  context.values.CheckSpellingAsYouType = false;
  load(u"<P>wrold</P>");
  EXPECT_THAT(marked(), IsEmpty());
  EXPECT_THAT(fake.calls, IsEmpty());
  context.values.CheckSpellingAsYouType = true;
  marks.apply();
  settle();
  EXPECT_THAT(marked(), ElementsAre("wrold"));
  context.values.CheckSpellingAsYouType = false;
  marks.apply();
  EXPECT_THAT(marked(), IsEmpty());
}

TEST_F(SpellingMarksTest, AWordIsNotMarkedWhileItIsBeingTyped) {
  load(u"<P>a .</P>");
  context.document().set_designMode(u"On");
  caret(2);
  type(u"wrold");
  EXPECT_EQ(context.html(), "<P>a wrold.</P>");
  EXPECT_THAT(marked(), IsEmpty());
  type(u",");
  EXPECT_THAT(marked(), ElementsAre("wrold"));
}

TEST_F(SpellingMarksTest, AWordIsNotAskedAboutWhileItIsBeingTyped) {
  load(u"<P>a .</P>");
  context.document().set_designMode(u"On");
  caret(2);
  const std::size_t before = asked();
  type(u"wrold");
  EXPECT_EQ(asked(), before);
  type(u",");
  EXPECT_LE(asked(), before + 2) << "at the comma, and as the caret leaves it";
  EXPECT_THAT(marked(), ElementsAre("wrold"));
}

TEST_F(SpellingMarksTest, AWordThatTheCaretLeavesIsChecked) {
  load(u"<P>a .</P><P>other</P>");
  context.document().set_designMode(u"On");
  caret(2);
  type(u"teh");
  EXPECT_THAT(marked(), IsEmpty());
  caret(1, 1);
  settle();
  EXPECT_THAT(marked(), ElementsAre("teh"));
}

TEST_F(SpellingMarksTest, MarksGoAlongWithTheirWords) {
  load(u"<P>one wrold two teh</P>");
  dom::replace_data(text(), 0, 3, u"eleven");
  EXPECT_THAT(marked(), ElementsAre("wrold", "teh")) << "before anything is checked again";
  settle();
  EXPECT_THAT(marked(), ElementsAre("wrold", "teh"));
}

TEST_F(SpellingMarksTest, OnlyWhatHasChangedIsCheckedAgain) {
  std::u16string html = u"<P>start</P>";
  for (int i = 0; i < 200; ++i) html += u"<P>some more words in each paragraph</P>";
  load(html);
  const std::size_t before = asked();
  EXPECT_GE(before, 1201u);
  caret(0, 150);
  dom::replace_data(text(100), 0, 4, u"teh");
  settle();
  EXPECT_LE(asked() - before, 12u);
  EXPECT_THAT(marked(), ElementsAre("teh"));
}

TEST_F(SpellingMarksTest, WhatComesAndGoesIsSeen) {
  load(u"<P>wrold</P><P>fine</P>");
  dom::remove(*context.body().first_child());
  settle();
  EXPECT_THAT(marked(), IsEmpty());
  context.document().tree().journal().undo();
  settle();
  EXPECT_THAT(marked(), ElementsAre("wrold"));
  dom::remove(*dom::child_at(context.body(), 1));
  dom::replace_data(text(), 0, 2, u"");
  settle();
  EXPECT_THAT(marked(), IsEmpty()) << "\"old\" is a word";
}

TEST_F(SpellingMarksTest, ADocumentThatIsLoadedIsCheckedAnew) {
  load(u"<P>wrold</P>");
  context.load(u"<P>right</P><P>teh</P>");
  settle();
  EXPECT_THAT(marked(), ElementsAre("teh"));
}

TEST_F(SpellingMarksTest, ALanguageThatChangesIsSeen) {
  load(u"<P>wrold</P>");
  const std::size_t before = asked();
  auto& paragraph = *dom::as<dom::Element>(context.body().first_child());
  dom::set_attribute(paragraph, dom::names::lang, u"de");
  settle();
  EXPECT_EQ(asked(), before + 1);
  dom::set_attribute(paragraph, dom::Name(u"spellcheck"), u"false");
  settle();
}

TEST_F(SpellingMarksTest, AddressesAndNamesWithDigitsAreNotMarked) {
  fake.wrong[u"mp3"] = {};
  fake.wrong[u"pagge"] = {};
  load(u"<P>mp3 http://x.org/pagge</P>");
  EXPECT_THAT(marked(), IsEmpty());
}

TEST_F(SpellingMarksTest, AWordThatIsRightWithItsHyphenIsNotMarked) {
  fake.wrong[u"Ein"] = {};
  fake.wrong[u"wrold-"] = {};
  load(u"<P>Ein- und wrold-</P>");
  EXPECT_THAT(marked(), ElementsAre("wrold"));
}

TEST_F(SpellingMarksTest, TheWordAtTheCaretIsChangedAsOneStep) {
  fake.wrong[u"teh"] = {u"the", u"tea", u"ten", u"tech", u"eh", u"meh"};
  load(u"<P>in teh house</P>");
  caret(0);
  EXPECT_FALSE(marks.word_at_caret());
  caret(4);
  const auto word = marks.word_at_caret();
  ASSERT_TRUE(word);
  EXPECT_EQ(word->text, u"teh");
  EXPECT_EQ(marks.suggestions(*word).size(), 5u);
  marks.change_word(u"the");
  settle();
  EXPECT_EQ(context.html(), "<P>in the house</P>");
  EXPECT_THAT(marked(), IsEmpty());
  EXPECT_TRUE(context.values.IsDirty);
  context.document().tree().journal().undo();
  caret(0);
  settle();
  EXPECT_EQ(context.html(), "<P>in teh house</P>");
  EXPECT_THAT(marked(), ElementsAre("teh"));
}

TEST_F(SpellingMarksTest, AnIgnoredWordIsMarkedNowhere) {
  load(u"<P>teh</P><P>wrold teh</P>");
  caret(1);
  marks.ignore_word();
  settle();
  EXPECT_THAT(marked(), ElementsAre("wrold"));
}

TEST_F(SpellingMarksTest, AWordIsAddedToTheUsersDictionary) {
  const spelling::TemporaryFolder folder;
  const spelling::EnvironmentScope data("XDG_DATA_HOME", folder.path());
  load(u"<P>teh</P>");
  caret(1);
  marks.add_word();
  settle();
  EXPECT_EQ(folder.read("tvxHTML/words.txt"), "teh\n");
}

TEST_F(SpellingMarksTest, ALongDocumentIsCheckedInSlices) {
  std::u16string html;
  for (int i = 0; i < 20000; ++i) html += u"<P>these are some words and one wrold</P>";
  context.load(html);
  marks.apply();
  settle();
  EXPECT_EQ(marked().size(), 20000u);
}

}  // namespace tvx::core
