#include "htmled/window.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <iostream>
#include <utility>

#include "htmled/document/document_page.h"
#include "htmled/drafts.h"
#include "htmled/find_bar.h"
#include "htmled/publish_dialog.h"
#include "htmled/recent_files.h"
#include "htmled/source_tools.h"
#include "htmled/tabs.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {

Window::Window(platform::MessageLoop& loop, const qt::Substitutes& substitutes)
    : loop_(loop), substitutes_(substitutes), tabs_(new Tabs(this)), recent_files_(new RecentFiles(this)) {
  sweep_drafts();
  resize(1000, 720);
  setCentralWidget(tabs_);
  connect(tabs_, &Tabs::front_changed, this, &Window::show_front);
  connect(tabs_, &Tabs::close_asked, this, [this](DocumentPage* page) { close_page(*page); });
  connect(recent_files_, &RecentFiles::chosen, this, &Window::open_in_tab);
  make_status_bar();
  make_find_bar();
  tabs_->add(*new_page());
  make_menus();
  take_drops();
  show_words();
}

Window::~Window() {
  // The pages go after this, and speak to nobody then.
  for (DocumentPage* page : tabs_->pages()) page->disconnect(this);
  tabs_->disconnect(this);
}

// --- pages ---

DocumentPage* Window::new_page() {
  auto* page = new DocumentPage(loop_, substitutes_);
  connect(page, &DocumentPage::title_changed, this, [this, page] {
    if (page == front_) show_title();
  });
  connect(page, &DocumentPage::said, this, &Window::say);
  connect(page, &DocumentPage::told, this, &Window::tell);
  connect(page, &DocumentPage::filed, this, [](const QString& path) { RecentFiles::add(path); });
  connect(page, &DocumentPage::local_images_counted, this, &Window::show_local_images);
  return page;
}

// The first page is started by whoever starts the window.
void Window::show_front() {
  front_ = tabs_->front();
  if (!front_) return;
  if (!front_->editor()) {
    const bool first = !editor_;
    front_->make_editor();
    set_up_editor(*front_->editor());
    if (!first) QTimer::singleShot(0, front_, &DocumentPage::begin);
  }
  editor_ = front_->editor();
  find_bar_->set_editor(editor_, [this] { finish_typing(); });
  if (editor_->started()) editor_->setFocus(Qt::OtherFocusReason);
  show_title();
  show_local_images();
  emit editor_changed();
}

void Window::set_up_editor(qt::HTMLedWidget& editor) {
  publishing_.serve(editor.control());
  set_up_writing(editor);
  new SourceTools(editor);
  if (const Language* language = languages_.find(languages_.spoken()))
    editor.set_LocalizationFile(language->file);
}

// --- menus and their words ---

// Words are looked up when they are shown, and again when the language changes: here they are only marked.
void Window::make_menus() {
  QMenu* file = add_menu(nullptr, QT_TR_NOOP("&File"));
  add_item(file, QT_TR_NOOP("&New"), QKeySequence::New, [this] { new_document(); });
  add_item(file, QT_TR_NOOP("&Open…"), QKeySequence::Open, [this] { ask_and_open(); });
  QMenu* recent = add_menu(file, QT_TR_NOOP("Open &Recent"));
  recent->setObjectName(QStringLiteral("recent"));
  recent_files_->fill(*recent);
  reopen_ = add_item(file, QT_TR_NOOP("Reopen Closed &Document"),
                     QKeySequence(QStringLiteral("Ctrl+Shift+T")), [this] { reopen_closed(); });
  show_closed();
  file->addSeparator();
  add_item(file, QT_TR_NOOP("&Save"), QKeySequence::Save, [this] { front_->save(); });
  add_item(file, QT_TR_NOOP("Save &As…"), QKeySequence(QStringLiteral("Ctrl+Shift+S")),
           [this] { front_->save_as(); });
  file->addSeparator();
  add_item(file, QT_TR_NOOP("&Publish Settings…"), {}, [this] { ask_for_account(); });
  add_item(file, QT_TR_NOOP("&Upload Images"), {}, [this] { upload_images(); });
  file->addSeparator();
  add_item(file, QT_TR_NOOP("&Close"), QKeySequence(QStringLiteral("Ctrl+W")),
           [this] { close_page(*front_); });
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
  QMenu* view = add_menu(nullptr, QT_TR_NOOP("&View"));
  add_source_items(view);
  add_language_menu(view);
  make_table_menu();
  make_spelling_menu();
}

QMenu* Window::add_menu(QMenu* above, const char* text) {
  QMenu* menu = above ? above->addMenu(QString()) : menuBar()->addMenu(QString());
  actions_.emplace_back(menu->menuAction(), text);
  return menu;
}

QAction* Window::add_item(QMenu* menu, const char* text, const QKeySequence& keys,
                          std::function<void()> act) {
  QAction* action = menu->addAction(QString());
  action->setShortcut(keys);
  connect(action, &QAction::triggered, this, std::move(act));
  actions_.emplace_back(action, text);
  return action;
}

void Window::make_find_bar() {
  find_bar_ = new FindBar(this);
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

void Window::add_source_items(QMenu* view) {
  QAction* wrap = view->addAction(QString());
  actions_.emplace_back(wrap, QT_TR_NOOP("&Wrap lines of the source"));
  wrap->setCheckable(true);
  wrap->setChecked(SourceTools::wraps());
  connect(wrap, &QAction::toggled, this, [this](bool on) {
    SourceTools::remember_wrapping(on);
    for (SourceTools* tools : findChildren<SourceTools*>()) tools->follow_settings();
  });
  add_item(view, QT_TR_NOOP("&Go to line…"), QKeySequence(QStringLiteral("Ctrl+G")), [this] {
    if (auto* tools = editor_->findChild<SourceTools*>()) tools->ask_for_line(this);
  });
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
  for (const DocumentPage* page : tabs_->pages())
    if (page->editor()) page->editor()->set_LocalizationFile(language.file);
  say({});
  show_words();
}

void Window::show_words() {
  for (const auto& [action, text] : actions_) action->setText(tr(text));
  find_bar_->show_words();
  for (DocumentPage* page : tabs_->pages()) page->show_words();
  tabs_->show_names();
  show_title();
  show_local_images();
}

// --- files ---

// The widgets in the window have been shown by now.
void Window::showEvent(QShowEvent*) {
  if (!editor_->started()) front_->start();
}

bool Window::start(const QString& path) {
  front_->start();
  if (!path.isEmpty() && front_->open(path)) return true;
  front_->open_new();
  return path.isEmpty();
}

bool Window::open(const QString& path) { return front_->open(path); }
bool Window::save_copy(const QString& path) { return front_->save_copy(path); }
void Window::finish_typing() { front_->finish_typing(); }

// --- publishing ---

bool Window::ask_for_account() {
  PublishDialog dialog(publishing_.account(), this);
  if (dialog.exec() != QDialog::Accepted) return false;
  publishing_.set_account(dialog.account());
  return true;
}

void Window::upload_images() {
  if (editor_->control().CountLocalImages() == 0) return tell(tr("There are no local images to upload."));
  if (!publishing_.is_set_up() && (!ask_for_account() || !publishing_.is_set_up())) return;
  front_->upload_images();
}

void Window::show_local_images() {
  const int count = front_->local_images();
  local_images_->setVisible(count > 0);
  local_images_->setText(tr("Local images: %1").arg(count));
  local_images_->setToolTip(tr("These images are on this computer only. Press to upload them."));
}

// --- telling ---

// There from the start: a line that came and went would move the page.
void Window::make_status_bar() {
  local_images_ = new QToolButton;
  local_images_->setObjectName(QStringLiteral("local_images"));
  local_images_->setAutoRaise(true);
  local_images_->hide();
  connect(local_images_, &QToolButton::clicked, this, &Window::upload_images);
  statusBar()->addPermanentWidget(local_images_);
}

void Window::show_title() {
  setWindowTitle(QStringLiteral("%1[*] – HTMLed").arg(front_->name()));
  setWindowModified(front_->is_modified());
}

void Window::tell(const QString& text) {
  say(text);
  std::cerr << "htmled: " << text.toStdString() << '\n';
}

void Window::say(const QString& text, int milliseconds) {
  text.isEmpty() ? statusBar()->clearMessage() : statusBar()->showMessage(text, milliseconds);
}

}  // namespace tvx::htmled
