// A program around the editor, as a test meets it from without: a field above it and one below. The window's
// title says what the page reads, and which part has the keys.
#include <QApplication>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

#include "tvx/htmled_widget.h"

namespace {

// By the part of the editor, or by the field.
QString name_of_focus(const QWidget& editor) {
  const QWidget* part = QApplication::focusWidget();
  while (part && editor.isAncestorOf(part) && part->parentWidget() != &editor) part = part->parentWidget();
  if (!part) return {};
  // The page is the part without a name of its own.
  return part->objectName().isEmpty() && editor.isAncestorOf(part) ? QStringLiteral("page")
                                                                   : part->objectName();
}

}  // namespace

int main(int argc, char** argv) {
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  QWidget window;
  QLineEdit above, below;
  above.setObjectName(QStringLiteral("above"));
  below.setObjectName(QStringLiteral("below"));
  tvx::qt::HTMLedWidget editor;
  QVBoxLayout layout(&window);
  layout.addWidget(&above);
  layout.addWidget(&editor, 1);
  layout.addWidget(&below);
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &window, [&] {
    window.setWindowTitle(
        QStringLiteral("embedding [%1] [%2]").arg(editor.DocumentText(), name_of_focus(editor)));
  });
  timer.start(20);
  editor.set_DocumentHTML(QStringLiteral("<P>page</P>"));
  window.resize(900, 600);
  window.show();
  return QApplication::exec();
}
