#include "window/steps.h"

#include <poll.h>
#include <unistd.h>

#include <QFile>
#include <cstdio>
#include <iostream>
#include <string>

#include "window/edited_page.h"

namespace tvx::bench {
namespace {

/// What a process's first thread, which has its loop, has used of a processor so far.
double processor_time(qint64 process) {
  QFile file(QStringLiteral("/proc/%1/task/%1/schedstat").arg(process));
  return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').first().toDouble() / 1e6 : 0;
}

struct ProcessorTimes {
  double program, page;
};

ProcessorTimes processor_times(EditedPage& page) {
  return {processor_time(::getpid()), processor_time(page.page().renderProcessPid())};
}

/// The next line; the program's events run until it is there. Nothing at the end.
QString next_line() {
  wait_until(
      [] {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        return ::poll(&input, 1, 0) > 0;
      },
      3600);
  std::string line;
  return std::getline(std::cin, line) ? QString::fromStdString(line) : QString();
}

void rest_between_keys() { rest(100); }

bool do_step(EditedPage& page, const QString& step, const QString& argument) {
  const int count = argument.toInt();
  if (step == u"open") {
    page.open(argument);
  } else if (step == u"pace") {
    for (int i = 0; i < count; ++i, rest_between_keys()) page.key(Qt::Key_X, QStringLiteral("x"));
  } else if (step == u"pixel") {
    for (int i = 0; i < count; ++i, rest_between_keys()) page.letter_to_pixel();
  } else if (step == u"caret") {
    for (int i = 0; i < count; ++i, rest_between_keys()) page.key(i % 2 ? Qt::Key_Left : Qt::Key_Right);
  } else {
    return false;
  }
  return true;
}

}  // namespace

int do_steps(EditedPage& own, EditedPage& plain, const std::function<QString(const QString&)>& file_of) {
  std::ios::sync_with_stdio(false);
  std::cin.rdbuf()->pubsetbuf(nullptr, 0);
  std::cout << "ready" << std::endl;
  for (QString line = next_line(); !line.isEmpty(); line = next_line()) {
    const QString who = line.section(u' ', 0, 0), step = line.section(u' ', 1, 1);
    const QString argument = step == u"open" ? file_of(line.section(u' ', 2)) : line.section(u' ', 2);
    EditedPage& page = who == u"plain" ? plain : own;
    if (step != u"open") {
      page.to_front();
      page.place_caret();
    }
    const double since = now();
    const ProcessorTimes before = processor_times(page);
    if (argument.isEmpty() || !do_step(page, step, argument)) return 2;
    const double time = now() - since;
    const ProcessorTimes after = processor_times(page);
    std::cout << "done " << time << ' ' << after.program - before.program << ' ' << after.page - before.page
              << std::endl;
  }
  return 0;
}

}  // namespace tvx::bench
