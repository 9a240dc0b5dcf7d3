#pragma once

#include <QKeySequence>
#include <QMainWindow>
#include <QStringList>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "htmled/languages.h"
#include "htmled/publishing.h"
#include "htmled/unsaved/page_keeper.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/widget/substitutes.h"

class QMenu;
class QToolBar;

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::htmled {

class Commands;
class DocumentPage;
class FindBar;
class FormatBar;
class RecentFiles;
class StatusBar;
class Tabs;

/// The editor's window: documents, of which one is in front, and menus and a status bar that are about that.
class Window final : public QMainWindow {
  Q_OBJECT
 public:
  /// The loop outlives the window.
  explicit Window(platform::MessageLoop& loop, const qt::Substitutes& substitutes = {});
  ~Window() override;

  /// Starts the editor and opens the file, or a new page if the name is empty. False, with the user told, if
  /// that file can't be read; a new page stands there then.
  bool start(const QString& path);
  /// The same with further files in tabs of their own, the first one in front.
  bool start_with(const QStringList& paths);
  /// Opens the file in a tab of its own, or where it is open already, and brings that to the front. A new
  /// page in which nothing has been done makes room. False, with the user told, if it can't be read.
  bool open_in_tab(const QString& path);
  void open_all(const QStringList& paths);
  /// Opens the file in place of the document in front. False, with the user told, if the file can't be read;
  /// the document then stays as it was.
  bool open(const QString& path);
  /// Writes what saving would write into another file. The document stays that of its own file.
  bool save_copy(const QString& path);

  /// Of the document in front.
  qt::HTMLedWidget& editor() { return *editor_; }
  DocumentPage& front() { return *front_; }
  Tabs& tabs() { return *tabs_; }
  /// False: the user wants the document to stay.
  bool close_page(DocumentPage& page);

  /// From now on geometry and bars are as at the last end, and kept for the next start.
  void remember_appearance();
  void come_to_front();
  /// Offers what a program that ended otherwise than by its user hadn't saved.
  void offer_unsaved();
  /// The program ends, and nobody is asked: what isn't saved is offered at the next start.
  void keep_everything();
  void stop_everything();

  const Languages& languages() const { return languages_; }
  /// The code of the language that the program speaks: by itself English.
  QString spoken() const;
  /// The account that images are published with.
  Publishing& publishing() { return publishing_; }
  // --- what its menus call ---
  Commands& commands() { return *commands_; }
  FindBar& find_bar() { return *find_bar_; }
  FormatBar& format_bar() { return *format_bar_; }
  RecentFiles& recent_files() { return *recent_files_; }
  void new_document();
  /// One that begins with these bytes. A new page in which nothing has been done makes room.
  void new_document_of(const QByteArray& page);
  void ask_and_open();
  void ask_and_save_copy();
  /// A page that begins with a template which the user chooses.
  void new_from_template();
  /// The document becomes one of the user's templates, under a name that is asked for.
  void ask_and_save_template();
  void reopen_closed();
  bool can_reopen() const { return !closed_.empty(); }
  /// False: the user gave up.
  bool ask_for_account();
  void check_spelling();
  /// For pages that name no language; empty: that of the desktop. Kept for the next start.
  void set_spelling_language(const QString& tag);
  // --- what the user prefers by now, for all documents ---
  void ask_again_for_web_content();
  void keep_as_preferred();
  void fill_language_menu(QMenu& menu);
  void fill_spelling_languages(QMenu& menu);
  void for_each_editor(const std::function<void(qt::HTMLedWidget&)>& act) const;
  /// All documents stand on paper as the program keeps it.
  void apply_page_setup() const;
  /// Whether the page stands in that file now.
  void say_exported(const QString& path, bool done);
  /// Uploads the document's local images. Without an account the user is asked for one first.
  void upload_images();

  /// All words of the window, of its dialogs and of the editors are those of that language from now on.
  /// False, with the user told and all words as before, if its file is damaged.
  bool speak(const Language& language);

 signals:
  /// Another document is in front: editor() is its editor.
  void editor_changed();

 private:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

  // --- documents (window_documents.cpp) ---
  DocumentPage* new_page();
  void show_new(DocumentPage& page);
  bool append_later(const QString& path);
  DocumentPage* page_of(const QString& path) const;
  void take_drops();
  bool may_close(DocumentPage& page);
  void drop_page(DocumentPage& page);
  void restore_page(const files::KeptPage& kept, const std::function<void()>& done);

  /// What all editors of the program have in common: language, spelling, account.
  void set_up_editor(qt::HTMLedWidget& editor);
  void set_up_writing(qt::HTMLedWidget& editor) const;
  void show_front();
  void make_status_bar();
  void make_find_bar();
  void show_words();
  void show_local_images();
  void show_form();
  static double kept_zoom();
  void keep_zoom(double factor) const;
  /// Of all documents, as the user has moved the handle in one.
  void keep_split_share(double share);
  /// What was typed before this belongs to what comes now: waits until the editor has dealt with it.
  void finish_typing();
  void show_title();
  /// A failure: the user goes on, and a run with nobody there doesn't stop.
  void tell(const QString& text);
  void tell_damage(const QString& text);
  /// Calls `act`, and shows what is told meanwhile when it is over: all of it, and not the last alone.
  void tell_together(const std::function<void()>& act);
  /// In the window's own line.
  void say(const QString& text, int milliseconds = 0);

  platform::MessageLoop& loop_;
  KeptPages kept_pages_;
  Languages languages_;
  const qt::Substitutes substitutes_;
  Publishing publishing_;
  FindBar* find_bar_;
  QToolBar* find_strip_;  // holds it below the page
  Tabs* tabs_;
  DocumentPage* front_ = nullptr;
  qt::HTMLedWidget* editor_ = nullptr;  // of the page in front
  RecentFiles* recent_files_;
  std::optional<QStringList> told_;  // what is to be told together
  QStringList closed_;               // their files, the last one at the end
  bool remembers_ = false;
  StatusBar* status_;
  Commands* commands_ = nullptr;
  FormatBar* format_bar_ = nullptr;
};

}  // namespace tvx::htmled
