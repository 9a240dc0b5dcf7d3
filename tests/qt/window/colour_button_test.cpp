#include "htmled/format/colour_button.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <QScopeGuard>

namespace tvx::htmled {
namespace {

/// How light the letter is: without the colour under it.
int lightness(const ColourButton& button) {
  const QImage picture = button.icon().pixmap(20, 20).toImage();
  int sum = 0, count = 0;
  for (int y = 0; y < picture.height() * 3 / 4; ++y)
    for (int x = 0; x < picture.width(); ++x)
      if (const QColor colour = picture.pixelColor(x, y); colour.alpha() > 200) {
        sum += colour.lightness();
        ++count;
      }
  return count == 0 ? -1 : sum / count;
}

/// A desktop that turns dark in the evening: the letters stay to be seen.
TEST(ColourButton, ItsLetterFollowsTheColoursOfTheDesktop) {
  const auto restore = qScopeGuard([before = QApplication::palette()] { QApplication::setPalette(before); });
  QApplication::setPalette(QPalette(QColor(0xef, 0xef, 0xef)));
  ColourButton button(ColourButton::Of::Text, nullptr);
  button.show();
  const int on_light = lightness(button);
  ASSERT_GE(on_light, 0);
  EXPECT_LT(on_light, 100);
  QApplication::setPalette(QPalette(QColor(0x2b, 0x2d, 0x30)));
  QApplication::processEvents();
  EXPECT_GT(lightness(button), 150);
}

}  // namespace
}  // namespace tvx::htmled
