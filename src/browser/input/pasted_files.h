#pragma once

#include <string>

#include "tvx/platform/transfer_data.h"

namespace tvx::browser {

/// A picture's bytes as an address: of a new file in `folder`, or with the bytes in it if that is empty or
/// can't be written to.
std::u16string address_of_picture(const platform::TransferData& data, std::u16string_view folder);

/// HTML for the addresses of a transfer. Pictures go into `folder` if there is one.
std::u16string html_of_addresses(const std::vector<std::u16string>& addresses, std::u16string_view folder);

/// Text as HTML: markup in it is escaped, each line stays a line.
std::u16string html_of_text(std::u16string_view text);

}  // namespace tvx::browser
