#include "qt/toolbar_face.h"

#include <QEvent>
#include <QFile>
#include <QFrame>
#include <QIcon>
#include <QPainter>
#include <QSvgRenderer>
#include <QTimer>
#include <QToolButton>

#include "qt/twips.h"

static void load_icon_resources() { Q_INIT_RESOURCE(icons); }

namespace tvx::qt {
namespace {

// One row is 32 pixels high, 480 twips: below the band in which a holder takes a height of its own.
constexpr int button_size = 28, separator_width = 9, margin = 2;

QString text_of(const std::u16string& text) { return QString::fromStdU16String(text); }

QPixmap draw(QSvgRenderer& drawing, const QColor& colour, int scale) {
  QPixmap pixmap(20 * scale, 20 * scale);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  drawing.render(&painter);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(pixmap.rect(), colour);
  painter.end();
  pixmap.setDevicePixelRatio(scale);
  return pixmap;
}

}  // namespace

QIcon tinted_icon(const QString& name, const QColor& colour, const QColor& disabled) {
  load_icon_resources();
  const QString path = QStringLiteral(":/tvx/icons/%1.svg").arg(name);
  if (name.isEmpty() || !QFile::exists(path)) return {};
  QSvgRenderer drawing(path);
  QIcon icon;
  for (const int scale : {1, 2}) {
    icon.addPixmap(draw(drawing, colour, scale), QIcon::Normal);
    icon.addPixmap(draw(drawing, disabled, scale), QIcon::Disabled);
  }
  return icon;
}

ToolbarFace::ToolbarFace(platform::Toolbar& toolbar, QWidget* parent) : QWidget(parent), toolbar_(toolbar) {
  setObjectName(text_of(toolbar.Name()));
  setAutoFillBackground(true);
  toolbar_.add_observer(*this);
  build();
}

ToolbarFace::~ToolbarFace() { toolbar_.remove_observer(*this); }

void ToolbarFace::build() {
  qDeleteAll(widgets_);
  widgets_.clear();
  for (int i = 1; i <= toolbar_.Count(); ++i) {
    platform::Button& button = toolbar_.Item(i);
    widgets_.insert(i, make(button));
    show_state(button);
  }
  arrange_later();
}

QWidget* ToolbarFace::make(platform::Button& button) {
  if (button.Style() == platform::ButtonStyle::Separator) {
    auto* line = new QFrame(this);
    line->setFrameShape(QFrame::VLine);
    line->setForegroundRole(QPalette::Mid);
    line->setFrameShadow(QFrame::Plain);
    return line;
  }
  auto* face = new QToolButton(this);
  face->setAutoRaise(true);
  // A click leaves the focus, and with it the caret, in the document.
  face->setFocusPolicy(Qt::NoFocus);
  face->setIconSize({20, 20});
  connect(face, &QToolButton::clicked, this, [this, index = button.Index()] {
    if (index <= toolbar_.Count()) toolbar_.press(toolbar_.Item(index));
  });
  return face;
}

void ToolbarFace::show_state(platform::Button& button) {
  QWidget* widget = widgets_.value(button.Index());
  if (!widget) return;
  widget->setVisible(button.Visible());
  auto* face = qobject_cast<QToolButton*>(widget);
  if (!face) return;
  const QColor disabled = palette().color(QPalette::Disabled, QPalette::ButtonText);
  face->setIcon(tinted_icon(text_of(button.Image()), palette().color(QPalette::ButtonText), disabled));
  face->setText(text_of(button.Caption()));
  face->setToolButtonStyle(face->icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
  face->setToolTip(text_of(button.ToolTipText()));
  face->setAccessibleName(text_of(button.ToolTipText().empty() ? button.Key() : button.ToolTipText()));
  face->setEnabled(button.Enabled());
  face->setCheckable(button.Value() == 1);
  face->setChecked(button.Value() == 1);
}

/// Places the visible buttons if `place`, and gives the height that they take.
int ToolbarFace::arrange(int width, bool place) {
  int x = margin, y = margin, shown = 0;
  for (int i = 1; i <= toolbar_.Count(); ++i) {
    platform::Button& button = toolbar_.Item(i);
    QWidget* widget = widgets_.value(i);
    if (!button.Visible() || !widget) continue;
    const bool is_separator = button.Style() == platform::ButtonStyle::Separator;
    auto* face = qobject_cast<QToolButton*>(widget);
    const bool has_text = face && face->toolButtonStyle() == Qt::ToolButtonTextOnly;
    const int wide = is_separator ? separator_width : has_text ? face->sizeHint().width() : button_size;
    if (x + wide > width - margin && shown > 0) {
      x = margin;
      y += button_size;
      shown = 0;
    }
    if (place) {
      widget->setGeometry(is_separator ? QRect(x + wide / 2, y + 5, 1, button_size - 10)
                                       : QRect(x, y, wide, button_size));
    }
    x += wide;
    ++shown;
  }
  return y + button_size + margin;
}

int ToolbarFace::measure(int width) {
  const int height = arrange(width, false);
  toolbar_.set_measured_height(to_twips(height));
  return height;
}

void ToolbarFace::arrange_later() {
  if (std::exchange(arranging_, true)) return;
  QTimer::singleShot(0, this, [this] {
    arranging_ = false;
    arrange(width(), true);
  });
}

void ToolbarFace::resizeEvent(QResizeEvent*) { arrange(width(), true); }

void ToolbarFace::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) {
    for (int i = 1; i <= toolbar_.Count(); ++i) show_state(toolbar_.Item(i));
  }
  QWidget::changeEvent(event);
}

void ToolbarFace::buttons_replaced(platform::Toolbar&) { build(); }

void ToolbarFace::button_changed(platform::Toolbar&, platform::Button& button) {
  show_state(button);
  arrange_later();
}

void ToolbarFace::refreshed(platform::Toolbar&) { update(); }

}  // namespace tvx::qt
