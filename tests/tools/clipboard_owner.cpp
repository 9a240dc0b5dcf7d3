#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>

/// Another program that has copied something: it offers each file's bytes in the form before its name, until
/// somebody else copies. clipboard_owner FORM FILE...
int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  auto* data = new QMimeData;
  for (int i = 1; i + 1 < argc; i += 2) {
    QFile file(QString::fromLocal8Bit(argv[i + 1]));
    if (!file.open(QIODevice::ReadOnly)) return 1;
    data->setData(QString::fromLocal8Bit(argv[i]), file.readAll());
  }
  QClipboard& clipboard = *QGuiApplication::clipboard();
  QObject::connect(&clipboard, &QClipboard::dataChanged, &application, [&] {
    if (!clipboard.ownsClipboard()) QCoreApplication::quit();
  });
  clipboard.setMimeData(data);
  return QGuiApplication::exec();
}
