#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/platform/pictures/picture_size.h"

namespace tvx::browser {

/// The size that a picture of this address has by itself, as its file tells: of local files and of addresses
/// that hold the picture. Nothing for what stands elsewhere.
std::optional<platform::PictureSize> natural_size(std::u16string_view absolute_address);

/// The bytes of a picture that an address holds itself ("data:image/png;base64,..."); nothing for any other.
std::optional<std::string> picture_in_address(std::u16string_view address);

/// The path of the file that an address names; empty where it names none.
std::u16string picture_path(std::u16string_view absolute_address);

}  // namespace tvx::browser
