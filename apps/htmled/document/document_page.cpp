#include "htmled/document/document_page.h"

#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <utility>

#include "htmled/counted.h"
#include "htmled/document/failure_words.h"
#include "htmled/document/modified_mark.h"
#include "htmled/document/shown_files.h"
#include "htmled/drafts.h"
#include "htmled/languages.h"
#include "htmled/preferences/preferences.h"
#include "htmled/remote_content_bar.h"
#include "htmled/unsaved/page_keeper.h"
#include "tvx/base/error.h"
#include "tvx/base/text_file.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/frames.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/mutation.h"
#include "tvx/files/edited_page.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/dialogs/dialogs.h"
#include "tvx/qt/support/message_loop.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

using qt::from_qt;
using qt::to_qt;

constexpr int message_milliseconds = 10'000;

/// Goes with the editor, after it.
struct EditorDialogs : QObject {
  explicit EditorDialogs(QWidget& window) : dialogs(window) {}
  qt::Dialogs dialogs;
};

}  // namespace

DocumentPage::DocumentPage(const PageSurroundings& surroundings, QWidget* parent)
    : QWidget(parent), around_(surroundings), remote_content_(new RemoteContentBar(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->setSpacing(0);
  layout->addWidget(remote_content_);
  remote_content_->hide();
  connect(remote_content_, &RemoteContentBar::answered, this, &DocumentPage::answer_remote_content);
  constexpr int pause_of_typing = 300;
  count_images_.setSingleShot(true);
  count_images_.setInterval(pause_of_typing);
  connect(&count_images_, &QTimer::timeout, this, &DocumentPage::count_images);
}

DocumentPage::~DocumentPage() {
  if (!editor_) return;
  editor_->disconnect(this);
  editor_->control().set_events(nullptr);
  editor_->control().remove_observer(*this);
}

void DocumentPage::make_editor() {
  if (editor_) return;
  qt::Substitutes substitutes = around_.substitutes;
  EditorDialogs* own = nullptr;
  if (!substitutes.dialogs) {
    own = new EditorDialogs(*this);
    substitutes.dialogs = dialogs_ = &own->dialogs;
  }
  editor_ = new qt::HTMLedWidget(around_.loop, this, substitutes);
  if (own) own->setParent(editor_);
  editor_->hide();
  layout()->addWidget(editor_);
  setFocusProxy(editor_);
  editor_->set_RemoteContent(core::remote_content_ask);
  hear_editor();
}

void DocumentPage::hear_editor() {
  mark_ = std::make_unique<ModifiedMark>(editor_->control(), file_);
  keeper_ = std::make_unique<PageKeeper>(around_.kept_pages, [this] { return unsaved(); });
  shown_files_ = std::make_unique<ShownFiles>(editor_->control());
  connect(mark_.get(), &ModifiedMark::changed, this, [this](bool modified) {
    modified ? keeper_->note_change() : keeper_->forget();
    emit title_changed();
  });
  connect(editor_, &qt::HTMLedWidget::property_changed, this, [this](const QString& key) {
    if (key == QStringLiteral("RemoteContentWithheld")) look_for_remote_content();
    if (key != QStringLiteral("DocumentHTML")) return;
    look_later();
    count_images_.start();
  });
  editor_->control().set_events(this);
  editor_->control().add_observer(*this);
}

// The loop runs meanwhile. What the user types is for the page that will be here.
void DocumentPage::start() {
  const qt::MessageLoop::InputLater input_later;
  make_editor();
  const QScopedValueRollback<bool> loading(loading_, true);
  editor_->show();
  editor_->start();
}

void DocumentPage::begin_soon() {
  begins_soon_ = true;
  QTimer::singleShot(0, this, &DocumentPage::begin);
}

void DocumentPage::begin() {
  begins_soon_ = false;
  if (has_begun_ || loading_) return;
  const qt::MessageLoop::InputLater input_later;
  start();
  if (!pending_ || !open_pending()) open_new();
  show_restored();
}

bool DocumentPage::open_pending() {
  bool shown = false;
  try {
    shown = load(pending_->changed_on_disk() ? files::DocumentFile::open(pending_->path())
                                             : std::move(*pending_));
  } catch (const RuntimeError& error) {
    emit told(words_of(error));
  }
  pending_.reset();
  return shown;
}

// --- coming ---

void DocumentPage::when_there(std::function<void()> act) {
  if (!is_coming()) return act();
  when_there_.push_back(std::move(act));
}

void DocumentPage::tell_there() {
  if (when_there_.empty()) return;
  QTimer::singleShot(0, this, [this] {
    const QPointer<DocumentPage> alive(this);
    while (alive && !is_coming() && !when_there_.empty()) {
      const auto act = std::move(when_there_.front());
      when_there_.pop_front();
      act();
    }
  });
}

// --- opening ---

std::optional<files::DocumentFile> DocumentPage::read(const QString& path) {
  const QString whole = QFileInfo(path).absoluteFilePath();
  try {
    files::DocumentFile file = files::DocumentFile::open(from_qt(whole));
    if (file.is_text()) return file;
    emit told(tr("Not a page: %1").arg(whole));
  } catch (const RuntimeError& error) {
    emit told(words_of(error));
  }
  return {};
}

bool DocumentPage::open(const QString& path) {
  auto file = read(path);
  return file && load(*std::move(file));
}

bool DocumentPage::open_later(const QString& path) {
  pending_ = read(path);
  if (pending_) emit title_changed();
  return pending_.has_value();
}

QString DocumentPage::new_language() const {
  if (const QString preferred = preferences::new_page_language(); !preferred.isEmpty()) return preferred;
  const QString spelling = editor_->SpellingLanguage();
  if (!spelling.isEmpty()) return spelling;
  // Who has chosen another language than the desktop's for the program reads that one.
  const QString& spoken = around_.languages.spoken();
  const bool is_chosen = !spoken.isEmpty() && QLocale(spoken).language() != QLocale::system().language();
  return is_chosen ? spoken : QLocale::system().bcp47Name();
}

void DocumentPage::open_template(const QByteArray& bytes) {
  template_ = bytes;
  open_new();
}

void DocumentPage::open_new() {
  if (!drafts_) drafts_.emplace(drafts_template());
  const std::u16string draft = from_qt(drafts_->filePath(QStringLiteral("untitled.html")));
  try {
    const QString language = new_language();
    load(template_.isEmpty()
             ? files::DocumentFile::untitled(draft, from_qt(tr("Untitled")), from_qt(language))
             : files::DocumentFile::from_template(draft, template_.toStdString()));
  } catch (const RuntimeError& error) {
    emit told(words_of(error));
  }
}

bool DocumentPage::load(files::DocumentFile file) {
  const qt::MessageLoop::InputLater input_later;
  const bool loaded = load_document(std::move(file));
  if (loaded) look_for_remote_content();
  tell_there();
  return loaded;
}

bool DocumentPage::consists_of_frames() const {
  const auto document = editor_ ? editor_->control().DOM() : nullptr;
  return document && core::consists_of_frames(document->tree());
}

/// What the user should know of the page that has been opened, if anything.
QString DocumentPage::warning_of_page() const {
  if (consists_of_frames()) return tr("This page consists of frames. Its source can be edited.");
  if (file_.faithful()) return {};
  return tr("Some bytes of this file mean nothing in %1. An edited page is saved without them.")
      .arg(QString::fromStdString(file_.form().charset));
}

bool DocumentPage::load_document(files::DocumentFile file) {
  const QScopedValueRollback<bool> loading(loading_, true);
  // Loading takes a while, and whoever writes the file meanwhile has written another one than was read.
  const FileStamp stamp = stamp_of(to_qt(file.path()));
  if (!files::open_in(editor_->control(), file)) {
    emit told(tr("Can't open %1").arg(to_qt(file.source())));
    return false;
  }
  file_ = std::move(file);
  settled_files_.clear();
  pending_.reset();  // the page's name is that of its file from here on
  mark_->clear();
  stamp_ = stamp;
  keeps_own_ = false;
  has_begun_ = true;
  show_hint();
  if (!path().isEmpty()) is_filed(path());
  emit title_changed();
  emit form_changed();
  count_images();
  shown_files_->look_later();
  remote_content_left_ = false;
  picture_uploaded_.invalidate();
  remote_content_->hide();
  if (isVisible()) editor_->setFocus(Qt::OtherFocusReason);
  emit said(warning_of_page(), 0);
  return true;
}

// Pictures are sought beside the page at first, then where the last one was.
void DocumentPage::is_filed(const QString& path) {
  const QString folder = QFileInfo(path).absolutePath();
  if (dialogs_ && std::exchange(folder_, folder) != folder) dialogs_->set_folder(folder);
  emit filed(path);
}

// The window's own: what the control was given is not what the file holds.
void DocumentPage::MenuClick(std::u16string& item, bool& cancel) {
  if (item != u"ContextMISCRevert") return;
  cancel = true;
  QTimer::singleShot(0, this, &DocumentPage::ask_and_revert);  // when the menu has gone
}

void DocumentPage::ask_and_revert() {
  const int answer = ask(tr("Discard all changes and go back to the document as it was last saved?"),
                         QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Cancel);
  if (answer != QMessageBox::Discard) return;
  path().isEmpty() ? open_new() : void(open(path()));
}

void DocumentPage::finish_typing() {
  if (editor_) editor_->finish_input();
}

// --- publishing ---

void DocumentPage::upload_images() {
  core::HTMLed& control = editor_->control();
  const int before = control.CountLocalImages();
  transfer_failure_.clear();
  const QPointer<DocumentPage> alive(this);
  const int uploaded = control.UploadAllImages();
  // The loop has run meanwhile, in which the page may have been closed.
  if (!alive) return;
  look_later();
  count_images();
  QString result = counted_of(tr("Uploaded %1 of %2 image|Uploaded %1 of %2 images"), qulonglong(uploaded),
                              qulonglong(before));
  if (uploaded < before && !transfer_failure_.isEmpty()) result += QStringLiteral(": ") + transfer_failure_;
  emit told(result);
}

void DocumentPage::count_images() {
  local_images_ = editor_->control().CountLocalImages();
  emit local_images_counted();
}

// A page that was fetched from the web has told its server already; files haven't.
void DocumentPage::look_for_remote_content() {
  if (loading_ || !editor_) return;
  /// After an upload the page wants the picture from its new place so soon, on a busy machine too.
  constexpr qint64 uploaded_milliseconds = 10'000;
  const bool withheld = editor_->RemoteContentWithheld();
  auto answer = remote_content::remembered(path());
  if (const auto usual = preferences::web_content(); !answer && usual != preferences::WebContent::Ask)
    answer = usual == preferences::WebContent::Load;
  // The pictures that the user has just put on the web himself: nobody needs to be asked.
  const bool own = picture_uploaded_.isValid() && !picture_uploaded_.hasExpired(uploaded_milliseconds);
  if (withheld && answer.value_or(own)) {
    picture_uploaded_.invalidate();
    return editor_->ShowRemoteContent();
  }
  remote_content_->setVisible(withheld && !answer && !remote_content_left_);
}

void DocumentPage::answer_remote_content(bool load) {
  remote_content::remember(path(), load);
  remote_content_left_ = !load;
  remote_content_->hide();
  if (load) editor_->ShowRemoteContent();
  editor_->setFocus(Qt::OtherFocusReason);
}

// --- asking ---

bool DocumentPage::may_leave() {
  if (!editor_) return true;
  finish_typing();
  mark_->look_now_if_awaited();
  if (!is_modified()) return true;
  const int answer = ask(tr("“%1” has been changed. Save the changes?").arg(name()),
                         QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
  return answer == QMessageBox::Save ? save() : answer == QMessageBox::Discard;
}

// Qt's own words for these have no access keys.
int DocumentPage::ask(const QString& question, int buttons, int usual) {
  QMessageBox box(QMessageBox::Question, QStringLiteral("HTMLed"), question,
                  QMessageBox::StandardButtons(buttons), this);
  if (QAbstractButton* save = box.button(QMessageBox::Save)) save->setText(tr("&Save"));
  if (QAbstractButton* discard = box.button(QMessageBox::Discard)) discard->setText(tr("&Discard"));
  box.setDefaultButton(QMessageBox::StandardButton(usual));
  return box.exec();
}

bool DocumentPage::may_overwrite() {
  if (keeps_own_ && present_stamp() == stamp_) return true;
  if (!file_.changed_on_disk()) return true;
  stamp_ = present_stamp();
  const auto answer = QMessageBox::warning(
      this, QStringLiteral("HTMLed"),
      tr("Another program has changed the file since you opened it. Write over its changes?"),
      QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel);
  return answer == QMessageBox::Yes;
}

// --- how it stands ---

QString DocumentPage::path() const { return to_qt(pending_ ? pending_->path() : file_.path()); }
QString DocumentPage::name() const {
  return path().isEmpty() ? tr("Untitled") : QFileInfo(path()).fileName();
}
bool DocumentPage::is_modified() const { return mark_ && mark_->is_set(); }
void DocumentPage::show_words() {
  remote_content_->show_words();
  if (has_begun_) show_hint();
}
void DocumentPage::show_hint() {
  editor_->set_placeholder_text(tr("Start writing, or choose File > New from template."));
}

void DocumentPage::look_later() {
  if (loading_) return;
  mark_->look_later();
  keeper_->note_change();
  shown_files_->look_later();
}

// What was typed in the code, and taken back there by hand, is told of as a change and no more.
void DocumentPage::view_switched(bool) { look_later(); }

void DocumentPage::document_changed() { look_later(); }

// --- what the control tells ---

void DocumentPage::Error(std::int32_t&, std::u16string& text) { emit told(to_qt(text)); }

void DocumentPage::BeginImageUpload() { transfer_failure_.clear(); }

void DocumentPage::FTPSuccess(std::int32_t& id, std::u16string&) {
  constexpr std::int32_t file_uploaded = 102;
  if (id == file_uploaded && !editor_->RemoteContentWithheld()) picture_uploaded_.start();
}

// What couldn't be done with a picture is told after the reason, which helps the user more.
void DocumentPage::FTPError(std::int32_t& number, std::u16string& text) {
  constexpr std::int32_t no_connection = 11, no_upload = 12;
  const QString words = to_qt(text);
  if (number == no_connection || number == no_upload) {
    const QString reason = std::exchange(transfer_failure_, {});
    emit told(reason.isEmpty() ? words : words + QStringLiteral(" (%1)").arg(reason));
    return;
  }
  if (transfer_failure_.isEmpty()) transfer_failure_ = words;
  emit told(words);
}

// A link is there to be edited. The user sees where it leads.
void DocumentPage::BeforeNavigate(std::u16string& url, std::u16string&, bool& cancel) {
  cancel = true;
  emit said(to_qt(url), message_milliseconds);
}

void DocumentPage::SpellCheckComplete(bool& cancelled) {
  if (!cancelled) emit said(tr("All words are checked"), 4000);
}

}  // namespace tvx::htmled
