#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tvx::platform {

/// In pixels, each at least 1.
struct PictureSize {
  std::int32_t width = 0, height = 0;

  bool operator==(const PictureSize&) const = default;
};

/// The size at which a browser shows a picture that nobody gives a size, read from the file itself: of PNG,
/// GIF, JPEG (turned as its camera was held), WebP and SVG. What a file is called says nothing. An SVG
/// drawing without a size fits into 300 by 150, as in browsers. Nothing for what is no such picture, or is
/// broken before its size is told.
///
/// Safe for any bytes: little is read, however large the file is or claims to be, and nothing is decoded.
std::optional<PictureSize> picture_size(std::string_view bytes);
/// The same of a file; nothing too if it can't be read or isn't a regular file.
std::optional<PictureSize> picture_size_of_file(std::u16string_view path);

}  // namespace tvx::platform
