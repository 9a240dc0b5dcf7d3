#pragma once

#include <QClipboard>

#include "tvx/platform/clipboard.h"

class QMimeData;

namespace tvx::qt {

/// What Qt holds of a transfer, a clipboard's or a drop's, in the forms of the desktop. The data outlives it.
class MimeSource final : public platform::TransferSource {
 public:
  /// Null: nothing is on offer.
  explicit MimeSource(const QMimeData* data) : data_(data) {}
  std::vector<std::string> targets() const override;
  std::string read(std::string_view target) const override;

 private:
  const QMimeData* data_;
};

/// The forms as Qt wants them; the caller owns the result.
QMimeData* mime_data_of(const platform::TransferItems& items);

/// The desktop's clipboard, or what is selected with the mouse (which a middle press pastes).
class Clipboard final : public platform::Clipboard {
 public:
  explicit Clipboard(QClipboard::Mode mode = QClipboard::Clipboard);
  std::vector<std::string> targets() const override;
  std::string read(std::string_view target) const override;
  void publish(platform::TransferItems items) override;
  std::uint64_t changes() const override { return changes_; }

 private:
  QClipboard::Mode mode_;
  std::uint64_t changes_ = 0;
  QObject watcher_;  // ends the watching with the clipboard
};

}  // namespace tvx::qt
