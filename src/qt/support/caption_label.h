#pragma once

#include <QLabel>

namespace tvx::qt {

/// The caption of a field, or a line of text: on one line up to a width that keeps forms calm, and on as many
/// as it needs beyond. Its size is a fixed one, so that no layout may take a line away.
class CaptionLabel final : public QLabel {
 public:
  explicit CaptionLabel(QWidget* parent = nullptr);

  void show_caption(const QString& caption);
  /// The field that it names: the keyboard's letter leads there.
  void name_field(QWidget* field);
  /// How many letters of usual width a line takes.
  void set_line(int letters);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }
  bool hasHeightForWidth() const override { return false; }

 private:
  void show_text();

  QString caption_;
  int letters_;
};

}  // namespace tvx::qt
