#include "tvx/browser/input/pasted_pictures.h"

#include <algorithm>
#include <filesystem>

#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"
#include "tvx/base/url.h"
#include "tvx/browser/input/pasted_files.h"
#include "tvx/browser/input/rich_text_pictures.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t largest_picture = std::size_t{64} << 20;

bool starts_with(std::u16string_view address, std::u16string_view scheme) {
  return address.size() > scheme.size() &&
         equals_ignoring_ascii_case(address.substr(0, scheme.size()), scheme);
}

/// A file that its program takes away again, or that is another machine's.
bool is_passing_file(const std::u16string& address) {
  const auto path = local_path(address);
  if (!path) return true;
  if (contains(*path, u"msohtmlclip")) return true;
  const std::u16string_view bare = path->starts_with(u'/') ? std::u16string_view(*path).substr(1) : *path;
  if (bare.size() > 2 && is_ascii_alpha(bare[0]) && (bare[1] == u':' || bare[1] == u'|')) return true;
  std::error_code ignored;
  const std::u16string temporary = from_utf8(fs::temp_directory_path(ignored).string());
  return !temporary.empty() && path->starts_with(temporary);
}

bool names_picture_elsewhere(const std::u16string& address) {
  if (starts_with(address, u"cid:") || starts_with(address, u"blob:")) return true;
  return starts_with(address, u"file:") && is_passing_file(address);
}

/// "image001.png" of "cid:image001.png@01D7" and of "file:///C:/clip/image001.png".
std::u16string file_name_of(std::u16string address) {
  if (starts_with(address, u"cid:")) address = address.substr(4, address.find(u'@') - 4);
  address = address.substr(0, address.find_first_of(u"?#"));
  const std::size_t slash = address.find_last_of(u"/\\");
  return slash == address.npos ? address : address.substr(slash + 1);
}

std::string type_of_bytes(std::string_view bytes) {
  if (bytes.starts_with("\x89PNG")) return "image/png";
  if (bytes.starts_with("\xFF\xD8\xFF")) return "image/jpeg";
  if (bytes.starts_with("GIF8")) return "image/gif";
  if (bytes.starts_with("BM")) return "image/bmp";
  if (bytes.size() > 12 && bytes.starts_with("RIFF") && bytes.substr(8, 4) == "WEBP") return "image/webp";
  return {};
}

PastedPicture read_picture(const std::u16string& address) {
  const auto path = local_path(address);
  if (!path) return {};
  auto bytes = read_bytes(*path, largest_picture);
  if (!bytes) return {};
  std::string type = type_of_bytes(*bytes);
  return type.empty() ? PastedPicture{} : PastedPicture{std::move(*bytes), std::move(type)};
}

/// The pictures that go with the names in the markup, in their order.
class Album {
 public:
  Album(const platform::TransferData& data, const platform::TransferSource* source,
        const std::vector<std::u16string>& names)
      : data_(data), source_(source), names_(names) {}

  PastedPicture picture(std::size_t index) {
    const std::u16string& address = names_[index];
    if (PastedPicture own = read_picture(address); !own.bytes.empty()) return own;
    for (const std::u16string& uri : data_.uris)
      if (equals_ignoring_ascii_case(file_name_of(uri), file_name_of(address)))
        if (PastedPicture found = read_picture(uri); !found.bytes.empty()) return found;
    if (const PastedPicture* found = of_rich_text(index)) return *found;
    if (names_.size() == 1 && !data_.image.empty()) return {data_.image, data_.image_type};
    return {};
  }

 private:
  /// The rich text names none: as many pictures as the markup has are those, one by one.
  const PastedPicture* of_rich_text(std::size_t index) {
    if (!std::exchange(read_, true) && source_) {
      for (const std::string_view target : {std::string_view("text/rtf"), std::string_view("application/rtf"),
                                            std::string_view("Rich Text Format")})
        if (rich_.empty() && platform::offers(*source_, target))
          rich_ = pictures_of_rich_text(source_->read(target));
    }
    if (rich_.size() != names_.size()) return nullptr;
    return rich_[index].bytes.empty() ? nullptr : &rich_[index];
  }

  const platform::TransferData& data_;
  const platform::TransferSource* source_;
  const std::vector<std::u16string>& names_;
  std::vector<PastedPicture> rich_;
  bool read_ = false;
};

/// Where the picture can't be shown its text is, and the author sees which one is to be put in.
void leave_its_text(dom::Element& image, const std::u16string& address) {
  if (image.attribute_or_empty(dom::names::alt).empty())
    dom::set_attribute(image, dom::names::alt, file_name_of(address));
}

}  // namespace

std::vector<std::u16string> take_named_pictures(dom::DocumentFragment& content,
                                                const platform::TransferData& data,
                                                const platform::TransferSource* source,
                                                std::u16string_view folder) {
  std::vector<dom::Ref<dom::Element>> images;
  std::vector<std::u16string> names;
  for (dom::Node* node = content.first_child(); node; node = dom::next_in_order(*node, &content)) {
    auto* element = node->is(dom::Tag::Img) ? static_cast<dom::Element*>(node) : nullptr;
    std::u16string address(element ? element->attribute_or_empty(dom::names::src) : std::u16string_view());
    if (address.empty() || !names_picture_elsewhere(address)) continue;
    images.emplace_back(element);
    names.push_back(std::move(address));
  }
  std::vector<std::u16string> local;
  Album album(data, source, names);
  for (std::size_t i = 0; i < images.size(); ++i) {
    PastedPicture picture = album.picture(i);
    if (picture.bytes.empty()) {
      leave_its_text(*images[i], names[i]);
      continue;
    }
    platform::TransferData one;
    one.image = std::move(picture.bytes);
    one.image_type = std::move(picture.type);
    const std::u16string address = address_of_picture(one, folder);
    if (local_path(address)) local.push_back(address);
    dom::set_attribute(*images[i], dom::names::src, address);
  }
  return local;
}

}  // namespace tvx::browser
