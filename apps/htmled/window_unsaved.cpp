#include <QEvent>
#include <QTimer>
#include <memory>
#include <vector>

#include "htmled/document/document_page.h"
#include "htmled/tabs.h"
#include "htmled/unsaved/page_keeper.h"
#include "htmled/unsaved/unsaved_dialog.h"
#include "htmled/unsaved/unsaved_folder.h"
#include "htmled/window.h"
#include "tvx/base/error.h"
#include "tvx/core/htmled.h"
#include "tvx/files/document_file.h"
#include "tvx/qt/support/strings.h"

/// What the window does so that nothing is lost.
namespace tvx::htmled {
namespace {

/// The program may end between saving a page and forgetting what was kept of it.
bool is_saved(const files::KeptPage& kept) {
  if (kept.path.empty() || kept.code || kept.line_end) return false;
  bool same = false;
  attempt([&] {
    const files::DocumentFile file = files::DocumentFile::open(kept.path);
    same = file.page_text() == kept.page && !(kept.without_mark && file.form().byte_order_mark);
  });
  return same;
}

}  // namespace

// Who turns to another program may change a file there, or switch the machine off.
void Window::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::ActivationChange) return;
  if (isActiveWindow())
    QTimer::singleShot(0, this, [this] { front_->look_at_file(); });
  else
    for (DocumentPage* page : tabs_->pages()) page->keep_now();
}

// What was typed last is still on its way to the document.
void Window::keep_everything() {
  front_->finish_typing();
  for (DocumentPage* page : tabs_->pages()) page->keep_now();
  kept_pages_.finish();
}

// What was begun doesn't hold the end up: a check of a long document goes on from word to word.
void Window::stop_everything() {
  for_each_editor([](qt::HTMLedWidget& editor) { editor.control().SpellingCancel(); });
}

void Window::keep_as_preferred() {
  for (DocumentPage* page : tabs_->pages()) page->keep_as_preferred();
}

void Window::offer_unsaved() {
  const auto folders = std::make_shared<std::vector<UnsavedFolder>>(UnsavedFolder::abandoned());
  struct Origin {
    std::size_t folder;
    std::string name;
  };
  std::vector<files::KeptPage> pages;
  std::vector<Origin> origins;
  for (std::size_t i = 0; i < folders->size(); ++i)
    for (auto& [name, page] : (*folders)[i].pages()) {
      if (is_saved(page)) {
        (*folders)[i].forget(name);
        continue;
      }
      pages.push_back(std::move(page));
      origins.push_back({i, name});
    }
  if (pages.empty()) return;
  UnsavedDialog dialog(pages, this);
  dialog.exec();
  if (dialog.answer() == UnsavedDialog::Answer::Later) return;
  for (const std::size_t row : dialog.chosen()) {
    // What was kept goes when the page that has it now is kept itself.
    const auto forget = [this, folders, origin = origins[row]] {
      kept_pages_.finish();
      (*folders)[origin.folder].forget(origin.name);
    };
    dialog.answer() == UnsavedDialog::Answer::Restore ? restore_page(pages[row], forget) : forget();
  }
}

void Window::restore_page(const files::KeptPage& kept, const std::function<void()>& done) {
  const QString path = qt::to_qt(kept.path);
  DocumentPage* page = path.isEmpty() ? nullptr : page_of(path);
  if (!page) {
    DocumentPage* untouched = front_->is_untouched() ? front_ : nullptr;
    page = new_page();
    if (!path.isEmpty()) page->open_later(path);
    page->restore(kept, done);
    tabs_->add(*page);
    tabs_->bring_to_front(*page);
    if (untouched) drop_page(*untouched);
    return;
  }
  tabs_->bring_to_front(*page);
  page->restore(kept, done);
}

}  // namespace tvx::htmled
