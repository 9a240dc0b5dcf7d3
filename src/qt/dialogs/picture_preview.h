#pragma once

#include <QFrame>

#include "tvx/qt/support/picture_decoder.h"

class QFileDialog;
class QLabel;

namespace tvx::qt {

/// The picture that is about to be chosen in a file dialog, beside its list, with its size in pixels.
class PicturePreview final : public QFrame {
 public:
  /// Puts itself into the dialog, which owns it then.
  explicit PicturePreview(QFileDialog& dialog);

  void show_file(const QString& path);

 private:
  QLabel* picture_;
  QLabel* measure_;
  PictureDecoder decoder_;
  PictureDecoder::Ticket awaited_ = 0;
};

}  // namespace tvx::qt
