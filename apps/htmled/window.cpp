#include "window.h"

#include <QAction>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>

#include "base/error.h"
#include "browser/html_document.h"
#include "core/htmled.h"
#include "dom/inner_html.h"
#include "qt/htmled_widget.h"

namespace tvx::htmled {
namespace {

const QString filters = QStringLiteral("HTML documents (*.html *.htm *.xhtml);;All files (*)");

QString text_of(const std::u16string& text) { return QString::fromStdU16String(text); }

}  // namespace

Window::Window(platform::MessageLoop& loop) : loop_(loop), editor_(new qt::HTMLedWidget(loop, this)) {
  setCentralWidget(editor_);
  resize(1000, 720);
  make_menus();
  connect(editor_, &qt::HTMLedWidget::property_changed, this, [this](const QString& key) {
    if (key == u"DocumentHTML" && !loading_) set_modified(true);
  });
  show_title();
}

Window::~Window() = default;

void Window::start() {
  loading_ = true;
  editor_->start();
  loading_ = false;
  set_modified(false);
}

void Window::make_menus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  const auto add = [this](QMenu* menu, const QString& text, QKeySequence keys, auto act) {
    QAction* action = menu->addAction(text);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, act);
    return action;
  };
  add(file, tr("&New"), QKeySequence::New, [this] { new_document(); });
  add(file, tr("&Open…"), QKeySequence::Open, [this] { ask_and_open(); });
  file->addSeparator();
  add(file, tr("&Save"), QKeySequence::Save, [this] { save(); });
  add(file, tr("Save &As…"), QKeySequence(tr("Ctrl+Shift+S")), [this] { save_as(); });
  file->addSeparator();
  add(file, tr("&Quit"), QKeySequence(tr("Ctrl+Q")), [this] { close(); });
  QMenu* edit = menuBar()->addMenu(tr("&Edit"));
  add(edit, tr("&Undo"), QKeySequence::Undo, [this] { editor_->control().undo_document(); });
  add(edit, tr("&Redo"), QKeySequence::Redo, [this] { editor_->control().redo_document(); });
}

void Window::new_document() {
  if (!may_leave_document()) return;
  loading_ = true;
  core::HTMLed& control = editor_->control();
  file_ = {};
  control.set_BaseURL(u"");
  control.set_DocumentTitle(u"");
  control.set_DocumentHTML(u"");
  loading_ = false;
  set_modified(false);
}

void Window::ask_and_open() {
  if (!may_leave_document()) return;
  const QString path = QFileDialog::getOpenFileName(this, tr("Open"), text_of(file_.path()), filters);
  if (!path.isEmpty()) open(path);
}

bool Window::open(const QString& path) {
  const QString absolute = QFileInfo(path).absoluteFilePath();
  qt::DocumentFile file;
  try {
    file = qt::DocumentFile::read(absolute.toStdU16String());
  } catch (const RuntimeError& error) {
    tell(text_of(error.text()));
    return false;
  }
  loading_ = true;
  core::HTMLed& control = editor_->control();
  // The control writes both into what it loads: they are the file's own then.
  control.set_DocumentTitle(file.title());
  control.set_BaseURL(file.base());
  std::u16string address = absolute.toStdU16String();
  control.Open_document(address, true);
  file_ = std::move(file);
  loading_ = false;
  set_modified(false);
  return true;
}

std::u16string Window::document_text() {
  core::HTMLed& control = editor_->control();
  if (control.InCodeView()) control.show_Code();
  control.UserControl_ExitFocus();  // the selection border is no part of the document
  const dom::Element* root = control.DOM() ? control.DOM()->documentElement() : nullptr;
  return root ? dom::outer_html(*root) : u"";
}

bool Window::save_to(const QString& path) {
  qt::DocumentFile file = file_;
  file.set_path(QFileInfo(path).absoluteFilePath().toStdU16String());
  try {
    file.save(document_text());
  } catch (const RuntimeError& error) {
    tell(text_of(error.text()));
    return false;
  }
  file_ = std::move(file);
  set_modified(false);
  return true;
}

bool Window::save() { return file_.path().empty() ? save_as() : save_to(text_of(file_.path())); }

bool Window::save_as() {
  QFileDialog dialog(this, tr("Save As"), text_of(file_.path()), filters);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("html"));
  return dialog.exec() == QDialog::Accepted && save_to(dialog.selectedFiles().constFirst());
}

bool Window::may_leave_document() {
  if (!modified_) return true;
  const auto answer = QMessageBox::question(
      this, tr("HTMLed"), tr("The document has been changed. Save the changes?"),
      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
  if (answer == QMessageBox::Save) return save();
  return answer == QMessageBox::Discard;
}

void Window::closeEvent(QCloseEvent* event) { event->setAccepted(may_leave_document()); }

void Window::set_modified(bool modified) {
  modified_ = modified;
  show_title();
}

void Window::show_title() {
  const QString name = file_.path().empty() ? tr("Untitled") : QFileInfo(text_of(file_.path())).fileName();
  setWindowTitle(QStringLiteral("%1[*] – HTMLed").arg(name));
  setWindowModified(modified_);
}

void Window::tell(const QString& text) { QMessageBox::critical(this, tr("HTMLed"), text); }

}  // namespace tvx::htmled
