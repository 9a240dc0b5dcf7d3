#include "qt/document_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "base/error.h"
#include "base/strings.h"
#include "base/text_file.h"
#include "dom/inner_html.h"
#include "dom/parse.h"

namespace tvx::qt {
namespace {

class DocumentFileTest : public testing::Test {
 protected:
  DocumentFileTest() {
    folder_ = std::filesystem::temp_directory_path() / ("document_file_" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder_);
  }
  ~DocumentFileTest() override { std::filesystem::remove_all(folder_); }

  std::u16string path() const { return from_utf8((folder_ / "page.html").string()); }
  DocumentFile file_of(const std::string& bytes) {
    save_atomically(path(), bytes);
    return DocumentFile::read(path());
  }
  /// Reads and writes without an edit.
  std::string round(const std::string& bytes, std::u16string_view text) {
    const auto document = dom::parse_document(text);
    return file_of(bytes).bytes_of(dom::outer_html(*document->document_element()));
  }

  std::filesystem::path folder_;
};

TEST_F(DocumentFileTest, KeepsWhatStandsBeforeAndBehindTheDocument) {
  const std::string before =
      "<!-- made by hand -->\n<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01//EN\"\n  "
      "\"http://www.w3.org/TR/html4/strict.dtd\">\n";
  const std::string bytes = before +
                            "<html><head><title> A  title </title><base href=\"x/\"></head><body>t"
                            "</body></html><!-- behind -->\n";
  const DocumentFile file = file_of(bytes);
  EXPECT_EQ(file.title(), u" A  title ");
  EXPECT_EQ(file.base(), u"x/");
  EXPECT_EQ(file.bytes_of(u"<HTML><BODY>t\n</BODY></HTML>"),
            before + "<HTML><BODY>t</BODY></HTML><!-- behind -->\n");
}

TEST_F(DocumentFileTest, AFileWithoutADocumentTypeGetsNone) {
  EXPECT_EQ(file_of("<p>x").bytes_of(u"<HTML></HTML>"), "<HTML></HTML>");
  EXPECT_EQ(file_of("<p>x").title(), u"");
}

TEST_F(DocumentFileTest, KeepsLineEnds) {
  EXPECT_EQ(file_of("<!DOCTYPE html>\r\n<p>a\r\nb\r\n").bytes_of(u"<HTML>a\nb</HTML>"),
            "<!DOCTYPE html>\r\n<HTML>a\r\nb</HTML>");
  EXPECT_EQ(file_of("<!DOCTYPE html>\n<p>a\nb\n").bytes_of(u"<HTML>a\nb</HTML>"),
            "<!DOCTYPE html>\n<HTML>a\nb</HTML>");
}

TEST_F(DocumentFileTest, KeepsTheCharacterSetAndRefersToWhatItLacks) {
  const std::string head = "<meta charset=windows-1252>";
  EXPECT_EQ(file_of(head + "caf\xE9").bytes_of(u"café € Ж \U0001F642"), "caf\xE9 \x80 &#1046; &#128578;");
  EXPECT_EQ(file_of("\xEF\xBB\xBF<p>x").bytes_of(u"café"),
            "\xEF\xBB\xBF"
            "caf\xC3\xA9");
}

TEST_F(DocumentFileTest, SavesInOneStepAndKeepsTheMode) {
  DocumentFile file = file_of("<p>old");
  std::filesystem::permissions(folder_ / "page.html", std::filesystem::perms(0640));
  file.save(u"<HTML>new</HTML>");
  EXPECT_EQ(read_bytes(path()), "<HTML>new</HTML>");
  EXPECT_EQ(std::filesystem::status(folder_ / "page.html").permissions(), std::filesystem::perms(0640));
  file.set_path(u"/nowhere/at/all.html");
  EXPECT_THROW(file.save(u"x"), RuntimeError);
  EXPECT_THROW(DocumentFile::read(u"/nowhere/at/all.html"), RuntimeError);
}

TEST_F(DocumentFileTest, ASecondRoundChangesNothing) {
  const std::string first = round("<!DOCTYPE html>\n<p>a\n</body>\n</html>\n", u"<p>a\n</body>\n</html>\n");
  EXPECT_EQ(round(first, from_utf8(first)), first);
}

}  // namespace
}  // namespace tvx::qt
