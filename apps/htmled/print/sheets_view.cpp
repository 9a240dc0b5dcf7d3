#include "htmled/print/sheets_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPdfDocument>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace tvx::htmled {
namespace {

constexpr double gap = 16, least_zoom = 0.1, most_zoom = 5, zoom_step = 1.25;
constexpr int most_pictures = 8;

}  // namespace

SheetsView::SheetsView(QWidget* parent) : QAbstractScrollArea(parent), pdf_(new QPdfDocument(this)) {
  setObjectName(QStringLiteral("sheets"));
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setBackgroundRole(QPalette::Dark);
  verticalScrollBar()->setSingleStep(40);
  horizontalScrollBar()->setSingleStep(40);
}

SheetsView::~SheetsView() { pdf_->close(); }

int SheetsView::count() const { return pdf_->pageCount(); }

void SheetsView::set_pdf(const QByteArray& pdf) {
  const int before = count() > 0 ? sheet() : 0;
  pdf_->close();
  bytes_.close();
  bytes_.setData(pdf);
  bytes_.open(QIODevice::ReadOnly);
  if (!pdf.isEmpty()) pdf_->load(&bytes_);
  pictures_.clear();
  lay_out();
  if (count() > 0) go_to(std::min(before, count() - 1));
  emit moved();
}

void SheetsView::set_words(const QString& words) {
  words_ = words;
  setAccessibleDescription(words);
  viewport()->update();
}

// --- where they lie ---

double SheetsView::pixels_per_point() const { return logicalDpiX() / 72.0; }

QSizeF SheetsView::size_of(int sheet) const {
  return pdf_->pagePointSize(sheet) * pixels_per_point() * zoom_;
}

void SheetsView::lay_out() {
  QSizeF widest(1, 1);
  for (int i = 0; i < count(); ++i) widest = widest.expandedTo(pdf_->pagePointSize(i));
  const QSizeF room = QSizeF(viewport()->size()) - QSizeF(2 * gap, 2 * gap);
  const double across = room.width() / (widest.width() * pixels_per_point());
  const double down = room.height() / (widest.height() * pixels_per_point());
  const double before = zoom_;
  if (count() > 0 && fit_ == Fit::Width) zoom_ = std::clamp(across, least_zoom, most_zoom);
  if (count() > 0 && fit_ == Fit::Sheet) zoom_ = std::clamp(std::min(across, down), least_zoom, most_zoom);
  if (zoom_ != before) pictures_.clear();
  boxes_.clear();
  double top = gap;
  const double width =
      std::max<double>(viewport()->width(), widest.width() * pixels_per_point() * zoom_ + 2 * gap);
  for (int i = 0; i < count(); ++i) {
    const QSizeF size = size_of(i);
    boxes_.append(
        QRectF(std::round((width - size.width()) / 2), std::round(top), size.width(), size.height()));
    top += size.height() + gap;
  }
  verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(top) - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  horizontalScrollBar()->setRange(0, std::max(0, static_cast<int>(width) - viewport()->width()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  viewport()->update();
  if (zoom_ != before) emit zoomed();
}

int SheetsView::sheet() const {
  const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
  int found = 0;
  for (int i = 0; i < boxes_.size(); ++i)
    if (boxes_[i].top() <= middle) found = i;
  return found;
}

void SheetsView::go_to(int sheet) {
  if (sheet < 0 || sheet >= boxes_.size()) return;
  verticalScrollBar()->setValue(static_cast<int>(boxes_[sheet].top() - gap));
}

void SheetsView::set_fit(Fit fit) {
  const int before = sheet();
  fit_ = fit;
  lay_out();
  go_to(before);
  emit zoomed();
}

void SheetsView::set_zoom(double factor) {
  const int before = sheet();
  fit_ = Fit::Nothing;
  zoom_ = std::clamp(factor, least_zoom, most_zoom);
  pictures_.clear();
  lay_out();
  go_to(before);
  emit zoomed();
}

// --- drawing ---

QImage SheetsView::picture(int sheet) {
  if (const auto found = pictures_.constFind(sheet); found != pictures_.constEnd()) return *found;
  if (pictures_.size() >= most_pictures) pictures_.clear();
  const double ratio = devicePixelRatioF();
  QImage image = pdf_->render(sheet, (size_of(sheet) * ratio).toSize());
  QImage on_paper(image.size(), QImage::Format_RGB32);
  on_paper.fill(Qt::white);
  QPainter(&on_paper).drawImage(0, 0, image);
  on_paper.setDevicePixelRatio(ratio);
  pictures_.insert(sheet, on_paper);
  return on_paper;
}

void SheetsView::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  if (boxes_.isEmpty()) {
    painter.setPen(palette().color(QPalette::BrightText));
    painter.drawText(viewport()->rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap,
                     words_);
    return;
  }
  const QPointF scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
  for (int i = 0; i < boxes_.size(); ++i) {
    const QRectF box = boxes_[i].translated(-scrolled);
    if (!box.intersects(viewport()->rect())) continue;
    painter.fillRect(box.translated(3, 3), QColor(0, 0, 0, 60));
    painter.drawImage(box.topLeft(), picture(i));
  }
}

void SheetsView::resizeEvent(QResizeEvent*) {
  const int before = sheet();
  lay_out();
  if (fit_ != Fit::Nothing) go_to(before);
}

void SheetsView::scrollContentsBy(int, int) {
  viewport()->update();
  emit moved();
}

void SheetsView::wheelEvent(QWheelEvent* event) {
  if (!(event->modifiers() & Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  if (const int turn = event->angleDelta().y()) set_zoom(turn > 0 ? zoom_ * zoom_step : zoom_ / zoom_step);
}

void SheetsView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_PageDown: return go_to(std::min(sheet() + 1, count() - 1));
    case Qt::Key_PageUp: return go_to(std::max(sheet() - 1, 0));
    case Qt::Key_Home: return go_to(0);
    case Qt::Key_End: return go_to(count() - 1);
    case Qt::Key_Plus: return set_zoom(zoom_ * zoom_step);
    case Qt::Key_Minus: return set_zoom(zoom_ / zoom_step);
    default: QAbstractScrollArea::keyPressEvent(event);
  }
}

}  // namespace tvx::htmled
