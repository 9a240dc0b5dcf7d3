#include "tvx/qt/support/latin_shortcuts.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QWindow>
#include <memory>

namespace tvx::qt {
namespace {

constexpr auto ctrl = Qt::ControlModifier;

/// A key as the window system names it: by what the layout types, and by its place.
struct Key {
  int named;
  unsigned place;
  Qt::KeyboardModifiers held = ctrl;
};
constexpr Key russian_s{0x42B, 39}, russian_comma{0x411, 59}, greek_b{0x392, 56}, arabic_f{0x628, 41};

int latin_key_of(const Key& key) {
  return latin_key(QKeyEvent(QEvent::KeyPress, key.named, key.held, key.place, 0, 0));
}

class LatinShortcutsOf : public testing::Test {
 protected:
  LatinShortcutsOf() {
    window_.resize(200, 100);
    text_.setParent(&window_);
    window_.show();
    QApplication::setActiveWindow(&window_);
    text_.setFocus();
    shortcuts_ = std::make_unique<LatinShortcuts>(nullptr);
  }
  QAction& action(const QString& keys) {
    auto* action = new QAction(&window_);
    action->setShortcut(QKeySequence(keys));
    QObject::connect(action, &QAction::triggered, action, [this] { ++triggered_; });
    window_.addAction(action);
    return *action;
  }
  /// As the window gets it when no shortcut was found for its name.
  void press(const Key& key) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key.named, key.held, key.place, 0, 0, QString(QChar(key.named)));
      QCoreApplication::sendEvent(window_.windowHandle(), &event);
    }
  }

  QWidget window_;
  QPlainTextEdit text_;
  std::unique_ptr<LatinShortcuts> shortcuts_;
  int triggered_ = 0;
};

TEST(LatinKeys, AreThoseAtThePlaceOfOtherLetters) {
  EXPECT_EQ(latin_key_of(russian_s), Qt::Key_S);
  EXPECT_EQ(latin_key_of(russian_comma), Qt::Key_Comma);
  EXPECT_EQ(latin_key_of(greek_b), Qt::Key_B);
  EXPECT_EQ(latin_key_of(arabic_f), Qt::Key_F);
  EXPECT_EQ(latin_key_of({0xE2F, 55}), Qt::Key_V) << "Thai";
  EXPECT_EQ(latin_key_of({0x60C, 45, ctrl | Qt::ShiftModifier}), Qt::Key_K) << "the Arabic comma";
}

TEST(LatinKeys, AreNoneWhereTheLayoutIsLatinOrNothingIsMeant) {
  EXPECT_EQ(latin_key_of({Qt::Key_Z, 29}), 0) << "a German Z stands where English has Y";
  EXPECT_EQ(latin_key_of({0xC9, 11}), 0) << "a French É";
  EXPECT_EQ(latin_key_of({0x131, 31}), 0) << "a Turkish ı";
  EXPECT_EQ(latin_key_of({0x2019, 57}), 0) << "an apostrophe, where English has N";
  EXPECT_EQ(latin_key_of({0x42B, 39, {}}), 0) << "typed, without Ctrl";
  EXPECT_EQ(latin_key_of({Qt::Key_Left, 113}), 0);
  EXPECT_EQ(latin_key_of({0x42B, 0}), 0) << "whose place nobody knows";
}

TEST_F(LatinShortcutsOf, AWindowActOnceByThePlaceOfTheKey) {
  action(QStringLiteral("Ctrl+S"));
  press(russian_s);
  EXPECT_EQ(triggered_, 1);
  press({russian_s.named, russian_s.place, ctrl | Qt::ShiftModifier});
  EXPECT_EQ(triggered_, 1) << "another shortcut";
  action(QStringLiteral("Ctrl+Shift+S"));
  press({russian_s.named, russian_s.place, ctrl | Qt::ShiftModifier});
  EXPECT_EQ(triggered_, 2);
  EXPECT_TRUE(text_.toPlainText().isEmpty()) << text_.toPlainText().toStdString();
}

TEST_F(LatinShortcutsOf, TextBoxesAreTheirsToo) {
  text_.setPlainText(QStringLiteral("words"));
  press({0x424, 38});  // Ctrl+A
  EXPECT_EQ(text_.textCursor().selectedText(), QStringLiteral("words"));
}

TEST_F(LatinShortcutsOf, AnActionThatCannotActDoesNot) {
  action(QStringLiteral("Ctrl+S")).setEnabled(false);
  press(russian_s);
  EXPECT_EQ(triggered_, 0);
}

TEST_F(LatinShortcutsOf, NothingIsChangedOnceTheyAreGone) {
  action(QStringLiteral("Ctrl+S"));
  shortcuts_.reset();
  press(russian_s);
  EXPECT_EQ(triggered_, 0);
}

}  // namespace
}  // namespace tvx::qt
