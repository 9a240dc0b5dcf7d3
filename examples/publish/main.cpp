// How does a program without a window publish a page with its pictures?
//
//   example-publish PAGE HOST USER FOLDER ADDRESS
//
// Uploads all pictures of PAGE that are files of this machine to FOLDER on HOST, under which they are seen as
// ADDRESS, and the page itself, with their new addresses, as index.html. HOST may have a scheme:
// "sftp://example.org". The password is read from the environment, where no list of programs shows it:
// PUBLISH_PASSWORD.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "tvx/htmled.h"

namespace {

std::u16string wide(const std::filesystem::path& text) { return text.u16string(); }
std::string narrow(const std::u16string& text) {
  const std::u8string bytes = std::filesystem::path(text).u8string();
  return {bytes.begin(), bytes.end()};
}

/// Says what fails, and how far it is.
struct Reporter final : tvx::HTMLedEvents {
  void FTPError(std::int32_t& number, std::u16string& text) override {
    std::cerr << number << ": " << narrow(text) << '\n';
  }
  void FTPSuccess(std::int32_t& number, std::u16string& text) override {
    std::cout << number << ": " << narrow(text) << '\n';
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 6) {
    std::cerr << "usage: example-publish PAGE HOST USER FOLDER ADDRESS\n";
    return 2;
  }
  const std::filesystem::path page = std::filesystem::absolute(argv[1]);
  const char* password = std::getenv("PUBLISH_PASSWORD");

  Reporter reporter;
  tvx::HTMLed editor;
  editor.set_events(&reporter);
  editor.start();

  std::ifstream file(page, std::ios::binary);
  const std::string html(std::istreambuf_iterator<char>(file), {});
  editor.set_DocumentHTML(wide(std::filesystem::path(html)));

  editor.set_FTPHost(wide(argv[2]));
  editor.set_FTPUser(wide(argv[3]));
  editor.set_FTPPassword(wide(password ? password : ""));
  editor.set_FTPInitDir(wide(argv[4]));
  editor.set_FTPSaveToURL(wide(argv[5]));
  editor.set_FTPPassive(true);
  editor.set_FTPBlockSize(65536);  // no rests between blocks: nobody looks at a window

  const int uploaded = editor.UploadAllImages();
  const std::filesystem::path result = page.parent_path() / (page.stem().string() + ".published.html");
  std::ofstream(result, std::ios::binary) << narrow(editor.DocumentHTML());
  const bool sent = editor.PutFileFTP(wide(result), u"index.html");
  std::cout << uploaded << " pictures uploaded, " << editor.CountLocalImages() << " left\n";
  return sent && editor.CountLocalImages() == 0 ? 0 : 1;
}
