#include "tvx/browser/input/pasted_files.h"

#include <filesystem>

#include "tvx/base/base64.h"
#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/base/text_file.h"
#include "tvx/base/url.h"
#include "tvx/browser/loading/encoding.h"
#include "tvx/platform/pictures/picture_store.h"

namespace tvx::browser {
namespace {

namespace fs = std::filesystem;

struct PictureType {
  std::string_view type;
  std::u16string_view extension;
};
constexpr PictureType picture_types[] = {
    {"image/png", u"png"},   {"image/jpeg", u"jpg"}, {"image/jpeg", u"jpeg"},  {"image/gif", u"gif"},
    {"image/webp", u"webp"}, {"image/bmp", u"bmp"},  {"image/svg+xml", u"svg"}};

std::u16string extension_of(std::u16string_view path) {
  path = path.substr(0, path.find_first_of(u"?#"));
  const std::u16string_view name = FileNameFromPath(path);
  const std::size_t dot = name.rfind(u'.');
  return dot == name.npos ? std::u16string() : ascii_lower(name.substr(dot + 1));
}

bool is_picture_name(std::u16string_view path) {
  const std::u16string extension = extension_of(path);
  for (const PictureType& row : picture_types)
    if (row.extension == extension) return true;
  return false;
}

std::u16string with_slash(std::u16string_view folder) {
  std::u16string path(folder);
  if (!path.ends_with(u'/') && !path.ends_with(u'\\')) path += u'/';
  return path;
}

std::u16string file_address(std::u16string_view path) {
  std::error_code ignored;
  const fs::path absolute = fs::absolute(file_system_path(path), ignored);
  return file_url(from_utf8(absolute.lexically_normal().string()));
}

/// The same bytes have the same name, others another one (FNV-1a, 64 bits).
std::u16string name_of_content(std::string_view bytes) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
  std::u16string digits;
  for (int shift = 60; shift >= 0; shift -= 4) digits += u"0123456789abcdef"[hash >> shift & 15];
  return digits;
}

/// As an image that a user picks: a file of that name which is there already stays.
std::u16string stored_picture(const std::u16string& path, std::u16string_view folder) {
  std::u16string stored = path;
  if (!folder.empty()) attempt([&] { stored = platform::store_picture(path, folder); });
  return file_address(stored);
}

std::u16string escaped(std::u16string_view text) {
  std::u16string html;
  html.reserve(text.size());
  for (char16_t c : text) {
    switch (c) {
      case u'&': html += u"&amp;"; break;
      case u'<': html += u"&lt;"; break;
      case u'>': html += u"&gt;"; break;
      case u'"': html += u"&quot;"; break;
      default: html += c;
    }
  }
  return html;
}

std::u16string picture(std::u16string_view address) { return u"<IMG src=\"" + escaped(address) + u"\">"; }

std::u16string link(std::u16string_view address, std::u16string_view text) {
  return u"<A href=\"" + escaped(address) + u"\">" + escaped(text) + u"</A>";
}

bool is_page_name(std::u16string_view path) {
  const std::u16string extension = extension_of(path);
  return extension == u"html" || extension == u"htm" || extension == u"xhtml";
}

/// A file of text isn't so long that nobody can mean to see it, and has no NUL.
constexpr std::size_t longest_text = std::size_t{64} << 20;
bool is_text(std::string_view bytes) { return bytes.find('\0') == bytes.npos; }

std::u16string html_of_file(const std::u16string& path, const std::u16string& address) {
  const auto bytes = read_bytes(path, longest_text);
  if (!bytes || !is_text(*bytes)) return link(address, FileNameFromPath(path));
  const std::u16string text = decode_page(*bytes).text;
  return is_page_name(path) ? text : html_of_text(text);
}

}  // namespace

std::u16string html_of_text(std::u16string_view text) {
  std::u16string html;
  for (std::size_t at = 0; at <= text.size();) {
    const std::size_t end = std::min(text.find_first_of(u"\r\n", at), text.size());
    if (end == text.size() && at == end && at > 0) break;  // the end of the last line
    if (at > 0) html += u"<BR>";
    html += escaped(text.substr(at, end - at));
    at = end + (text.substr(end).starts_with(u"\r\n") ? 2 : 1);
  }
  return html;
}

std::u16string address_of_picture(const platform::TransferData& data, std::u16string_view folder) {
  std::u16string_view extension = u"png";
  for (const PictureType& row : picture_types)
    if (row.type == data.image_type) {
      extension = row.extension;
      break;
    }
  if (!folder.empty()) {
    const std::u16string path =
        with_slash(folder) + u"pasted-" + name_of_content(data.image) + u'.' + std::u16string(extension);
    if (platform::is_local_file(path) || attempt([&] { save_atomically(path, data.image); }))
      return file_address(path);
  }
  return from_utf8("data:" + (data.image_type.empty() ? "image/png" : data.image_type) + ";base64," +
                   to_base64(data.image));
}

PastedFiles html_of_addresses(const std::vector<std::u16string>& addresses, std::u16string_view folder) {
  PastedFiles files;
  for (const std::u16string& address : addresses) {
    std::u16string one;
    const auto path = local_path(address);
    if (path && is_picture_name(*path)) {
      files.pictures.push_back(stored_picture(*path, folder));
      one = picture(files.pictures.back());
    } else if (path) {
      one = html_of_file(*path, address);
    } else {
      one = is_picture_name(address) ? picture(address) : link(address, address);
    }
    if (!files.html.empty() && !one.empty()) files.html += u"<BR>";
    files.html += one;
  }
  return files;
}

}  // namespace tvx::browser
