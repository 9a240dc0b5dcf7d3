#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "browser/html_document.h"

/// From an address, as hosts and links give it, to a page.
namespace tvx::browser {

/// The path of a local file, given as "file:" address or as a plain path; nothing for any other address.
std::optional<std::u16string> local_file(std::u16string_view address);

/// The address that a document from there bears: absolute, "file:" for a plain path.
std::u16string document_address(std::u16string_view address);

/// The bytes behind an address; nothing where they can't be had. Only local files can, for now.
std::optional<std::string> read_address(std::u16string_view address);

/// The document of an address, "interactive"; null where it can't be had. "about:blank" is an empty one.
std::shared_ptr<HTMLDocument> load_page(std::u16string_view address);

/// A complete document with an empty body.
std::shared_ptr<HTMLDocument> blank_page(std::u16string url);

}  // namespace tvx::browser
