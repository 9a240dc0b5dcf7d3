#include "tvx/browser/loading/encoding.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

#include "tvx/base/code_page.h"
#include "tvx/base/strings.h"

namespace tvx::browser {
namespace {

bool is_space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r'; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? char(c + 0x20) : c; }

/// Reads the tags of the prescan. Everything is bytes here; nothing is decoded yet.
class Prescan {
 public:
  explicit Prescan(std::string_view bytes) : bytes_(bytes.substr(0, 1024)) {}

  std::string run() {
    for (; at_ < bytes_.size(); ++at_) {
      if (bytes_[at_] != '<') continue;
      if (starts_with("<!--"))
        skip_comment();
      else if (is_tag("<meta"))
        read_meta();
      else if (starts_tag())
        skip_tag();
      else if (starts_with("<!") || starts_with("</") || starts_with("<?"))
        skip_to('>');
      if (!found_.empty()) return found_;
    }
    return {};
  }

 private:
  struct Attribute {
    std::string name, value;
  };

  bool starts_with(std::string_view text) const {
    if (bytes_.size() - at_ < text.size()) return false;
    return std::ranges::equal(text, bytes_.substr(at_, text.size()),
                              [](char a, char b) { return a == lower(b); });
  }
  bool is_tag(std::string_view text) const {
    const std::size_t end = at_ + text.size();
    return starts_with(text) && end < bytes_.size() && (is_space(bytes_[end]) || bytes_[end] == '/');
  }
  bool starts_tag() const {
    std::size_t i = at_ + 1;
    if (i < bytes_.size() && bytes_[i] == '/') ++i;
    return i < bytes_.size() && is_ascii_alpha(char16_t(static_cast<unsigned char>(bytes_[i])));
  }
  void skip_to(char c) { at_ = std::min(bytes_.find(c, at_), bytes_.size()); }
  void skip_comment() {
    // "<!-->" is a whole comment.
    const std::size_t end = bytes_.find("-->", at_ + 2);
    at_ = end == std::string_view::npos ? bytes_.size() : end + 2;
  }
  void skip_tag() {
    while (at_ < bytes_.size() && !is_space(bytes_[at_]) && bytes_[at_] != '>') ++at_;
    while (read_attribute()) {
    }
  }
  bool more() const { return at_ < bytes_.size(); }

  std::optional<Attribute> read_attribute() {
    while (more() && (is_space(bytes_[at_]) || bytes_[at_] == '/')) ++at_;
    if (!more() || bytes_[at_] == '>') return {};
    Attribute result;
    while (more() && !is_space(bytes_[at_]) && bytes_[at_] != '/' && bytes_[at_] != '>' &&
           (bytes_[at_] != '=' || result.name.empty()))
      result.name += lower(bytes_[at_++]);
    std::size_t behind = at_;
    while (behind < bytes_.size() && is_space(bytes_[behind])) ++behind;
    if (behind >= bytes_.size() || bytes_[behind] != '=') return result;
    at_ = behind + 1;
    while (more() && is_space(bytes_[at_])) ++at_;
    read_value(result.value);
    return result;
  }

  void read_value(std::string& value) {
    if (!more()) return;
    const char quote = bytes_[at_];
    if (quote == '"' || quote == '\'') {
      for (++at_; more() && bytes_[at_] != quote; ++at_) value += lower(bytes_[at_]);
      ++at_;
      return;
    }
    while (more() && !is_space(bytes_[at_]) && bytes_[at_] != '>') value += lower(bytes_[at_++]);
  }

  void read_meta() {
    at_ += 5;
    bool got_pragma = false;
    std::optional<bool> need_pragma;
    std::string charset;
    while (const auto attribute = read_attribute()) {
      if (attribute->name == "http-equiv") got_pragma = attribute->value == "content-type";
      if (attribute->name == "charset" && !attribute->value.empty()) {
        charset = attribute->value;
        need_pragma = false;
      }
      if (attribute->name == "content" && charset.empty()) {
        charset = charset_in(attribute->value);
        if (!charset.empty()) need_pragma = true;
      }
    }
    // A tag that the 1024 bytes cut off declares nothing.
    if (more() && need_pragma && (!*need_pragma || got_pragma)) found_ = charset;
  }

  /// "Extracting a character encoding from a meta element", HTML standard, section 2.5.
  static std::string charset_in(std::string_view content) {
    for (std::size_t at = content.find("charset"); at != std::string_view::npos;
         at = content.find("charset", at)) {
      at += 7;
      while (at < content.size() && is_space(content[at])) ++at;
      if (at >= content.size() || content[at] != '=') continue;
      ++at;
      while (at < content.size() && is_space(content[at])) ++at;
      if (at >= content.size()) return {};
      if (content[at] == '"' || content[at] == '\'') {
        const std::size_t end = content.find(content[at], at + 1);
        return end == std::string_view::npos ? "" : std::string(content.substr(at + 1, end - at - 1));
      }
      std::size_t end = at;
      while (end < content.size() && !is_space(content[end]) && content[end] != ';') ++end;
      return std::string(content.substr(at, end - at));
    }
    return {};
  }

  std::string_view bytes_;
  std::size_t at_ = 0;
  std::string found_;
};

DecodedPage decode_utf16(std::string_view bytes, bool big_endian) {
  DecodedPage page;
  page.encoding = {big_endian ? "utf-16be" : "utf-16le", true};
  page.text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]),
               second = static_cast<unsigned char>(bytes[i + 1]);
    page.text += big_endian ? char16_t(first << 8 | second) : char16_t(second << 8 | first);
  }
  return page;
}

}  // namespace

std::string declared_encoding(std::string_view bytes) { return Prescan(bytes).run(); }

bool is_utf8(std::string_view bytes) {
  const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* end = at + bytes.size();
  const auto is_tail = [&](int place, unsigned char low = 0x80, unsigned char high = 0xBF) {
    return at + place < end && at[place] >= low && at[place] <= high;
  };
  // The well-formed sequences of the Unicode standard, table 3-7.
  while (at < end) {
    std::uint64_t eight = 0;
    if (end - at >= 8) std::memcpy(&eight, at, 8);
    if (end - at >= 8 && (eight & 0x8080'8080'8080'8080) == 0) {
      at += 8;  // most text is ASCII
    } else if (*at < 0x80) {
      ++at;
    } else if (*at >= 0xC2 && *at <= 0xDF && is_tail(1)) {
      at += 2;
    } else if (*at >= 0xE0 && *at <= 0xEF &&
               is_tail(1, *at == 0xE0 ? 0xA0 : 0x80, *at == 0xED ? 0x9F : 0xBF) && is_tail(2)) {
      at += 3;
    } else if (*at >= 0xF0 && *at <= 0xF4 &&
               is_tail(1, *at == 0xF0 ? 0x90 : 0x80, *at == 0xF4 ? 0x8F : 0xBF) && is_tail(2) && is_tail(3)) {
      at += 4;
    } else {
      return false;
    }
  }
  return true;
}

namespace {

std::optional<DecodedPage> decode_marked(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return DecodedPage{from_utf8(bytes.substr(3)), {"utf-8", true}};
  if (bytes.starts_with("\xFE\xFF")) return decode_utf16(bytes.substr(2), true);
  if (bytes.starts_with("\xFF\xFE")) return decode_utf16(bytes.substr(2), false);
  return {};
}

/// A declaration that could be read in the bytes themselves is no UTF-16, whatever it says.
std::optional<CodePage> page_declared(std::string_view label) {
  const auto page = CodePage::by_name(label);
  return page && page->name().starts_with("utf-16") ? CodePage::utf8() : page;
}

/// CSS Syntax, section 3.2: these very bytes, and nothing before them.
std::string_view sheet_charset(std::string_view bytes) {
  constexpr std::string_view opening = "@charset \"";
  if (!bytes.starts_with(opening)) return {};
  const std::string_view rest = bytes.substr(opening.size(), 100);
  const std::size_t end = rest.find('"');
  return end == std::string_view::npos || rest.substr(end, 2) != "\";" ? std::string_view()
                                                                       : rest.substr(0, end);
}

}  // namespace

DecodedPage decode_page(std::string_view bytes, std::string_view told) {
  if (auto page = decode_marked(bytes)) return *std::move(page);
  std::optional<CodePage> page = CodePage::by_name(told);
  if (!page) page = page_declared(declared_encoding(bytes));
  if (!page) page = is_utf8(bytes) ? CodePage::utf8() : CodePage::windows_1252();
  return {page->decode(bytes), {page->name(), false}};
}

std::u16string decode_sheet(std::string_view bytes, std::string_view told, std::string_view environment) {
  if (auto page = decode_marked(bytes)) return std::move(page->text);
  std::optional<CodePage> page = CodePage::by_name(told);
  if (!page) page = page_declared(sheet_charset(bytes));
  if (page) return page->decode(bytes);
  if (is_utf8(bytes)) return from_utf8(bytes);
  page = CodePage::by_name(environment);
  return (page && *page != CodePage::utf8() ? *page : CodePage::windows_1252()).decode(bytes);
}

std::string media_type(std::string_view content_type) {
  content_type = content_type.substr(0, content_type.find(';'));
  while (!content_type.empty() && is_space(content_type.front())) content_type.remove_prefix(1);
  while (!content_type.empty() && is_space(content_type.back())) content_type.remove_suffix(1);
  std::string type(content_type);
  for (char& c : type) c = lower(c);
  return type;
}

std::string charset_of_type(std::string_view content_type) {
  for (std::size_t at = content_type.find(';'); at != std::string_view::npos;
       at = content_type.find(';', at)) {
    ++at;
    while (at < content_type.size() && is_space(content_type[at])) ++at;
    constexpr std::string_view name = "charset=";
    const std::string_view rest = content_type.substr(at);
    if (rest.size() < name.size() ||
        !std::ranges::equal(name, rest.substr(0, name.size()), [](char a, char b) { return a == lower(b); }))
      continue;
    std::string_view value = rest.substr(name.size());
    if (value.starts_with('"')) return std::string(value.substr(1, value.find('"', 1) - 1));
    value = value.substr(0, value.find(';'));
    while (!value.empty() && is_space(value.back())) value.remove_suffix(1);
    return std::string(value);
  }
  return {};
}

}  // namespace tvx::browser
