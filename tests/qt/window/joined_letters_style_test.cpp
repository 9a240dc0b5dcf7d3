#include "htmled/joined_letters_style.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <algorithm>

namespace tvx::htmled {
namespace {

struct Ink {
  int width = 0;
  QImage letters;  // without the line below them
};

/// How a style draws a text into a wide room from right to left.
Ink drawn(const QStyle& style, const QString& text, int flags) {
  QImage picture(400, 40, QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.setLayoutDirection(Qt::RightToLeft);
  style.drawItemText(&painter, QRect(0, 0, 400, 40), flags | Qt::AlignLeft, QPalette(Qt::lightGray), true,
                     text, QPalette::WindowText);
  painter.end();
  int left = 400, right = 0;
  for (int y = 0; y < 40; ++y)
    for (int x = 0; x < 400; ++x)
      if (qGray(picture.pixel(x, y)) < 128) left = std::min(left, x), right = std::max(right, x);
  return {std::max(right - left + 1, 0), picture};
}

TEST(JoinedLettersStyle, ATextWithAnAccessKeyIsAsWideAsWithoutOne) {
  const JoinedLettersStyle style;
  for (const QString& text : {QStringLiteral("ال&لغة:"), QStringLiteral("الكلمات ال&مفتاحية:")}) {
    const Ink marked = drawn(style, text, Qt::TextShowMnemonic);
    const Ink plain = drawn(style, QString(text).remove(u'&'), 0);
    EXPECT_GT(plain.width, 10);
    EXPECT_EQ(marked.width, plain.width) << text.toStdString();
    EXPECT_NE(marked.letters, plain.letters) << "the key's letter is underlined";
  }
}

TEST(JoinedLettersStyle, OtherTextsAreTheDesktopsOwn) {
  const JoinedLettersStyle style;
  const QProxyStyle usual;
  for (const QString& text :
       {QStringLiteral("&Title:"), QStringLiteral("A && b"), QStringLiteral("טקסט &אחד")})
    EXPECT_EQ(drawn(style, text, Qt::TextShowMnemonic).letters,
              drawn(usual, text, Qt::TextShowMnemonic).letters)
        << text.toStdString();
  EXPECT_EQ(drawn(style, QStringLiteral("ال&لغة"), Qt::TextHideMnemonic).letters,
            drawn(usual, QStringLiteral("ال&لغة"), Qt::TextHideMnemonic).letters);
}

}  // namespace
}  // namespace tvx::htmled
