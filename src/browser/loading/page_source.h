#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/base/text_file.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/loading/http_client.h"

/// From an address, as hosts and links give it, to a page.
namespace tvx::browser {

/// The path of a local file, given as "file:" address or as a plain path; nothing for any other address.
std::optional<std::u16string> local_file(std::u16string_view address);

/// "http:" and "https:".
bool is_remote(std::u16string_view address);
bool is_blank_address(std::u16string_view address);

/// The address that a document from there bears: absolute, "file:" for a plain path.
std::u16string document_address(std::u16string_view address);

/// What an address that isn't remote leads to, in the form of a server's answer: 200 and the bytes, or why
/// there are none. "about:blank" is empty. A file of more than `limit` bytes isn't read.
HttpAnswer read_local(std::u16string_view address, std::size_t limit = largest_document);

/// The document of what was found there, "interactive"; null where that is no page but a picture or the like.
/// A plain text becomes a page with one PRE.
std::shared_ptr<HTMLDocument> make_page(const HttpAnswer& found);
/// The same within a document that was made to wait for it.
bool fill_page(HTMLDocument& document, const HttpAnswer& found);

/// A complete document with an empty body.
std::shared_ptr<HTMLDocument> blank_page(std::u16string url);

}  // namespace tvx::browser
