#include "htmled/drafts.h"

#include <signal.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <cerrno>

#include "tvx/base/private_folder.h"

namespace tvx::htmled {
namespace {

const QString name = QStringLiteral("drafts-");
constexpr int seconds_kept = 24 * 60 * 60;

QString folder() {
  const std::string own = private_temporary_folder();
  return own.empty() ? QDir::tempPath() : QString::fromLocal8Bit(own.c_str());
}

bool is_gone(qint64 process) {
  return process > 0 && ::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
}

}  // namespace

QString drafts_template() {
  return QStringLiteral("%1/%2%3-XXXXXX").arg(folder(), name).arg(QCoreApplication::applicationPid());
}

void sweep_drafts() {
  const QDateTime yesterday = QDateTime::currentDateTime().addSecs(-seconds_kept);
  const auto kinds = QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot;
  for (const QFileInfo& found : QDir(folder()).entryInfoList({name + u'*'}, kinds))
    if (is_gone(found.fileName().section(u'-', 1, 1).toLongLong()) && found.lastModified() < yesterday)
      QDir(found.filePath()).removeRecursively();
}

}  // namespace tvx::htmled
