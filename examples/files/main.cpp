// How does a program load a file into the editor, and save it? Whole documents and bodies alike, in one call.
#include <QApplication>
#include <QFile>
#include <QMainWindow>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QToolBar>

#include "self_check.h"
#include "tvx/htmled_widget.h"

using tvx::qt::HTMLedWidget;

namespace {

QByteArray bytes_of(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

int main(int argc, char** argv) {
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  QMainWindow window;
  auto* editor = new HTMLedWidget(&window);
  window.setCentralWidget(editor);

  QString path;
  QToolBar* bar = window.addToolBar("File");
  // With no name the editor asks for one. `true`: the document with its head; false: its body only.
  bar->addAction("Open", [&] { path = editor->Open_document({}, true); });
  bar->addAction("Save", [&] { editor->Save_document(path, true); });
  bar->addAction("Save as", [&] { editor->Save_document({}, true); });
  bar->addAction("Print", [&] { editor->print_Document(); });
  QObject::connect(editor, &HTMLedWidget::Error, [&](int number, const QString& text) {
    window.statusBar()->showMessage(QString("%1 (%2)").arg(text).arg(number));
  });
  window.show();

  return run(application, [&] {
    const QTemporaryDir folder;
    const QString first = folder.filePath("first.html"), second = folder.filePath("second.html");
    QFile file(first);
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write("<HTML><HEAD><TITLE>Kept</TITLE></HEAD><BODY><P>Hello</P></BODY></HTML>");
    file.close();
    editor->set_DocumentTitle("Kept");
    editor->Open_document(first, true);
    editor->Save_document(second, true);
    return bytes_of(second) == bytes_of(first) && !editor->IsDirty();
  });
}
