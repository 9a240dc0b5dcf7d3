#include "tvx/browser/loading/http_client.h"

#include <curl/curl.h>

#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/base/url.h"
#include "tvx/platform/message_loop.h"

namespace tvx::browser {
namespace {

constexpr const char* user_agent = "tvxHTML/" TVX_VERSION;
constexpr long most_connections = 16, most_connections_of_a_host = 6;
/// The thread has nothing to look after between the events that wake it.
constexpr int longest_sleep = 60'000;

struct CloseEasy {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
struct CloseMulti {
  void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
};
struct FreeList {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

std::int32_t number_of(LoadFailure failure) { return static_cast<std::int32_t>(failure); }

LoadFailure failure_of(CURLcode code) {
  switch (code) {
    case CURLE_URL_MALFORMAT: return LoadFailure::InvalidAddress;
    case CURLE_UNSUPPORTED_PROTOCOL: return LoadFailure::UnknownProtocol;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY: return LoadFailure::NotFound;
    case CURLE_COULDNT_CONNECT: return LoadFailure::CannotConnect;
    case CURLE_OPERATION_TIMEDOUT: return LoadFailure::TimedOut;
    case CURLE_TOO_MANY_REDIRECTS: return LoadFailure::TooManyRedirects;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR: return LoadFailure::BadCertificate;
    default: return LoadFailure::DownloadFailed;
  }
}

/// Once a process, before the first thread: the library wants it so.
void prepare_library() {
  static const CURLcode done = curl_global_init(CURL_GLOBAL_DEFAULT);
  (void)done;
}

/// One fetch, as the network's thread sees it.
class Transfer {
 public:
  Transfer(const std::string& address, const std::string& accept, const HttpOptions& options)
      : largest_(options.largest_body), handle_(curl_easy_init()) {
    if (!handle_) return;
    headers_.reset(curl_slist_append(nullptr, ("Accept: " + accept).c_str()));
    set(CURLOPT_URL, address.c_str());
    set(CURLOPT_HTTPHEADER, headers_.get());
    set(CURLOPT_USERAGENT, user_agent);
    set(CURLOPT_ACCEPT_ENCODING, "");  // all that the library can undo
    set(CURLOPT_WRITEFUNCTION, &Transfer::take);
    set(CURLOPT_WRITEDATA, this);
    restrict_to(options);
    limit(options);
  }

  CURL* handle() const { return handle_.get(); }

  HttpAnswer answer(CURLcode code) {
    HttpAnswer answer;
    long status = 0;
    char *address = nullptr, *type = nullptr;
    curl_easy_getinfo(handle(), CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(handle(), CURLINFO_EFFECTIVE_URL, &address);
    curl_easy_getinfo(handle(), CURLINFO_CONTENT_TYPE, &type);
    answer.status = code == CURLE_OK ? static_cast<std::int32_t>(status) : number_of(failure_of(code));
    if (answer.status == 204 || answer.status == 205) answer.status = number_of(LoadFailure::NoContent);
    if (address) answer.address = from_utf8(address);
    if (type) answer.content_type = type;
    if (answer.has_content()) answer.body = std::move(body_);
    return answer;
  }

 private:
  template <class Value>
  void set(CURLoption option, Value value) {
    curl_easy_setopt(handle_.get(), option, value);
  }

  /// A redirect must not lead to files or to servers of another kind.
  void restrict_to(const HttpOptions& options) {
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, static_cast<long>(options.most_redirects));
    if (!options.certificate_file.empty()) set(CURLOPT_CAINFO, options.certificate_file.c_str());
  }

  void limit(const HttpOptions& options) {
    set(CURLOPT_NOSIGNAL, 1L);
    // A name that is still being looked up holds nobody up who wants to end.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(options.connect_milliseconds));
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(options.longest_milliseconds));
    set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    set(CURLOPT_LOW_SPEED_TIME, static_cast<long>((options.silence_milliseconds + 999) / 1000));
    set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(largest_));
  }

  static std::size_t take(char* bytes, std::size_t, std::size_t count, void* self) {
    std::string& body = static_cast<Transfer*>(self)->body_;
    if (count > static_cast<Transfer*>(self)->largest_ - body.size()) return 0;  // ends the transfer
    body.append(bytes, count);
    return count;
  }

  std::size_t largest_;
  std::string body_;
  std::unique_ptr<curl_slist, FreeList> headers_;
  std::unique_ptr<CURL, CloseEasy> handle_;
};

}  // namespace

/// Who waits for what. The loop's thread alone looks inside.
class HttpClient::Waiting {
 public:
  Number add(Done done) {
    done_.emplace(++last_, std::move(done));
    return last_;
  }
  bool remove(Number number) { return done_.erase(number) > 0; }
  void finish(Number number, HttpAnswer answer) {
    const auto found = done_.find(number);
    if (found == done_.end()) return;
    const Done done = std::move(found->second);
    done_.erase(found);
    done(std::move(answer));
  }

 private:
  std::map<Number, Done> done_;
  Number last_ = 0;
};

/// The network's thread. It is given orders and posts answers; it touches nothing else.
class HttpClient::Worker {
 public:
  Worker(platform::MessageLoop& loop, const HttpOptions& options, std::weak_ptr<Waiting> waiting)
      : loop_(loop), options_(options), waiting_(std::move(waiting)) {
    prepare_library();
    multi_.reset(curl_multi_init());
    curl_multi_setopt(multi_.get(), CURLMOPT_MAX_TOTAL_CONNECTIONS, most_connections);
    curl_multi_setopt(multi_.get(), CURLMOPT_MAX_HOST_CONNECTIONS, most_connections_of_a_host);
    thread_ = std::thread([this] { run(); });
  }
  ~Worker() {
    {
      const std::lock_guard lock(mutex_);
      ending_ = true;
    }
    curl_multi_wakeup(multi_.get());
    thread_.join();
  }

  void start(Number number, std::string address, std::string_view accept) {
    put({number, std::move(address), std::string(accept)});
  }
  void cancel(Number number) { put({number, {}, {}}); }

 private:
  struct Order {
    Number number;
    std::string address;  // empty: end it
    std::string accept;
  };

  void put(Order order) {
    {
      const std::lock_guard lock(mutex_);
      orders_.push_back(std::move(order));
    }
    curl_multi_wakeup(multi_.get());
  }

  void run() {
    while (take_orders()) {
      int running = 0;
      curl_multi_perform(multi_.get(), &running);
      tell_finished();
      curl_multi_poll(multi_.get(), nullptr, 0, longest_sleep, nullptr);
    }
    while (!transfers_.empty()) drop(transfers_.begin()->first);
  }

  bool take_orders() {
    std::vector<Order> orders;
    {
      const std::lock_guard lock(mutex_);
      if (ending_) return false;
      orders.swap(orders_);
    }
    for (const Order& order : orders) {
      if (order.address.empty())
        drop(order.number);
      else
        begin(order);
    }
    return true;
  }

  void begin(const Order& order) {
    auto transfer = std::make_unique<Transfer>(order.address, order.accept, options_);
    if (!transfer->handle() || curl_multi_add_handle(multi_.get(), transfer->handle()) != CURLM_OK)
      return tell(order.number, {number_of(LoadFailure::DownloadFailed)});
    transfers_.emplace(order.number, std::move(transfer));
  }

  void drop(Number number) {
    const auto found = transfers_.find(number);
    if (found == transfers_.end()) return;
    curl_multi_remove_handle(multi_.get(), found->second->handle());
    transfers_.erase(found);
  }

  void tell_finished() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
      if (message->msg != CURLMSG_DONE) continue;
      const CURLcode code = message->data.result;
      for (const auto& [number, transfer] : transfers_) {
        if (transfer->handle() != message->easy_handle) continue;
        tell(number, transfer->answer(code));
        drop(number);
        break;
      }
    }
  }

  void tell(Number number, HttpAnswer answer) {
    // Tasks are copied by some loops; the content isn't.
    auto shared = std::make_shared<HttpAnswer>(std::move(answer));
    loop_.post([waiting = waiting_, number, shared] {
      if (const auto alive = waiting.lock()) alive->finish(number, std::move(*shared));
    });
  }

  platform::MessageLoop& loop_;
  const HttpOptions options_;
  const std::weak_ptr<Waiting> waiting_;
  std::unique_ptr<CURLM, CloseMulti> multi_;
  std::map<Number, std::unique_ptr<Transfer>> transfers_;  // the thread's own

  std::mutex mutex_;
  std::vector<Order> orders_;
  bool ending_ = false;
  std::thread thread_;
};

HttpClient::HttpClient(platform::MessageLoop& loop, HttpOptions options)
    : loop_(loop), options_(std::move(options)), waiting_(std::make_shared<Waiting>()) {}

HttpClient::~HttpClient() = default;

HttpClient::Number HttpClient::fetch(std::u16string_view address, std::string_view accept, Done done) {
  const Number number = waiting_->add(std::move(done));
  const auto url = Url::parse(address);
  if (!url || (url->scheme != u"http" && url->scheme != u"https")) {
    loop_.post([waiting = std::weak_ptr(waiting_), number] {
      if (const auto alive = waiting.lock()) alive->finish(number, {number_of(LoadFailure::InvalidAddress)});
    });
    return number;
  }
  if (!worker_) worker_ = std::make_unique<Worker>(loop_, options_, waiting_);
  worker_->start(number, to_utf8(url->document()), accept);
  return number;
}

void HttpClient::cancel(Number number) {
  if (waiting_->remove(number) && worker_) worker_->cancel(number);
}

}  // namespace tvx::browser
