#include "tvx/qt/dialogs/picture_preview.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

#include "tvx/platform/pictures/picture_size.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

constexpr QSize largest(240, 240);

/// "640 × 480 · 12 kB"
QString measure_of(const QString& path) {
  const auto size = platform::picture_size_of_file(from_qt(path));
  if (!size) return {};
  const QLocale locale;
  return QStringLiteral("%1 × %2 · %3")
      .arg(locale.toString(size->width), locale.toString(size->height),
           locale.formattedDataSize(QFileInfo(path).size(), 0, QLocale::DataSizeSIFormat));
}

}  // namespace

PicturePreview::PicturePreview(QFileDialog& dialog)
    : QFrame(&dialog), picture_(new QLabel(this)), measure_(new QLabel(this)) {
  setObjectName(QStringLiteral("picture_preview"));
  setFrameShape(QFrame::StyledPanel);
  picture_->setObjectName(QStringLiteral("picture"));
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setFixedSize(largest);
  measure_->setObjectName(QStringLiteral("measure"));
  measure_->setAlignment(Qt::AlignCenter);
  auto* column = new QVBoxLayout(this);
  column->addStretch();
  column->addWidget(picture_);
  column->addWidget(measure_);
  column->addStretch();
  // Beside the lists, from the top to the buttons.
  if (auto* grid = qobject_cast<QGridLayout*>(dialog.layout()))
    grid->addWidget(this, 0, grid->columnCount(), grid->rowCount(), 1);
  dialog.resize(dialog.size() + QSize(sizeHint().width(), 0));
  QObject::connect(&dialog, &QFileDialog::currentChanged, this, &PicturePreview::show_file);
}

void PicturePreview::show_file(const QString& path) {
  decoder_.cancel(awaited_);
  picture_->clear();
  const bool is_file = QFileInfo(path).isFile();
  measure_->setText(is_file ? measure_of(path) : QString());
  if (!is_file) return;
  const qreal scale = devicePixelRatioF();
  awaited_ = decoder_.decode_file(path, largest * scale, [this, scale](const QImage& image) {
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(scale);
    picture_->setPixmap(pixmap);
  });
}

}  // namespace tvx::qt
