#include "htmled/help/pictures_in_text.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextDocument>
#include <QUrl>

namespace tvx::htmled {
namespace {

constexpr int most_pictures = 16;  // of the page that is read

}  // namespace

PicturesInText::PicturesInText(QTextDocument& document) : QObject(&document), decoded_(most_pictures) {
  document.documentLayout()->registerHandler(QTextFormat::ImageObject, this);
}

QImage PicturesInText::picture(const QTextDocument& document, const QTextFormat& format) {
  const QString name = format.toImageFormat().name();
  if (const QImage* known = decoded_.object(name)) return *known;
  const QVariant found = document.resource(QTextDocument::ImageResource, QUrl(name));
  const QImage image =
      found.typeId() == QMetaType::QByteArray ? QImage::fromData(found.toByteArray()) : found.value<QImage>();
  decoded_.insert(name, new QImage(image));
  return image;
}

QSizeF PicturesInText::intrinsicSize(QTextDocument* document, int, const QTextFormat& format) {
  const QSizeF size = picture(*document, format).size();
  const double room = document->textWidth() - 2 * document->documentMargin();
  return room > 0 && size.width() > room ? size * (room / size.width()) : size;
}

void PicturesInText::drawObject(QPainter* painter, const QRectF& where, QTextDocument* document, int,
                                const QTextFormat& format) {
  painter->save();
  painter->setRenderHint(QPainter::SmoothPixmapTransform);
  painter->drawImage(where, picture(*document, format));
  painter->restore();
}

}  // namespace tvx::htmled
