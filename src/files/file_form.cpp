#include "tvx/files/file_form.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

#include "tvx/base/code_page.h"
#include "tvx/base/line_ends.h"
#include "tvx/base/strings.h"
#include "tvx/browser/loading/encoding.h"
#include "tvx/files/references.h"
#include "tvx/source/text_differences.h"

namespace tvx::files {
namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF", ascii = "us-ascii";

/// Whether a unit of the text is one of those. Nothing ends the search within a stride: the compiler makes a
/// few instructions of it then, and mostly there is none.
template <class Text, class Wanted>
bool holds(const Text& text, Wanted wanted) {
  constexpr std::size_t stride = 1024;
  bool found = false;
  std::size_t at = 0;
  for (; at + stride <= text.size() && !found; at += stride)
    for (std::size_t i = 0; i < stride; ++i) found |= wanted(text[at + i]);
  for (; at < text.size() && !found; ++at) found = wanted(text[at]);
  return found;
}

LineEnds line_ends_of(std::u16string_view text) {
  LineEnds ends;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\n') ends.push_back(LineEnd::Lf);
    if (text[i] != u'\r') continue;
    const bool two = i + 1 < text.size() && text[i + 1] == u'\n';
    ends.push_back(two ? LineEnd::CrLf : LineEnd::Cr);
    i += two;
  }
  return ends;
}

LineEnd most_frequent(const LineEnds& ends) {
  const auto count = [&](LineEnd end) { return std::ranges::count(ends, end); };
  const auto lf = count(LineEnd::Lf), crlf = count(LineEnd::CrLf), cr = count(LineEnd::Cr);
  if (crlf > lf && crlf >= cr) return LineEnd::CrLf;
  return cr > lf ? LineEnd::Cr : LineEnd::Lf;
}

std::u16string_view letters_of(LineEnd end) {
  return end == LineEnd::Lf ? u"\n" : end == LineEnd::Cr ? u"\r" : u"\r\n";
}

/// A carriage return of the document's own, which no plain one in a file could stand for, is a reference.
std::u16string with_line_ends(std::u16string_view text, LineEnd usual, const LineEnds& ends) {
  std::u16string result;
  result.reserve(text.size() + (usual == LineEnd::CrLf ? text.size() / 16 : 0));
  std::size_t line = 0;
  for (const char16_t c : text) {
    if (c == u'\n') {
      result += letters_of(line < ends.size() ? ends[line] : usual);
      ++line;
    } else if (c == u'\r') {
      result += u"&#13;";
    } else {
      result += c;
    }
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
  if (!form.declared && !holds(bytes, [](char c) { return static_cast<unsigned char>(c) >= 0x80; }))
    form.charset = ascii;
  const bool lost = holds(page.text, [](char16_t c) { return c == u'\uFFFD'; });
  content.faithful = !lost || encode(page.text, form) == bytes;
  if (!holds(page.text, [](char16_t c) { return c == u'\r'; })) {
    content.text = std::move(page.text);
    return content;
  }
  LineEnds ends = line_ends_of(page.text);
  form.line_end = most_frequent(ends);
  if (std::ranges::any_of(ends, [&](LineEnd end) { return end != form.line_end; }))
    content.line_ends = std::move(ends);
  content.text = with_lf(page.text);
  return content;
}

// Between two letters that both have, a line goes with its own end: what is equal counts from the start, then
// from the end.
LineEnds line_ends_after(std::u16string_view source, const LineEnds& ends, std::u16string_view text) {
  LineEnds result;
  std::size_t at = 0, line = 0;
  const auto keep_to = [&](std::size_t to) {
    for (; at < to; ++at)
      if (source[at] == u'\n') result.push_back(ends[line++]);
  };
  for (const source::Difference& part : source::text_differences(source, text)) {
    keep_to(part.begin);
    std::u16string_view old = source.substr(part.begin, part.end - part.begin);
    std::u16string_view now = text.substr(part.new_begin, part.new_end - part.new_begin);
    const auto same = std::size_t(std::ranges::mismatch(old, now).in1 - old.begin());
    keep_to(part.begin + same);
    old.remove_prefix(same);
    now.remove_prefix(same);
    while (!old.empty() && !now.empty() && old.back() == now.back()) {
      old.remove_suffix(1);
      now.remove_suffix(1);
    }
    const std::size_t old_lines = line + std::size_t(std::ranges::count(old, u'\n'));
    for (auto fresh = std::ranges::count(now, u'\n'); fresh > 0; --fresh)
      result.push_back(line < old_lines ? ends[line++] : result.empty() ? ends.front() : result.back());
    line = old_lines;
    at += old.size();
  }
  keep_to(source.size());
  return result;
}

std::string write_form(std::u16string_view markup, const FileForm& form, const LineEnds& ends) {
  return encode(with_line_ends(markup, form.line_end, ends), form);
}

}  // namespace tvx::files
