#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <future>
#include <vector>

#include "tvx/base/failure_of.h"
#include "tvx/base/fault.h"
#include "tvx/base/open_file.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"
#include "tvx/platform/message_loop.h"
#include "tvx/transfer/client_busy.h"
#include "tvx/transfer/name_pattern.h"
#include "tvx/transfer/wait_dialog.h"

/// Files on their way: the block loops of both directions.
namespace tvx::transfer {

namespace network_errors = platform::network_errors;
using platform::RemoteAccess;

namespace {

constexpr off_t large_file = 16 << 20;

std::u16string without_outer_blanks(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return {};
  return std::u16string(text.substr(first, text.find_last_not_of(u' ') - first + 1));
}

/// A failure of the file system, with the number that hosts know from theirs.
RuntimeError local_failure(int error) {
  int number = 31;  // "A device attached to the system is not functioning"
  switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG: number = network_errors::disk_full; break;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR: number = network_errors::access_denied; break;
    case ENOENT:
    case ENOTDIR: number = network_errors::path_not_found; break;
    default: break;
  }
  return {number, from_utf8(std::strerror(error))};
}

/// Does what a script has ordered in place of a local operation.
void local_step(std::u16string_view operation) {
  if (const auto result = fault_point(operation); result && *result == 0) throw local_failure(EIO);
}

std::int32_t low_32_bits(std::int64_t number) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
}

}  // namespace

/// What both directions have in common: the dialog, the counter, and when to stop.
class clsFTP::Run {
 public:
  Run(clsFTP& client, std::int64_t size) : client_(client), size_(size) {
    client_.rested_ = client_.around_.loop.now();
  }
  ~Run() {
    close_remote();
    hide();
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

 protected:
  std::size_t block_size() const { return static_cast<std::size_t>(std::max(client_.BlockSize, 1)); }
  std::int64_t full_blocks() const { return size_ / static_cast<std::int64_t>(block_size()); }
  std::size_t rest_size() const {
    return static_cast<std::size_t>(size_ % static_cast<std::int64_t>(block_size()));
  }

  void show(std::u16string_view message, frmWait::Action action, std::u16string_view name) {
    if (!client_.ShowDialog) return;
    dialog_ = std::make_unique<frmWait>();
    dialog_->on_cancel = [this] {
      if (client_.connection_) client_.connection_->interrupt();
    };
    dialog_->set_lblMessage(std::u16string(message) + std::u16string(name));
    dialog_->show_action(action);
    dialog_->show_file(name);
    dialog_->show_bytes(0, size_, client_.around_.loop.now());
    if (client_.around_.show_wait) client_.around_.show_wait(dialog_->form());
  }

  bool dialog_cancelled() {
    if (!dialog_ || !dialog_->bCancel) return false;
    client_.cancelled_ = true;
    return true;
  }

  /// After each block. False: it is to stop.
  bool go_on(std::int64_t counter) {
    client_.rest();
    show_counter(counter);
    if (client_.has_to_end()) return false;
    client_.events_.TransferProgress(low_32_bits(counter), low_32_bits(size_));
    return true;
  }

  void show_counter(std::int64_t counter) {
    if (!dialog_) return;
    dialog_->set_lblMessage(to_text(counter) + u" bytes of " + to_text(size_));
    dialog_->show_bytes(counter, size_, client_.around_.loop.now());
  }

  void close_remote() {
    if (client_.connection_) client_.connection_->close_file();
  }

  bool tell_end(std::int32_t event_id, const std::u16string& event_text) {
    close_remote();
    client_.events_.GetPutSuccess();
    client_.events_.FTPEvent(event_id, event_text);
    return true;
  }

  void hide() {
    if (dialog_) dialog_->form().Hide();
    dialog_.reset();
  }

  /// Tells of a failed step. One that was given up on request has nothing to tell.
  bool failed(std::u16string_view context, const std::optional<RuntimeError>& failure) {
    if (!failure) return false;
    if (failure->number() == network_errors::cancelled && (dialog_cancelled() || client_.has_to_end()))
      return true;
    client_.report(context, *failure);
    return true;
  }

  clsFTP& client_;
  const std::int64_t size_;
  std::unique_ptr<frmWait> dialog_;
};

// --- download ---

class clsFTP::Download final : private Run {
 public:
  Download(clsFTP& client, std::int64_t size, const std::u16string& local, const std::u16string& remote)
      : Run(client, size), path_(file_system_path(local)), remote_(remote) {}

  bool run() {
    show(u"Retreiving - ", frmWait::Action::Downloading, remote_);
    if (failed(u"GetFileProgress", failure_of([&] { open_local(); }))) return false;
    std::int64_t counter = 1;  // one above the bytes written, until the end
    for (std::int64_t block = 0; block < full_blocks(); ++block) {
      if (dialog_cancelled()) return false;
      if (!move_block(block_size(), u"InternetReadFile - GetFileProgress")) return false;
      counter += static_cast<std::int64_t>(block_size());
      if (!go_on(counter)) return false;
    }
    if (rest_size() > 0 && !move_block(rest_size(), u"InternetReadFile - GetFileProgress ( sub2 )"))
      return false;
    if (!read_on()) return false;
    if (failed(u"GetFileProgress", failure_of([&] { close_local(); }))) return false;
    client_.events_.TransferProgress(low_32_bits(size_), low_32_bits(size_));
    show_counter(size_);
    hide();
    return tell_end(101, u"File downloaded");
  }

 private:
  void open_local() {
    attempt([&] {
      local_step(u"DeleteLocalFile");
      delete_old();
    });
    local_step(u"OpenLocalFile");
    file_ = std::make_unique<OpenFile>(::open(path_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));
    if (!file_->is_open()) throw local_failure(errno);
  }
  /// The system takes its time to free a large file, once nobody has it open any more; the loop runs
  /// meanwhile.
  void delete_old() {
    struct stat status {};
    const bool large = ::stat(path_.c_str(), &status) == 0 && status.st_size >= large_file;
    const int old = large ? ::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC) : -1;
    ::unlink(path_.c_str());
    if (old >= 0) freeing_ = std::async(std::launch::async, [old] { ::close(old); });
  }
  void close_local() {
    local_step(u"CloseLocalFile");
    if (!file_->close()) throw local_failure(errno);
  }

  std::size_t read(std::size_t bytes) {
    block_.resize(bytes);
    if (const auto result = fault_point(u"InternetReadFile"); result && *result == 0)
      throw RuntimeError(0, u"");
    return client_.connection().read(block_);
  }
  void write(std::size_t bytes) {
    local_step(u"WriteLocalFile");
    if (!file_->write({block_.data(), bytes})) throw local_failure(errno);
  }

  bool move_block(std::size_t bytes, std::u16string_view context) {
    std::size_t got = 0;
    const auto failure = failure_of([&] {
      got = read(bytes);
      // Lines get shorter on their way as text; of other files all must come.
      if (got < bytes && client_.TransferType != platform::RemoteTransferType::ASCII)
        throw RuntimeError(network_errors::end_of_file, u"The file has ended before its time");
    });
    if (got > 0 && failed(u"GetFileProgress", failure_of([&] { write(got); }))) return false;
    return !failed(context, failure);
  }

  /// What has come to the file since its size was asked for, or has no room in 32 bits of a size. What fails
  /// here only ends the reading.
  bool read_on() {
    constexpr std::size_t step = 65536;
    for (;;) {
      std::size_t got = 0;
      if (!attempt([&] { got = read(step); }) || got == 0)
        return !dialog_cancelled() && !client_.has_to_end();
      if (failed(u"GetFileProgress", failure_of([&] { write(got); }))) return false;
      client_.rest();
      if (dialog_cancelled() || client_.has_to_end()) return false;
    }
  }

  const std::string path_;
  const std::u16string& remote_;
  std::unique_ptr<OpenFile> file_;
  std::future<void> freeing_;
  std::vector<char> block_;
};

bool clsFTP::fail_to_open(std::u16string_view context, const RuntimeError& failure) {
  if (failure.number() != network_errors::cancelled || !has_to_end()) report(context, failure);
  if (connection_) connection_->close_file();
  return false;
}

bool clsFTP::GetFileProgress(std::u16string_view LocalFile, std::u16string_view RemoteFile) {
  if (busy_) return refuse(u"GetFileProgress");
  const Busy busy(*this);
  const std::u16string local = without_outer_blanks(LocalFile), remote = without_outer_blanks(RemoteFile);
  cancelled_ = false;
  if (local.empty() || remote.empty()) return false;
  const std::int32_t size = ask_size(remote);
  if (size < 1) return false;
  const auto failure = failure_of([&] {
    require_plain_name(local);
    if (const auto result = fault_point(u"FtpOpenFile"); result && *result == 0) throw RuntimeError(0, u"");
    connection().open_file(remote, RemoteAccess::Read, TransferType);
  });
  if (failure) return fail_to_open(u"FtpOpenFile - GetFileProgress", *failure);
  return Download(*this, size, local, remote).run();
}

// --- upload ---

class clsFTP::Upload final : private Run {
 public:
  Upload(clsFTP& client, OpenFile& file, std::int64_t size, const std::u16string& remote)
      : Run(client, size), file_(file), remote_(remote) {}

  bool run() {
    show(u"Uploading - ", frmWait::Action::Uploading, remote_);
    std::int64_t counter = 0;
    for (std::int64_t block = 0; block < full_blocks(); ++block) {
      if (dialog_cancelled()) return false;
      if (!move_block(block_size(), u"InternetWriteFile - PutFileProgress", true)) return false;
      counter += static_cast<std::int64_t>(block_size());
      if (!go_on(counter)) return false;
    }
    if (rest_size() > 0 && !move_block(rest_size(), u"InternetWriteFile - PutFileProgress - (sub2)", false))
      return false;
    if (!finish()) return false;
    file_.close();
    client_.events_.TransferProgress(low_32_bits(size_), low_32_bits(size_));
    show_counter(size_);
    hide();
    return tell_end(102, u"File uploaded");
  }

 private:
  /// A file that has become shorter since it was opened would go on with bytes that aren't its own.
  void read(std::size_t bytes) {
    local_step(u"ReadLocalFile");
    block_.resize(bytes);
    for (std::size_t got = 0; got < bytes;) {
      const ssize_t now = ::read(file_.descriptor(), block_.data() + got, bytes - got);
      if (now < 0 && errno == EINTR) continue;
      if (now < 0) throw local_failure(errno);
      if (now == 0) throw RuntimeError(network_errors::end_of_file, u"The local file has become shorter");
      got += static_cast<std::size_t>(now);
    }
  }

  bool move_block(std::size_t bytes, std::u16string_view context, bool tells_cancelled) {
    if (failed(u"PutFileProgress", failure_of([&] { read(bytes); }))) return false;
    return sent(context, tells_cancelled, [&] {
      if (const auto result = fault_point(u"InternetWriteFile"); result && *result == 0)
        throw RuntimeError(0, u"");
      client_.connection().write({block_.data(), bytes});
    });
  }

  /// The server may still refuse the file as a whole: its disk is full, say.
  bool finish() {
    return sent(u"InternetWriteFile - PutFileProgress", true, [&] { client_.connection().finish(); });
  }

  template <class Step>
  bool sent(std::u16string_view context, bool tells_cancelled, Step&& step) {
    const auto failure = failure_of(step);
    if (!failure) return true;
    const bool on_request = failure->number() == network_errors::cancelled;
    failed(context, failure);
    if (tells_cancelled && !on_request) client_.events_.Cancelled();
    return false;
  }

  OpenFile& file_;
  const std::u16string& remote_;
  std::vector<char> block_;
};

namespace {

enum class LocalKind : std::uint8_t { File, Folder };

/// Throws RuntimeError(53) for what isn't there.
LocalKind kind_of(const std::string& path) {
  if (const auto result = fault_point(u"GetAttr"); result && *result == 0)
    throw RuntimeError(errors::file_not_found, u"File not found");
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) throw RuntimeError(errors::file_not_found, u"File not found");
  return S_ISDIR(status.st_mode) ? LocalKind::Folder : LocalKind::File;
}

/// Only what has a size can be sent: a pipe would wait for its writer.
std::int64_t size_of(const OpenFile& file) {
  local_step(u"OpenLocalFile");
  struct stat status {};
  if (!file.is_open() || ::fstat(file.descriptor(), &status) != 0) throw local_failure(errno);
  if (!S_ISREG(status.st_mode))
    throw RuntimeError(network_errors::access_denied, u"Only files can be uploaded");
  return status.st_size;
}

}  // namespace

bool clsFTP::PutFileProgress(std::u16string_view RemoteFile, std::u16string_view LocalFile) {
  if (busy_) return refuse(u"PutFileProgress");
  const Busy busy(*this);
  const std::u16string local = without_outer_blanks(LocalFile), remote = without_outer_blanks(RemoteFile);
  cancelled_ = false;
  const std::string path = file_system_path(local);
  if (!local.empty() && kind_of(path) == LocalKind::Folder) {
    events_.FTPError(20000, local + u" appears to be a folder. Folders cannot be uploaded");
    return false;
  }
  if (local.empty() || remote.empty()) return false;
  // Opened before the server's file, which is emptied by its opening.
  OpenFile file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  std::int64_t size = 0;
  if (const auto failure = failure_of([&] { size = size_of(file); })) {
    report(u"PutFileProgress", *failure);
    return false;
  }
  const auto failure = failure_of([&] {
    require_plain_name(remote);
    if (const auto result = fault_point(u"FtpOpenFile"); result && *result == 0) throw RuntimeError(0, u"");
    connection().open_file(remote, RemoteAccess::Write, TransferType);
  });
  if (failure) return fail_to_open(u"FtpOpenFile : PutFileProgress", *failure);
  return Upload(*this, file, size, remote).run();
}

}  // namespace tvx::transfer
