#include "tvx/network/curl_failure.h"

#include "tvx/base/strings.h"
#include "tvx/network/curl_driver.h"
#include "tvx/platform/remote_network.h"

namespace tvx::network {

namespace network_errors = platform::network_errors;

namespace {

/// Where the server's own words don't count: before it is known to be the right one, or without any.
int number_before_replies(CURLcode code) {
  switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY: return network_errors::name_not_resolved;
    case CURLE_COULDNT_CONNECT: return network_errors::cannot_connect;
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_FTP_ACCEPT_TIMEOUT: return network_errors::timeout;
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL: return network_errors::invalid_address;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_USE_SSL_FAILED: return network_errors::security_failure;
    default: return 0;
  }
}

int number_without_reply(CURLcode code) {
  switch (code) {
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_FTP_WEIRD_SERVER_REPLY:
    case CURLE_FTP_ACCEPT_FAILED: return network_errors::connection_lost;
    default: return network_errors::extended_error;
  }
}

bool is_word(char16_t c) { return c >= 128 || is_ascii_alpha(c) || is_ascii_digit(c); }

}  // namespace

RuntimeError failure_of_exchange(const CurlDriver& driver, CURLcode code) {
  const std::u16string library = from_utf8(driver.library_text(code));
  const bool refused = driver.reply_code() >= 400;
  // The library also calls it so where a server sends everybody away.
  const bool sent_away = refused && code == CURLE_OPERATION_TIMEDOUT;
  if (const int number = number_before_replies(code); number && !sent_away) return {number, library};
  const std::u16string words = refused ? from_utf8(driver.reply()) : library;
  if (code == CURLE_LOGIN_DENIED) return {network_errors::login_failure, words};
  return {refused ? network_errors::extended_error : number_without_reply(code), words};
}

std::u16string without_password(std::u16string_view text, std::u16string_view password) {
  std::u16string result(text);
  if (password.empty()) return result;
  for (std::size_t at = 0; (at = result.find(password, at)) != std::u16string::npos;) {
    const std::size_t end = at + password.size();
    // A short password may be a part of an honest word.
    const bool starts = at == 0 || !is_word(result[at - 1]) || !is_word(password.front());
    const bool ends = end == result.size() || !is_word(result[end]) || !is_word(password.back());
    if (starts && ends) result.replace(at, password.size(), u"***");
    at += 3;
  }
  return result;
}

}  // namespace tvx::network
