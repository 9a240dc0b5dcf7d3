// A host's window: public headers and Qt, and nothing else.
#include <QApplication>
#include <QSettings>

#include "tvx/document_file.h"
#include "tvx/htmled_widget.h"
#include "tvx/settings_store.h"

int main(int argc, char** argv) {
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  QSettings settings(QStringLiteral("host"), QStringLiteral("host"));
  tvx::qt::HTMLedWidget editor;
  editor.read_properties(tvx::qt::SettingsStore(settings));
  QObject::connect(&editor, &tvx::qt::HTMLedWidget::DocumentClick, [](const tvx::Object& element) {
    if (element) qInfo("%s", qPrintable(QString::fromStdU16String(element.kind())));
  });
  editor.show();
  tvx::DocumentFile file = tvx::DocumentFile::open(u"page.html");
  file.open_in(editor);
  editor.press_button(QStringLiteral("Toolbar1"), QStringLiteral("Bold"));
  return QApplication::exec();
}
