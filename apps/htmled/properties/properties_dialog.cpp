#include "htmled/properties/properties_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "htmled/properties/colour_field.h"
#include "htmled/properties/sheets_field.h"
#include "tvx/qt/support/strings.h"
#include "tvx/spelling/dictionary_files.h"

namespace tvx::htmled {
namespace {

using files::PageProperties;

const QStringList& charsets() {
  static const QStringList names = {
      QStringLiteral("utf-8"),       QStringLiteral("windows-1252"), QStringLiteral("iso-8859-2"),
      QStringLiteral("iso-8859-15"), QStringLiteral("windows-1251"), QStringLiteral("windows-1256"),
      QStringLiteral("shift_jis"),   QStringLiteral("euc-jp"),       QStringLiteral("gb18030")};
  return names;
}

QStringList languages() {
  QStringList tags;
  for (const spelling::DictionaryFiles& each : spelling::installed_dictionaries())
    tags.append(qt::to_qt(each.language));
  for (const char* tag : {"ar", "de", "en", "es", "fr", "ja"})
    if (!tags.contains(QLatin1String(tag))) tags.append(QLatin1String(tag));
  tags.sort();
  return tags;
}

}  // namespace

PropertiesDialog::PropertiesDialog(const PageProperties& properties, const QString& name, QWidget* parent)
    : QDialog(parent), before_(properties), sheets_(new SheetsField) {
  setObjectName(QStringLiteral("page_properties"));
  setWindowTitle(tr("Properties of “%1”").arg(name));
  constexpr int pause = 250;
  auto* later = new QTimer(this);
  later->setSingleShot(true);
  later->setInterval(pause);
  connect(later, &QTimer::timeout, this, &PropertiesDialog::changed);
  auto* tabs = new QTabWidget(this);
  tabs->addTab(make_general(), tr("&General"));
  tabs->addTab(make_appearance(), tr("&Colours"));
  tabs->addTab(sheets_, tr("&Style sheets"));
  sheets_->set_sheets(properties.sheets);
  connect(sheets_, &SheetsField::changed, later, qOverload<>(&QTimer::start));
  preview_ = new QCheckBox(this);  // after the tabs, in whose first field the keyboard is
  preview_->setText(tr("Show changes in the &page"));
  preview_->setObjectName(QStringLiteral("preview"));
  preview_->setChecked(true);
  connect(preview_, &QCheckBox::toggled, later, qOverload<>(&QTimer::start));
  for (QLineEdit* line : tabs->findChildren<QLineEdit*>())
    connect(line, &QLineEdit::textChanged, later, qOverload<>(&QTimer::start));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs, 1);
  layout->addWidget(preview_);
  layout->addWidget(buttons);
  resize(560, 420);
  findChild<QLineEdit*>(QStringLiteral("title"))->setFocus();
}

QWidget* PropertiesDialog::make_general() {
  auto* page = new QWidget(this);
  auto* form = new QFormLayout(page);
  add_line(*form, tr("&Title:"), &PageProperties::title, "title");
  add_choice(*form, tr("&Language:"), &PageProperties::language, "language", languages());
  add_choice(*form, tr("C&haracter set:"), &PageProperties::charset, "charset", charsets());
  add_line(*form, tr("&Base of addresses:"), &PageProperties::base, "base",
           tr("Where relative addresses start; usually empty"));
  add_line(*form, tr("&Description:"), &PageProperties::description, "description",
           tr("One or two sentences, shown by search engines"));
  add_line(*form, tr("&Keywords:"), &PageProperties::keywords, "keywords", tr("With commas between them"));
  return page;
}

QWidget* PropertiesDialog::make_appearance() {
  auto* page = new QWidget(this);
  auto* form = new QFormLayout(page);
  add_colour(*form, tr("&Background:"), &PageProperties::background, "background");
  add_colour(*form, tr("&Text:"), &PageProperties::text, "text");
  add_colour(*form, tr("&Links:"), &PageProperties::link, "link");
  add_colour(*form, tr("&Visited links:"), &PageProperties::visited, "visited");
  add_line(*form, tr("Background p&icture:"), &PageProperties::background_image, "background_image",
           tr("The address of a picture"));
  return page;
}

void PropertiesDialog::add_line(QFormLayout& form, const QString& label, Text member, const char* name,
                                const QString& hint) {
  auto* line = new QLineEdit(qt::to_qt(before_.*member));
  line->setObjectName(QString::fromLatin1(name));
  line->setPlaceholderText(hint);
  form.addRow(label, line);
  lines_.push_back({member, [line] { return line->text(); }});
}

void PropertiesDialog::add_choice(QFormLayout& form, const QString& label, Text member, const char* name,
                                  const QStringList& choices) {
  auto* box = new QComboBox;
  box->setObjectName(QString::fromLatin1(name));
  box->setEditable(true);
  box->setInsertPolicy(QComboBox::NoInsert);
  box->addItems(choices);
  box->setCurrentText(qt::to_qt(before_.*member));
  form.addRow(label, box);
  lines_.push_back({member, [box] { return box->currentText().trimmed(); }});
}

void PropertiesDialog::add_colour(QFormLayout& form, const QString& label, Text member, const char* name) {
  auto* field = new ColourField(QString::fromLatin1(name));
  field->set_text(qt::to_qt(before_.*member));
  form.addRow(label, field);
  lines_.push_back({member, [field] { return field->text(); }});
}

PageProperties PropertiesDialog::properties() const {
  PageProperties properties = before_;
  for (const Line& line : lines_) properties.*line.member = qt::from_qt(line.text());
  properties.sheets = sheets_->sheets();
  return properties;
}

bool PropertiesDialog::shows_changes() const { return preview_->isChecked(); }

}  // namespace tvx::htmled
