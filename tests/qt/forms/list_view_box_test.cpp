#include "tvx/qt/forms/list_view_box.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>

#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

using testing::Contains;
using testing::ElementsAre;

struct Owner : platform::ListViewHandler {
  std::vector<std::string> heard;
  std::pair<int, int> seen{-1, -1};
  void ColumnClick(platform::ListView& list, int column) override {
    heard.push_back("column " + std::to_string(column));
    list.sort(column, !list.descending());
  }
  void DblClick(platform::ListView& list) override {
    heard.push_back("double " + std::to_string(list.selected()));
  }
  bool OLEDragOver(platform::ListView&, const platform::TransferSource& source) override {
    return platform::offers(source, platform::targets::files);
  }
  void OLEDragDrop(platform::ListView&, const platform::TransferSource& source) override {
    heard.push_back("drop " + source.read(platform::targets::files));
  }
  void rows_seen(platform::ListView&, int first, int last) override { seen = {first, last}; }
};

class ListViewBoxes : public testing::Test {
 protected:
  ListViewBoxes() {
    list.set_handler(&owner);
    box.resize(400, 300);
    box.show();
  }
  ~ListViewBoxes() override { list.set_handler(nullptr); }
  void fill(int rows) {
    for (int i = 0; i < rows; ++i)
      list.add({from_qt(QStringLiteral("p%1.png").arg(i, 3, 10, QLatin1Char('0'))),
                {u"12345", u"202611220730", u"00000000012345"},
                1});
  }
  QString shown(int row, int column) {
    return box.model()->index(row, column).data(Qt::DisplayRole).toString();
  }
  template <class Condition>
  bool comes_true(Condition condition) {
    for (int turns = 0; turns < 300 && !condition(); ++turns) QTest::qWait(10);
    return condition();
  }

  platform::ListView list{{{u"Name"},
                           {u"Size", platform::ColumnContent::Bytes},
                           {u"Date", platform::ColumnContent::Stamp},
                           {u"SortBySize", {}, true}}};
  Owner owner;
  ListViewBox box{list, nullptr, [](const std::function<void()>& deed) { deed(); }};
};

TEST_F(ListViewBoxes, ShowsRowsAsTheUserIsUsedToSeeThem) {
  fill(1);
  ASSERT_EQ(box.model()->rowCount(), 1);
  EXPECT_EQ(shown(0, 0), QStringLiteral("p000.png"));
  EXPECT_EQ(shown(0, 1), QLocale().formattedDataSize(12345, 1, QLocale::DataSizeSIFormat));
  EXPECT_NE(shown(0, 2), QStringLiteral("202611220730"));
  EXPECT_TRUE(shown(0, 2).contains(QStringLiteral("22")));
  EXPECT_TRUE(box.isColumnHidden(3));
  list.hide_column(3, false);
  EXPECT_FALSE(box.isColumnHidden(3));
}

TEST_F(ListViewBoxes, APressOnAHeaderSorts) {
  fill(3);
  QTest::mouseClick(box.header()->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_TRUE(comes_true([&] { return !owner.heard.empty(); }));
  EXPECT_THAT(owner.heard, ElementsAre("column 0"));
  EXPECT_TRUE(box.header()->isSortIndicatorShown());
}

TEST_F(ListViewBoxes, TypingFindsANameAfterAPressOnASize) {
  box.resize(600, 380);
  fill(3);
  QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, box.visualRect(box.model()->index(0, 1)).center());
  ASSERT_EQ(list.selected(), 0);
  QTest::keyClicks(&box, QStringLiteral("p002"));
  EXPECT_EQ(list.selected(), 2);
}

TEST_F(ListViewBoxes, SizesAndDatesAreReadWhole) {
  box.resize(600, 380);
  fill(3);
  for (const int column : {1, 2})
    EXPECT_GE(box.columnWidth(column), box.sizeHintForIndex(box.model()->index(0, column)).width()) << column;
}

TEST_F(ListViewBoxes, AfterSortingTheChosenRowIsInSight) {
  fill(200);
  list.select(0);
  list.sort(0, true);
  ASSERT_EQ(list.selected(), 199);
  EXPECT_TRUE(box.viewport()->rect().contains(box.visualRect(box.model()->index(199, 0)).center()));
}

TEST_F(ListViewBoxes, ADoubleClickMeansTheRowAndTypingFindsOne) {
  fill(3);
  box.setFocus();
  QTest::keyClicks(&box, QStringLiteral("p002"));
  EXPECT_EQ(list.selected(), 2);
  const QPoint second = box.visualRect(box.model()->index(1, 0)).center();
  QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, second);
  EXPECT_EQ(list.selected(), 1);
  QTest::mouseDClick(box.viewport(), Qt::LeftButton, {}, second);
  EXPECT_TRUE(comes_true([&] { return !owner.heard.empty(); }));
  EXPECT_THAT(owner.heard, ElementsAre("double 1"));
}

TEST_F(ListViewBoxes, TellsWhichRowsAreSeen) {
  fill(200);
  EXPECT_TRUE(comes_true([&] { return owner.seen.first == 0 && owner.seen.second > 1; }));
  EXPECT_LT(owner.seen.second, 50);
  box.verticalScrollBar()->setValue(box.verticalScrollBar()->maximum());
  EXPECT_TRUE(comes_true([&] { return owner.seen.second == 199; }));
  EXPECT_GT(owner.seen.first, 150);
}

TEST_F(ListViewBoxes, APictureIsMadeSmall) {
  fill(1);
  const auto decoration = [&] {
    return box.model()->index(0, 0).data(Qt::DecorationRole).value<QPixmap>().toImage();
  };
  const QImage before = decoration();
  QImage red(500, 500, QImage::Format_RGB32);
  red.fill(Qt::red);
  QByteArray file;
  QBuffer buffer(&file);
  ASSERT_TRUE(red.save(&buffer, "PNG"));
  list.set_picture(u"p000.png", std::make_shared<const std::string>(file.toStdString()));
  EXPECT_TRUE(comes_true([&] { return decoration() != before; }));
  EXPECT_EQ(decoration().pixelColor(20, 20), QColor(Qt::red));
  list.set_picture(u"p000.png", std::make_shared<const std::string>("no picture"));
  QTest::qWait(50);
  EXPECT_EQ(decoration().pixelColor(20, 20), QColor(Qt::red));
}

TEST_F(ListViewBoxes, FilesAreTakenAndTextIsNot) {
  QMimeData text, files;
  text.setText(QStringLiteral("words"));
  files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.png"))});
  QDragEnterEvent no(QPoint(5, 5), Qt::CopyAction, &text, Qt::LeftButton, {}),
      yes(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, {});
  QCoreApplication::sendEvent(box.viewport(), &no);
  QCoreApplication::sendEvent(box.viewport(), &yes);
  EXPECT_FALSE(no.isAccepted());
  EXPECT_TRUE(yes.isAccepted());
  QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &files, Qt::LeftButton, {});
  QCoreApplication::sendEvent(box.viewport(), &drop);
  EXPECT_TRUE(owner.heard.empty()) << "the other program is not kept waiting";
  EXPECT_TRUE(comes_true([&] { return !owner.heard.empty(); }));
  EXPECT_THAT(owner.heard, ElementsAre(testing::StartsWith("drop file:///tmp/a.png")));
}

TEST_F(ListViewBoxes, AnEmptyListSaysWhyItIs) {
  const QImage before = box.grab().toImage();
  list.set_note(u"The images can't be listed.", u"530 Not for you");
  EXPECT_NE(box.grab().toImage(), before);
}

}  // namespace
}  // namespace tvx::qt
