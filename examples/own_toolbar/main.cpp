// How does a program show a toolbar of its own in place of the editor's? By asking for actions: they follow
// the document, and a bar or a menu that has them needs nothing else.
#include <QAction>
#include <QComboBox>
#include <QMainWindow>
#include <QToolBar>

#include "self_check.h"
#include "tvx/htmled_widget.h"

using tvx::qt::HTMLedWidget;

int main(int argc, char** argv) {
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  QMainWindow window;
  auto* editor = new HTMLedWidget(&window);
  window.setCentralWidget(editor);
  editor->set_showFormattingToolbar1(false);
  editor->set_showFormattingToolbar2(false);

  QToolBar* bar = window.addToolBar("Format");
  for (const char* name : {"Undo", "Redo", "Bold", "Italic", "BulletedList", "NumberedList", "Link"})
    bar->addAction(editor->action(QString(name)));

  // What is no switch is asked for, and set: here, the paragraph's style.
  auto* styles = new QComboBox;
  for (const char* style : {"p", "h1", "h2", "pre"}) styles->addItem(style);
  bar->addWidget(styles);
  QObject::connect(editor, &HTMLedWidget::formatChanged, styles,
                   [=] { styles->setCurrentIndex(styles->findText(editor->format().paragraph_style)); });
  QObject::connect(styles, &QComboBox::textActivated, editor, &HTMLedWidget::set_paragraph_style);
  QObject::connect(editor, &HTMLedWidget::modificationChanged, &window, &QWidget::setWindowModified);

  window.setWindowTitle("A toolbar of my own[*]");
  window.show();
  editor->set_DocumentHTML("<H1>One</H1><P>two</P>");

  return run(application, [&] {
    editor->selectText(0, 3);
    QApplication::processEvents();
    const bool follows =
        styles->currentText() == "h1" && !editor->action(HTMLedWidget::Action::Undo)->isEnabled();
    editor->action(HTMLedWidget::Action::Italic)->trigger();
    QApplication::processEvents();
    return follows && editor->DocumentHTML().contains("<I>One</I>") && window.isWindowModified() &&
           editor->action(HTMLedWidget::Action::Italic)->isChecked();
  });
}
