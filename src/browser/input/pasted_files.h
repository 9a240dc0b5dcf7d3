#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/platform/transfer_data.h"

namespace tvx::browser {

/// A picture's bytes as an address: of a file in `folder`, or with the bytes in it if that is empty or can't
/// be written to. The file's name tells its content, so that on a server too no picture takes the place of
/// another one.
std::u16string address_of_picture(const platform::TransferData& data, std::u16string_view folder);

/// HTML, and the addresses of the local pictures in it.
struct PastedFiles {
  std::u16string html;
  std::vector<std::u16string> pictures;
};
/// The addresses of a transfer. Pictures go into `folder` if there is one.
PastedFiles html_of_addresses(const std::vector<std::u16string>& addresses, std::u16string_view folder);

/// Text as HTML: markup in it is escaped, each line stays a line.
std::u16string html_of_text(std::u16string_view text);

}  // namespace tvx::browser
