#include "tvx/web_engine.h"

#include <errno.h>
#include <unistd.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QLoggingCategory>
#include <iostream>

namespace tvx::qt {
namespace {

constexpr const char* start_report = "qt.webenginecontext";

QLoggingCategory::CategoryFilter filter_before = nullptr;

/// Twenty lines on how the engine starts, which ended with "No suitable graphics backend found" where nothing
/// was wrong, stood in the terminal of everybody who started a program.
void leave_out_start_report(QLoggingCategory* category) {
  if (filter_before) filter_before(category);
  if (qstrcmp(category->categoryName(), start_report) != 0) return;
  category->setEnabled(QtDebugMsg, false);
  category->setEnabled(QtInfoMsg, false);
}

}  // namespace

void prepare_web_engine() {
  QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS");
  const auto add = [&flags](const char* flag) {
    if (!flags.contains(flag)) flags.append(' ').append(flag);
  };
  if (::getuid() == 0 && !flags.contains("--no-sandbox")) {
    add("--no-sandbox");
    std::clog << program_invocation_short_name << ": running as root: the view's sandbox is off\n";
  }
  if (qgetenv("QT_QPA_PLATFORM") == "offscreen") add("--disable-gpu");
  // Waves under wrong words are the engine's own highlights, which this version has to be told to use.
  add("--enable-blink-features=HighlightAPI");
  qputenv("QTWEBENGINE_CHROMIUM_FLAGS", flags.trimmed());
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  if (!filter_before && !qgetenv("QT_LOGGING_RULES").contains(start_report))
    filter_before = QLoggingCategory::installFilter(leave_out_start_report);
}

}  // namespace tvx::qt
