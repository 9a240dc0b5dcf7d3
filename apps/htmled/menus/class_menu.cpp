#include "htmled/menus/class_menu.h"

#include <QAction>
#include <QMenu>

#include "htmled/window.h"
#include "tvx/htmled_widget.h"

namespace tvx::htmled {

void fill_class_menu(Window& window, QMenu& menu) {
  QObject::connect(&menu, &QMenu::aboutToShow, &window, [&window, &menu] {
    menu.clear();
    qt::HTMLedWidget& editor = window.editor();
    const QStringList classes = editor.style_classes();
    const QString present = editor.format().style_class;
    const auto add = [&](const QString& text, const QString& name) {
      QAction* action = menu.addAction(text);
      action->setCheckable(true);
      action->setChecked(name == present);
      QObject::connect(action, &QAction::triggered, &editor, [&editor, name] {
        editor.finish_input();
        editor.set_style_class(name);
      });
    };
    add(Window::tr("(none)"), QString());
    menu.addSeparator();
    for (const QString& name : classes) add(name, name);
    if (classes.isEmpty())
      menu.addAction(Window::tr("The page's style sheet has no classes"))->setEnabled(false);
    menu.setEnabled(true);
  });
}

}  // namespace tvx::htmled
