#pragma once

#include <QPoint>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>

class QDialog;

namespace tvx::qt {

/// Keeps what is selected in the page in sight while a dialog asks about it. The dialog stands at the page's
/// lower edge, and the page hears how much of it is covered, wherever the user moves the dialog.
class PageSight final : public QObject {
 public:
  /// How much is covered, from the page's upper and its lower edge on; the greater part is left open.
  using Cover = std::function<void(int top, int bottom)>;
  PageSight(QWidget& page, Cover cover);

  /// From before it is shown until it goes. The next one stands where the user has moved this one.
  void attend(QDialog& dialog);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  /// The lower left corner of a dialog of that size.
  QPoint usual_place(QSize size) const;
  void place(QDialog& dialog);
  void tell_covered(const QDialog& dialog) const;
  void note_place(const QDialog& dialog);

  QPointer<QWidget> page_;
  Cover cover_;
  QTimer uncovered_;  // the next dialog mostly comes at once: the page needn't move back and forth
  QPoint placed_;
  std::optional<QPoint> chosen_;  // by the user; from the page's left upper corner
};

}  // namespace tvx::qt
