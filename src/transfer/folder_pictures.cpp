#include "tvx/transfer/folder_pictures.h"

#include <algorithm>
#include <set>
#include <span>
#include <utility>

#include "tvx/platform/message_loop.h"

namespace tvx::transfer {
namespace {

/// Whatever a listing says of its size.
constexpr std::size_t largest_file = std::size_t{16} << 20, block_size = std::size_t{64} << 10;
/// A server that refuses a second connection, or drops it again and again, is left in peace.
constexpr int most_failures = 3;

}  // namespace

struct FolderPictures::State : std::enable_shared_from_this<State> {
  State(const ClientSurroundings& given, Came given_came) : around(given), came(std::move(given_came)) {}

  const ClientSurroundings around;
  Came came;
  platform::RemoteAccount account;
  platform::NetworkAccess access;
  std::u16string folder;
  std::vector<std::u16string> wanted;
  std::set<std::u16string> tried;
  std::u16string current;  // the one on its way
  std::unique_ptr<platform::NetworkSession> session;
  std::unique_ptr<platform::RemoteConnection> connection;
  int failures = 0;
  bool awaited = false, ended = false;  // a turn of the loop is awaited, or under way

  bool still_wanted(const std::u16string& name) const {
    return std::ranges::find(wanted, name) != wanted.end();
  }
  bool has_to_end() const { return ended || (around.ended && around.ended()); }

  void start() {
    if (has_to_end() || failures >= most_failures || wanted.empty() || std::exchange(awaited, true)) return;
    around.loop.post([weak = weak_from_this()] {
      if (const auto self = weak.lock()) self->run();
    });
  }

  // Each fetch lets the loop run, in which other ones may become wanted, or none.
  void run() {
    while (!has_to_end() && failures < most_failures) {
      const auto next =
          std::ranges::find_if(wanted, [this](const std::u16string& name) { return !tried.contains(name); });
      if (next == wanted.end()) break;
      fetch(*next);
    }
    awaited = false;
    if (has_to_end()) drop_connection();
  }

  void fetch(std::u16string name) {
    current = name;
    auto file = std::make_shared<std::string>();
    const bool arrived = attempt([&] {
      connect();
      read(name, *file);
    });
    current.clear();
    if (has_to_end()) return;
    const bool wanted_still = still_wanted(name);
    if (arrived && wanted_still) {
      failures = 0;
      tried.insert(name);
      if (!file->empty()) came(name, file);
    } else if (!arrived) {
      // What was given up on purpose is no failure, and may be wanted again.
      drop_connection();
      if (wanted_still) {
        ++failures;
        tried.insert(name);
      }
    }
  }

  void connect() {
    if (connection) return;
    session = around.network.open(access);
    connection = session->connect(account);
    if (!folder.empty()) connection->set_current_directory(folder);
  }

  void read(const std::u16string& name, std::string& file) {
    connection->open_file(name, platform::RemoteAccess::Read, platform::RemoteTransferType::Binary);
    std::string block(block_size, '\0');
    while (true) {
      if (has_to_end() || !still_wanted(name))
        throw RuntimeError(platform::network_errors::cancelled, u"Nobody wants it any more");
      const std::size_t count = connection->read(std::span(block.data(), block.size()));
      file.append(block, 0, count);
      if (file.size() > largest_file) {
        file.clear();
        throw RuntimeError(platform::network_errors::cancelled, u"It is too large");
      }
      if (count < block.size()) break;
    }
    connection->close_file();
  }

  void drop_connection() {
    const auto old_connection = std::move(connection);
    const auto old_session = std::move(session);
    if (old_connection) old_connection->close();
  }

  void interrupt() {
    if (current.empty()) return;
    if (connection)
      connection->interrupt();
    else if (session)
      session->interrupt();
  }
};

FolderPictures::FolderPictures(const ClientSurroundings& around, Came came)
    : state_(std::make_shared<State>(around, std::move(came))) {}

FolderPictures::~FolderPictures() { end(); }

void FolderPictures::set_place(platform::RemoteAccount account, platform::NetworkAccess access,
                               std::u16string folder) {
  state_->account = std::move(account);
  state_->access = std::move(access);
  state_->folder = std::move(folder);
}

void FolderPictures::want(std::vector<std::u16string> names) {
  if (names.empty()) state_->tried.clear();  // the list is about to be another one
  state_->wanted = std::move(names);
  if (!state_->current.empty() && !state_->still_wanted(state_->current)) state_->interrupt();
  state_->start();
}

// A fetch that is under way holds the state until it has given up.
void FolderPictures::end() {
  if (std::exchange(state_->ended, true)) return;
  state_->wanted.clear();
  state_->came = [](const std::u16string&, const std::shared_ptr<const std::string>&) {};
  if (state_->current.empty())
    state_->drop_connection();
  else
    state_->interrupt();
}

}  // namespace tvx::transfer
