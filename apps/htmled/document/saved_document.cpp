#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "htmled/document/document_page.h"
#include "htmled/document/failure_words.h"
#include "htmled/document/file_filters.h"
#include "htmled/document/files_of_page.h"
#include "htmled/document/modified_mark.h"
#include "htmled/document/proposed_name.h"
#include "htmled/templates/page_templates.h"
#include "tvx/base/error.h"
#include "tvx/base/text_file.h"
#include "tvx/base/url.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/mutation.h"
#include "tvx/files/edited_page.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/strings.h"

/// How a page comes into its file, and what is asked about that.
namespace tvx::htmled {

using qt::from_qt;
using qt::to_qt;

// What the editor holds while a page comes is not that page: written now it would take the file's place.
std::optional<QString> DocumentPage::with_document(const std::function<void(const dom::Document&)>& act) {
  if (is_coming()) {
    const QString failure = tr("Can't save %1").arg(name());
    emit told(failure);
    return failure;
  }
  finish_typing();
  core::HTMLed& control = editor_->control();
  if (!control.DOM()) return QString();
  try {
    files::with_document(control, act);
  } catch (const RuntimeError& error) {
    const QString failure = words_of(error);
    emit told(failure);
    return failure;
  }
  return {};
}

bool DocumentPage::save() {
  if (is_coming()) {
    when_there([this] { save(); });
    return false;
  }
  if (path().isEmpty()) return save_as();
  return may_overwrite() && save_to(path());
}

bool DocumentPage::save_as() {
  if (is_coming()) {
    when_there([this] { save_as(); });
    return false;
  }
  finish_typing();
  QFileDialog dialog(this, tr("Save as"), path(), file_filters());
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  if (const auto document = editor_->control().DOM(); document && path().isEmpty())
    dialog.selectFile(proposed_name(*document));
  dialog.setDefaultSuffix(QStringLiteral("html"));
  const QString before = path();
  if (dialog.exec() != QDialog::Accepted) return false;
  if (before.isEmpty()) take_title();
  return save_to(dialog.selectedFiles().constFirst());
}

// Browsers and searches show the title of a page, and few think of writing one.
void DocumentPage::take_title() {
  finish_typing();
  core::HTMLed& control = editor_->control();
  const auto document = control.DOM();
  if (!document || to_qt(document->title()) != tr("Untitled")) return;
  const QString heading = first_heading(*document);
  if (heading.isEmpty()) return;
  // No step of undo: it would be the first that is taken back, and nobody would see what.
  const dom::MutationScope scope(document->tree(), dom::MutationKind::Load);
  control.set_DocumentTitle(from_qt(heading));
}

// Both are asked once: what is left where it is, is in the file so from then on.
void DocumentPage::ask_about_files(FilesOfPage& files) {
  const auto wants = [this](QString question, const QStringList& list) {
    if (list.isEmpty()) return false;
    constexpr qsizetype shown = 10;
    question += QStringLiteral("\n\n") + list.mid(0, shown).join(u'\n');
    if (list.size() > shown) question += QStringLiteral("\n…");
    return QMessageBox::question(this, QStringLiteral("HTMLed"), question, QMessageBox::Yes | QMessageBox::No,
                                 QMessageBox::Yes) == QMessageBox::Yes;
  };
  QString failed;
  if (wants(
          tr("The page shows files that are beside the old one and not beside the new one. Copy them, too?"),
          files.along()))
    failed = files.copy_along();
  if (wants(tr("The page shows files from elsewhere on this computer. They are missing where it is moved or "
               "sent to. Copy them into the folder “%1” beside it?")
                .arg(files.folder_of_copies()),
            files.elsewhere())) {
    const QString missing = files.copy_elsewhere();
    if (failed.isEmpty()) failed = missing;
  } else {
    files.leave_elsewhere();
  }
  if (!failed.isEmpty()) emit told(tr("Can't save %1").arg(failed));
}

FilesOfPage DocumentPage::files_for(const QString& target) {
  const auto document = editor_->control().DOM();
  const QString opened = document ? to_qt(local_path(document->url()).value_or(u"")) : QString();
  const bool is_draft = drafts_ && opened.startsWith(drafts_->path());
  return {file_, is_draft ? QString() : opened, target, settled_files_};
}

void DocumentPage::as_filed(const QString& target, const std::function<void(const dom::Document&)>& act) {
  dom::Document& page = editor_->control().DOM()->tree();
  files_for(target).as_filed(page, [&] { act(page); });
}

std::optional<QString> DocumentPage::write_file(const QString& target) {
  FilesOfPage files = files_for(target);
  const auto page = [this]() -> dom::Document& { return editor_->control().DOM()->tree(); };
  const auto write = [&] {
    files.show_copies(page());
    files.as_filed(page(), [&] { file_.save(page(), from_qt(target)); });
  };
  bool asks = false;
  auto failure = with_document([&](const dom::Document&) {
    files.look(page());
    asks = !files.along().isEmpty() || !files.elsewhere().isEmpty();
    if (!asks) write();
  });
  if (failure || !asks) return failure;
  ask_about_files(files);
  return with_document([&](const dom::Document&) { write(); });
}

bool DocumentPage::save_to(const QString& path) {
  if (loading_ || pending_) {
    emit told(tr("Can't save %1").arg(path));
    return false;
  }
  const QString target = QFileInfo(path).absoluteFilePath();
  if (const auto failure = write_file(target)) return !failure->isEmpty() && save_elsewhere(*failure);
  mark_->clear();
  stamp_ = present_stamp();
  is_filed(target);
  emit title_changed();
  emit form_changed();
  emit said(tr("Saved %1").arg(target), 10'000);
  return true;
}

// A line at the window's edge is overlooked, and then the work is lost with the window.
bool DocumentPage::save_elsewhere(const QString& failure) {
  QMessageBox question(QMessageBox::Warning, QStringLiteral("HTMLed"), failure, QMessageBox::Cancel, this);
  const QAbstractButton* elsewhere = question.addButton(tr("Save as"), QMessageBox::AcceptRole);
  question.exec();
  return question.clickedButton() == elsewhere && save_as();
}

// It asks nothing: in whichever folder it is, it names the files that the document names.
bool DocumentPage::save_copy(const QString& path) {
  const QString target = QFileInfo(path).absoluteFilePath();
  return !with_document([&](const dom::Document&) {
    as_filed(target, [&](const dom::Document& document) {
      save_atomically(from_qt(target), file_.bytes_of(document));
    });
  });
}

bool DocumentPage::save_template(const QString& path) {
  return !with_document([&](const dom::Document& document) {
    const QString folder = QFileInfo(to_qt(file_.source())).absolutePath();
    const QByteArray page = QByteArray::fromStdString(file_.bytes_of(document));
    save_atomically(from_qt(path), with_copies(page, folder, path).toStdString());
  });
}

}  // namespace tvx::htmled
