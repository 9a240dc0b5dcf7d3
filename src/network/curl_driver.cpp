#include "tvx/network/curl_driver.h"

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <ctime>
#include <limits>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/network/curl_failure.h"
#include "tvx/platform/message_loop.h"

namespace tvx::network {
namespace {

namespace network_errors = platform::network_errors;

/// The loop is let run so often; no longer does it stand still for a server.
constexpr int step_milliseconds = 4;
/// Where the reader is slower than the server, so much waits here.
constexpr std::size_t most_waiting = std::size_t{1} << 20;
constexpr long buffer_size = 262'144;
/// A server that has got all of a file may have much to do before it says so.
constexpr int silences_at_the_end = 4;

std::int64_t milliseconds_now() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// A server that has gone must not end the process with a signal: the library writes to sockets by ways that
/// raise it.
class WithoutPipeSignal {
 public:
  WithoutPipeSignal() {
    sigset_t pending;
    sigpending(&pending);
    was_pending_ = sigismember(&pending, SIGPIPE) == 1;
    sigemptyset(&pipe_);
    sigaddset(&pipe_, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
  }
  ~WithoutPipeSignal() {
    const timespec at_once{};
    if (!was_pending_) sigtimedwait(&pipe_, nullptr, &at_once);
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  WithoutPipeSignal(const WithoutPipeSignal&) = delete;
  WithoutPipeSignal& operator=(const WithoutPipeSignal&) = delete;

 private:
  sigset_t pipe_, before_;
  bool was_pending_;
};

}  // namespace

void prepare_library() {
  static const CURLcode done = curl_global_init(CURL_GLOBAL_DEFAULT);
  (void)done;
}

CurlDriver::CurlDriver(platform::MessageLoop& loop, const CurlOptions& options)
    : loop_(loop), options_(options), easy_(curl_easy_init()), multi_(curl_multi_init()) {
  if (!easy_ || !multi_)
    throw RuntimeError(network_errors::invalid_handle, u"The network library doesn't start");
  curl_multi_setopt(multi_.get(), CURLMOPT_MAXCONNECTS, 1L);
}

CurlDriver::~CurlDriver() {
  const WithoutPipeSignal guard;
  stop();
  abandon();
  easy_.reset();
  multi_.reset();
}

void CurlDriver::reset() {
  stop();
  curl_easy_reset(easy_.get());
  commands_.reset();
  error_[0] = '\0';
  result_.reset();
  incoming_.clear();
  taken_ = 0;
  target_ = {};
  source_ = {};
  source_ended_ = wants_bytes_ = ends_with_a_word_ = open_to_read_ = false;
  reply_.clear();
  unfinished_reply_.clear();
  reply_code_ = 0;
  set(CURLOPT_ERRORBUFFER, error_);
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_NOPROGRESS, 0L);
  set(CURLOPT_XFERINFOFUNCTION, &CurlDriver::tell_progress);
  set(CURLOPT_XFERINFODATA, this);
  set(CURLOPT_BUFFERSIZE, buffer_size);
  set(CURLOPT_UPLOAD_BUFFERSIZE, buffer_size);
  set(CURLOPT_WRITEFUNCTION, &CurlDriver::take_bytes);
  set(CURLOPT_WRITEDATA, this);
  set(CURLOPT_READFUNCTION, &CurlDriver::give_bytes);
  set(CURLOPT_READDATA, this);
  set(CURLOPT_HEADERFUNCTION, &CurlDriver::take_reply);
  set(CURLOPT_HEADERDATA, this);
  sockets_.watch(easy_.get());
}

void CurlDriver::set_commands(std::span<const std::string> commands) {
  curl_slist* list = nullptr;
  for (const std::string& command : commands) list = curl_slist_append(list, command.c_str());
  commands_.reset(list);
  set(CURLOPT_QUOTE, list);
}

void CurlDriver::start() {
  started_ = true;
  paused_ = false;
  curl_multi_add_handle(multi_.get(), easy_.get());
}

void CurlDriver::stop() {
  if (!std::exchange(started_, false)) return;
  const WithoutPipeSignal guard;
  curl_multi_remove_handle(multi_.get(), easy_.get());
}

void CurlDriver::interrupt() { interrupted_ = true; }

/// The library says goodbye to a server when it drops a connection, and stands still for the answer. One that
/// is closed already answers at once.
void CurlDriver::abandon() { sockets_.shut_down(); }

int CurlDriver::tell_progress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  const CurlDriver& driver = *static_cast<CurlDriver*>(self);
  return driver.given_up_ ? 1 : 0;
}

std::int64_t CurlDriver::most_silence() const {
  return silence_ > 0 ? silence_ : options_.silence_milliseconds;
}

/// A thread costs time at each of its steps, the more the busier the machine is. Where bytes of the file have
/// come, taking all but the last of them can't meet the end.
void CurlDriver::perform() {
  if (!ends_with_a_word_) return do_step();
  const std::size_t received = open_to_read_ ? sockets_.bytes_of_file() : 0;
  if (received > 1) {
    allowed_ = received - 1;
    do_step();
    allowed_ = std::numeric_limits<std::size_t>::max();
    return;
  }
  const std::int64_t start = milliseconds_now();
  std::int64_t elsewhere = 0;  // spent in tasks of the loop, for which no server can be blamed
  thread_.start([this] { do_step(); });
  while (!thread_.ended_within(std::chrono::milliseconds(step_milliseconds))) {
    const std::int64_t before = milliseconds_now();
    if (loop_.non_modal_allowed()) loop_.pump(0);
    pumped_ = milliseconds_now();
    elsewhere += pumped_ - before;
    given_up_ = interrupted_ || pumped_ - start - elsewhere > most_silence();
  }
}

void CurlDriver::do_step() {
  const WithoutPipeSignal guard;
  int running = 0, left = 0;
  curl_multi_perform(multi_.get(), &running);
  while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left))
    if (message->msg == CURLMSG_DONE) result_ = message->data.result;
}

void CurlDriver::let_loop_run() {
  if (milliseconds_now() - pumped_ < step_milliseconds) return;
  if (loop_.non_modal_allowed()) loop_.pump(0);
  pumped_ = milliseconds_now();
}

/// Time counts as silent only while somebody listens: a task of the loop may take as long as it likes.
void CurlDriver::wait() {
  curl_off_t sent = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_SIZE_UPLOAD_T, &sent);
  const std::uint64_t progress = progress_ + static_cast<std::uint64_t>(sent);
  if (progress != seen_progress_) {
    seen_progress_ = progress;
    silent_ = 0;
  }
  const std::int64_t before = milliseconds_now();
  curl_multi_poll(multi_.get(), nullptr, 0, step_milliseconds, nullptr);
  silent_ += milliseconds_now() - before;
  if (silent_ <= most_silence()) return;
  abandon();
  throw silence_failure();
}

RuntimeError CurlDriver::silence_failure() const {
  return {network_errors::timeout,
          u"The server has said nothing for " + to_text((most_silence() + 999) / 1000) + u" seconds"};
}

void CurlDriver::drive(const std::function<bool()>& enough) {
  interrupted_ = given_up_ = false;
  silent_ = 0;
  while (!result_) {
    perform();
    if (given_up_) abandon();
    if (given_up_ && interrupted_)
      throw RuntimeError(network_errors::cancelled, u"The transfer has been cancelled");
    if (given_up_) throw silence_failure();
    if (result_ || enough()) return;
    let_loop_run();
    if (interrupted_) throw RuntimeError(network_errors::cancelled, u"The transfer has been cancelled");
    if (paused_)
      go_on_after_pause();
    else
      wait();
  }
}

void CurlDriver::run() {
  start();
  drive([] { return false; });
  stop();
  check();
}

void CurlDriver::check() const {
  if (result_ && *result_ != CURLE_OK) throw failure_of_exchange(*this, *result_);
}

std::string CurlDriver::library_text(CURLcode code) const {
  return error_[0] != '\0' ? error_ : curl_easy_strerror(code);
}

// --- bytes ---

std::size_t CurlDriver::take_bytes(char* bytes, std::size_t, std::size_t count, void* self) {
  CurlDriver& driver = *static_cast<CurlDriver*>(self);
  if (driver.waiting() >= most_waiting || count > driver.allowed_) {
    driver.paused_ = true;
    return CURL_WRITEFUNC_PAUSE;
  }
  driver.allowed_ -= count;
  ++driver.progress_;
  std::size_t direct = 0;
  if (driver.waiting() == 0 && driver.filled_ < driver.target_.size()) {
    direct = std::min(count, driver.target_.size() - driver.filled_);
    std::memcpy(driver.target_.data() + driver.filled_, bytes, direct);
    driver.filled_ += direct;
  }
  driver.incoming_.append(bytes + direct, count - direct);
  return count;
}

std::size_t CurlDriver::give_bytes(char* bytes, std::size_t size, std::size_t count, void* self) {
  CurlDriver& driver = *static_cast<CurlDriver*>(self);
  driver.wants_bytes_ = true;
  const std::size_t given = std::min(size * count, driver.source_.size());
  if (given == 0 && !driver.source_ended_) {
    driver.paused_ = true;
    return CURL_READFUNC_PAUSE;
  }
  ++driver.progress_;
  driver.source_.copy(bytes, given);
  driver.source_.remove_prefix(given);
  return given;
}

void CurlDriver::go_on_after_pause() {
  if (!std::exchange(paused_, false) || !running()) return;
  const WithoutPipeSignal guard;
  curl_easy_pause(easy_.get(), CURLPAUSE_CONT);
}

std::size_t CurlDriver::read(std::span<char> block) {
  filled_ = std::min(block.size(), waiting());
  std::memcpy(block.data(), incoming_.data() + taken_, filled_);
  taken_ += filled_;
  if (waiting() == 0) {
    incoming_.clear();
    taken_ = 0;
  }
  target_ = block;
  const struct Done {
    CurlDriver& driver;
    ~Done() { driver.target_ = {}; }
  } done{*this};
  while (filled_ < block.size() && !result_) {
    go_on_after_pause();
    drive([&] { return filled_ == block.size(); });
  }
  if (filled_ < block.size()) check();
  return filled_;
}

void CurlDriver::write(std::string_view block) {
  source_ = block;
  const struct Done {
    CurlDriver& driver;
    ~Done() { driver.source_ = {}; }
  } done{*this};
  go_on_after_pause();
  drive([this] { return source_.empty(); });
  check();
  // It ended well before all was taken: nobody is there to take the rest.
  if (!source_.empty() || result_)
    throw RuntimeError(network_errors::connection_lost, u"The server has closed the file");
}

void CurlDriver::finish_writing() {
  source_ended_ = ends_with_a_word_ = true;
  go_on_after_pause();
  const std::int64_t before = silence_;
  if (silence_ == 0) silence_ = options_.silence_milliseconds * silences_at_the_end;
  const struct Done {
    std::int64_t &silence, before;
    ~Done() { silence = before; }
  } done{silence_, before};
  drive([] { return false; });
  check();
}

// --- replies ---

std::size_t CurlDriver::take_reply(char* bytes, std::size_t, std::size_t count, void* self) {
  CurlDriver& driver = *static_cast<CurlDriver*>(self);
  ++driver.progress_;
  std::string_view line(bytes, count);
  while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
  driver.add_reply_line(line);
  return count;
}

/// RFC 959, section 4.2: a reply of several lines goes from "123-" to the line that begins with "123 ".
void CurlDriver::add_reply_line(std::string_view line) {
  constexpr std::size_t longest_reply = 8192;
  const bool numbered =
      line.size() >= 3 && std::ranges::all_of(line.substr(0, 3), [](char c) { return c >= '0' && c <= '9'; });
  if (!numbered && unfinished_reply_.empty()) return;  // the library's own headers
  if (!unfinished_reply_.empty()) unfinished_reply_ += "\r\n";
  if (unfinished_reply_.size() < longest_reply) unfinished_reply_ += line;
  const bool last = numbered && (line.size() == 3 || line[3] == ' ') &&
                    unfinished_reply_.compare(0, 3, line.substr(0, 3)) == 0;
  if (!last) return;
  reply_code_ = (line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0');
  reply_ = std::exchange(unfinished_reply_, {});
}

}  // namespace tvx::network
