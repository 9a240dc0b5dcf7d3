#include "tvx/clipboard/html_format.h"

#include "tvx/base/code_page.h"
#include "tvx/base/fault.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"

namespace tvx::clipboard {
namespace {

using platform::ClipboardFormat;

constexpr std::u16string_view header =
    u"Version:1.0\r\n"
    u"StartHTML:aaaaaaaaaa\r\n"
    u"EndHTML:bbbbbbbbbb\r\n"
    u"StartFragment:cccccccccc\r\n"
    u"EndFragment:dddddddddd\r\n";
static_assert(header.size() == 105);
constexpr std::u16string_view start_mark = u"<!--StartFragment -->", end_mark = u"<!--EndFragment -->";

std::u16string ten_digits(std::size_t number) {
  const std::u16string digits = to_text(static_cast<std::int64_t>(number));
  return std::u16string(digits.size() < 10 ? 10 - digits.size() : 0, u'0') + digits;
}

/// Each placeholder is replaced wherever it stands, in the fragment too.
std::u16string block_of(std::u16string_view prefix, std::u16string_view fragment,
                        std::u16string_view suffix) {
  std::u16string text(header);
  text += prefix;
  text += fragment;
  text += suffix;
  const std::size_t start = header.size() + prefix.size();
  const std::pair<std::u16string_view, std::size_t> positions[] = {{u"aaaaaaaaaa", header.size()},
                                                                   {u"bbbbbbbbbb", text.size()},
                                                                   {u"cccccccccc", start},
                                                                   {u"dddddddddd", start + fragment.size()}};
  for (const auto& [placeholder, position] : positions)
    text = ReplaceAll(placeholder, ten_digits(position), text, true);
  return text;
}

/// The number after the first `name`, at most ten digits of it; 0 if there is none.
std::size_t place_behind(std::u16string_view name, std::u16string_view text) {
  const std::size_t found = text.find(name);
  if (found == text.npos) return 0;
  std::u16string_view digits = trimmed(text.substr(found + name.size(), 10));
  std::size_t number = 0;
  for (char16_t c : digits) {
    if (!is_ascii_digit(c)) break;
    number = number * 10 + static_cast<std::size_t>(c - u'0');
  }
  return number;
}

std::u16string fragment_of(std::u16string_view text) {
  const std::size_t start = place_behind(u"StartFragment:", text), end = place_behind(u"EndFragment:", text);
  if (start == 0 || end == 0 || end < start || start >= text.size()) return {};
  return std::u16string(text.substr(start, end - start));
}

}  // namespace

ClipboardFormat GetHTMLFormatId() {
  static ClipboardFormat format = ClipboardFormat::none;
  if (format == ClipboardFormat::none) format = platform::RegisterClipboardFormat(u"HTML Format");
  return format;
}

void PutHTMLOnClipboard(platform::Clipboard& clipboard, const std::u16string& fragment,
                        std::u16string& prefix, std::u16string& suffix) {
  const ClipboardFormat format = GetHTMLFormatId();
  if (format == ClipboardFormat::none) return;
  prefix += start_mark;
  suffix.insert(0, end_mark);
  // All of its bytes are written, also where they are more than the characters that the positions count: our
  // own reader then gets back what was put there.
  std::string bytes = CodePage::system().encode(block_of(prefix, fragment, suffix));
  if (!clipboard.OpenClipboard()) return;
  if (const auto memory = fault_point(u"GlobalAlloc"); !memory || *memory != 0) {
    clipboard.EmptyClipboard();
    clipboard.SetClipboardData(format, std::move(bytes));
    clipboard.set_data(platform::targets::html, to_utf8(fragment));
  }
  clipboard.CloseClipboard();
}

std::u16string GetHTMLFromClipboard(platform::Clipboard& clipboard) {
  const ClipboardFormat format = GetHTMLFormatId();
  if (format == ClipboardFormat::none || !clipboard.OpenClipboard()) return {};
  const std::optional<std::string> bytes = clipboard.GetClipboardData(format);
  std::u16string fragment;
  if (bytes) fragment = fragment_of(CodePage::system().decode(*bytes));
  clipboard.CloseClipboard();
  return fragment;
}

}  // namespace tvx::clipboard
