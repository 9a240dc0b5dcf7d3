#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDialog>
#include <QLabel>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <map>

#include "htmled/languages.h"
#include "htmled/preferences/preferences_dialog.h"
#include "htmled/properties/properties_dialog.h"
#include "htmled/window.h"
#include "tvx/qt/support/message_loop.h"

/// In the program's dialogs every letter leads to one field.
namespace tvx::htmled {
namespace {

class AccessKeys : public testing::TestWithParam<const char*> {
 protected:
  AccessKeys() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings_.path()); }
  void SetUp() override {
    const Language* language = window_.languages().find(QString::fromLatin1(GetParam()));
    ASSERT_TRUE(language);
    window_.speak(*language);
  }

  static void note(std::map<QChar, QString>& keys, const QString& text) {
    const qsizetype mark = text.indexOf(u'&');
    if (mark < 0 || mark + 1 == text.size()) return;
    const auto [owner, is_first] = keys.emplace(text[mark + 1].toLower(), text);
    EXPECT_TRUE(is_first) << text.toStdString() << " and " << owner->second.toStdString();
  }
  static void note_all(std::map<QChar, QString>& keys, const QWidget& part, const QWidget* but) {
    for (const QWidget* widget : part.findChildren<QWidget*>()) {
      if (but && but->isAncestorOf(widget)) continue;
      if (const auto* label = qobject_cast<const QLabel*>(widget); label && label->buddy())
        note(keys, label->text());
      if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) note(keys, button->text());
    }
  }
  /// Of the tabs, of what stands beside them, and of the page in front, whichever that is.
  static void expect_keys_to_differ(const QDialog& dialog) {
    const auto* tabs = dialog.findChild<QTabWidget*>();
    ASSERT_TRUE(tabs);
    ASSERT_GE(tabs->count(), 2);
    for (int page = 0; page < tabs->count(); ++page) {
      std::map<QChar, QString> keys;
      for (int i = 0; i < tabs->count(); ++i) note(keys, tabs->tabText(i));
      EXPECT_EQ(int(keys.size()), tabs->count());
      note_all(keys, dialog, tabs);
      note_all(keys, *tabs->widget(page), nullptr);
    }
  }

  QTemporaryDir settings_;
  qt::MessageLoop loop_;
  Window window_{loop_};
};

TEST_P(AccessKeys, OfThePreferencesDiffer) { expect_keys_to_differ(PreferencesDialog(window_)); }

TEST_P(AccessKeys, OfThePropertiesOfAPageDiffer) {
  expect_keys_to_differ(PropertiesDialog({}, QStringLiteral("page.html"), &window_));
}

INSTANTIATE_TEST_SUITE_P(In, AccessKeys, testing::Values("en", "de", "fr", "es", "ja", "ar"),
                         [](const auto& language) { return std::string(language.param); });

}  // namespace
}  // namespace tvx::htmled
