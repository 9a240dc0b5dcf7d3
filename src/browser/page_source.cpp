#include "browser/page_source.h"

#include <filesystem>

#include "base/fault.h"
#include "base/text_file.h"
#include "base/url.h"
#include "browser/encoding.h"
#include "dom/parse.h"

namespace tvx::browser {
namespace {

bool is_blank(std::u16string_view address) { return equals_ignoring_ascii_case(address, u"about:blank"); }

/// One letter before the colon is a drive, not a scheme.
bool has_scheme(std::u16string_view address) {
  const std::size_t colon = address.find(u':');
  if (colon == std::u16string_view::npos || colon < 2 || !is_ascii_alpha(address.front())) return false;
  for (char16_t c : address.substr(0, colon))
    if (!is_ascii_alpha(c) && !is_ascii_digit(c) && c != u'+' && c != u'-' && c != u'.') return false;
  return true;
}

}  // namespace

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

std::optional<std::string> read_address(std::u16string_view address) {
  const auto path = local_file(address);
  if (!path || path->empty()) return {};
  std::optional<std::string> bytes;
  attempt([&] {
    if (!fault_point(u"ReadPage")) bytes = read_bytes(*path);
  });
  return bytes;
}

std::shared_ptr<HTMLDocument> blank_page(std::u16string url) {
  auto document = HTMLDocument::create(dom::parse_document(u""), std::move(url));
  document->finish_loading();
  return document;
}

std::shared_ptr<HTMLDocument> load_page(std::u16string_view address) {
  if (is_blank(address)) return blank_page(u"about:blank");
  const auto bytes = read_address(address);
  if (!bytes) return nullptr;
  DecodedPage page = decode_page(*bytes);
  auto document = HTMLDocument::create(dom::parse_document(page.text), document_address(address));
  document->set_encoding(std::move(page.encoding));
  document->begin_interactive();
  return document;
}

}  // namespace tvx::browser
