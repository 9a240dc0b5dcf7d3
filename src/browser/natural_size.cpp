#include "tvx/browser/natural_size.h"

#include "tvx/base/base64.h"
#include "tvx/base/strings.h"
#include "tvx/base/url.h"

namespace tvx::browser {

std::optional<std::string> picture_in_address(std::u16string_view address) {
  const std::size_t comma = address.find(u',');
  if (!address.starts_with(u"data:") || comma == address.npos ||
      !ascii_lower(address.substr(0, comma)).ends_with(u";base64"))
    return {};
  return from_base64(to_utf8(address.substr(comma + 1)));
}

std::u16string picture_path(std::u16string_view absolute_address) {
  return local_path(absolute_address).value_or(std::u16string());
}

std::optional<platform::PictureSize> natural_size(std::u16string_view absolute_address) {
  if (const auto bytes = picture_in_address(absolute_address)) return platform::picture_size(*bytes);
  const std::u16string path = picture_path(absolute_address);
  return path.empty() ? std::nullopt : platform::picture_size_of_file(path);
}

}  // namespace tvx::browser
