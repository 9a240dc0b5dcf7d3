#include "htmled/properties/sheets_field.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <utility>

#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

QString label_of(const files::PageProperties::Sheet& sheet) {
  const QString first = qt::to_qt(sheet.text).trimmed().section(u'\n', 0, 0);
  if (!sheet.linked) return SheetsField::tr("In the page: %1").arg(first);
  return first.isEmpty() ? SheetsField::tr("A linked sheet") : first;
}

}  // namespace

SheetsField::SheetsField(QWidget* parent)
    : QWidget(parent),
      list_(new QListWidget(this)),
      kind_(new QLabel(this)),
      text_(new QPlainTextEdit(this)) {
  list_->setObjectName(QStringLiteral("sheets"));
  list_->setMaximumHeight(110);
  text_->setObjectName(QStringLiteral("sheet_text"));
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setTabChangesFocus(true);
  kind_->setBuddy(text_);
  link_ = add_button(tr("&Link a sheet"), "link_sheet");
  embed_ = add_button(tr("&Write one here"), "embed_sheet");
  remove_ = add_button(tr("&Remove"), "remove_sheet");
  up_ = add_button(tr("Move &up"), "sheet_up");
  down_ = add_button(tr("Move &down"), "sheet_down");
  auto* buttons = new QVBoxLayout;
  for (QPushButton* each : {link_, embed_, remove_, up_, down_}) buttons->addWidget(each);
  buttons->addStretch();
  auto* upper = new QHBoxLayout;
  upper->addWidget(list_, 1);
  upper->addLayout(buttons);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(upper);
  layout->addWidget(kind_);
  layout->addWidget(text_, 1);
  connect(link_, &QPushButton::clicked, this, [this] { add(true); });
  connect(embed_, &QPushButton::clicked, this, [this] { add(false); });
  connect(remove_, &QPushButton::clicked, this, &SheetsField::remove);
  connect(up_, &QPushButton::clicked, this, [this] { move(-1); });
  connect(down_, &QPushButton::clicked, this, [this] { move(1); });
  connect(list_, &QListWidget::currentRowChanged, this, &SheetsField::show_text);
  connect(text_, &QPlainTextEdit::textChanged, this, &SheetsField::take_text);
  show_text();
}

QPushButton* SheetsField::add_button(const QString& text, const char* name) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::fromLatin1(name));
  return button;
}

void SheetsField::set_sheets(std::vector<files::PageProperties::Sheet> sheets) {
  sheets_ = std::move(sheets);
  show_list(0);
}

void SheetsField::add(bool linked) {
  sheets_.push_back({linked, {}, files::PageProperties::Sheet::none});
  show_list(int(sheets_.size()) - 1);
  text_->setFocus();
  emit changed();
}

void SheetsField::remove() {
  const int row = list_->currentRow();
  if (row < 0) return;
  sheets_.erase(sheets_.begin() + row);
  show_list(row);
  emit changed();
}

void SheetsField::move(int by) {
  const int row = list_->currentRow(), other = row + by;
  if (row < 0 || other < 0 || other >= int(sheets_.size())) return;
  std::swap(sheets_[std::size_t(row)], sheets_[std::size_t(other)]);
  show_list(other);
  emit changed();
}

void SheetsField::show_list(int row) {
  {
    const QScopedValueRollback<bool> showing(showing_, true);
    list_->clear();
    for (const auto& sheet : sheets_) list_->addItem(label_of(sheet));
    list_->setCurrentRow(std::min(row, int(sheets_.size()) - 1));
  }
  show_text();
}

void SheetsField::show_text() {
  if (showing_) return;
  const QScopedValueRollback<bool> showing(showing_, true);
  const int row = list_->currentRow();
  const bool some = row >= 0;
  const bool linked = some && sheets_[std::size_t(row)].linked;
  kind_->setText(linked ? tr("&Address of the sheet:") : tr("Rul&es of the sheet:"));
  text_->setPlainText(some ? qt::to_qt(sheets_[std::size_t(row)].text) : QString());
  text_->setEnabled(some);
  remove_->setEnabled(some);
  up_->setEnabled(row > 0);
  down_->setEnabled(some && row + 1 < int(sheets_.size()));
}

void SheetsField::take_text() {
  const int row = list_->currentRow();
  if (showing_ || row < 0) return;
  auto& sheet = sheets_[std::size_t(row)];
  const QString text = text_->toPlainText();
  sheet.text = qt::from_qt(sheet.linked ? text.simplified() : text);
  list_->item(row)->setText(label_of(sheet));
  emit changed();
}

}  // namespace tvx::htmled
