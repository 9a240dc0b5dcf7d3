#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/core/part.h"

namespace tvx::core {

/// Pictures put into the document: uploaded at once, as local files, or by an address.
class ImageCommands final : public Part {
 public:
  /// What it needs of those who know servers.
  struct Server {
    /// The address under which the uploaded file is seen; empty where it couldn't be uploaded, which the host
    /// has then heard of.
    std::function<std::u16string(const std::u16string& path)> upload;
    std::function<void()> open_library;
  };
  ImageCommands(Context& context, Server server) : Part(context), server_(std::move(server)) {}

  /// The toolbar's button: one of the next two.
  void insert_chosen();
  /// Uploads a picture and inserts its address. Without a path the user chooses.
  void Insert_Image(const std::optional<std::u16string>& localImagePath);
  /// Inserts a picture as a local file, of which the store, if there is one, gets a copy.
  void Insert_Image_NoFTP(const std::optional<std::u16string>& localImagePath);
  /// The picture at an address, as it stands; an empty one opens the library of remote pictures.
  void insertImageFromURL(std::u16string_view ImageURL);
  /// What was chosen in that library.
  void insert_from_library(const std::u16string& url);
  /// How many of the document's pictures are local files.
  std::int32_t CountLocalImages();

 private:
  /// The path that is to be inserted; nothing if there is none, which the host has heard of where it gave
  /// one.
  std::optional<std::u16string> find_picture(const std::optional<std::u16string>& given);
  std::u16string upload(const std::u16string& path);
  /// A picture that the user has chosen gets a line where there is none; one of a host is inserted as the
  /// command says.
  enum class By : bool { Host, User };
  void insert_local(const std::u16string& path, std::u16string_view scheme, By by);
  void insert(const std::u16string& address, By by);

  Server server_;
};

}  // namespace tvx::core
