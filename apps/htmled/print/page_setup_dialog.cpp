#include "htmled/print/page_setup_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

namespace tvx::htmled {
namespace {

using qt::PageSetup;
using Text = PageSetup::Text;

constexpr QPageSize::PageSizeId papers[] = {
    QPageSize::A3, QPageSize::A4,     QPageSize::A5,    QPageSize::A6,        QPageSize::B4,
    QPageSize::B5, QPageSize::Letter, QPageSize::Legal, QPageSize::Executive, QPageSize::Tabloid};
constexpr double least_inside = 30;  // millimetres between two margins
constexpr double millimetres_per_inch = 25.4;

bool measures_in_inches() { return QLocale().measurementSystem() == QLocale::ImperialUSSystem; }
double shown(double millimetres) {
  return measures_in_inches() ? millimetres / millimetres_per_inch : millimetres;
}
double meant(double shown) { return measures_in_inches() ? shown * millimetres_per_inch : shown; }

QVBoxLayout* column_in(QWidget* widget) { return new QVBoxLayout(widget); }

}  // namespace

PageSetupDialog::PageSetupDialog(const PageSetup& setup, QWidget* parent) : QDialog(parent), before_(setup) {
  setObjectName(QStringLiteral("page_setup"));
  setWindowTitle(tr("Page setup"));
  auto* upper = new QHBoxLayout;
  upper->addWidget(make_paper(), 1);
  upper->addWidget(make_margins(), 1);
  header_ = make_line(tr("&Header"), QStringLiteral("header"), setup.header);
  footer_ = make_line(tr("&Footer"), QStringLiteral("footer"), setup.footer);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  QVBoxLayout* column = column_in(this);
  column->addLayout(upper);
  column->addWidget(header_.box);
  column->addWidget(footer_.box);
  column->addWidget(buttons);
  limit_margins();
  size_->setFocus();
}

QWidget* PageSetupDialog::make_paper() {
  auto* box = new QGroupBox(tr("Paper"));
  auto* form = new QFormLayout(box);
  size_ = new QComboBox;
  size_->setObjectName(QStringLiteral("paper"));
  for (const QPageSize::PageSizeId id : papers) size_->addItem(QPageSize::name(id), id);
  const QPageSize::PageSizeId present = before_.layout.pageSize().id();
  if (size_->findData(present) < 0) size_->addItem(before_.layout.pageSize().name(), present);
  size_->setCurrentIndex(size_->findData(present));
  form->addRow(tr("&Size:"), size_);
  portrait_ = new QRadioButton(tr("&Portrait"));
  landscape_ = new QRadioButton(tr("L&andscape"));
  portrait_->setObjectName(QStringLiteral("portrait"));
  landscape_->setObjectName(QStringLiteral("landscape"));
  const bool is_landscape = before_.layout.orientation() == QPageLayout::Landscape;
  (is_landscape ? landscape_ : portrait_)->setChecked(true);
  form->addRow(portrait_);
  form->addRow(landscape_);
  connect(size_, &QComboBox::currentIndexChanged, this, &PageSetupDialog::limit_margins);
  connect(landscape_, &QRadioButton::toggled, this, &PageSetupDialog::limit_margins);
  return box;
}

QWidget* PageSetupDialog::make_margins() {
  auto* box = new QGroupBox(tr("Margins"));
  auto* form = new QFormLayout(box);
  const QMarginsF before = before_.layout.margins(QPageLayout::Millimeter);
  const auto add = [&](std::size_t side, const QString& label, const char* name, double millimetres) {
    auto* field = new QDoubleSpinBox;
    field->setObjectName(QString::fromLatin1(name));
    field->setDecimals(measures_in_inches() ? 2 : 0);
    field->setSingleStep(measures_in_inches() ? 0.1 : 1);
    field->setSuffix(measures_in_inches() ? QStringLiteral(" in") : QStringLiteral(" mm"));
    field->setMaximum(1000);
    field->setValue(shown(millimetres));
    form->addRow(label, field);
    margins_[side] = field;
    connect(field, &QDoubleSpinBox::valueChanged, this, &PageSetupDialog::limit_margins);
  };
  add(1, tr("&Top:"), "top", before.top());
  add(3, tr("&Bottom:"), "bottom", before.bottom());
  add(0, tr("&Left:"), "left", before.left());
  add(2, tr("&Right:"), "right", before.right());
  return box;
}

PageSetupDialog::LineFields PageSetupDialog::make_line(const QString& title, const QString& name,
                                                       const PageSetup::Line& line) {
  LineFields fields;
  fields.box = new QGroupBox(title);
  fields.box->setObjectName(name);
  fields.box->setCheckable(true);
  fields.box->setChecked(line.is_shown);
  auto* grid = new QGridLayout(fields.box);
  int at = 0;
  const auto add = [&](const QString& label, Text chosen, const char* side) {
    auto* above = new QLabel(label);
    QComboBox* field = make_text(chosen, name + u'_' + QString::fromLatin1(side));
    above->setBuddy(field);
    grid->addWidget(above, 0, at);
    grid->addWidget(field, 1, at);
    grid->setColumnStretch(at++, 1);
    return field;
  };
  // Paper knows no direction of a language: the left one stands on the left.
  fields.left = add(tr("On the left"), line.left, "left");
  fields.middle = add(tr("In the middle"), line.middle, "middle");
  fields.right = add(tr("On the right"), line.right, "right");
  fields.box->setLayoutDirection(Qt::LeftToRight);
  return fields;
}

QComboBox* PageSetupDialog::make_text(Text chosen, const QString& name) {
  auto* box = new QComboBox;
  box->setObjectName(name);
  box->setLayoutDirection(layoutDirection());
  const auto add = [box](const QString& word, Text text) { box->addItem(word, static_cast<int>(text)); };
  add(tr("Nothing"), Text::Nothing);
  add(tr("Title"), Text::Title);
  add(tr("File name"), Text::FileName);
  add(tr("Page"), Text::Page);
  add(tr("Page of pages"), Text::PageOfPages);
  add(tr("Date"), Text::Date);
  box->setCurrentIndex(box->findData(static_cast<int>(chosen)));
  return box;
}

QPageLayout PageSetupDialog::chosen_paper() const {
  const QPageSize size{static_cast<QPageSize::PageSizeId>(size_->currentData().toInt())};
  const auto orientation = landscape_->isChecked() ? QPageLayout::Landscape : QPageLayout::Portrait;
  const bool is_own = size.id() == QPageSize::Custom;
  return {is_own ? before_.layout.pageSize() : size, orientation, QMarginsF(), QPageLayout::Millimeter};
}

void PageSetupDialog::limit_margins() {
  if (!margins_[2] || !size_) return;
  const QSizeF paper = chosen_paper().fullRect(QPageLayout::Millimeter).size();
  const auto limit = [&](std::size_t side, std::size_t other, double length) {
    const double most = length - least_inside - meant(margins_[other]->value());
    margins_[side]->setMaximum(std::max(0.0, shown(most)));
  };
  limit(0, 2, paper.width());
  limit(2, 0, paper.width());
  limit(1, 3, paper.height());
  limit(3, 1, paper.height());
}

PageSetup PageSetupDialog::setup() const {
  PageSetup setup = before_;
  setup.layout = chosen_paper();
  const auto side = [this](std::size_t at) { return meant(margins_[at]->value()); };
  setup.layout.setMargins({side(0), side(1), side(2), side(3)});
  const auto line = [](const LineFields& fields) {
    const auto text = [](const QComboBox* box) { return static_cast<Text>(box->currentData().toInt()); };
    return PageSetup::Line{fields.box->isChecked(), text(fields.left), text(fields.middle),
                           text(fields.right)};
  };
  setup.header = line(header_);
  setup.footer = line(footer_);
  return setup;
}

}  // namespace tvx::htmled
