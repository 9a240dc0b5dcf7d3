#include "tvx/base/url.h"

#include <unicode/uidna.h>

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/base/url_escape.h"

namespace tvx {
namespace {

// The parts of the URL standard's basic URL parser (section 4.4), one function each instead of one state
// each.

bool is_special(std::u16string_view scheme) {
  return scheme == u"http" || scheme == u"https" || scheme == u"file" || scheme == u"ftp" ||
         scheme == u"ws" || scheme == u"wss";
}

std::u16string_view default_port(std::u16string_view scheme) {
  if (scheme == u"http" || scheme == u"ws") return u"80";
  if (scheme == u"https" || scheme == u"wss") return u"443";
  return scheme == u"ftp" ? u"21" : u"";
}

/// Without control characters and blanks at the ends, and without tabs and line breaks anywhere.
std::u16string cleaned(std::u16string_view text) {
  while (!text.empty() && text.front() <= u' ') text.remove_prefix(1);
  while (!text.empty() && text.back() <= u' ') text.remove_suffix(1);
  std::u16string out(text);
  std::erase_if(out, [](char16_t c) { return c == u'\t' || c == u'\n' || c == u'\r'; });
  return out;
}

/// The length of the scheme at the start of `text`, 0 if there is none.
std::size_t scheme_length(std::u16string_view text) {
  if (text.empty() || !is_ascii_alpha(text.front())) return 0;
  for (std::size_t i = 1; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c == u':') return i;
    if (!is_ascii_alpha(c) && !is_ascii_digit(c) && c != u'+' && c != u'-' && c != u'.') return 0;
  }
  return 0;
}

bool is_drive(std::u16string_view text) {
  return text.size() == 2 && is_ascii_alpha(text[0]) && (text[1] == u':' || text[1] == u'|');
}

bool is_single_dot(std::u16string_view segment) {
  return segment == u"." || equals_ignoring_ascii_case(segment, u"%2e");
}

bool is_double_dot(std::u16string_view segment) {
  return segment == u".." || equals_ignoring_ascii_case(segment, u".%2e") ||
         equals_ignoring_ascii_case(segment, u"%2e.") || equals_ignoring_ascii_case(segment, u"%2e%2e");
}

class Parser {
 public:
  Parser(std::u16string_view text, const Url* base) : clean_(cleaned(text)), rest_(clean_), base_(base) {}

  std::optional<Url> parse() {
    take_fragment_and_query();
    const std::size_t length = scheme_length(rest_);
    const bool understood = length > 0 ? parse_absolute(length) : parse_relative();
    if (!understood) return std::nullopt;
    if (has_query_) url_.query = percent_encoded(query_, query_escapes(is_special(url_.scheme)));
    if (has_fragment_) url_.fragment = percent_encoded(fragment_, fragment_escapes);
    return std::move(url_);
  }

 private:
  void take_fragment_and_query() {
    if (const std::size_t hash = rest_.find(u'#'); hash != rest_.npos) {
      fragment_ = rest_.substr(hash + 1);
      has_fragment_ = true;
      rest_ = rest_.substr(0, hash);
    }
    if (const std::size_t mark = rest_.find(u'?'); mark != rest_.npos) {
      query_ = rest_.substr(mark + 1);
      has_query_ = true;
      rest_ = rest_.substr(0, mark);
    }
  }

  bool is_slash(char16_t c) const { return c == u'/' || (c == u'\\' && is_special(url_.scheme)); }

  std::size_t leading_slashes() const {
    std::size_t count = 0;
    while (count < rest_.size() && is_slash(rest_[count])) ++count;
    return count;
  }

  bool parse_absolute(std::size_t length) {
    url_.scheme = ascii_lower(rest_.substr(0, length));
    rest_.remove_prefix(length + 1);
    if (url_.is_file()) return parse_file();
    if (is_special(url_.scheme)) {
      const bool relative = base_ && base_->scheme == url_.scheme && !rest_.starts_with(u"//");
      return relative ? parse_reference() : parse_authority(leading_slashes());
    }
    if (rest_.starts_with(u"//")) return parse_authority(2);
    if (rest_.starts_with(u'/')) {
      add_path();
    } else {
      url_.path = percent_encoded(rest_, control_escapes);
    }
    return true;
  }

  bool parse_relative() {
    if (!base_) return false;
    url_.scheme = base_->scheme;
    if (!base_->has_opaque_path()) return url_.is_file() ? parse_file() : parse_reference();
    if (!rest_.empty() || has_query_ || !has_fragment_) return false;
    url_ = *base_;
    return true;
  }

  /// What follows a scheme that the base has too, or no scheme at all.
  bool parse_reference() {
    const std::size_t slashes = leading_slashes();
    if (slashes >= 2) return parse_authority(is_special(url_.scheme) ? slashes : 2);
    url_.authority = base_->authority;
    if (slashes == 1) {
      add_path();
    } else {
      add_path_behind_base();
    }
    return true;
  }

  void add_path_behind_base() {
    url_.path = base_->path;
    if (rest_.empty()) {
      if (!has_query_) url_.query = base_->query;
      return;
    }
    shorten_path();
    add_path();
  }

  bool parse_file() {
    url_.authority = u"";
    const std::size_t slashes = leading_slashes();
    if (slashes >= 2) return parse_file_host();
    const bool from_base = base_ && base_->is_file();
    if (from_base) url_.authority = base_->authority;
    if (slashes == 1) {
      if (from_base && !is_drive(rest_.substr(1, 2))) url_.path = drive_of(base_->path);
      add_path();
    } else if (from_base && !starts_with_drive(rest_)) {
      add_path_behind_base();
    } else {
      add_path();
    }
    return true;
  }

  bool parse_file_host() {
    rest_.remove_prefix(2);
    const std::u16string_view host = rest_.substr(0, next_slash());
    if (is_drive(host)) {
      add_path();
      return true;
    }
    rest_.remove_prefix(host.size());
    std::optional<std::u16string> name = host.empty() ? std::u16string() : host_name(host);
    if (!name) return false;
    url_.authority = *name == u"localhost" ? u"" : *name;
    add_path();
    return true;
  }

  static bool starts_with_drive(std::u16string_view text) {
    return is_drive(text.substr(0, 2)) && (text.size() == 2 || text[2] == u'/' || text[2] == u'\\');
  }

  static std::u16string drive_of(const std::u16string& path) {
    const bool has_drive = path.size() >= 3 && path[2] == u':' && is_drive(path.substr(1, 2)) &&
                           (path.size() == 3 || path[3] == u'/');
    return has_drive ? path.substr(0, 3) : std::u16string();
  }

  std::size_t next_slash() const {
    std::size_t end = 0;
    while (end < rest_.size() && !is_slash(rest_[end])) ++end;
    return end;
  }

  bool parse_authority(std::size_t slashes) {
    rest_.remove_prefix(slashes);
    std::u16string_view text = rest_.substr(0, next_slash());
    rest_.remove_prefix(text.size());
    std::u16string user;
    if (const std::size_t at = text.rfind(u'@'); at != text.npos) {
      user = percent_encoded(text.substr(0, at), user_escapes) + u"@";
      text.remove_prefix(at + 1);
    }
    const std::size_t bracket = text.rfind(u']');
    const std::size_t colon = text.find(u':', bracket == text.npos ? 0 : bracket);
    const std::u16string_view host = text.substr(0, colon);
    const auto port = colon == text.npos ? std::u16string() : port_suffix(text.substr(colon + 1));
    if (!port || (host.empty() && (is_special(url_.scheme) || !user.empty() || !port->empty()))) return false;
    const auto name = host.empty() ? std::u16string() : host_name(host);
    if (!name) return false;
    url_.authority = user + *name + *port;
    if (!rest_.empty() || is_special(url_.scheme)) add_path();
    return true;
  }

  /// ":8080" for "08080", "" for the default port.
  std::optional<std::u16string> port_suffix(std::u16string_view digits) const {
    if (digits.empty()) return u"";
    std::uint32_t number = 0;
    for (const char16_t c : digits) {
      if (!is_ascii_digit(c)) return std::nullopt;
      number = number * 10 + (c - u'0');
      if (number > 65535) return std::nullopt;
    }
    const std::u16string port = to_text(number);
    return port == default_port(url_.scheme) ? u"" : u":" + port;
  }

  /// Section 3.5, "host parsing".
  std::optional<std::u16string> host_name(std::u16string_view text) const {
    if (text.front() == u'[') {
      if (text.back() != u']') return std::nullopt;
      const auto digit = [](char16_t c) {
        return is_ascii_digit(c) || (c >= u'a' && c <= u'f') || c == u':' || c == u'.';
      };
      const std::u16string address = ascii_lower(text);
      const auto inside = std::u16string_view(address).substr(1, address.size() - 2);
      return !inside.empty() && std::all_of(inside.begin(), inside.end(), digit) ? std::optional(address)
                                                                                 : std::nullopt;
    }
    std::u16string name = is_special(url_.scheme) ? ascii_domain(percent_decoded(text))
                                                  : percent_encoded(text, control_escapes);
    const auto forbidden = [this](char16_t c) {
      return c <= u' ' || c == 0x7F ||
             std::u16string_view(u"#/:<>?@[\\]^|").find(c) != std::u16string_view::npos ||
             (c == u'%' && is_special(url_.scheme));
    };
    if (name.empty() || std::any_of(name.begin(), name.end(), forbidden)) return std::nullopt;
    return name;
  }

  /// The name in the letters of the domain name system (UTS 46); empty if it has no such form.
  static std::u16string ascii_domain(const std::u16string& name) {
    const bool ascii = std::all_of(name.begin(), name.end(), [](char16_t c) { return c < 0x80; });
    if (ascii) return ascii_lower(name);
    UErrorCode status = U_ZERO_ERROR;
    UIDNA* idna =
        uidna_openUTS46(UIDNA_CHECK_BIDI | UIDNA_CHECK_CONTEXTJ | UIDNA_NONTRANSITIONAL_TO_ASCII, &status);
    if (U_FAILURE(status)) return {};
    UIDNAInfo info = UIDNA_INFO_INITIALIZER;
    std::u16string out(name.size() * 6 + 64, u'\0');
    const std::int32_t length =
        uidna_nameToASCII(idna, name.data(), static_cast<std::int32_t>(name.size()), out.data(),
                          static_cast<std::int32_t>(out.size()), &info, &status);
    uidna_close(idna);
    if (U_FAILURE(status) || info.errors != 0) return {};
    out.resize(static_cast<std::size_t>(length));
    return out;
  }

  /// Takes the last segment off, but never the drive of a local path.
  void shorten_path() {
    if (url_.is_file() && url_.path.size() == 3 && !drive_of(url_.path).empty()) return;
    const std::size_t slash = url_.path.rfind(u'/');
    url_.path.resize(slash == url_.path.npos ? 0 : slash);
  }

  /// Adds the segments of `rest_` to the path.
  void add_path() {
    if (!rest_.empty() && is_slash(rest_.front())) rest_.remove_prefix(1);
    for (bool last = false; !last;) {
      const std::u16string_view segment = rest_.substr(0, next_slash());
      last = segment.size() == rest_.size();
      rest_.remove_prefix(segment.size() + (last ? 0 : 1));
      if (is_double_dot(segment)) {
        shorten_path();
        if (last) url_.path += u'/';
      } else if (is_single_dot(segment)) {
        if (last) url_.path += u'/';
      } else {
        add_segment(segment);
      }
    }
  }

  void add_segment(std::u16string_view segment) {
    const bool drive = url_.is_file() && url_.path.empty() && is_drive(segment);
    url_.path += u'/';
    url_.path += percent_encoded(segment, path_escapes);
    if (drive) url_.path.back() = u':';
  }

  std::u16string clean_;
  std::u16string_view rest_;
  const Url* base_;
  std::u16string_view query_, fragment_;
  bool has_query_ = false, has_fragment_ = false;
  Url url_;
};

}  // namespace

std::optional<Url> Url::parse(std::u16string_view text) { return Parser(text, nullptr).parse(); }

std::optional<Url> Url::parse(std::u16string_view reference, const Url& base) {
  return Parser(reference, &base).parse();
}

std::u16string Url::document() const {
  std::u16string out = scheme + u":";
  if (authority) {
    out += u"//" + *authority;
  } else if (path.starts_with(u"//")) {
    out += u"/.";  // else the path would be read as an authority
  }
  out += path;
  if (query) out += u"?" + *query;
  return out;
}

std::u16string Url::text() const { return fragment ? document() + u"#" + *fragment : document(); }

std::optional<std::u16string> resolve_url(std::u16string_view reference, std::u16string_view base) {
  const std::optional<Url> from = Url::parse(base);
  const std::optional<Url> url = from ? Url::parse(reference, *from) : Url::parse(reference);
  if (!url) return std::nullopt;
  return url->text();
}

std::optional<std::u16string> local_path(std::u16string_view url) {
  const std::optional<Url> parsed = Url::parse(url);
  if (!parsed || !parsed->is_file() || !parsed->authority->empty()) return std::nullopt;
  std::u16string path = percent_decoded(parsed->path);
  if (contains(path, std::u16string_view(u"\0", 1))) return std::nullopt;
  return path;
}

std::u16string file_url(std::u16string_view path) {
  return u"file://" + percent_encoded(path, file_name_escapes);
}

}  // namespace tvx
