#include <QApplication>
#include <QFileInfo>
#include <utility>

#include "htmled/document/document_page.h"
#include "htmled/document/failure_words.h"
#include "htmled/document/modified_mark.h"
#include "htmled/unsaved/changed_file_dialog.h"
#include "htmled/unsaved/page_keeper.h"
#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/without_overlay.h"
#include "tvx/files/page_replacement.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/strings.h"

/// What a page does so that nothing is lost: it is kept while it isn't saved, restored after a crash, and
/// looks whether another program has written its file.
namespace tvx::htmled {

std::optional<files::KeptPage> DocumentPage::unsaved() {
  mark_->look_now_if_awaited();
  core::HTMLed& control = editor_->control();
  const auto document = control.DOM();
  if (!is_modified() || !document) return {};
  files::KeptPage page;
  page.path = file_.path();
  page.time = QDateTime::currentSecsSinceEpoch();
  page.line_end = file_.chosen_line_end();
  page.without_mark = !file_.form().byte_order_mark;
  page.page = own_text();
  if (control.InCodeView() && !control.txtCode().untouched_text()) page.code = control.txtCode().Text();
  // It is offered in the code view: its tags don't fit yet.
  if (const QString waiting = editor_->waiting_source(); !waiting.isNull()) page.code = qt::from_qt(waiting);
  return page;
}

// As its file would have it: whoever compares the two sees what was edited and nothing else.
std::u16string DocumentPage::own_text() {
  dom::Document& page = editor_->control().DOM()->tree();
  const dom::WithoutOverlay without_overlay(page);
  std::u16string text;
  const auto take = [&](const dom::Document& document) { text = file_.page_text(document); };
  path().isEmpty() ? take(page) : as_filed(path(), take);
  return text;
}

void DocumentPage::keep_now() {
  if (keeper_) keeper_->keep_now();
}

void DocumentPage::keep_as_preferred() {
  if (!keeper_) return;
  keeper_->forget();
  if (is_modified()) keeper_->note_change();
}

void DocumentPage::let_go() {
  if (keeper_) keeper_->forget();
}

void DocumentPage::restore(files::KeptPage kept, std::function<void()> done) {
  restored_ = std::move(kept);
  when_restored_ = std::move(done);
  if (has_begun_ && !loading_) show_restored();
}

void DocumentPage::show_restored() {
  if (!restored_) return;
  const files::KeptPage kept = *std::exchange(restored_, std::nullopt);
  core::HTMLed& control = editor_->control();
  const auto document = control.DOM();
  if (!document) return;
  if (control.InCodeView()) control.show_Code();
  files::replace_page(document->tree(), kept.page);
  document->tell_user_change();
  const bool is_gone = path().isEmpty() && !kept.path.empty();
  if (is_gone) file_.stand_for(kept.path);
  if (kept.line_end) file_.set_line_end(*kept.line_end);
  if (kept.without_mark) file_.take_mark_away();
  emit form_changed();
  if (kept.code) {
    control.show_Code();
    control.txtCode().edit(*kept.code);
  }
  is_gone ? mark_->set_for_good() : mark_->look();
  if (is_gone) emit title_changed();
  if (is_gone) emit said(tr("%1 isn't there any more. Saving writes it anew.").arg(path()), 0);
  keeper_->note_change();
  keeper_->keep_now();
  if (const auto done = std::exchange(when_restored_, {})) done();
}

// --- files that other programs write ---

DocumentPage::FileStamp DocumentPage::stamp_of(const QString& path) {
  const QFileInfo file(path);
  return path.isEmpty() || !file.exists() ? FileStamp{} : FileStamp{file.lastModified(), file.size()};
}

// To ask the folder costs nothing; only where time or size are others is the file read.
void DocumentPage::look_at_file() {
  if (!mark_ || loading_ || pending_ || path().isEmpty() || QApplication::activeModalWidget()) return;
  const FileStamp now = present_stamp();
  if (now == stamp_) return;
  stamp_ = now;
  keeps_own_ = false;
  if (now == FileStamp{}) {
    mark_->set_for_good();
    emit said(tr("%1 isn't there any more. Saving writes it anew.").arg(path()), 0);
    return;
  }
  if (!file_.changed_on_disk()) return;
  try {
    ask_about_file(files::DocumentFile::open(file_.path()));
  } catch (const RuntimeError& error) {
    emit told(words_of(error));
  }
}

void DocumentPage::ask_about_file(const files::DocumentFile& file) {
  finish_typing();
  mark_->look_now_if_awaited();
  if (!editor_->control().DOM()) return;
  ChangedFileDialog dialog(name(), own_text(), file.page_text(), is_modified(), this);
  if (dialog.exec() == QDialog::Accepted) {
    load(file);
    return;
  }
  keeps_own_ = true;
  mark_->set_for_good();
}

}  // namespace tvx::htmled
