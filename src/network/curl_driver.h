#pragma once

#include <curl/curl.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tvx/base/error.h"
#include "tvx/network/curl_network.h"
#include "tvx/network/open_sockets.h"
#include "tvx/network/step_thread.h"

namespace tvx::network {

/// One exchange with a server at a time, driven from the loop's thread: libcurl is given what it wants to do,
/// and in between the loop runs. The connection stays for the next exchange.
class CurlDriver {
 public:
  CurlDriver(platform::MessageLoop& loop, const CurlOptions& options);
  ~CurlDriver();
  CurlDriver(const CurlDriver&) = delete;
  CurlDriver& operator=(const CurlDriver&) = delete;

  /// A new exchange: the options of the last one are forgotten. What is still under way is dropped.
  void reset();
  template <class Value>
  void set(CURLoption option, Value value) {
    curl_easy_setopt(easy_.get(), option, value);
  }
  /// Commands of the protocol that are sent before the exchange.
  void set_commands(std::span<const std::string> commands);
  CURL* handle() const { return easy_.get(); }

  /// At the end of a file the library stands still until the server has said its last word. Such steps are
  /// done by a thread, while the loop runs on.
  void expect_last_word() { ends_with_a_word_ = true; }
  /// The file comes as it is, not encrypted: as long as it comes its end isn't due.
  void expect_open_file() { open_to_read_ = true; }
  void start();
  /// Until `enough`, or the exchange is over. Throws RuntimeError where the server is silent for too long, or
  /// it is interrupted.
  void drive(const std::function<bool()>& enough);
  /// The whole exchange. Throws what it ended with, if that isn't good.
  void run();
  bool running() const { return started_ && !result_; }
  /// How it ended; nothing while it runs.
  const std::optional<CURLcode>& result() const { return result_; }
  /// Throws if it has ended badly.
  void check() const;
  /// Ends the exchange; one in the middle takes its connection along.
  void stop();
  void interrupt();
  /// For what comes next; 0: as the options say.
  void set_silence(std::int64_t milliseconds) { silence_ = milliseconds; }

  // --- bytes ---
  std::size_t read(std::span<char> block);
  void write(std::string_view block);
  /// All has been written: until the server has said that it has all.
  void finish_writing();
  /// Whether it wants the bytes that are to be written, which is when the server's file is open.
  bool wants_bytes() const { return wants_bytes_; }
  bool has_bytes() const { return waiting() > 0; }

  // --- what the server has said ---
  /// The last reply that is complete, all its lines; empty where a protocol has none.
  const std::string& reply() const { return reply_; }
  int reply_code() const { return reply_code_; }
  /// The library's own words.
  std::string library_text(CURLcode code) const;

 private:
  struct CloseEasy {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  };
  struct CloseMulti {
    void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
  };
  struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  };

  static std::size_t take_bytes(char* bytes, std::size_t, std::size_t count, void* self);
  static std::size_t give_bytes(char* bytes, std::size_t size, std::size_t count, void* self);
  static std::size_t take_reply(char* bytes, std::size_t, std::size_t count, void* self);
  static int tell_progress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t);
  void perform();
  void do_step();
  void abandon();
  std::int64_t most_silence() const;
  RuntimeError silence_failure() const;
  void let_loop_run();
  void wait();
  void go_on_after_pause();
  void add_reply_line(std::string_view line);
  std::size_t waiting() const { return incoming_.size() - taken_; }

  platform::MessageLoop& loop_;
  const CurlOptions& options_;
  std::unique_ptr<CURL, CloseEasy> easy_;
  std::unique_ptr<CURLM, CloseMulti> multi_;
  std::unique_ptr<curl_slist, FreeList> commands_;
  char error_[CURL_ERROR_SIZE] = "";

  StepThread thread_;
  OpenSockets sockets_;
  std::atomic<bool> interrupted_ = false;
  std::atomic<bool> given_up_ = false;  // the step that is under way ends as soon as it can
  bool started_ = false, paused_ = false, ends_with_a_word_ = false, open_to_read_ = false;
  std::optional<CURLcode> result_;
  std::uint64_t progress_ = 0, seen_progress_ = 0;
  std::int64_t silent_ = 0, pumped_ = 0, silence_ = 0;

  std::span<char> target_;                                         // where bytes that come go first
  std::size_t filled_ = 0;                                         // of it
  std::string incoming_;                                           // what had no room there
  std::size_t taken_ = 0;                                          // of it
  std::size_t allowed_ = std::numeric_limits<std::size_t>::max();  // may come in this step
  std::string_view source_;                                        // what is still to be given
  bool source_ended_ = false, wants_bytes_ = false;

  std::string reply_, unfinished_reply_;
  int reply_code_ = 0;
};

/// The library once a process, before its first use.
void prepare_library();

}  // namespace tvx::network
