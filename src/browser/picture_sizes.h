#pragma once

#include <optional>
#include <string_view>
#include <unordered_map>

#include "tvx/dom/node.h"
#include "tvx/platform/pictures/picture_size.h"

namespace tvx::browser {

/// The sizes that the pictures of a document have by themselves, as its view has told: the view has decoded
/// them, wherever they came from. Each is known for the address that its element had then.
class PictureSizes {
 public:
  /// Nothing: the picture couldn't be had.
  void note(const dom::Element& image, std::optional<platform::PictureSize> size);
  std::optional<platform::PictureSize> of(const dom::Element& image) const;

 private:
  struct Known {
    std::size_t address;  // as a hash: it may hold the picture itself, in megabytes
    platform::PictureSize size;
  };
  std::unordered_map<dom::NodeId, Known> sizes_;
};

}  // namespace tvx::browser
