#pragma once

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>
#include <utility>

namespace tvx {

/// A file of the system, closed in the end.
class OpenFile {
 public:
  explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
  ~OpenFile() { close(); }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  bool is_open() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }

  bool write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
  }

  /// Appends all that is left to `bytes`, which then holds at most one byte more than `limit`: more means
  /// that there is more. Fastest where room for all and one byte is reserved. False if reading breaks off.
  bool read(std::string& bytes, std::size_t limit) {
    constexpr std::size_t step = 1 << 16;
    while (bytes.size() <= limit) {
      const std::size_t size = bytes.size(), room = bytes.capacity() - size;
      const bool is_reserved = room > 0 && bytes.capacity() > step;
      bytes.resize(std::min(size + (is_reserved ? room : std::max(step, size / 2)), limit + 1));
      const ssize_t got = ::read(descriptor_, bytes.data() + size, bytes.size() - size);
      bytes.resize(size + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
      if (got == 0) return true;
      if (got < 0 && errno != EINTR) return false;
    }
    return true;
  }

  bool close() {
    const int descriptor = std::exchange(descriptor_, -1);
    return descriptor < 0 || ::close(descriptor) == 0;
  }

 private:
  int descriptor_;
};

}  // namespace tvx
