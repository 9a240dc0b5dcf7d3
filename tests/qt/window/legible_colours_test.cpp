#include "htmled/legible_colours.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>
#include <QScopeGuard>
#include <QScreen>
#include <QTest>
#include <QWidget>
#include <cmath>

#include "htmled/first_size.h"

namespace tvx::htmled {
namespace {

QPalette colours_of(int ground, int text, int hint) {
  QPalette palette;
  palette.setColor(QPalette::Base, QColor(ground, ground, ground));
  palette.setColor(QPalette::Text, QColor(text, text, text));
  palette.setColor(QPalette::PlaceholderText, QColor(hint, hint, hint, 128));
  return palette;
}

double distance_of_hints() {
  const QPalette present = QApplication::palette();
  const QColor hint = present.color(QPalette::PlaceholderText);
  return std::abs(qGray(hint.rgb()) - qGray(present.color(QPalette::Base).rgb())) * hint.alphaF();
}

TEST(LegibleColours, HintsAreReadOnADarkGroundAndStayAsTheyAreOnALightOne) {
  const QPalette before = QApplication::palette();
  const auto restore = qScopeGuard([&] { QApplication::setPalette(before); });
  QApplication::setPalette(colours_of(255, 0, 0));
  QWidget window;
  new LegibleColours(window);
  EXPECT_EQ(QApplication::palette().color(QPalette::PlaceholderText), QColor(0, 0, 0, 128));
  // The desktop turns dark, and then light again.
  QApplication::setPalette(colours_of(30, 240, 0));
  EXPECT_TRUE(QTest::qWaitFor([] { return distance_of_hints() > 100; })) << distance_of_hints();
  QApplication::setPalette(colours_of(255, 0, 255));
  EXPECT_TRUE(QTest::qWaitFor([] { return distance_of_hints() > 100; })) << distance_of_hints();
}

TEST(FirstSize, IsTheWantedOneWhereTheScreenHasRoomAndLessWhereNot) {
  QWidget window;
  set_first_size(window, {300, 200});
  EXPECT_EQ(window.size(), QSize(300, 200));
  set_first_size(window, {9000, 9000});
  const QSize room = window.screen()->availableSize();
  EXPECT_LT(window.width(), room.width());
  EXPECT_LT(window.height(), room.height());
  EXPECT_GT(window.height(), room.height() * 3 / 4);
}

}  // namespace
}  // namespace tvx::htmled
