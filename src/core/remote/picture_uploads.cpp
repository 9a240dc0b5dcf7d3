#include "tvx/core/remote/picture_uploads.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/private_folder.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"
#include "tvx/base/url.h"
#include "tvx/browser/html_document.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/platform/message_loop.h"
#include "tvx/platform/pictures/picture_store.h"

namespace tvx::core {
namespace {

/// Between two looks whether another transfer has ended.
constexpr std::int64_t patience = 200;

/// Of pictures that come as bytes, until they are on a server.
std::u16string own_folder() {
  const std::string state = state_folder();
  const std::string folder = state + "/pictures/";
  return !state.empty() && make_private_folder(folder) ? from_utf8(folder) : std::u16string();
}

std::vector<dom::Ref<dom::Element>> images_with(browser::HTMLDocument& document,
                                                const std::u16string& address) {
  std::vector<dom::Ref<dom::Element>> found;
  const auto images = dom::collection_of(document.tree(), dom::CollectionKind::Images);
  for (dom::Element* image : images->elements())
    if (image->attribute_or_empty(dom::names::src) == address) found.emplace_back(image);
  return found;
}

}  // namespace

PictureUploads::~PictureUploads() { sweep(); }

std::u16string PictureUploads::folder() const {
  if (!properties_.LocalImageStore.empty() || !properties_.UploadImages) return properties_.LocalImageStore;
  return own_folder();
}

void PictureUploads::pictures_came(const std::weak_ptr<browser::HTMLDocument>& document,
                                   const std::vector<std::u16string>& addresses) {
  if (!properties_.UploadImages) return;
  for (const std::u16string& address : addresses) {
    const bool known = std::ranges::any_of(waiting_, [&](const Picture& picture) {
      return picture.address == address && picture.document.lock() == document.lock();
    });
    if (!known) waiting_.push_back({document, address});
  }
  show_under_way();
  start(0);
}

void PictureUploads::start(std::int64_t delay) {
  if (waiting_.empty() || std::exchange(awaited_, true)) return;
  surroundings().loop.post_delayed(delay, [this, alive = std::weak_ptr<bool>(alive_)] {
    if (alive.lock()) run();
  });
}

// An upload lets the loop run: more pictures may come meanwhile, and the control may end.
void PictureUploads::run() {
  const KeepAlive alive(context_);
  const std::weak_ptr<bool> here = alive_;
  while (!waiting_.empty() && !context_.terminated()) {
    if (server_.busy && server_.busy()) {
      awaited_ = false;
      return start(patience);
    }
    const Picture picture = waiting_.front();
    const bool go_on = upload(picture);
    if (here.expired()) return;
    if (!waiting_.empty()) waiting_.pop_front();
    if (!go_on) waiting_.clear();
    show_under_way();
  }
  awaited_ = false;
}

// A server that doesn't answer isn't asked again for each of a hundred pictures.
bool PictureUploads::upload(const Picture& picture) {
  const auto path = local_path(picture.address);
  if (!properties_.UploadImages) return false;
  if (!path || !platform::is_local_file(*path)) return true;
  const std::weak_ptr<bool> here = alive_;
  std::u16string url;
  if (server_.upload) attempt([&] { url = server_.upload(*path); });
  if (here.expired() || context_.terminated()) return false;
  if (url.empty()) return !platform::is_local_file(*path);
  give_address(picture, url);
  uploaded_.insert(*path);
  return true;
}

// It belongs to the step that brought the picture: undoing that takes both away.
void PictureUploads::give_address(const Picture& picture, const std::u16string& url) {
  const auto document = picture.document.lock();
  if (!document) return;
  const auto images = images_with(*document, picture.address);
  if (images.empty()) return;
  const std::u16string escaped = EncodeURL(url);
  attempt([&] {
    const dom::UndoStep step(document->tree().journal(), u"Upload image", dom::StepJoin::LastStep);
    for (const auto& image : images)
      dom::set_attribute(*image, dom::names::src, escaped.empty() ? url : escaped);
  });
  mark_changed();
}

void PictureUploads::show_under_way() {
  const auto& document = DOM();
  if (!document) return;
  std::vector<std::u16string> addresses;
  for (const Picture& picture : waiting_)
    if (picture.document.lock() == document) addresses.push_back(picture.address);
  document->set_under_way(std::move(addresses));
}

// Our own files of pictures that are on the server, unless a document still shows them.
void PictureUploads::sweep() {
  const std::u16string own = own_folder();
  for (const std::u16string& path : uploaded_) {
    if (own.empty() || !path.starts_with(own)) continue;
    if (DOM() && !images_with(*DOM(), file_url(path)).empty()) continue;
    unlink(file_system_path(path).c_str());
  }
}

}  // namespace tvx::core
