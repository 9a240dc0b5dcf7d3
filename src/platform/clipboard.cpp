#include "tvx/platform/clipboard.h"

#include <algorithm>
#include <vector>

#include "tvx/base/fault.h"
#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

constexpr std::int32_t first_registered = 0xC000;

std::vector<std::u16string>& registered_names() {
  static std::vector<std::u16string> names;
  return names;
}

struct Row {
  ClipboardFormat format;
  std::string_view target;
};
constexpr Row rows[] = {
    {ClipboardFormat::text, targets::text},         {ClipboardFormat::oem_text, targets::text},
    {ClipboardFormat::unicode_text, targets::text}, {ClipboardFormat::rich_text, targets::rich_text},
    {ClipboardFormat::link, targets::link},         {ClipboardFormat::file_list, targets::files},
};

bool is_image_format(ClipboardFormat format) {
  return format == ClipboardFormat::bitmap || format == ClipboardFormat::dib;
}

std::string first_image(const std::vector<std::string>& offered) {
  const auto found =
      std::ranges::find_if(offered, [](std::string_view name) { return name.starts_with("image/"); });
  return found == offered.end() ? std::string() : *found;
}

std::string encode_text(std::u16string_view text, ClipboardFormat format) {
  if (format != ClipboardFormat::link) return to_utf8(text);
  std::string bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
  return bytes;
}

std::u16string decode_link(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) return decode_transfer_text(bytes);
  // Without a mark it is UTF-16 in the machine's order; some write UTF-8.
  if (bytes.find('\0') == bytes.npos) return decode_transfer_text(bytes);
  return decode_transfer_text("\xFF\xFE" + std::string(bytes));
}

}  // namespace

ClipboardFormat RegisterClipboardFormat(std::u16string_view name) {
  if (const auto result = fault_point(u"RegisterClipboardFormat")) return ClipboardFormat(*result);
  if (name.empty()) return ClipboardFormat::none;
  auto& names = registered_names();
  const auto found =
      std::ranges::find_if(names, [&](const auto& known) { return equals_ignoring_ascii_case(known, name); });
  const auto place = static_cast<std::int32_t>(found - names.begin());
  if (found == names.end()) names.emplace_back(name);
  return ClipboardFormat(first_registered + place);
}

std::u16string registered_format_name(ClipboardFormat format) {
  const std::int32_t place = number_of(format) - first_registered;
  const auto& names = registered_names();
  return place >= 0 && place < static_cast<std::int32_t>(names.size())
             ? names[static_cast<std::size_t>(place)]
             : std::u16string();
}

std::string target_of(ClipboardFormat format) {
  for (const Row& row : rows)
    if (row.format == format) return std::string(row.target);
  return to_utf8(registered_format_name(format));
}

bool Clipboard::OpenClipboard() {
  if (open_) return false;
  if (const auto result = fault_point(u"OpenClipboard"); result && *result == 0) return false;
  open_ = true;
  return true;
}

bool Clipboard::EmptyClipboard() {
  if (!open_) return false;
  pending_.emplace();
  return true;
}

bool Clipboard::SetClipboardData(ClipboardFormat format, std::string bytes) {
  if (const auto result = fault_point(u"SetClipboardData"); result && *result == 0) return false;
  const std::string target = is_image_format(format) ? "image/png" : target_of(format);
  return !target.empty() && set_data(target, std::move(bytes));
}

bool Clipboard::set_data(std::string_view target, std::string bytes) {
  if (!open_) return false;
  if (!pending_) {  // not emptied: what is there stays beside it
    pending_.emplace();
    for (const std::string& name : targets()) pending_->emplace_back(name, read(name));
  }
  std::erase_if(*pending_, [&](const TransferItem& item) { return item.first == target; });
  pending_->emplace_back(std::string(target), std::move(bytes));
  return true;
}

void Clipboard::CloseClipboard() {
  open_ = false;
  if (!pending_) return;
  TransferItems items = std::move(*pending_);
  pending_.reset();
  publish(std::move(items));
}

bool Clipboard::IsClipboardFormatAvailable(ClipboardFormat format) const {
  const std::vector<std::string> offered = targets();
  if (is_image_format(format)) return !first_image(offered).empty();
  const std::string target = target_of(format);
  return !target.empty() && std::ranges::find(offered, target) != offered.end();
}

std::optional<std::string> Clipboard::GetClipboardData(ClipboardFormat format) const {
  const std::vector<std::string> offered = targets();
  const std::string target = is_image_format(format) ? first_image(offered) : target_of(format);
  if (target.empty() || std::ranges::find(offered, target) == offered.end()) return {};
  return read(target);
}

void Clipboard::Clear() { put({}); }

void Clipboard::SetText(std::u16string_view text, ClipboardFormat format) {
  if (!OpenClipboard()) return;
  SetClipboardData(format, encode_text(text, format));
  CloseClipboard();
}

std::u16string Clipboard::GetText(ClipboardFormat format) const {
  const std::optional<std::string> bytes = GetClipboardData(format);
  if (!bytes) return {};
  return format == ClipboardFormat::link ? decode_link(*bytes) : decode_transfer_text(*bytes);
}

bool Clipboard::put(TransferItems items) {
  if (!OpenClipboard()) return false;
  EmptyClipboard();
  pending_ = std::move(items);
  CloseClipboard();
  return true;
}

}  // namespace tvx::platform
