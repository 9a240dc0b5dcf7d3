#include "htmled/format/colour_button.h"

#include <QAction>
#include <QColorDialog>
#include <QEvent>
#include <QGridLayout>
#include <QMenu>
#include <QPainter>
#include <QWidgetAction>
#include <span>

#include "tvx/qt/bars/icon_set.h"

namespace tvx::htmled {
namespace {

constexpr int columns = 8, swatch = 22, side = 20;

constexpr QRgb text_colours[] = {0x000000, 0x434343, 0x666666, 0x999999, 0xb7b7b7, 0xcccccc, 0xefefef,
                                 0xffffff, 0x980000, 0xff0000, 0xff9900, 0xffd000, 0x00a000, 0x00b0c0,
                                 0x1a56db, 0x7a1fa2, 0x5b0f00, 0x990000, 0xb45f06, 0x7f6000, 0x274e13,
                                 0x0c343d, 0x1c4587, 0x4c1130, 0xe6b8af, 0xf4cccc, 0xfce5cd, 0xfff2cc,
                                 0xd9ead3, 0xd0e0e3, 0xcfe2f3, 0xead1dc};
constexpr QRgb highlight_colours[] = {0xffff00, 0x7cfc7c, 0x7fffff, 0xffb0ff, 0xffc966, 0xff9999,
                                      0xb0d0ff, 0xd0d0d0, 0xfff2cc, 0xd9ead3, 0xd0e0e3, 0xead1dc,
                                      0xfce5cd, 0xf4cccc, 0xcfe2f3, 0xefefef};

QIcon swatch_icon(const QColor& colour, const QPalette& palette, qreal scale) {
  QPixmap picture(QSize(swatch, swatch) * scale);
  picture.setDevicePixelRatio(scale);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor edge = palette.color(QPalette::WindowText);
  edge.setAlphaF(0.35F);
  painter.setPen(edge);
  painter.setBrush(colour);
  painter.drawRoundedRect(QRectF(2.5, 2.5, swatch - 5, swatch - 5), 3, 3);
  return QIcon(picture);
}

}  // namespace

ColourButton::ColourButton(Of of, QWidget* parent)
    : QToolButton(parent), of_(of), last_(of == Of::Text ? QColor(0xc0, 0, 0) : QColor(0xff, 0xff, 0)) {
  setPopupMode(QToolButton::MenuButtonPopup);
  setIconSize({side, side});
  setAutoRaise(true);
  setFocusPolicy(Qt::TabFocus);
  setMenu(new QMenu(this));
  connect(menu(), &QMenu::aboutToShow, this, &ColourButton::fill_menu);
  connect(this, &QToolButton::clicked, this, [this] { emit chosen(last_); });
  setIcon(drawn());
}

void ColourButton::show_words() {
  setToolTip(of_ == Of::Text ? tr("Text colour") : tr("Highlight"));
  setAccessibleName(toolTip());
}

void ColourButton::show_colour(const QColor& colour) { shown_ = colour; }

void ColourButton::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) setIcon(drawn());
  QToolButton::changeEvent(event);
}

// The letter or the marker, and under it the colour that a press gives.
QIcon ColourButton::drawn() const {
  const qreal scale = devicePixelRatioF();
  QPixmap picture(QSize(side, side) * scale);
  picture.setDevicePixelRatio(scale);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  qt::icon(of_ == Of::Text ? u"textcolour" : u"highlight").paint(&painter, QRect(0, 0, side, side - 3));
  painter.setPen(Qt::NoPen);
  painter.setBrush(last_);
  painter.drawRoundedRect(QRectF(2, side - 4.5, side - 4, 4), 1, 1);
  return QIcon(picture);
}

void ColourButton::choose(const QColor& colour) {
  menu()->close();
  if (colour.isValid()) {
    last_ = colour;
    setIcon(drawn());
  }
  emit chosen(colour);
}

void ColourButton::fill_menu() {
  menu()->clear();
  auto* field = new QWidget;
  auto* grid = new QGridLayout(field);
  grid->setContentsMargins(6, 6, 6, 6);
  grid->setSpacing(1);
  const auto add = [&](std::span<const QRgb> colours) {
    for (std::size_t i = 0; i < colours.size(); ++i) {
      const QColor colour(colours[i]);
      auto* button = new QToolButton;
      button->setAutoRaise(true);
      button->setIconSize({swatch, swatch});
      button->setIcon(swatch_icon(colour, palette(), devicePixelRatioF()));
      button->setToolTip(colour.name());
      button->setAccessibleName(colour.name());
      button->setCheckable(true);
      button->setChecked(colour == shown_);
      connect(button, &QToolButton::clicked, this, [this, colour] { choose(colour); });
      grid->addWidget(button, int(i) / columns, int(i) % columns);
    }
  };
  of_ == Of::Text ? add(text_colours) : add(highlight_colours);
  auto* holder = new QWidgetAction(menu());
  holder->setDefaultWidget(field);
  if (of_ == Of::Highlight)
    connect(menu()->addAction(tr("&None")), &QAction::triggered, this, [this] { choose(QColor()); });
  menu()->addAction(holder);
  connect(menu()->addAction(tr("&More colours…")), &QAction::triggered, this, &ColourButton::ask);
}

void ColourButton::ask() {
  const QColor colour = QColorDialog::getColor(shown_.isValid() ? shown_ : last_, this, toolTip());
  if (colour.isValid()) choose(colour);
}

}  // namespace tvx::htmled
