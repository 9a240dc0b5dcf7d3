#include "tvx/browser/picture_sizes.h"

#include <functional>

namespace tvx::browser {
namespace {

std::size_t address_of(const dom::Element& image) {
  return std::hash<std::u16string_view>()(image.attribute_or_empty(dom::names::src));
}

}  // namespace

void PictureSizes::note(const dom::Element& image, std::optional<platform::PictureSize> size) {
  if (size)
    sizes_.insert_or_assign(image.id(), Known{address_of(image), *size});
  else
    sizes_.erase(image.id());
}

std::optional<platform::PictureSize> PictureSizes::of(const dom::Element& image) const {
  const auto known = sizes_.find(image.id());
  if (known == sizes_.end() || known->second.address != address_of(image)) return {};
  return known->second.size;
}

}  // namespace tvx::browser
