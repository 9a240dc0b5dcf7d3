#pragma once

#include <string>
#include <string_view>

#include "tvx/browser/html_document.h"

namespace tvx::browser {

struct DecodedPage {
  std::u16string text;
  Encoding encoding;
};

/// The text of a page's bytes. HTML standard, section 13.2.3: a byte order mark decides, else what the server
/// told (`told`, a label, may be empty), else what a `meta` in the first 1024 bytes declares; else it is
/// UTF-8 if that fits all of it, and Windows-1252 if not. A label that nobody knows counts as none.
DecodedPage decode_page(std::string_view bytes, std::string_view told = {});

/// The text of a style sheet's bytes (CSS Syntax, section 3.2): a byte order mark decides, else what the
/// server told, else the sheet's own @charset; else it is as a page without a declaration, but that where it
/// isn't UTF-8 `environment` comes before Windows-1252: the encoding of the document that asks for it.
std::u16string decode_sheet(std::string_view bytes, std::string_view told, std::string_view environment);

/// The `charset` of a Content-Type, as its label stands there; empty if it has none.
std::string charset_of_type(std::string_view content_type);
/// "text/html" of "Text/HTML; charset=utf-8".
std::string media_type(std::string_view content_type);

/// The encoding that a page declares in its first 1024 bytes, as the label stands there; empty if none.
/// HTML standard, section 13.2.3.2 "prescan a byte stream".
std::string declared_encoding(std::string_view bytes);

bool is_utf8(std::string_view bytes);

}  // namespace tvx::browser
