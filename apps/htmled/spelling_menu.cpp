#include <QActionGroup>
#include <QLocale>
#include <QMenu>
#include <QSettings>

#include "htmled/document/document_page.h"
#include "htmled/tabs.h"
#include "htmled/window.h"
#include "tvx/core/htmled.h"
#include "tvx/qt/support/strings.h"
#include "tvx/spelling/dictionary_files.h"
#include "tvx/spelling/word_list.h"

/// The window's menu for what helps with writing: the check of spelling from word to word, its language,
/// waves while typing, and short forms that become lists and headings. What is chosen there is kept from one
/// start of the program to the next.
namespace tvx::htmled {
namespace {

using qt::from_qt;
using qt::to_qt;

const QString language_key = QStringLiteral("spelling/language"),
              as_you_type_key = QStringLiteral("spelling/as-you-type"),
              auto_format_key = QStringLiteral("typing/auto-format");

QSettings settings() {
  return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("tvxHTML"),
                   QStringLiteral("htmled"));
}

/// "Deutsch (Deutschland)"; the tag itself where nobody knows it.
QString own_name(const QString& tag) {
  const QLocale locale(tag);
  if (locale.language() == QLocale::C) return tag;
  QString name = locale.nativeLanguageName();
  if (name.isEmpty()) return tag;
  name[0] = name[0].toUpper();
  return tag.contains(u'-') ? QStringLiteral("%1 (%2)").arg(name, locale.nativeTerritoryName()) : name;
}

}  // namespace

void Window::set_up_writing(qt::HTMLedWidget& editor) const {
  editor.set_SpellingLanguage(settings().value(language_key).toString());
  editor.set_CheckSpellingAsYouType(settings().value(as_you_type_key, true).toBool());
  editor.set_AutoFormat(settings().value(auto_format_key, true).toBool());
  // "Add Word" of the dialog writes where "Add to dictionary" of the menu does.
  if (spelling::make_user_words())
    editor.set_CustomDictionaryFilename(QString::fromStdString(spelling::user_words_path()));
}

void Window::for_each_editor(const std::function<void(qt::HTMLedWidget&)>& act) const {
  for (const DocumentPage* page : tabs_->pages())
    if (page->editor()) act(*page->editor());
}

void Window::make_spelling_menu() {
  QMenu* tools = add_menu(nullptr, QT_TR_NOOP("&Tools"));
  add_item(tools, QT_TR_NOOP("&Spelling…"), QKeySequence(Qt::Key_F7), [this] { check_spelling(); });
  QAction* waves = tools->addAction(QString());
  actions_.emplace_back(waves, QT_TR_NOOP("Mark &wrong words while typing"));
  waves->setCheckable(true);
  waves->setChecked(editor_->CheckSpellingAsYouType());
  connect(waves, &QAction::toggled, this, [this](bool on) {
    settings().setValue(as_you_type_key, on);
    for_each_editor([on](qt::HTMLedWidget& editor) { editor.set_CheckSpellingAsYouType(on); });
  });
  add_auto_format(tools);
  add_spelling_languages(add_menu(tools, QT_TR_NOOP("Spelling &language")));
}

void Window::add_auto_format(QMenu* menu) {
  QAction* format = menu->addAction(QString());
  format->setObjectName(QStringLiteral("auto-format"));
  actions_.emplace_back(format, QT_TR_NOOP("&Format while typing"));
  format->setCheckable(true);
  format->setChecked(editor_->AutoFormat());
  connect(format, &QAction::toggled, this, [this](bool on) {
    settings().setValue(auto_format_key, on);
    for_each_editor([on](qt::HTMLedWidget& editor) { editor.set_AutoFormat(on); });
  });
}

// Where a page names its languages, those count; this one is for all others.
void Window::add_spelling_languages(QMenu* menu) {
  auto* group = new QActionGroup(menu);
  const auto add = [&](QAction* action, const QString& tag) {
    action->setObjectName(tag);
    action->setCheckable(true);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, tag] {
      settings().setValue(language_key, tag);
      for_each_editor([&tag](qt::HTMLedWidget& editor) { editor.set_SpellingLanguage(tag); });
    });
  };
  QAction* of_desktop = menu->addAction(QString());
  actions_.emplace_back(of_desktop, QT_TR_NOOP("Language of the &desktop"));
  add(of_desktop, QString());
  menu->addSeparator();
  for (const spelling::DictionaryFiles& files : spelling::installed_dictionaries()) {
    const QString tag = to_qt(files.language);
    add(menu->addAction(own_name(tag)), tag);
  }
  connect(menu, &QMenu::aboutToShow, this, [this, group] {
    for (QAction* action : group->actions())
      action->setChecked(action->objectName() == editor_->SpellingLanguage());
  });
}

void Window::check_spelling() {
  if (editor_->InCodeView()) editor_->control().show_Code();
  editor_->control().SpellCheck();
}

}  // namespace tvx::htmled
