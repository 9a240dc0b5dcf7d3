// A form that the running program loads: loaded PLUGINS FORM
#include <QApplication>
#include <QFile>
#include <QUiLoader>
#include <memory>

#include "form_checks.h"

int main(int count, char** arguments) {
  tvx::qt::prepare_web_engine();
  QApplication application(count, arguments);
  QUiLoader loader;
  loader.addPluginPath(QString::fromLocal8Bit(arguments[1]));
  if (!loader.availableWidgets().contains(QStringLiteral("tvx::qt::HTMLedWidget"))) {
    std::fprintf(stderr, "not so: the plugin is loaded\n");
    return 1;
  }
  QFile file(QString::fromLocal8Bit(arguments[2]));
  if (!file.open(QIODevice::ReadOnly)) return 1;
  const std::unique_ptr<QWidget> form(loader.load(&file));
  return form && is_as_designed(*form) ? 0 : 1;
}
