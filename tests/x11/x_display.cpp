#include "x11/x_display.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include "x11/waiting.h"

namespace tvx::x11 {
namespace {

constexpr int patience = 30'000;  // milliseconds

}  // namespace

XDisplay::XDisplay() {
  for (const char* program : {"Xvfb", "xclip", "xdotool"}) {
    if (!QStandardPaths::findExecutable(QLatin1String(program)).isEmpty()) continue;
    problem_ = QStringLiteral("needs %1: scripts/setup installs it").arg(QLatin1String(program));
    return;
  }
  server_.setStandardErrorFile(QProcess::nullDevice());
  server_.start(QStringLiteral("Xvfb"),
                {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                 QStringLiteral("0"), QStringLiteral("1280x1024x24"), QStringLiteral("-nolisten"),
                 QStringLiteral("tcp"), QStringLiteral("-noreset")});
  QByteArray told;
  while (!told.endsWith('\n') && server_.waitForReadyRead(patience)) told += server_.readAllStandardOutput();
  name_ = ":" + told.trimmed();
  if (!told.endsWith('\n')) qFatal("Xvfb doesn't start");
}

XDisplay::~XDisplay() {
  if (server_.state() == QProcess::NotRunning) return;
  server_.terminate();
  if (!server_.waitForFinished(5000)) server_.kill();
}

QByteArray output_of(const QString& program, const QStringList& arguments) {
  QProcess process;
  QByteArray output;
  process.setStandardErrorFile(QProcess::nullDevice());
  QObject::connect(&process, &QProcess::readyReadStandardOutput,
                   [&] { output += process.readAllStandardOutput(); });
  process.start(program, arguments);
  const bool ended = wait_for([&] { return process.state() == QProcess::NotRunning; });
  EXPECT_TRUE(ended) << program.toStdString() << " gets no answer";
  if (process.state() != QProcess::NotRunning) process.kill();
  process.waitForFinished(1000);
  return output + process.readAllStandardOutput();
}

namespace {

/// Starts a program that takes the clipboard, and waits until the server has told our side of its new owner.
template <class Start>
void await_owner(QClipboard::Mode mode, Start&& start) {
  bool heard = false;
  QObject here;
  QObject::connect(QGuiApplication::clipboard(), &QClipboard::changed, &here,
                   [&](QClipboard::Mode changed) { heard = heard || changed == mode; });
  start();
  ASSERT_TRUE(wait_for([&] { return heard; }));
}

}  // namespace

void offer(const QByteArray& bytes, const QString& target, const QString& selection) {
  QTemporaryFile file;
  ASSERT_TRUE(file.open());
  file.write(bytes);
  file.close();
  const auto mode = selection == QStringLiteral("primary") ? QClipboard::Selection : QClipboard::Clipboard;
  await_owner(mode, [&] {
    QProcess process;
    // It goes on in the background and would hold our pipes open.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("xclip"), {QStringLiteral("-i"), QStringLiteral("-selection"), selection,
                                            QStringLiteral("-t"), target, file.fileName()});
    ASSERT_TRUE(process.waitForFinished(patience));
  });
}

void offer_forms(const QMap<QString, QByteArray>& forms) {
  const QTemporaryDir folder;
  QStringList arguments;
  for (auto form = forms.begin(); form != forms.end(); ++form) {
    QFile file(folder.filePath(QString::number(arguments.size())));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(form.value()) == form.value().size());
    arguments << form.key() << file.fileName();
  }
  await_owner(QClipboard::Clipboard, [&] {
    EXPECT_TRUE(QProcess::startDetached(QStringLiteral(TVX_BIN_DIR "/clipboard_owner"), arguments));
  });
}

}  // namespace tvx::x11
