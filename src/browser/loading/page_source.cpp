#include "tvx/browser/loading/page_source.h"

#include <filesystem>

#include "tvx/base/text_file.h"
#include "tvx/base/url.h"
#include "tvx/browser/loading/encoding.h"
#include "tvx/browser/loading/parsed_page.h"
#include "tvx/dom/parse.h"

namespace tvx::browser {
namespace {

/// One letter before the colon is a drive, not a scheme.
bool has_scheme(std::u16string_view address) {
  const std::size_t colon = address.find(u':');
  if (colon == std::u16string_view::npos || colon < 2 || !is_ascii_alpha(address.front())) return false;
  for (char16_t c : address.substr(0, colon))
    if (!is_ascii_alpha(c) && !is_ascii_digit(c) && c != u'+' && c != u'-' && c != u'.') return false;
  return true;
}

}  // namespace

bool is_blank_address(std::u16string_view address) {
  return equals_ignoring_ascii_case(address.substr(0, address.find(u'#')), u"about:blank");
}

bool is_remote(std::u16string_view address) {
  const std::u16string scheme = ascii_lower(trimmed(address).substr(0, 8));
  return scheme.starts_with(u"http:") || scheme.starts_with(u"https:");
}

std::optional<std::u16string> local_file(std::u16string_view address) {
  if (!has_scheme(address)) return std::u16string(address);
  return local_path(address);
}

std::u16string document_address(std::u16string_view address) {
  if (has_scheme(address)) return std::u16string(address);
  std::error_code ignored;
  const auto path = std::filesystem::absolute(file_system_path(address), ignored);
  return file_url(from_utf8(path.string()));
}

HttpAnswer read_local(std::u16string_view address, std::size_t limit) {
  HttpAnswer answer;
  answer.address = document_address(address);
  answer.status = static_cast<std::int32_t>(LoadFailure::NotFound);
  if (is_blank_address(address)) {
    answer.status = 200;
    return answer;
  }
  const auto path = local_file(address);
  if (!path) answer.status = static_cast<std::int32_t>(LoadFailure::UnknownProtocol);
  if (!path || path->empty()) return answer;
  if (auto bytes = read_bytes(*path, limit)) {
    answer.body = *std::move(bytes);
    answer.status = 200;
  }
  return answer;
}

std::shared_ptr<HTMLDocument> blank_page(std::u16string url) {
  auto document = HTMLDocument::create(dom::parse_document(u""), std::move(url));
  document->finish_loading();
  return document;
}

namespace {

enum class PageKind : std::uint8_t { Html, Text, None };

/// A server that names no type means HTML; files are what the host says they are.
PageKind kind_of(const std::string& type) {
  if (type.empty() || type == "text/html" || type == "application/xhtml+xml") return PageKind::Html;
  if (type == "application/xml" || type == "text/xml") return PageKind::Html;
  return type.starts_with("text/") ? PageKind::Text : PageKind::None;
}

/// HTML standard, section 7.5.4 "loading text documents". The line end after the tag belongs to it.
std::u16string page_of_text(std::u16string_view text) {
  std::u16string page = u"<!DOCTYPE html><pre>\n";
  page.reserve(text.size() + text.size() / 16 + page.size());
  for (const char16_t c : text) {
    switch (c) {
      case u'<': page += u"&lt;"; break;
      case u'&': page += u"&amp;"; break;
      default: page += c;
    }
  }
  return page;
}

}  // namespace

bool fill_page(HTMLDocument& document, const HttpAnswer& found) {
  const PageKind kind = kind_of(media_type(found.content_type));
  if (kind == PageKind::None) return false;
  if (ParsedPage* parsed = found.content_type.empty() ? ParsedPage::of(found.body) : nullptr) {
    document.fill(parsed->take_tree(), found.address);
    document.set_encoding(parsed->encoding());
    document.begin_interactive();
    return true;
  }
  DecodedPage page = decode_page(found.body, charset_of_type(found.content_type));
  if (kind == PageKind::Text) page.text = page_of_text(page.text);
  document.fill(dom::parse_document(page.text), found.address);
  document.set_encoding(std::move(page.encoding));
  document.begin_interactive();
  return true;
}

std::shared_ptr<HTMLDocument> make_page(const HttpAnswer& found) {
  auto document = HTMLDocument::create(dom::Document::create(), found.address);
  return fill_page(*document, found) ? document : nullptr;
}

}  // namespace tvx::browser
