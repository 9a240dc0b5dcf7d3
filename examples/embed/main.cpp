// How does a program get the editor? By putting one widget into its window.
#include <QApplication>

#include "core/htmled.h"
#include "qt/htmled_widget.h"
#include "qt/message_loop.h"
#include "qt/web_view.h"

int main(int argc, char** argv) {
  tvx::qt::prepare_web_engine();
  QApplication application(argc, argv);
  tvx::qt::MessageLoop loop;
  tvx::qt::HTMLedWidget editor(loop);
  editor.show();
  editor.start();
  editor.control().set_DocumentHTML(u"<H1>Hello</H1><P>This page is <B>yours</B>.</P>");
  return application.exec();
}
