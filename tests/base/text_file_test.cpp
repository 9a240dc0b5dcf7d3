#include "tvx/base/text_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tvx/base/code_page.h"
#include "tvx/base/error.h"
#include "tvx/base/strings.h"

namespace tvx {
namespace {

namespace fs = std::filesystem;

class TextFile : public testing::Test {
 protected:
  TextFile() {
    std::string name = (fs::temp_directory_path() / "tvx-text-file-XXXXXX").string();
    folder_ = mkdtemp(name.data());
  }
  ~TextFile() override { fs::remove_all(folder_); }

  std::string name(const std::string& file) const { return (folder_ / file).string(); }
  std::u16string path(const std::string& file) const { return from_utf8(name(file)); }
  void put(const std::string& file, const std::string& bytes) const { std::ofstream(name(file)) << bytes; }
  std::string got(const std::string& file) const { return read_bytes(path(file)).value_or("(unreadable)"); }
  std::size_t files() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }
  mode_t mode(const std::string& file) const {
    struct stat status {};
    stat(name(file).c_str(), &status);
    return status.st_mode & 07777;
  }

  fs::path folder_;
  SystemCodePageScope utf8_{CodePage::utf8()};
};

TEST_F(TextFile, IsWrittenInPlaceOfTheOldOne) {
  put("a.txt", "a much longer old text");
  EXPECT_TRUE(WriteTextFile(path("a.txt"), u"n\u00e9w\n"));
  EXPECT_EQ(got("a.txt"), "n\xC3\xA9w\n");
}

TEST_F(TextFile, IsWrittenInTheSystemCodePage) {
  const SystemCodePageScope scope(CodePage::windows_1252());
  WriteTextFile(path("a.txt"), u"\u00e9\u20ac\u0416");
  EXPECT_EQ(got("a.txt"), "\xE9\x80?");
  EXPECT_EQ(ReadTextFile(path("a.txt")).text, u"\u00e9\u20ac?");
}

TEST_F(TextFile, APrintedLineEndsInCrLf) {
  EXPECT_TRUE(write_printed_line(path("a.txt"), u"one\ntwo"));
  EXPECT_EQ(got("a.txt"), "one\ntwo\r\n");
  EXPECT_TRUE(write_printed_line(path("a.txt"), u""));
  EXPECT_EQ(got("a.txt"), "\r\n");
}

TEST_F(TextFile, WritingReplacesALinkAndNotItsTarget) {
  put("target", "kept");
  fs::create_symlink(name("target"), name("link"));
  EXPECT_TRUE(WriteTextFile(path("link"), u"new"));
  EXPECT_EQ(got("target"), "kept");
  EXPECT_EQ(got("link"), "new");
}

TEST_F(TextFile, AFailureIsAnAnswer) {
  EXPECT_FALSE(WriteTextFile(path("no/such/folder/a.txt"), u"x"));
  EXPECT_FALSE(WriteTextFile(from_utf8(folder_.string()), u"x"));
  EXPECT_FALSE(WriteTextFile(u"", u"x"));
  EXPECT_FALSE(WriteTextFile(path("a") + std::u16string(u"\0b", 2), u"x"));
  EXPECT_FALSE(WriteTextFile(u"/dev/full", u"x"));
  EXPECT_TRUE(fs::exists("/dev/full"));
  EXPECT_EQ(files(), 0u);
}

TEST_F(TextFile, IsReadWithoutItsLineEnds) {
  put("a.txt", "one\r\ntwo\nthree\rfour\n\n");
  const FileText file = ReadTextFile(path("a.txt"));
  EXPECT_TRUE(file.complete());
  EXPECT_EQ(file.text, u"onetwothreefour");
}

TEST_F(TextFile, IsReadAsItStandsWithoutLineBreaks) {
  put("a.txt", "P { color: red }");
  EXPECT_EQ(ReadTextFile(path("a.txt")).text, u"P { color: red }");
}

TEST_F(TextFile, ReadingWhatIsNotThereGivesNothing) {
  EXPECT_FALSE(ReadTextFile(path("none")).complete());
  EXPECT_EQ(ReadTextFile(path("none")).text, u"");
  EXPECT_FALSE(ReadTextFile(from_utf8(folder_.string())).complete());
  EXPECT_EQ(read_bytes(path("none")), std::nullopt);
}

TEST_F(TextFile, BytesComeWhole) {
  std::string bytes;
  for (int i = 0; i < 300'000; ++i) bytes.push_back(static_cast<char>(i));
  put("a.bin", bytes);
  EXPECT_TRUE(read_bytes(path("a.bin")) == bytes);
}

TEST_F(TextFile, BackslashesAreSlashesOnDisk) {
  std::u16string windows = path("a.txt");
  std::replace(windows.begin(), windows.end(), u'/', u'\\');
  EXPECT_TRUE(WriteTextFile(windows, u"x"));
  EXPECT_EQ(got("a.txt"), "x");
}

TEST_F(TextFile, ALostLeadingSlashComesBack) {
  const std::u16string cut = path("a.txt").substr(1);
  EXPECT_EQ(file_system_path(cut), name("a.txt"));
  EXPECT_TRUE(WriteTextFile(cut, u"x"));
  EXPECT_EQ(ReadTextFile(cut).text, u"x");
}

TEST_F(TextFile, AReachableRelativePathStays) {
  const fs::path before = fs::current_path();
  fs::create_directories(folder_ / "tmp");
  fs::current_path(folder_);
  EXPECT_EQ(file_system_path(u"tmp/a.txt"), "tmp/a.txt");
  EXPECT_EQ(file_system_path(u"a.txt"), "a.txt");
  EXPECT_EQ(file_system_path(u"no/such/a.txt"), "no/such/a.txt");
  EXPECT_EQ(file_system_path(u""), "");
  fs::current_path(before);
}

TEST_F(TextFile, IsSavedInOneStepWithItsMode) {
  put("page.html", "old");
  chmod(name("page.html").c_str(), 0640);
  save_atomically(path("page.html"), "new");
  EXPECT_EQ(got("page.html"), "new");
  EXPECT_EQ(mode("page.html"), 0640u);
  EXPECT_EQ(files(), 1u);
}

TEST_F(TextFile, ANewFileIsSavedWithTheUsualMode) {
  const mode_t mask = umask(027);
  save_atomically(path("page.html"), "new");
  umask(mask);
  EXPECT_EQ(mode("page.html"), 0640u);
}

TEST_F(TextFile, SavingThroughALinkKeepsTheLink) {
  put("target", "old");
  fs::create_symlink("target", name("link"));
  save_atomically(path("link"), "new");
  EXPECT_TRUE(fs::is_symlink(name("link")));
  EXPECT_EQ(got("target"), "new");
}

TEST_F(TextFile, AFailedSaveTellsWhyAndLeavesNothingBehind) {
  fs::create_directory(name("folder"));
  EXPECT_THROW(save_atomically(path("folder"), "x"), RuntimeError);
  EXPECT_THROW(save_atomically(path("none/page.html"), "x"), RuntimeError);
  EXPECT_THROW(save_atomically(u"", "x"), RuntimeError);
  try {
    save_atomically(path("none/page.html"), "x");
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), errors::path_access);
    EXPECT_EQ(error.text(), u"Can't save " + path("none/page.html") + u": No such file or directory");
  }
  EXPECT_EQ(files(), 1u);
}

// --- what is no file, and what has no end ---

TEST_F(TextFile, APipeIsNeitherReadNorWritten) {
  ASSERT_EQ(mkfifo(name("pipe").c_str(), 0600), 0);
  EXPECT_EQ(read_bytes(path("pipe")), std::nullopt);
  EXPECT_FALSE(ReadTextFile(path("pipe")).complete());
  EXPECT_FALSE(WriteTextFile(path("pipe"), u"x"));
  EXPECT_FALSE(write_printed_line(path("pipe"), u"x"));
  EXPECT_THROW(save_atomically(path("pipe"), "x"), RuntimeError);
  EXPECT_EQ(files(), 1u);
  fs::create_symlink("pipe", name("link"));
  EXPECT_EQ(read_bytes(path("link")), std::nullopt);
}

TEST_F(TextFile, ADeviceIsNotRead) {
  EXPECT_EQ(read_bytes(u"/dev/zero"), std::nullopt);
  EXPECT_EQ(read_bytes(u"/dev/null"), std::nullopt);
}

std::u16string why_unreadable(std::u16string_view path, std::size_t limit = largest_document) {
  try {
    read_all_bytes(path, limit);
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), errors::path_access);
    return error.text();
  }
  return u"";
}

TEST_F(TextFile, WhyAFileIsNotReadIsTold) {
  put("a", "abc");
  EXPECT_EQ(read_all_bytes(path("a"), 3), "abc");
  EXPECT_EQ(why_unreadable(path("none")), u"Can't read " + path("none") + u": No such file or directory");
  EXPECT_EQ(why_unreadable(u"/dev/zero"), u"Can't read /dev/zero: it is not a regular file");
  EXPECT_EQ(why_unreadable(from_utf8(folder_.string())),
            u"Can't read " + from_utf8(folder_.string()) + u": Is a directory");
}

TEST_F(TextFile, MoreThanTheLimitIsNotRead) {
  put("a", "");
  fs::resize_file(name("a"), largest_sheet);
  EXPECT_EQ(read_bytes(path("a"), largest_sheet).value_or("").size(), largest_sheet);
  fs::resize_file(name("a"), largest_sheet + 1);
  EXPECT_EQ(why_unreadable(path("a"), largest_sheet),
            u"Can't read " + path("a") + u": it is larger than 16 MB");
  EXPECT_EQ(ReadTextFile(path("a"), largest_sheet).text, u"");
  fs::resize_file(name("a"), largest_document + 1);
  EXPECT_EQ(read_bytes(path("a")), std::nullopt);
}

// What the kernel makes up is a file of no bytes until it is read.
TEST_F(TextFile, AFileThatDoesNotKnowItsSizeIsReadUpToTheLimit) {
  EXPECT_NE(read_bytes(u"/proc/self/status").value_or(""), "");
  EXPECT_EQ(read_bytes(u"/proc/self/status", 10), std::nullopt);
}

// --- full disks ---

/// The disk is full after so many bytes of a file.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, signal_);
  }

 private:
  void (*signal_)(int);
  rlimit before_{};
};

TEST_F(TextFile, OnAFullDiskTheOldFileStays) {
  put("a.html", "old");
  {
    const FullDisk full(1000);
    EXPECT_FALSE(WriteTextFile(path("a.html"), std::u16string(5000, u'x')));
    EXPECT_THROW(save_atomically(path("a.html"), std::string(5000, 'x')), RuntimeError);
  }
  EXPECT_EQ(got("a.html"), "old");
  EXPECT_EQ(files(), 1u) << "and nothing beside it";
}

class InPlace : public TextFile {
 protected:
  InPlace() {
    fs::create_directory(name("state"));
    if (const char* before = std::getenv("XDG_STATE_HOME")) before_ = before;
    setenv("XDG_STATE_HOME", name("state").c_str(), 1);
  }
  ~InPlace() override {
    if (before_)
      setenv("XDG_STATE_HOME", before_->c_str(), 1);
    else
      unsetenv("XDG_STATE_HOME");
  }
  std::size_t copies() const {
    std::size_t count = 0;
    if (fs::exists(name("state/tvxHTML")))
      for (const auto& entry : fs::directory_iterator(name("state/tvxHTML")))
        count += entry.is_regular_file();
    return count;
  }

 private:
  std::optional<std::string> before_;
};

TEST_F(InPlace, TheOtherNamesOfAFileStayItsNames) {
  put("page.html", "a rather long old text");
  fs::create_hard_link(name("page.html"), name("other.html"));
  save_atomically(path("page.html"), "new");
  EXPECT_EQ(got("other.html"), "new");
  EXPECT_EQ(fs::hard_link_count(name("page.html")), 2u);
  EXPECT_EQ(copies(), 0u);
}

TEST_F(InPlace, AFullDiskLeavesTheOldFileHereToo) {
  put("page.html", "old");
  fs::create_hard_link(name("page.html"), name("other.html"));
  // The copy doesn't fit.
  {
    const FullDisk full(1000);
    EXPECT_THROW(save_atomically(path("page.html"), std::string(5000, 'x')), RuntimeError);
  }
  EXPECT_EQ(got("other.html"), "old");
  EXPECT_EQ(copies(), 0u);
}

// --- links ---

TEST_F(TextFile, ALinkToAFileThatIsNotThereYetStays) {
  fs::create_directory(name("folder"));
  fs::create_symlink("folder/new.html", name("first"));
  fs::create_symlink(name("first"), name("second"));
  save_atomically(path("second"), "new");
  EXPECT_TRUE(fs::is_symlink(name("first")));
  EXPECT_TRUE(fs::is_symlink(name("second")));
  EXPECT_EQ(got("folder/new.html"), "new");
}

TEST_F(TextFile, ALinkToItselfIsAnError) {
  fs::create_symlink("loop", name("loop"));
  EXPECT_THROW(save_atomically(path("loop"), "new"), RuntimeError);
  EXPECT_TRUE(fs::is_symlink(name("loop")));
}

// Who edits a file of another user as the superuser doesn't take it away from him.
TEST_F(TextFile, AFileStaysItsOwners) {
  constexpr uid_t nobody = 65534;
  put("page.html", "old");
  chmod(name("page.html").c_str(), 0640);
  if (chown(name("page.html").c_str(), nobody, nobody) != 0)
    GTEST_SKIP() << "SKIPPED: only the superuser gives files away";
  save_atomically(path("page.html"), "new");
  struct stat now {};
  ASSERT_EQ(stat(name("page.html").c_str(), &now), 0);
  EXPECT_EQ(now.st_uid, nobody);
  EXPECT_EQ(now.st_gid, nobody);
  EXPECT_EQ(now.st_mode & 07777, 0640u);
  EXPECT_EQ(got("page.html"), "new");
}

TEST_F(TextFile, WhatIsNotedOnAFileStays) {
  put("page.html", "old");
  if (setxattr(name("page.html").c_str(), "user.note", "kept", 4, 0) != 0)
    GTEST_SKIP() << "SKIPPED: this file system keeps no extended attributes";
  setxattr(name("page.html").c_str(), "user.flag", "", 0, 0);
  save_atomically(path("page.html"), "new");
  std::string value(10, '\0');
  EXPECT_EQ(getxattr(name("page.html").c_str(), "user.note", value.data(), value.size()), 4);
  EXPECT_EQ(getxattr(name("page.html").c_str(), "user.flag", value.data(), value.size()), 0);
}

// --- what a killed program leaves ---

TEST_F(TextFile, WhatAKilledProgramLeftIsSweptAndALivingOnesIsNot) {
  put("page.html", "old");
  put(".tvx-aaaaaa", "half");
  put(".tvx-bbbbbb", "at work");
  put(".tvx-of-the-user", "kept");
  const int at_work = open(name(".tvx-bbbbbb").c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(at_work, LOCK_EX), 0);
  save_atomically(path("page.html"), "new");
  EXPECT_FALSE(fs::exists(name(".tvx-aaaaaa")));
  EXPECT_TRUE(fs::exists(name(".tvx-bbbbbb")));
  EXPECT_TRUE(fs::exists(name(".tvx-of-the-user")));
  close(at_work);
  EXPECT_TRUE(WriteTextFile(path("page.html"), u"newer"));
  EXPECT_FALSE(fs::exists(name(".tvx-bbbbbb")));
}

// Killed at any moment of it: never a part, never nothing.
TEST_F(TextFile, AKillLeavesTheOldFileOrTheNew) {
  const std::string old(300'000, 'o');
  const std::u16string text(400'000, u'n');
  for (int delay = 0; delay < 60; ++delay) {
    put("page.html", old);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (;;) WriteTextFile(path("page.html"), text);
    }
    usleep(static_cast<useconds_t>(100 * delay));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string found = got("page.html");
    ASSERT_TRUE(found == old || found == std::string(400'000, 'n'))
        << delay << ": " << found.size() << " bytes";
  }
  EXPECT_TRUE(WriteTextFile(path("page.html"), u"x"));
  EXPECT_EQ(files(), 1u) << "what the killed left is swept";
}

/// An ordinary user for the life of this object: the superuser may write every file.
class AsOrdinaryUser {
 public:
  explicit AsOrdinaryUser(const fs::path& folder) : superuser_(geteuid() == 0) {
    constexpr uid_t nobody = 65534;
    if (superuser_ && (chown(folder.c_str(), nobody, nobody) != 0 || seteuid(nobody) != 0)) ADD_FAILURE();
  }
  ~AsOrdinaryUser() {
    if (superuser_ && seteuid(0) != 0) ADD_FAILURE();
  }

 private:
  bool superuser_;
};

TEST_F(TextFile, AProtectedFileStays) {
  const AsOrdinaryUser user(folder_);
  put("page.html", "old");
  chmod(name("page.html").c_str(), 0444);
  EXPECT_THROW(save_atomically(path("page.html"), "new"), RuntimeError);
  EXPECT_EQ(got("page.html"), "old");
  EXPECT_EQ(files(), 1u);
}

TEST_F(InPlace, AFileInAFolderThatMayNotBeWrittenToIsSaved) {
  const AsOrdinaryUser user(folder_);
  fs::create_directory(name("closed"));
  put("closed/page.html", "a rather long old text");
  setenv("XDG_STATE_HOME", name("own").c_str(), 1);
  chmod(name("closed").c_str(), 0555);
  save_atomically(path("closed/page.html"), "new");
  EXPECT_EQ(got("closed/page.html"), "new");
  EXPECT_TRUE(WriteTextFile(path("closed/page.html"), u"newer"));
  EXPECT_EQ(got("closed/page.html"), "newer");
  EXPECT_TRUE(fs::is_empty(name("own/tvxHTML")));
  chmod(name("closed").c_str(), 0755);
}

// A folder of its program can't be written to: there is no way to save that can't end in half a file.
TEST_F(InPlace, WithoutAFolderForTheCopyTheOldFileStays) {
  const AsOrdinaryUser user(folder_);
  put("page.html", "old");
  fs::create_hard_link(name("page.html"), name("other.html"));
  setenv("XDG_STATE_HOME", "/proc/none", 1);
  const std::string before = std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "";
  setenv("TMPDIR", "/proc/none", 1);
  EXPECT_THROW(save_atomically(path("page.html"), "new"), RuntimeError);
  if (before.empty())
    unsetenv("TMPDIR");
  else
    setenv("TMPDIR", before.c_str(), 1);
  EXPECT_EQ(got("other.html"), "old");
}

}  // namespace
}  // namespace tvx
