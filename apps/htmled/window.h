#pragma once

#include <QElapsedTimer>
#include <QKeySequence>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "htmled/languages.h"
#include "htmled/publishing.h"
#include "tvx/core/events.h"
#include "tvx/core/observer.h"
#include "tvx/files/document_file.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/widget/substitutes.h"

class QAction;
class QMenu;
class QToolBar;
class QStatusBar;
class QToolButton;

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::htmled {

class FindBar;
class RemoteContentBar;

/// The editor's window: one document, one file.
class Window final : public QMainWindow, private core::HTMLedEvents, private core::HTMLedObserver {
  Q_OBJECT
 public:
  /// The loop outlives the window.
  explicit Window(platform::MessageLoop& loop, const qt::Substitutes& substitutes = {});
  ~Window() override;

  /// Starts the editor and opens the file, or a new page if the name is empty. False, with the user told, if
  /// that file can't be read; a new page stands there then.
  bool start(const QString& path);
  /// False, with the user told, if the file can't be read; the document then stays as it was.
  bool open(const QString& path);
  /// Writes what saving would write into another file. The document stays that of its own file.
  bool save_copy(const QString& path);

  qt::HTMLedWidget& editor() { return *editor_; }

  const Languages& languages() const { return languages_; }
  /// The account that images are published with.
  Publishing& publishing() { return publishing_; }
  /// Uploads the document's local images. Without an account the user is asked for one first.
  void upload_images();

  /// All words of the window, of its dialogs and of the editor are those of that language from now on.
  void speak(const Language& language);

 private:
  // core::HTMLedEvents
  void Error(std::int32_t& number, std::u16string& text) override;
  void BeginImageUpload() override;
  void FTPSuccess(std::int32_t& id, std::u16string& text) override;
  void FTPError(std::int32_t& number, std::u16string& text) override;
  void BeforeNavigate(std::u16string& url, std::u16string& frame, bool& cancel) override;
  void MenuClick(std::u16string& item, bool& cancel) override;
  void SpellCheckComplete(bool& cancelled) override;

  // core::HTMLedObserver
  void view_switched(bool in_code_view) override;
  void document_changed() override;

  void closeEvent(QCloseEvent* event) override;

  void make_menus();
  QMenu* add_menu(QMenu* above, const char* text);
  void add_item(QMenu* menu, const char* text, const QKeySequence& keys, std::function<void()> act);
  /// An item of the control's menus, as it is there.
  void add_control_item(QMenu* menu, const char* name, const QKeySequence& keys = {});
  void show_control_item(QAction& action);
  void make_find_bar();
  void add_find_items(QMenu* edit);
  void make_table_menu();
  void add_language_menu(QMenu* view);
  void make_spelling_menu();
  void add_spelling_languages(QMenu* menu);
  void add_auto_format(QMenu* menu);
  void check_spelling();
  void show_words();
  /// False: the user gave up.
  bool ask_for_account();
  void show_local_images();
  void new_document();
  void ask_and_open();
  /// Back to what the file holds, if the user says so.
  void ask_and_revert();
  /// What was typed before this belongs to what comes now, be it saving or undoing: waits until the editor
  /// has dealt with it.
  void finish_typing();
  bool save();
  bool save_as();
  bool save_to(const QString& path);
  /// Whether to go on: nothing has been changed, or the user saved it or let it go.
  bool may_leave_document();
  /// Whether to write over what another program has put in the file meanwhile.
  bool may_overwrite();
  bool load(files::DocumentFile file);
  bool load_document(files::DocumentFile file);
  /// Calls `act` with the document as it is to be saved; false, with the user told, if that fails.
  bool with_document(const std::function<void(const dom::Document&)>& act);

  /// Asks in a line above the page where it wants something from the web and the user hasn't said yet.
  void look_for_remote_content();
  void answer_remote_content(bool load);

  /// The document is now what its file holds.
  void set_unmodified();
  /// Whether it still is: after undoing everything it is again.
  void look_whether_modified();
  /// When the turn is over.
  void look_later();
  void set_modified(bool modified);
  void show_title();
  void tell(const QString& text);
  /// In the window's own line, which is there only while it says something.
  void say(const QString& text, int milliseconds = 0);
  QStatusBar& bottom_line();
  void show_bottom_line();

  platform::MessageLoop& loop_;
  Languages languages_;
  QTemporaryDir drafts_;
  qt::HTMLedWidget* editor_;
  Publishing publishing_;
  QToolButton* local_images_ = nullptr;  // how many there are, in the status bar; made for the first one
  QTimer count_images_;
  QString transfer_failure_;  // the first one's text, of what is under way
  FindBar* find_bar_;
  QToolBar* find_strip_;  // holds it below the page
  RemoteContentBar* remote_content_;
  QToolBar* remote_content_strip_;                         // holds it above the page
  std::vector<std::pair<QAction*, const char*>> actions_;  // with their English words
  files::DocumentFile file_;
  bool modified_ = false;
  bool loading_ = false;
  bool remote_content_left_ = false;  // of this document, as the user said
  QElapsedTimer picture_uploaded_;    // since the last one, in a page that wanted nothing from the web
  bool look_awaited_ = false;
  std::string unmodified_bytes_;      // what saving would have written then
  std::size_t unmodified_depth_ = 0;  // of the undo journal
  std::optional<std::size_t> looked_at_depth_;
};

}  // namespace tvx::htmled
