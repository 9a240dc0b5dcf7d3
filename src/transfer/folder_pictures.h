#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tvx/transfer/ftp_client.h"

namespace tvx::transfer {

/// Fetches pictures of a server's folder one after the other, over a connection of its own, while the message
/// loop goes on with everything else. Those that nobody wants any more aren't fetched, and the one that is on
/// its way then is given up. What can't be had is left out without a word: its row has a name all the same.
class FolderPictures {
 public:
  using Came =
      std::function<void(const std::u16string& name, const std::shared_ptr<const std::string>& file)>;

  FolderPictures(const ClientSurroundings& around, Came came);
  /// Nobody hears of any further picture.
  ~FolderPictures();
  FolderPictures(const FolderPictures&) = delete;
  FolderPictures& operator=(const FolderPictures&) = delete;

  void set_place(platform::RemoteAccount account, platform::NetworkAccess access, std::u16string folder);
  /// These are wanted now, in that order, in place of all that were before.
  void want(std::vector<std::u16string> names);
  void end();

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace tvx::transfer
