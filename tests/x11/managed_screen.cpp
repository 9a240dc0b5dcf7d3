#include "x11/managed_screen.h"

#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include "x11/hands.h"

namespace tvx::x11 {
namespace {

constexpr int patience = 30'000;  // milliseconds

void end(QProcess& process) {
  if (process.state() == QProcess::NotRunning) return;
  process.terminate();
  if (process.waitForFinished(5000)) return;
  process.kill();
  process.waitForFinished();
}

}  // namespace

void ManagedScreen::SetUp() {
  if (!XDisplay::skip_reason.isEmpty()) GTEST_SKIP() << "SKIPPED: " << XDisplay::skip_reason.toStdString();
  if (QStandardPaths::findExecutable(QStringLiteral("openbox")).isEmpty())
    GTEST_SKIP() << "SKIPPED: needs openbox: scripts/setup installs it";
  display_.emplace();
  surroundings_ = QProcessEnvironment::systemEnvironment();
  surroundings_.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display_->name()));
  surroundings_.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
  manager_.setProcessEnvironment(surroundings_);
  manager_.setStandardOutputFile(QProcess::nullDevice());
  manager_.setStandardErrorFile(QProcess::nullDevice());
  // Its own first command: it manages windows by then, and none that comes is passed over.
  const QString managed = path_of(QStringLiteral("managed"));
  manager_.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable"), QStringLiteral("--startup"),
                                             QStringLiteral("touch %1").arg(managed)});
  ASSERT_TRUE(wait_for([&] { return QFile::exists(managed); })) << "openbox doesn't manage the screen";
}

void ManagedScreen::TearDown() {
  end(program_);
  end(manager_);
  display_.reset();
}

void ManagedScreen::start(const QString& program, const QStringList& arguments) {
  program_.setProcessEnvironment(surroundings_);
  program_.setStandardOutputFile(QProcess::nullDevice());
  program_.setStandardErrorFile(QProcess::nullDevice());
  program_.start(program, arguments);
  ASSERT_TRUE(program_.waitForStarted());
}

void ManagedScreen::kill_program() {
  program_.kill();
  program_.waitForFinished();
}

QString ManagedScreen::ask(const QStringList& question) {
  QProcess process;
  process.setProcessEnvironment(surroundings_);
  process.setStandardErrorFile(QProcess::nullDevice());
  process.start(QStringLiteral("xdotool"), question);
  if (!process.waitForFinished(patience)) process.kill();
  return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QString ManagedScreen::active_title() {
  return ask({QStringLiteral("getactivewindow"), QStringLiteral("getwindowname")});
}

bool ManagedScreen::comes_to_front(const QString& words) {
  return wait_for([&] { return active_title().contains(words); });
}

void ManagedScreen::write(const QString& name, const QByteArray& bytes) {
  QFile out(path_of(name));
  ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size());
}

QByteArray ManagedScreen::file(const QString& name) const {
  QFile in(path_of(name));
  return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

}  // namespace tvx::x11
