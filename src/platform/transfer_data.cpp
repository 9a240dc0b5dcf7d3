#include "tvx/platform/transfer_data.h"

#include <algorithm>

#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

std::u16string from_utf16(std::string_view bytes, bool big_endian) {
  std::u16string text(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto first = static_cast<unsigned char>(bytes[2 * i]),
               second = static_cast<unsigned char>(bytes[2 * i + 1]);
    text[i] = static_cast<char16_t>(big_endian ? first << 8 | second : second << 8 | first);
  }
  return text;
}

bool is_image(std::string_view target) { return target.starts_with("image/"); }

// Browsers can show these; others come as one of these too, or not at all.
constexpr std::string_view image_types[] = {"image/png",  "image/jpeg",    "image/gif",
                                            "image/webp", "image/svg+xml", "image/bmp"};

void fetch_image(const TransferSource& source, const std::vector<std::string>& offered, TransferData& data) {
  for (std::string_view type : image_types) {
    if (std::ranges::find(offered, type) == offered.end()) continue;
    data.image = source.read(type);
    data.image_type = type;
    if (!data.image.empty()) return;
  }
  data.image_type.clear();
}

}  // namespace

bool offers(const TransferSource& source, std::string_view target) {
  const std::vector<std::string> offered = source.targets();
  return std::ranges::find(offered, target) != offered.end();
}

TransferData fetch(const TransferSource& source) {
  const std::vector<std::string> offered = source.targets();
  const auto has = [&](std::string_view target) {
    return std::ranges::find(offered, target) != offered.end();
  };
  TransferData data;
  if (has(targets::html)) data.html = decode_transfer_text(source.read(targets::html));
  if (has(targets::text)) data.text = decode_transfer_text(source.read(targets::text));
  if (has(targets::files)) data.uris = addresses_of(source.read(targets::files));
  if (std::ranges::any_of(offered, is_image)) fetch_image(source, offered, data);
  return data;
}

TransferData fetch_text(const TransferSource& source) {
  TransferData data;
  if (offers(source, targets::text)) data.text = decode_transfer_text(source.read(targets::text));
  return data;
}

std::u16string decode_transfer_text(std::string_view bytes) {
  std::u16string text;
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
    text = from_utf16(bytes.substr(2), bytes.front() == '\xFE');
  } else {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    text = from_utf8(bytes);
  }
  while (text.ends_with(u'\0')) text.pop_back();
  return text;
}

std::vector<std::u16string> addresses_of(std::string_view uri_list) {
  std::vector<std::u16string> addresses;
  const std::u16string text = decode_transfer_text(uri_list);
  for (std::u16string_view line : split(text, u'\n')) {
    line = trimmed(line);
    if (!line.empty() && line.front() != u'#') addresses.emplace_back(line);
  }
  return addresses;
}

std::vector<std::string> TransferItemSource::targets() const {
  std::vector<std::string> names;
  for (const TransferItem& item : items_) names.push_back(item.first);
  return names;
}

std::string TransferItemSource::read(std::string_view target) const {
  const auto found = std::ranges::find(items_, target, &TransferItem::first);
  return found == items_.end() ? std::string() : found->second;
}

}  // namespace tvx::platform
