#include "htmled/window.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScopeGuard>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <iostream>
#include <utility>

#include "htmled/document/document_page.h"
#include "htmled/drafts.h"
#include "htmled/find_bar.h"
#include "htmled/first_size.h"
#include "htmled/format/format_bar.h"
#include "htmled/legible_colours.h"
#include "htmled/menus/commands.h"
#include "htmled/menus/view_choices.h"
#include "htmled/print/kept_page_setup.h"
#include "htmled/publish_dialog.h"
#include "htmled/recent_files.h"
#include "htmled/source_tools.h"
#include "htmled/status/status_bar.h"
#include "htmled/tabs.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/latin_shortcuts.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {

Window::Window(platform::MessageLoop& loop, const qt::Substitutes& substitutes)
    : loop_(loop), substitutes_(substitutes), tabs_(new Tabs(this)), recent_files_(new RecentFiles(this)) {
  sweep_drafts();
  new LegibleColours(*this);
  new qt::LatinShortcuts(this);
  set_first_size(*this, {1000, 720});
  setCentralWidget(tabs_);
  connect(tabs_, &Tabs::front_changed, this, &Window::show_front);
  connect(tabs_, &Tabs::close_asked, this, [this](DocumentPage* page) { close_page(*page); });
  connect(recent_files_, &RecentFiles::chosen, this, &Window::open_in_tab);
  connect(&kept_pages_, &KeptPages::failed, this, &Window::tell);
  make_status_bar();
  make_find_bar();
  format_bar_ = new FormatBar(this);
  addToolBar(Qt::TopToolBarArea, format_bar_);
  tabs_->add(*new_page());
  commands_ = new Commands(*this);
  commands_->show_editor();
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
  auto* page = new DocumentPage({loop_, substitutes_, kept_pages_, languages_});
  connect(page, &DocumentPage::title_changed, this, [this, page] {
    if (page == front_) show_title();
    apply_page_setup();
  });
  connect(page, &DocumentPage::said, this, &Window::say);
  connect(page, &DocumentPage::told, this, &Window::tell);
  connect(page, &DocumentPage::filed, this, [](const QString& path) { RecentFiles::add(path); });
  connect(page, &DocumentPage::local_images_counted, this, [this, page] {
    if (page == front_) show_local_images();
  });
  connect(page, &DocumentPage::form_changed, this, [this, page] {
    if (page == front_) show_form();
  });
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
    if (!first) front_->begin_soon();
  }
  editor_ = front_->editor();
  find_bar_->set_editor(editor_, [this] { finish_typing(); });
  status_->set_editor(editor_);
  show_form();
  if (editor_->started()) editor_->setFocus(Qt::OtherFocusReason);
  format_bar_->set_editor(*editor_);
  if (commands_) commands_->show_editor();
  show_title();
  show_local_images();
  QTimer::singleShot(0, front_, &DocumentPage::look_at_file);
  emit editor_changed();
}

void Window::set_up_editor(qt::HTMLedWidget& editor) {
  publishing_.serve(editor.control());
  set_up_writing(editor);
  new SourceTools(editor);
  view_choices::apply(editor);
  apply_page_setup();
  if (remembers_) editor.set_zoom(kept_zoom());
  connect(&editor, &qt::HTMLedWidget::zoomChanged, this, &Window::keep_zoom);
  connect(&editor, &qt::HTMLedWidget::splitShareChanged, this, &Window::keep_split_share);
  if (const Language* language = languages_.find(languages_.spoken()))
    editor.set_LocalizationFile(language->file);
}

void Window::apply_page_setup() const {
  qt::PageSetup setup = kept_page_setup();
  for (const DocumentPage* page : tabs_->pages()) {
    if (!page->editor()) continue;
    setup.file_name = page->name();
    page->editor()->set_page_setup(setup);
  }
}

// --- menus and their words ---

void Window::make_find_bar() {
  find_bar_ = new FindBar(this);
  find_strip_ = new QToolBar(this);
  find_strip_->setObjectName(QStringLiteral("find_strip"));
  find_strip_->setMovable(false);
  find_strip_->setContextMenuPolicy(Qt::PreventContextMenu);
  find_strip_->addWidget(find_bar_);
  addToolBar(Qt::BottomToolBarArea, find_strip_);
  find_strip_->hide();
  connect(find_bar_, &FindBar::wanted, find_strip_, &QToolBar::setVisible);
}

// Each language under its own name, so that everybody finds the way home.
void Window::fill_language_menu(QMenu& menu) {
  auto* group = new QActionGroup(&menu);
  for (const Language& language : languages_.all()) {
    QAction* action = menu.addAction(language.name);
    action->setObjectName(language.code);
    action->setCheckable(true);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, &language] {
      if (speak(language)) Languages::remember(language);
    });
  }
  connect(&menu, &QMenu::aboutToShow, this, [this, group] {
    for (QAction* action : group->actions()) action->setChecked(action->objectName() == spoken());
  });
}

bool Window::speak(const Language& language) {
  if (!languages_.speak(language)) {
    tell_damage(languages_.damage());
    return false;
  }
  for (const DocumentPage* page : tabs_->pages())
    if (page->editor()) page->editor()->set_LocalizationFile(language.file);
  say({});
  show_words();
  return true;
}

// In a box of its own: at the start, the line at the bottom soon has something else to say. It stops nothing.
void Window::tell_damage(const QString& text) {
  std::cerr << "htmled: " << text.toStdString() << '\n';
  QTimer::singleShot(0, this, [this, text] {
    QWidget* above = QApplication::activeModalWidget();
    auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("HTMLed"), text, QMessageBox::Ok,
                                above ? above : this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
  });
}

void Window::show_words() {
  commands_->show_words();
  format_bar_->show_words();
  find_bar_->show_words();
  for (DocumentPage* page : tabs_->pages()) page->show_words();
  tabs_->show_names();
  show_title();
  status_->show_words();
  show_form();
}

// --- files ---

// The widgets in the window have been shown by now.
void Window::showEvent(QShowEvent*) {
  if (!editor_->started()) front_->start();
}

bool Window::start(const QString& path) {
  const qt::MessageLoop::InputLater input_later;
  bool opened = path.isEmpty();
  tell_together([&] {
    front_->start();
    if (!path.isEmpty()) opened = front_->open(path);
    if (path.isEmpty() || !opened) front_->open_new();
  });
  return opened;
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

void Window::show_local_images() { status_->show_local_images(front_->local_images()); }

// --- telling ---

void Window::say_exported(const QString& path, bool done) {
  done ? say(tr("Exported %1").arg(path), 10'000) : tell(tr("Can't save %1").arg(path));
}

// There from the start: a line that came and went would move the page.
void Window::make_status_bar() {
  status_ = new StatusBar(this);
  setStatusBar(status_);
  connect(status_, &StatusBar::upload_asked, this, &Window::upload_images);
  connect(status_, &StatusBar::outdated, this, &Window::show_form);
  connect(status_, &StatusBar::language_chosen, this,
          [this](const QString& tag) { front_->set_language(tag); });
  connect(status_, &StatusBar::charset_chosen, this,
          [this](const QString& name) { front_->set_charset(name); });
  connect(status_, &StatusBar::line_end_chosen, this,
          [this](files::LineEnd end) { front_->set_line_end(end); });
  connect(status_, &StatusBar::zoom_chosen, this, [this](double factor) { editor_->set_zoom(factor); });
}

void Window::show_form() {
  const QString chosen = editor_->SpellingLanguage();
  status_->show_form(front_->form(), front_->language(),
                     chosen.isEmpty() ? QLocale::system().bcp47Name() : chosen);
}

void Window::show_title() {
  setWindowTitle(QStringLiteral("%1[*] – HTMLed").arg(front_->name()));
  setWindowModified(front_->is_modified());
}

void Window::tell(const QString& text) {
  told_ ? told_->append(text) : say(text);
  std::cerr << "htmled: " << text.toStdString() << '\n';
}

void Window::tell_together(const std::function<void()>& act) {
  if (told_) return act();
  told_.emplace();
  const auto end = qScopeGuard([this] {
    const QStringList told = *std::exchange(told_, std::nullopt);
    if (!told.isEmpty()) say(told.join(QStringLiteral("; ")));
  });
  act();
}

void Window::say(const QString& text, int milliseconds) {
  text.isEmpty() ? statusBar()->clearMessage() : statusBar()->showMessage(text, milliseconds);
}

}  // namespace tvx::htmled
