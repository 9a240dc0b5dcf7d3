#pragma once

#include <QObject>

class QWidget;

namespace tvx::htmled {

/// Mends what a desktop's colours leave out. Dark ones that name no colour for the hints in empty fields
/// leave the one of light fields, which nobody can read on a dark ground.
class LegibleColours final : public QObject {
 public:
  /// Looks now, and whenever the window hears of other colours.
  explicit LegibleColours(QWidget& window);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tvx::htmled
