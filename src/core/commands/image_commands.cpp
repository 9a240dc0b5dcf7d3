#include "tvx/core/commands/image_commands.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/base/url.h"
#include "tvx/browser/browser.h"
#include "tvx/browser/input/writer_command.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/objects/media.h"
#include "tvx/platform/common_dialogs.h"
#include "tvx/platform/pictures/picture_store.h"

namespace tvx::core {
namespace {

constexpr std::int32_t no_such_file = 1, insertion_failed = 102;

platform::FileDialog picture_dialog(platform::WindowHandle owner) {
  return {.filters = {{u"GIF (*.GIF)", u"*.GIF;*.gif"},
                      {u"JPEG(*.JPG)", u"*.jpg;*.JPG"},
                      {u"PNG (*.PNG)", u"*.png;*.PNG"},
                      {u"All Image Files", u"*.GIF;*.gif;*.jpg;*.JPG;*.png;*.png"}},
          .title = u"Select an Image",
          .preset = u"*.gif",
          .owner = owner,
          .of_pictures = true};
}

/// A picture of that address is fetched anew. The view keeps none, but scripts let the step fail.
void DeleteUrlCacheEntry(std::u16string_view) {
  attempt([] { fault_point(u"DeleteUrlCacheEntry"); });
}

}  // namespace

void ImageCommands::insert_chosen() {
  if (properties_.UploadImages)
    Insert_Image(std::nullopt);
  else
    Insert_Image_NoFTP(std::nullopt);
}

std::optional<std::u16string> ImageCommands::find_picture(const std::optional<std::u16string>& given) {
  if (!given) {
    std::u16string chosen(TrimNul(surroundings().dialogs.ShowOpen(picture_dialog(surroundings().hwnd))));
    if (chosen.empty() || context_.terminated()) return std::nullopt;
    return chosen;
  }
  if (!platform::is_local_file(TrimNul(*given))) {
    raise_error(no_such_file, u"Local Image Path not Found");
    return std::nullopt;
  }
  return std::u16string(TrimNul(*given));
}

void ImageCommands::insert(const std::u16string& address, By by) {
  DeleteUrlCacheEntry(address);
  const bool done = by == By::User ? browser::press_command(browser_document(), u"insertimage", address)
                                   : browser_document().execCommand(u"insertimage", false, address);
  if (!done) throw RuntimeError(errors::invalid_call, u"The image can't be inserted");
}

std::u16string ImageCommands::upload(const std::u16string& path) {
  return server_.upload ? server_.upload(path) : std::u16string();
}

// A file that has gone since it was chosen, or couldn't be uploaded, leaves a document that counts as
// changed.
void ImageCommands::Insert_Image(const std::optional<std::u16string>& localImagePath) {
  const KeepAlive alive(context_);
  const bool came_to_its_end = attempt([&] {
    const auto path = find_picture(localImagePath);
    if (!path) return;
    if (platform::is_local_file(*path)) {
      const std::u16string url = upload(*path);
      if (context_.terminated()) return;
      if (!url.empty()) insert(EncodeURL(url), localImagePath ? By::Host : By::User);
    }
    mark_changed();
  });
  if (!came_to_its_end) raise_error(insertion_failed, u"Insert Image Failed");
}

void ImageCommands::insert_local(const std::u16string& path, std::u16string_view scheme, By by) {
  const std::u16string target =
      properties_.LocalImageStore.empty() ? path : platform::store_picture(path, properties_.LocalImageStore);
  std::u16string url(scheme);
  if (scheme.empty()) {
    url = target;
    std::replace(url.begin(), url.end(), u'\\', u'/');
  } else {
    url = platform::local_picture_address(target);
  }
  insert(EncodeURL(url), by);
}

void ImageCommands::Insert_Image_NoFTP(const std::optional<std::u16string>& localImagePath) {
  const KeepAlive alive(context_);
  const bool came_to_its_end = attempt([&] {
    const auto path = find_picture(localImagePath);
    if (!path) return;
    const bool is_address = localImagePath && (contains(*path, u"file:///") || contains(*path, u"http://"));
    const By by = localImagePath ? By::Host : By::User;
    if (platform::is_local_file(*path)) insert_local(*path, is_address ? u"" : u"file:///", by);
    // The flag first, other than where a picture is uploaded.
    properties_.IsDirty = true;
    context_.PropertyChanged(u"DocumentHTML");
    context_.state_changed();
  });
  if (!came_to_its_end) raise_error(insertion_failed, u"Insert Image Failed");
}

// Here the address goes in as it is given: who gives an address has escaped it.
void ImageCommands::insertImageFromURL(std::u16string_view ImageURL) {
  const KeepAlive alive(context_);
  if (ImageURL.empty()) {
    if (server_.open_library) server_.open_library();
    return;
  }
  insert_from_library(std::u16string(ImageURL));
}

void ImageCommands::insert_from_library(const std::u16string& url) {
  const KeepAlive alive(context_);
  DeleteUrlCacheEntry(EncodeURL(url));
  attempt([&] { browser_document().execCommand(u"insertimage", false, url); });
  mark_changed();
}

// Asked for after each change in a window: what stands in the page itself may be long, and is absolute.
std::int32_t ImageCommands::CountLocalImages() {
  std::int32_t count = 0;
  attempt([&] {
    browser::HTMLDocument& shown = document();
    const auto images = dom::collection_of(shown.tree(), dom::CollectionKind::Images);
    for (dom::Element* image : images->elements()) {
      const std::u16string_view written = image->attribute_or_empty(dom::names::src);
      const bool in_page = equals_ignoring_ascii_case(written.substr(0, 5), u"data:");
      attempt([&] {
        const std::u16string src =
            in_page ? std::u16string(written) : dom::ImageObject(*image, shown.url()).src();
        count += contains(ascii_lower(src), u"file://");
      });
    }
  });
  return count;
}

}  // namespace tvx::core
