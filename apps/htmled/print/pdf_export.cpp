#include "htmled/print/pdf_export.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <memory>

#include "htmled/document/document_page.h"
#include "htmled/window.h"
#include "tvx/htmled_widget.h"

namespace tvx::htmled {

void ask_and_export_pdf(Window& window, QWidget* parent) {
  const QFileInfo document(window.front().path());
  const QString proposed =
      document.filePath().isEmpty()
          ? QString()
          : document.path() + u'/' + document.completeBaseName() + QStringLiteral(".pdf");
  QFileDialog dialog(parent, Window::tr("Export as PDF"), proposed,
                     Window::tr("PDF documents") + QStringLiteral(" (*.pdf)"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("pdf"));
  if (!proposed.isEmpty()) dialog.selectFile(proposed);
  if (dialog.exec() != QDialog::Accepted) return;
  const QString path = dialog.selectedFiles().constFirst();
  // Its tab may be closed in each of these: keys are taken meanwhile.
  const QPointer<qt::HTMLedWidget> editor(&window.editor());
  editor->finish_input();
  if (!editor) return;
  const auto finished = std::make_shared<QMetaObject::Connection>();
  *finished = QObject::connect(editor, &qt::HTMLedWidget::print_finished, &window,
                               [&window, path, finished](bool done) {
                                 QObject::disconnect(*finished);
                                 window.say_exported(path, done);
                               });
  editor->set_print_file(path);
  editor->print_Document(true);
  if (editor) editor->set_print_file({});
}

}  // namespace tvx::htmled
