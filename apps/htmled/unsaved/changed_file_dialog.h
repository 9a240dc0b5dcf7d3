#pragma once

#include <QDialog>
#include <string_view>

namespace tvx::htmled {

/// Asks what is to become of a document whose file another program has written. Accepted: the file is loaded;
/// rejected: the document stays as it is.
class ChangedFileDialog final : public QDialog {
  Q_OBJECT
 public:
  /// The document's own text and that of the file. `edited`: the document has changes that loading the file
  /// would discard.
  ChangedFileDialog(const QString& name, std::u16string_view document, std::u16string_view file, bool edited,
                    QWidget* parent);
};

}  // namespace tvx::htmled
