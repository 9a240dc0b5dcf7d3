#include "tvx/qt/support/font_list.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QFontDatabase>
#include <QImage>
#include <QPainter>
#include <QSet>
#include <QStyledItemDelegate>
#include <algorithm>

namespace tvx::qt {
namespace {

bool is_of_signs(const QString& family) {
  return QFontDatabase::writingSystems(family).contains(QFontDatabase::Symbol);
}

/// A list with one family.
class FontItem : public QComboBox {
 public:
  explicit FontItem(const QString& family) {
    show_in_their_fonts(*this);
    addItem(family);
    show_in_its_font(*this, 0);
  }
  bool is_in_its_font() const { return itemData(0, Qt::FontRole).isValid(); }
  bool has_sample() const { return drawn(*itemDelegate()) != drawn(QStyledItemDelegate()); }

 private:
  QImage drawn(const QAbstractItemDelegate& delegate) const {
    QImage image(400, 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.initFrom(view());
    option.rect = image.rect();
    delegate.paint(&painter, option, model()->index(0, 0));
    return image;
  }
};

TEST(FontList, NamesFamiliesWithoutTheirFoundries) {
  const QStringList families = font_families();
  EXPECT_FALSE(families.isEmpty());
  for (const QString& family : families) EXPECT_FALSE(family.contains(u'[')) << family.toStdString();
  EXPECT_EQ(QSet<QString>(families.begin(), families.end()).size(), families.size());
}

TEST(FontList, ShowsAFamilyOfLettersInItself) {
  const QStringList families = font_families();
  const auto letters = std::ranges::find_if(families, [](const QString& family) {
    return !is_of_signs(family) && QFontDatabase::isSmoothlyScalable(family) &&
           QFontDatabase::writingSystems(family).contains(QFontDatabase::Latin);
  });
  ASSERT_NE(letters, families.end());
  const FontItem item(*letters);
  EXPECT_TRUE(item.is_in_its_font());
  EXPECT_FALSE(item.has_sample());
}

TEST(FontList, ShowsTheNameOfAFamilyOfSignsInLetters) {
  const QStringList families = font_families();
  if (std::ranges::none_of(families, is_of_signs)) GTEST_SKIP() << "SKIPPED: there is no font of signs here";
  for (const QString& family : families) {
    if (!is_of_signs(family)) continue;
    const FontItem item(family);
    EXPECT_FALSE(item.is_in_its_font()) << family.toStdString();
    EXPECT_TRUE(item.has_sample()) << family.toStdString();
  }
}

}  // namespace
}  // namespace tvx::qt
