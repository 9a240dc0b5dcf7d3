// How does a program follow what the user does? By listening, and by asking for the HTML when it wants it.
#include <QApplication>
#include <QEventLoop>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTimer>

#include "self_check.h"
#include "tvx/htmled_widget.h"

using tvx::qt::HTMLedWidget;

int main(int argc, char** argv) {
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  QSplitter window(Qt::Vertical);
  auto* editor = new HTMLedWidget(&window);
  auto* source = new QPlainTextEdit(&window);
  source->setReadOnly(true);

  // Told at each touch of the document, with every key: often enough is when the user pauses.
  QTimer pause;
  pause.setSingleShot(true);
  pause.setInterval(50);
  QObject::connect(&pause, &QTimer::timeout, [&] { source->setPlainText(editor->DocumentHTML()); });
  QObject::connect(editor, &HTMLedWidget::property_changed, [&](const QString& key) {
    if (key == "DocumentHTML") pause.start();
  });
  // Whoever reads DocumentHTML gets what is written here.
  QObject::connect(editor, &HTMLedWidget::BeforeGetDocumentHTML,
                   [](QString& html) { html.replace("</P>", "</P>\n"); });

  window.resize(900, 700);
  window.show();
  editor->set_DocumentHTML("<P>One</P><P>Two</P>");

  return run(application, [&] {
    editor->selectText(0, 3);
    editor->bold_document();
    QEventLoop wait;
    QTimer::singleShot(200, &wait, &QEventLoop::quit);
    wait.exec();
    return source->toPlainText() == "<P><B>One</B></P>\n<P>Two</P>\n" && editor->IsDirty();
  });
}
