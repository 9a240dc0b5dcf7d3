#pragma once

#include <QProxyStyle>

namespace tvx::htmled {

/// The desktop's style, which draws the letter of an access key underlined. The toolkit cuts the text there
/// to do so: letters that are joined, as in Arabic, come apart, and the text gets wider than it was measured
/// and loses its end. Here such a text is drawn whole, and the line under it.
class JoinedLettersStyle final : public QProxyStyle {
 public:
  void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                    const QString& text, QPalette::ColorRole role) const override;
};

}  // namespace tvx::htmled
