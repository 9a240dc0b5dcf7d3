#include "tvx/qt/support/clipboard.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QUrl>

#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

using platform::TransferItem;
namespace targets = platform::targets;

QString name_of(std::string_view target) {
  return QString::fromUtf8(target.data(), static_cast<qsizetype>(target.size()));
}

std::string bytes_of(const QByteArray& bytes) {
  return {bytes.data(), static_cast<std::size_t>(bytes.size())};
}

constexpr const char* qt_image = "application/x-qt-image";

/// An image that no program wrote as a file, as PNG.
std::string png_of(const QMimeData& data) {
  const auto image = qvariant_cast<QImage>(data.imageData());
  if (image.isNull()) return {};
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return bytes_of(bytes);
}

std::string uri_list_of(const QMimeData& data) {
  std::string list;
  for (const QUrl& url : data.urls()) list += bytes_of(url.toEncoded()) + "\r\n";
  return list;
}

}  // namespace

std::vector<std::string> MimeSource::targets() const {
  std::vector<std::string> names;
  if (!data_) return names;
  bool image_file = false;
  for (const QString& format : data_->formats()) {
    names.push_back(format.toStdString());
    image_file = image_file || format == QLatin1String("image/png");
  }
  if (!image_file && data_->hasFormat(QLatin1String(qt_image))) names.emplace_back("image/png");
  return names;
}

std::string MimeSource::read(std::string_view target) const {
  if (!data_) return {};
  const QString name = name_of(target);
  // Qt knows how texts and lists of files are coded on each desktop; all else is bytes.
  if (target == targets::text) return data_->text().toUtf8().toStdString();
  if (target == targets::files && data_->hasUrls()) return uri_list_of(*data_);
  if (data_->hasFormat(name)) {
    if (const QByteArray bytes = data_->data(name); !bytes.isEmpty()) return bytes_of(bytes);
  }
  return target == "image/png" ? png_of(*data_) : std::string();
}

QMimeData* mime_data_of(const platform::TransferItems& items) {
  auto* data = new QMimeData;
  for (const TransferItem& item : items) {
    const QByteArray bytes(item.second.data(), static_cast<qsizetype>(item.second.size()));
    if (item.first == targets::text)
      data->setText(QString::fromUtf8(bytes));
    else
      data->setData(name_of(item.first), bytes);
  }
  return data;
}

Clipboard::Clipboard(QClipboard::Mode mode) : mode_(mode) {
  QObject::connect(QGuiApplication::clipboard(), &QClipboard::changed, &watcher_,
                   [this](QClipboard::Mode changed) {
                     if (changed != mode_) return;
                     ++changes_;
                     tell_changed();
                   });
}

std::vector<std::string> Clipboard::targets() const {
  return MimeSource(QGuiApplication::clipboard()->mimeData(mode_)).targets();
}

std::string Clipboard::read(std::string_view target) const {
  return MimeSource(QGuiApplication::clipboard()->mimeData(mode_)).read(target);
}

void Clipboard::publish(platform::TransferItems items) {
  if (items.empty())
    QGuiApplication::clipboard()->clear(mode_);
  else
    QGuiApplication::clipboard()->setMimeData(mime_data_of(items), mode_);
}

}  // namespace tvx::qt
