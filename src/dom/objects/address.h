#pragma once

#include <string>
#include <string_view>

#include "tvx/dom/document.h"

/// Addresses in attributes: written as given, read as they are meant.
namespace tvx::dom {

/// What relative addresses are seen from: the first base element with an address, else the document's own. ""
/// where that base is none ("http://"): then addresses stand for what is written.
std::u16string base_address(Document& document, std::u16string_view document_address);
/// The absolute address, or the text as written where there is none. "" stays "".
std::u16string absolute_address(Document& document, std::u16string_view document_address,
                                std::u16string_view written);
/// "File Protocol" for a local file; of other addresses the scheme with its colon ("http:"), "" of none.
std::u16string protocol_of(std::u16string_view address);

}  // namespace tvx::dom
