#include "htmled/joined_letters_style.h"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace tvx::htmled {
namespace {

bool has_joined_letters(const QString& text) {
  return std::ranges::any_of(text, [](QChar letter) {
    return letter.script() == QChar::Script_Arabic || letter.script() == QChar::Script_Syriac;
  });
}

struct Marked {
  QString text;        // without the marks
  qsizetype key = -1;  // the letter of the access key
};

Marked read_marks(const QString& text) {
  Marked read;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'&' && i + 1 < text.size() && text[++i] != u'&' && read.key < 0)
      read.key = read.text.size();
    read.text += text[i];
  }
  return read;
}

/// Where the line stands under the letter, in a text of one line; an empty rectangle: nowhere.
QRectF line_under_key(const QPainter& painter, const QRect& rect, int flags, const Marked& marked) {
  QTextLayout layout(marked.text, painter.font(), painter.device());
  QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
  option.setTextDirection(painter.layoutDirection());
  layout.setTextOption(option);
  layout.beginLayout();
  QTextLine line = layout.createLine();
  line.setLineWidth(1 << 20);
  layout.endLayout();
  const QSize size(int(std::ceil(line.naturalTextWidth())), int(std::ceil(line.height())));
  if (size.width() > rect.width() + 1) return {};  // it is on several, or cut off
  const QRect box = QStyle::alignedRect(painter.layoutDirection(), Qt::Alignment(flags & 0xFF), size, rect);
  const qreal from = line.cursorToX(int(marked.key)), to = line.cursorToX(int(marked.key) + 1);
  const QFontMetricsF metrics(painter.font(), painter.device());
  return {std::round(box.left() + std::min(from, to)),
          std::round(box.top() + line.ascent() + metrics.underlinePos()), std::round(std::abs(to - from)),
          std::max(1.0, std::round(metrics.lineWidth()))};
}

}  // namespace

void JoinedLettersStyle::drawItemText(QPainter* painter, const QRect& rect, int flags,
                                      const QPalette& palette, bool enabled, const QString& text,
                                      QPalette::ColorRole role) const {
  if (!(flags & Qt::TextShowMnemonic) || !has_joined_letters(text))
    return QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, role);
  const int whole = (flags & ~Qt::TextShowMnemonic) | Qt::TextHideMnemonic;
  QProxyStyle::drawItemText(painter, rect, whole, palette, enabled, text, role);
  const Marked marked = read_marks(text);
  if (marked.key < 0) return;
  const QRectF line = line_under_key(*painter, rect, flags, marked);
  const QColor colour = role == QPalette::NoRole ? painter->pen().color() : palette.color(role);
  painter->fillRect(line, colour);
}

}  // namespace tvx::htmled
