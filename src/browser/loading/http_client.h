#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::browser {

/// How long a server may take and how much it may send. Times are those of the wall clock.
struct HttpOptions {
  std::int64_t connect_milliseconds = 15'000;
  /// A transfer on which nothing arrives for so long has died.
  std::int64_t silence_milliseconds = 30'000;
  std::int64_t longest_milliseconds = 300'000;
  /// Of the content as it is when uncompressed.
  std::size_t largest_body = std::size_t{64} << 20;
  int most_redirects = 20;
  /// A file of certificates that are trusted in place of the system's; empty: the system's.
  std::string certificate_file;
};

/// Why an address gave nothing, where it isn't the server's own status: the numbers that hosts
/// know from their platform.
enum class LoadFailure : std::int32_t {
  InvalidAddress = std::int32_t(0x800C0002),
  CannotConnect = std::int32_t(0x800C0004),
  NotFound = std::int32_t(0x800C0005),
  NoContent = std::int32_t(0x800C0007),
  DownloadFailed = std::int32_t(0x800C0008),
  TimedOut = std::int32_t(0x800C000B),
  UnknownProtocol = std::int32_t(0x800C000D),
  TooManyRedirects = std::int32_t(0x800C0014),
  BadCertificate = std::int32_t(0x800C0019),
};

struct HttpAnswer {
  /// The server's status, or a LoadFailure.
  std::int32_t status = 0;
  /// Where the content was found in the end, after all redirects.
  std::u16string address;
  /// As the server named it: "text/html; charset=utf-8".
  std::string content_type;
  /// Uncompressed. Only where has_content().
  std::string body;

  bool has_content() const { return status >= 200 && status < 300; }
};

/// Fetches "http:" and "https:" addresses, each once: nothing is kept, neither cookies nor content. The
/// network has a thread of its own, which knows bytes alone; every answer comes as a task of the message
/// loop, in the loop's thread.
class HttpClient {
 public:
  using Number = std::uint64_t;
  using Done = std::function<void(HttpAnswer)>;

  /// `loop` outlives this.
  explicit HttpClient(platform::MessageLoop& loop, HttpOptions options = {});
  /// Drops what is on its way; no `done` is called any more.
  ~HttpClient();
  HttpClient(const HttpClient&) = delete;
  HttpClient& operator=(const HttpClient&) = delete;

  /// `accept` is what the server is asked for. Returns at once; `done` is called exactly once, by
  /// the loop, unless the fetch is cancelled before. It may destroy this.
  Number fetch(std::u16string_view address, std::string_view accept, Done done);
  /// One that is over is no error.
  void cancel(Number number);

 private:
  class Waiting;
  class Worker;

  platform::MessageLoop& loop_;
  HttpOptions options_;
  std::shared_ptr<Waiting> waiting_;
  std::unique_ptr<Worker> worker_;  // from the first fetch on
};

}  // namespace tvx::browser
