#include <QFile>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>

#include "htmled/document/document_page.h"
#include "htmled/help/handbook.h"
#include "htmled/menus/commands.h"
#include "htmled/tabs.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// The handbook and the tour, opened and read with the real keyboard and mouse.
namespace tvx::x11 {
namespace {

using htmled::Handbook;

class HandbookOnScreen : public EditorOnScreen {
 protected:
  void SetUp() override {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings_.path());
    EditorOnScreen::SetUp();
  }
  /// By its key, from within the page.
  Handbook* open() {
    start("<body><p>x</p>");
    hands::press(QStringLiteral("F1"));
    EXPECT_TRUE(wait_for([&] { return handbook() && handbook()->isVisible(); }));
    if (handbook()) hands::give_focus(*handbook());
    return handbook();
  }
  Handbook* handbook() { return window_->findChild<Handbook*>(); }
  static std::string page_of(Handbook& book) { return book.page().source().fileName().toStdString(); }
  /// The middle of the first link to a page.
  static QPoint place_of_link(QTextBrowser& page, const QString& to) {
    for (QTextBlock block = page.document()->begin(); block.isValid(); block = block.next())
      for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
        const QTextFragment text = piece.fragment();
        if (text.charFormat().anchorHref() != to) continue;
        QTextCursor inside(page.document());
        inside.setPosition(text.position() + text.length() / 2);
        page.setTextCursor(inside);
        page.ensureCursorVisible();
        return page.viewport()->mapToGlobal(page.cursorRect(inside).center());
      }
    return {};
  }

  QTemporaryDir settings_;
};

TEST_F(HandbookOnScreen, OpensByItsKeyAndClosesByEscape) {
  Handbook* book = open();
  ASSERT_TRUE(book);
  EXPECT_EQ(page_of(*book), "index.md");
  EXPECT_EQ(book->contents().count(), 11) << "the first page, and ten more";
  EXPECT_EQ(book->contents().selectedItems(), QList{book->contents().item(0)});
  hands::press(QStringLiteral("Escape"));
  EXPECT_TRUE(wait_for([&] { return !book->isVisible(); }));
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(HandbookOnScreen, FollowsALinkAndGoesBack) {
  Handbook* book = open();
  ASSERT_TRUE(book);
  hands::click(place_of_link(book->page(), QStringLiteral("tables.md")));
  ASSERT_TRUE(wait_for([&] { return page_of(*book) == "tables.md"; })) << page_of(*book);
  EXPECT_TRUE(book->page().toPlainText().startsWith(QStringLiteral("Tables")));
  EXPECT_EQ(book->contents().currentItem()->text(), QStringLiteral("Tables"));
  hands::press(QStringLiteral("alt+Left"));
  EXPECT_TRUE(wait_for([&] { return page_of(*book) == "index.md"; })) << page_of(*book);
}

TEST_F(HandbookOnScreen, TheContentsLeadToEachPage) {
  Handbook* book = open();
  ASSERT_TRUE(book);
  QListWidget& contents = book->contents();
  for (int i = contents.count() - 1; i >= 0; --i) {
    const std::string title = contents.item(i)->text().toStdString();
    hands::click(contents.viewport()->mapToGlobal(contents.visualItemRect(contents.item(i)).center()));
    EXPECT_TRUE(wait_for([&] {
      return book->page().document()->begin().text().toStdString() == title && contents.currentRow() == i;
    })) << title;
  }
}

TEST_F(HandbookOnScreen, PicturesAreNoWiderThanThePage) {
  Handbook* book = open();
  ASSERT_TRUE(book);
  book->resize(620, 600);
  ASSERT_TRUE(wait_for([&] { return book->width() == 620; }));
  book->contents().setCurrentRow(7);  // the source has a picture of 640 pixels
  ASSERT_TRUE(wait_for([&] { return page_of(*book) == "source.md"; })) << page_of(*book);
  QTextDocument& text = *book->page().document();
  EXPECT_TRUE(text.toHtml().contains(QStringLiteral("<img")));
  EXPECT_LE(text.idealWidth(), book->page().viewport()->width());
}

TEST_F(HandbookOnScreen, SizeAndZoomAreRemembered) {
  Handbook* book = open();
  ASSERT_TRUE(book);
  book->resize(800, 560);
  const double before = book->page().font().pointSizeF();
  hands::press(QStringLiteral("ctrl+plus"));
  ASSERT_TRUE(wait_for([&] { return book->page().font().pointSizeF() > before; }));
  const double larger = book->page().font().pointSizeF();
  hands::press(QStringLiteral("Escape"));
  ASSERT_TRUE(wait_for([&] { return !book->isVisible(); }));
  delete book;
  hands::give_focus(*window_);
  hands::press(QStringLiteral("F1"));
  ASSERT_TRUE(wait_for([&] { return handbook() && handbook()->isVisible(); }));
  EXPECT_EQ(handbook()->size(), QSize(800, 560));
  EXPECT_EQ(handbook()->page().font().pointSizeF(), larger);
}

TEST_F(HandbookOnScreen, SaysWhereItsPagesShouldBe) {
  Handbook book(QStringLiteral("/no/such/folder"), nullptr);
  EXPECT_TRUE(book.page().toPlainText().contains(QStringLiteral("/no/such/folder")));
  EXPECT_TRUE(book.contents().isHidden());
}

TEST_F(HandbookOnScreen, TheTourIsACopyInNoFile) {
  start("<body><p>x</p>");
  QFile tour(QStringLiteral(TVX_SOURCE_DIR "/samples/tour.html"));
  ASSERT_TRUE(tour.open(QIODevice::ReadOnly));
  const QByteArray before = tour.readAll();
  QMenu* help = window_->findChild<QMenu*>(QStringLiteral("help"));
  QAction* item = window_->commands().own("tour");
  ASSERT_TRUE(help && item);
  QMenuBar& bar = *window_->menuBar();
  hands::click(bar.mapToGlobal(bar.actionGeometry(help->menuAction()).center()));
  ASSERT_TRUE(wait_for([&] { return help->isVisible(); }));
  hands::click(help->mapToGlobal(help->actionGeometry(item).center()));
  ASSERT_TRUE(wait_for([&] { return window_->tabs().count() == 2 && window_->editor().started(); }));
  ASSERT_TRUE(wait_for([&] { return text().find("A tour that you edit") != std::string::npos; })) << text();
  EXPECT_TRUE(window_->front().path().isEmpty());
  EXPECT_FALSE(window_->front().is_modified());
  hands::type(QStringLiteral("abc"));
  ASSERT_TRUE(wait_for([&] { return window_->front().is_modified(); }));
  tour.seek(0);
  EXPECT_EQ(tour.readAll(), before);
}

}  // namespace
}  // namespace tvx::x11
