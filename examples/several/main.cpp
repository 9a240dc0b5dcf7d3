// Can a window hold several editors? As many as it likes: they share nothing, and each remembers itself.
#include <QApplication>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>

#include "self_check.h"
#include "tvx/htmled_widget.h"
#include "tvx/settings_store.h"

using tvx::qt::HTMLedWidget;

namespace {

/// Properties, the text included, in a settings file: a group for each editor.
void save(QSettings& settings, const QTabWidget& window) {
  for (int i = 0; i < window.count(); ++i) {
    settings.beginGroup(window.tabText(i));
    tvx::qt::SettingsStore store(settings);
    static_cast<HTMLedWidget*>(window.widget(i))->write_properties(store);
    settings.endGroup();
  }
}

HTMLedWidget* add(QTabWidget& window, const QString& name, QSettings& settings) {
  auto* editor = new HTMLedWidget;
  settings.beginGroup(name);
  editor->read_properties(tvx::qt::SettingsStore(settings));
  settings.endGroup();
  window.addTab(editor, name);
  return editor;
}

}  // namespace

int main(int argc, char** argv) {
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  const QTemporaryDir folder;
  QSettings settings(folder.filePath("editors.ini"), QSettings::IniFormat);

  QTabWidget window;
  HTMLedWidget* letter = add(window, "Letter", settings);
  HTMLedWidget* notes = add(window, "Notes", settings);
  notes->set_useEnterAsBR(true);
  window.resize(900, 640);
  window.show();
  letter->start();
  notes->start();
  letter->set_DocumentHTML("<P>Dear reader</P>");
  notes->set_DocumentHTML("<P>Milk, eggs</P>");

  return run(application, [&] {
    letter->selectText(0, 4);
    letter->bold_document();
    notes->undo_document();  // has nothing to take back: the step was the letter's
    save(settings, window);
    QTabWidget again;
    HTMLedWidget* remembered = add(again, "Notes", settings);
    remembered->start();
    return letter->DocumentHTML() == "<P><B>Dear</B> reader</P>" &&
           notes->DocumentHTML() == "<P>Milk, eggs</P>" && letter->hwnd() != notes->hwnd() &&
           remembered->useEnterAsBR() && remembered->DocumentHTML() == "<P>Milk, eggs</P>";
  });
}
