#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTest>

#include "x11/hands.h"
#include "x11/managed_screen.h"

/// The program as a reading program finds it, over a bus of the desktop's kind. The client is another
/// program, which speaks through the library that reading programs use.
namespace tvx::x11 {
namespace {

const char page[] =
    "<!DOCTYPE html>\n<html lang=\"en\"><head><title>A trial page</title></head><body>\n"
    "<h1>The tour</h1>\n<p>See <a href=\"https://example.org/x\">the other page</a> for <b>more</b> and "
    "<i lang=\"de\">Wetter</i>.</p>\n"
    "<h2 style=\"color: green; text-align: center\">Things</h2>\n"
    "<ul><li>One</li><li>Two<ol><li>Inner</li></ol></li></ul>\n"
    "<table><caption>Numbers</caption><tr><th>Name</th><th>Age</th></tr><tr><td>Ada</td><td>36</td></tr>"
    "<tr><td colspan=\"2\">both</td></tr></table>\n"
    "<p>An image <img src=\"dog.png\" alt=\"A dog\"> and a field <input name=\"city\" value=\"Bonn\">.</p>\n"
    "<blockquote><p>Quoted words.</p></blockquote>\n<pre>one\n  two</pre>\n<hr>\n<p>Last line here.</p>\n"
    "</body></html>\n";

class ReadingOnScreen : public ManagedScreen {
 protected:
  /// More words than a line of the window takes.
  static QByteArray long_paragraph() {
    QByteArray numbers = "<p>";
    for (int i = 1; i <= 400; ++i) numbers += QByteArray::number(i) + ' ';
    return numbers + "</p>\n";
  }
  void SetUp() override {
    if (!QFile::exists(QStringLiteral("/usr/share/dbus-1/services/org.a11y.Bus.service")))
      GTEST_SKIP() << "SKIPPED: needs at-spi2-core: scripts/setup installs it";
    ManagedScreen::SetUp();
    if (IsSkipped() || HasFatalFailure()) return;
    bus_.setStandardErrorFile(QProcess::nullDevice());
    // What starts the other bus, on which reading programs are, knows the screen by the surroundings.
    bus_.setProcessEnvironment(surroundings());
    bus_.start(QStringLiteral("setpriv"),
               {QStringLiteral("--pdeathsig"), QStringLiteral("KILL"), QStringLiteral("dbus-daemon"),
                QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    QByteArray address;
    while (!address.endsWith('\n') && bus_.waitForReadyRead(30'000)) address += bus_.readAllStandardOutput();
    ASSERT_TRUE(address.endsWith('\n')) << "dbus-daemon doesn't start";
    set_surroundings(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromLatin1(address.trimmed()));
    set_surroundings(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    set_surroundings(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    // What a test before has left unsaved is none of this one's.
    set_surroundings(QStringLiteral("XDG_STATE_HOME"), path_of(QStringLiteral("state")));
    write(QStringLiteral("page.html"), QByteArray(page).replace("<hr>", long_paragraph() + "<hr>"));
    start(QStringLiteral(TVX_BIN_DIR "/htmled"),
          {QStringLiteral("--language"), QStringLiteral("en"), path_of(QStringLiteral("page.html"))});
    ASSERT_TRUE(comes_to_front(QStringLiteral("page.html")));
  }
  void TearDown() override {
    ManagedScreen::TearDown();
    if (bus_.state() == QProcess::NotRunning) return;
    bus_.terminate();
    bus_.waitForFinished();
  }

  /// Empty if the client found all as it should be.
  std::string client_says(const QString& step) {
    QProcess client;
    client.setProcessEnvironment(surroundings());
    client.setProcessChannelMode(QProcess::MergedChannels);
    client.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-W"), QStringLiteral("ignore"),
                  QStringLiteral(TVX_SOURCE_DIR "/tests/x11/reading_client.py"), step});
    if (!client.waitForFinished(110'000)) {
      client.kill();
      client.waitForFinished();
      return "the client doesn't come to its end\n" + client.readAll().toStdString();
    }
    const bool well = client.exitStatus() == QProcess::NormalExit && client.exitCode() == 0;
    return well ? std::string() : "the client says\n" + client.readAll().toStdString();
  }

 private:
  QProcess bus_;
};

TEST_F(ReadingOnScreen, APageIsReadWithItsHeadingsLinksListsAndImages) {
  EXPECT_EQ(client_says(QStringLiteral("read")), "");
}

TEST_F(ReadingOnScreen, ATableIsReadByRowsAndColumns) { EXPECT_EQ(client_says(QStringLiteral("table")), ""); }

TEST_F(ReadingOnScreen, TheCaretIsFollowedAsKeysMoveIt) {
  EXPECT_EQ(client_says(QStringLiteral("caret")), "");
}

TEST_F(ReadingOnScreen, LinesAreThoseOfTheWindow) { EXPECT_EQ(client_says(QStringLiteral("lines")), ""); }

TEST_F(ReadingOnScreen, EditsAreHeardAsTheLettersThatTheyAre) {
  EXPECT_EQ(client_says(QStringLiteral("hear")), "");
}

TEST_F(ReadingOnScreen, TheClientSetsCaretSelectionAndFocus) {
  EXPECT_EQ(client_says(QStringLiteral("steer")), "");
}

TEST_F(ReadingOnScreen, TextHasItsFontsLanguageAndWrongWords) {
  EXPECT_EQ(client_says(QStringLiteral("attributes")), "");
}

TEST_F(ReadingOnScreen, TheClientEditsAsAPersonTypesWithUndo) {
  EXPECT_EQ(client_says(QStringLiteral("edit")), "");
}

TEST_F(ReadingOnScreen, AnEmptyPageSaysHowToBegin) { EXPECT_EQ(client_says(QStringLiteral("empty")), ""); }

TEST_F(ReadingOnScreen, TheCodeIsReadInPlaceOfThePage) { EXPECT_EQ(client_says(QStringLiteral("code")), ""); }

TEST_F(ReadingOnScreen, EverythingThatIsPressedHasAName) {
  EXPECT_EQ(client_says(QStringLiteral("names")), "");
}

TEST_F(ReadingOnScreen, EverythingInADialogHasAName) {
  EXPECT_EQ(client_says(QStringLiteral("dialogs")), "");
}

}  // namespace
}  // namespace tvx::x11
