#include "tvx/qt/source/code_view_face.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>

#include "tvx/qt/support/twips.h"

namespace tvx::qt {
namespace {

/// Room at the numbers' two sides.
constexpr int number_margin = 2, number_gap = 6;

// The desktop's colours by number, in this palette: what is grey there lies half way between text and ground
// here, so that it is quiet and legible in the dark too.
QColor colour_of(std::uint32_t colour, const QPalette& palette) {
  const QColor text = palette.color(QPalette::Text);
  if (colour == source::colour_window_text) return text;
  const QColor ground = palette.color(QPalette::Base);
  const auto middle = [](int a, int b) { return (11 * a + 9 * b) / 20; };
  return {middle(text.red(), ground.red()), middle(text.green(), ground.green()),
          middle(text.blue(), ground.blue())};
}

}  // namespace

class CodeViewFace::Pane final : public QWidget {
 public:
  explicit Pane(CodeViewFace& face) : QWidget(&face), face_(face) {}

 protected:
  void paintEvent(QPaintEvent* event) override { face_.paint_numbers(*event); }
  // The wheel scrolls the lines wherever it is turned.
  void wheelEvent(QWheelEvent* event) override {
    QCoreApplication::sendEvent(face_.text_box()->viewport(), event);
  }

 private:
  CodeViewFace& face_;
};

CodeViewFace::CodeViewFace(source::OrvelCV& code, QWidget* parent)
    : QWidget(parent), code_(code), pane_(new Pane(*this)), box_(this) {
  box_.widget()->setObjectName(QStringLiteral("TextBox1"));
  pane_->setObjectName(QStringLiteral("picLines"));
  pane_->setFont(box_.widget()->font());
  setFocusProxy(box_.widget());
  hide();
  code_.use(&box_);
  code_.add_observer(*this);
  const auto moved = [this] { line_numbers_changed(); };
  box_.set_on_lines_moved(moved);
  connect(box_.widget(), &QPlainTextEdit::updateRequest, this, moved);
}

CodeViewFace::~CodeViewFace() {
  code_.remove_observer(*this);
  code_.use(nullptr);
}

QWidget* CodeViewFace::pane() const { return pane_; }

void CodeViewFace::set_code_font(const QFont& font) {
  box_.set_font(font);
  pane_->setFont(font);
  lay_out();
}

void CodeViewFace::code_view_changed() {
  setVisible(code_.Visible());
  code_.in_front() ? raise() : lower();
}

void CodeViewFace::line_numbers_changed() {
  if (pane_width() != laid_out_width_) lay_out();
  pane_->update();
}

int CodeViewFace::pane_width() const {
  const QFontMetrics metrics(pane_->font());
  const auto digits = QString::number(box_.line_count()).size();
  const int needed = int(digits) * metrics.horizontalAdvance(u'0') + 2 * number_margin + number_gap;
  return std::max(to_pixels(source::OrvelCV::picLines_width), needed);
}

void CodeViewFace::lay_out() {
  laid_out_width_ = pane_width();
  const QRect all = rect();
  const auto place = [&](const QRect& area) { return QStyle::visualRect(layoutDirection(), all, area); };
  pane_->setGeometry(place({0, 0, laid_out_width_, height()}));
  box_.widget()->setGeometry(place({laid_out_width_, 0, width() - laid_out_width_, height()}));
  code_.set_pane({height(), QFontMetrics(pane_->font()).lineSpacing()});
}

void CodeViewFace::resizeEvent(QResizeEvent*) { lay_out(); }

void CodeViewFace::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LayoutDirectionChange) lay_out();
  QWidget::changeEvent(event);
}

// The rows are the code view's; where a line stands is the box's to say: one with letters of another script
// may be higher than the rest.
void CodeViewFace::paint_numbers(QPaintEvent& event) {
  QPainter painter(pane_);
  const QPalette& colours = palette();
  painter.fillRect(event.rect(), colours.color(QPalette::Window));
  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  const int border = mirrored ? 0 : pane_->width() - 1;
  painter.fillRect(QRect(border, 0, 1, pane_->height()), colours.color(QPalette::Mid));
  const QFontMetrics metrics(pane_->font());
  const int left = mirrored ? number_gap : number_margin;
  const int right = pane_->width() - (mirrored ? number_margin : number_gap);
  const source::LinePane lines{box_.widget()->viewport()->height(), code_.pane().line_height};
  for (const source::LineNumber& row : source::line_numbers(code_.line_marks(), lines)) {
    const int top = box_.top_of_line(static_cast<std::size_t>(row.number - 1));
    if (top >= pane_->height()) break;
    painter.setPen(colour_of(row.colour, colours));
    painter.drawText(QRect(left, top, right - left, metrics.lineSpacing()), Qt::AlignRight | Qt::AlignTop,
                     QString::number(row.number));
  }
}

}  // namespace tvx::qt
