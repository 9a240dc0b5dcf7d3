#pragma once

#include <string>
#include <string_view>

#include "browser/html_document.h"

namespace tvx::browser {

struct DecodedPage {
  std::u16string text;
  Encoding encoding;
};

/// The text of a page's bytes. HTML standard, section 13.2.3: a byte order mark decides, else what a `meta`
/// in the first 1024 bytes declares; else it is UTF-8 if that fits all of it, and Windows-1252 if not.
DecodedPage decode_page(std::string_view bytes);

/// The encoding that a page declares in its first 1024 bytes, as the label stands there; empty if none.
/// HTML standard, section 13.2.3.2 "prescan a byte stream".
std::string declared_encoding(std::string_view bytes);

bool is_utf8(std::string_view bytes);

}  // namespace tvx::browser
