#include "htmled/document/files_of_page.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "tvx/base/strings.h"
#include "tvx/base/url.h"
#include "tvx/dom/document.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/files/document_file.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

using qt::from_qt;

class PageWithFiles : public testing::Test {
 protected:
  PageWithFiles() {
    for (const char* each : {"site/pics", "other", "new"}) QDir().mkpath(path(each));
    for (const char* each : {"site/a b.png", "site/pics/c.png", "other/d.png", "site/next.html"})
      write(each, each);
  }
  QString path(const char* name) const { return folder_.filePath(QString::fromUtf8(name)); }
  std::string url(const char* name) const { return to_utf8(file_url(from_qt(path(name)))); }
  void write(const char* name, const QByteArray& bytes) const {
    QFile out(path(name));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size());
  }
  QByteArray read(const char* name) const {
    QFile in(path(name));
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  }
  /// The document that is being edited.
  void edit(const std::string& body) { page_ = dom::parse_document(from_utf8(body)); }
  std::string body() const { return to_utf8(dom::inner_html(*page_->body())); }
  static std::string img(const std::string& address) { return "<IMG src=\"" + address + "\">"; }
  std::string filed(FilesOfPage& files) const {
    std::string text;
    files.as_filed(*page_, [&] { text = body(); });
    return text;
  }

  QTemporaryDir folder_;
  files::DocumentFile file_;
  SettledFiles settled_;
  dom::Ref<dom::Document> page_;
};

TEST_F(PageWithFiles, FilesInItsFolderAreSeenFromThere) {
  edit(img(url("site/a b.png")) + img(url("site/pics/c.png")) + "<a href=\"" + url("site/next.html") +
       "#x\">n</a>");
  const std::string before = body();
  FilesOfPage files(file_, {}, path("site/page.html"), settled_);
  files.look(*page_);
  EXPECT_TRUE(files.elsewhere().isEmpty());
  EXPECT_EQ(filed(files), img("a%20b.png") + img("pics/c.png") + "<A href=\"next.html#x\">n</A>");
  EXPECT_EQ(body(), before) << "the document that is being edited isn't concerned";
  EXPECT_FALSE(page_->journal().can_undo());
}

TEST_F(PageWithFiles, PicturesFromElsewhereAreCopiedIntoAFolderBesideIt) {
  edit(img(url("other/d.png")) + img(url("other/d.png")) + "<a href=\"" + url("other/d.png") + "\">n</a>");
  FilesOfPage files(file_, {}, path("site/page.html"), settled_);
  files.look(*page_);
  EXPECT_EQ(files.elsewhere(), QStringList(path("other/d.png")));
  EXPECT_EQ(files.copy_elsewhere(), QString());
  EXPECT_EQ(read("site/page_files/d.png"), "other/d.png");
  files.show_copies(*page_);
  const std::string copy = img("page_files/d.png");
  EXPECT_EQ(filed(files), copy + copy + "<A href=\"page_files/d.png\">n</A>");
  EXPECT_EQ(body().find(url("other/d.png")), std::string::npos) << "it shows the copies from now on";
  EXPECT_FALSE(page_->journal().can_undo());
}

TEST_F(PageWithFiles, ThatAreSettledAreNotAskedAboutAgain) {
  const auto asked = [this](const char* target) {
    FilesOfPage files(file_, {}, path(target), settled_);
    files.look(*page_);
    return files.elsewhere();
  };
  edit(img(url("other/d.png")));
  FilesOfPage files(file_, {}, path("site/page.html"), settled_);
  files.look(*page_);
  EXPECT_EQ(files.copy_elsewhere(), QString());
  EXPECT_TRUE(asked("site/page.html").isEmpty()) << "undo has brought the address back";
  files.show_copies(*page_);
  EXPECT_EQ(body(), img(url("site/page_files/d.png")));
  edit(img(url("other/d.png")));
  EXPECT_EQ(asked("new/page.html").size(), 1) << "there is no copy beside that one";
  files.leave_elsewhere();
  EXPECT_TRUE(asked("new/page.html").isEmpty());
}

TEST_F(PageWithFiles, NoOtherFileGivesWayToACopy) {
  QDir().mkpath(path("site/page_files"));
  write("site/page_files/d.png", "another one");
  for (int round = 0; round < 2; ++round) {
    settled_.clear();
    edit(img(url("other/d.png")));
    FilesOfPage files(file_, {}, path("site/page.html"), settled_);
    files.look(*page_);
    EXPECT_EQ(files.copy_elsewhere(), QString());
    files.show_copies(*page_);
    EXPECT_EQ(filed(files), img("page_files/2-d.png"));
  }
  EXPECT_EQ(read("site/page_files/d.png"), "another one");
  EXPECT_EQ(QDir(path("site/page_files")).entryList(QDir::Files).size(), 2) << "the second time it was there";
}

TEST_F(PageWithFiles, ACopyThatFailsIsTold) {
  write("site/page_files", "a file where the folder should be");
  edit(img(url("other/d.png")));
  FilesOfPage files(file_, {}, path("site/page.html"), settled_);
  files.look(*page_);
  EXPECT_EQ(files.copy_elsewhere(), path("site/page_files/d.png"));
  files.show_copies(*page_);
  EXPECT_EQ(filed(files), img(url("other/d.png"))) << "it stays where it is";
}

TEST_F(PageWithFiles, WhatTheFileHasAlreadyStaysAsItIs) {
  write("site/page.html", ("<p>" + img(url("site/a b.png")) + img(url("other/d.png"))).c_str());
  file_ = files::DocumentFile::open(from_qt(path("site/page.html")));
  edit(img(url("site/a b.png")) + img(url("other/d.png")) + img(url("site/pics/c.png")) +
       img("./pics/c.png"));
  FilesOfPage files(file_, path("site/page.html"), path("site/page.html"), settled_);
  files.look(*page_);
  EXPECT_TRUE(files.elsewhere().isEmpty()) << "nobody is asked twice";
  EXPECT_EQ(filed(files),
            img(url("site/a b.png")) + img(url("other/d.png")) + img("pics/c.png") + img("./pics/c.png"));
}

TEST_F(PageWithFiles, InAnotherFolderItStillMeansTheSameFiles) {
  write("site/page.html", "<p>");
  write("new/next.html", "");
  file_ = files::DocumentFile::open(from_qt(path("site/page.html")));
  edit(img("a%20b.png") + img("pics/c.png?x") + img("gone.png") +
       "<a href=\"next.html\">n</a><a href=\"page.html#y\">me</a><a href=\"pics/c.png\">c</a>");
  FilesOfPage files(file_, path("site/page.html"), path("new/mine.html"), settled_);
  files.look(*page_);
  EXPECT_EQ(files.along(), QStringList({QStringLiteral("a b.png"), QStringLiteral("pics/c.png")}));
  EXPECT_TRUE(files.elsewhere().isEmpty());
  const std::string rest = "<A href=\"next.html\">n</A><A href=\"mine.html#y\">me</A>";
  EXPECT_EQ(filed(files), img("../site/a%20b.png") + img("../site/pics/c.png?x") + img("gone.png") + rest +
                              "<A href=\"../site/pics/c.png\">c</A>")
      << "nothing is copied";
  EXPECT_EQ(files.copy_along(), QString());
  EXPECT_EQ(read("new/pics/c.png"), "site/pics/c.png");
  EXPECT_EQ(filed(files),
            img("a%20b.png") + img("pics/c.png?x") + img("gone.png") + rest + "<A href=\"pics/c.png\">c</A>");
}

TEST_F(PageWithFiles, InAnotherFolderListsOfPicturesAndStylesStillMeanTheSameFiles) {
  write("site/page.html", "<p>");
  write("site/style.css", "");
  file_ = files::DocumentFile::open(from_qt(path("site/page.html")));
  const auto page = [](const std::string& to) {
    return "<STYLE>@import \"" + to + "style.css\"; P { background: url(" + to + "pics/c.png) }</STYLE>" +
           "<P style=\"background: url(" + to + "pics/c.png)\"><IMG src=\"gone.png\" srcset=\"" + to +
           "pics/c.png 1x, gone.png 2x\"></P>";
  };
  edit("<body>" + page(""));
  const std::string before = body();
  FilesOfPage files(file_, path("site/page.html"), path("new/mine.html"), settled_);
  files.look(*page_);
  EXPECT_EQ(files.along(), QStringList({QStringLiteral("style.css"), QStringLiteral("pics/c.png")}));
  EXPECT_EQ(filed(files), page("../site/"));
  EXPECT_EQ(body(), before);
  EXPECT_EQ(files.copy_along(), QString());
  EXPECT_EQ(filed(files), before) << "copied, they are beside it as they were";
}

TEST_F(PageWithFiles, PicturesFromElsewhereInListsAreCopiedToo) {
  edit("<img srcset=\"" + url("other/d.png") + " 1x, https://example.org/x.png 2x\">");
  FilesOfPage files(file_, {}, path("site/page.html"), settled_);
  files.look(*page_);
  EXPECT_EQ(files.elsewhere(), QStringList(path("other/d.png")));
  EXPECT_EQ(files.copy_elsewhere(), QString());
  files.show_copies(*page_);
  EXPECT_EQ(filed(files), "<IMG srcset=\"page_files/d.png 1x, https://example.org/x.png 2x\">");
}

TEST_F(PageWithFiles, ThatNamesABaseKeepsItsAddresses) {
  edit("<base href=\"https://example.org/\">" + img(url("site/a b.png")) + img("pics/c.png"));
  FilesOfPage files(file_, path("site/page.html"), path("new/page.html"), settled_);
  files.look(*page_);
  EXPECT_TRUE(files.along().isEmpty() && files.elsewhere().isEmpty());
  EXPECT_EQ(filed(files), body());
}

}  // namespace
}  // namespace tvx::htmled
