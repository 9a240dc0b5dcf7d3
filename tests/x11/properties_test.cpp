#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QTabBar>
#include <QTabWidget>

#include "htmled/document/document_page.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// What a page says of itself as a whole, changed in its dialog by mouse and keys.
namespace tvx::x11 {
namespace {

class PropertiesOnScreen : public EditorOnScreen {
 protected:
  void ask(const std::function<void(QDialog&)>& act) {
    answer_dialog([=](QDialog& dialog) {
      EXPECT_EQ(dialog.objectName(), QStringLiteral("page_properties"));
      act(dialog);
    });
    hands::press(QStringLiteral("alt+Return"));
    ASSERT_TRUE(wait_for([&] { return answered() && !QApplication::activeModalWidget(); }));
    hands::give_focus(*window_);
  }
  static void write_in(QDialog& dialog, const char* name, const char* text) {
    auto* field = dialog.findChild<QWidget*>(QString::fromLatin1(name));
    ASSERT_TRUE(field) << name;
    hands::click(middle_of(*field));
    ASSERT_TRUE(wait_for([&] {
      return field->hasFocus() || field->isAncestorOf(QApplication::focusWidget());
    })) << name;
    hands::press(QStringLiteral("ctrl+a"));
    hands::type(QString::fromLatin1(text));
  }
  static void go_to_colours(QDialog& dialog) {
    auto& tabs = *dialog.findChild<QTabWidget*>();
    hands::click(tabs.tabBar()->mapToGlobal(tabs.tabBar()->tabRect(1).center()));
    ASSERT_TRUE(wait_for([&] { return tabs.currentIndex() == 1; }));
  }
  static void press_button(QDialog& dialog, const char* text) {
    for (QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
      if (button->text().remove(u'&') == QString::fromLatin1(text)) return hands::click(middle_of(*button));
    FAIL() << text;
  }
  std::string background() {
    return in_page(QStringLiteral("getComputedStyle(document.body).backgroundColor"));
  }
  dom::Journal& journal() { return document().tree().journal(); }
};

constexpr const char* page =
    "<!DOCTYPE html><html lang=\"en\"><head><title>Before</title></head><body><p>one</p></body></html>";

TEST_F(PropertiesOnScreen, TitleLanguageAndBackgroundAreChangedAsOneStep) {
  start(page);
  const std::size_t depth = journal().depth();
  ask([&](QDialog& dialog) {
    write_in(dialog, "title", "After");
    write_in(dialog, "language", "de");
    go_to_colours(dialog);
    write_in(dialog, "background", "#ffeecc");
    EXPECT_TRUE(wait_for([&] { return background() == "rgb(255, 238, 204)"; })) << "while the dialog is open";
    press_button(dialog, "OK");
  });
  EXPECT_EQ(document().title(), u"After");
  EXPECT_EQ(window_->front().language(), QStringLiteral("de"));
  EXPECT_EQ(journal().depth(), depth + 1);
  EXPECT_TRUE(wait_for([&] { return window_->isWindowModified(); }));
  hands::press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] {
    return file().contains("<title>After</title>") && file().contains("lang=\"de\"");
  })) << file().toStdString();
  hands::press(QStringLiteral("ctrl+z"));
  EXPECT_TRUE(
      wait_for([&] { return document().title() == u"Before" && background() != "rgb(255, 238, 204)"; }));
}

TEST_F(PropertiesOnScreen, CancelledNothingIsChangedAndWhatCanBeDoneAgainStays) {
  start(page);
  hands::type(QStringLiteral("x"));
  ASSERT_TRUE(wait_for([&] { return text() == "xone"; }));
  hands::press(QStringLiteral("ctrl+z"));
  ASSERT_TRUE(wait_for([&] { return text() == "one"; }));
  ask([&](QDialog& dialog) {
    write_in(dialog, "title", "After");
    go_to_colours(dialog);
    write_in(dialog, "background", "#ffeecc");
    EXPECT_TRUE(wait_for([&] { return background() == "rgb(255, 238, 204)"; }));
    press_button(dialog, "Cancel");
  });
  EXPECT_EQ(document().title(), u"Before");
  EXPECT_TRUE(wait_for([&] { return background() != "rgb(255, 238, 204)"; }));
  EXPECT_FALSE(window_->isWindowModified());
  hands::press(QStringLiteral("ctrl+y"));
  EXPECT_TRUE(wait_for([&] { return text() == "xone"; })) << "redo acts as before";
}

TEST_F(PropertiesOnScreen, ReturnPressesTheButtonThatHasTheKeys) {
  start(page);
  ask([&](QDialog& dialog) {
    auto& tabs = *dialog.findChild<QTabWidget*>();
    hands::click(tabs.tabBar()->mapToGlobal(tabs.tabBar()->tabRect(2).center()));
    ASSERT_TRUE(wait_for([&] { return tabs.currentIndex() == 2; }));
    const auto* button = dialog.findChild<QWidget*>(QStringLiteral("embed_sheet"));
    for (int i = 0; i < 8 && !button->hasFocus(); ++i) {
      const QWidget* before = QApplication::focusWidget();
      hands::press(QStringLiteral("Tab"));
      ASSERT_TRUE(wait_for([&] { return QApplication::focusWidget() != before; }));
    }
    ASSERT_TRUE(button->hasFocus());
    hands::press(QStringLiteral("Return"));
    EXPECT_TRUE(
        wait_for([&] { return dialog.findChild<QListWidget*>(QStringLiteral("sheets"))->count() == 1; }));
    EXPECT_TRUE(dialog.isVisible()) << "it goes on";
    hands::press(QStringLiteral("Escape"));
  });
}

TEST_F(PropertiesOnScreen, EscapeCancels) {
  start(page);
  ask([&](QDialog& dialog) {
    write_in(dialog, "title", "After");
    hands::press(QStringLiteral("Escape"));
  });
  EXPECT_EQ(document().title(), u"Before");
  EXPECT_FALSE(window_->isWindowModified());
}

}  // namespace
}  // namespace tvx::x11
