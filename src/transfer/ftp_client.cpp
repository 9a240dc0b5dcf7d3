#include "tvx/transfer/ftp_client.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <limits>
#include <utility>

#include "tvx/base/failure_of.h"
#include "tvx/base/fault.h"
#include "tvx/platform/message_loop.h"
#include "tvx/services/wait.h"
#include "tvx/transfer/client_busy.h"
#include "tvx/transfer/listing_parser.h"
#include "tvx/transfer/name_pattern.h"

namespace tvx::transfer {

namespace network_errors = platform::network_errors;
using platform::ListingForm;
using platform::RemoteConnection;

namespace {

constexpr char16_t agent[] = u"Orvel FTP Client";
/// Up to here a client rests between two blocks, as it always has; hosts that take larger blocks want speed.
constexpr std::int32_t largest_block_with_rest = 1024;
constexpr std::int64_t rest_milliseconds = 5;

RuntimeError nothing_found() { return {network_errors::no_more_files, u"There are no more files."}; }

/// A step that a script can make fail. A result in place of the work: 0 is a failure that says no more.
template <class Step>
void run_step(std::u16string_view operation, Step&& step) {
  if (const auto result = fault_point(operation)) {
    if (*result == 0) throw RuntimeError(0, u"");
    return;
  }
  step();
}

std::u16string without_end_blanks(std::u16string_view text) {
  const std::size_t last = text.find_last_not_of(u" \t\r\n");
  return std::u16string(text.substr(0, last == std::u16string_view::npos ? 0 : last + 1));
}

/// A listing as it arrives, entry by entry.
class Listing {
 public:
  Listing(RemoteConnection& connection, std::u16string_view folder)
      : connection_(connection), parser_(connection.open_listing(folder), std::time(nullptr)) {}
  ~Listing() { connection_.close_file(); }
  Listing(const Listing&) = delete;
  Listing& operator=(const Listing&) = delete;

  std::optional<ListedEntry> next() {
    while (parser_.entries().empty() && !ended_) read();
    if (parser_.entries().empty()) return {};
    ListedEntry entry = std::move(parser_.entries().front());
    parser_.entries().pop_front();
    return entry;
  }
  /// The rest of it: a listing that is broken off takes its connection along.
  void read_out() {
    while (!ended_) read();
  }
  int skipped() const { return parser_.skipped(); }

 private:
  void read() {
    const std::size_t got = connection_.read(block_);
    if (got == 0) {
      parser_.finish();
      ended_ = true;
    } else {
      parser_.add({block_.data(), got});
    }
  }

  RemoteConnection& connection_;
  ListingParser parser_;
  std::array<char, 16384> block_;
  bool ended_ = false;
};

/// "pictures/*.gif": the folder and the pattern of the names in it.
std::pair<std::u16string_view, std::u16string_view> folder_and_pattern(std::u16string_view path) {
  const std::size_t slash = path.rfind(u'/');
  if (slash == std::u16string_view::npos) return {u"", path};
  return {path.substr(0, slash == 0 ? 1 : slash), path.substr(slash + 1)};
}

}  // namespace

clsFTP::clsFTP(ClientSurroundings around, FTPEvents& events) : around_(std::move(around)), events_(events) {}
clsFTP::~clsFTP() = default;

// --- the flag that asks a transfer to stop ---

bool clsFTP::ActionCancelled() { return std::exchange(cancelled_, false); }

void clsFTP::set_ActionCancelled(bool cancelled) {
  cancelled_ = cancelled;
  if (cancelled && busy_ && connection_) connection_->interrupt();
}

void clsFTP::interrupt() {
  if (!busy_) return;
  cancelled_ = true;
  if (connection_)
    connection_->interrupt();
  else if (network_)
    network_->interrupt();
}

// --- failures ---

void clsFTP::report(std::u16string_view context, const RuntimeError& failure) {
  std::u16string text = std::u16string(context) + u" - Message: " + without_end_blanks(failure.text());
  // Part of what hosts may compare with; no operation names its context so.
  if (context == u"SetCurrentDirectory" && failure.number() == network_errors::invalid_parameter)
    text = u"Moved up to root or base directory";
  if (failure.number() == network_errors::extended_error) text = without_end_blanks(failure.text());
  events_.FTPError(failure.number(), text);
}

bool clsFTP::refuse(std::u16string_view context) {
  report(context, {network_errors::transfer_in_progress, u"Another transfer is in progress"});
  return false;
}

RemoteConnection& clsFTP::connection() const {
  if (!connection_) throw RuntimeError(network_errors::invalid_handle, u"There is no connection");
  return *connection_;
}

// --- the connection ---

bool clsFTP::Connect() {
  if (busy_) return refuse(u"Connect");
  const Busy busy(*this);
  if (connection_) connection_->close();
  connection_.reset();
  bool online = false;
  if (const auto failure = failure_of([&] {
        const auto result = fault_point(u"InternetAutodial");
        online = result ? *result != 0 : around_.network.dial();
      }))
    online = false;
  connected_ = false;
  return online && open_network() && connect_to_server();
}

/// Its failure is told and ends nothing: what follows fails by itself.
bool clsFTP::open_network() {
  network_.reset();
  const bool through_proxy = !ProxyServer.empty();
  const auto failure = failure_of([&] {
    run_step(u"InternetOpen", [&] {
      network_ = around_.network.open({agent, through_proxy, ProxyServer, ProxyBypassList});
    });
  });
  if (failure)
    report(u"Connect", *failure);
  else
    events_.FTPEvent(0, u"Internet connection Found");
  return true;
}

bool clsFTP::connect_to_server() {
  RuntimeError system_error(0, u"");
  const bool fits = FTPPort >= std::numeric_limits<std::int16_t>::min() &&
                    FTPPort <= std::numeric_limits<std::int16_t>::max();
  if (!fits) report(u"Connect", system_error);  // the port isn't one; the step after it finds no connection
  const auto failure = failure_of([&] {
    if (!fits) return;
    run_step(u"InternetConnect", [&] {
      if (!network_) throw RuntimeError(network_errors::invalid_handle, u"There is no way to the network");
      connection_ =
          network_->connect({Host, static_cast<std::int16_t>(FTPPort), UserName, Password, Passive});
    });
  });
  if (!connection_) {
    const bool given_up = failure && failure->number() == network_errors::cancelled && has_to_end();
    if (!given_up) report(u"Connect", failure.value_or(system_error));
    return false;
  }
  events_.Connected();
  events_.FTPEvent(1, u"Connected to Server");
  return connected_ = true;
}

bool clsFTP::Disconnect() {
  if (busy_) {
    disconnect_later_ = true;
    interrupt();
    return false;
  }
  busy_ = true;  // saying goodbye lets the loop run
  if (connection_) connection_->close();
  connection_.reset();
  connected_ = false;
  network_.reset();
  busy_ = false;
  disconnect_later_ = false;
  events_.Disconnected();
  events_.FTPEvent(2, u"Disconnected from server");
  return false;
}

// --- single calls ---

bool clsFTP::act(std::u16string_view context, std::u16string_view operation,
                 const std::function<void()>& call, std::int32_t event_id, const std::u16string& event_text) {
  if (busy_) return refuse(context);
  std::optional<RuntimeError> failure;
  {
    const Busy busy(*this);
    failure = failure_of([&] { run_step(operation, call); });
  }
  if (failure)
    report(context, *failure);
  else
    events_.FTPEvent(event_id, event_text);
  return !failure;
}

std::u16string clsFTP::GetCurrDirectory() {
  std::u16string folder;
  act(
      u"GetCurrDirectory", u"FtpGetCurrentDirectory",
      [&] { folder = connection().current_directory().substr(0, 1023); }, 1001,
      u"Got current remote directory name");
  return folder.substr(0, folder.find(u'\0'));
}

bool clsFTP::SetCurrDirectory(std::u16string_view Path) {
  const auto call = [&] {
    RemoteConnection& server = connection();
    require_plain_name(Path);
    // No folder is named where the user's files are in the one that the server has given.
    if (!Path.empty()) server.set_current_directory(Path);
  };
  return act(u"SetCurrDirectory", u"FtpSetCurrentDirectory", call, 1002, u"set current remote directory");
}

bool clsFTP::act_on_name(std::u16string_view context, std::u16string_view operation, std::u16string_view name,
                         NameCall call, std::int32_t event_id, const std::u16string& event_text) {
  const auto checked = [&] {
    require_plain_name(name);
    (connection().*call)(name);
  };
  return act(context, operation, checked, event_id, event_text);
}

bool clsFTP::DeleteFile(std::u16string_view Path) {
  return act_on_name(u"DeleteFile", u"FtpDeleteFile", Path, &RemoteConnection::delete_file, 103,
                     u"remote file deleted");
}

bool clsFTP::CreateDirectory(std::u16string_view Path) {
  return act_on_name(u"CreateDirectory", u"FtpCreateDirectory", Path, &RemoteConnection::create_directory,
                     1003, u"remote directory created");
}

bool clsFTP::RemoveDirectory(std::u16string_view Path) {
  return act_on_name(u"RemoveDirectory", u"FtpRemoveDirectory", Path, &RemoteConnection::remove_directory,
                     1004, u"remote directory deleted");
}

bool clsFTP::RenameFile(std::u16string_view OldName, std::u16string_view NewName) {
  const auto call = [&] {
    require_plain_name(OldName);
    require_plain_name(NewName);
    connection().rename_file(OldName, NewName);
  };
  return act(u"RenameFile", u"FtpRenameFile", call, 104, u"renamed remote file");
}

// --- listings ---

const std::shared_ptr<clsDirectoryList>& clsFTP::Directory() {
  if (!directory_) directory_ = std::make_shared<clsDirectoryList>();
  return directory_;
}

bool clsFTP::GetDirectoryListing(std::u16string_view Path) {
  if (busy_) return refuse(u"FtpFindFirstFile");
  bool listed = false;
  {
    const Busy busy(*this);
    directory_ = std::make_shared<clsDirectoryList>();
    skipped_lines_ = 0;
    listed = read_listing(Path);
  }
  if (listed && directory_->count() > 0) events_.FTPEvent(1000, u"File Listing Completed");
  return listed;
}

bool clsFTP::read_listing(std::u16string_view path) {
  // The list that this call fills: the host may have asked for another one when it goes on.
  const std::shared_ptr<clsDirectoryList> list = directory_;
  std::u16string_view operation = u"FtpFindFirstFile";
  const auto failure = failure_of([&] {
    run_step(operation, [&] {
      require_plain_name(path);
      const auto [folder, pattern] = folder_and_pattern(path);
      Listing listing(connection(), folder);
      while (const auto entry = listing.next()) {
        if (!fits_pattern(entry->name, pattern, LetterCase::Ignored)) continue;
        if (list->count() > 0) {
          operation = u"InternetFindNextFile";
          run_step(operation, [] {});
        }
        list->add(entry->facts, entry->name);
      }
      skipped_lines_ = listing.skipped();
    });
  });
  if (!failure || failure->number() == network_errors::no_more_files) return true;
  report(operation, *failure);
  return false;
}

/// The first entry that fits; nothing if there is none.
std::optional<DirectoryFacts> clsFTP::find_first(std::u16string_view pattern) {
  const auto [folder, names] = folder_and_pattern(pattern);
  if (!has_wildcard(names))
    if (const auto size = connection().file_size(pattern)) return DirectoryFacts{.size = *size};
  Listing listing(connection(), folder);
  while (const auto entry = listing.next()) {
    if (!fits_pattern(entry->name, names, LetterCase::Counts)) continue;
    listing.read_out();
    return entry->facts;
  }
  return {};
}

std::int32_t clsFTP::GetRemoteFileSize(std::u16string_view RemoteFile) {
  if (busy_) {
    refuse(u"GetRemoteFileSize");
    return -2;
  }
  const Busy busy(*this);
  return ask_size(RemoteFile);
}

std::int32_t clsFTP::ask_size(std::u16string_view name) {
  std::u16string pattern(name);
  std::ranges::replace(pattern, u' ', u'?');
  std::int32_t size = 0;
  const auto failure = failure_of([&] {
    run_step(u"FtpFindFirstFile", [&] {
      require_plain_name(name);
      const auto found = find_first(pattern);
      if (!found) throw nothing_found();
      size = static_cast<std::int32_t>(static_cast<std::uint32_t>(found->size));
    });
  });
  if (!failure) {
    events_.FTPEvent(100, u"Got Remote File Size");
    return size;
  }
  const bool missing = failure->number() == network_errors::no_more_files;
  if (failure->number() != network_errors::cancelled || !has_to_end())
    report(missing ? u"GetRemoteFileSize - file not found" : u"GetRemoteFileSize", *failure);
  return missing ? -1 : -2;
}

// --- between two blocks ---

void clsFTP::rest() {
  if (BlockSize <= largest_block_with_rest) return services::Wait(around_.loop, rest_milliseconds);
  const std::int64_t now = around_.loop.now();
  if (now - rested_ < rest_milliseconds || !around_.loop.non_modal_allowed()) return;
  around_.loop.pump(0);
  rested_ = around_.loop.now();
}

}  // namespace tvx::transfer
