// How does a program stop what a toolbar button would do? By setting `cancel` while the editor asks.
#include <QApplication>

#include "self_check.h"
#include "tvx/htmled_widget.h"

using tvx::qt::HTMLedWidget;

int main(int argc, char** argv) {
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  HTMLedWidget editor;

  // In this program nothing is underlined but links, and the source is nobody's business.
  QObject::connect(&editor, &HTMLedWidget::ToolButtonClick,
                   [](const QString&, int, const QString& button, bool& cancel) {
                     if (button == "Underline") cancel = true;
                   });
  QObject::connect(&editor, &HTMLedWidget::BeforeCodeViewChange, [](bool, bool& cancel) { cancel = true; });
  // Links lead out of the editor, if the user wants that; without this line every one of them is refused.
  QObject::connect(&editor, &HTMLedWidget::BeforeNavigate,
                   [](const QString& address, const QString&, bool& cancel) {
                     cancel = !address.startsWith("https://example.org/");
                   });

  editor.show();
  editor.set_DocumentHTML("<P>Try the buttons: underlining does nothing here.</P>");

  return run(application, [&] {
    editor.selectText(0, 3);
    editor.press_button("Toolbar1", "Underline");
    const bool stopped = !editor.DocumentHTML().contains("<U>");
    editor.press_button("Toolbar1", "Bold");
    editor.show_Code();
    return stopped && editor.DocumentHTML().contains("<B>Try</B>") && !editor.InCodeView();
  });
}
