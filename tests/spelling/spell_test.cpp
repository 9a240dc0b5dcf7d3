#include "tvx/spelling/spell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "spelling/fake_application.h"
#include "spelling/temporary_folder.h"

namespace tvx::spelling {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Texts = std::vector<std::u16string>;

class Spell : public ::testing::Test {
 protected:
  bool check(const std::u16string& word) { return speller->SpellCheckWord(word, suggestions, count); }

  FakeSpeller fake;
  std::optional<clsSpell> speller{fake.start()};
  Texts suggestions;
  std::int32_t count = 0;
};

TEST_F(Spell, StartsHiddenAndQuitsWithoutSaving) {
  speller.reset();
  EXPECT_THAT(fake.calls, ElementsAre("start", "not Visible", "Quit,false"));
}

TEST_F(Spell, AnEmptyWordIsCorrectAndDoesNotTouchCheckSpellingThoughADocumentIsOpened) {
  fake.calls.clear();
  EXPECT_TRUE(check(u""));
  EXPECT_THAT(fake.calls, ElementsAre("Documents.count", "Documents.Add"));
}

TEST_F(Spell, ADocumentIsOpenedOnce) {
  check(u"one");
  fake.calls.clear();
  check(u"two");
  EXPECT_THAT(fake.calls, ElementsAre("Documents.count", "CheckSpelling,two,"));
}

TEST_F(Spell, WithNoCustomDictionaryCheckSpellingGetsTwoArgumentsWithOneItGetsFive) {
  fake.calls.clear();
  speller->set_NameOfAddWordsDict(u"added");
  check(u"one");
  speller->set_NameOfCustomDict(u"mine.txt");
  check(u"two");
  EXPECT_THAT(fake.calls, ElementsAre("Documents.count", "Documents.Add", "CheckSpelling,one,added",
                                      "Documents.count", "CheckSpelling,two,added,-,-,mine.txt"));
}

TEST_F(Spell, AWrongWordHasItsSuggestionsFromOneOn) {
  fake.wrong[u"wrold"] = {u"world", u"would"};
  suggestions = {u"zero", u"x", u"y", u"z"};
  EXPECT_FALSE(check(u"wrold"));
  EXPECT_EQ(count, 2);
  EXPECT_EQ(suggestions, (Texts{u"zero", u"world", u"would"})) << "resized, its contents kept";
}

TEST_F(Spell, AMisspelledWordWithNoSuggestionsIsFalseAndCountsNone) {
  fake.wrong[u"qqq"] = {};
  suggestions = {u"", u"old"};
  count = 7;
  EXPECT_FALSE(check(u"qqq"));
  EXPECT_EQ(count, 0);
  EXPECT_EQ(suggestions, (Texts{u"", u"old"})) << "the array stays as it was";
}

TEST_F(Spell, AFailureReadsAsAWrongWordAndTheCountStays) {
  fake.fails = true;
  count = 3;
  EXPECT_FALSE(check(u"fine"));
  EXPECT_EQ(count, 3);
  fake.fails = false;
}

TEST_F(Spell, WithoutAnApplicationEveryWordIsWrong) {
  speller.emplace([]() -> std::unique_ptr<SpellingApplication> {
    throw RuntimeError(no_such_application, u"ActiveX component can't create object");
  });
  EXPECT_TRUE(speller->WordNotInstalled());
  EXPECT_EQ(speller->application(), nullptr);
  EXPECT_FALSE(check(u"fine"));
  EXPECT_FALSE(check(u"")) << "even the first step fails";
  EXPECT_EQ(count, 0);
  speller->set_WordNotInstalled(false);
  EXPECT_FALSE(speller->WordNotInstalled());
}

TEST_F(Spell, AnotherFailureAtTheStartIsNoMissingApplication) {
  fake.fails = true;
  speller.emplace(fake.start());
  EXPECT_FALSE(speller->WordNotInstalled());
  EXPECT_EQ(speller->application(), nullptr);
  fake.fails = false;
}

TEST_F(Spell, AddWordToIgnoredListTwiceKeepsOneEntry) {
  EXPECT_FALSE(speller->IsWordIgnored(u"Foo"));
  speller->AddWordToIgnoredList(u"Foo");
  speller->AddWordToIgnoredList(u"FOO");
  EXPECT_TRUE(speller->IsWordIgnored(u"foo"));
  EXPECT_FALSE(speller->IsWordIgnored(u"fooo"));
  speller->ClearIgnoredWords();
  EXPECT_FALSE(speller->IsWordIgnored(u"Foo"));
}

TEST_F(Spell, AnIgnoredWordWithoutLettersIsNotIgnored) {
  speller->AddWordToIgnoredList(u"");
  EXPECT_FALSE(speller->IsWordIgnored(u""));
}

TEST_F(Spell, ChangedWordsKeepTheirFirstChange) {
  EXPECT_EQ(speller->GetChangedWord(u"teh"), u"");
  speller->AddWordToChangedList(u"teh", u"the");
  speller->AddWordToChangedList(u"TEH", u"tea");
  EXPECT_TRUE(speller->IsWordChanged(u"Teh"));
  EXPECT_EQ(speller->GetChangedWord(u"teh"), u"the");
  speller->ClearChangedWords();
  EXPECT_FALSE(speller->IsWordChanged(u"teh"));
}

TEST_F(Spell, TheOtherMembersAreStored) {
  EXPECT_FALSE(speller->UseMainDictionaryOnly());
  speller->set_UseMainDictionaryOnly(true);
  EXPECT_TRUE(speller->UseMainDictionaryOnly());
  speller->set_NameOfAddWordsDict(u"a");
  EXPECT_EQ(speller->NameOfAddWordsDict(), u"a");
}

TEST_F(Spell, FilesOfWords) {
  const TemporaryFolder folder;
  EXPECT_FALSE(clsSpell::DoesFileExists(folder.path16("words.txt")));
  clsSpell::AppendToAddWordsFile(folder.path16("words.txt"), u"one");
  clsSpell::AppendToAddWordsFile(folder.path16("words.txt"), u"\u00FCber");
  EXPECT_TRUE(clsSpell::DoesFileExists(folder.path16("words.txt")));
  EXPECT_EQ(folder.read("words.txt"),
            "one\r\n\xC3\xBC"
            "ber\r\n");
  EXPECT_FALSE(clsSpell::DoesFileExists(folder.path16(""))) << "a folder is no file";
  clsSpell::AppendToAddWordsFile(folder.path16("no/such/folder"), u"one");
  clsSpell::AppendToAddWordsFile(u"", u"one");
}

TEST_F(Spell, AppendToAddWordsFileWithABareFileNameWritesBesideTheCurrentDirectory) {
  const TemporaryFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  clsSpell::AppendToAddWordsFile(u"bare.txt", u"one");
  std::filesystem::current_path(before);
  EXPECT_EQ(folder.read("bare.txt"), "one\r\n");
}

}  // namespace tvx::spelling
