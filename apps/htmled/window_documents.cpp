#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>
#include <QSettings>
#include <QTimer>
#include <QToolBar>

#include "htmled/document/document_page.h"
#include "htmled/document/file_filters.h"
#include "htmled/file_drops.h"
#include "htmled/languages.h"
#include "htmled/menus/view_choices.h"
#include "htmled/recent_files.h"
#include "htmled/tabs.h"
#include "htmled/templates/page_templates.h"
#include "htmled/templates/template_dialog.h"
#include "htmled/window.h"

/// The documents of the window: how they come into it, and how they go.
namespace tvx::htmled {
namespace {

const QString geometry_key = QStringLiteral("window/geometry"), bars_key = QStringLiteral("window/bars"),
              zoom_key = QStringLiteral("window/zoom");
constexpr qsizetype most_closed = 20;

}  // namespace

// --- coming ---

bool Window::start_with(const QStringList& paths) {
  bool all = true;
  tell_together([&] {
    all = start(paths.value(0));
    for (const QString& path : paths.mid(1)) all = append_later(path) && all;
  });
  return all;
}

bool Window::append_later(const QString& path) {
  if (page_of(path)) return true;
  DocumentPage* page = new_page();
  if (!page->open_later(path)) {
    delete page;
    return false;
  }
  tabs_->append(*page);
  return true;
}

bool Window::open_in_tab(const QString& path) {
  if (DocumentPage* there = page_of(path)) {
    tabs_->bring_to_front(*there);
    return true;
  }
  if (front_->is_untouched()) return front_->open(path);
  DocumentPage* page = new_page();
  if (!page->open_later(path)) {
    delete page;
    return false;
  }
  show_new(*page);
  return true;
}

// At once: the keys that follow are for this page.
void Window::show_new(DocumentPage& page) {
  tabs_->add(page);
  tabs_->bring_to_front(page);
  page.begin();
}

void Window::open_all(const QStringList& paths) {
  tell_together([&] {
    for (const QString& path : paths) open_in_tab(path);
  });
}

DocumentPage* Window::page_of(const QString& path) const {
  const QFileInfo wanted(path);
  for (DocumentPage* page : tabs_->pages())
    if (!page->path().isEmpty() && QFileInfo(page->path()) == wanted) return page;
  return nullptr;
}

void Window::new_document() { show_new(*new_page()); }

void Window::new_document_of(const QByteArray& page) {
  if (front_->is_untouched()) return front_->open_template(page);
  DocumentPage* fresh = new_page();
  fresh->open_template_later(page);
  show_new(*fresh);
}

void Window::new_from_template() {
  TemplateDialog dialog(spoken(), this);
  const PageTemplate* chosen = dialog.exec() == QDialog::Accepted ? dialog.chosen() : nullptr;
  if (!chosen) return;
  const QByteArray page = content_of(*chosen, spoken());
  if (page.isEmpty()) return tell(tr("Can't read %1").arg(chosen->file));
  new_document_of(page);
}

void Window::ask_and_save_template() {
  const QString name = QInputDialog::getText(this, tr("Save as template"), tr("Name of the template:"),
                                             QLineEdit::Normal, QFileInfo(front_->name()).completeBaseName());
  const QString file = own_template_file(name);
  if (file.isEmpty()) return;
  if (QFileInfo::exists(file) &&
      QMessageBox::question(this, QStringLiteral("HTMLed"),
                            tr("There is a template “%1” already. Replace it?").arg(name)) !=
          QMessageBox::Yes)
    return;
  if (front_->save_template(file)) say(tr("Saved the template “%1”").arg(name), 10'000);
}

QString Window::spoken() const {
  return languages_.spoken().isEmpty() ? QStringLiteral("en") : languages_.spoken();
}

void Window::ask_and_open() {
  const QStringList paths = QFileDialog::getOpenFileNames(this, tr("Open"), front_->path(), file_filters());
  open_all(paths);
}

void Window::ask_and_save_copy() {
  QFileDialog dialog(this, tr("Save a copy"), front_->path(), file_filters());
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("html"));
  if (dialog.exec() != QDialog::Accepted) return;
  const QString path = dialog.selectedFiles().constFirst();
  if (front_->save_copy(path)) say(tr("Saved %1").arg(path), 10'000);
}

void Window::take_drops() {
  auto* drops = new FileDrops(*this);
  connect(drops, &FileDrops::dropped, this, [this](const QStringList& pages, const QStringList& others) {
    tell_together([&] {
      open_all(pages);
      if (!others.isEmpty()) tell(tr("Not a page: %1").arg(others.join(QStringLiteral(", "))));
    });
  });
}

// --- going ---

bool Window::may_close(DocumentPage& page) {
  if (page.is_busy()) return false;
  if (page.is_modified()) tabs_->bring_to_front(page);
  return page.may_leave();
}

bool Window::close_page(DocumentPage& page) {
  const QPointer<DocumentPage> alive(&page);
  if (!may_close(page) || !alive) return false;
  if (!page.path().isEmpty()) closed_.push_back(page.path());
  if (closed_.size() > most_closed) closed_.removeFirst();
  if (tabs_->count() > 1)
    drop_page(page);
  else if (page.is_untouched())
    close();
  else
    page.open_new();
  return true;
}

void Window::drop_page(DocumentPage& page) {
  page.disconnect(this);
  page.let_go();
  if (page.editor()) publishing_.leave_out(page.editor()->control());
  tabs_->removeTab(tabs_->indexOf(&page));
  page.hide();
  page.deleteLater();
}

void Window::reopen_closed() {
  if (closed_.empty()) return;
  const QString path = closed_.back();
  closed_.pop_back();
  open_in_tab(path);
}

void Window::closeEvent(QCloseEvent* event) {
  for (DocumentPage* page : tabs_->pages())
    if (!may_close(*page)) return event->ignore();
  for (DocumentPage* page : tabs_->pages()) page->let_go();
  if (remembers_) {
    QSettings settings = program_settings();
    settings.setValue(geometry_key, saveGeometry());
    settings.setValue(bars_key, saveState());
  }
  event->accept();
}

// --- from one start to the next ---

void Window::remember_appearance() {
  remembers_ = true;
  const QSettings settings = program_settings();
  restoreGeometry(settings.value(geometry_key).toByteArray());
  restoreState(settings.value(bars_key).toByteArray());
  find_strip_->hide();  // it comes when something is sought
  editor_->set_zoom(kept_zoom());
}

void Window::ask_again_for_web_content() {
  for (DocumentPage* page : tabs_->pages()) page->look_for_remote_content();
}

double Window::kept_zoom() { return program_settings().value(zoom_key, 1.0).toDouble(); }

void Window::keep_zoom(double factor) const {
  if (remembers_) program_settings().setValue(zoom_key, factor);
}

void Window::keep_split_share(double share) {
  view_choices::keep_split_share(share);
  for_each_editor([&](qt::HTMLedWidget& editor) {
    if (editor.split_share() != share) editor.set_split_share(share);
  });
}

void Window::come_to_front() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

}  // namespace tvx::htmled
