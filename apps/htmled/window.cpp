#include "htmled/window.h"

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>
#include <iostream>
#include <memory>
#include <utility>

#include "htmled/drafts.h"
#include "htmled/find_bar.h"
#include "htmled/publish_dialog.h"
#include "htmled/remote_content_bar.h"
#include "tvx/base/error.h"
#include "tvx/base/text_file.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/input/input_queue.h"
#include "tvx/browser/loading/page_source.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/journal.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

using qt::from_qt;
using qt::to_qt;

constexpr int message_milliseconds = 10'000;
/// After an upload the page wants the picture from its new place so soon, on a busy machine too.
constexpr qint64 uploaded_milliseconds = 10'000;

QString filters() {
  return Window::tr("HTML documents") + QStringLiteral(" (*.html *.htm *.xhtml);;") +
         Window::tr("All files") + QStringLiteral(" (*)");
}

/// A failure as the user reads it. Which file it was stands after the words, and why after that.
QString words_of(const RuntimeError& error) {
  const QString text = to_qt(error.text());
  for (const char* words :
       {QT_TRANSLATE_NOOP("Window", "Can't read %1"), QT_TRANSLATE_NOOP("Window", "Can't save %1")})
    if (const QString start = QString::fromUtf8(words).remove(QStringLiteral("%1")); text.startsWith(start)) {
      const qsizetype reason = std::max(text.lastIndexOf(QStringLiteral(": ")), start.size());
      const QString file = text.mid(start.size(), reason - start.size());
      return file.isEmpty() ? Window::tr(words).arg(text.mid(reason))
                            : Window::tr(words).arg(file) + text.mid(reason);
    }
  return text;
}

}  // namespace

Window::Window(platform::MessageLoop& loop, const qt::Substitutes& substitutes)
    : loop_(loop),
      drafts_(drafts_template()),
      editor_(new qt::HTMLedWidget(loop, this, substitutes)),
      publishing_(editor_->control()) {
  sweep_drafts();
  setCentralWidget(editor_);
  remote_content_ = new RemoteContentBar(this);
  remote_content_strip_ = new QToolBar(this);
  remote_content_strip_->setMovable(false);
  remote_content_strip_->setContextMenuPolicy(Qt::PreventContextMenu);
  remote_content_strip_->addWidget(remote_content_);
  addToolBar(Qt::TopToolBarArea, remote_content_strip_);
  remote_content_strip_->hide();
  connect(remote_content_, &RemoteContentBar::answered, this, &Window::answer_remote_content);
  make_find_bar();
  editor_->set_RemoteContent(core::remote_content_ask);
  resize(1000, 720);
  make_menus();
  connect(editor_, &qt::HTMLedWidget::property_changed, this, [this](const QString& key) {
    // A key is told of before it types: what became of it is seen when the turn is over.
    if (key == QStringLiteral("RemoteContentWithheld")) look_for_remote_content();
    if (key != QStringLiteral("DocumentHTML")) return;
    look_later();
    count_images_.start();
  });
  constexpr int pause_of_typing = 300;
  count_images_.setSingleShot(true);
  count_images_.setInterval(pause_of_typing);
  connect(&count_images_, &QTimer::timeout, this, &Window::show_local_images);
  editor_->control().set_events(this);
  editor_->control().add_observer(*this);
  show_words();
}

Window::~Window() {
  editor_->control().set_events(nullptr);
  editor_->control().remove_observer(*this);
}

// --- menus and their words ---

// Words are looked up when they are shown, and again when the language changes: here they are only marked.
void Window::make_menus() {
  QMenu* file = add_menu(nullptr, QT_TR_NOOP("&File"));
  add_item(file, QT_TR_NOOP("&New"), QKeySequence::New, [this] { new_document(); });
  add_item(file, QT_TR_NOOP("&Open…"), QKeySequence::Open, [this] { ask_and_open(); });
  file->addSeparator();
  add_item(file, QT_TR_NOOP("&Save"), QKeySequence::Save, [this] { save(); });
  add_item(file, QT_TR_NOOP("Save &As…"), QKeySequence(QStringLiteral("Ctrl+Shift+S")),
           [this] { save_as(); });
  file->addSeparator();
  add_item(file, QT_TR_NOOP("&Publish Settings…"), {}, [this] { ask_for_account(); });
  add_item(file, QT_TR_NOOP("&Upload Images"), {}, [this] { upload_images(); });
  file->addSeparator();
  add_item(file, QT_TR_NOOP("&Quit"), QKeySequence(QStringLiteral("Ctrl+Q")), [this] { close(); });
  QMenu* edit = add_menu(nullptr, QT_TR_NOOP("&Edit"));
  add_item(edit, QT_TR_NOOP("&Undo"), QKeySequence::Undo, [this] {
    finish_typing();
    editor_->control().undo_document();
  });
  add_item(edit, QT_TR_NOOP("&Redo"), QKeySequence::Redo, [this] {
    finish_typing();
    editor_->control().redo_document();
  });
  edit->addSeparator();
  add_control_item(edit, "mnuMiscPasteText", QKeySequence(QStringLiteral("Ctrl+Shift+V")));
  add_find_items(edit);
  add_language_menu(add_menu(nullptr, QT_TR_NOOP("&View")));
  make_table_menu();
  make_spelling_menu();
}

QMenu* Window::add_menu(QMenu* above, const char* text) {
  QMenu* menu = above ? above->addMenu(QString()) : menuBar()->addMenu(QString());
  actions_.emplace_back(menu->menuAction(), text);
  return menu;
}

void Window::add_item(QMenu* menu, const char* text, const QKeySequence& keys, std::function<void()> act) {
  QAction* action = menu->addAction(QString());
  action->setShortcut(keys);
  connect(action, &QAction::triggered, this, std::move(act));
  actions_.emplace_back(action, text);
}

void Window::make_find_bar() {
  find_bar_ = new FindBar(this);
  find_bar_->set_editor(editor_, [this] { finish_typing(); });
  find_strip_ = new QToolBar(this);
  find_strip_->setMovable(false);
  find_strip_->setContextMenuPolicy(Qt::PreventContextMenu);
  find_strip_->addWidget(find_bar_);
  addToolBar(Qt::BottomToolBarArea, find_strip_);
  find_strip_->hide();
  connect(find_bar_, &FindBar::wanted, find_strip_, &QToolBar::setVisible);
}

void Window::add_find_items(QMenu* edit) {
  edit->addSeparator();
  add_item(edit, QT_TR_NOOP("&Find…"), QKeySequence::Find, [this] { find_bar_->open(false); });
  add_item(edit, QT_TR_NOOP("R&eplace…"), QKeySequence(QStringLiteral("Ctrl+H")),
           [this] { find_bar_->open(true); });
  add_item(edit, QT_TR_NOOP("Find ne&xt"), QKeySequence(Qt::Key_F3), [this] { find_bar_->step(true); });
  add_item(edit, QT_TR_NOOP("Find pre&vious"), QKeySequence(Qt::SHIFT | Qt::Key_F3),
           [this] { find_bar_->step(false); });
}

// Each language under its own name, so that everybody finds the way home.
void Window::add_language_menu(QMenu* view) {
  QMenu* menu = add_menu(view, QT_TR_NOOP("&Language"));
  auto* group = new QActionGroup(menu);
  for (const Language& language : languages_.all()) {
    QAction* action = menu->addAction(language.name);
    action->setObjectName(language.code);
    action->setCheckable(true);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, &language] {
      Languages::remember(language);
      speak(language);
    });
  }
  connect(menu, &QMenu::aboutToShow, this, [this, group] {
    // By itself the program speaks English.
    const QString spoken = languages_.spoken().isEmpty() ? QStringLiteral("en") : languages_.spoken();
    for (QAction* action : group->actions()) action->setChecked(action->objectName() == spoken);
  });
}

void Window::speak(const Language& language) {
  languages_.speak(language);
  editor_->set_LocalizationFile(language.file);
  say({});
  show_words();
}

void Window::show_words() {
  for (const auto& [action, text] : actions_) action->setText(tr(text));
  remote_content_->show_words();
  find_bar_->show_words();
  show_title();
  show_local_images();
}

// --- opening ---

bool Window::start(const QString& path) {
  {
    const QScopedValueRollback<bool> loading(loading_, true);
    editor_->start();
  }
  if (!path.isEmpty() && open(path)) return true;
  new_document();
  return path.isEmpty();
}

void Window::new_document() {
  if (!may_leave_document()) return;
  try {
    load(files::DocumentFile::untitled(from_qt(drafts_.filePath(QStringLiteral("untitled.html")))));
  } catch (const RuntimeError& error) {
    tell(words_of(error));
  }
}

void Window::ask_and_open() {
  if (!may_leave_document()) return;
  const QString path = QFileDialog::getOpenFileName(this, tr("Open"), to_qt(file_.path()), filters());
  if (!path.isEmpty()) open(path);
}

bool Window::open(const QString& path) {
  try {
    return load(files::DocumentFile::open(from_qt(QFileInfo(path).absoluteFilePath())));
  } catch (const RuntimeError& error) {
    tell(words_of(error));
    return false;
  }
}

bool Window::load(files::DocumentFile file) {
  if (!load_document(std::move(file))) return false;
  look_for_remote_content();
  return true;
}

bool Window::load_document(files::DocumentFile file) {
  const QScopedValueRollback<bool> loading(loading_, true);
  core::HTMLed& control = editor_->control();
  if (control.InCodeView()) control.show_Code();
  // The control writes both into what it opens: they are the file's own then.
  control.set_DocumentTitle(file.title());
  control.set_BaseURL(file.base_url());
  std::u16string source = file.source();
  control.Open_document(source, true);
  // What stays in the window must never be saved over the file that couldn't be loaded.
  const auto document = control.DOM();
  if (!document || document->url() != browser::document_address(file.source())) {
    tell(tr("Can't open %1").arg(to_qt(file.source())));
    return false;
  }
  file.keep_head(document->tree());
  file_ = std::move(file);
  set_unmodified();
  show_local_images();
  remote_content_left_ = false;
  picture_uploaded_.invalidate();
  remote_content_strip_->hide();
  editor_->setFocus(Qt::OtherFocusReason);
  say(file_.faithful()
          ? QString()
          : tr("Some bytes of this file mean nothing in %1. An edited page is saved without them.")
                .arg(QString::fromStdString(file_.form().charset)));
  return true;
}

// A page that was fetched from the web has told its server already; files haven't.
void Window::look_for_remote_content() {
  if (loading_) return;
  const bool withheld = editor_->RemoteContentWithheld();
  const auto answer = remote_content::remembered(to_qt(file_.path()));
  // The pictures that the user has just put on the web himself: nobody needs to be asked.
  const bool own = picture_uploaded_.isValid() && !picture_uploaded_.hasExpired(uploaded_milliseconds);
  if (withheld && answer.value_or(own)) {
    picture_uploaded_.invalidate();
    return editor_->ShowRemoteContent();
  }
  remote_content_strip_->setVisible(withheld && !answer && !remote_content_left_);
}

void Window::answer_remote_content(bool load) {
  remote_content::remember(to_qt(file_.path()), load);
  remote_content_left_ = !load;
  remote_content_strip_->hide();
  if (load) editor_->ShowRemoteContent();
  editor_->setFocus(Qt::OtherFocusReason);
}

// The window's own: what the control was given is not what the file holds.
void Window::MenuClick(std::u16string& item, bool& cancel) {
  if (item != u"ContextMISCRevert") return;
  cancel = true;
  QTimer::singleShot(0, this, &Window::ask_and_revert);  // when the menu has gone
}

void Window::ask_and_revert() {
  const auto answer =
      QMessageBox::question(this, QStringLiteral("HTMLed"),
                            tr("Discard all changes and go back to the document as it was last saved?"),
                            QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Cancel);
  if (answer != QMessageBox::Discard) return;
  if (!file_.path().empty()) {
    open(to_qt(file_.path()));
    return;
  }
  set_modified(false);
  new_document();
}

// --- saving ---

void Window::finish_typing() {
  constexpr std::int64_t longest = browser::InputQueue::patience + browser::InputQueue::deadline;
  const std::int64_t end = loop_.now() + longest;
  // A key that the view has got stands in its inbox for a turn of the loop, where nobody else sees it.
  const auto read = std::make_shared<bool>(false);
  loop_.post([read] { *read = true; });
  while (!*read && loop_.now() < end) loop_.pump(5);
  while (editor_->document_view().input_waits() && loop_.now() < end) loop_.pump(5);
}

bool Window::with_document(const std::function<void(const dom::Document&)>& act) {
  finish_typing();
  core::HTMLed& control = editor_->control();
  const bool in_code_view = control.InCodeView();
  if (in_code_view) control.show_Code();
  control.UserControl_ExitFocus();  // the border of the selected element is no part of the document
  bool done = false;
  try {
    if (const auto document = control.DOM()) {
      act(document->tree());
      done = true;
    }
  } catch (const RuntimeError& error) {
    tell(words_of(error));
  }
  if (in_code_view) control.show_Code();
  return done;
}

bool Window::save() {
  if (file_.path().empty()) return save_as();
  return may_overwrite() && save_to(to_qt(file_.path()));
}

bool Window::save_as() {
  QFileDialog dialog(this, tr("Save As"), to_qt(file_.path()), filters());
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("html"));
  return dialog.exec() == QDialog::Accepted && save_to(dialog.selectedFiles().constFirst());
}

bool Window::save_to(const QString& path) {
  const std::u16string target = from_qt(QFileInfo(path).absoluteFilePath());
  if (!with_document([&](const dom::Document& document) { file_.save(document, target); })) return false;
  set_unmodified();
  say(tr("Saved %1").arg(to_qt(target)), message_milliseconds);
  return true;
}

bool Window::save_copy(const QString& path) {
  return with_document([&](const dom::Document& document) {
    save_atomically(from_qt(QFileInfo(path).absoluteFilePath()), file_.bytes_of(document));
  });
}

// --- publishing ---

bool Window::ask_for_account() {
  PublishDialog dialog(publishing_.account(), this);
  if (dialog.exec() != QDialog::Accepted) return false;
  publishing_.set_account(dialog.account());
  return true;
}

void Window::upload_images() {
  core::HTMLed& control = editor_->control();
  const int before = control.CountLocalImages();
  if (before == 0) return tell(tr("There are no local images to upload."));
  if (!publishing_.is_set_up() && (!ask_for_account() || !publishing_.is_set_up())) return;
  transfer_failure_.clear();
  const QPointer<Window> alive(this);
  const int uploaded = control.UploadAllImages();
  // The loop has run meanwhile, in which the window may have been closed.
  if (!alive) return;
  look_later();
  show_local_images();
  QString result = tr("Uploaded %1 of %2 images").arg(uploaded).arg(before);
  if (uploaded < before && !transfer_failure_.isEmpty()) result += QStringLiteral(": ") + transfer_failure_;
  tell(result);
}

// A row of it only where there is something to say.
void Window::show_local_images() {
  const int count = editor_->control().CountLocalImages();
  if (!local_images_) {
    if (count == 0) return;
    local_images_ = new QToolButton;
    local_images_->setObjectName(QStringLiteral("local_images"));
    local_images_->setAutoRaise(true);
    connect(local_images_, &QToolButton::clicked, this, &Window::upload_images);
    bottom_line().addPermanentWidget(local_images_);
  }
  local_images_->setVisible(count > 0);
  local_images_->setText(tr("Local images: %1").arg(count));
  local_images_->setToolTip(tr("These images are on this computer only. Press to upload them."));
  show_bottom_line();
}

// --- asking ---

bool Window::may_leave_document() {
  finish_typing();
  if (look_awaited_) look_whether_modified();
  if (!modified_) return true;
  const auto answer = QMessageBox::question(
      this, QStringLiteral("HTMLed"), tr("The document has been changed. Save the changes?"),
      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
  return answer == QMessageBox::Save ? save() : answer == QMessageBox::Discard;
}

bool Window::may_overwrite() {
  if (!file_.changed_on_disk()) return true;
  const auto answer = QMessageBox::warning(
      this, QStringLiteral("HTMLed"),
      tr("Another program has changed the file since you opened it. Write over its changes?"),
      QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel);
  return answer == QMessageBox::Yes;
}

void Window::closeEvent(QCloseEvent* event) { event->setAccepted(may_leave_document()); }

// --- telling ---

void Window::Error(std::int32_t&, std::u16string& text) { tell(to_qt(text)); }

void Window::BeginImageUpload() { transfer_failure_.clear(); }

void Window::FTPSuccess(std::int32_t& id, std::u16string&) {
  constexpr std::int32_t file_uploaded = 102;
  if (id == file_uploaded && !editor_->RemoteContentWithheld()) picture_uploaded_.start();
}

// What couldn't be done with a picture is told after the reason, which helps the user more.
void Window::FTPError(std::int32_t& number, std::u16string& text) {
  constexpr std::int32_t no_connection = 11, no_upload = 12;
  const QString told = to_qt(text);
  if (number == no_connection || number == no_upload) {
    const QString reason = std::exchange(transfer_failure_, {});
    return tell(reason.isEmpty() ? told : told + QStringLiteral(" (%1)").arg(reason));
  }
  if (transfer_failure_.isEmpty()) transfer_failure_ = told;
  tell(told);
}

// A link is there to be edited. The user sees where it leads.
void Window::BeforeNavigate(std::u16string& url, std::u16string&, bool& cancel) {
  cancel = true;
  say(to_qt(url), message_milliseconds);
}

void Window::set_unmodified() {
  look_awaited_ = false;
  looked_at_depth_.reset();
  if (const auto document = editor_->control().DOM()) {
    dom::Journal& journal = document->tree().journal();
    journal.end_typing_run();  // what is typed from here on is a step of its own
    unmodified_depth_ = journal.depth();
    looked_at_depth_ = unmodified_depth_;
    unmodified_bytes_.clear();
    attempt([&] { unmodified_bytes_ = file_.bytes_of(document->tree()); });
  }
  set_modified(false);
}

void Window::look_later() {
  if (loading_ || std::exchange(look_awaited_, true)) return;
  QTimer::singleShot(0, this, &Window::look_whether_modified);
}

// What was typed in the code, and taken back there by hand, is told of as a change and no more.
void Window::view_switched(bool) { look_later(); }

void Window::document_changed() { look_later(); }

// As many steps as then may still be others: where the count has come back to that, the documents are
// compared. An edit always changes the count, so nobody compares while typing.
void Window::look_whether_modified() {
  look_awaited_ = false;
  core::HTMLed& control = editor_->control();
  const auto document = control.DOM();
  // To look at the code changes nothing. What is typed there reaches the document when the code view is left.
  if (!document || (control.InCodeView() && !control.txtCode().untouched_text())) {
    looked_at_depth_.reset();
    return set_modified(true);
  }
  const std::size_t depth = document->tree().journal().depth();
  const bool moved = std::exchange(looked_at_depth_, depth) != depth;
  bool same = false;
  if (depth != unmodified_depth_)
    set_modified(true);
  else if (moved)
    set_modified(!attempt([&] { same = file_.bytes_of(document->tree()) == unmodified_bytes_; }) || !same);
}

void Window::set_modified(bool modified) {
  modified_ = modified;
  show_title();
}

void Window::show_title() {
  const QString name = file_.path().empty() ? tr("Untitled") : QFileInfo(to_qt(file_.path())).fileName();
  setWindowTitle(QStringLiteral("%1[*] – HTMLed").arg(name));
  setWindowModified(modified_);
}

// In the window's own line and never in a dialog: the user goes on, and a run with nobody there doesn't stop.
void Window::tell(const QString& text) {
  say(text);
  std::cerr << "htmled: " << text.toStdString() << '\n';
}

// Asking for the bar makes one, and an empty one takes a line of the page away.
void Window::say(const QString& text, int milliseconds) {
  if (text.isEmpty() && !findChild<QStatusBar*>()) return;
  text.isEmpty() ? bottom_line().clearMessage() : bottom_line().showMessage(text, milliseconds);
}

QStatusBar& Window::bottom_line() {
  if (QStatusBar* made = findChild<QStatusBar*>()) return *made;
  connect(statusBar(), &QStatusBar::messageChanged, this, &Window::show_bottom_line);
  return *statusBar();
}

void Window::show_bottom_line() {
  auto* bar = findChild<QStatusBar*>();
  const bool says_something = bar && !bar->currentMessage().isEmpty();
  if (bar) bar->setVisible(says_something || (local_images_ && !local_images_->isHidden()));
}

}  // namespace tvx::htmled
