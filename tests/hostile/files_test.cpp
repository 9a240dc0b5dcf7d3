#include <fcntl.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <iostream>

#include "core/control_fixture.h"

/// Files that are none, or too many: opened as documents, linked as sheets, written over. Nothing hangs,
/// nothing grows.
namespace tvx::hostile {
namespace {

namespace fs = std::filesystem;

class Files : public core::Control {
 protected:
  Files() {
    start();
    control->set_DocumentHTML(u"<P>mine</P>");
    fs::create_directory(folder / "folder.html");
    ::mkfifo((folder / "pipe.html").c_str(), 0600);
    fs::create_symlink("loop.html", folder / "loop.html");
    fs::create_symlink("/dev/zero", folder / "zeros.html");
    fs::create_symlink("/proc/self/mem", folder / "memory.html");
    fs::create_symlink("nowhere", folder / "dangling.html");
    write_file("locked.html", "<p>locked</p>");
    fs::permissions(folder / "locked.html", fs::perms::none);
    // A file with a hole: as long as it says, and hardly anything on the disk.
    write_file("huge.html", "<p>");
    fs::resize_file(folder / "huge.html", std::uintmax_t{3} << 30);
  }
  ~Files() override { std::cout << "[ COUNTED  ] " << tried_ << " odd files\n"; }

  static std::vector<std::string> names() {
    return {"folder.html", "pipe.html",     "loop.html", "zeros.html",
            "memory.html", "dangling.html", "huge.html", "missing.html"};
  }
  /// Calls `act` with each of them. A call that hangs ends the program by the suite's limit of time.
  void try_all(const std::function<void(const std::string&)>& act) {
    for (const std::string& name : names()) {
      SCOPED_TRACE(name);
      attempt([&] { act(name); });
      loop.settle();
      ++tried_;
    }
  }

 private:
  int tried_ = 0;
};

TEST_F(Files, OpenedWholeTheyLeaveTheDocument) {
  try_all([&](const std::string& name) {
    std::u16string file = path(name);
    control->Open_document(file, true);
    EXPECT_EQ(body(), u"<P>mine</P>");
  });
}

TEST_F(Files, OpenedAsABodyTheyLeaveTheDocument) {
  try_all([&](const std::string& name) {
    std::u16string file = path(name);
    control->Open_document(file, false);
    EXPECT_EQ(body(), u"<P>mine</P>");
  });
}

TEST_F(Files, LinkedAsSheetsTheyAreEmptyOnes) {
  try_all([&](const std::string& name) {
    std::u16string file = write_file("page.html", "<link rel=stylesheet href='" + name +
                                                      "'><style>@import '" + name + "';</style><p>page</p>");
    control->Open_document(file, true);
    EXPECT_EQ(body(), u"<P>page</P>");
  });
}

TEST_F(Files, WrittenOverTheyHangNobody) {
  for (const char* name : {"folder.html", "pipe.html", "loop.html"})
    attempt([&] { control->Save_document(path(name), true); });
  EXPECT_TRUE(fs::is_directory(folder / "folder.html"));
  EXPECT_TRUE(fs::is_fifo(folder / "pipe.html"));
}

TEST_F(Files, ADocumentOfZerosOrOfAnyBytesIsOpened) {
  std::string bytes;
  for (int i = 0; i < 70'000; ++i) bytes += static_cast<char>(i * 7919 >> 3);
  for (const std::string& text : {std::string(100'000, '\0'), bytes, std::string("\xFF\xFE<\0p\0", 6),
                                  std::string("\xEF\xBB\xBF") + bytes}) {
    std::u16string file = write_file("bytes.html", text);
    control->Open_document(file, true);
    loop.settle();
    EXPECT_NE(control->DOM()->body(), nullptr);
  }
}

}  // namespace
}  // namespace tvx::hostile
