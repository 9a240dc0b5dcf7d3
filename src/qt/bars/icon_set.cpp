#include "tvx/qt/bars/icon_set.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <memory>

#include "tvx/qt/support/strings.h"

// Resources of a static library are reached once their initialiser has been called, from outside a namespace.
static void load_icons() { Q_INIT_RESOURCE(icons); }

namespace tvx::qt {
namespace {

constexpr qreal disabled_opacity = 0.35;

QString resource_of(std::u16string_view image_key) {
  return QStringLiteral(":/tvx/icons/%1.svg").arg(to_qt(image_key));
}

QColor tint(QIcon::Mode mode) {
  const QPalette palette = QGuiApplication::palette();
  if (mode == QIcon::Selected) return palette.color(QPalette::Active, QPalette::HighlightedText);
  QColor colour = palette.color(QPalette::Active, QPalette::ButtonText);
  if (mode == QIcon::Disabled) colour.setAlphaF(float(disabled_opacity));
  return colour;
}

/// Draws anew for each size and colour; what was drawn is kept in the application's pixmap cache.
class LineIconEngine final : public QIconEngine {
 public:
  LineIconEngine(QString resource, std::shared_ptr<QSvgRenderer> drawing)
      : resource_(std::move(resource)), drawing_(std::move(drawing)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal scale = painter->device() ? painter->device()->devicePixelRatioF() : 1;
    painter->drawPixmap(rect, scaledPixmap(rect.size() * scale, mode, state, scale));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1);
  }

  /// `size` counts device pixels.
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
    const QColor colour = tint(mode);
    const QString key = QStringLiteral("%1 %2x%3 %4")
                            .arg(resource_)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(colour.name(QColor::HexArgb));
    QPixmap result;
    if (QPixmapCache::find(key, &result)) return result;
    result = draw(size, colour);
    QPixmapCache::insert(key, result);
    return result;
  }

  QIconEngine* clone() const override { return new LineIconEngine(*this); }
  QString key() const override { return QStringLiteral("tvx-line-icon"); }

 private:
  // The lines are drawn opaque and coloured in one go, so that crossing ones don't show through each other.
  QPixmap draw(const QSize& size, const QColor& colour) const {
    QPixmap result(size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    const int side = std::min(size.width(), size.height());
    drawing_->render(&painter, QRectF((size.width() - side) / 2.0, (size.height() - side) / 2.0, side, side));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(result.rect(), colour);
    return result;
  }

  QString resource_;
  std::shared_ptr<QSvgRenderer> drawing_;
};

}  // namespace

QIcon icon(std::u16string_view image_key) {
  load_icons();
  if (image_key.empty()) return {};
  QString resource = resource_of(image_key);
  if (!QFile::exists(resource)) return {};
  auto drawing = std::make_shared<QSvgRenderer>(resource);
  if (!drawing->isValid()) return {};
  return QIcon(new LineIconEngine(std::move(resource), std::move(drawing)));
}

}  // namespace tvx::qt
