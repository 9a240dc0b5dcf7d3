#include "tvx/spelling/dictionary_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <functional>

#include "spelling/temporary_folder.h"
#include "tvx/base/error.h"
#include "tvx/spelling/affix_file.h"
#include "tvx/spelling/dictionary.h"
#include "tvx/spelling/dictionary_trial.h"
#include "tvx/spelling/hunspell_application.h"
#include "tvx/spelling/spell.h"

namespace tvx::spelling {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Arguments = std::vector<SpellingApplication::Argument>;

// --- which there are ---

TEST(DictionaryFiles, ALanguageIsNamedInOneForm) {
  EXPECT_EQ(language_tag(u"de_DE.UTF-8"), u"de-DE");
  EXPECT_EQ(language_tag(u"EN-us"), u"en-US");
  EXPECT_EQ(language_tag(u"sr_Latn_RS"), u"sr-Latn-RS");
  EXPECT_EQ(language_tag(u"sr@latin"), u"sr");
  EXPECT_EQ(language_tag(u"fr"), u"fr");
  EXPECT_EQ(language_tag(u"C"), u"");
  EXPECT_EQ(language_tag(u"POSIX"), u"");
  EXPECT_EQ(language_tag(u"de-1996"), u"de-1996");
  EXPECT_EQ(language_tag(u"1"), u"") << "no language's name";
  EXPECT_EQ(language_tag(u"x-german"), u"");
  EXPECT_EQ(language_tag(u""), u"");
  EXPECT_EQ(language_tag(u"../x"), u"");
}

TEST(DictionaryFiles, ARegionFallsBackToTheLanguagesOwn) {
  const std::vector<DictionaryFiles> all{{u"de-AT"}, {u"de-DE"}, {u"en-US"}, {u"fr"}, {u"pt-BR"}};
  const auto language = [&](std::u16string_view tag) {
    const DictionaryFiles* files = dictionary_for(all, tag);
    return files ? files->language : u"none";
  };
  EXPECT_EQ(language(u"de"), u"de-DE");
  EXPECT_EQ(language(u"de-AT"), u"de-AT");
  EXPECT_EQ(language(u"de-CH"), u"de-DE");
  EXPECT_EQ(language(u"en-GB"), u"en-US");
  EXPECT_EQ(language(u"fr-CA"), u"fr");
  EXPECT_EQ(language(u"pt-PT"), u"pt-BR");
  EXPECT_EQ(language(u"ja"), u"none");
  EXPECT_EQ(language(u""), u"none");
}

TEST(DictionaryFiles, AreFoundWhereDICPATHSaysAndInTheUsersFolder) {
  const TemporaryFolder folder;
  folder.write("first/xx_YY.aff", "SET UTF-8\n");
  folder.write("first/xx_YY.dic", "1\nfirst\n");
  folder.write("second/xx_YY.aff", "SET UTF-8\n");
  folder.write("second/xx_YY.dic", "1\nsecond\n");
  folder.write("second/alone.aff", "SET UTF-8\n");
  folder.write("data/tvxHTML/dictionaries/zz.aff", "SET UTF-8\n");
  folder.write("data/tvxHTML/dictionaries/zz.dic", "1\nown\n");
  const EnvironmentScope path("DICPATH", folder.path("first") + ":" + folder.path("second"));
  const EnvironmentScope data("XDG_DATA_HOME", folder.path("data"));
  const auto all = installed_dictionaries();
  ASSERT_TRUE(dictionary_for(all, u"xx-YY"));
  EXPECT_EQ(dictionary_for(all, u"xx-YY")->words, folder.path("first/xx_YY.dic")) << "the first find counts";
  EXPECT_TRUE(dictionary_for(all, u"zz"));
  EXPECT_EQ(dictionary_for(all, u"alone"), nullptr) << "rules without words";
}

// --- letters of other languages ---

class Letters : public ::testing::Test {
 protected:
  bool are_of(const std::u16string& language, std::u16string_view word) {
    folder.write("xx.aff", "SET UTF-8\n");
    folder.write("xx.dic", "1\nword\n");
    return Dictionary({language, folder.path("xx.aff"), folder.path("xx.dic")}).has_script_of(word);
  }
  TemporaryFolder folder;
};

TEST_F(Letters, OfAnotherScriptAreNoWordOfTheLanguage) {
  EXPECT_TRUE(are_of(u"en", u"word"));
  EXPECT_FALSE(are_of(u"en", u"\u0441\u043B\u043E\u0432\u043E"));
  EXPECT_TRUE(are_of(u"ru", u"\u0441\u043B\u043E\u0432\u043E"));
  EXPECT_FALSE(are_of(u"ru", u"word"));
  EXPECT_FALSE(are_of(u"ru", u"w\u043E"));
}

TEST_F(Letters, FiguresAndMarksAreOfAllLanguages) {
  EXPECT_TRUE(are_of(u"ru", u"12-3"));
  EXPECT_TRUE(are_of(u"en", u"e\u0301te\u0301"));
  EXPECT_TRUE(are_of(u"en", u"don\u2019t"));
}

TEST_F(Letters, OfALanguageWithoutAKnownScriptAreAllItsOwn) {
  EXPECT_TRUE(are_of(u"zz", u"word"));
  EXPECT_TRUE(are_of(u"zz", u"\u0441\u043B\u043E\u0432\u043E"));
}

// --- those of the system ---

class SystemDictionaries : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char16_t* language : {u"en-US", u"de-DE", u"fr"})
      if (!dictionary_for(store.installed(), language)) GTEST_SKIP() << "a dictionary isn't installed";
  }
  bool right(std::u16string_view language, const std::u16string& word) {
    application->set_language(language);
    return application->CheckSpelling(Arguments{word, u""});
  }
  DictionaryStore store;
  TemporaryFolder home;
  EnvironmentScope data{"XDG_DATA_HOME", home.path()};
  std::optional<HunspellApplication> application;
};

class InstalledSpeller : public SystemDictionaries {
 protected:
  void SetUp() override {
    SystemDictionaries::SetUp();
    if (IsSkipped()) return;
    application.emplace(store);
    application->Documents_Add();
  }
};

TEST_F(InstalledSpeller, KnowsThreeLanguages) {
  EXPECT_TRUE(right(u"en-US", u"world"));
  EXPECT_FALSE(right(u"en-US", u"wrold"));
  EXPECT_TRUE(right(u"de-DE", u"Stra\u00DFe"));
  EXPECT_FALSE(right(u"de-DE", u"Strasze"));
  EXPECT_TRUE(right(u"fr", u"\u00E9t\u00E9"));
  EXPECT_FALSE(right(u"fr", u"\u00E9t\u00E9\u00E9"));
}

TEST_F(InstalledSpeller, KnowsApostrophesOfBothKinds) {
  EXPECT_TRUE(right(u"en-US", u"don't"));
  EXPECT_TRUE(right(u"en-US", u"don\u2019t"));
  EXPECT_FALSE(right(u"en-US", u"don\u2019tt"));
  EXPECT_TRUE(right(u"fr", u"l'\u00E9t\u00E9"));
  EXPECT_TRUE(right(u"fr", u"l\u2019\u00E9t\u00E9"));
  EXPECT_TRUE(right(u"fr", u"aujourd\u2019hui"));
}

TEST_F(InstalledSpeller, KnowsGermanCompounds) {
  EXPECT_TRUE(right(u"de-DE", u"Donaudampfschifffahrt"));
  EXPECT_TRUE(right(u"de-DE", u"Rechtschreibpr\u00FCfung"));
  EXPECT_FALSE(right(u"de-DE", u"Donaudampfschiffahrtt"));
}

TEST_F(InstalledSpeller, KnowsCombiningMarks) {
  EXPECT_TRUE(right(u"fr", u"e\u0301te\u0301"));
  EXPECT_TRUE(right(u"de-DE", u"fu\u0308r"));
}

TEST_F(InstalledSpeller, WordsInOtherScriptsAreNotWrong) {
  EXPECT_TRUE(right(u"de-DE", u"\u043F\u0440\u0438\u0432\u0435\u0442"));
  EXPECT_TRUE(right(u"en-US", u"\u4E2D\u56FD"));
  EXPECT_TRUE(right(u"ja", u"wrold")) << "a language without a dictionary";
  EXPECT_TRUE(right(u"", u"wrold")) << "none";
}

TEST_F(InstalledSpeller, SuggestsTheBestFirstWithTheCapitalOfTheWord) {
  application->set_language(u"en-US");
  EXPECT_THAT(application->GetSpellingSuggestions(u"wrold"), Contains(u"world"));
  EXPECT_THAT(application->GetSpellingSuggestions(u"Wrold"), Contains(u"World"));
  EXPECT_EQ(application->GetSpellingSuggestions(u"recieve").front(), u"receive");
}

TEST_F(InstalledSpeller, AsksCustomDictionariesAndTheUsersWords) {
  home.write("mine.txt", "wrold\r\n");
  application->set_language(u"en-US");
  const std::u16string mine = home.path16("mine.txt");
  EXPECT_TRUE(application->CheckSpelling(Arguments{u"wrold", u"", {}, {}, mine}));
  EXPECT_TRUE(application->CheckSpelling(Arguments{u"Wrold", mine}));
  EXPECT_FALSE(right(u"en-US", u"wrold"));
  clsSpell::AppendToAddWordsFile(mine, u"xyzzzy");
  EXPECT_TRUE(application->CheckSpelling(Arguments{u"xyzzzy", u"", {}, {}, mine})) << "counts at once";
  EXPECT_TRUE(add_to_user_words(u"wrold"));
  EXPECT_TRUE(right(u"en-US", u"wrold"));
}

TEST_F(InstalledSpeller, NeedsAnOpenDocument) {
  EXPECT_EQ(application->Documents_count(), 1);
  application->Quit(false);
  EXPECT_THROW(application->CheckSpelling(Arguments{u"x", u""}), RuntimeError);
}

TEST_F(InstalledSpeller, ControlsOfOneProcessShareADictionary) {
  DictionaryStore other;
  EXPECT_EQ(store.find(u"de"), other.find(u"de-DE"));
  EXPECT_EQ(store.find(u"fr-FR"), other.find(u"fr")) << "two names of one file";
}

TEST(Speller, IsNotInstalledWhereThereIsNoDictionaryAtAll) {
  DictionaryStore nothing(std::vector<DictionaryFiles>{});
  clsSpell speller([&] { return std::make_unique<HunspellApplication>(nothing); });
  EXPECT_TRUE(speller.WordNotInstalled());
}

// --- broken ones ---

class BrokenDictionary : public ::testing::Test {
 protected:
  DictionaryFiles dictionary(const std::string& rules, const std::string& words) {
    folder.write("xx.aff", rules);
    folder.write("xx.dic", words);
    return {u"xx", folder.path("xx.aff"), folder.path("xx.dic")};
  }
  /// What a store tells of it, and that it tells once.
  std::string told(const std::string& rules, const std::string& words) {
    DictionaryStore store({dictionary(rules, words)});
    std::vector<std::string> failures;
    store.set_failed([&](const std::u16string& text) { failures.push_back(to_utf8(text)); });
    for (const char16_t* tag : {u"xx", u"xx-YY", u"xx"}) {
      const auto found = store.find(tag);
      EXPECT_EQ(found != nullptr, failures.empty());
    }
    EXPECT_LE(failures.size(), 1u);
    return failures.empty() ? "" : failures[0];
  }
  static std::string bytes_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  TemporaryFolder folder;
};

TEST_F(BrokenDictionary, AWholeOneIsFine) {
  EXPECT_EQ(told("SET UTF-8\nSFX A Y 1\nSFX A 0 s .\n", "2\nword/A\nother\n"), "");
}

TEST_F(BrokenDictionary, AFileThatWasCutOffIsToldOnce) {
  EXPECT_THAT(told("SET UTF-8\nSFX A Y 3\nSFX A 0 s .\n", "1\nword/A\n"), HasSubstr("cut off"));
  EXPECT_THAT(told("SET UTF-8\nSFX A Y 3\nSFX A 0 s .\nTRY abc\n", "1\nword/A\n"), HasSubstr("cut off"));
  EXPECT_THAT(told("", "1\nword\n"), HasSubstr("empty"));
  EXPECT_THAT(told("SET UTF-8\n", ""), HasSubstr("how many"));
  EXPECT_THAT(told("SET UTF-8\n", "word\nother\n"), HasSubstr("how many"));
  EXPECT_THAT(told("SET NO-SUCH-CODE\n", "1\nword\n"), HasSubstr("unknown code"));
}

TEST_F(BrokenDictionary, TheInstalledOnesCutAnywhereNeverCrash) {
  for (const char* name : {"en_US", "de_DE", "fr"}) {
    const std::string base = std::string("/usr/share/hunspell/") + name;
    const std::string rules = bytes_of(base + ".aff");
    if (rules.empty()) GTEST_SKIP() << base << " isn't installed";
    for (const double part : {0.1, 0.37, 0.5, 0.73, 0.9}) {
      const auto length = static_cast<std::size_t>(part * static_cast<double>(rules.size()));
      told(rules.substr(0, length), "3\nword/ABC\nother/S\nthird\n");
    }
    EXPECT_EQ(damage_of(base + ".aff", base + ".dic"), std::nullopt);
  }
}

TEST_F(BrokenDictionary, ATrialMayNotTakeMoreMemoryThanItsLimit) {
  // The count is what room is made for.
  const DictionaryFiles files = dictionary("SET UTF-8\n", "9999999\nword\nother\n");
  EXPECT_EQ(trial_of(files), std::nullopt);
  EXPECT_TRUE(trial_of(files, {.memory = std::size_t{4} << 20}).has_value());
}

TEST_F(BrokenDictionary, ThatKnowsNoneOfItsOwnWordsIsTold) {
  EXPECT_THAT(told("SET UTF-8\nFORBIDDENWORD A\n", "2\nword/A\nother/A\n"),
              HasSubstr("can't be worked with"));
}

TEST_F(BrokenDictionary, ATrialMayNotTakeLongerThanItsLimit) {
  std::string words = "20000\n";
  for (int i = 0; i < 20000; ++i) words += "word" + std::to_string(i) + "\n";
  const DictionaryFiles files = dictionary("SET UTF-8\nTRY abcdefghijklmnopqrstuvwxyz\n", words);
  const auto answer = trial_of(files, {.time = std::chrono::milliseconds(1)});
  ASSERT_TRUE(answer);
  EXPECT_EQ(to_utf8(*answer), "its rules have no end");
}

TEST_F(BrokenDictionary, HostileRulesEndInAnAnswer) {
  const std::string long_line(1 << 20, 'x');
  const char* const tables[] = {"SFX A Y 999999999\n",
                                "AF 2\nAF A\nAF AF\n",
                                "COMPOUNDRULE 1\nCOMPOUNDRULE (((((\n",
                                "PFX A Y 1\nPFX A 0 x [^\n",
                                "REP 1\nREP ^$ x\n",
                                "MAP 1\nMAP (((a)\n",
                                "FLAG num\nSFX 99999999 Y 1\nSFX 99999999 0 s .\n",
                                "PHONE 1\nPHONE (-<9 X\n",
                                "ICONV 1\nICONV \xFF\xFE x\n",
                                "LANG hu_HU\nCOMPOUNDFLAG A\n"};
  for (const char* table : tables) told(std::string("SET UTF-8\n") + table, "2\nword/A\nother/AF,99999999\n");
  told("SET UTF-8\nTRY " + long_line + "\n", "1\n" + long_line + "\n");
  told(std::string("SET UTF-8\n\0\0\0\x01", 14), std::string("1\n\0\xFF\n", 5));
}

TEST_F(BrokenDictionary, AFileWithoutEndIsToldAndNotRead) {
  namespace fs = std::filesystem;
  const auto told_with = [&](const char* name, const std::function<void(const std::string&)>& make) {
    const DictionaryFiles files = dictionary("SET UTF-8\n", "1\nword\n");
    fs::remove(folder.path(name));
    make(folder.path(name));
    DictionaryStore store({files});
    std::vector<std::string> failures;
    store.set_failed([&](const std::u16string& text) { failures.push_back(to_utf8(text)); });
    EXPECT_EQ(store.find(u"xx"), nullptr);
    EXPECT_EQ(store.find(u"xx"), nullptr);
    EXPECT_THAT(failures, ElementsAre(HasSubstr("can't be read"))) << name;
    fs::remove_all(folder.path(name));
  };
  for (const char* name : {"xx.aff", "xx.dic"}) {
    told_with(name, [](const std::string& path) { fs::create_symlink("/dev/zero", path); });
    told_with(name, [](const std::string& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); });
    told_with(name, [](const std::string& path) { fs::create_directory(path); });
    told_with(name, [](const std::string& path) {
      std::ofstream(path) << "SET UTF-8\n";
      fs::resize_file(path, std::uintmax_t{200} << 20);
    });
  }
}

TEST_F(BrokenDictionary, RulesWithoutEndAreToldWithinTheTime) {
  // Each letter could be each other one, in words of nineteen letters.
  std::string words = "40\n";
  for (int i = 0; i < 40; ++i) words += std::string(18, char('a' + i % 26)) + char('a' + i % 7) + "\n";
  const DictionaryFiles files =
      dictionary("SET UTF-8\nMAP 1\nMAP abcdefghijklmnopqrstuvwxyz\nTRY abcdefghijklmnopqrstuvwxyz\n", words);
  const auto before = std::chrono::steady_clock::now();
  const auto answer = trial_of(files, {.time = std::chrono::milliseconds(500)});
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(10));
  ASSERT_TRUE(answer);
  EXPECT_EQ(to_utf8(*answer), "its rules have no end");
}

TEST_F(BrokenDictionary, OnlyWhatUsersCanWriteIsTried) {
  EXPECT_TRUE(needs_trial(dictionary("SET UTF-8\n", "1\nx\n")));
  const DictionaryFiles own{u"en-US", "/usr/share/hunspell/en_US.aff", "/usr/share/hunspell/en_US.dic"};
  if (!std::filesystem::exists(own.words)) GTEST_SKIP() << "no dictionary of the system";
  EXPECT_FALSE(needs_trial(own));
}

}  // namespace tvx::spelling
