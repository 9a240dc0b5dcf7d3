#include "tvx/platform/html_block.h"

#include <array>
#include <cstdio>

#include "tvx/base/code_page.h"
#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

constexpr std::string_view before_fragment = "<html><body>\r\n<!--StartFragment-->";
constexpr std::string_view after_fragment = "<!--EndFragment-->\r\n</body>\r\n</html>";
constexpr std::size_t positions_size = 105;
constexpr std::string_view source_name = "SourceURL:";

std::string positions(std::size_t start, std::size_t end, std::size_t start_fragment,
                      std::size_t end_fragment) {
  std::array<char, positions_size + 1> text{};
  std::snprintf(
      text.data(), text.size(),
      "Version:1.0\r\nStartHTML:%010zu\r\nEndHTML:%010zu\r\nStartFragment:%010zu\r\nEndFragment:%010zu\r\n",
      start, end, start_fragment, end_fragment);
  return text.data();
}

/// The number after a name in the header.
std::optional<std::size_t> place_named(std::string_view block, std::string_view name) {
  const std::size_t at = block.substr(0, 1024).find(name);
  if (at == block.npos) return {};
  std::size_t number = 0, digits = 0;
  for (std::size_t i = at + name.size();
       i < block.size() && digits < 15 && block[i] >= '0' && block[i] <= '9'; ++i) {
    number = number * 10 + static_cast<std::size_t>(block[i] - '0');
    ++digits;
  }
  if (digits == 0) return {};
  return number;
}

/// UTF-8 as it should be; what programs of old wrote in the system's own code page.
std::u16string decode(std::string_view bytes) {
  std::u16string text = from_utf8(bytes);
  if (text.find(u'\uFFFD') == text.npos || CodePage::system() == CodePage::utf8()) return text;
  return CodePage::system().decode(bytes);
}

}  // namespace

std::string html_block(std::u16string_view fragment, std::u16string_view source) {
  const std::string content = to_utf8(fragment);
  std::string source_line;
  if (!source.empty()) source_line = std::string(source_name) + to_utf8(source) + "\r\n";
  const std::size_t page = positions_size + source_line.size();
  const std::size_t start = page + before_fragment.size(), end = start + content.size();
  std::string block = positions(page, end + after_fragment.size(), start, end);
  block.reserve(end + after_fragment.size());
  block += source_line;
  block += before_fragment;
  block += content;
  block += after_fragment;
  return block;
}

std::optional<std::u16string> page_of_html_block(std::string_view block) {
  while (block.ends_with('\0')) block.remove_suffix(1);
  const auto start = place_named(block, "StartFragment:"), end = place_named(block, "EndFragment:");
  if (!start || !end) return {};
  std::size_t page = place_named(block, "StartHTML:").value_or(0);
  if (page == 0 || page > block.size()) page = *start;
  if (block.find("<!--StartFragment") != block.npos && block.find("<!--EndFragment") != block.npos &&
      page <= *start)
    return decode(block.substr(page));
  if (*start > *end || *end > block.size()) return {};
  return u"<!--StartFragment-->" + decode(block.substr(*start, *end - *start)) + u"<!--EndFragment-->";
}

std::u16string source_of_html_block(std::string_view block) {
  const std::string_view header = block.substr(0, block.find('<'));
  const std::size_t at = header.find(source_name);
  if (at == header.npos) return {};
  const std::string_view line = header.substr(at + source_name.size());
  return std::u16string(trimmed(from_utf8(line.substr(0, line.find_first_of("\r\n")))));
}

}  // namespace tvx::platform
