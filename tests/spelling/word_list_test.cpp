#include "tvx/spelling/word_list.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

#include "spelling/temporary_folder.h"
#include "tvx/base/code_page.h"
#include "tvx/spelling/spell.h"

namespace tvx::spelling {

TEST(WordList, HasTheWordsOfItsFileOneALine) {
  const TemporaryFolder folder;
  folder.write("list",
               "\xEF\xBB\xBF"
               "tvxhtml\r\nStefan\n  blank  \n\nNASA");
  WordList list(folder.path("list"));
  EXPECT_TRUE(list.has(u"tvxhtml"));
  EXPECT_TRUE(list.has(u"Tvxhtml")) << "at a sentence's start";
  EXPECT_TRUE(list.has(u"TVXHTML")) << "in capitals";
  EXPECT_FALSE(list.has(u"tvxHtml"));
  EXPECT_TRUE(list.has(u"Stefan"));
  EXPECT_TRUE(list.has(u"STEFAN"));
  EXPECT_FALSE(list.has(u"stefan")) << "a name keeps its capital";
  EXPECT_TRUE(list.has(u"blank"));
  EXPECT_FALSE(list.has(u"nasa"));
}

TEST(WordList, WhatIsAppendedCountsAtOnce) {
  const TemporaryFolder folder;
  WordList list(folder.path("list"));
  EXPECT_FALSE(list.has(u"later"));
  clsSpell::AppendToAddWordsFile(folder.path16("list"), u"later");
  EXPECT_TRUE(list.has(u"later"));
  std::filesystem::remove(folder.path("list"));
  EXPECT_FALSE(list.has(u"later"));
}

TEST(WordList, AFileThatAnotherProgramWritesIsReadAnew) {
  const TemporaryFolder folder;
  folder.write("list", "one\n");
  WordList list(folder.path("list"));
  EXPECT_TRUE(list.has(u"one"));
  const auto time = std::filesystem::last_write_time(folder.path("list"));
  folder.write("list", "two\n");
  std::filesystem::last_write_time(folder.path("list"), time + std::chrono::seconds(1));
  EXPECT_TRUE(list.has(u"two")) << "as long as before";
  folder.write("list", "two\nthree\n");
  std::filesystem::last_write_time(folder.path("list"), time + std::chrono::seconds(1));
  EXPECT_TRUE(list.has(u"three")) << "within one tick of the clock";
}

TEST(WordList, AFileThatIsNoUtf8IsInTheSystemsCodePage) {
  const SystemCodePageScope page(CodePage::windows_1252());
  EXPECT_TRUE(words_of_lines("\xFC"
                             "ber\n")
                  .contains(u"\u00FC"
                            u"ber"));
}

class UserWords : public ::testing::Test {
 protected:
  TemporaryFolder folder;
  EnvironmentScope data{"XDG_DATA_HOME", folder.path()};
};

TEST_F(UserWords, StandInTheUsersDataFolderOneALine) {
  EXPECT_EQ(user_words_path(), folder.path("tvxHTML/words.txt"));
  EXPECT_TRUE(add_to_user_words(u"tvxhtml"));
  EXPECT_TRUE(add_to_user_words(u" e\u0301t "));
  EXPECT_TRUE(add_to_user_words(u"tvxhtml")) << "once is enough";
  EXPECT_EQ(folder.read("tvxHTML/words.txt"), "tvxhtml\n\xC3\xA9t\n");
}

TEST_F(UserWords, OfSeveralProgramsThatAddAtTheSameTimeNoneIsLost) {
  constexpr int programs = 4, words = 15;
  for (int program = 0; program < programs; ++program) {
    if (::fork() != 0) continue;
    for (int word = 0; word < words; ++word)
      add_to_user_words(std::u16string(u"w") + static_cast<char16_t>(u'a' + program) +
                        static_cast<char16_t>(u'a' + word));
    ::_exit(0);
  }
  for (int program = 0; program < programs; ++program) ::wait(nullptr);
  EXPECT_EQ(words_of_lines(folder.read("tvxHTML/words.txt")).size(), std::size_t(programs * words));
}

TEST_F(UserWords, AreNotLostWhereTheFileCannotBeRead) {
  std::filesystem::create_directories(folder.path("tvxHTML/words.txt"));
  EXPECT_FALSE(add_to_user_words(u"word"));
}

}  // namespace tvx::spelling
