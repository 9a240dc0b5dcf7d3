#include "tvx/base/text_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
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
  EXPECT_TRUE(file.complete);
  EXPECT_EQ(file.text, u"onetwothreefour");
}

TEST_F(TextFile, IsReadAsItStandsWithoutLineBreaks) {
  put("a.txt", "P { color: red }");
  EXPECT_EQ(ReadTextFile(path("a.txt")).text, u"P { color: red }");
}

TEST_F(TextFile, ReadingWhatIsNotThereGivesNothing) {
  EXPECT_FALSE(ReadTextFile(path("none")).complete);
  EXPECT_EQ(ReadTextFile(path("none")).text, u"");
  EXPECT_FALSE(ReadTextFile(from_utf8(folder_.string())).complete);
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

}  // namespace
}  // namespace tvx
