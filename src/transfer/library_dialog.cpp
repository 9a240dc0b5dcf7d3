#include "tvx/transfer/library_dialog.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/base/url.h"
#include "tvx/platform/common_dialogs.h"
#include "tvx/platform/message_loop.h"
#include "tvx/platform/pictures/picture_store.h"
#include "tvx/services/wait.h"
#include "tvx/transfer/date_stamp.h"

namespace tvx::transfer {
namespace {

using platform::ColumnContent;
using platform::FormControl;
using platform::ListView;

constexpr int column_size = 1, column_key = 3;
constexpr std::size_t key_digits = 14;
/// So many rows are shown one by one; what comes after them is shown as the loop has time.
constexpr std::int32_t rows_shown_singly = 100;
constexpr std::int64_t breath = 5, work_between_breaths = 20;
constexpr int least_width = 3750, least_height = 4485;
/// More of a picture isn't fetched to show it small.
constexpr std::int32_t largest_small_picture = 8 << 20;

constexpr std::u16string_view looking = u"Looking for images…",
                              nothing_there =
                                  u"There are no images in this folder. Drop some here to upload them.",
                              not_listed = u"The images can't be listed.",
                              not_uploaded = u"Not all files could be uploaded.";

bool is_picture(std::u16string_view name) {
  const std::u16string lower = ascii_lower(name);
  return std::ranges::any_of(std::array{u".png", u".jpeg", u".gif", u".jpg"},
                             [&](std::u16string_view ending) { return contains(lower, ending); });
}

std::u16string sort_key_of(const std::u16string& size) {
  return std::u16string(key_digits - std::min(key_digits, size.size()), u'0') + size;
}

FormControl& add_controls(platform::Form& form) {
  FormControl& list = form.add_list_view(u"lstImage", {{u"Name"},
                                                       {u"Size", ColumnContent::Bytes},
                                                       {u"Date", ColumnContent::Stamp},
                                                       {u"SortBySize", {}, true}});
  form.set_default_button(form.add_closing_button(u"cmdInsert", u"Insert Image"));
  form.add_closing_button(u"cmdRefresh", u"Refresh");
  form.set_cancel_button(form.add_closing_button(u"cmdCancel", u"Cancel"));
  form.set_least_size(least_width, least_height);
  return list;
}

/// Something is under way, until the end of the block.
class Under {
 public:
  explicit Under(bool& way) : way_(way) { way_ = true; }
  ~Under() { way_ = false; }
  Under(const Under&) = delete;
  Under& operator=(const Under&) = delete;

 private:
  bool& way_;
};

}  // namespace

frmLibraryImage::frmLibraryImage(const ClientSurroundings& around, platform::CommonDialogs& dialogs,
                                 platform::WindowHandle owner, LibraryEvents& events)
    : around_(around),
      dialogs_(dialogs),
      owner_(owner),
      events_(events),
      lstImage_(add_controls(form_)),
      list_(lstImage_.list_view()),
      lFTP_(around, *this),
      pictures_(around, [this](const std::u16string& name, const std::shared_ptr<const std::string>& file) {
        list_.set_picture(name, file);
      }) {
  form_.set_handler(this);
  list_.set_handler(this);
}

frmLibraryImage::~frmLibraryImage() {
  close();
  lFTP_.Disconnect();
  events_.unloaded();
  list_.set_handler(nullptr);
  form_.set_handler(nullptr);
}

// --- the list ---

void frmLibraryImage::Activate(platform::Form&) {
  if (!std::exchange(first_listing_done_, true)) Connect();
}

// As each block of a transfer lets the loop run, the user may ask for the list again meanwhile.
void frmLibraryImage::Connect() {
  if (busy_ || has_to_end()) return;
  {
    const Under way(busy_);
    list_folder();
  }
  run_waiting_uploads();
  fetch_seen_pictures();
}

void frmLibraryImage::copy_account() {
  lFTP_.Host = Host;
  lFTP_.UserName = UserName;
  lFTP_.Password = Password;
  lFTP_.InitDir = InitDir;
  lFTP_.Passive = Passive;
  lFTP_.FTPPort = Port;
  lFTP_.ProxyBypassList = ProxyBypassList;
  lFTP_.ProxyServer = ProxyServer;
  lFTP_.BlockSize = BlockSize;
  lFTP_.ShowDialog = true;
  lFTP_.TransferType = platform::RemoteTransferType::ASCII;
}

// What failed stays to be read where there is nothing else to see.
void frmLibraryImage::list_folder() {
  copy_account();
  failure_.clear();
  pictures_.want({});
  list_.set_note(list_.count() == 0 ? looking : u"");
  bool listed = false;
  if (lFTP_.Connect()) {
    lFTP_.SetCurrDirectory(lFTP_.InitDir);
    list_.clear();
    list_.set_note(looking);
    listed = lFTP_.GetDirectoryListing(u"*.*");
    if (listed) fill_list();
  }
  lFTP_.Disconnect();
  if (has_to_end()) return;
  if (!listed) {
    list_.set_note(not_listed, failure_);
  } else {
    list_.set_note(list_.count() == 0 ? nothing_there : u"");
  }
  if (form_.Visible()) form_.SetFocus(lstImage_);
}

// The list is held: the client may get another one while the loop runs. Sizes count up to the last row that
// is shown singly; nobody waits for a breath after each of ten thousand.
void frmLibraryImage::fill_list() {
  const std::shared_ptr<clsDirectoryList> folder = lFTP_.Directory();
  std::int64_t last_breath = around_.loop.now();
  for (std::int32_t position = 1; position <= folder->count(); ++position) {
    const clsDirectoryItem entry = folder->item(position);
    if (entry.Directory || !is_picture(entry.Filename)) continue;
    add_row(entry);
    if (position >= rows_shown_singly && around_.loop.now() - last_breath < work_between_breaths) continue;
    services::Wait(around_.loop, breath);
    last_breath = around_.loop.now();
    if (has_to_end()) return;
  }
}

void frmLibraryImage::add_row(const clsDirectoryItem& entry) {
  const std::u16string size = to_text(entry.FileSize);
  list_.add({.text = entry.Filename,
             .sub_items = {size, date_stamp(entry.LastWriteTime), sort_key_of(size)},
             .small_icon = 1});
}

// The size is sorted by the texts of the column that nobody sees.
void frmLibraryImage::ColumnClick(ListView& list, int column) {
  list.sort(column == column_size ? column_key : column, !list.descending());
  list.hide_column(column_key, true);
}

void frmLibraryImage::rows_seen(ListView&, int first, int last) {
  first_seen_ = first;
  last_seen_ = last;
  fetch_seen_pictures();
}

// Not while the list is being filled, which would wait for them.
void frmLibraryImage::fetch_seen_pictures() {
  if (busy_ || has_to_end()) return;
  std::vector<std::u16string> names;
  for (int row = std::max(first_seen_, 0); row <= last_seen_ && row < list_.count(); ++row) {
    const platform::ListItem& item = list_.item(row);
    const auto size = parse_integer(item.sub_items.front());
    if (!item.has_picture && size && *size >= 0 && *size <= largest_small_picture) names.push_back(item.text);
  }
  pictures_.set_place({.host = Host,
                       .port = static_cast<std::int16_t>(Port),
                       .user = UserName,
                       .password = Password,
                       .passive = Passive},
                      {.agent = u"Orvel FTP Client",
                       .through_proxy = !ProxyServer.empty(),
                       .proxy = ProxyServer,
                       .bypass = ProxyBypassList},
                      InitDir);
  pictures_.want(std::move(names));
}

// --- what the user does ---

void frmLibraryImage::Click(FormControl& button) {
  if (button.Name() == u"cmdInsert") insert_selected();
  if (button.Name() == u"cmdRefresh") Connect();
  if (button.Name() == u"cmdCancel") {
    close();
    form_.Hide();
  }
}

// The dialog stays, for further ones.
void frmLibraryImage::insert_selected() {
  if (list_.selected() < 0) return;
  events_.ImageInserted(lstImage_.Tag() + list_.item(list_.selected()).text);
}

// What is on its way ends at once: the user doesn't wait for a server to close a dialog.
void frmLibraryImage::close() {
  if (std::exchange(closed_, true)) return;
  waiting_.clear();
  pictures_.end();
  lFTP_.set_ActionCancelled(true);
  lFTP_.interrupt();
}

// --- uploads ---

bool frmLibraryImage::OLEDragOver(ListView&, const platform::TransferSource& source) {
  return platform::offers(source, platform::targets::files);
}

void frmLibraryImage::OLEDragDrop(ListView&, const platform::TransferSource& source) {
  std::vector<std::u16string> paths;
  for (const std::u16string& address : platform::addresses_of(source.read(platform::targets::files)))
    if (auto path = local_path(address)) paths.push_back(std::move(*path));
  waiting_.push_back(std::move(paths));
  if (!busy_) run_waiting_uploads();
}

void frmLibraryImage::run_waiting_uploads() {
  while (!busy_ && !waiting_.empty() && !has_to_end()) {
    const std::vector<std::u16string> paths = std::move(waiting_.front());
    waiting_.pop_front();
    {
      const Under way(busy_);
      upload(paths);
    }
    fetch_seen_pictures();
  }
}

void frmLibraryImage::upload(const std::vector<std::u16string>& paths) {
  failure_.clear();
  pictures_.want({});
  const bool connected = lFTP_.Connect();
  if (connected) {
    lFTP_.SetCurrDirectory(lFTP_.InitDir);
    failure_.clear();  // without a folder of their own the files go where the server starts
    for (const std::u16string& path : paths)
      if (!has_to_end()) upload_one(path);
  }
  lFTP_.Disconnect();
  const std::u16string failed = std::exchange(failure_, {});
  if (has_to_end()) return;
  list_folder();
  if (!failed.empty() && list_.note() != not_listed) list_.set_note(not_uploaded, failed);
}

void frmLibraryImage::upload_one(const std::u16string& path) {
  if (platform::is_local_file(path)) {
    const std::u16string name(FileNameFromPath(path));
    if (!attempt([&] { lFTP_.PutFileProgress(name, path); })) failure_ = u"Can't read " + path;
  } else if (platform::is_local_folder(path)) {
    dialogs_.show_message({.text = u"Directories may not be uploaded. Please upload the files individually",
                           .title = u"HTML Editor",
                           .icon = platform::MessageIcon::information,
                           .owner = owner_});
  }
}

void frmLibraryImage::FTPError(std::int32_t number, const std::u16string& text) {
  failure_ = text;
  events_.FTPError(number, text);
}

}  // namespace tvx::transfer
