#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/files/declared_charset.h"
#include "tvx/files/document_file.h"

namespace tvx::files {
namespace {

/// A page in a file whose character set or line ends are changed.
class DocumentForm : public testing::Test {
 protected:
  DocumentForm() {
    char folder[] = "/tmp/document-form-XXXXXX";
    folder_ = mkdtemp(folder);
  }
  ~DocumentForm() override { std::filesystem::remove_all(folder_); }

  void open(const std::string& bytes) {
    save_atomically(path(), bytes);
    file_ = DocumentFile::open(path());
    document_ = dom::parse_document(read_form(bytes).text);
  }
  std::string bytes() const { return file_.bytes_of(*document_); }
  std::u16string path() const { return from_utf8(folder_ + "/page.html"); }

  std::string folder_;
  DocumentFile file_;
  dom::Ref<dom::Document> document_;
};

// As most of the file's own are written.
TEST_F(DocumentForm, NewTagsAreWrittenInTheFilesLetters) {
  const auto with_a_paragraph = [this](const std::string& page) {
    open(page);
    dom::insert(*document_->body(), document_->create_element(dom::Tag::P));
    return bytes();
  };
  EXPECT_EQ(with_a_paragraph("<P>a <B>b</B> <I>c</I></P>"), "<P>a <B>b</B> <I>c</I></P><P></P>");
  EXPECT_TRUE(with_a_paragraph("<P>a<P>b").ends_with("<P></P>")) << "without end tags too";
  EXPECT_EQ(with_a_paragraph("<p>a <b>b</b> <i>c</i></p>"), "<p>a <b>b</b> <i>c</i></p><p></p>");
}

TEST_F(DocumentForm, ACharsetThatThePageComesToNameIsWritten) {
  open("<!DOCTYPE html><meta charset=\"utf-8\"><p>gr\xC3\xBC\xC3\x9F</p>\n");
  declare_charset(*document_, "windows-1252");
  EXPECT_EQ(bytes(), "<!DOCTYPE html><meta charset=\"windows-1252\"><p>gr\xFC\xDF</p>\n");
  EXPECT_EQ(file_.form_of(*document_).charset, "windows-1252");
  EXPECT_EQ(document_->journal().depth(), 1u);
  ASSERT_TRUE(document_->journal().undo());
  EXPECT_EQ(bytes(), "<!DOCTYPE html><meta charset=\"utf-8\"><p>gr\xC3\xBC\xC3\x9F</p>\n");
}

TEST_F(DocumentForm, WhatACharsetCannotHoldBecomesReferences) {
  open("<!DOCTYPE html><meta charset=\"utf-8\"><p>\xE2\x82\xAC \xE6\x97\xA5</p>\n");
  declare_charset(*document_, "windows-1252");
  EXPECT_EQ(bytes(), "<!DOCTYPE html><meta charset=\"windows-1252\"><p>\x80 &#26085;</p>\n");
}

TEST_F(DocumentForm, APageThatNamesNoneGetsAMeta) {
  open("<!DOCTYPE html>\n<html>\n<head>\n<title>t</title>\n</head>\n<body>\n<p>a</p>\n</body>\n</html>\n");
  declare_charset(*document_, "utf-8");
  EXPECT_NE(bytes().find("<meta charset=\"utf-8\">"), std::string::npos) << bytes();
  EXPECT_EQ(declared_charset(*document_), "utf-8");
}

TEST_F(DocumentForm, TheOlderWayToNameOneIsKept) {
  open(
      "<!DOCTYPE html><meta http-equiv=\"Content-Type\" content=\"text/html; "
      "charset=iso-8859-1\"><p>\xFC</p>\n");
  EXPECT_EQ(declared_charset(*document_), "windows-1252");
  declare_charset(*document_, "utf-8");
  EXPECT_EQ(bytes(),
            "<!DOCTYPE html><meta http-equiv=\"Content-Type\" content=\"text/html; "
            "charset=utf-8\"><p>\xC3\xBC</p>\n");
}

TEST_F(DocumentForm, LineEndsAreChangedAndBack) {
  const std::string page = "<!DOCTYPE html>\n<p>a</p>\n<p>b</p>\n";
  open(page);
  EXPECT_FALSE(file_.respelled());
  file_.set_line_end(LineEnd::CrLf);
  EXPECT_TRUE(file_.respelled());
  EXPECT_EQ(bytes(), "<!DOCTYPE html>\r\n<p>a</p>\r\n<p>b</p>\r\n");
  file_.set_line_end(LineEnd::Lf);
  EXPECT_FALSE(file_.respelled());
  EXPECT_EQ(bytes(), page);
}

TEST_F(DocumentForm, MixedLineEndsBecomeOne) {
  open("<!DOCTYPE html>\r\n<p>a</p>\n<p>b</p>\n");
  file_.set_line_end(LineEnd::Lf);
  EXPECT_TRUE(file_.respelled());
  EXPECT_EQ(bytes(), "<!DOCTYPE html>\n<p>a</p>\n<p>b</p>\n");
  file_.save(*document_, path());
  EXPECT_FALSE(file_.respelled());
}

TEST_F(DocumentForm, AByteOrderMarkCountsUntilItIsTakenAway) {
  open("\xEF\xBB\xBF<!DOCTYPE html><meta charset=\"utf-8\"><p>\xC3\xBC</p>\n");
  declare_charset(*document_, "windows-1252");
  EXPECT_EQ(file_.form_of(*document_).charset, "utf-8");
  file_.take_mark_away();
  EXPECT_EQ(bytes(), "<!DOCTYPE html><meta charset=\"windows-1252\"><p>\xFC</p>\n");
}

TEST_F(DocumentForm, ANewPageIsAWholeOneOfToday) {
  file_ = DocumentFile::untitled(path(), u"A & B", u"de-AT");
  EXPECT_EQ(
      read_all_bytes(path()),
      "<!DOCTYPE html>\n<html lang=\"de-AT\">\n<head>\n<meta charset=\"utf-8\">\n<meta name=\"viewport\" "
      "content=\"width=device-width, initial-scale=1\">\n<title>A &amp; B</title>\n</head>\n<body>\n<p></p>\n"
      "</body>\n</html>\n");
  EXPECT_EQ(file_.title(), u"A & B");
  EXPECT_TRUE(file_.path().empty());
}

TEST_F(DocumentForm, ANewPageInALeftwardLanguageIsWrittenLeftwards) {
  for (const char16_t* language : {u"ar", u"he-IL", u"fa_IR"}) {
    DocumentFile::untitled(path(), u"T", language);
    EXPECT_NE(read_all_bytes(path()).find("\" dir=\"rtl\">\n<head>"), std::string::npos) << to_utf8(language);
  }
  DocumentFile::untitled(path(), u"T", u"arn");
  EXPECT_EQ(read_all_bytes(path()).find("rtl"), std::string::npos);
}

TEST_F(DocumentForm, ADeclarationTooFarInToCountChangesNothing) {
  const std::string far = "<!DOCTYPE html><!--" + std::string(1100, 'x') + "--><meta charset=\"utf-8\">";
  open(far + "<p>\xFC</p>\n");
  EXPECT_EQ(bytes(), far + "<p>\xFC</p>\n");
  EXPECT_EQ(file_.form_of(*document_).charset, "windows-1252");
}

}  // namespace
}  // namespace tvx::files
