#include "tvx/qt/support/picture_decoder.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QMutex>
#include <QThreadPool>

namespace tvx::qt {
namespace {

/// More is no picture for a page.
constexpr qint64 most_bytes = qint64{64} << 20;
constexpr qint64 most_pixels = qint64{100} << 20;

QImage decoded(QIODevice& device, QSize most) {
  QImageReader reader(&device);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (qint64(size.width()) * size.height() > most_pixels) return {};
  // A camera may have been held sideways: both sides then stay within the larger one.
  if (size.isValid() && (size.width() > most.width() || size.height() > most.height())) {
    const int side = std::max(most.width(), most.height());
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    reader.setScaledSize(
        size.scaled(turned ? QSize(side, side) : most, Qt::KeepAspectRatio).expandedTo({1, 1}));
  }
  QImage image = reader.read();
  if (image.width() > most.width() || image.height() > most.height())
    image = image.scaled(most, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  return image;
}

}  // namespace

struct PictureDecoder::Work {
  QString path;
  QByteArray bytes;
  QSize most;

  QImage run() {
    if (path.isEmpty()) {
      QBuffer buffer(&bytes);
      return buffer.open(QIODevice::ReadOnly) ? decoded(buffer, most) : QImage();
    }
    // A pipe or a device would be waited for.
    const QFileInfo info(path);
    QFile file(path);
    if (!info.isFile() || info.size() > most_bytes || !file.open(QIODevice::ReadOnly)) return {};
    return decoded(file, most);
  }
};

/// Who is waited for. The threads ask it before they begin, and the loop before it tells.
struct PictureDecoder::Book {
  mutable QMutex mutex;
  Ticket last = 0;
  QHash<Ticket, Done> waiting;

  bool wants(Ticket ticket) const {
    const QMutexLocker lock(&mutex);
    return waiting.contains(ticket);
  }
  Done take(Ticket ticket) {
    const QMutexLocker lock(&mutex);
    return waiting.take(ticket);
  }
};

PictureDecoder::PictureDecoder() : book_(std::make_shared<Book>()) {}

PictureDecoder::~PictureDecoder() {
  const QMutexLocker lock(&book_->mutex);
  book_->waiting.clear();
}

PictureDecoder::Ticket PictureDecoder::enter(std::shared_ptr<Work> work, Done done) {
  Ticket ticket = 0;
  {
    const QMutexLocker lock(&book_->mutex);
    ticket = ++book_->last;
    book_->waiting.insert(ticket, std::move(done));
  }
  QThreadPool::globalInstance()->start([book = book_, ticket, work = std::move(work)] {
    if (!book->wants(ticket)) return;
    const QImage image = work->run();
    QMetaObject::invokeMethod(
        qApp,
        [book, ticket, image] {
          if (const Done waiting = book->take(ticket)) waiting(image);
        },
        Qt::QueuedConnection);
  });
  return ticket;
}

PictureDecoder::Ticket PictureDecoder::decode_file(const QString& path, QSize most, Done done) {
  return enter(std::make_shared<Work>(Work{path, {}, most}), std::move(done));
}

PictureDecoder::Ticket PictureDecoder::decode(const QByteArray& bytes, QSize most, Done done) {
  return enter(std::make_shared<Work>(Work{{}, bytes, most}), std::move(done));
}

void PictureDecoder::cancel(Ticket ticket) { book_->take(ticket); }

qsizetype PictureDecoder::waiting() const {
  const QMutexLocker lock(&book_->mutex);
  return book_->waiting.size();
}

}  // namespace tvx::qt
