#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tvx/core/part.h"

namespace tvx::core {

/// While `UploadImages` is on, pictures that are pasted or dropped stand in the document at once, as local
/// files, and are uploaded one after the other when the gesture is over; each then gets its new address. What
/// couldn't be uploaded stays local, and can be uploaded with all others later.
class PictureUploads final : public Part {
 public:
  struct Server {
    /// The new address; empty where the file couldn't be uploaded, which the host has then heard of.
    std::function<std::u16string(const std::u16string& path)> upload;
    /// Whether another transfer is under way.
    std::function<bool()> busy;
  };
  PictureUploads(Context& context, Server server) : Part(context), server_(std::move(server)) {}
  ~PictureUploads();

  /// Where pictures that come as bytes are kept: the store, else a folder of our own while they are to be
  /// uploaded. Empty: in the page itself.
  std::u16string folder() const;
  void pictures_came(const std::weak_ptr<browser::HTMLDocument>& document,
                     const std::vector<std::u16string>& addresses);
  std::size_t waiting() const { return waiting_.size(); }

 private:
  struct Picture {
    std::weak_ptr<browser::HTMLDocument> document;
    std::u16string address;
  };
  void start(std::int64_t delay);
  void run();
  /// False: it is of no use to try the next one.
  bool upload(const Picture& picture);
  void give_address(const Picture& picture, const std::u16string& url);
  void show_under_way();
  void sweep();

  Server server_;
  std::deque<Picture> waiting_;  // the one that is under way first
  std::set<std::u16string> uploaded_;
  bool awaited_ = false;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tvx::core
