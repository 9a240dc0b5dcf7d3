#include <QApplication>
#include <QCommandLineParser>
#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <iostream>
#include <string_view>

#include "htmled/automation.h"
#include "htmled/demo.h"
#include "htmled/screenshots.h"
#include "htmled/window.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/web_engine.h"

namespace {

std::int64_t now() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// Whether the program was started with one of these options.
bool has_option(int argc, char** argv, std::initializer_list<std::string_view> options) {
  return std::any_of(argv + 1, argv + argc, [&](std::string_view argument) {
    return std::ranges::find(options, argument.substr(0, argument.find('='))) != options.end();
  });
}

const QCommandLineOption& demo_option() {
  static const QCommandLineOption option(
      QStringLiteral("offscreen-demo"),
      QStringLiteral("Edits FILE by itself, with no display: types a sentence, makes a word bold, undoes and "
                     "redoes that. Writes edited.html and screenshot.png into OUTDIR, and ends."),
      QStringLiteral("OUTDIR"));
  return option;
}

const QCommandLineOption& measure_option() {
  static const QCommandLineOption option(
      QStringLiteral("measure"), QStringLiteral("Opens FILE, writes how long things took, and ends."));
  return option;
}

const QCommandLineOption& screenshots_option() {
  static const QCommandLineOption option(
      QStringLiteral("screenshots"),
      QStringLiteral("Takes the pictures of docs/appearance.md and docs/dialogs.md into OUTDIR, and ends."),
      QStringLiteral("OUTDIR"));
  return option;
}

const QCommandLineOption& automation_option() {
  static const QCommandLineOption option(
      QStringLiteral("automation"),
      QStringLiteral(
          "Takes requests from a program on standard input and answers on standard output: JSON-RPC, "
          "one message a line (docs/automation.md)."));
  return option;
}

const QCommandLineOption& language_option() {
  static const QCommandLineOption option(
      QStringLiteral("language"),
      QStringLiteral(
          "The language of menus, tool tips and dialogs: de, en, fr, ... Without it, the one chosen "
          "last, or the system's."),
      QStringLiteral("CODE"));
  return option;
}

void set_up(QCommandLineParser& parser) {
  QCoreApplication::setApplicationName(QStringLiteral("htmled"));
  QCoreApplication::setApplicationVersion(QStringLiteral(TVX_VERSION));
  parser.setApplicationDescription(QStringLiteral("A visual editor for HTML documents."));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The document to open."),
                               QStringLiteral("[FILE]"));
  parser.addOptions(
      {language_option(), demo_option(), measure_option(), automation_option(), screenshots_option()});
}

/// False, with the user told, if there is no such language.
bool choose_language(tvx::htmled::Window& window, const QCommandLineParser& parser) {
  using tvx::htmled::Language;
  const bool told = parser.isSet(language_option());
  // What runs by itself says the same on every machine.
  const bool by_itself =
      parser.isSet(demo_option()) || parser.isSet(measure_option()) || parser.isSet(screenshots_option());
  if (!told && by_itself) return true;
  const QString code = parser.value(language_option());
  const Language* language = told ? window.languages().find(code) : window.languages().preferred();
  if (language) window.speak(*language);
  if (language || !told) return true;
  std::cerr << "htmled: there is no language file for " << code.toStdString() << '\n';
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  const std::int64_t start = now();
  QCommandLineParser parser;
  set_up(parser);
  if (has_option(argc, argv, {"-h", "--help", "--help-all", "-v", "--version"})) {
    // No screen is needed to say that.
    const QCoreApplication application(argc, argv);
    parser.process(application);
  }
  if (has_option(argc, argv, {"--offscreen-demo"}) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  parser.process(application);

  tvx::qt::MessageLoop loop;
  const QString file = parser.positionalArguments().value(0);
  if (parser.isSet(automation_option())) return tvx::htmled::run_automation(loop, file);
  tvx::htmled::Window window(loop);
  if (!choose_language(window, parser)) return 2;
  window.show();
  if (parser.isSet(measure_option())) {
    window.start({});
    return tvx::htmled::run_measures(window, loop, file, start);
  }
  const bool opened = window.start(file);
  if (parser.isSet(screenshots_option()))
    return tvx::htmled::run_screenshots(window, loop, parser.value(screenshots_option()));
  if (parser.isSet(demo_option()))
    return opened ? tvx::htmled::run_demo(window, loop, parser.value(demo_option())) : 1;
  return QApplication::exec();
}
