#include "htmled-tour/sample_pictures.h"

#include <QDir>
#include <QPixmap>
#include <functional>
#include <iostream>

#include "htmled/document/document_page.h"
#include "htmled/print/preview_dialog.h"
#include "htmled/print/sheets_view.h"
#include "htmled/window.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/platform/message_loop.h"

namespace tvx::htmled {
namespace {

const QString sample = QStringLiteral("samples/welcome.html");

void wait(
    platform::MessageLoop& loop, std::int64_t milliseconds,
    const std::function<bool()>& until = [] { return false; }) {
  const std::int64_t end = loop.now() + milliseconds;
  while (loop.now() < end && !until()) loop.pump(10);
}

bool save(const QPixmap& picture, const QString& folder, const char* name) {
  const QString file = QDir(folder).filePath(QLatin1String(name) + QStringLiteral(".png"));
  const bool done = picture.save(file);
  (done ? std::cout : std::cerr << "htmled-tour: can't write ") << file.toStdString() << '\n';
  return done;
}

bool take_preview(Window& window, platform::MessageLoop& loop, const QString& folder) {
  const qt::PageSetup before = window.editor().page_setup();
  qt::PageSetup setup = before;
  setup.header.is_shown = setup.footer.is_shown = true;
  window.editor().set_page_setup(setup);
  bool done = false;
  {
    PreviewDialog preview(window);
    preview.resize(900, 760);
    preview.show();
    const auto* sheets = preview.findChild<SheetsView*>();
    wait(loop, 20'000, [&] { return sheets->count() > 0; });
    wait(loop, 500);  // it draws a sheet after it has counted them
    done = sheets->count() > 0 && save(preview.grab(), folder, "print-preview");
  }
  window.editor().set_page_setup(before);
  return done;
}

}  // namespace

bool take_sample_pictures(Window& window, platform::MessageLoop& loop, const QString& folder) {
  const QSize before = window.size();
  window.resize(1200, 860);
  if (!window.front().open(sample)) return false;
  const auto settle = [&] {
    wait(loop, 20'000, [&] { return window.editor().document_view().settled(); });
    wait(loop, 2500);  // wrong words are looked for in pauses
  };
  settle();
  bool done = save(window.grab(), folder, "htmled");
  done = take_preview(window, loop, folder) && done;
  window.resize(940, 600);
  window.editor().control().show_Code();
  settle();
  done = save(window.grab(), folder, "code-view") && done;
  window.editor().control().show_Code();
  window.resize(before);
  return done;
}

}  // namespace tvx::htmled
