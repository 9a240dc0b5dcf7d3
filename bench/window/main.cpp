// The window beside a plain editable page in the same engine: what a key, a move of the caret and a frame
// take in both, turn about, so that the ratio holds on a busy machine as well.
//
//   window_bench [--rounds N] [NAME...]   the documents of these names; without any the first four
//   window_bench --steps                  one step at a time, as it is told to (steps.h)
//   10KB 100KB 1MB   generated articles
//   rows             a table of 10,000 rows
//   10MB             an article again
//   items            a list of 10,000 items
//   paragraph        one of 3,000 lines or so
//   box              5,000 paragraphs in one DIV
//   right-to-left    5,000 paragraphs in Hebrew

#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "documents.h"
#include "tvx/base/strings.h"
#include "tvx/web_engine.h"
#include "window/own_page.h"
#include "window/plain_page.h"
#include "window/samples.h"
#include "window/steps.h"

namespace {

using namespace tvx::bench;

struct Pair {
  Samples own, plain;
};

struct Figure {
  const char* name;
  std::function<void(EditedPage&, Samples&)> take;
  Pair pair = {};
};

constexpr char head[] = "<!DOCTYPE html><title>Test</title>";

/// So many times `item`, "#" being a number.
std::string many(int count, const std::string& item) {
  std::string all;
  for (int i = 0; i < count; ++i)
    for (const char c : item)
      if (c == '#')
        all += std::to_string(i);
      else
        all += c;
  return all;
}

std::string text_of(const QString& name) {
  if (name == u"10KB") return tvx::to_utf8(article(10'000));
  if (name == u"100KB") return tvx::to_utf8(article(100'000));
  if (name == u"1MB") return tvx::to_utf8(article(1'000'000));
  if (name == u"10MB") return tvx::to_utf8(article(10'000'000));
  if (name == u"rows")
    return std::string(head) + "<table border=1>" +
           many(10'000, "<tr><td>row #</td><td>some text</td><td>more of it</td></tr>") + "</table>";
  const std::string words = "some words <b>that</b> go on, the # of them, until a line is full, ";
  if (name == u"items")
    return std::string(head) + "<ol>" + many(10'000, "<li>" + words + "and the next") + "</ol>";
  if (name == u"paragraph") return std::string(head) + "<p>" + many(3'000, words) + "</p>";
  const std::string paragraphs = many(5'000, "<p>" + words + words + words + "and the next.</p>");
  if (name == u"box") return std::string(head) + "<div id=all>" + paragraphs + "</div>";
  if (name == u"right-to-left")
    return std::string(head) + "<body dir=rtl>" +
           many(5'000,
                "<p>\u05e9\u05dc\u05d5\u05dd \u05e2\u05d5\u05dc\u05dd # <i>\u05d5\u05e2\u05d5\u05d3</i> "
                "\u05de\u05dc\u05d9\u05dd \u05e8\u05d1\u05d5\u05ea, word.</p>");
  return {};
}

void type_in_a_loop(EditedPage& page, Samples& samples) {
  for (int i = 0; i < 20; ++i) samples.add(page.key(Qt::Key_X, QStringLiteral("x")));
}

void type_at_a_pace(EditedPage& page, Samples& samples) {
  for (int i = 0; i < 6; ++i) {
    rest(100);
    samples.add(page.key(Qt::Key_X, QStringLiteral("x")));
  }
}

void type_until_seen(EditedPage& page, Samples& samples) {
  for (int i = 0; i < 4; ++i) {
    rest(100);
    samples.add(page.letter_to_pixel());
  }
}

void move_the_caret(EditedPage& page, Samples& samples) {
  for (int i = 0; i < 5; ++i) samples.add(page.key(Qt::Key_Right));
  for (int i = 0; i < 5; ++i) samples.add(page.key(Qt::Key_Left));
}

void scroll(EditedPage& page, Samples& samples) {
  page.ask(QStringLiteral(
      "globalThis.benchFrames = ''; (function () { const times = []; let last; const step = (at) => {"
      "if (last !== undefined) times.push(at - last); last = at; if (times.length === 30) {"
      "globalThis.benchFrames = times.join(); scrollTo(0, 0); return; } scrollBy(0, 200); "
      "requestAnimationFrame(step); };"
      "requestAnimationFrame(step); })()"));
  QString frames;
  wait_until(
      [&] {
        rest(50);
        return !(frames = page.ask(QStringLiteral("globalThis.benchFrames"))).isEmpty();
      },
      20);
  for (const QString& frame : frames.split(u',')) samples.add(frame.toDouble());
}

/// What docs/performance.md shows: a row for each figure, a column for each document.
struct Table {
  void begin_column(const QString& name) { names.push_back(name.toStdString()); }
  void add(const std::string& row, const std::string& cell) {
    auto found = std::find_if(rows.begin(), rows.end(), [&](const auto& one) { return one.first == row; });
    if (found == rows.end()) found = rows.insert(rows.end(), {row, {}});
    found->second.resize(names.size() - 1);
    found->second.push_back(cell);
  }
  void print() const {
    std::string line = "| the editor / plain editable", under = "|---";
    for (const std::string& name : names) line += " | " + name, under += "|--:";
    std::printf("%s |\n%s|\n", line.c_str(), under.c_str());
    for (const auto& [row, cells] : rows) {
      std::printf("| %s", row.c_str());
      for (std::size_t i = 0; i < names.size(); ++i)
        std::printf(" | %s", i < cells.size() ? cells[i].c_str() : "");
      std::printf(" |\n");
    }
  }

  std::vector<std::string> names;
  std::vector<std::pair<std::string, std::vector<std::string>>> rows;
};

Table table;

std::string milliseconds(double time) {
  char text[32];
  std::snprintf(text, sizeof text, time < 10 ? "%.1f ms" : "%.0f ms", time);
  return text;
}

void print(const char* what, const Samples& own, const Samples& plain) {
  char ratio[32];
  std::snprintf(ratio, sizeof ratio, "%.2f", plain.median() > 0 ? own.median() / plain.median() : 0);
  table.add(what, ratio + (" (" + milliseconds(own.median()) + ")"));
  std::printf("  %-34s %8.1f %8.1f   %8.1f %8.1f   %6.2f\n", what, own.median(), own.nearly_all(),
              plain.median(), plain.nearly_all(), plain.median() > 0 ? own.median() / plain.median() : 0);
}

/// How often a file is opened: a huge one takes its time.
int times_for(const QString& file) { return QFileInfo(file).size() > 5'000'000 ? 1 : 3; }

/// What the user does while a document is still coming into the window.
void measure_while_it_comes(const QString& file, OwnPage& own) {
  Samples keys, jumps;
  const int times = times_for(file);
  for (int i = 0; i < times; ++i) {
    const Samples typed = own.type_while_it_comes(file, 30);
    for (const double key : typed.all()) keys.add(key);
    if (const auto jump = own.jump_while_it_comes(file)) jumps.add(*jump);
  }
  if (!keys.empty()) table.add("key to layout, while the rest comes", milliseconds(keys.median()));
  if (!jumps.empty()) table.add("Ctrl+End while the rest comes", milliseconds(jumps.median()));
  if (!keys.empty())
    std::printf("  key to layout, while the rest comes: %.1f, 95 %% %.1f (%zu keys)\n", keys.median(),
                keys.nearly_all(), keys.all().size());
  if (!jumps.empty())
    std::printf("  Ctrl+End while the rest comes, to the end in the window: %.0f, at most %.0f\n",
                jumps.median(), jumps.nearly_all());
  std::printf("\n");
}

/// Where a document is gone through by both, turn about.
void measure(const QString& name, const QString& file, OwnPage& own, PlainPage& plain, int rounds) {
  table.begin_column(name);
  Pair whole;
  Samples filled, stalls;
  const auto longest_stall = [&own] {
    return own.ask(QStringLiteral("String(tvxView.longestStall)")).toDouble();
  };
  const int times = times_for(file);
  for (int i = 0; i < times; ++i) {
    const EditedPage::Opening opening = own.open(file);
    filled.add(opening.filled.value_or(opening.whole));
    whole.own.add(opening.whole);
    stalls.add(longest_stall());
    whole.plain.add(plain.open(file).whole);
  }
  Figure figures[] = {{"key to layout, in a loop", type_in_a_loop},
                      {"key to layout, at typing pace", type_at_a_pace},
                      {"key to painted pixel", type_until_seen},
                      {"caret a letter on, to layout", move_the_caret},
                      {"from frame to frame, scrolling", scroll}};
  for (int round = 0; round < rounds; ++round) {
    for (EditedPage* page : {static_cast<EditedPage*>(&own), static_cast<EditedPage*>(&plain)}) {
      page->to_front();
      page->place_caret();
      for (Figure& figure : figures) figure.take(*page, page == &own ? figure.pair.own : figure.pair.plain);
    }
  }
  std::printf("%s\n  %-34s %17s   %17s   %6s\n", qPrintable(name), "milliseconds: median, 95 %", "the editor",
              "plain editable", "ratio");
  print("open, to the window filled", filled, whole.plain);
  print("open, to the whole laid out", whole.own, whole.plain);
  for (const Figure& figure : figures) print(figure.name, figure.pair.own, figure.pair.plain);
  std::printf("  longest stall of the editor's page: %.0f ms while it comes, at most %.0f, %.0f afterwards\n",
              stalls.median(), stalls.nearly_all(), longest_stall());
  table.add("longest stall of the page while it comes", milliseconds(stalls.median()));
  measure_while_it_comes(file, own);
  std::fflush(stdout);
}

/// How long this process has been there.
double age() {
  QFile stat(QStringLiteral("/proc/self/stat")), uptime(QStringLiteral("/proc/uptime"));
  if (!stat.open(QIODevice::ReadOnly) || !uptime.open(QIODevice::ReadOnly)) return 0;
  const QByteArray all = stat.readAll();
  const QList<QByteArray> fields = all.mid(all.lastIndexOf(')') + 2).split(' ');
  const double ticks = static_cast<double>(::sysconf(_SC_CLK_TCK));
  return (uptime.readAll().split(' ').first().toDouble() - fields.value(19).toDouble() / ticks) * 1000;
}

/// Writes a document of this name into a file of a folder; no path where none is called so.
QString written(const QString& name, const QTemporaryDir& folder) {
  const QString path = folder.filePath(name + QStringLiteral(".html"));
  QFile file(path);
  const std::string text = text_of(name);
  if (text.empty() || !file.open(QIODevice::WriteOnly)) {
    std::cerr << "window_bench: no document is called " << name.toStdString() << '\n';
    return {};
  }
  file.write(text.data(), static_cast<qint64>(text.size()));
  return path;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication::setApplicationName(QStringLiteral("window_bench"));
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  QApplication::setCursorFlashTime(0);
  QStringList names = application.arguments().mid(1);
  int rounds = 5;
  if (const qsizetype at = names.indexOf(QStringLiteral("--rounds")); at >= 0 && at + 1 < names.size()) {
    rounds = names[at + 1].toInt();
    names.remove(at, 2);
  }
  const bool in_steps = names.removeAll(QStringLiteral("--steps")) > 0;
  if (names.isEmpty())
    names = {QStringLiteral("10KB"), QStringLiteral("100KB"), QStringLiteral("1MB"), QStringLiteral("rows")};

  OwnPage own;
  wait_until([&] { return own.settled() && own.input(); });
  own.key(Qt::Key_X, QStringLiteral("x"));
  std::printf("start of the program, to a caret that has typed: %.0f ms\n\n", age());
  std::fflush(stdout);
  PlainPage plain;
  const QTemporaryDir folder;
  int failed = 0;
  if (in_steps) {
    failed = do_steps(own, plain, [&folder](const QString& name) { return written(name, folder); });
  } else {
    for (const QString& name : names) {
      const QString path = written(name, folder);
      if (path.isEmpty()) return 2;
      measure(name, path, own, plain, rounds);
    }
    table.print();
  }
  own.window().setWindowModified(false);
  return failed;
}
