#pragma once

#include <QAbstractScrollArea>
#include <QBuffer>
#include <QHash>
#include <QImage>

class QPdfDocument;

namespace tvx::htmled {

/// The sheets of a PDF, one below the other.
class SheetsView final : public QAbstractScrollArea {
  Q_OBJECT
 public:
  explicit SheetsView(QWidget* parent = nullptr);
  ~SheetsView() override;

  /// The sheet in sight stays in sight, where there still is one.
  void set_pdf(const QByteArray& pdf);
  /// In place of sheets, while there are none.
  void set_words(const QString& words);
  int count() const;
  /// From 0: the first one that more than half of is in sight.
  int sheet() const;
  void go_to(int sheet);

  enum class Fit { Nothing, Sheet, Width };
  void set_fit(Fit fit);
  Fit fit() const { return fit_; }
  /// 1 is as large as on paper.
  double zoom() const { return zoom_; }
  void set_zoom(double factor);

 signals:
  /// Another sheet is in sight, or there are others.
  void moved();
  void zoomed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int x, int y) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void lay_out();
  double pixels_per_point() const;
  QSizeF size_of(int sheet) const;  // in pixels
  QImage picture(int sheet);

  QBuffer bytes_;
  QPdfDocument* pdf_;
  QString words_;
  Fit fit_ = Fit::Sheet;
  double zoom_ = 1;
  QList<QRectF> boxes_;  // where the sheets lie
  QHash<int, QImage> pictures_;
};

}  // namespace tvx::htmled
