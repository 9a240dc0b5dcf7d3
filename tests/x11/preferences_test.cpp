#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFontComboBox>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>

#include <QDir>
#include <QTabBar>

#include "htmled/document/document_page.h"
#include "htmled/languages.h"
#include "htmled/preferences/preferences.h"
#include "htmled/source_tools.h"
#include "htmled/writing_choices.h"
#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/tree.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// What the user prefers, by mouse and keys: it holds at once, and is kept.
namespace tvx::x11 {
namespace {

class PreferencesOnScreen : public EditorOnScreen {
 protected:
  void SetUp() override {
    EditorOnScreen::SetUp();
    htmled::program_settings().clear();
  }
  void TearDown() override {
    EditorOnScreen::TearDown();
    htmled::program_settings().clear();
  }
  /// Does something in the dialog, and closes it by Escape.
  void prefer(const std::function<void(QDialog&)>& act) {
    answer_dialog([=](QDialog& dialog) {
      EXPECT_EQ(dialog.objectName(), QStringLiteral("preferences"));
      act(dialog);
      hands::press(QStringLiteral("Escape"));
    });
    hands::press(QStringLiteral("ctrl+comma"));
    ASSERT_TRUE(wait_for([&] { return answered() && !QApplication::activeModalWidget(); }));
    hands::give_focus(*window_);
  }
  template <class Field>
  static Field& field(QDialog& dialog, const char* name) {
    return *dialog.findChild<Field*>(QString::fromLatin1(name));
  }
  static void go_to_page(QDialog& dialog, int page) {
    auto& tabs = field<QTabWidget>(dialog, "pages");
    const QRect tab = tabs.tabBar()->tabRect(page);
    hands::click(tabs.tabBar()->mapToGlobal(tab.center()));
    ASSERT_TRUE(wait_for([&] { return tabs.currentIndex() == page; }));
  }
  /// In the field that has been pressed.
  static void write_in(QWidget& field, const char* text) {
    hands::click(middle_of(field));
    ASSERT_TRUE(
        wait_for([&] { return field.hasFocus() || field.isAncestorOf(QApplication::focusWidget()); }));
    hands::press(QStringLiteral("ctrl+a"));
    hands::type(QString::fromLatin1(text));
    hands::press(QStringLiteral("Tab"));
  }
  std::string attribute_of_root(const char* name) {
    const auto document = window_->editor().control().DOM();
    const std::u16string* value = document->tree().document_element()->attribute(dom::Name(from_utf8(name)));
    return value ? to_utf8(*value) : std::string();
  }
  static void press_box(QCheckBox& box) {
    const bool on = box.isChecked();
    hands::click(box.mapToGlobal(QPoint(8, box.height() / 2)));
    ASSERT_TRUE(wait_for([&] { return box.isChecked() != on; }));
  }
};

TEST_F(PreferencesOnScreen, TheZoomHoldsAtOnce) {
  start("<!DOCTYPE html><p>one</p>");
  prefer([&](QDialog& dialog) {
    write_in(field<QSpinBox>(dialog, "zoom"), "150");
    EXPECT_TRUE(wait_for([&] { return window_->editor().zoom() == 1.5; })) << "while the dialog is open";
  });
}

TEST_F(PreferencesOnScreen, TheProgramSpeaksTheLanguageAtOnceTheDialogToo) {
  start("<!DOCTYPE html><p>one</p>");
  prefer([&](QDialog& dialog) {
    auto& language = field<QComboBox>(dialog, "language");
    hands::click(middle_of(language));
    ASSERT_TRUE(wait_for([] { return QApplication::activePopupWidget() != nullptr; }));
    hands::type(QStringLiteral("Deutsch"));
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return dialog.windowTitle() == QStringLiteral("Einstellungen"); }))
        << dialog.windowTitle().toStdString();
    EXPECT_EQ(field<QTabWidget>(dialog, "pages").tabText(0), QStringLiteral("All&gemein"));
  });
  EXPECT_EQ(window_->menuBar()->actions().constFirst()->text(), QStringLiteral("&Datei"));
  EXPECT_EQ(htmled::Languages().preferred()->code, QStringLiteral("de"));
}

TEST_F(PreferencesOnScreen, NewPagesNameTheLanguage) {
  start("<!DOCTYPE html><p>one</p>");
  prefer([&](QDialog& dialog) { write_in(field<QComboBox>(dialog, "new_language"), "fr-CA"); });
  hands::press(QStringLiteral("ctrl+n"));
  EXPECT_TRUE(wait_for([&] { return window_->front().language() == QStringLiteral("fr-CA"); }))
      << window_->front().language().toStdString();
}

TEST_F(PreferencesOnScreen, NewPagesNameTheLanguageThatTheProgramIsReadIn) {
  start("<!DOCTYPE html><p>one</p>");
  const htmled::Language* arabic = window_->languages().find(QStringLiteral("ar"));
  ASSERT_TRUE(arabic);
  window_->speak(*arabic);
  hands::press(QStringLiteral("ctrl+n"));
  EXPECT_TRUE(wait_for([&] { return window_->front().language() == QStringLiteral("ar"); }))
      << window_->front().language().toStdString();
  EXPECT_EQ(attribute_of_root("dir"), "rtl");
}

TEST_F(PreferencesOnScreen, WhatHelpsWithWritingIsTurnedOff) {
  start("<!DOCTYPE html><p>one</p>");
  prefer([&](QDialog& dialog) {
    go_to_page(dialog, 1);
    press_box(field<QCheckBox>(dialog, "waves"));
    press_box(field<QCheckBox>(dialog, "auto_format"));
  });
  EXPECT_FALSE(window_->editor().CheckSpellingAsYouType());
  EXPECT_FALSE(window_->editor().AutoFormat());
  EXPECT_FALSE(htmled::writing_choices::is_on(htmled::writing_choices::Writing::Waves));
}

TEST_F(PreferencesOnScreen, TheSourceIsShownAsPreferred) {
  start("<!DOCTYPE html><p>one</p>");
  hands::press(QStringLiteral("F9"));
  ASSERT_TRUE(wait_for([&] { return control().InCodeView(); }));
  auto& code = *window_->findChild<QPlainTextEdit*>(QStringLiteral("TextBox1"));
  const qreal before = code.tabStopDistance();
  prefer([&](QDialog& dialog) {
    go_to_page(dialog, 2);
    write_in(field<QSpinBox>(dialog, "size"), "18");
    write_in(field<QSpinBox>(dialog, "tab"), "2");
    press_box(field<QCheckBox>(dialog, "wrap"));
  });
  EXPECT_EQ(code.font().pointSizeF(), 18);
  EXPECT_EQ(window_->editor().code_font().pointSizeF(), 18);
  EXPECT_LT(code.tabStopDistance(), before * 1.5);
  EXPECT_EQ(code.lineWrapMode(), QPlainTextEdit::WidgetWidth);
  EXPECT_EQ(htmled::preferences::tab_width(), 2);
  EXPECT_TRUE(htmled::SourceTools::wraps());
}

TEST_F(PreferencesOnScreen, NothingIsKeptForACrashWhereTheUserPrefersThat) {
  start("<!DOCTYPE html><p>one</p>");
  prefer([&](QDialog& dialog) {
    press_box(field<QCheckBox>(dialog, "keeps"));
    EXPECT_FALSE(field<QSpinBox>(dialog, "seconds").isEnabled());
  });
  EXPECT_FALSE(htmled::preferences::keeps_unsaved());
  hands::type(QStringLiteral("x"));
  ASSERT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  window_->keep_everything();
  const auto kept = [] {
    QDir unsaved(QString::fromLocal8Bit(qgetenv("XDG_STATE_HOME")) + QStringLiteral("/tvxHTML/unsaved"));
    qsizetype count = 0;
    for (const QFileInfo& folder : unsaved.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot))
      count += QDir(folder.filePath()).entryList({QStringLiteral("*.page")}).size();
    return count;
  };
  EXPECT_EQ(kept(), 0);
  prefer([&](QDialog& dialog) { press_box(field<QCheckBox>(dialog, "keeps")); });
  window_->keep_everything();
  EXPECT_EQ(kept(), 1);
  window_->front().let_go();
}

TEST_F(PreferencesOnScreen, PicturesFromTheWebAreLeftWithoutAQuestion) {
  start("<!DOCTYPE html><p>one<img src=http://127.0.0.1:9/x.png></p>");
  auto& question = *window_->findChild<QWidget*>(QStringLiteral("remoteContent"));
  ASSERT_TRUE(wait_for([&] { return question.isVisible(); }));
  prefer([&](QDialog& dialog) {
    auto& web = field<QComboBox>(dialog, "web_content");
    hands::click(middle_of(web));
    ASSERT_TRUE(wait_for([] { return QApplication::activePopupWidget() != nullptr; }));
    hands::type(QStringLiteral("Never"));
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(wait_for([&] { return !question.isVisible(); }));
  });
  EXPECT_TRUE(window_->editor().RemoteContentWithheld());
}

}  // namespace
}  // namespace tvx::x11
