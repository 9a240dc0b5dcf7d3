#include <gtest/gtest.h>

#include <signal.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTest>

#include "x11/hands.h"
#include "x11/managed_screen.h"

/// The program's promises about several documents and about what isn't saved, on a managed screen, as the
/// user sees them: by window titles, files, and keys.
namespace tvx::x11 {
namespace {

constexpr const char* program_file = TVX_BIN_DIR "/htmled";

class DocumentsOnScreen : public ManagedScreen {
 protected:
  void SetUp() override {
    ManagedScreen::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    for (const char* name : {"one.html", "two.html"})
      write(QString::fromLatin1(name),
            QByteArray("<!DOCTYPE html>\n<title>t</title>\n<p>The page ") + name + "</p>\n");
  }
  QString htmled() const { return QString::fromLatin1(program_file); }
  QString page(const char* name) const { return path_of(QString::fromLatin1(name)); }
  /// Until what was typed is in the document.
  bool is_marked() {
    return wait_for([&] { return active_title().contains(u'*'); });
  }
  QByteArray kept() const {
    QByteArray bytes;
    QDir unsaved(QString::fromLocal8Bit(qgetenv("XDG_STATE_HOME")) + QStringLiteral("/tvxHTML/unsaved"));
    for (const QFileInfo& folder : unsaved.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot))
      for (const QFileInfo& each : QDir(folder.filePath()).entryInfoList({QStringLiteral("*.page")})) {
        QFile in(each.filePath());
        if (in.open(QIODevice::ReadOnly)) bytes += in.readAll();
      }
    return bytes;
  }
};

TEST_F(DocumentsOnScreen, ATabThatIsClosedAsksForItsFile) {
  start(htmled(), {page("one.html"), page("two.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  press(QStringLiteral("ctrl+Tab"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("two.html")));
  QTest::qWait(500);
  type(QStringLiteral("abc "));
  ASSERT_TRUE(is_marked()) << active_title().toStdString();
  press(QStringLiteral("ctrl+w"));
  ASSERT_TRUE(wait_for([&] { return active_title() == QStringLiteral("HTMLed"); })) << "nobody asks";
  press(QStringLiteral("Escape"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("two.html*"))) << "it stays";
  press(QStringLiteral("ctrl+w"));
  ASSERT_TRUE(wait_for([&] { return active_title() == QStringLiteral("HTMLed"); }));
  press(QStringLiteral("Return"));  // Save
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  EXPECT_TRUE(file(QStringLiteral("two.html")).contains("abc The page"));
  press(QStringLiteral("ctrl+shift+t"));
  EXPECT_TRUE(comes_to_front(QStringLiteral("two.html"))) << "opened again";
}

TEST_F(DocumentsOnScreen, ASecondStartOpensInTheWindowThatIsThere) {
  start(htmled(), {page("one.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  QProcess second;
  second.setProcessEnvironment(surroundings());
  second.setWorkingDirectory(path_of(QString()));
  second.start(htmled(), {QStringLiteral("two.html")});
  ASSERT_TRUE(second.waitForFinished(20'000)) << "it goes when its file is handed over";
  EXPECT_EQ(second.exitCode(), 0);
  EXPECT_TRUE(comes_to_front(QStringLiteral("two.html")));
  press(QStringLiteral("ctrl+Tab"));
  EXPECT_TRUE(comes_to_front(QStringLiteral("one.html")));
}

TEST_F(DocumentsOnScreen, AWindowOfItsOwnTakesNoStartsFromTheFirst) {
  start(htmled(), {page("one.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  QProcess own;
  own.setProcessEnvironment(surroundings());
  own.start(htmled(), {QStringLiteral("--new-window"), page("two.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("two.html")));
  QTest::qWait(700);
  press(QStringLiteral("ctrl+q"));
  ASSERT_TRUE(own.waitForFinished(20'000));
  QProcess third;
  third.setProcessEnvironment(surroundings());
  third.start(htmled(), {page("two.html")});
  EXPECT_TRUE(third.waitForFinished(20'000)) << "the first takes its file";
  third.kill();
  third.waitForFinished();
}

TEST_F(DocumentsOnScreen, WhatCannotBeSavedIsOfferedAnotherFile) {
  ASSERT_TRUE(QDir().mkpath(path_of(QStringLiteral("gone"))));
  write(QStringLiteral("gone/three.html"), "<!DOCTYPE html>\n<title>t</title>\n<p>The page</p>\n");
  start(htmled(), {page("gone/three.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("three.html")));
  QTest::qWait(700);
  type(QStringLiteral("abc "));
  ASSERT_TRUE(is_marked());
  ASSERT_TRUE(QDir(path_of(QStringLiteral("gone"))).removeRecursively());
  press(QStringLiteral("ctrl+s"));
  ASSERT_TRUE(wait_for([&] { return active_title() == QStringLiteral("HTMLed"); })) << "nothing says so";
  press(QStringLiteral("Return"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("Save as")));
  QTest::qWait(700);
  type(page("kept.html"));
  press(QStringLiteral("Return"));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("kept.html")).contains("abc The page"); }));
  EXPECT_TRUE(comes_to_front(QStringLiteral("kept.html")));
}

TEST_F(DocumentsOnScreen, APageWithoutATitleIsCalledByItsHeading) {
  start(htmled(), {});
  ASSERT_TRUE(comes_to_front(QStringLiteral("Untitled")));
  QTest::qWait(700);
  press(QStringLiteral("ctrl+alt+1"));
  type(QStringLiteral("Bread"));
  const auto save = [&](const char* key, const char* name) {
    press(QString::fromLatin1(key));
    ASSERT_TRUE(comes_to_front(QStringLiteral("Save as")));
    QTest::qWait(700);
    type(page(name));
    press(QStringLiteral("Return"));
    ASSERT_TRUE(comes_to_front(QString::fromLatin1(name)));
  };
  save("ctrl+s", "bread.html");
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("bread.html")).contains("<title>Bread</title>"); }));
  // That is no step of undo, which takes back what was written before.
  press(QStringLiteral("ctrl+z"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("bread.html*")));
  save("ctrl+shift+s", "less.html");
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("less.html")).contains("<title>Bread</title>"); }));
  EXPECT_FALSE(file(QStringLiteral("less.html")).contains("<h1>Bread"));
}

TEST_F(DocumentsOnScreen, PicturesGoAlongIntoAnotherFolder) {
  for (const char* folder : {"from/small", "to"})
    ASSERT_TRUE(QDir().mkpath(path_of(QString::fromLatin1(folder))));
  write(QStringLiteral("from/a b.png"), "picture");
  write(QStringLiteral("from/small/c.png"), "another");
  write(QStringLiteral("outside.png"), "outside");
  write(QStringLiteral("from/page.html"),
        "<!DOCTYPE html>\n<title>t</title>\n<p>x<img src=\"a%20b.png\"><img src=small/c.png>"
        "<img src=../outside.png><img src=missing.png></p>\n");
  start(htmled(), {page("from/page.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("page.html")));
  QTest::qWait(700);
  press(QStringLiteral("ctrl+shift+s"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("Save as")));
  QTest::qWait(700);
  type(page("to/page.html"));
  press(QStringLiteral("Return"));
  ASSERT_TRUE(wait_for([&] { return active_title() == QStringLiteral("HTMLed"); })) << "nobody asks";
  press(QStringLiteral("Return"));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("to/small/c.png")) == "another"; }));
  EXPECT_EQ(file(QStringLiteral("to/a b.png")), "picture");
  ASSERT_TRUE(wait_for([&] { return QFile::exists(page("to/page.html")); }));
  EXPECT_EQ(QDir(path_of(QStringLiteral("to"))).entryList(QDir::Files).size(), 2)
      << "the page and one picture";
}

TEST_F(DocumentsOnScreen, WhatIsNotCopiedIsShownFromWhereItIs) {
  for (const char* folder : {"from", "to"}) ASSERT_TRUE(QDir().mkpath(path_of(QString::fromLatin1(folder))));
  write(QStringLiteral("from/a b.png"), "picture");
  write(QStringLiteral("from/page.html"),
        "<!DOCTYPE html>\n<title>t</title>\n<p>x<img src=\"a%20b.png\"></p>\n");
  start(htmled(), {page("from/page.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("page.html")));
  QTest::qWait(700);
  press(QStringLiteral("ctrl+shift+s"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("Save as")));
  QTest::qWait(700);
  type(page("to/page.html"));
  press(QStringLiteral("Return"));
  ASSERT_TRUE(wait_for([&] { return active_title() == QStringLiteral("HTMLed"); })) << "nobody asks";
  press(QStringLiteral("alt+n"));
  EXPECT_TRUE(wait_for([&] {
    return file(QStringLiteral("to/page.html")).contains("<img src=\"../from/a%20b.png\">");
  })) << file(QStringLiteral("to/page.html")).toStdString();
}

TEST_F(DocumentsOnScreen, PicturesStayWithAPageThatIsMoved) {
  for (const char* folder : {"site", "elsewhere"})
    ASSERT_TRUE(QDir().mkpath(path_of(QString::fromLatin1(folder))));
  write(QStringLiteral("site/red one.png"), "red");
  write(QStringLiteral("elsewhere/blue.png"), "blue");
  write(QStringLiteral("site/page.html"), "<!DOCTYPE html>\n<title>t</title>\n<p>start</p>\n");
  start(htmled(), {page("site/page.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("page.html")));
  QTest::qWait(700);
  const auto insert = [&](const QString& picture) {
    press(QStringLiteral("alt+i"));
    QTest::qWait(700);
    press(QStringLiteral("i"));
    ASSERT_TRUE(comes_to_front(QStringLiteral("Select an Image")));
    QTest::qWait(700);
    type(picture);
    press(QStringLiteral("Return"));
    ASSERT_TRUE(comes_to_front(QStringLiteral("page.html")));
  };
  insert(QStringLiteral("red one.png"));  // the dialog is in the page's folder
  ASSERT_TRUE(is_marked());
  insert(page("elsewhere/blue.png"));
  QTest::qWait(700);
  press(QStringLiteral("ctrl+s"));
  ASSERT_TRUE(wait_for([&] { return active_title() == QStringLiteral("HTMLed"); })) << "nobody asks";
  press(QStringLiteral("Return"));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("site/page_files/blue.png")) == "blue"; }));
  const QByteArray pictures = "<img src=\"red%20one.png\"><img src=\"page_files/blue.png\">";
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("site/page.html")).contains(pictures); }))
      << file(QStringLiteral("site/page.html")).toStdString();
  ASSERT_TRUE(wait_for([&] { return !active_title().contains(u'*'); }));
  // Once more, and nobody asks again.
  type(QStringLiteral(" more"));
  ASSERT_TRUE(is_marked());
  press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("site/page.html")).contains(pictures + " more"); }))
      << file(QStringLiteral("site/page.html")).toStdString();
}

TEST_F(DocumentsOnScreen, ABookmarkIsGivenByItsName) {
  write(QStringLiteral("marked.html"),
        "<!DOCTYPE html>\n<title>t</title>\n<h1>The first part</h1>\n<p id=\"taken\">x</p>\n");
  start(htmled(), {page("marked.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("marked.html")));
  QTest::qWait(700);
  const auto ask = [&] {
    press(QStringLiteral("alt+i"));
    QTest::qWait(700);
    press(QStringLiteral("m"));
    ASSERT_TRUE(comes_to_front(QStringLiteral("Bookmark")));
    QTest::qWait(300);
  };
  ask();
  press(QStringLiteral("Return"));  // as the heading proposes
  ASSERT_TRUE(comes_to_front(QStringLiteral("marked.html*")));
  press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] {
    return file(QStringLiteral("marked.html")).contains("<h1 id=\"the-first-part\">");
  })) << file(QStringLiteral("marked.html")).toStdString();
  ask();
  type(QStringLiteral("taken"));
  press(QStringLiteral("Return"));
  QTest::qWait(300);
  ASSERT_TRUE(comes_to_front(QStringLiteral("Bookmark"))) << "no two places have one name";
  press(QStringLiteral("ctrl+a"));
  type(QStringLiteral("my own"));
  press(QStringLiteral("Return"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("marked.html*")));
  press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("marked.html")).contains("<h1 id=\"my-own\">"); }))
      << file(QStringLiteral("marked.html")).toStdString();
}

TEST_F(DocumentsOnScreen, TheClosingQuestionIsAnsweredByKeys) {
  start(htmled(), {page("one.html"), page("two.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  QTest::qWait(700);
  type(QStringLiteral("abc "));
  ASSERT_TRUE(is_marked());
  press(QStringLiteral("ctrl+w"));
  ASSERT_TRUE(wait_for([&] { return active_title() == QStringLiteral("HTMLed"); }));
  press(QStringLiteral("alt+d"));
  EXPECT_TRUE(comes_to_front(QStringLiteral("two.html"))) << "discarded";
  EXPECT_FALSE(file(QStringLiteral("one.html")).contains("abc"));
}

TEST_F(DocumentsOnScreen, AProgramThatWasKilledLeavesNoOtherOneWithoutAWindow) {
  start(htmled(), {page("one.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  kill_program();
  start(htmled(), {page("two.html")});
  EXPECT_TRUE(comes_to_front(QStringLiteral("two.html")));
}

// By hand with TVX_KILLS=100.
TEST_F(DocumentsOnScreen, WhatIsTypedIsThereAgainAfterTheProgramWasKilled) {
  constexpr int promised_milliseconds = 10'000;
  const int kills = std::max(1, qEnvironmentVariableIntValue("TVX_KILLS"));
  int found = 0;
  for (int turn = 0; turn < kills; ++turn) {
    const QString name = QStringLiteral("turn%1.html").arg(turn);
    write(name, "<!DOCTYPE html>\n<title>t</title>\n<p>start</p>\n");
    start(htmled(), {path_of(name)});
    ASSERT_TRUE(comes_to_front(name));
    QTest::qWait(700);
    const QString word = QStringLiteral("word%1 ").arg(turn);
    type(word);
    ASSERT_TRUE(is_marked());
    QElapsedTimer since;
    since.start();
    // Typing goes on: no pause may be needed.
    while (since.elapsed() < promised_milliseconds) type(QStringLiteral("x"));
    kill_program();
    const bool there = kept().contains(("<p>" + word.trimmed()).toUtf8());
    found += there;
    EXPECT_TRUE(there) << "turn " << turn;
    if (turn + 1 == kills) break;
    QDir(QString::fromLocal8Bit(qgetenv("XDG_STATE_HOME")) + QStringLiteral("/tvxHTML")).removeRecursively();
  }
  std::printf("killed %d times, found again %d times\n", kills, found);
  start(htmled());
  ASSERT_TRUE(wait_for([&] { return active_title() == QStringLiteral("Unsaved changes"); }));
  press(QStringLiteral("Return"));  // Restore
  const QString last = QStringLiteral("turn%1.html*").arg(kills - 1);
  ASSERT_TRUE(comes_to_front(last)) << active_title().toStdString();
  press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] {
    return file(last.chopped(1)).contains("<p>word" + QByteArray::number(kills - 1));
  })) << file(last.chopped(1)).toStdString();
}

TEST_F(DocumentsOnScreen, WhatIsTypedIsKeptWhenTheSystemEndsTheProgram) {
  start(htmled(), {page("one.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  QTest::qWait(700);
  type(QStringLiteral("justnow "));
  ASSERT_TRUE(is_marked());
  ASSERT_EQ(::kill(pid_t(program().processId()), SIGTERM), 0);
  EXPECT_TRUE(wait_for([&] { return program().state() == QProcess::NotRunning; }));
  EXPECT_TRUE(kept().contains("<p>justnow The page"));
  QDir(QString::fromLocal8Bit(qgetenv("XDG_STATE_HOME")) + QStringLiteral("/tvxHTML")).removeRecursively();
}

TEST_F(DocumentsOnScreen, TheSystemNeedNotWaitForACheckOfTheSpelling) {
  // Two million words take long on any machine. In few paragraphs: those are what takes the page its time.
  const QByteArray paragraph =
      "<p lang=\"en\">" +
      QByteArray("Some words that are all right in each of the many lines here. ").repeated(200);
  write(QStringLiteral("long.html"),
        "<!DOCTYPE html>\n<title>t</title>\n<p>start</p>\n" + paragraph.repeated(800));
  start(htmled(), {page("long.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("long.html")));
  QTest::qWait(700);
  type(QStringLiteral("just "));
  ASSERT_TRUE(is_marked());
  press(QStringLiteral("F7"));
  ASSERT_TRUE(comes_to_front(QStringLiteral("Spell"))) << active_title().toStdString();
  ASSERT_EQ(::kill(pid_t(program().processId()), SIGTERM), 0);
  EXPECT_TRUE(wait_for([&] { return program().state() == QProcess::NotRunning; }));
  EXPECT_TRUE(kept().contains("<p>just start"));
  QDir(QString::fromLocal8Bit(qgetenv("XDG_STATE_HOME")) + QStringLiteral("/tvxHTML")).removeRecursively();
}

TEST_F(DocumentsOnScreen, APageWhoseFileIsGoneIsRestoredUnderItsName) {
  start(htmled(), {page("one.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  QTest::qWait(700);
  type(QStringLiteral("justnow "));
  ASSERT_TRUE(is_marked());
  ASSERT_EQ(::kill(pid_t(program().processId()), SIGTERM), 0);
  ASSERT_TRUE(wait_for([&] { return program().state() == QProcess::NotRunning; }));
  ASSERT_TRUE(QFile::remove(page("one.html")));
  start(htmled());
  ASSERT_TRUE(wait_for([&] { return active_title() == QStringLiteral("Unsaved changes"); }));
  press(QStringLiteral("Return"));  // Restore
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html*"))) << active_title().toStdString();
  QTest::qWait(700);
  press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("one.html")).contains("justnow The page"); }));
}

TEST_F(DocumentsOnScreen, WhatTheFileHasByNowIsNotOffered) {
  start(htmled(), {page("one.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  QTest::qWait(700);
  type(QStringLiteral("justnow "));
  ASSERT_TRUE(is_marked());
  ASSERT_EQ(::kill(pid_t(program().processId()), SIGTERM), 0);
  ASSERT_TRUE(wait_for([&] { return program().state() == QProcess::NotRunning; }));
  ASSERT_TRUE(kept().contains("justnow The page"));
  write(QStringLiteral("one.html"), file(QStringLiteral("one.html")).replace("The page", "justnow The page"));
  start(htmled(), {page("two.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("two.html")));
  EXPECT_TRUE(wait_for([&] { return kept().isEmpty(); })) << "nothing is left of it";
  EXPECT_TRUE(active_title().contains(QStringLiteral("two.html"))) << active_title().toStdString();
}

TEST_F(DocumentsOnScreen, AFileThatAnotherProgramWritesIsAskedAboutAtFocus) {
  start(htmled(), {page("one.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  QTest::qWait(700);
  const QString window = ask({QStringLiteral("getactivewindow")});
  ask({QStringLiteral("windowminimize"), window});
  ASSERT_TRUE(wait_for([&] { return active_title().isEmpty(); }));
  QTest::qWait(500);  // a window that has the focus again at once hears of neither
  write(QStringLiteral("one.html"), "<!DOCTYPE html>\n<title>t</title>\n<p>Theirs</p>\n");
  ask({QStringLiteral("windowactivate"), window});
  ASSERT_TRUE(comes_to_front(QStringLiteral("The file has changed")));
  press(QStringLiteral("Return"));  // Load the file
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  QTest::qWait(700);
  type(QStringLiteral("mine "));
  ASSERT_TRUE(is_marked());
  press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("one.html")).contains("<p>mine Theirs</p>"); }));
}

TEST_F(DocumentsOnScreen, WhoComesBackTypingLosesNothingToAnotherProgramsFile) {
  start(htmled(), {page("one.html")});
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html")));
  QTest::qWait(700);
  type(QStringLiteral("mine "));
  ASSERT_TRUE(is_marked());
  const QString window = ask({QStringLiteral("getactivewindow")});
  ask({QStringLiteral("windowminimize"), window});
  ASSERT_TRUE(wait_for([&] { return active_title().isEmpty(); }));
  QTest::qWait(500);  // a window that has the focus again at once hears of neither
  write(QStringLiteral("one.html"), "<!DOCTYPE html>\n<title>t</title>\n<p>Theirs</p>\n");
  ask({QStringLiteral("windowactivate"), window});
  ASSERT_TRUE(comes_to_front(QStringLiteral("The file has changed")));
  press(QStringLiteral("Return"));  // Keep this document
  ASSERT_TRUE(comes_to_front(QStringLiteral("one.html*")));
  press(QStringLiteral("ctrl+s"));
  EXPECT_TRUE(wait_for([&] { return file(QStringLiteral("one.html")).contains("<p>mine The page"); }));
}

}  // namespace
}  // namespace tvx::x11
