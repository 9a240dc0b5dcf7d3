#include "htmled/properties/colour_field.h"

#include <QColorDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QToolButton>

namespace tvx::htmled {

ColourField::ColourField(const QString& name, QWidget* parent)
    : QWidget(parent), line_(new QLineEdit(this)), button_(new QToolButton(this)) {
  line_->setObjectName(name);
  line_->setClearButtonEnabled(true);
  line_->setPlaceholderText(tr("Not set"));
  button_->setToolTip(tr("Choose a colour"));
  button_->setAccessibleName(tr("Choose a colour"));
  setFocusProxy(line_);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(line_, 1);
  layout->addWidget(button_);
  connect(line_, &QLineEdit::textChanged, this, [this] {
    show_colour();
    emit changed();
  });
  connect(button_, &QToolButton::clicked, this, &ColourField::ask);
  show_colour();
}

QString ColourField::text() const { return line_->text().trimmed(); }
void ColourField::set_text(const QString& text) { line_->setText(text); }

void ColourField::show_colour() {
  const int side = button_->iconSize().width();
  QPixmap picture(side, side);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  const QColor colour(text());
  painter.setPen(palette().color(QPalette::Mid));
  if (colour.isValid()) painter.setBrush(colour);
  painter.drawRect(1, 1, side - 3, side - 3);
  painter.end();
  button_->setIcon(picture);
}

void ColourField::ask() {
  const QColor now(text());
  const QColor chosen = QColorDialog::getColor(now.isValid() ? now : QColor(Qt::white), this);
  if (chosen.isValid()) set_text(chosen.name());
}

}  // namespace tvx::htmled
