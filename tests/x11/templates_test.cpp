#include <QDialog>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QTextBrowser>

#include "htmled/document/document_page.h"
#include "htmled/tabs.h"
#include "htmled/templates/page_templates.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Pages that begin with a template, by mouse and keys.
namespace tvx::x11 {
namespace {

class TemplatesOnScreen : public EditorOnScreen {
 protected:
  void SetUp() override {
    EditorOnScreen::SetUp();
    data_ = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", folder_.path().toUtf8());
  }
  void TearDown() override {
    EditorOnScreen::TearDown();
    data_.isNull() ? void(qunsetenv("XDG_DATA_HOME")) : void(qputenv("XDG_DATA_HOME", data_));
  }
  static QListWidget& list(QDialog& dialog) {
    return *dialog.findChild<QListWidget*>(QStringLiteral("list"));
  }
  static void press_row(QDialog& dialog, const QString& name) {
    QListWidget& rows = list(dialog);
    const QList<QListWidgetItem*> found = rows.findItems(name, Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << name.toStdString();
    hands::click(rows.viewport()->mapToGlobal(rows.visualItemRect(found.constFirst()).center()));
    ASSERT_TRUE(wait_for([&] { return rows.currentItem() == found.constFirst(); }));
  }
  void open_templates(const std::function<void(QDialog&)>& act) {
    answer_dialog(act);
    hands::press(QStringLiteral("ctrl+shift+n"));
    ASSERT_TRUE(wait_for([&] { return answered() && !QApplication::activeModalWidget(); }));
    hands::give_focus(*window_);
  }

 private:
  QByteArray data_;
};

TEST_F(TemplatesOnScreen, ALetterIsBegunInATabOfItsOwn) {
  start("<!DOCTYPE html><p>one</p>");
  open_templates([&](QDialog& dialog) {
    EXPECT_GE(list(dialog).count(), 5);
    press_row(dialog, QStringLiteral("Letter"));
    const auto* preview = dialog.findChild<QTextBrowser*>(QStringLiteral("preview"));
    EXPECT_TRUE(preview->toPlainText().contains(QStringLiteral("Dear Sir or Madam,")));
    hands::press(QStringLiteral("Return"));
  });
  EXPECT_TRUE(wait_for([&] { return html().find("Dear Sir or Madam,") != std::string::npos; })) << html();
  EXPECT_EQ(window_->tabs().count(), 2);
  EXPECT_TRUE(window_->front().path().isEmpty()) << "it is in no file";
  EXPECT_FALSE(window_->front().is_modified());
  EXPECT_EQ(document().title(), u"Letter");
  EXPECT_EQ(html().find("{{"), std::string::npos);
}

TEST_F(TemplatesOnScreen, ItIsInTheProgramsLanguage) {
  start("<!DOCTYPE html><p>one</p>");
  window_->speak(*window_->languages().find(QStringLiteral("de")));
  open_templates([&](QDialog& dialog) {
    press_row(dialog, QStringLiteral("Brief"));
    hands::press(QStringLiteral("Return"));
  });
  EXPECT_TRUE(wait_for([&] { return html().find("Sehr geehrte Damen und Herren,") != std::string::npos; }));
  EXPECT_EQ(window_->front().language(), QStringLiteral("de"));
}

TEST_F(TemplatesOnScreen, CancelledNothingIsBegun) {
  start("<!DOCTYPE html><p>one</p>");
  open_templates([](QDialog&) { hands::press(QStringLiteral("Escape")); });
  EXPECT_EQ(window_->tabs().count(), 1);
  EXPECT_EQ(html(), "<P>one</P>");
}

TEST_F(TemplatesOnScreen, ADocumentBecomesATemplateOfTheUsersAndIsBegunAgain) {
  start("<!DOCTYPE html><html lang=en><title>Mine</title><p>my own start</p></html>");
  answer_dialog([](QDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>();
    ASSERT_TRUE(name);
    EXPECT_EQ(name->text(), QStringLiteral("page"));
    hands::press(QStringLiteral("ctrl+a"));
    hands::type(QStringLiteral("own/one"));
    hands::press(QStringLiteral("Return"));
  });
  hands::press(QStringLiteral("alt+f"));
  ASSERT_TRUE(wait_for([] { return QApplication::activePopupWidget() != nullptr; }));
  hands::press(QStringLiteral("l"));
  ASSERT_TRUE(wait_for([&] { return answered() && !QApplication::activeModalWidget(); }));
  hands::give_focus(*window_);
  EXPECT_TRUE(wait_for(
      [&] { return file(QStringLiteral("tvxHTML/templates/own-one.html")).contains("my own start"); }));
  open_templates([&](QDialog& dialog) {
    press_row(dialog, QStringLiteral("own-one"));
    hands::press(QStringLiteral("Return"));
  });
  EXPECT_TRUE(wait_for([&] { return window_->tabs().count() == 2 && html() == "<P>my own start</P>"; }))
      << html();
  EXPECT_EQ(document().title(), u"Mine");
}

TEST_F(TemplatesOnScreen, ATemplateTakesThePicturesOfItsPageAlong) {
  QImage picture(30, 20, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("my pictures")));
  const QString logo = path_of(QStringLiteral("my pictures/logo.png"));
  ASSERT_TRUE(picture.save(logo));
  start("<!DOCTYPE html><p><img src='my%20pictures/logo.png'></p>");
  answer_dialog([](QDialog&) {
    hands::press(QStringLiteral("ctrl+a"));
    hands::type(QStringLiteral("head"));
    hands::press(QStringLiteral("Return"));
  });
  hands::press(QStringLiteral("alt+f"));
  ASSERT_TRUE(wait_for([] { return QApplication::activePopupWidget() != nullptr; }));
  hands::press(QStringLiteral("l"));
  ASSERT_TRUE(wait_for([&] { return answered() && !QApplication::activeModalWidget(); }));
  hands::give_focus(*window_);
  ASSERT_TRUE(
      wait_for([&] { return !file(QStringLiteral("tvxHTML/templates/head_files/logo.png")).isEmpty(); }));
  ASSERT_TRUE(QFile::remove(logo));
  open_templates([&](QDialog& dialog) {
    press_row(dialog, QStringLiteral("head"));
    hands::press(QStringLiteral("Return"));
  });
  ASSERT_TRUE(wait_for([&] { return window_->tabs().count() == 2; }));
  EXPECT_TRUE(wait_for([&] {
    return in_page(QStringLiteral("String((document.querySelector('img') || {}).naturalWidth)")) == "30";
  })) << html();
}

}  // namespace
}  // namespace tvx::x11
