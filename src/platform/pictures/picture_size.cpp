#include "tvx/platform/pictures/picture_size.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>
#include <string>

#include "tvx/base/open_file.h"
#include "tvx/base/text_file.h"
#include "tvx/platform/pictures/drawing_size.h"

namespace tvx::platform {
namespace {

/// A file's bytes, read where they are asked for.
class Bytes {
 public:
  virtual ~Bytes() = default;
  /// The bytes from `offset` on, at most `count`; fewer at the file's end.
  virtual std::string read(std::uint64_t offset, std::size_t count) = 0;
};

class BytesInMemory final : public Bytes {
 public:
  explicit BytesInMemory(std::string_view bytes) : bytes_(bytes) {}
  std::string read(std::uint64_t offset, std::size_t count) override {
    return offset < bytes_.size() ? std::string(bytes_.substr(offset, count)) : std::string();
  }

 private:
  std::string_view bytes_;
};

class BytesInFile final : public Bytes {
 public:
  explicit BytesInFile(const std::string& path)
      : file_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {}

  bool is_open() const {
    struct stat status;
    return file_.is_open() && fstat(file_.descriptor(), &status) == 0 && S_ISREG(status.st_mode);
  }
  std::string read(std::uint64_t offset, std::size_t count) override {
    std::string bytes(count, '\0');
    std::size_t size = 0;
    while (size < count) {
      const ssize_t got =
          pread(file_.descriptor(), bytes.data() + size, count - size, static_cast<off_t>(offset + size));
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) break;
      size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
    return bytes;
  }

 private:
  OpenFile file_;
};

/// Numbers of several bytes in a piece of a file.
class Piece {
 public:
  explicit Piece(std::string_view bytes) : bytes_(bytes) {}
  std::size_t size() const { return bytes_.size(); }
  bool starts_with(std::string_view start) const { return bytes_.starts_with(start); }
  bool has(std::size_t at, std::string_view text) const {
    return at <= bytes_.size() && bytes_.substr(at).starts_with(text);
  }
  std::uint32_t byte(std::size_t at) const { return static_cast<unsigned char>(bytes_[at]); }
  std::uint32_t big16(std::size_t at) const { return byte(at) << 8 | byte(at + 1); }
  std::uint32_t big32(std::size_t at) const { return big16(at) << 16 | big16(at + 2); }
  std::uint32_t little16(std::size_t at) const { return byte(at) | byte(at + 1) << 8; }
  std::uint32_t little24(std::size_t at) const { return little16(at) | byte(at + 2) << 16; }
  std::uint32_t little32(std::size_t at) const { return little16(at) | little16(at + 2) << 16; }

 private:
  std::string_view bytes_;
};

std::optional<PictureSize> size_of(std::uint32_t width, std::uint32_t height) {
  constexpr auto most = std::uint32_t(std::numeric_limits<std::int32_t>::max());
  if (width == 0 || height == 0 || width > most || height > most) return std::nullopt;
  return PictureSize{std::int32_t(width), std::int32_t(height)};
}

std::optional<PictureSize> size_of_png(const Piece& head) {
  if (head.size() < 24 || head.big32(8) != 13 || !head.has(12, "IHDR")) return std::nullopt;
  return size_of(head.big32(16), head.big32(20));
}

std::optional<PictureSize> size_of_gif(const Piece& head) {
  if (head.size() < 10 || !(head.has(3, "87a") || head.has(3, "89a"))) return std::nullopt;
  return size_of(head.little16(6), head.little16(8));
}

std::optional<PictureSize> size_of_webp(const Piece& head) {
  if (head.has(12, "VP8X") && head.size() >= 30) return size_of(head.little24(24) + 1, head.little24(27) + 1);
  if (head.has(12, "VP8L") && head.size() >= 25 && head.byte(20) == 0x2F) {
    const std::uint32_t sizes = head.little32(21);
    return size_of((sizes & 0x3FFF) + 1, (sizes >> 14 & 0x3FFF) + 1);
  }
  // The upper two bits are a scale that viewers don't apply.
  if (head.has(12, "VP8 ") && head.size() >= 30 && head.has(23, "\x9D\x01\x2A"))
    return size_of(head.little16(26) & 0x3FFF, head.little16(28) & 0x3FFF);
  return std::nullopt;
}

// --- JPEG: a chain of segments, each with a marker and its length ---

constexpr std::size_t most_segments = 1000;

/// Whether the camera's note says that the picture lies on its side.
bool lies_on_its_side(std::string_view segment) {
  constexpr std::string_view name{"Exif\0\0", 6};
  if (!segment.starts_with(name)) return false;
  const Piece note(segment.substr(name.size()));
  const bool little = note.starts_with("II*"), big = note.has(0, std::string_view{"MM\0*", 4});
  if (note.size() < 8 || (!little && !big)) return false;
  const auto number16 = [&](std::size_t at) { return little ? note.little16(at) : note.big16(at); };
  const std::size_t table = little ? note.little32(4) : note.big32(4);
  if (table + 2 > note.size()) return false;
  const std::size_t entries = number16(table);
  for (std::size_t i = 0, at = table + 2; i < entries && at + 12 <= note.size(); ++i, at += 12) {
    constexpr std::uint32_t orientation = 0x0112, short_number = 3;
    if (number16(at) != orientation) continue;
    return number16(at + 2) == short_number && number16(at + 8) >= 5 && number16(at + 8) <= 8;
  }
  return false;
}

/// The markers of a frame, which tells the size: C0 to CF but for three that are something else.
bool tells_size(std::uint32_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}
bool has_no_length(std::uint32_t marker) { return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8); }

std::optional<PictureSize> size_of_jpeg(Bytes& bytes) {
  constexpr std::uint32_t fill = 0xFF, start_of_data = 0xDA, end = 0xD9, application_1 = 0xE1;
  bool on_its_side = false;
  std::uint64_t at = 2;
  for (std::size_t count = 0; count < most_segments; ++count) {
    const std::string start = bytes.read(at, 9);
    const Piece segment(start);
    if (segment.size() < 4 || segment.byte(0) != fill) return std::nullopt;
    const std::uint32_t marker = segment.byte(1);
    if (marker == fill || has_no_length(marker)) {
      at += marker == fill ? 1 : 2;
      continue;
    }
    const std::uint32_t length = segment.big16(2);
    if (marker == start_of_data || marker == end || length < 2) return std::nullopt;
    if (tells_size(marker)) {
      if (segment.size() < 9) return std::nullopt;
      const std::uint32_t height = segment.big16(5), width = segment.big16(7);
      return on_its_side ? size_of(height, width) : size_of(width, height);
    }
    if (marker == application_1) on_its_side |= lies_on_its_side(bytes.read(at + 4, length - 2));
    at += 2 + length;
  }
  return std::nullopt;
}

std::optional<PictureSize> size_of_picture(Bytes& bytes) {
  // As much as the longest fixed head; a drawing's first element may come after a longer prologue.
  constexpr std::size_t longest_head = 30, longest_prologue = std::size_t{256} << 10;
  const std::string start = bytes.read(0, longest_head);
  const Piece head(start);
  if (head.starts_with("\x89PNG\r\n\x1A\n")) return size_of_png(head);
  if (head.starts_with("GIF8")) return size_of_gif(head);
  if (head.starts_with("\xFF\xD8\xFF")) return size_of_jpeg(bytes);
  if (head.starts_with("RIFF") && head.has(8, "WEBP")) return size_of_webp(head);
  if (!may_be_drawing(start)) return std::nullopt;
  return drawing_size(bytes.read(0, longest_prologue));
}

}  // namespace

std::optional<PictureSize> picture_size(std::string_view bytes) {
  BytesInMemory source(bytes);
  return size_of_picture(source);
}

std::optional<PictureSize> picture_size_of_file(std::u16string_view path) {
  const std::string name = file_system_path(path);
  struct stat status;
  // Opening alone can make a device do something.
  if (name.empty() || name.find('\0') != name.npos || stat(name.c_str(), &status) != 0 ||
      !S_ISREG(status.st_mode))
    return std::nullopt;
  BytesInFile file(name);
  return file.is_open() ? size_of_picture(file) : std::nullopt;
}

}  // namespace tvx::platform
