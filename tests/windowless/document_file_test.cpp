#include "tvx/document_file.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/htmled.h"

namespace tvx {
namespace {

class FileInEditor : public testing::Test {
 protected:
  FileInEditor() {
    char folder[] = "/tmp/file-in-editor-XXXXXX";
    folder_ = mkdtemp(folder);
    editor.start();
    editor.set_DocumentHTML(u"<P>before</P>");
  }
  ~FileInEditor() override { std::filesystem::remove_all(folder_); }

  std::u16string write(const std::string& bytes) const {
    std::ofstream(folder_ + "/page.html", std::ios::binary) << bytes;
    return from_utf8(folder_ + "/page.html");
  }
  template <class Act>
  static int failure(Act&& act) {
    try {
      act();
    } catch (const RuntimeError& error) {
      return error.number();
    }
    return 0;
  }

  HTMLed editor;
  std::string folder_;
};

TEST_F(FileInEditor, WithoutAnEditHasTheSameBytes) {
  const std::string page =
      "<!DOCTYPE html>\n<html><head><title>t</title></head>\n<body>\n<p>one</p>\n</body></html>\n";
  const DocumentFile file = DocumentFile::open(write(page));
  file.open_in(editor);
  EXPECT_EQ(file.bytes_of(editor), page);
  EXPECT_NE(editor.DocumentHTML().find(u"<P>one</P>"), std::u16string::npos);
}

TEST_F(FileInEditor, ThatHasGoneMeanwhileIsNotOpened) {
  const DocumentFile file = DocumentFile::open(write("<p>one</p>"));
  std::filesystem::remove(folder_ + "/page.html");
  EXPECT_EQ(failure([&] { file.open_in(editor); }), errors::path_access);
  EXPECT_EQ(editor.DocumentHTML(), u"<P>before</P>") << "it shows what it showed";
}

TEST_F(FileInEditor, NeedsADocumentToBeSaved) {
  DocumentFile file = DocumentFile::open(write("<p>one</p>"));
  HTMLed not_started;
  EXPECT_EQ(failure([&] { file.save(not_started, file.path()); }), errors::object_not_set);
  EXPECT_EQ(failure([&] { file.bytes_of(not_started); }), errors::object_not_set);
  EXPECT_EQ(DocumentFile::open(file.path()).charset(), file.charset());
  EXPECT_EQ(std::filesystem::file_size(folder_ + "/page.html"), 10u) << "untouched";
}

}  // namespace
}  // namespace tvx
