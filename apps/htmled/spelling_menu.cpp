#include <QActionGroup>
#include <QMenu>
#include <QSettings>

#include "htmled/document/document_page.h"
#include "htmled/language_names.h"
#include "htmled/tabs.h"
#include "htmled/window.h"
#include "htmled/writing_choices.h"
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

}  // namespace

// --- switches ---

bool writing_choices::is_on(Writing choice) {
  return settings().value(choice == Writing::Waves ? as_you_type_key : auto_format_key, true).toBool();
}

void writing_choices::turn(Writing choice) {
  settings().setValue(choice == Writing::Waves ? as_you_type_key : auto_format_key, !is_on(choice));
}

void writing_choices::apply(qt::HTMLedWidget& editor) {
  editor.set_CheckSpellingAsYouType(is_on(Writing::Waves));
  editor.set_AutoFormat(is_on(Writing::AutoFormat));
}

const char* writing_choices::obstacle_to_spelling(bool has_dictionaries) {
  return has_dictionaries ? nullptr : QT_TR_NOOP("No dictionary is installed");
}

const char* writing_choices::obstacle_to_spelling() {
  return obstacle_to_spelling(!spelling::installed_dictionaries().empty());
}

void writing_choices::show_obstacle_to_spelling(qt::HTMLedWidget& editor, const char* obstacle) {
  platform::Button& button = editor.control().Toolbar1().Item(u"Spell Check");
  button.set_Obstacle(obstacle ? from_qt(QString::fromUtf8(obstacle)) : std::u16string());
}

void Window::set_up_writing(qt::HTMLedWidget& editor) const {
  writing_choices::show_obstacle_to_spelling(editor, writing_choices::obstacle_to_spelling());
  editor.set_SpellingLanguage(settings().value(language_key).toString());
  writing_choices::apply(editor);
  // "Add Word" of the dialog writes where "Add to dictionary" of the menu does.
  if (spelling::make_user_words())
    editor.set_CustomDictionaryFilename(QString::fromStdString(spelling::user_words_path()));
}

void Window::for_each_editor(const std::function<void(qt::HTMLedWidget&)>& act) const {
  for (const DocumentPage* page : tabs_->pages())
    if (page->editor()) act(*page->editor());
}

// Where a page names its languages, those count; this one is for all others.
void Window::fill_spelling_languages(QMenu& menu) {
  auto* group = new QActionGroup(&menu);
  const auto add = [&](QAction* action, const QString& tag) {
    action->setObjectName(tag);
    action->setCheckable(true);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, tag] { set_spelling_language(tag); });
  };
  QAction* of_desktop = menu.addAction(QString());
  add(of_desktop, QString());
  menu.addSeparator();
  for (const spelling::DictionaryFiles& files : spelling::installed_dictionaries()) {
    const QString tag = to_qt(files.language);
    add(menu.addAction(own_language_name(tag)), tag);
  }
  connect(&menu, &QMenu::aboutToShow, this, [this, group, of_desktop] {
    of_desktop->setText(tr("Language of the &desktop"));
    for (QAction* action : group->actions())
      action->setChecked(action->objectName() == editor_->SpellingLanguage());
  });
}

void Window::set_spelling_language(const QString& tag) {
  settings().setValue(language_key, tag);
  for_each_editor([&tag](qt::HTMLedWidget& editor) { editor.set_SpellingLanguage(tag); });
  show_form();
}

void Window::check_spelling() {
  if (editor_->InCodeView()) editor_->control().show_Code();
  editor_->control().SpellCheck();
}

}  // namespace tvx::htmled
