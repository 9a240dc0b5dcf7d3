#include "tvx/automation/methods.h"
#include "tvx/automation/session.h"
#include "tvx/base/base64.h"
#include "tvx/base/error.h"
#include "tvx/platform/clipboard.h"

namespace tvx::automation {

namespace {

using platform::ClipboardFormat;
using platform::TransferItems;
namespace targets = platform::targets;

[[noreturn]] void bad_params(const char* text) {
  throw ProtocolError(ProtocolError::invalid_params, std::string("Invalid params: ") + text);
}

std::string bytes_of(const Json& value) {
  if (!value.is_string()) bad_params("a format of bytes takes base64");
  const std::optional<std::string> bytes = from_base64(value.get<std::string>());
  if (!bytes) bad_params("a format of bytes takes base64");
  return *bytes;
}

std::string link_bytes(const std::u16string& text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

std::string list_bytes(const Json& value) {
  if (!value.is_array()) bad_params("\"15\" takes a list of addresses");
  std::string list;
  for (const Json& address : value) list += to_utf8(text_of(address)) + "\r\n";
  return list;
}

/// The name on the desktop for a number or a name that a client uses.
std::string target_named(const std::string& key) {
  const std::optional<std::int64_t> number = parse_integer(from_utf8(key));
  if (!number) return key;
  if (*number == number_of(ClipboardFormat::bitmap) || *number == number_of(ClipboardFormat::dib))
    return "image/png";
  const std::string target = platform::target_of(ClipboardFormat(static_cast<std::int32_t>(*number)));
  if (target.empty()) throw RuntimeError(errors::invalid_call, u"No such format: " + from_utf8(key));
  return target;
}

std::string content_of(const std::string& target, const Json& value) {
  if (target == targets::files) return list_bytes(value);
  if (target == targets::link) return link_bytes(text_of(value));
  return target.starts_with("text/") ? to_utf8(text_of(value)) : bytes_of(value);
}

TransferItems items_of(const Json& set) {
  TransferItems items;
  for (const auto& [key, value] : set.items()) {
    const std::string target = target_named(key);
    std::erase_if(items, [&](const auto& item) { return item.first == target; });
    items.emplace_back(target, content_of(target, value));
  }
  return items;
}

void tell_text(Json& told, const platform::Clipboard& clipboard, ClipboardFormat format) {
  if (clipboard.IsClipboardFormatAvailable(format))
    told[std::to_string(number_of(format))] = json_text(clipboard.GetText(format));
}

/// Every format by its number, as programs ask for it; what has none by its name.
Json formats_of(const platform::Clipboard& clipboard) {
  Json told = Json::object();
  for (ClipboardFormat format :
       {ClipboardFormat::text, ClipboardFormat::oem_text, ClipboardFormat::unicode_text,
        ClipboardFormat::rich_text, ClipboardFormat::link})
    tell_text(told, clipboard, format);
  for (ClipboardFormat format : {ClipboardFormat::bitmap, ClipboardFormat::dib})
    if (const auto bytes = clipboard.GetClipboardData(format))
      told[std::to_string(number_of(format))] = to_base64(*bytes);
  if (const auto bytes = clipboard.GetClipboardData(ClipboardFormat::file_list)) {
    Json list = Json::array();
    for (const std::u16string& address : platform::addresses_of(*bytes)) list.push_back(json_text(address));
    told["15"] = std::move(list);
  }
  for (const std::string& target : clipboard.targets()) {
    if (target == targets::text || target == targets::rich_text || target == targets::link ||
        target == targets::files)
      continue;
    told[target] = target == targets::html ? json_text(platform::decode_transfer_text(clipboard.read(target)))
                                           : Json(to_base64(clipboard.read(target)));
  }
  return told;
}

Json clipboard(Session& session, const Params& params) {
  platform::Clipboard& clipboard = session.instance_of(params).control().clipboard();
  if (params.given("set")) {
    const Json& set = params.raw("set");
    if (!set.is_object()) bad_params("\"set\" must be an object of formats");
    clipboard.publish(items_of(set));
  }
  return {{"formats", formats_of(clipboard)}};
}

constexpr Method rows[] = {{"clipboard", clipboard}};

}  // namespace

std::span<const Method> clipboard_methods() { return rows; }

}  // namespace tvx::automation
