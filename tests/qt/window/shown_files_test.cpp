#include "htmled/document/shown_files.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "htmled/window.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::htmled {
namespace {

/// A page with files beside it that other programs write while it is shown.
class FilesThatAreShown : public testing::Test {
 protected:
  FilesThatAreShown() { window_.show(); }

  QString path(const char* name) const { return folder_.filePath(QString::fromUtf8(name)); }
  void write(const char* name, const QByteArray& bytes) const {
    QFile out(path(name));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size());
  }
  void write_picture(const char* name, int width) const {
    QImage picture(width, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(path(name), "PNG"));
  }
  void open(const QByteArray& page) {
    write("page.html", page);
    ASSERT_TRUE(window_.start(path("page.html")));
    ASSERT_TRUE(wait_for([&] { return window_.editor().document_view().settled(); }));
    pause(1500);  // what is shown is looked for when nothing has happened for a while
  }
  bool wait_for(const std::function<bool()>& condition) {
    const std::int64_t end = loop_.now() + 20'000;
    while (!condition() && loop_.now() < end) loop_.pump(20);
    return condition();
  }
  void pause(std::int64_t milliseconds) {
    const std::int64_t end = loop_.now() + milliseconds;
    while (loop_.now() < end) loop_.pump(20);
  }
  /// The value of an expression in the page.
  std::string in_page(const char* expression) {
    auto answer = std::make_shared<std::optional<std::string>>();
    window_.editor().view().page()->runJavaScript(
        QString::fromUtf8(expression), QWebEngineScript::ApplicationWorld,
        [answer](const QVariant& value) { *answer = value.toString().toStdString(); });
    EXPECT_TRUE(wait_for([&] { return answer->has_value(); }));
    return answer->value_or("");
  }
  std::string colour() { return in_page("getComputedStyle(document.querySelector('p')).color"); }
  /// As the document's own engine has it, by which commands go.
  std::string own_colour() {
    dom::Document& page = window_.editor().control().DOM()->tree();
    for (dom::Element* element : page.all())
      if (element->is(dom::Tag::P))
        return QString::fromStdU16String(
                   dom::style::style_of(page).computed(*element, dom::style::Property::Color))
            .toStdString();
    return "";
  }
  void expect_no_change() {
    EXPECT_FALSE(window_.isWindowModified());
    EXPECT_FALSE(window_.editor().control().DOM()->tree().journal().can_undo());
    EXPECT_EQ(in_page("document.querySelectorAll('link').length"), "1");
  }

  QTemporaryDir folder_;
  qt::MessageLoop loop_;
  Window window_{loop_};
};

constexpr char red[] = "rgb(255, 0, 0)", blue[] = "rgb(0, 0, 255)";

TEST_F(FilesThatAreShown, ASheetIsShownAsItHasBecome) {
  write("style.css", "p { color: red }");
  open("<!DOCTYPE html><link rel=stylesheet href=style.css><p>text</p>");
  ASSERT_EQ(colour(), red);
  for (const auto& [sheet, seen] :
       {std::pair("p { color: blue }", blue), std::pair("p { color: red  }", red)}) {
    write("style.css", sheet);
    EXPECT_TRUE(wait_for([&] { return colour() == seen; })) << colour();
    EXPECT_TRUE(wait_for([&] { return own_colour() == seen; })) << own_colour();
    expect_no_change();
  }
}

// As editors write: another file takes the name.
TEST_F(FilesThatAreShown, ASheetThatIsReplacedIsShownToo) {
  write("style.css", "p { color: red }");
  open("<!DOCTYPE html><link rel=stylesheet href=style.css><p>text</p>");
  for (const auto& [sheet, seen] :
       {std::pair("p { color: blue }", blue), std::pair("p { color: red  }", red)}) {
    write("style.new", sheet);
    ASSERT_TRUE(QFile::remove(path("style.css")));
    pause(300);
    ASSERT_TRUE(QFile::rename(path("style.new"), path("style.css")));
    EXPECT_TRUE(wait_for([&] { return colour() == seen; })) << colour();
    expect_no_change();
  }
}

TEST_F(FilesThatAreShown, WhatASheetImportsIsShownAsItHasBecome) {
  write("colours.css", "p { color: red }");
  write("style.css", "@import 'colours.css';");
  open("<!DOCTYPE html><link rel=stylesheet href=style.css><p>text</p>");
  ASSERT_EQ(colour(), red);
  write("colours.css", "p { color: blue }");
  EXPECT_TRUE(wait_for([&] { return colour() == blue; })) << colour();
  EXPECT_TRUE(wait_for([&] { return own_colour() == blue; })) << own_colour();
  expect_no_change();
}

TEST_F(FilesThatAreShown, ASheetThatCannotBeHadAnewStaysAsItIs) {
  write("style.css", "p { color: red }");
  open("<!DOCTYPE html><link rel=stylesheet href=style.css><p>text</p>");
  ASSERT_TRUE(QFile::remove(path("style.css")));
  const auto sheets = dom::style::style_of(window_.editor().control().DOM()->tree()).sheets();
  ASSERT_EQ(sheets.size(), 1u);
  sheets[0]->set_href(sheets[0]->href());
  pause(1000);
  EXPECT_EQ(colour(), red);
  expect_no_change();
}

TEST_F(FilesThatAreShown, APictureIsShownAsItHasBecome) {
  write_picture("a.png", 20);
  open("<!DOCTYPE html><link rel=stylesheet href=gone.css><p><img src=a.png></p>");
  const auto width = [&] { return in_page("document.querySelector('img').naturalWidth"); };
  ASSERT_EQ(width(), "20");
  write_picture("a.png", 30);
  EXPECT_TRUE(wait_for([&] { return width() == "30"; })) << width();
  expect_no_change();
}

TEST_F(FilesThatAreShown, AFileThatThePageShowsNowIsShownAsItBecomes) {
  write_picture("a.png", 20);
  open("<!DOCTYPE html><link rel=stylesheet href=gone.css><p>text</p>");
  const auto width = [&] { return in_page("document.querySelector('img').naturalWidth"); };
  window_.editor().control().InsertAtCursor(u"<img src=a.png>", core::ed_InsertType::ed_InsertAfterSelection);
  ASSERT_TRUE(wait_for([&] { return width() == "20"; })) << width();
  pause(1500);
  write_picture("a.png", 30);
  EXPECT_TRUE(wait_for([&] { return width() == "30"; })) << width();
}

}  // namespace
}  // namespace tvx::htmled
