#include "htmled/print/pdf_export.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

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
  editor->write_pdf(path, [window = QPointer(&window), path](bool written) {
    if (window) window->say_exported(path, written);
  });
}

}  // namespace tvx::htmled
