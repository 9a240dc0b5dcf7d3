#include <QApplication>
#include <QCommandLineParser>
#include <chrono>

#include "htmled/demo.h"
#include "htmled/window.h"
#include "qt/message_loop.h"
#include "qt/web_view.h"

namespace {

std::int64_t now() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace

int main(int argc, char** argv) {
  const std::int64_t start = now();
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("htmled"));
  QCoreApplication::setApplicationVersion(QStringLiteral(TVX_VERSION));

  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("A visual editor for HTML documents."));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The document to open."),
                               QStringLiteral("[FILE]"));
  const QCommandLineOption demo(
      QStringLiteral("offscreen-demo"),
      QStringLiteral("Edits FILE by itself, with no display: types a sentence, makes a word bold, undoes and "
                     "redoes that. Writes edited.html and screenshot.png into OUTDIR, and ends."),
      QStringLiteral("OUTDIR"));
  const QCommandLineOption measure(QStringLiteral("measure"),
                                   QStringLiteral("Opens FILE, writes how long things took, and ends."));
  parser.addOptions({demo, measure});
  parser.process(application);

  tvx::qt::MessageLoop loop;
  tvx::htmled::Window window(loop);
  window.show();
  const QString file = parser.positionalArguments().value(0);
  if (parser.isSet(measure)) {
    window.start({});
    return tvx::htmled::run_measures(window, loop, file, start);
  }
  const bool opened = window.start(file);
  if (parser.isSet(demo)) return opened ? tvx::htmled::run_demo(window, loop, parser.value(demo)) : 1;
  return QApplication::exec();
}
