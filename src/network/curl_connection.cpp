#include "tvx/network/curl_connection.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/base/failure_of.h"
#include "tvx/base/strings.h"
#include "tvx/network/curl_failure.h"
#include "tvx/network/ssh_keys.h"

namespace tvx::network {

namespace network_errors = platform::network_errors;
using platform::ListingForm;
using platform::RemoteAccess;
using platform::RemoteTransferType;

namespace {

/// How long a server is waited for that is told of an end, where the user waits for nothing any more.
constexpr std::int64_t goodbye_milliseconds = 500;

bool has_break(std::u16string_view text) {
  return text.find_first_of(std::u16string_view(u"\r\n\0", 3)) != std::u16string_view::npos;
}

void require_no_break(std::u16string_view text, std::u16string_view what) {
  if (has_break(text))
    throw RuntimeError(network_errors::invalid_parameter,
                       std::u16string(what) + u" has a line break or a zero character in it and is refused");
}

/// As the library reads it in its commands for SFTP.
std::string in_quotes(std::string_view path) {
  std::string text = "\"";
  for (const char c : path) {
    if (c == '"' || c == '\\') text += '\\';
    text += c;
  }
  return text + "\"";
}

/// RFC 959, appendix II: 257 "a ""quoted"" name" and a remark.
std::optional<std::u16string> folder_in(std::string_view reply) {
  const std::size_t first = reply.find('"');
  if (!reply.starts_with("257") || first == std::string_view::npos) return {};
  std::string folder;
  for (std::size_t i = first + 1; i < reply.size(); ++i) {
    if (reply[i] == '"' && (i + 1 == reply.size() || reply[i + 1] != '"')) return from_utf8(folder);
    if (reply[i] == '"') ++i;
    folder += reply[i];
  }
  return {};
}

}  // namespace

CurlConnection::CurlConnection(std::unique_ptr<CurlDriver> driver, const CurlOptions& options,
                               platform::NetworkAccess access, platform::RemoteAccount account)
    : driver_(std::move(driver)),
      options_(options),
      access_(std::move(access)),
      account_(std::move(account)),
      address_(RemoteAddress::parse(account_.host, account_.port)),
      user_(to_utf8(account_.user)),
      password_(to_utf8(account_.password)) {
  require_no_break(account_.user, u"The user's name");
  require_no_break(account_.password, u"The password");
}

void CurlConnection::guarded(const std::function<void()>& call) const {
  if (const auto failure = failure_of(call))
    throw RuntimeError(failure->number(), without_password(failure->text(), account_.password));
}

// --- what every exchange needs ---

void CurlConnection::prepare(std::u16string_view path) {
  CurlDriver& driver = *driver_;
  driver.reset();
  driver.set(CURLOPT_PROTOCOLS_STR, "ftp,ftps,sftp");
  driver.set(CURLOPT_URL, address_.url_of(path).c_str());
  driver.set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(options_.silence_milliseconds));
  if (!user_.empty()) driver.set(CURLOPT_USERNAME, user_.c_str());
  if (!password_.empty()) driver.set(CURLOPT_PASSWORD, password_.c_str());
  driver.set(CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_NOCWD));
  driver.set(CURLOPT_IGNORE_CONTENT_LENGTH, 1L);
  // A server that names another one is not followed there.
  driver.set(CURLOPT_FTP_SKIP_PASV_IP, 1L);
  if (!account_.passive) driver.set(CURLOPT_FTPPORT, "-");
  driver.set(CURLOPT_ACCEPTTIMEOUT_MS, static_cast<long>(options_.silence_milliseconds));
  prepare_security();
  prepare_proxy();
}

void CurlConnection::prepare_security() {
  CurlDriver& driver = *driver_;
  driver.set(CURLOPT_SSL_VERIFYPEER, 1L);
  driver.set(CURLOPT_SSL_VERIFYHOST, 2L);
  if (address_.protocol == Protocol::FtpExplicitTls || address_.protocol == Protocol::FtpImplicitTls) {
    driver.set(CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    if (takes_up_sessions_) driver.set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_MAX_TLSv1_2));
  }
  if (!options_.certificate_file.empty()) driver.set(CURLOPT_CAINFO, options_.certificate_file.c_str());
  if (is_sftp()) prepare_keys();
}

void CurlConnection::prepare_keys() {
  CurlDriver& driver = *driver_;
  const std::string known =
      options_.known_hosts_file.empty() ? home_file(".ssh/known_hosts") : options_.known_hosts_file;
  // Without a file nothing would be checked: one that can't be there knows nobody.
  driver.set(CURLOPT_SSH_KNOWNHOSTS, known.empty() ? "/nonexistent/known_hosts" : known.c_str());
  if (!password_.empty()) {
    driver.set(CURLOPT_SSH_AUTH_TYPES, static_cast<long>(CURLSSH_AUTH_PASSWORD | CURLSSH_AUTH_KEYBOARD));
    return;
  }
  driver.set(CURLOPT_SSH_AUTH_TYPES, static_cast<long>(CURLSSH_AUTH_AGENT | CURLSSH_AUTH_PUBLICKEY));
  if (const std::string key = key_file(); !key.empty()) driver.set(CURLOPT_SSH_PRIVATE_KEYFILE, key.c_str());
}

std::string CurlConnection::key_file() const {
  return options_.private_key_file.empty() ? usual_key() : options_.private_key_file;
}

/// The environment's proxies are not the host's.
void CurlConnection::prepare_proxy() {
  CurlDriver& driver = *driver_;
  driver.set(CURLOPT_PROXY, access_.through_proxy ? to_utf8(access_.proxy).c_str() : "");
  if (access_.through_proxy) driver.set(CURLOPT_HTTPPROXYTUNNEL, 1L);
  std::string bypass = to_utf8(access_.bypass);
  std::ranges::replace_if(
      bypass, [](char c) { return c == ';' || c == ' '; }, ',');
  driver.set(CURLOPT_NOPROXY, bypass.c_str());
}

// --- the connection ---

void CurlConnection::connect() {
  const auto log_in = [&] {
    guarded([&] {
      prepare(u"/");
      driver_->set(CURLOPT_NOBODY, 1L);
      driver_->run();
    });
  };
  if (const auto failure = failure_of(log_in)) {
    if (driver_->result() != CURLE_SSL_CONNECT_ERROR || !std::exchange(takes_up_sessions_, false))
      throw with_reason(*failure);
    log_in();
  }
  char* entry = nullptr;
  curl_easy_getinfo(driver_->handle(), CURLINFO_FTP_ENTRY_PATH, &entry);
  if (entry && *entry == '/') folder_ = joined_path(u"/", from_utf8(entry));
}

/// Where a user's key is refused neither the server nor the library says why.
RuntimeError CurlConnection::with_reason(const RuntimeError& failure) const {
  const bool by_key = is_sftp() && password_.empty();
  if (!by_key || failure.number() != network_errors::login_failure) return failure;
  const std::u16string reason = reason_for_refusal(key_file());
  return reason.empty() ? failure : RuntimeError(failure.number(), failure.text() + u". " + reason);
}

void CurlConnection::close() {
  close_file();
  if (is_sftp()) return;
  driver_->set_silence(goodbye_milliseconds);
  const std::array<std::string, 1> quit = {"*QUIT"};
  attempt([&] {
    prepare(u"/");
    driver_->set(CURLOPT_NOBODY, 1L);
    driver_->set_commands(quit);
    driver_->set(CURLOPT_FORBID_REUSE, 1L);
    driver_->run();
  });
  driver_->stop();
}

void CurlConnection::run_commands(std::span<const std::string> commands) {
  guarded([&] {
    prepare(u"/");
    driver_->set(CURLOPT_NOBODY, 1L);
    driver_->set_commands(commands);
    driver_->run();
  });
}

void CurlConnection::run_command(std::string_view ftp, std::string_view sftp, std::u16string_view path) {
  const std::string bytes = to_utf8(path);
  const std::array<std::string, 1> command = {is_sftp() ? std::string(sftp) + " " + in_quotes(bytes)
                                                        : std::string(ftp) + " " + bytes};
  run_commands(command);
}

void CurlConnection::set_current_directory(std::u16string_view folder) {
  const std::u16string path = path_of(folder);
  if (is_sftp()) {
    // There is no such command; a folder that can be listed is one.
    guarded([&] {
      prepare(path == u"/" ? path : path + u"/");
      driver_->set(CURLOPT_DIRLISTONLY, 1L);
      driver_->start();
      std::array<char, 16384> ignored;
      while (driver_->read(ignored) > 0) {
      }
    });
    driver_->stop();
    folder_ = path;
    return;
  }
  const std::array<std::string, 2> commands = {"CWD " + to_utf8(path), "*PWD"};
  run_commands(commands);
  folder_ = folder_in(driver_->reply()).value_or(path);
}

void CurlConnection::delete_file(std::u16string_view name) { run_command("DELE", "rm", path_of(name)); }
void CurlConnection::create_directory(std::u16string_view folder) {
  run_command("MKD", "mkdir", path_of(folder));
}
void CurlConnection::remove_directory(std::u16string_view folder) {
  run_command("RMD", "rmdir", path_of(folder));
}

void CurlConnection::rename_file(std::u16string_view old_name, std::u16string_view new_name) {
  const std::string from = to_utf8(path_of(old_name)), to = to_utf8(path_of(new_name));
  std::vector<std::string> commands = {"RNFR " + from, "RNTO " + to};
  if (is_sftp()) commands = {"rename " + in_quotes(from) + " " + in_quotes(to)};
  run_commands(commands);
}

// --- files ---

std::optional<std::uint64_t> CurlConnection::file_size(std::u16string_view name) {
  if (is_sftp()) return {};  // the listing tells
  std::optional<std::uint64_t> size;
  const auto failure = failure_of([&] {
    guarded([&] {
      prepare(path_of(name));
      driver_->set(CURLOPT_NOBODY, 1L);
      driver_->set(CURLOPT_IGNORE_CONTENT_LENGTH, 0L);
      driver_->run();
      curl_off_t told = -1;
      curl_easy_getinfo(driver_->handle(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &told);
      if (told >= 0) size = static_cast<std::uint64_t>(told);
    });
  });
  driver_->stop();
  const bool said_no = driver_->reply_code() >= 500;
  if (failure && !said_no) throw *failure;
  return size;
}

void CurlConnection::open_file(std::u16string_view name, RemoteAccess access, RemoteTransferType type) {
  writing_ = access == RemoteAccess::Write;
  guarded([&] {
    prepare(path_of(name));
    if (type == RemoteTransferType::ASCII) driver_->set(CURLOPT_TRANSFERTEXT, 1L);
    if (writing_) driver_->set(CURLOPT_UPLOAD, 1L);
    if (!writing_) expect_file();
    driver_->start();
    // 125 and 150: the server's file is open. Where a protocol has no replies, bytes say so.
    driver_->drive([this] {
      const int code = driver_->reply_code();
      if (writing_) return driver_->wants_bytes();
      return code == 125 || code == 150 || driver_->has_bytes();
    });
    driver_->check();
  });
}

ListingForm CurlConnection::open_listing(std::u16string_view folder) {
  const std::u16string path = path_of(folder);
  writing_ = false;
  if (is_sftp() || !has_facts_) {
    guarded([&] { start_listing(path, ListingForm::Lines); });
    return ListingForm::Lines;
  }
  const auto failure = failure_of([&] { guarded([&] { start_listing(path, ListingForm::Facts); }); });
  if (!failure) return ListingForm::Facts;
  // 500, 502, 504: a server without this command. The others know it, and mean the folder.
  const int code = driver_->reply_code();
  if (code != 500 && code != 502 && code != 504) throw *failure;
  has_facts_ = false;
  guarded([&] { start_listing(path, ListingForm::Lines); });
  return ListingForm::Lines;
}

void CurlConnection::start_listing(const std::u16string& path, ListingForm form) {
  prepare(path == u"/" ? path : path + u"/");
  if (form == ListingForm::Facts) driver_->set(CURLOPT_CUSTOMREQUEST, "MLSD");
  expect_file();
  driver_->start();
  driver_->drive([this] {
    const int code = driver_->reply_code();
    return code == 125 || code == 150 || driver_->has_bytes();
  });
  driver_->check();
}

void CurlConnection::expect_file() {
  driver_->expect_last_word();
  if (address_.protocol == Protocol::Ftp) driver_->expect_open_file();
}

std::size_t CurlConnection::read(std::span<char> block) {
  std::size_t got = 0;
  guarded([&] { got = driver_->read(block); });
  return got;
}

void CurlConnection::write(std::string_view block) {
  guarded([&] { driver_->write(block); });
}

void CurlConnection::finish() {
  guarded([&] { driver_->finish_writing(); });
}

/// A file that is left in the middle of its writing is ended in good order where the server plays along: the
/// connection stays then, and so does what has been written.
void CurlConnection::close_file() {
  if (writing_ && driver_->running()) {
    driver_->set_silence(goodbye_milliseconds);
    attempt([&] { driver_->finish_writing(); });
    driver_->set_silence(0);
  }
  writing_ = false;
  driver_->stop();
}

}  // namespace tvx::network
