#include <QProcess>

#include "htmled/find_bar.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"
#include "x11/x_display.h"

/// Keyboards that have no Latin letters at all: what the keys of shortcuts are is a matter of their places.
namespace tvx::x11 {
namespace {

class Layouts : public EditorOnScreen, public testing::WithParamInterface<const char*> {
 protected:
  void TearDown() override {
    set_layout(QStringLiteral("us"));
    EditorOnScreen::TearDown();
  }
  void set_layout(const QString& name) {
    EXPECT_EQ(QProcess::execute(QStringLiteral("setxkbmap"), {QStringLiteral("-layout"), name}), 0);
  }
};

// By their numbers: a name that the layout doesn't have would be put on some other key.
const QString key_a = QStringLiteral("38"), key_b = QStringLiteral("56"), key_f = QStringLiteral("41"),
              key_s = QStringLiteral("39");

QString with_ctrl(const QString& key) { return QStringLiteral("ctrl+") + key; }

TEST_P(Layouts, WithoutLatinLettersHaveTheShortcuts) {
  start("<p>some words</p>");
  set_layout(QString::fromLatin1(GetParam()));
  hands::press(with_ctrl(key_a));
  ASSERT_TRUE(
      wait_for([this] { return document().editor().selection().type() == editing::SelectionType::Text; }));
  // Arabic types two letters by this key; whether Ctrl is held then is asked of the keyboard, as a hand holds
  // it.
  output_of(QStringLiteral("xdotool"),
            {QStringLiteral("keydown"), QStringLiteral("ctrl"), QStringLiteral("key"), key_b});
  const auto bold = [this] {
    return html().find("<STRONG>some words<") != std::string::npos ||
           html().find("<B>some words<") != std::string::npos;
  };
  EXPECT_TRUE(wait_for(bold)) << html();
  output_of(QStringLiteral("xdotool"), {QStringLiteral("keyup"), QStringLiteral("ctrl")});
  hands::press(with_ctrl(key_s));
  EXPECT_TRUE(wait_for([this] {
    return file().contains("some words</b>") || file().contains("some words</strong>");
  })) << file().toStdString();
  EXPECT_TRUE(wait_for([this] { return !window_->isWindowModified(); }));
  hands::press(with_ctrl(key_f));
  EXPECT_TRUE(wait_for([this] { return window_->find_bar().isVisible(); }));
}

INSTANTIATE_TEST_SUITE_P(All, Layouts, testing::Values("ru", "gr", "ara"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
}  // namespace tvx::x11
