#pragma once

#include <string>
#include <string_view>

#include "tvx/browser/html_document.h"

namespace tvx::core {

/// Every character above 127 as a numeric reference, surrogates one by one; a NUL becomes the reference
/// 65536.
std::u16string numeric_references(std::u16string_view text);

/// Takes `base` out of the addresses of links, images, scripts and image buttons, in the tree itself,
/// wherever it stands in them and without regard to case. A link that has a fragment then is only that
/// fragment: it is taken for one within the document.
void make_addresses_relative(browser::HTMLDocument& document, std::u16string_view base);

}  // namespace tvx::core
