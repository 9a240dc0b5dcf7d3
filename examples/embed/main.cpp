// How does a program get the editor? By putting one widget into its window.
#include <QApplication>

#include "tvx/htmled_widget.h"

int main(int argc, char** argv) {
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  tvx::qt::HTMLedWidget editor;
  editor.show();
  editor.set_DocumentHTML("<H1>Hello</H1><P>This page is <B>yours</B>.</P>");
  return application.exec();
}
