// A form that uic has made code of.
#include <QApplication>

#include "form_checks.h"
#include "ui_form.h"

int main(int count, char** arguments) {
  tvx::qt::prepare_web_engine();
  QApplication application(count, arguments);
  QWidget window;
  Ui::Letter form;
  form.setupUi(&window);
  return is_as_designed(window) ? 0 : 1;
}
