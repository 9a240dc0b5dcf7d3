// The widget, from an installed library: shown, edited, vetoed and read.
#include <QApplication>

#include "tvx/htmled_widget.h"

int main(int count, char** arguments) {
  tvx::qt::prepare_web_engine();
  QApplication application(count, arguments);
  tvx::qt::HTMLedWidget editor;
  QObject::connect(&editor, &tvx::qt::HTMLedWidget::ToolButtonClick,
                   [](const QString&, int, const QString& button, bool& cancel) {
                     cancel = button == QStringLiteral("Italic");
                   });
  editor.show();
  editor.set_DocumentHTML(QStringLiteral("<P>Hello world</P>"));
  editor.selectText(6, 5);
  editor.press_button(QStringLiteral("Toolbar1"), QStringLiteral("Bold"));
  editor.press_button(QStringLiteral("Toolbar1"), QStringLiteral("Italic"));
  const QString html = editor.property("DocumentHTML").toString();
  qInfo("%s", qPrintable(html));
  return html == QStringLiteral("<P>Hello <B>world</B></P>") ? 0 : 1;
}
