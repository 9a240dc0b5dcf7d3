#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tvx::browser {

/// A picture's bytes and its media type; no bytes where it is of a kind that no browser shows.
struct PastedPicture {
  std::string bytes, type;
};

/// The pictures of a rich text (RTF), each once, in the order of the text. Those that bullets are made of,
/// and the second form that a picture has for programs that can't read the first, are none.
std::vector<PastedPicture> pictures_of_rich_text(std::string_view text);

}  // namespace tvx::browser
