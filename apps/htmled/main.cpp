#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QTimer>
#include <algorithm>
#include <initializer_list>
#include <iostream>
#include <optional>
#include <string_view>

#include "htmled/automation.h"
#include "htmled/joined_letters_style.h"
#include "htmled/start/running_instance.h"
#include "htmled/start/termination.h"
#include "htmled/window.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/web/way_to_draw.h"
#include "tvx/qt/web/web_page.h"
#include "tvx/web_engine.h"

namespace {

/// The files to open where nothing but files is asked for; null where anything else is.
std::optional<QStringList> files_alone(int argc, char** argv) {
  QStringList files;
  for (int i = 1; i < argc; ++i) {
    if (argv[i][0] == '-') return std::nullopt;
    files.append(QString::fromLocal8Bit(argv[i]));
  }
  return files;
}

/// Whether the program was started with one of these options.
bool has_option(int argc, char** argv, std::initializer_list<std::string_view> options) {
  return std::any_of(argv + 1, argv + argc, [&](std::string_view argument) {
    return std::ranges::find(options, argument.substr(0, argument.find('='))) != options.end();
  });
}

/// Without one Qt would end the program by an abort, with a message on plugins.
bool has_display(int argc, char** argv) {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "QT_QPA_PLATFORM"})
    if (!qEnvironmentVariableIsEmpty(name)) return true;
  return has_option(argc, argv, {"-platform", "--platform"});
}

const QCommandLineOption& automation_option() {
  static const QCommandLineOption option(
      QStringLiteral("automation"),
      QStringLiteral(
          "Takes requests from a program on standard input and answers on standard output: JSON-RPC, "
          "one message a line (docs/automation.md)."));
  return option;
}

const QCommandLineOption& new_window_option() {
  static const QCommandLineOption option(
      QStringLiteral("new-window"),
      QStringLiteral("Opens a window of its own, also where the program is running already."));
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
  // A desktop finds the program's entry, and with it its icon, by this name.
  QGuiApplication::setDesktopFileName(QStringLiteral("org.tvxhtml.htmled"));
  parser.setApplicationDescription(QStringLiteral("A visual editor for HTML documents."));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addPositionalArgument(QStringLiteral("FILE"),
                               QStringLiteral("The documents to open, each in a tab. A program that is "
                                              "running already opens them."),
                               QStringLiteral("[FILE...]"));
  parser.addOptions({language_option(), new_window_option(), automation_option()});
}

/// False, with the user told, if there is no such language.
bool choose_language(tvx::htmled::Window& window, const QCommandLineParser& parser) {
  using tvx::htmled::Language;
  const bool told = parser.isSet(language_option());
  const QString code = parser.value(language_option());
  const Language* language = told ? window.languages().find(code) : window.languages().preferred();
  if (language) window.speak(*language);
  if (language || !told) return true;
  std::cerr << "htmled: there is no language file for " << code.toStdString() << '\n';
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  QCommandLineParser parser;
  set_up(parser);
  if (has_option(argc, argv, {"-h", "--help", "--help-all", "-v", "--version"})) {
    // No screen is needed to say that.
    const QCoreApplication application(argc, argv);
    parser.process(application);
  }
  if (const auto files = files_alone(argc, argv); files && tvx::htmled::hand_to_running_instance(*files))
    return 0;
  if (!has_display(argc, argv)) {
    std::cerr << "htmled: there is no display; htmled-cli edits without one\n";
    return 1;
  }
  // What is read is the document. The engine's own tree of the page, beside it, would say everything twice.
  qunsetenv("QTWEBENGINE_ENABLE_LINUX_ACCESSIBILITY");
  tvx::qt::prepare_web_engine();
  auto drawing = std::make_optional<tvx::qt::WayToDraw>();
  QApplication application(argc, argv);
  drawing.reset();
  parser.process(application);
  tvx::qt::view_profile();  // the engine's processes come up beside all that is done here
  QApplication::setStyle(new tvx::htmled::JoinedLettersStyle);
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/htmled/icon.svg")));

  tvx::qt::MessageLoop loop;
  const QStringList files = parser.positionalArguments();
  if (parser.isSet(automation_option())) return tvx::htmled::run_automation(loop, files.value(0));
  tvx::htmled::Window window(loop);
  if (!choose_language(window, parser)) return 2;
  window.publishing().restore();
  window.remember_appearance();
  window.show();
  window.start_with(files);
  const tvx::htmled::RunningInstance instance;
  QObject::connect(&instance, &tvx::htmled::RunningInstance::started_again, &window,
                   [&window](const QStringList& more) {
                     window.come_to_front();
                     window.open_all(more);
                   });
  const tvx::htmled::Termination termination;
  QObject::connect(&termination, &tvx::htmled::Termination::asked, &window, [&window](int signal) {
    window.keep_everything();
    window.stop_everything();
    QApplication::exit(128 + signal);
  });
  QObject::connect(&application, &QApplication::commitDataRequest, &window,
                   &tvx::htmled::Window::keep_everything, Qt::DirectConnection);
  QTimer::singleShot(0, &window, &tvx::htmled::Window::offer_unsaved);
  return QApplication::exec();
}
