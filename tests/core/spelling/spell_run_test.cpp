#include "tvx/core/spelling/spell_run.h"

#include <ctime>

#include "core/fake_context.h"
#include "spelling/fake_application.h"
#include "spelling/temporary_folder.h"
#include "tvx/core/spelling/speller.h"
#include "tvx/core/spelling/word_range.h"
#include "tvx/dom/journal.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/spelling/spell.h"

namespace tvx::core {

using platform::Form;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A host that has a word in the run.
class SpellingHost : public RecordingHost {
 public:
  std::vector<std::string> words, completed;
  std::function<void(bool& cancelled, std::u16string& word, std::u16string& new_word, bool& add)> on_word;
  std::function<void()> on_complete;

  void SpellCheckWord(bool& cancelled, std::u16string& old_word, std::u16string& new_word,
                      bool& add) override {
    EXPECT_FALSE(cancelled);
    EXPECT_FALSE(add);
    EXPECT_TRUE(new_word.empty());
    words.push_back(to_utf8(old_word));
    if (on_word) on_word(cancelled, old_word, new_word, add);
  }
  void SpellCheckComplete(bool& cancelled) override {
    completed.emplace_back(cancelled ? "cancelled" : "complete");
    if (on_complete) on_complete();
  }
};

class Pointers final : public HTMLedObserver {
 public:
  std::vector<int> seen;
  void mouse_pointer_changed(int pointer) override { seen.push_back(pointer); }
};

class SpellRunTest : public testing::Test {
 protected:
  SpellRunTest() {
    context.set_host(host);
    context.observer = &pointers;
    speller.set_application(fake.start());
    context.on_dialog = [this](Form& form) {
      words_asked.push_back(to_utf8(form.Controls(u"txtOriginal").Text()));
      if (in_dialog) in_dialog(form);
      if (form.Visible()) form.cancel();
    };
  }
  void wrong(std::u16string word, std::vector<std::u16string> suggestions = {}) {
    fake.wrong[std::move(word)] = std::move(suggestions);
  }
  static void press(Form& form, std::u16string_view button) { EXPECT_TRUE(form.Controls(button).click()); }
  void run(std::u16string_view html) {
    context.load(html);
    spelling.SpellCheck();
  }
  dom::Journal& journal() { return context.document().tree().journal(); }
  std::size_t asked(const std::string& call) {
    return std::size_t(
        std::ranges::count_if(fake.calls, [&](const auto& line) { return line.starts_with(call); }));
  }

  FakeContext context;
  SpellingHost host;
  Pointers pointers;
  spelling::FakeSpeller fake;
  Speller speller{context};
  SpellRun spelling{context, speller};
  spelling::TemporaryFolder folder;
  std::vector<std::string> words_asked;
  std::function<void(Form&)> in_dialog;
};

// --- the words ---

TEST_F(SpellRunTest, RaisesSpellCheckWordForEachWordBeforeTheEngineIsAsked) {
  host.on_word = [&](bool&, std::u16string& word, std::u16string&, bool&) {
    EXPECT_EQ(asked("CheckSpelling," + to_utf8(word)), 0u);
  };
  run(u"<P>One two, <B>th</B>ree!</P><UL><LI>four</UL>");
  EXPECT_THAT(host.words, ElementsAre("One", "two", "three", "four"));
  EXPECT_THAT(host.completed, ElementsAre("complete"));
  EXPECT_THAT(words_asked, IsEmpty());
}

TEST_F(SpellRunTest, AWordOverInlineElementsIsOneWord) {
  wrong(u"unbeleivable", {u"unbelievable"});
  in_dialog = [](Form& form) {
    EXPECT_EQ(form.Controls(u"txtOriginal").Text(), u"unbeleivable");
    press(form, u"OKButton");
  };
  run(u"<P>un<B>beleiv</B>able <I>x</I></P>");
  EXPECT_EQ(context.html(), "<P>unbelievable <I>x</I></P>") << "in the style of its first letter";
}

TEST_F(SpellRunTest, ApostrophesHyphensDigitsAndMarks) {
  run(u"<P>don't l\u2019\u00E9t\u00E9 well-known mp3 e\u0301te\u0301</P>");
  EXPECT_THAT(host.words, ElementsAre("don't", "l\xE2\x80\x99\xC3\xA9t\xC3\xA9", "well", "known", "mp3",
                                      "e\xCC\x81te\xCC\x81"));
}

TEST_F(SpellRunTest, AWordMayBeRightWithTheHyphenBesideIt) {
  wrong(u"Installations", {u"Installation"});
  wrong(u"Wartungs");
  wrong(u"Wartungs-");
  run(u"<P>Installations- und Wartungs-Werkzeuge</P>");
  EXPECT_THAT(words_asked, ElementsAre("Wartungs"));
}

TEST_F(SpellRunTest, AddressesAreTheHostsButNotTheEngines) {
  run(u"<P>see http://exmaple.org/pagge or jhon@exmaple.org now</P>");
  EXPECT_THAT(host.words, testing::IsSupersetOf({"pagge", "jhon@exmaple.org", "now"}));
  EXPECT_EQ(asked("CheckSpelling,pagge"), 0u);
  EXPECT_EQ(asked("CheckSpelling,jhon"), 0u);
  EXPECT_EQ(asked("CheckSpelling,now"), 1u);
}

TEST_F(SpellRunTest, HiddenTextAndScriptsAreSkipped) {
  run(u"<P>seen <SPAN "
      u"style=\"display:none\">hidden</SPAN><!--comment--></P><SCRIPT>code</SCRIPT><P>last</P>");
  EXPECT_THAT(host.words, ElementsAre("seen", "last"));
}

TEST_F(SpellRunTest, TheLanguageIsThatOfTheInnermostElementThatNamesOne) {
  context.values.SpellingLanguage = u"en_US";
  context.load(
      u"<P>one <I lang=\"de\">zwei</I> <SPAN lang=fr>trois <B>quatre</B></SPAN> <CODE>five</CODE>"
      u"<SPAN spellcheck=false>six</SPAN> <SPAN lang=\"\">seven</SPAN></P>");
  std::vector<std::string> languages;
  for (dom::Node* node = &context.body(); node;) {
    if (node->is_text() && to_utf8(dom::as<dom::Text>(node)->data()) != " ")
      languages.push_back(to_utf8(Speller::language_of(*node, speller.language())));
    dom::Node* next = node->first_child();
    while (node && !next) {
      next = node->next_sibling();
      node = node->parent();
    }
    node = next;
  }
  EXPECT_THAT(languages, ElementsAre("en-US", "de", "fr", "fr", "", "", ""));
  context.values.SpellingLanguage = u"";
  const spelling::EnvironmentScope all("LC_ALL", "fr_CA.UTF-8");
  EXPECT_EQ(speller.language(), u"fr-CA");
  const spelling::EnvironmentScope none("LC_ALL", "C");
  EXPECT_EQ(speller.language(), u"en-US");
}

// --- edge cases ---

TEST_F(SpellRunTest, AnEmptyBodyIsCompleteAtOnceWithNoEngineMade) {
  run(u"");
  EXPECT_THAT(host.completed, ElementsAre("complete"));
  EXPECT_THAT(fake.calls, IsEmpty());
  run(u"<P></P>");
  EXPECT_THAT(fake.calls, IsEmpty());
  EXPECT_EQ(host.completed.size(), 2u);
}

TEST_F(SpellRunTest, WithoutADocumentNothingIsRaised) {
  context.set_DOM(nullptr);
  spelling.SpellCheck();
  EXPECT_THAT(host.completed, IsEmpty());
}

TEST_F(SpellRunTest, PlainTextIsWrappedWhileItsWordsAreWalkedOver) {
  wrong(u"wrold");
  std::string inside;
  in_dialog = [&](Form&) { inside = context.html(); };
  run(u"hello wrold, again");
  EXPECT_EQ(inside, "<DIV id=\"DIVOVSPELL\" class=\"oVSpellClass\">hello wrold, again</DIV>");
  EXPECT_EQ(context.html(), "hello wrold, again") << "the wrapper and its attributes don't stay";
  EXPECT_THAT(host.words, ElementsAre("hello", "wrold", "again"));
}

TEST_F(SpellRunTest, TheWrapperLeavesNoTraceInTheUndoHistory) {
  wrong(u"wrold", {u"world"});
  wrong(u"agian", {u"again"});
  in_dialog = [](Form& form) { press(form, u"OKButton"); };
  run(u"hello wrold, agian");
  EXPECT_EQ(context.html(), "hello world, again");
  EXPECT_TRUE(journal().undo());
  EXPECT_EQ(context.html(), "hello wrold, agian");
  EXPECT_TRUE(journal().redo());
  EXPECT_EQ(context.html(), "hello world, again");
}

TEST_F(SpellRunTest, QuittingTakesTheWrapperOutToo) {
  wrong(u"wrold");
  in_dialog = [](Form& form) { press(form, u"cmdQuitSpelling"); };
  run(u"hello wrold");
  EXPECT_EQ(context.html(), "hello wrold");
  EXPECT_THAT(host.completed, ElementsAre("cancelled"));
}

TEST_F(SpellRunTest, TheHostSetsNewWordAndTheTextIsReplacedWithNoCheckAndNoDialog) {
  wrong(u"teh");
  host.on_word = [](bool&, std::u16string& word, std::u16string& new_word, bool&) {
    if (word == u"teh") new_word = u"the";
  };
  run(u"<P>in teh house</P>");
  EXPECT_EQ(context.html(), "<P>in the house</P>");
  EXPECT_EQ(asked("CheckSpelling,teh"), 0u);
  EXPECT_EQ(asked("CheckSpelling,the,"), 0u);
  EXPECT_THAT(words_asked, IsEmpty());
  EXPECT_TRUE(context.values.IsDirty);
}

TEST_F(SpellRunTest, ANewWordOfTwoWordsHasItsSecondOneAskedNext) {
  host.on_word = [](bool&, std::u16string& word, std::u16string& new_word, bool&) {
    if (word == u"alot") new_word = u"a lot";
  };
  run(u"<P>alot of</P>");
  EXPECT_THAT(host.words, ElementsAre("alot", "lot", "of"));
}

TEST_F(SpellRunTest, ANewWordWithoutLettersSkipsTheWordAfterIt) {
  host.on_word = [](bool&, std::u16string& word, std::u16string& new_word, bool&) {
    if (word == u"dash") new_word = u"--";
  };
  run(u"<P>one dash two three</P>");
  EXPECT_THAT(host.words, ElementsAre("one", "dash", "three")) << "words are counted from the start";
}

TEST_F(SpellRunTest, TheHostCanSkipAWord) {
  wrong(u"teh");
  host.on_word = [](bool& cancelled, std::u16string&, std::u16string&, bool&) { cancelled = true; };
  run(u"<P>teh teh</P>");
  EXPECT_EQ(asked("CheckSpelling"), 0u);
  EXPECT_THAT(host.completed, ElementsAre("complete"));
}

TEST_F(SpellRunTest, TheHostSetsAddThisWordAndItGoesToTheCustomDictionaryFile) {
  folder.write("words", "first\r\n");
  context.values.CustomDictionaryFilename = folder.path16("words");
  host.on_word = [](bool&, std::u16string& word, std::u16string&, bool& add) { add = word == u"mine"; };
  bool ignored = false, other_ignored = true;
  host.on_complete = [&] {
    ignored = spelling.engine()->IsWordIgnored(u"Mine");
    other_ignored = spelling.engine()->IsWordIgnored(u"this");
  };
  run(u"<P>this is mine too</P>");
  EXPECT_EQ(folder.read("words"), "first\r\nmine\r\n");
  EXPECT_TRUE(ignored);
  EXPECT_FALSE(other_ignored);
}

TEST_F(SpellRunTest, AddThisWordOfAWrongWordAddsWhatTheDialogHolds) {
  wrong(u"mien");
  folder.write("words", "");
  context.values.CustomDictionaryFilename = folder.path16("words");
  host.on_word = [](bool&, std::u16string& word, std::u16string&, bool& add) { add = word == u"mien"; };
  in_dialog = [](Form& form) {
    form.Controls(u"txtOriginal").set_Text(u"mine");
    press(form, u"OKButton");
  };
  run(u"<P>this is mien</P>");
  EXPECT_EQ(folder.read("words"), "mine\r\n");
  EXPECT_EQ(context.html(), "<P>this is mine</P>");
}

TEST_F(SpellRunTest, AMissingCustomDictionaryIsError12765AndTheRunGoesOnWithAddWordDisabled) {
  wrong(u"teh");
  context.values.CustomDictionaryFilename = folder.path16("missing");
  bool enabled = true;
  in_dialog = [&](Form& form) { enabled = form.Controls(u"cmdAddWord").Enabled(); };
  run(u"<P>teh end</P>");
  EXPECT_THAT(host.heard,
              ElementsAre("Error: 12765 Cant find custom dictionary, spelling will continue. File not "
                          "found Error"));
  EXPECT_FALSE(enabled);
  EXPECT_THAT(host.words, ElementsAre("teh", "end"));
}

TEST_F(SpellRunTest, ACustomDictionaryIsTheEnginesFifthArgument) {
  folder.write("words", "");
  const std::string path = folder.path("words");
  context.values.CustomDictionaryFilename = from_utf8(path);
  wrong(u"teh");
  bool enabled = false;
  in_dialog = [&](Form& form) {
    enabled = form.Controls(u"cmdAddWord").Enabled();
    press(form, u"cmdAddWord");
  };
  run(u"<P>teh</P>");
  EXPECT_EQ(asked("CheckSpelling,teh,,-,-," + path), 1u);
  EXPECT_TRUE(enabled);
  EXPECT_EQ(folder.read("words"), "teh\r\n");
  EXPECT_EQ(context.html(), "<P>teh</P>");
}

TEST_F(SpellRunTest, WithoutAnEngineEveryWordShowsTheDialogWithNoSuggestions) {
  speller.set_application([]() -> std::unique_ptr<spelling::SpellingApplication> {
    throw RuntimeError(spelling::no_such_application, u"no");
  });
  in_dialog = [](Form& form) {
    platform::FormControl& list = form.Controls(u"lstSuggestions");
    ASSERT_EQ(list.ListCount(), 1);
    EXPECT_EQ(list.List(0), u"(No Suggestions)");
  };
  run(u"<P>all these words</P>");
  EXPECT_THAT(words_asked, ElementsAre("all", "these", "words"));
}

TEST_F(SpellRunTest, IgnoreAllIsNotRead) {
  wrong(u"teh");
  in_dialog = [](Form& form) { press(form, u"IgnoreAll"); };
  run(u"<P>teh cat, teh dog</P>");
  EXPECT_THAT(words_asked, ElementsAre("teh", "teh")) << "asked again at each occurrence";
  EXPECT_EQ(context.html(), "<P>teh cat, teh dog</P>");
}

TEST_F(SpellRunTest, SpellingCancelEndsTheRunAfterTheWordInHandAndReportsFalse) {
  wrong(u"two", {u"2"});
  host.on_word = [&](bool&, std::u16string& word, std::u16string&, bool&) {
    if (word == u"two") spelling.SpellingCancel();
  };
  run(u"<P>one two three</P>");
  EXPECT_THAT(host.words, ElementsAre("one", "two"));
  EXPECT_THAT(words_asked, ElementsAre("two"));
  EXPECT_THAT(host.completed, ElementsAre("complete"));
  spelling.SpellCheck();
  EXPECT_EQ(host.words.size(), 4u) << "the next run starts anew";
}

TEST_F(SpellRunTest, AFailureEndsTheRunWithComplete) {
  host.on_word = [&](bool&, std::u16string&, std::u16string&, bool&) { context.set_DOM(nullptr); };
  run(u"<P>one two</P>");
  EXPECT_THAT(host.words, ElementsAre("one"));
  EXPECT_THAT(host.completed, ElementsAre("complete"));
  EXPECT_FALSE(spelling.running());
}

TEST_F(SpellRunTest, OneRunAtATime) {
  host.on_word = [&](bool&, std::u16string&, std::u16string&, bool&) { spelling.SpellCheck(); };
  host.on_complete = [&] { spelling.SpellCheck(); };
  run(u"<P>one two</P>");
  EXPECT_THAT(host.words, ElementsAre("one", "two"));
  EXPECT_EQ(host.completed.size(), 1u);
}

// A quadratic run takes sixty-four times as long for eight times the words.
TEST_F(SpellRunTest, ARunIsLinearInTheWordsOfOneParagraph) {
  const auto taken = [&](int words) {
    std::u16string html = u"<P>";
    for (int i = 0; i < words; ++i) html += i % 50 == 0 ? u"<B>some</B> " : u"words ";
    context.load(html);
    const std::clock_t before = std::clock();
    spelling.SpellCheck();
    return std::clock() - before;
  };
  taken(1000);
  const std::clock_t few = taken(4000), many = taken(32000);
  EXPECT_LT(many, 25 * few);
}

// --- the dialog ---

TEST_F(SpellRunTest, TheDialogShowsTheWordItsSentenceAndTheSuggestions) {
  wrong(u"wrold", {u"world", u"would"});
  in_dialog = [&](Form& form) {
    const platform::FormControl& box = form.Controls(u"txtOriginal");
    EXPECT_EQ(box.Text(), u"wrold");
    EXPECT_EQ(box.SelStart(), 0);
    EXPECT_EQ(box.SelLength(), 5);
    const platform::FormControl& list = form.Controls(u"lstSuggestions");
    EXPECT_EQ(list.ListCount(), 2);
    EXPECT_EQ(list.Text(), u"world") << "the first one is chosen";
    const platform::FormControl& sentence = form.Controls(u"txtSentence");
    EXPECT_EQ(sentence.Text(), u"The wrold is round!");
    EXPECT_EQ(sentence.Text().substr(sentence.SelStart(), sentence.SelLength()), u"wrold");
    EXPECT_EQ(form.Controls(u"OKButton").ToolTipText(), u"Make a selection from the list and press 'change");
    EXPECT_EQ(spelling.MousePointer(), 1);
    auto range = editing::create_text_range(context.document().editor());
    EXPECT_EQ(range.text(), u"wrold") << "selected in the document";
    EXPECT_TRUE(platform::IsDialogLoaded(u"frmSpelling"));
  };
  run(u"<P>First one. The <I>wrold</I> is\n round! Last.</P>");
  EXPECT_THAT(words_asked, ElementsAre("wrold"));
  EXPECT_THAT(context.shown, ElementsAre("SpellingSettings"));
  EXPECT_FALSE(platform::IsDialogLoaded(u"frmSpelling"));
}

TEST_F(SpellRunTest, ChangeTakesTheTextOfTheBox) {
  wrong(u"wrold", {u"world"});
  in_dialog = [](Form& form) {
    form.Controls(u"txtOriginal").set_Text(u"globe");
    press(form, u"OKButton");
  };
  run(u"<P>The wrold</P>");
  EXPECT_EQ(context.html(), "<P>The globe</P>");
}

TEST_F(SpellRunTest, ChangeOfAnUntouchedBoxTakesTheChosenSuggestion) {
  wrong(u"wrold", {u"world", u"would"});
  in_dialog = [](Form& form) { press(form, u"OKButton"); };
  run(u"<P>The wrold</P>");
  EXPECT_EQ(context.html(), "<P>The world</P>");
}

TEST_F(SpellRunTest, AClickCopiesTheSuggestionAndADoubleClickChanges) {
  wrong(u"wrold", {u"world", u"would"});
  in_dialog = [](Form& form) {
    platform::FormControl& list = form.Controls(u"lstSuggestions");
    list.choose(1);
    EXPECT_EQ(form.Controls(u"txtOriginal").Text(), u"would");
    list.double_click();
  };
  run(u"<P>I wrold</P>");
  EXPECT_EQ(context.html(), "<P>I would</P>");
}

TEST_F(SpellRunTest, NoSuggestionsIsNoSuggestion) {
  wrong(u"qqq");
  in_dialog = [](Form& form) {
    platform::FormControl& list = form.Controls(u"lstSuggestions");
    list.choose(0);
    EXPECT_EQ(form.Controls(u"txtOriginal").Text(), u"qqq");
    list.double_click();
    EXPECT_EQ(form.Controls(u"txtOriginal").Text(), u"qqq");
    press(form, u"CancelButton");
  };
  run(u"<P>qqq</P>");
  EXPECT_EQ(context.html(), "<P>qqq</P>");
}

TEST_F(SpellRunTest, QuitLeavesTheRestUnasked) {
  wrong(u"one");
  in_dialog = [](Form& form) { press(form, u"cmdQuitSpelling"); };
  run(u"<P>zero one two</P>");
  EXPECT_THAT(host.words, ElementsAre("zero", "one"));
  EXPECT_THAT(host.completed, ElementsAre("cancelled"));
}

TEST_F(SpellRunTest, EachChangeIsOneUndoStep) {
  wrong(u"teh", {u"the"});
  in_dialog = [](Form& form) { press(form, u"OKButton"); };
  run(u"<P>teh <B>teh</B> t<I>eh</I></P>");
  EXPECT_EQ(context.html(), "<P>the <B>the</B> the</P>");
  EXPECT_EQ(journal().depth(), 3u);
  journal().undo();
  EXPECT_EQ(context.html(), "<P>the <B>the</B> t<I>eh</I></P>");
  journal().undo();
  journal().undo();
  EXPECT_EQ(context.html(), "<P>teh <B>teh</B> t<I>eh</I></P>");
}

TEST_F(SpellRunTest, ARunWithoutChangesIsNoChange) {
  wrong(u"teh");
  run(u"<P>teh end</P>");
  EXPECT_EQ(journal().depth(), 0u);
  EXPECT_FALSE(context.values.IsDirty);
}

TEST_F(SpellRunTest, TheSelectionIsRestored) {
  context.load(u"<P>one two three</P>");
  dom::Node* text = context.body().first_child()->first_child();
  context.document().editor().selection().set({{text, 4}, {text, 7}});
  spelling.SpellCheck();
  EXPECT_EQ(editing::create_text_range(context.document().editor()).text(), u"two");
}

TEST_F(SpellRunTest, ThePointerIsAnHourglassBetweenTheWordsAndAnArrowInTheDialog) {
  wrong(u"two");
  run(u"<P>one two three</P>");
  EXPECT_THAT(pointers.seen, ElementsAre(13, 1, 13, 0));
  EXPECT_THAT(fake.calls.back(), "Quit,false");
}

// --- positions ---

TEST_F(SpellRunTest, ThePositionsAreThoseOfTwoPointersThatGoOnByWord) {
  for (const std::u16string_view html :
       {u"<P>one two</P><P>three</P>", u"x", u"<P>x</P>", u"a b", u"<P>I am.</P>", u"a.", u"<P>a.</P>",
        u"<P>\u6211\u4F60\u4ED6</P>", u"<TABLE><TR><TD>a<TD>b b</TABLE>c", u"<UL><LI>a<LI><B>b</B>c</UL>",
        u"w<B>or</B>d x<BR>y<IMG>z", u"<P>...</P>", u"<P> a </P> <P> b </P>", u"<HR><P>q</P><HR>",
        u"<PRE>a  b\nc</PRE><TEXTAREA>no</TEXTAREA>end"}) {
    context.load(html);
    WordRanges words(context.document());
    for (std::int32_t number = 0; number < 12; ++number) {
      const auto by_pointers = GetWordRange(context.document(), number, 1);
      EXPECT_EQ(words.word(number), by_pointers) << to_utf8(html) << " " << number;
    }
  }
}

TEST_F(SpellRunTest, OneLetterIsAskedTwiceAsItsNumberComesNearTheLength) {
  run(u"<P>x</P>");
  EXPECT_THAT(host.words, ElementsAre("x", "x"));
}

TEST_F(SpellRunTest, PositionsStayTrueThroughEdits) {
  context.load(u"<P>one two three</P><P>four <B>five</B> six</P><P>seven</P>");
  WordRanges words(context.document());
  std::uint32_t random = 1;
  const auto next = [&](std::uint32_t below) {
    random = random * 1664525 + 1013904223;
    return (random >> 10) % below;
  };
  for (int round = 0; round < 400; ++round) {
    const auto number = static_cast<std::int32_t>(1 + next(9));
    const auto expected = GetWordRange(context.document(), number, 1);
    EXPECT_EQ(words.word(number), expected) << round << context.html();
    const auto after = GetWordRange(context.document(), number + 1, 1);
    if (expected && next(2)) {
      editing::TextRange range(context.document().editor(), *expected);
      const std::u16string_view texts[] = {u"a", u"two words", u"--", u"three new words", u"b'"};
      range.set_text(texts[next(5)]);
    } else {
      EXPECT_EQ(words.word(number + 1), after);
    }
  }
}

// --- the other walk ---

TEST_F(SpellRunTest, RecursDocumentReplacesAWrongWordOnceInItsText) {
  wrong(u"teh", {u"the"});
  context.load(u"<P>teh Teh teh</P><P><B>x <I>y</I></B></P>");
  spelling::clsSpell engine(fake.start());
  bool result = false;
  in_dialog = [&](Form& form) {
    form.Controls(u"txtOriginal").set_Text(u"THE");
    press(form, u"OKButton");
  };
  spelling.recurs_document(context.body(), engine, result);
  EXPECT_EQ(context.html(), "<P>THE Teh THE</P><P><B>x <I>y</I></B></P>") << "each occurrence is asked about";
  EXPECT_FALSE(result);
  EXPECT_THAT(words_asked, ElementsAre("teh", "teh"));
  EXPECT_EQ(asked("CheckSpelling,y"), 1u);
}

TEST_F(SpellRunTest, RecursDocumentStopsWhereTheUserQuits) {
  wrong(u"teh");
  context.load(u"<P>teh</P><P>teh</P>");
  spelling::clsSpell engine(fake.start());
  bool result = false;
  in_dialog = [&](Form& form) { press(form, u"cmdQuitSpelling"); };
  spelling.recurs_document(context.body(), engine, result);
  EXPECT_EQ(words_asked.size(), 1u);
  EXPECT_EQ(context.html(), "<P>teh</P><P>teh</P>");
}

TEST_F(SpellRunTest, AFailureOfRecursDocumentIsError4001) {
  wrong(u"teh");
  context.load(u"<P>teh</P>");
  spelling::clsSpell engine(fake.start());
  bool result = false;
  in_dialog = [&](Form&) { throw RuntimeError(errors::invalid_call, u"broken"); };
  spelling.recurs_document(context.body(), engine, result);
  EXPECT_THAT(host.heard,
              ElementsAre("Error: 4001 There was error during spell checking - source recurs_document"));
}

}  // namespace tvx::core
