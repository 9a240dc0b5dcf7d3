#pragma once

#include <QCache>
#include <QImage>
#include <QObject>
#include <QTextObjectInterface>

class QTextDocument;

namespace tvx::htmled {

/// Pictures of a text that are never wider than the text is, and smooth where they are made smaller.
class PicturesInText final : public QObject, public QTextObjectInterface {
  Q_OBJECT
  Q_INTERFACES(QTextObjectInterface)
 public:
  /// Belongs to the document.
  explicit PicturesInText(QTextDocument& document);

 private:
  QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
  void drawObject(QPainter* painter, const QRectF& where, QTextDocument* document, int position,
                  const QTextFormat& format) override;
  QImage picture(const QTextDocument& document, const QTextFormat& format);

  QCache<QString, QImage> decoded_;  // a text is laid out again at each width
};

}  // namespace tvx::htmled
