// The three conversions of addresses as plain texts.

#include <algorithm>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/base/url.h"
#include "tvx/base/url_escape.h"

namespace tvx {
namespace {

constexpr std::u16string_view unsafe = u" \"<>\\^`{|}";

/// Hosts have always known these results in a buffer of 260 units, the last one for the end.
std::u16string fitting(std::u16string result) {
  return result.size() <= longest_url ? std::move(result) : std::u16string();
}

/// Where the path begins: after the scheme and, if there is one, the authority.
std::size_t path_start(std::u16string_view url) {
  const std::size_t colon = url.find_first_of(u":/?#");
  const std::size_t behind_scheme = colon == url.npos || url[colon] != u':' ? 0 : colon + 1;
  if (!url.substr(behind_scheme).starts_with(u"//")) return behind_scheme;
  const std::size_t slash = url.find_first_of(u"/?#", behind_scheme + 2);
  return slash == url.npos ? url.size() : slash;
}

bool has_folders(std::u16string_view url) {
  const std::size_t colon = url.find(u':');
  if (colon == url.npos || url.find_first_of(u"/?#") < colon) return true;
  const std::u16string scheme = ascii_lower(url.substr(0, colon));
  return scheme == u"http" || scheme == u"https" || scheme == u"ftp" || scheme == u"file";
}

/// Without "." and ".." segments; of a relative path those stay that lead out of it.
std::u16string simplified(std::u16string_view path) {
  const bool rooted = path.starts_with(u'/');
  if (rooted) path.remove_prefix(1);
  std::vector<std::u16string_view> kept;
  const std::vector<std::u16string_view> segments = split(path, u'/');
  for (std::size_t i = 0; i < segments.size(); ++i) {
    const bool last = i + 1 == segments.size();
    const bool up = segments[i] == u"..";
    if (!up && segments[i] != u".") {
      kept.push_back(segments[i]);
      continue;
    }
    const bool leads_out = up && !rooted && (kept.empty() || kept.back() == u"..");
    if (leads_out) kept.push_back(segments[i]);
    if (up && !leads_out && !kept.empty()) kept.pop_back();
    // What ends in a dot segment names a folder.
    if (last && !leads_out && !kept.empty()) kept.push_back({});
  }
  std::u16string out;
  if (rooted) out = u"/";
  for (std::size_t i = 0; i < kept.size(); ++i) {
    if (i > 0) out += u'/';
    out += kept[i];
  }
  return out;
}

/// A failure is the empty text, whatever it would say.
bool fails(std::u16string_view operation) {
  bool failed = true;
  attempt([&] { failed = fault_point(operation).has_value(); });
  return failed;
}

}  // namespace

std::u16string EncodeURL(std::u16string_view url) {
  return fails(u"UrlEscape") ? u"" : fitting(percent_encoded(url, unsafe));
}

std::u16string DecodeURL(std::u16string_view url) {
  return fails(u"UrlUnescape") ? u"" : fitting(percent_decoded(url));
}

std::u16string CanonicalURL(std::u16string_view url, std::uint32_t flags) {
  if (fails(u"UrlCanonicalize")) return {};
  std::u16string text(trimmed(url));
  if (has_folders(text)) {
    const std::size_t end = std::min(text.find_first_of(u"?#"), text.size());
    std::replace(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), u'\\', u'/');
    if (!(flags & URL_DONT_SIMPLIFY)) {
      const std::size_t start = std::min(path_start(text), end);
      text.replace(start, end - start, simplified(std::u16string_view(text).substr(start, end - start)));
    }
  }
  if (flags & URL_UNESCAPE) text = percent_decoded(text);
  if (flags & URL_ESCAPE_UNSAFE) {
    text = percent_encoded(text, unsafe);
  } else if (flags & URL_ESCAPE_SPACES_ONLY) {
    text = ReplaceAll(u" ", u"%20", text, true);
  }
  return fitting(std::move(text));
}

}  // namespace tvx
