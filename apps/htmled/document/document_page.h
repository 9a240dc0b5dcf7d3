#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QElapsedTimer>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "tvx/core/events.h"
#include "tvx/core/observer.h"
#include "tvx/files/document_file.h"
#include "tvx/files/kept_page.h"
#include "tvx/qt/widget/substitutes.h"

namespace tvx::platform {
class MessageLoop;
}
namespace tvx::qt {
class Dialogs;
class HTMLedWidget;
}  // namespace tvx::qt

namespace tvx::htmled {

class FilesOfPage;
class KeptPages;
class Languages;
class ModifiedMark;
class PageKeeper;
class RemoteContentBar;
class ShownFiles;

/// What the pages of a window have in common. All of it outlives them.
struct PageSurroundings {
  platform::MessageLoop& loop;
  qt::Substitutes substitutes;  // who takes the desktop's place
  KeptPages& kept_pages;
  const Languages& languages;
};

/// One document of a window: its editor, its file, and what is asked and told about them. A page that nobody
/// has seen yet has no editor: an engine's view costs time and memory.
class DocumentPage final : public QWidget, private core::HTMLedEvents, private core::HTMLedObserver {
  Q_OBJECT
 public:
  explicit DocumentPage(const PageSurroundings& surroundings, QWidget* parent = nullptr);
  ~DocumentPage() override;

  /// Null before make_editor().
  qt::HTMLedWidget* editor() const { return editor_; }
  /// Makes the editor unless there is one. It is hidden until the start, which runs the loop: widgets that
  /// are being shown may not change meanwhile.
  void make_editor();
  /// Starts the editor.
  void start();
  /// Starts the editor with what open_later() was given, or with a new page; nothing where it has begun.
  void begin();
  /// The same in a later turn.
  void begin_soon();

  // --- the file ---
  /// False, with the user told, if the file can't be read; the document then stays as it was.
  bool open(const QString& path);
  /// The file is read now and shown by start(). False, with the user told, if it can't be read.
  bool open_later(const QString& path);
  void open_new();
  /// A page without a file that begins with these bytes; the same when it is started.
  void open_template(const QByteArray& bytes);
  void open_template_later(const QByteArray& bytes) { template_ = bytes; }
  bool save();
  bool save_as();
  /// Writes what saving would write into another file. The document stays that of its own file.
  bool save_copy(const QString& path);
  /// The same into the file of a template, with the pictures that stand beside the document.
  bool save_template(const QString& path);
  /// Back to what the file holds, if the user says so.
  void ask_and_revert();
  /// Whether to go on: nothing has been changed, or the user saved it or let it go.
  bool may_leave();
  /// Makes the document what was kept of it, in one step of undo; `done` is called when it is kept again. In
  /// a page that hasn't begun this happens when it does.
  void restore(files::KeptPage kept, std::function<void()> done);
  /// Keeps what isn't saved, in case that the program ends; and keeps it no longer.
  void keep_now();
  void let_go();
  /// The user prefers another way of keeping than before.
  void keep_as_preferred();
  /// Asks in a line above the page where it wants something from the web and the user hasn't said yet.
  void look_for_remote_content();
  /// Asks what to do where another program has written the file.
  void look_at_file();
  /// Uploads the document's local images; there is an account.
  void upload_images();

  // --- what the status bar shows and changes (document_form.cpp) ---
  files::FileForm form() const;
  /// The tag that the page names; empty: it names none.
  QString language() const;
  void set_language(const QString& tag);
  void set_charset(const QString& name);
  void set_line_end(files::LineEnd end);
  /// Shows what the page says of itself as a whole, and writes what the user makes of it.
  void ask_properties();
  /// Asks for the name by which links lead to what the caret is in.
  void ask_bookmark();
  /// Takes the table out that the caret is in.
  void delete_table();

  // --- how it stands ---
  /// Of the file; empty: it is in no file yet.
  QString path() const;
  /// The file's name as the user knows it.
  QString name() const;
  bool is_modified() const;
  /// It has no text then, whatever its source is.
  bool consists_of_frames() const;
  /// Whether a document is being loaded: the page can't go then.
  bool is_busy() const { return loading_; }
  /// Whether what the editor holds is not yet the page that is to be in it.
  bool is_coming() const { return loading_ || begins_soon_; }
  /// Calls `act` once the page is there: now, or in a turn after it has come; not at all if it goes before.
  void when_there(std::function<void()> act);
  /// A new page in which nothing has been done yet.
  bool is_untouched() const {
    return path().isEmpty() && !is_modified() && !pending_ && !restored_ && !loading_;
  }
  int local_images() const { return local_images_; }

  /// What was typed before this belongs to what comes now, be it saving or undoing: waits until the editor
  /// has dealt with it.
  void finish_typing();
  /// Another language may be spoken by now.
  void show_words();

 signals:
  /// Name, file or mark are others.
  void title_changed();
  /// form() or language() may be others.
  void form_changed();
  /// Its file was opened, or it was saved in one.
  void filed(const QString& path);
  /// For the window's line; for good, where the time is 0.
  void said(const QString& text, int milliseconds);
  /// A failure, for the window's line.
  void told(const QString& text);
  void local_images_counted();

 private:
  struct FileStamp {
    QDateTime time;
    qint64 size = -1;
    bool operator==(const FileStamp&) const = default;
  };

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

  void hear_editor();
  /// Nothing, with the user told, if it can't be read or is no page.
  std::optional<files::DocumentFile> read(const QString& path);
  bool open_pending();
  void tell_there();
  /// On a page that is empty. Before the first document has come, the one that the editor starts with would
  /// show it.
  void show_hint();
  /// Changes the document from the program, as the user's step.
  void change_page(const std::function<void(dom::Document&)>& change);
  std::optional<files::KeptPage> unsaved();
  std::u16string own_text();
  void show_restored();
  void ask_about_file(const files::DocumentFile& file);
  bool load(files::DocumentFile file);
  bool load_document(files::DocumentFile file);
  QString warning_of_page() const;
  bool save_to(const QString& path);
  static FileStamp stamp_of(const QString& path);
  FileStamp present_stamp() const { return stamp_of(path()); }
  /// The document stands in that file now.
  void is_filed(const QString& path);
  /// Asks with these buttons of a message box; the one pressed.
  int ask(const QString& question, int buttons, int usual);
  /// Whether to write over what another program has put in the file meanwhile.
  bool may_overwrite();
  /// A page that has been given no title is called by its first heading.
  void take_title();
  /// Offers to copy what the page shows from its old folder and from elsewhere, and does so.
  void ask_about_files(FilesOfPage& files);
  /// Why the document couldn't be written, with the user told; nothing where it could.
  std::optional<QString> write_file(const QString& target);
  /// The files that the document names, for a file of that path.
  FilesOfPage files_for(const QString& target);
  /// Calls `act` while the document has the addresses that a file of that path is to have.
  void as_filed(const QString& target, const std::function<void(const dom::Document&)>& act);
  /// Says that the file couldn't be saved, and offers to choose another one; whether it is saved in the end.
  bool save_elsewhere(const QString& failure);
  /// That a new page names.
  QString new_language() const;
  /// Calls `act` with the document as it is to be saved. Gives why that failed, with the user told, if it
  /// did.
  std::optional<QString> with_document(const std::function<void(const dom::Document&)>& act);
  void look_later();
  void count_images();
  void answer_remote_content(bool load);

  PageSurroundings around_;
  std::optional<QTemporaryDir> drafts_;  // made for a page without a file
  RemoteContentBar* remote_content_;
  qt::Dialogs* dialogs_ = nullptr;  // of the editor, unless somebody takes the desktop's place
  qt::HTMLedWidget* editor_ = nullptr;
  files::DocumentFile file_;
  std::map<std::u16string, QString> settled_files_;  // from elsewhere, in this document (files_of_page.h)
  std::optional<files::DocumentFile> pending_;       // read, and shown at the start
  QByteArray template_;                              // that a page without a file begins with
  std::unique_ptr<ModifiedMark> mark_;
  std::unique_ptr<PageKeeper> keeper_;
  std::unique_ptr<ShownFiles> shown_files_;
  std::optional<files::KeptPage> restored_;  // to be shown at the start
  std::function<void()> when_restored_;
  QString folder_;          // of the file
  FileStamp stamp_;         // of the file as it was read, written or asked about last
  bool keeps_own_ = false;  // the user has been asked, and keeps the document
  bool has_begun_ = false;
  QTimer count_images_;
  int local_images_ = 0;
  QString transfer_failure_;  // the first one's text, of what is under way
  bool loading_ = false, begins_soon_ = false;
  std::deque<std::function<void()>> when_there_;
  bool remote_content_left_ = false;  // of this document, as the user said
  QElapsedTimer picture_uploaded_;    // since the last one, in a page that wanted nothing from the web
};

}  // namespace tvx::htmled
