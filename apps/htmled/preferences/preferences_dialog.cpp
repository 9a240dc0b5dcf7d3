#include "htmled/preferences/preferences_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "htmled/language_names.h"
#include "htmled/preferences/preferences.h"
#include "htmled/source_tools.h"
#include "htmled/window.h"
#include "htmled/writing_choices.h"
#include "tvx/qt/support/strings.h"
#include "tvx/spelling/dictionary_files.h"

namespace tvx::htmled {
namespace {

QString without_key(QString text) { return text.remove(u'&'); }

QCheckBox* check_box(const QString& text, const char* name, bool on) {
  auto* box = new QCheckBox(text);
  box->setObjectName(QString::fromLatin1(name));
  box->setChecked(on);
  return box;
}

QSpinBox* spin_box(const char* name, int least, int most, int value, const QString& suffix = {}) {
  auto* box = new QSpinBox;
  box->setObjectName(QString::fromLatin1(name));
  box->setRange(least, most);
  box->setSuffix(suffix);
  box->setValue(value);
  return box;
}

QStringList dictionaries() {
  QStringList tags;
  for (const spelling::DictionaryFiles& each : spelling::installed_dictionaries())
    tags.append(qt::to_qt(each.language));
  return tags;
}

}  // namespace

PreferencesDialog::PreferencesDialog(Window& window) : QDialog(&window), window_(window) {
  setObjectName(QStringLiteral("preferences"));
  new QVBoxLayout(this);
  fill();
  resize(500, 320);
}

void PreferencesDialog::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  // Not within the choice of a field that goes with it.
  if (event->type() == QEvent::LanguageChange) QTimer::singleShot(0, this, &PreferencesDialog::fill);
}

void PreferencesDialog::fill() {
  const int tab = tabs_ ? tabs_->currentIndex() : 0;
  const QString focused = focusWidget() ? focusWidget()->objectName() : QString();
  for (QWidget* each : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) delete each;
  setWindowTitle(without_key(tr("Prefere&nces…")).remove(u'…').trimmed());
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName(QStringLiteral("pages"));
  tabs_->addTab(make_general(), tr("&General"));
  tabs_->addTab(make_writing(), tr("W&riting"));
  tabs_->addTab(make_source(), tr("&Source"));
  tabs_->setCurrentIndex(tab);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout()->addWidget(tabs_);
  layout()->addWidget(buttons);
  if (QWidget* field = focused.isEmpty() ? nullptr : findChild<QWidget*>(focused)) field->setFocus();
}

// --- general ---

QWidget* PreferencesDialog::make_general() {
  auto* page = new QWidget;
  auto* form = new QFormLayout(page);
  add_program_language(*form);
  add_new_pages(*form);
  auto* zoom = spin_box("zoom", 25, 500, qRound(window_.editor().zoom() * 100), QStringLiteral(" %"));
  form->addRow(tr("&Zoom of pages:"), zoom);
  connect(zoom, &QSpinBox::valueChanged, this, [this](int percent) {
    window_.for_each_editor([percent](qt::HTMLedWidget& editor) { editor.set_zoom(percent / 100.0); });
  });
  auto* web = new QComboBox;
  web->setObjectName(QStringLiteral("web_content"));
  web->addItems({tr("Ask for each page"), tr("Always load"), tr("Never load")});
  web->setCurrentIndex(int(preferences::web_content()));
  form->addRow(tr("Pictures from the &web:"), web);
  connect(web, &QComboBox::currentIndexChanged, this, [this](int index) {
    preferences::set_web_content(preferences::WebContent(index));
    window_.ask_again_for_web_content();
  });
  add_keeping(*form);
  return page;
}

void PreferencesDialog::add_program_language(QFormLayout& form) {
  auto* box = new QComboBox;
  box->setObjectName(QStringLiteral("language"));
  const QString spoken = window_.spoken();
  for (const Language& language : window_.languages().all()) {
    box->addItem(language.name, language.code);
    if (language.code == spoken) box->setCurrentIndex(box->count() - 1);
  }
  form.addRow(tr("&Language of the program:"), box);
  connect(box, &QComboBox::activated, this, [this, box] {
    const Language* language = window_.languages().find(box->currentData().toString());
    if (!language) return;
    if (window_.speak(*language))
      Languages::remember(*language);
    else
      box->setCurrentIndex(box->findData(window_.spoken()));
  });
}

void PreferencesDialog::add_new_pages(QFormLayout& form) {
  auto* box = new QComboBox;
  box->setObjectName(QStringLiteral("new_language"));
  box->setEditable(true);
  box->setInsertPolicy(QComboBox::NoInsert);
  box->addItems(dictionaries());
  box->setCurrentText(preferences::new_page_language());
  box->lineEdit()->setPlaceholderText(tr("As for spelling"));
  form.addRow(tr("Language of &new pages:"), box);
  connect(box, &QComboBox::currentTextChanged, this,
          [](const QString& tag) { preferences::set_new_page_language(tag.trimmed()); });
}

void PreferencesDialog::add_keeping(QFormLayout& form) {
  auto* keeps =
      check_box(tr("&Keep what isn't saved, in case of a crash"), "keeps", preferences::keeps_unsaved());
  auto* seconds = spin_box("seconds", preferences::fewest_seconds, preferences::most_seconds,
                           preferences::keep_seconds());
  seconds->setEnabled(keeps->isChecked());
  form.addRow(QString(), keeps);
  form.addRow(tr("Se&conds from a change until it is kept:"), seconds);
  connect(keeps, &QCheckBox::toggled, seconds, &QWidget::setEnabled);
  connect(keeps, &QCheckBox::toggled, this, [this](bool on) {
    preferences::set_keeps_unsaved(on);
    window_.keep_as_preferred();
  });
  connect(seconds, &QSpinBox::valueChanged, this, [](int value) { preferences::set_keep_seconds(value); });
}

// --- writing ---

QWidget* PreferencesDialog::make_writing() {
  auto* page = new QWidget;
  auto* form = new QFormLayout(page);
  auto* language = new QComboBox;
  language->setObjectName(QStringLiteral("spelling"));
  language->addItem(without_key(tr("Language of the &desktop")), QString());
  for (const QString& tag : dictionaries()) language->addItem(own_language_name(tag), tag);
  language->setCurrentIndex(std::max(0, language->findData(window_.editor().SpellingLanguage())));
  form->addRow(tr("Spelling &language:"), language);
  connect(language, &QComboBox::activated, this,
          [this, language] { window_.set_spelling_language(language->currentData().toString()); });
  using writing_choices::Writing;
  const auto add = [&](Writing which, const QString& text, const char* name) {
    auto* box = check_box(text, name, writing_choices::is_on(which));
    form->addRow(QString(), box);
    connect(box, &QCheckBox::toggled, this, [this, which](bool on) {
      if (writing_choices::is_on(which) != on) writing_choices::turn(which);
      window_.for_each_editor(writing_choices::apply);
    });
  };
  add(Writing::Waves, tr("Mark &wrong words while typing"), "waves");
  add(Writing::AutoFormat, tr("&Format while typing"), "auto_format");
  return page;
}

// --- the source ---

QWidget* PreferencesDialog::make_source() {
  auto* page = new QWidget;
  auto* form = new QFormLayout(page);
  const QFont font = window_.editor().code_font();
  auto* family = new QFontComboBox;
  family->setObjectName(QStringLiteral("font"));
  family->setFontFilters(QFontComboBox::MonospacedFonts);
  family->setCurrentFont(QFont(QFontInfo(font).family()));
  auto* size = spin_box("size", 5, 48, qRound(font.pointSizeF()));
  auto* tab = spin_box("tab", 1, 16, preferences::tab_width());
  auto* wrap = check_box(tr("&Wrap lines of the source"), "wrap", SourceTools::wraps());
  form->addRow(tr("&Font:"), family);
  form->addRow(tr("Si&ze:"), size);
  form->addRow(tr("Width of a &tab:"), tab);
  form->addRow(QString(), wrap);
  const auto take_font = [this, family, size] {
    QFont chosen = family->currentFont();
    chosen.setPointSizeF(size->value());
    preferences::set_code_font(chosen);
    follow_source();
  };
  connect(family, &QFontComboBox::currentFontChanged, this, take_font);
  connect(size, &QSpinBox::valueChanged, this, take_font);
  connect(tab, &QSpinBox::valueChanged, this, [this](int letters) {
    preferences::set_tab_width(letters);
    follow_source();
  });
  connect(wrap, &QCheckBox::toggled, this, [this](bool on) {
    SourceTools::remember_wrapping(on);
    follow_source();
  });
  return page;
}

void PreferencesDialog::follow_source() {
  for (SourceTools* tools : window_.findChildren<SourceTools*>()) tools->follow_settings();
}

}  // namespace tvx::htmled
