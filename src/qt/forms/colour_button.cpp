#include "tvx/qt/forms/colour_button.h"

#include <QPainter>
#include <QStyleOption>
#include <QStylePainter>
#include <algorithm>

#include "tvx/dom/style/color.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

constexpr int smallest_line = 14, swatch_margin = 4, check = 3;

bool is_hexadecimal(const QString& text) {
  return std::ranges::all_of(text, [](QChar letter) {
    const char16_t c = letter.toLower().unicode();
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f');
  });
}

// The ground of every picture editor for "nothing is painted here".
void paint_checkered(QPainter& painter, const QRect& box) {
  painter.fillRect(box, Qt::white);
  for (int y = 0; y * check < box.height(); ++y)
    for (int x = y % 2; x * check < box.width(); x += 2)
      painter.fillRect(QRect(box.x() + x * check, box.y() + y * check, check, check) & box,
                       QColor(0xc4, 0xc4, 0xc4));
}

}  // namespace

QColor document_colour(const QString& text) {
  const QString bare = text.trimmed();
  // What needs brackets belongs into a style sheet; an attribute makes another colour of it.
  if (bare.contains(u'(')) return {};
  const bool old_form = bare.size() == 6 && is_hexadecimal(bare);
  const auto found = dom::style::parse_color(from_qt(old_form ? u'#' + bare : bare));
  if (!found || found->alpha < 1) return {};
  return {found->red, found->green, found->blue};
}

ColourButton::ColourButton(QWidget* parent) : QPushButton(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ColourButton::show_colour(const QString& text) {
  const QColor colour = document_colour(text);
  if (colour == colour_) return;
  colour_ = colour;
  update();
}

// As high as the text box that it stands after.
QSize ColourButton::sizeHint() const {
  QStyleOptionFrame box;
  box.initFrom(this);
  box.lineWidth = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &box, this);
  const QSize line(0, std::max(fontMetrics().height(), smallest_line) + 2);
  const int side = style()->sizeFromContents(QStyle::CT_LineEdit, &box, line, this).height();
  return {side, side};
}

void ColourButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  option.text.clear();
  painter.drawControl(QStyle::CE_PushButton, option);
  if (!isEnabled()) painter.setOpacity(0.35);
  const QRect box = rect().adjusted(swatch_margin, swatch_margin, -swatch_margin, -swatch_margin);
  colour_.isValid() ? painter.fillRect(box, colour_) : paint_checkered(painter, box.adjusted(1, 1, -1, -1));
  // A line around it, so that a colour like the button's own is seen to be one.
  QColor line = palette().color(QPalette::WindowText);
  line.setAlphaF(0.45F);
  painter.setPen(line);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.drawRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5));
}

}  // namespace tvx::qt
