#include "htmled/languages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QLibraryInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QMetaEnum>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QStatusBar>
#include <QStyle>
#include <QTemporaryDir>
#include <QToolButton>
#include <algorithm>
#include <map>
#include <set>

#include "htmled/menus/commands.h"
#include "htmled/window.h"
#include "tvx/core/htmled.h"
#include "tvx/localise/xml_document.h"
#include "tvx/qt/dialogs/link_dialog.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"
#include "tvx/qt/widget/action_faces.h"

namespace tvx::htmled {
namespace {

using qt::from_qt;
using qt::to_qt;
using testing::AnyOf;
using testing::IsEmpty;

const QString language_folder = QStringLiteral(TVX_SOURCE_DIR "/languages");

// --- the words ---

/// The English words that the program and the widget have, read from their sources: they are marked there.
std::set<QString> words_in_sources() {
  static const QRegularExpression marked(QStringLiteral(
      R"re((?:\btr|QT_TR_NOOP|translated)\(\s*u?((?:"(?:[^"\\]|\\.)*"\s*)+)\)|QT_TRANSLATE_NOOP\(\s*"\w+",\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\))re"));
  std::set<QString> words;
  for (const char* folder : {"/apps/htmled", "/src/qt"}) {
    QDirIterator sources(QStringLiteral(TVX_SOURCE_DIR) + QString::fromLatin1(folder),
                         {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (sources.hasNext()) {
      QFile file(sources.next());
      EXPECT_TRUE(file.open(QIODevice::ReadOnly));
      const QString text = QString::fromUtf8(file.readAll());
      for (auto found = marked.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        QString literal = (match.captured(1) + match.captured(2)).trimmed();
        static const QRegularExpression seam(QStringLiteral(R"("\s*")"));
        words.insert(literal.replace(seam, QString()).chopped(1).mid(1));
      }
    }
  }
  return words;
}

/// What the layers below say through a message box, a file dialog or a notice.
const std::pair<const char*, const char*> words_from_below[] = {
    {"src/core/content/content.cpp", "Discard Changes?"},
    {"src/core/content/content.cpp", "HTML Editor"},
    {"src/core/chrome/obstacles.h", "Nothing is selected"},
    {"src/core/chrome/obstacles.h", "There is nothing to undo"},
    {"src/core/chrome/obstacles.h", "There is nothing to redo"},
    {"src/core/chrome/obstacles.h", "There is nothing to paste"},
    {"src/core/chrome/obstacles.h", "This element has no properties to set"},
    {"src/core/chrome/obstacles.h", "The tag of this element can't be edited"},
    {"src/core/chrome/obstacles.h", "There is no cell on this side"},
    {"src/core/chrome/obstacles.h", "The caret is in no table"},
    {"src/core/chrome/obstacles.h", "Select the cells that are to be one"},
    {"src/core/chrome/obstacles.h", "There is no cell below"},
    {"src/core/chrome/obstacles.h", "Several cells are selected"},
    {"src/core/chrome/obstacles.h", "The code view is switched off"},
    {"src/core/chrome/obstacles.h", "This page can only be read"},
    {"src/core/chrome/obstacles.h", "This works on the page, not on its code"},
    {"src/core/chrome/obstacles.h", "There is no link"},
    {"src/core/chrome/obstacles.h", "This page consists of frames. Its source can be edited."},
    {"src/core/chrome/obstacles.h", "A list can't be a quotation"},
    {"src/transfer/library_dialog.cpp", "Name"},
    {"src/transfer/library_dialog.cpp", "Size"},
    {"src/transfer/library_dialog.cpp", "Date"},
    {"src/transfer/library_dialog.cpp", "Looking for images…"},
    {"src/transfer/library_dialog.cpp", "There are no images in this folder. Drop some here to upload them."},
    {"src/transfer/library_dialog.cpp", "The images can't be listed."},
    {"src/transfer/library_dialog.cpp", "Not all files could be uploaded."},
    {"src/transfer/library_dialog.cpp",
     "Directories may not be uploaded. Please upload the files individually"},
    {"src/core/commands/image_commands.cpp", "Select an Image"},
    {"src/core/commands/image_commands.cpp", "All Image Files"},
    {"src/dialogs/field_checks.cpp", "This is no whole number"},
    {"src/dialogs/field_checks.cpp", "This number is too small"},
    {"src/dialogs/field_checks.cpp", "This number is too large"},
    {"src/dialogs/field_checks.cpp", "This is no colour"},
    {"src/dialogs/field_checks.cpp", "An id has no blanks"},
    {"src/dialogs/field_checks.cpp", "This is neither a number nor a percentage"},
    {"src/tables/cell_dialog.cpp", "In pixels, or with % of the room that there is"},
    {"src/qt/forms/colour_palette.cpp", "Colours of this document"},
    {"src/dialogs/field_dialog.cpp",
     "What the value is sent under. Option buttons with the same name are one choice."},
    {"src/dialogs/field_dialog.cpp", "What is sent. Empty: the text."},
    {"src/tables/table_dialog.cpp", "Enter a vaild CSS string"},
    {"src/core/chrome/dialog_host.cpp", "The document has been replaced meanwhile. It stays as it is."},
    {"src/core/content/document_files.cpp", "Open HTML File"},
    {"src/core/content/document_files.cpp", "Save HTML File"},
    {"src/browser/view/document_view.cpp",
     "This document can't be shown at the moment: the view has ended more than once while showing it. "
     "Nothing is "
     "lost; "
     "the document can be edited as code and saved."},
};

/// In double braces; the date is no word.
std::set<QString> words_in_templates() {
  static const QRegularExpression marked(QStringLiteral(R"re(\{\{(.+?)\}\})re"));
  std::set<QString> words;
  QDirIterator pages(QStringLiteral(TVX_SOURCE_DIR "/apps/htmled/templates/pages"),
                     {QStringLiteral("*.html")}, QDir::Files);
  while (pages.hasNext()) {
    QFile file(pages.next());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QString page = QString::fromUtf8(file.readAll());
    for (auto found = marked.globalMatch(page); found.hasNext();) words.insert(found.next().captured(1));
  }
  words.erase(QStringLiteral("date"));
  return words;
}

std::set<QString> all_words() {
  std::set<QString> words = words_in_sources();
  words.merge(words_in_templates());
  for (const auto& [file, word] : words_from_below) words.insert(QString::fromUtf8(word));
  return words;
}

std::map<QString, QString> written(const QString& language) {
  localise::XmlDocument document;
  EXPECT_TRUE(document.load(from_qt(language_folder + u'/' + language + QStringLiteral(".xml"))));
  std::map<QString, QString> words;
  for (const localise::XmlElement* entry :
       document.documentElement()->child_named(u"Application")->children()) {
    const QString english = to_qt(entry->child(0)->text());
    EXPECT_TRUE(words.emplace(english, to_qt(entry->child(1)->text())).second) << english.toStdString();
  }
  return words;
}

std::string text(const QString& words) { return words.toStdString(); }

TEST(ProgramWords, AreFoundInTheSources) {
  const std::set<QString> words = words_in_sources();
  EXPECT_GT(words.size(), 20u);
  for (const char* word : {"&File", "Untitled", "Can't read %1", "&Address:", "Outer elements", "Try again",
                           "“%1” has been changed. Save the changes?"})
    EXPECT_TRUE(words.contains(QString::fromUtf8(word))) << word;
}

TEST(ProgramWords, AreFoundInTheTemplates) {
  const std::set<QString> words = words_in_templates();
  EXPECT_GT(words.size(), 40u);
  EXPECT_TRUE(words.contains(QStringLiteral("Letter")));
}

TEST(ProgramWords, OfLowerLayersStandThere) {
  for (const auto& [name, word] : words_from_below) {
    QFile file(QStringLiteral(TVX_SOURCE_DIR "/") + QString::fromLatin1(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString source =
        QString::fromUtf8(file.readAll()).replace(QRegularExpression(QStringLiteral(R"("\s*u")")), QString());
    EXPECT_TRUE(source.contains(u'"' + QString::fromUtf8(word) + u'"')) << word;
  }
}

class ProgramLanguage : public testing::TestWithParam<const char*> {
 protected:
  const QString code = QString::fromLatin1(GetParam());
};

TEST_P(ProgramLanguage, HasAllWordsAndNoOthers) {
  std::set<QString> words;
  for (const auto& [english, word] : written(code)) {
    words.insert(english);
    EXPECT_FALSE(word.isEmpty()) << text(english);
    const QStringList forms = word.split(u'|');
    const QString form_of_many = english.split(u'|').last();
    if (english.contains(u'|'))
      EXPECT_THAT(forms.size(), AnyOf(1, 2, 3, 6)) << text(english);
    else
      EXPECT_EQ(forms.size(), 1) << text(english);
    for (const char* number : {"%1", "%2"})
      EXPECT_EQ(forms.last().count(QString::fromLatin1(number)),
                form_of_many.count(QString::fromLatin1(number)))
          << text(english);
  }
  std::vector<std::string> missing, surplus;
  const std::set<QString> wanted = all_words();
  for (const QString& word : wanted)
    if (!words.contains(word)) missing.push_back(text(word));
  for (const QString& word : words)
    if (!wanted.contains(word)) surplus.push_back(text(word));
  EXPECT_THAT(missing, IsEmpty());
  EXPECT_THAT(surplus, IsEmpty());
}

TEST_P(ProgramLanguage, LeavesNothingInEnglish) {
  static const std::map<QString, std::set<std::string>> same_words = {
      {QStringLiteral("de"), {"%1, %2", "Hyperlink", "Element %1", "Name", "&Server:", "P&ort:"}},
      {QStringLiteral("es"), {"%1, %2"}},
      {QStringLiteral("fr"), {"%1, %2", "Date", "&Image…", "Page", "&Portrait"}}};
  const auto own = same_words.find(code);
  for (const auto& [english, word] : written(code)) {
    const bool same =
        code == QStringLiteral("en") || (own != same_words.end() && own->second.contains(text(english)));
    EXPECT_EQ(word == english, same) << text(english);
  }
}

/// The English words of the window's menus, those of the bar first.
std::vector<std::vector<QString>> words_of_menus() {
  std::vector<std::vector<QString>> menus(1);
  std::vector<std::size_t> open{0};
  for (const Command& command : Commands::table()) {
    QString word = QString::fromUtf8(command.text);
    if (command.kind == Command::Kind::Editor) {
      bool known = false;
      const int value = QMetaEnum::fromType<qt::HTMLedWidget::Action>().keyToValue(command.name, &known);
      EXPECT_TRUE(known) << command.name;
      word = QString::fromUtf8(qt::face_of(qt::HTMLedWidget::Action(value)).text);
    }
    if (!word.isEmpty()) menus[open.back()].push_back(word);
    if (command.kind == Command::Kind::End) open.pop_back();
    if (command.kind != Command::Kind::Menu) continue;
    open.push_back(menus.size());
    menus.emplace_back();
  }
  return menus;
}

/// Every item of a menu is reached by a letter of its own.
TEST_P(ProgramLanguage, AccessKeysOfAMenuDiffer) {
  const auto words = written(code);
  const auto menus = words_of_menus();
  EXPECT_GT(menus.size(), 8u);
  for (const std::vector<QString>& menu : menus) {
    std::map<QChar, QString> keys;
    for (const QString& english : menu) {
      ASSERT_TRUE(words.contains(english)) << text(english);
      const QString word = words.at(english);
      ASSERT_EQ(word.count(u'&'), 1) << text(word);
      const auto [owner, first] = keys.emplace(word.at(word.indexOf(u'&') + 1).toLower(), word);
      EXPECT_TRUE(first) << text(word) << " and " << text(owner->second);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Of, ProgramLanguage, testing::Values("en", "de", "fr", "es", "ja", "ar"),
                         [](const auto& language) { return std::string(language.param); });

// --- the choice ---

class LanguageChoice : public testing::Test {
 protected:
  LanguageChoice() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings_.path()); }
  QTemporaryDir settings_;
};

TEST_F(LanguageChoice, TheFilesStandBesideTheProgram) {
  const Languages languages;
  std::vector<std::string> names;
  for (const Language& language : languages.all())
    names.push_back(text(language.code + u' ' + language.name));
  EXPECT_THAT(names, testing::UnorderedElementsAre("de Deutsch", "en English", "es Español", "fr Français",
                                                   "ja 日本語", "ar العربية"));
}

TEST_F(LanguageChoice, CodesOfCountriesMeanTheirLanguage) {
  const Languages languages(language_folder);
  for (const char* code : {"de", "DE", "de_AT", "de-AT", "de-Latn-AT"}) {
    ASSERT_NE(languages.find(QString::fromLatin1(code)), nullptr) << code;
    EXPECT_EQ(languages.find(QString::fromLatin1(code))->code, QStringLiteral("de"));
  }
  for (const char* code : {"", "d", "den", "xx", "-", "C"})
    EXPECT_EQ(languages.find(QString::fromLatin1(code)), nullptr) << code;
}

TEST_F(LanguageChoice, TheChosenOneIsPreferredAtTheNextStart) {
  const Languages languages(language_folder);
  Languages::remember(*languages.find(QStringLiteral("ja")));
  EXPECT_EQ(Languages(language_folder).preferred()->code, QStringLiteral("ja"));
}

TEST_F(LanguageChoice, WithoutAChoiceItIsTheFirstOfTheSystemsThatThereIs) {
  const Languages languages(language_folder);
  const auto preferred = [&](const char* system) {
    const Language* language = languages.preferred(QString::fromLatin1(system).split(u' '));
    return language ? text(language->code) : "none";
  };
  EXPECT_EQ(preferred("fr-CA fr en-US"), "fr");
  EXPECT_EQ(preferred("nb-NO nb de-CH en"), "de");
  EXPECT_EQ(preferred("nb-NO"), "none");
  Languages::remember(*languages.find(QStringLiteral("ar")));
  EXPECT_EQ(preferred("fr-CA"), "ar");
}

TEST_F(LanguageChoice, BrokenFilesAndNoFolderAreNoLanguages) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("xx.xml")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("<languageUI>") > 0);
  file.close();
  EXPECT_TRUE(Languages(folder.path()).all().empty());
  EXPECT_TRUE(Languages(QStringLiteral("/no/such/folder")).all().empty());
  EXPECT_EQ(Languages(QString()).preferred(), nullptr);
}

/// German with a fault in its middle, where nobody looks before it is to be spoken.
class DamagedLanguage : public LanguageChoice {
 protected:
  DamagedLanguage() {
    QFile whole(language_folder + QStringLiteral("/de.xml"));
    EXPECT_TRUE(whole.open(QIODevice::ReadOnly));
    QByteArray bytes = whole.readAll();
    const qsizetype fault = bytes.indexOf("<word>", bytes.indexOf("<Application>"));
    line_ = bytes.first(fault).count('\n') + 1;
    write(bytes.replace(fault, 6, "<word"));
    Languages::remember({QStringLiteral("de"), {}, {}});
  }
  void write(const QByteArray& bytes) const {
    QFile file(path());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
  }
  QString path() const { return folder_.filePath(QStringLiteral("de.xml")); }

  QTemporaryDir folder_;
  qsizetype line_ = 0;
};

TEST_F(DamagedLanguage, IsNotSpokenAndItsFileAndLineAreTold) {
  Languages languages(folder_.path());
  const Language* german = languages.preferred();
  ASSERT_NE(german, nullptr);
  EXPECT_FALSE(languages.speak(*german));
  EXPECT_EQ(text(languages.spoken()), "");
  EXPECT_EQ(text(qt::translated(u"Untitled")), "Untitled");
  EXPECT_THAT(text(languages.damage()),
              testing::StartsWith("The language file " + text(path()) + " is damaged in line " +
                                  std::to_string(line_) + ": "));
}

TEST_F(DamagedLanguage, LeavesTheOneThatIsSpoken) {
  Languages languages(language_folder);
  ASSERT_TRUE(languages.speak(*languages.find(QStringLiteral("ar"))));
  EXPECT_FALSE(languages.speak({QStringLiteral("de"), {}, path()}));
  EXPECT_EQ(text(languages.spoken()), "ar");
  EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::RightToLeft);
  EXPECT_EQ(text(qt::translated(u"Untitled")), "بلا عنوان");
}

// Half a file is no language to offer; who wants it hears why.
TEST_F(DamagedLanguage, ThatEndsTooEarlyIsPreferredToAnother) {
  write("<languageUI name=\"Deutsch\">\n<Application>\n<word>");
  Languages languages(folder_.path());
  EXPECT_TRUE(languages.all().empty());
  const Language* german = languages.preferred({QStringLiteral("fr")});
  ASSERT_NE(german, nullptr);
  EXPECT_FALSE(languages.speak(*german));
  EXPECT_THAT(text(languages.damage()), testing::HasSubstr("damaged in line 3: "));
}

TEST_F(DamagedLanguage, ThatIsGoneMeanwhileIsToldToo) {
  Languages languages(folder_.path());
  ASSERT_TRUE(QFile::remove(path()));
  EXPECT_FALSE(languages.speak(*languages.find(QStringLiteral("de"))));
  EXPECT_THAT(text(languages.damage()),
              testing::StartsWith("The language file " + text(path()) + " can't be read: "));
}

TEST_F(DamagedLanguage, IsToldByTheWindowWhichStaysEnglish) {
  qt::MessageLoop loop;
  Window window(loop);
  window.show();
  EXPECT_FALSE(window.speak({QStringLiteral("de"), {}, path()}));
  EXPECT_EQ(text(window.menuBar()->actions().front()->text()), "&File");
  const QMessageBox* box = nullptr;
  for (int turn = 0; turn < 100 && !box; ++turn) {
    loop.pump(20);
    box = window.findChild<QMessageBox*>();
  }
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(box->isVisible());
  EXPECT_THAT(text(box->text()), testing::HasSubstr("de.xml is damaged in line " + std::to_string(line_)));
}

// The words are Qt's, from a package of their own: without its file there is nothing to follow.
TEST_F(LanguageChoice, QtsOwnWordsFollow) {
  const QDir translations(QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  if (!translations.exists(QStringLiteral("qtbase_de.qm")))
    GTEST_SKIP() << "SKIPPED: no qtbase_de.qm, Qt's own translations are not installed";
  Languages languages(language_folder);
  const auto cancel = [] {
    return QMessageBox(QMessageBox::NoIcon, {}, {}, QMessageBox::Cancel).button(QMessageBox::Cancel)->text();
  };
  const QString english = cancel();
  languages.speak(*languages.find(QStringLiteral("de")));
  EXPECT_EQ(cancel().remove(u'&'), QStringLiteral("Abbrechen"));
  languages.speak(*languages.find(QStringLiteral("en")));
  EXPECT_EQ(cancel(), english);
}

// --- the window ---

class SpokenWindow : public LanguageChoice {
 protected:
  SpokenWindow() { window_.show(); }

  void speak(const char* code) { window_.speak(*window_.languages().find(QString::fromLatin1(code))); }
  /// The texts of the menu bar.
  std::string menus() const {
    QStringList texts;
    for (const QAction* action : window_.menuBar()->actions()) texts << action->text().remove(u'&');
    return text(texts.join(u' '));
  }
  std::string bold_tip() { return text(to_qt(control().Toolbar1().Item(u"Bold").ToolTipText())); }
  /// The tool tip that the widget itself shows.
  bool shows_tip(const char* tip) {
    const auto buttons = window_.editor().findChildren<QWidget*>();
    return std::ranges::any_of(
        buttons, [&](const QWidget* each) { return each->toolTip() == QString::fromUtf8(tip); });
  }
  QAction* language_item(const char* code) { return window_.findChild<QAction*>(QString::fromLatin1(code)); }
  core::HTMLed& control() { return window_.editor().control(); }

  qt::MessageLoop loop_;
  Window window_{loop_};
};

TEST_F(SpokenWindow, ChoosingALanguageChangesAllWordsAtOnce) {
  EXPECT_EQ(menus(), "File Edit View Insert Format Table Tools Help");
  EXPECT_EQ(bold_tip(), "Bold");
  ASSERT_NE(language_item("de"), nullptr);
  language_item("de")->trigger();
  EXPECT_EQ(menus(), "Datei Bearbeiten Ansicht Einfügen Format Tabelle Extras Hilfe");
  EXPECT_EQ(text(window_.windowTitle()), "Unbenannt[*] – HTMLed");
  EXPECT_EQ(bold_tip(), "Fett");
  EXPECT_TRUE(shows_tip("Fett"));
  EXPECT_EQ(control().menu(u"mnuMiscCut")->Caption(), u"Ausschneiden");
  EXPECT_EQ(control().table_labels().cell, u"Zelle");
  EXPECT_EQ(text(qt::translated(u"Discard Changes?")), "Änderungen verwerfen?");
  EXPECT_EQ(text(qt::LinkDialog(QString()).windowTitle()), "Hyperlink");

  language_item("fr")->trigger();
  EXPECT_EQ(menus(), "Fichier Édition Affichage Insertion Format Tableau Outils Aide");
  EXPECT_TRUE(shows_tip("Gras"));
  EXPECT_EQ(text(qt::LinkDialog(QString()).windowTitle()), "Lien hypertexte");

  language_item("en")->trigger();
  EXPECT_EQ(menus(), "File Edit View Insert Format Table Tools Help");
  EXPECT_EQ(bold_tip(), "Bold");
  EXPECT_EQ(control().table_labels().cell, u"Cell");
}

TEST_F(SpokenWindow, TheChoiceIsKept) {
  language_item("es")->trigger();
  EXPECT_EQ(Languages(language_folder).preferred()->code, QStringLiteral("es"));
  speak("ja");  // as the command line does: for this time
  EXPECT_EQ(Languages(language_folder).preferred()->code, QStringLiteral("es"));
}

TEST_F(SpokenWindow, TheLanguageOutlivesTheEditorsStart) {
  speak("ja");
  ASSERT_TRUE(window_.start({}));
  EXPECT_EQ(bold_tip(), "太字");
  EXPECT_EQ(menus(), "ファイル(F) 編集(E) 表示(V) 挿入(I) 書式(O) 表(A) ツール(T) ヘルプ(H)");
  EXPECT_FALSE(window_.isWindowModified());
}

TEST_F(SpokenWindow, ArabicMirrorsTheWindowAndLeavesTheDocumentAlone) {
  ASSERT_TRUE(window_.start({}));
  control().set_DocumentHTML(u"<P>text</P>");
  const auto is_at_the_right = [&] {
    QCoreApplication::processEvents();
    for (const QToolButton* button : window_.editor().findChildren<QToolButton*>())
      if (button->toolTip() == to_qt(control().Toolbar1().Item(1).ToolTipText()))
        return button->mapTo(&window_, QPoint()).x() > window_.width() / 2;
    ADD_FAILURE() << "the first button isn't there";
    return false;
  };
  EXPECT_FALSE(is_at_the_right());
  speak("ar");
  EXPECT_TRUE(is_at_the_right());
  EXPECT_EQ(window_.menuBar()->layoutDirection(), Qt::RightToLeft);
  EXPECT_EQ(qt::LinkDialog(QString()).layoutDirection(), Qt::RightToLeft);
  EXPECT_EQ(control().DocumentHTML(), u"<P>text</P>");
  EXPECT_FALSE(window_.isWindowModified());
  const auto underlines = [&] { return window_.style()->styleHint(QStyle::SH_UnderlineShortcut) != 0; };
  EXPECT_FALSE(underlines()) << "an underlined letter would stand apart from those that it joins";
  speak("en");
  EXPECT_FALSE(is_at_the_right());
  EXPECT_TRUE(underlines());
}

TEST_F(SpokenWindow, TheMenuMarksTheLanguageSpoken) {
  const auto open = [&] {
    for (QMenu* menu : window_.findChildren<QMenu*>()) emit menu->aboutToShow();
  };
  open();
  EXPECT_TRUE(language_item("en")->isChecked());
  speak("ar");
  open();
  EXPECT_TRUE(language_item("ar")->isChecked());
  EXPECT_FALSE(language_item("en")->isChecked());
}

TEST_F(SpokenWindow, FailuresAreToldInTheLanguageToo) {
  speak("de");
  EXPECT_FALSE(window_.open(QStringLiteral("/no/such/page.html")));
  // Why not is in the system's language.
  EXPECT_THAT(text(window_.statusBar()->currentMessage()),
              testing::StartsWith("/no/such/page.html lässt sich nicht lesen: "));
}

TEST_F(SpokenWindow, AtItsEndTheProgramIsAsBefore) {
  {
    Languages other(language_folder);
    other.speak(*other.find(QStringLiteral("ar")));
    EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::RightToLeft);
    EXPECT_EQ(text(qt::translated(u"Untitled")), "بلا عنوان");
  }
  EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::LeftToRight);
  EXPECT_EQ(text(qt::translated(u"Untitled")), "Untitled");
}

}  // namespace
}  // namespace tvx::htmled
