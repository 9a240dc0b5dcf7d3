#include "tvx/qt/forms/colour_palette.h"

#include <QAction>
#include <QMenu>
#include <QPainter>
#include <QShortcut>

#include "tvx/qt/forms/colour_button.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"

namespace tvx::qt {
namespace {

constexpr int side = 16;

QPixmap canvas(const QWidget& widget) {
  QPixmap pixmap(QSize(side, side) * widget.devicePixelRatioF());
  pixmap.setDevicePixelRatio(widget.devicePixelRatioF());
  pixmap.fill(Qt::transparent);
  return pixmap;
}

void paint_swatch(QPainter& painter, const QRect& box, const QColor& colour) {
  painter.fillRect(box, colour);
  painter.setPen(QColor(128, 128, 128));
  painter.drawRect(box.adjusted(0, 0, -1, -1));
}

QIcon swatch(const QWidget& widget, const QColor& colour) {
  QPixmap pixmap = canvas(widget);
  QPainter painter(&pixmap);
  paint_swatch(painter, QRect(0, 0, side, side), colour);
  return QIcon(pixmap);
}

/// Four colours of the document: what the button offers.
QIcon palette_icon(const QWidget& widget, const std::vector<std::u16string>& colours) {
  QPixmap pixmap = canvas(widget);
  QPainter painter(&pixmap);
  for (std::size_t i = 0; i < 4; ++i) {
    const QColor colour =
        i < colours.size() ? document_colour(to_qt(colours[i])) : widget.palette().color(QPalette::Base);
    const int half = side / 2;
    paint_swatch(painter, QRect(static_cast<int>(i % 2) * half, static_cast<int>(i / 2) * half, half, half),
                 colour);
  }
  return QIcon(pixmap);
}

void open_palette(const platform::FormControl& control, QLineEdit& box) {
  auto* menu = new QMenu(&box);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName(QStringLiteral("palette"));
  for (const std::u16string& text : control.offered())
    menu->addAction(swatch(box, document_colour(to_qt(text))), to_qt(text), &box,
                    [&box, text] { box.setText(to_qt(text)); });
  menu->popup(box.mapToGlobal(QPoint(0, box.height())));
}

}  // namespace

void add_palette(const platform::FormControl& control, QLineEdit& box) {
  const QString name = translated(u"Colours of this document");
  QAction* action = box.addAction(palette_icon(box, control.offered()), QLineEdit::TrailingPosition);
  action->setText(name);
  action->setToolTip(name);
  const auto open = [&control, &box] { open_palette(control, box); };
  QObject::connect(action, &QAction::triggered, &box, open);
  auto* keys = new QShortcut(QKeySequence(Qt::ALT | Qt::Key_Down), &box, open, Qt::WidgetShortcut);
  keys->setObjectName(QStringLiteral("open palette"));
}

}  // namespace tvx::qt
