#include <QApplication>
#include <QCommandLineParser>
#include <iostream>

#include "htmled-tour/demo.h"
#include "htmled-tour/screenshots.h"
#include "htmled/joined_letters_style.h"
#include "htmled/window.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/web_engine.h"

namespace {

const QCommandLineOption& language_option() {
  static const QCommandLineOption option(
      QStringLiteral("language"),
      QStringLiteral("The language of menus, tool tips and dialogs: de, en, fr, ..."),
      QStringLiteral("CODE"));
  return option;
}

struct Tour {
  QString name, folder, file;
};

/// What the arguments ask for; ends the program where they ask for nothing that there is.
Tour read_arguments(QCommandLineParser& parser, const QApplication& application) {
  parser.setApplicationDescription(QStringLiteral(
      "Leads the editor's window through by itself, and ends.\n\n"
      "  demo OUTDIR [FILE]    types a sentence, makes a word bold, undoes and redoes that; writes\n"
      "                        edited.html and screenshot.png into OUTDIR\n"
      "  screenshots OUTDIR    takes the pictures of docs/appearance.md and docs/dialogs.md\n\n"
      "With QT_QPA_PLATFORM=offscreen it needs no display."));
  parser.addHelpOption();
  parser.addOption(language_option());
  parser.addPositionalArgument(QStringLiteral("TOUR"), QStringLiteral("demo or screenshots"));
  parser.process(application);
  const QStringList words = parser.positionalArguments();
  const QString name = words.value(0);
  if (name == QStringLiteral("demo") && (words.size() == 2 || words.size() == 3))
    return {name, words[1], words.value(2)};
  if (name == QStringLiteral("screenshots") && words.size() == 2) return {name, words[1], {}};
  std::cerr << parser.helpText().toStdString();
  std::exit(2);
}

/// False, with the user told, if there is no such language. Without one the window speaks as the program does
/// by itself: what runs alone says the same on every machine.
bool choose_language(tvx::htmled::Window& window, const QString& code) {
  if (code.isEmpty()) return true;
  if (const tvx::htmled::Language* language = window.languages().find(code)) {
    window.speak(*language);
    return true;
  }
  std::cerr << "htmled-tour: there is no language file for " << code.toStdString() << '\n';
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication::setApplicationName(QStringLiteral("htmled"));  // the window's own settings
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  QApplication::setStyle(new tvx::htmled::JoinedLettersStyle);
  QCommandLineParser parser;
  const Tour tour = read_arguments(parser, application);

  tvx::qt::MessageLoop loop;
  tvx::htmled::Window window(loop);
  if (!choose_language(window, parser.value(language_option()))) return 2;
  window.show();
  const bool opened = window.start(tour.file);
  if (tour.name == QStringLiteral("screenshots"))
    return tvx::htmled::run_screenshots(window, loop, tour.folder);
  return opened ? tvx::htmled::run_demo(window, loop, tour.folder) : 1;
}
