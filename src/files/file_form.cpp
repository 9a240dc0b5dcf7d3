#include "tvx/files/file_form.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

#include "tvx/base/code_page.h"
#include "tvx/base/strings.h"
#include "tvx/browser/loading/encoding.h"
#include "tvx/files/references.h"

namespace tvx::files {
namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF", ascii = "us-ascii";

LineEnd most_frequent_line_end(std::u16string_view text) {
  std::size_t lf = 0, cr = 0, crlf = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\n') ++lf;
    if (text[i] != u'\r') continue;
    if (i + 1 < text.size() && text[i + 1] == u'\n') {
      ++crlf;
      ++i;
    } else {
      ++cr;
    }
  }
  if (crlf > lf && crlf >= cr) return LineEnd::CrLf;
  return cr > lf ? LineEnd::Cr : LineEnd::Lf;
}

std::u16string with_lf(std::u16string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
    result += text[i] == u'\r' ? u'\n' : text[i];
  }
  return result;
}

/// A carriage return of the document's own, which no plain one in a file could stand for, is a reference.
std::u16string with_line_ends(std::u16string_view text, LineEnd line_end) {
  const std::u16string_view end = line_end == LineEnd::Lf ? u"\n" : line_end == LineEnd::Cr ? u"\r" : u"\r\n";
  std::u16string result;
  result.reserve(text.size() + (end.size() > 1 ? text.size() / 16 : 0));
  for (const char16_t c : text) {
    if (c == u'\n')
      result += end;
    else if (c == u'\r')
      result += u"&#13;";
    else
      result += c;
  }
  return result;
}

bool is_utf16(const FileForm& form) { return form.charset.starts_with("utf-16"); }

std::string encode_utf16(std::u16string_view text, bool big_endian) {
  std::string bytes(big_endian ? "\xFE\xFF" : "\xFF\xFE");
  bytes.reserve(2 + 2 * text.size());
  for (const char16_t c : text) {
    const char high = static_cast<char>(c >> 8), low = static_cast<char>(c & 0xFF);
    bytes += big_endian ? high : low;
    bytes += big_endian ? low : high;
  }
  return bytes;
}

std::string encode_ascii(std::u16string_view text) {
  return to_utf8(with_references(text, [](char32_t c) { return c < 0x80; }));
}

/// Asks the code page about each character once.
class Repertoire {
 public:
  explicit Repertoire(const CodePage& page) : page_(page) {}
  bool holds(char32_t c) {
    if (c < 0x80) return true;
    const auto [place, is_new] = known_.try_emplace(c, false);
    if (is_new) {
      const std::u16string text = to_utf16(c);
      place->second = page_.decode(page_.encode(text)) == text;
    }
    return place->second;
  }

 private:
  const CodePage& page_;
  std::unordered_map<char32_t, bool> known_;
};

std::string encode_in(const CodePage& page, std::u16string_view text) {
  std::string bytes = page.encode(text);
  if (page == CodePage::utf8() || page.decode(bytes) == text) return bytes;
  Repertoire repertoire(page);
  return page.encode(with_references(text, [&](char32_t c) { return repertoire.holds(c); }));
}

std::string encode(std::u16string_view text, const FileForm& form) {
  if (is_utf16(form)) return encode_utf16(text, form.charset == "utf-16be");
  if (form.charset == ascii) return encode_ascii(text);
  const CodePage page = CodePage::by_name(form.charset).value_or(CodePage::utf8());
  std::string bytes = encode_in(page, text);
  if (form.byte_order_mark) return bytes.insert(0, utf8_mark);
  // A guess that comes out otherwise than before, or a declaration that has moved out of the reach of those
  // who look for it, must not cost a character.
  if (browser::decode_page(bytes).encoding.name != page.name()) return encode_ascii(text);
  return bytes;
}

}  // namespace

FileContent read_form(std::string_view bytes) {
  browser::DecodedPage page = browser::decode_page(bytes);
  FileContent content;
  FileForm& form = content.form;
  form.charset = page.encoding.name;
  form.byte_order_mark = page.encoding.byte_order_mark;
  form.declared = form.byte_order_mark || CodePage::by_name(browser::declared_encoding(bytes)).has_value();
  const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  if (!form.declared && std::ranges::all_of(bytes, is_ascii)) form.charset = ascii;
  form.line_end = most_frequent_line_end(page.text);
  content.faithful = !contains(page.text, u"\uFFFD") || encode(page.text, form) == bytes;
  content.text = with_lf(page.text);
  return content;
}

std::string write_form(std::u16string_view markup, const FileForm& form) {
  return encode(with_line_ends(markup, form.line_end), form);
}

}  // namespace tvx::files
