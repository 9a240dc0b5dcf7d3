#include "x11/hands.h"
#include "x11/managed_screen.h"

/// On a desktop the user types without a click, and every letter counts from the first on.
namespace tvx::x11 {
namespace {

class FirstKeys : public ManagedScreen {
 protected:
  void start_editor(const QStringList& arguments = {}) {
    start(QStringLiteral(TVX_BIN_DIR "/htmled"), arguments);
  }
  bool saves(const QString& name, const QByteArray& part) {
    press(QStringLiteral("ctrl+s"));
    return wait_for([&] { return file(name).contains(part); });
  }
};

TEST_F(FirstKeys, AfterAStartWithAFileGoIntoThePage) {
  write(QStringLiteral("page.html"), "<p>page</p>");
  start_editor({path_of(QStringLiteral("page.html"))});
  ASSERT_TRUE(comes_to_front(QStringLiteral("page.html"))) << active_title().toStdString();
  type(QStringLiteral("first letters "));
  EXPECT_TRUE(comes_to_front(QStringLiteral("page.html*")));
  EXPECT_TRUE(saves(QStringLiteral("page.html"), "<p>first letters page</p>"))
      << file(QStringLiteral("page.html")).toStdString();
}

TEST_F(FirstKeys, AfterNewAndAfterOpenGoIntoThePage) {
  write(QStringLiteral("page.html"), "<p>page</p>");
  write(QStringLiteral("other.html"), "<p>other</p>");
  start_editor({path_of(QStringLiteral("page.html"))});
  ASSERT_TRUE(comes_to_front(QStringLiteral("page.html"))) << active_title().toStdString();
  press(QStringLiteral("ctrl+n"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("Untitled"))) << active_title().toStdString();
  type(QStringLiteral("new page"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("Untitled*"))) << active_title().toStdString();
  press(QStringLiteral("ctrl+s"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("Save as"))) << active_title().toStdString();
  type(path_of(QStringLiteral("new.html")));
  press(QStringLiteral("Return"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("new.html –"))) << active_title().toStdString();
  EXPECT_TRUE(file(QStringLiteral("new.html")).contains("<p>new page</p>"))
      << file(QStringLiteral("new.html")).toStdString();

  press(QStringLiteral("ctrl+o"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("Open"))) << active_title().toStdString();
  type(path_of(QStringLiteral("other.html")));
  press(QStringLiteral("Return"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("other.html"))) << active_title().toStdString();
  type(QStringLiteral("opened "));
  EXPECT_TRUE(saves(QStringLiteral("other.html"), "<p>opened other</p>"))
      << file(QStringLiteral("other.html")).toStdString();
}

/// Saved at once: the last letters belong to it.
TEST_F(FirstKeys, SavingTakesAllThatWasTypedBefore) {
  write(QStringLiteral("page.html"), "<p>page</p>");
  start_editor({path_of(QStringLiteral("page.html"))});
  ASSERT_TRUE(comes_to_front(QStringLiteral("page.html"))) << active_title().toStdString();
  QByteArray text;
  for (int round = 0; round < 10; ++round) {
    const QString word = QStringLiteral("w%1").arg(round);
    // In one go, with no pause between the keys.
    ask({QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("0"), QStringLiteral("w"),
         QString::number(round), QStringLiteral("ctrl+s")});
    text += word.toLatin1();
    EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("page.html")).contains(text); }))
        << text.toStdString() << " in " << file(QStringLiteral("page.html")).toStdString();
  }
}

TEST_F(FirstKeys, InAnEmbeddingProgramGoIntoThePage) {
  start(QStringLiteral(TVX_BIN_DIR "/embedding_program"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("embedding"))) << active_title().toStdString();
  type(QStringLiteral("first letters "));
  EXPECT_TRUE(comes_to_front(QStringLiteral("[first letters page] [page]"))) << active_title().toStdString();
}

}  // namespace
}  // namespace tvx::x11
