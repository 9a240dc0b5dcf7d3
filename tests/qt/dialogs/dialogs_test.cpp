#include "tvx/qt/dialogs/dialogs.h"
#include "tvx/qt/dialogs/link_dialog.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

/// Acts on the dialog of that kind once it is open.
template <class Dialog, class Act>
void when_open(Act act) {
  QTimer::singleShot(0, qApp, [act] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    act(dialog);
  });
}

void press(QWidget* widget, int key, const QString& text = {}) {
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key, Qt::NoModifier, text);
    QApplication::sendEvent(widget, &event);
  }
}

void type_into(QWidget* widget, const QString& text) {
  for (const QChar c : text) press(widget, 0, c);
}

class DialogsTest : public testing::Test {
 protected:
  QWidget* window_ = new QWidget;
  Dialogs dialogs_{*window_};
  ~DialogsTest() override { delete window_; }
};

TEST_F(DialogsTest, FiltersMayBringFurtherOnesBehindBars) {
  EXPECT_EQ(name_filters({{u"HTML Documents (*.htm)", u"*.htm;*.html|All Files|*.*"}, {u"Images", u"*.gif"}}),
            (QStringList{QStringLiteral("HTML Documents (*.htm) (*.htm *.html)"),
                         QStringLiteral("All Files (*)"), QStringLiteral("Images (*.gif)")}));
}

TEST_F(DialogsTest, AMessageAnswersWithItsButton) {
  platform::MessageBox box{u"<b>Text</b>", u"Title", platform::MessageButtons::yes_no_cancel,
                           platform::MessageIcon::critical};
  when_open<QMessageBox>([](QMessageBox* shown) {
    EXPECT_EQ(shown->windowTitle(), QStringLiteral("Title"));
    EXPECT_EQ(shown->textFormat(), Qt::PlainText);
    EXPECT_EQ(shown->icon(), QMessageBox::Critical);
    shown->button(QMessageBox::No)->click();
  });
  EXPECT_EQ(dialogs_.show_message(box), platform::MessageAnswer::no);
}

TEST_F(DialogsTest, AQuestionIsTheProgramsAndNoError) {
  QApplication::setApplicationDisplayName(QStringLiteral("Program"));
  platform::MessageBox box{u"Discard Changes?", u"HTML Editor", platform::MessageButtons::ok_cancel,
                           platform::MessageIcon::critical};
  box.asks = true;
  when_open<QMessageBox>([](QMessageBox* shown) {
    EXPECT_EQ(shown->windowTitle(), QStringLiteral("Program"));
    EXPECT_EQ(shown->icon(), QMessageBox::Question);
    shown->close();
  });
  EXPECT_EQ(dialogs_.show_message(box), platform::MessageAnswer::cancel);
  QApplication::setApplicationDisplayName(QString());
}

TEST_F(DialogsTest, AClosedMessageAnswersAsTold) {
  using platform::MessageAnswer;
  using platform::MessageButtons;
  for (const auto& [buttons, answer] : {std::pair(MessageButtons::ok, MessageAnswer::ok),
                                        std::pair(MessageButtons::ok_cancel, MessageAnswer::cancel),
                                        std::pair(MessageButtons::yes_no, MessageAnswer::no),
                                        std::pair(MessageButtons::yes_no_cancel, MessageAnswer::cancel)}) {
    when_open<QMessageBox>([](QMessageBox* shown) { shown->close(); });
    EXPECT_EQ(dialogs_.show_message({u"?", u"HTMLed", buttons}), answer);
  }
}

// What runs in the dialog's loop may close the window that it stands over.
TEST_F(DialogsTest, AMessageWhoseWindowGoesIsClosed) {
  when_open<QMessageBox>([this](QMessageBox*) {
    delete window_;
    window_ = nullptr;
  });
  EXPECT_EQ(dialogs_.show_message({u"?", u"HTMLed", platform::MessageButtons::yes_no}),
            platform::MessageAnswer::no);
}

TEST_F(DialogsTest, ColoursGoBothWays) {
  when_open<QColorDialog>([](QColorDialog* shown) {
    EXPECT_EQ(shown->currentColor(), QColor(0x12, 0x34, 0x56));
    shown->setCurrentColor(QColor(1, 2, 3));
    shown->accept();
  });
  EXPECT_EQ(dialogs_.ShowColor(0x563412, platform::WindowHandle::none), 0x030201);
  when_open<QColorDialog>([](QColorDialog* shown) { shown->reject(); });
  EXPECT_EQ(dialogs_.ShowColor(0, platform::WindowHandle::none), no_colour);
}

TEST_F(DialogsTest, ACancelledFileDialogGivesNoPath) {
  platform::FileDialog asked{{{u"HTML", u"*.html"}}, u"Save HTML File", u"*.html"};
  when_open<QFileDialog>([](QFileDialog* shown) {
    EXPECT_EQ(shown->windowTitle(), QStringLiteral("Save HTML File"));
    EXPECT_EQ(shown->acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(shown->defaultSuffix(), QStringLiteral("html"));
    shown->reject();
  });
  EXPECT_EQ(dialogs_.ShowSave(asked), u"");
}

/// Lets the loop run until it is so.
template <class Condition>
bool comes_true(Condition condition) {
  for (int turns = 0; turns < 500 && !condition(); ++turns) QTest::qWait(10);
  return condition();
}

TEST_F(DialogsTest, APictureIsSeenBeforeItIsChosen) {
  const QTemporaryDir folder;
  const QString wide = folder.filePath(QStringLiteral("wide.png")),
                text = folder.filePath(QStringLiteral("text.png"));
  QImage picture(1000, 500, QImage::Format_RGB32);
  picture.fill(Qt::blue);
  ASSERT_TRUE(picture.save(wide));
  QFile(text).open(QIODevice::WriteOnly);
  dialogs_.set_folder(folder.path());
  const platform::FileDialog asked{
      .filters = {{u"GIF (*.GIF)", u"*.gif"}, {u"All Image Files", u"*.gif;*.png"}},
      .title = u"Select an Image",
      .of_pictures = true};
  when_open<QFileDialog>([&](QFileDialog* shown) {
    EXPECT_EQ(shown->selectedNameFilter(), QStringLiteral("All Image Files"));
    auto* seen = shown->findChild<QLabel*>(QStringLiteral("picture"));
    auto* measure = shown->findChild<QLabel*>(QStringLiteral("measure"));
    ASSERT_TRUE(seen && measure);
    shown->selectFile(wide);
    emit shown->currentChanged(wide);
    EXPECT_TRUE(comes_true([&] { return !seen->pixmap().isNull(); }));
    EXPECT_EQ(seen->pixmap().size(), QSize(240, 120) * seen->devicePixelRatioF());
    EXPECT_EQ(seen->pixmap().toImage().pixelColor(10, 10), QColor(Qt::blue));
    EXPECT_TRUE(measure->text().startsWith(QStringLiteral("1,000 × 500 · ")))
        << measure->text().toStdString();
    emit shown->currentChanged(text);
    EXPECT_TRUE(seen->pixmap().isNull());
    EXPECT_EQ(measure->text(), QString());
    emit shown->currentChanged(folder.path());
    EXPECT_EQ(measure->text(), QString());
    shown->selectFile(wide);
    static_cast<QDialog*>(shown)->accept();
  });
  EXPECT_EQ(dialogs_.ShowOpen(asked), from_qt(wide));
}

TEST_F(DialogsTest, ALinkIsAskedForWithTheAddressItHas) {
  when_open<QDialog>([](QDialog* shown) {
    EXPECT_EQ(shown->windowTitle(), QStringLiteral("Hyperlink"));
    auto* field = shown->findChild<QLineEdit*>();
    EXPECT_EQ(field->text(), QStringLiteral("http://old.org/"));
    EXPECT_TRUE(field->hasSelectedText());
    type_into(field, QStringLiteral(" http://new.org/ "));
    press(field, Qt::Key_Return);
  });
  EXPECT_EQ(dialogs_.ask_link({u"http://old.org/"}), u"http://new.org/");
}

TEST_F(DialogsTest, ALinkLeadsWhereWhoWroteItMeans) {
  const auto written = [](const char* present, const char* text) {
    LinkDialog dialog(QString::fromLatin1(present));
    dialog.findChild<QLineEdit*>()->setText(QString::fromLatin1(text));
    return dialog.address().toStdString();
  };
  EXPECT_EQ(written("", " www.example.org/map "), "http://www.example.org/map");
  EXPECT_EQ(written("", "anna@example.org"), "mailto:anna@example.org");
  for (const char* stays : {"https://example.org", "page.html", "#part", "images/a@b.png", "mailto:a@b.c",
                            "www.", "tel:123", "//example.org/x", "HTTP://EXAMPLE.ORG"})
    EXPECT_EQ(written("", stays), stays);
  EXPECT_EQ(written("www.example.org", "www.example.org"), "www.example.org") << "nobody has touched it";
}

TEST_F(DialogsTest, ALinkWithoutAnAddressCanNotBeAgreedTo) {
  when_open<QDialog>([](QDialog* shown) {
    auto* field = shown->findChild<QLineEdit*>();
    const auto* ok = shown->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_FALSE(ok->isEnabled());
    type_into(field, QStringLiteral("  "));
    EXPECT_FALSE(ok->isEnabled());
    press(field, Qt::Key_Return);
    EXPECT_TRUE(shown->isVisible());
    type_into(field, QStringLiteral("a"));
    EXPECT_TRUE(ok->isEnabled());
    press(field, Qt::Key_Escape);
  });
  EXPECT_EQ(dialogs_.ask_link({}), std::nullopt);
}

}  // namespace
}  // namespace tvx::qt
