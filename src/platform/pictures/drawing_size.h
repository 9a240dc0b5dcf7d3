#pragma once

#include <optional>
#include <string_view>

#include "tvx/platform/pictures/picture_size.h"

namespace tvx::platform {

/// Whether a file that starts so may hold an SVG drawing.
bool may_be_drawing(std::string_view start);
/// The natural size of an SVG drawing, read from its first element; see picture_size().
std::optional<PictureSize> drawing_size(std::string_view bytes);

}  // namespace tvx::platform
