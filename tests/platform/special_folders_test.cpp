#include "tvx/platform/special_folders.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>

#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

namespace fs = std::filesystem;

class SpecialFolders : public testing::Test {
 protected:
  SpecialFolders() {
    std::string name = (fs::temp_directory_path() / "tvx-folders-XXXXXX").string();
    root_ = mkdtemp(name.data());
    set("XDG_CACHE_HOME", nullptr);
    set("HOME", (root_ / "home").c_str());
    set("TMPDIR", root_.c_str());
  }
  ~SpecialFolders() override {
    for (const auto& [variable, value] : before_) put(variable.c_str(), value ? value->c_str() : nullptr);
    fs::remove_all(root_);
  }

  void set(const char* variable, const char* value) {
    const char* old = std::getenv(variable);
    before_.emplace(variable, old ? std::optional<std::string>(old) : std::nullopt);
    put(variable, value);
  }
  static void put(const char* variable, const char* value) {
    value ? setenv(variable, value, 1) : unsetenv(variable);
  }
  static std::string cache() { return to_utf8(GetSpecialFolder(WindowHandle::none, CSIDL_INTERNET_CACHE)); }
  std::string temporary() const { return (root_ / ("tvxHTML-" + std::to_string(geteuid()) + "/")).string(); }

  fs::path root_;
  std::map<std::string, std::optional<std::string>> before_;
};

TEST_F(SpecialFolders, TheCacheIsMadeInTheHomeFolder) {
  EXPECT_EQ(cache(), (root_ / "home/.cache/tvxHTML/").string());
  EXPECT_TRUE(fs::is_directory(cache()));
  EXPECT_EQ(cache(), cache());
}

TEST_F(SpecialFolders, TheCacheIsTheUsersAlone) {
  fs::create_directories(root_ / "home/.cache/tvxHTML");
  fs::permissions(root_ / "home/.cache/tvxHTML", fs::perms(0755));
  struct stat status {};
  ASSERT_EQ(stat(cache().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700u);
}

TEST_F(SpecialFolders, TheDesktopsVariableIsObeyedIfItNamesAnAbsolutePath) {
  set("XDG_CACHE_HOME", (root_ / "elsewhere").c_str());
  EXPECT_EQ(cache(), (root_ / "elsewhere/tvxHTML/").string());
  put("XDG_CACHE_HOME", "relative");
  EXPECT_EQ(cache(), (root_ / "home/.cache/tvxHTML/").string());
}

TEST_F(SpecialFolders, WithoutAHomeTheTemporaryFilesHaveAFolder) {
  put("HOME", nullptr);
  EXPECT_EQ(cache(), temporary());
  put("HOME", "/proc/no-such-home");
  EXPECT_EQ(cache(), temporary());
}

TEST_F(SpecialFolders, APathOfMoreThan259CharactersIsNotUsed) {
  const std::string home = (root_ / std::string(240, 'x')).string();
  put("HOME", home.c_str());
  EXPECT_EQ(cache(), temporary());
}

TEST_F(SpecialFolders, AForeignLinkIsNotFollowed) {
  put("HOME", nullptr);
  fs::create_directory(root_ / "trap");
  fs::create_directory_symlink(root_ / "trap", fs::path(temporary()).parent_path());
  EXPECT_EQ(cache(), "");
}

TEST_F(SpecialFolders, OtherNumbersHaveNoFolder) { EXPECT_EQ(GetSpecialFolder(WindowHandle::none, 5), u""); }

TEST_F(SpecialFolders, CanBeFixed) {
  set_special_folder(CSIDL_INTERNET_CACHE, u"/somewhere");
  EXPECT_EQ(cache(), "/somewhere");
  set_special_folder(CSIDL_INTERNET_CACHE, std::nullopt);
  EXPECT_EQ(cache(), (root_ / "home/.cache/tvxHTML/").string());
}

}  // namespace
}  // namespace tvx::platform
