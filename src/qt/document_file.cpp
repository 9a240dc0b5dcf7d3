#include "qt/document_file.h"

#include <algorithm>

#include "base/code_page.h"
#include "base/error.h"
#include "base/text_file.h"
#include "browser/encoding.h"
#include "dom/parse.h"
#include "dom/serialise.h"
#include "dom/tree.h"

namespace tvx::qt {
namespace {

constexpr std::u16string_view comment_start = u"<!--", comment_end = u"-->";

bool starts_with_doctype(std::u16string_view text) {
  return text.size() >= 9 && equals_ignoring_ascii_case(text.substr(0, 9), u"<!doctype");
}

/// How much of the text stands before the document itself: white space, comments, the document type and
/// processing instructions, as they are written.
std::size_t length_before_document(std::u16string_view text) {
  std::size_t at = 0;
  for (;;) {
    while (at < text.size() && is_ascii_space(text[at])) ++at;
    const std::u16string_view rest = text.substr(at);
    std::size_t end = rest.npos;
    if (rest.starts_with(comment_start)) {
      end = rest.find(comment_end, comment_start.size());
      if (end != rest.npos) end += comment_end.size();
    } else if (starts_with_doctype(rest) || rest.starts_with(u"<?")) {
      end = rest.find(u'>');
      if (end != rest.npos) ++end;
    }
    if (end == rest.npos) return at;
    at += end;
  }
}

std::u16string with_lf(std::u16string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r') {
      if (i + 1 < text.size() && text[i + 1] == u'\n') continue;
      result += u'\n';
    } else {
      result += text[i];
    }
  }
  return result;
}

bool mostly_crlf(std::u16string_view text) {
  std::size_t lines = 0, pairs = 0;
  for (std::size_t at = text.find(u'\n'); at != text.npos; at = text.find(u'\n', at + 1)) {
    ++lines;
    if (at > 0 && text[at - 1] == u'\r') ++pairs;
  }
  return pairs * 2 > lines;
}

/// A text in a code page, with references for the characters that it doesn't have.
std::string encode(const CodePage& page, std::u16string_view text) {
  std::string bytes = page.encode(text);
  if (page == CodePage::utf8() || page.decode(bytes) == text) return bytes;
  bytes.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair = is_high_surrogate(text[i]) && i + 1 < text.size() && is_low_surrogate(text[i + 1]);
    const std::u16string_view one = text.substr(i, pair ? 2 : 1);
    const std::string encoded = page.encode(one);
    if (text[i] < 0x80 || page.decode(encoded) == one) {
      bytes += encoded;
    } else {
      const std::int64_t code =
          pair ? 0x10000 + ((text[i] - 0xD800) << 10) + (text[i + 1] - 0xDC00) : std::int64_t(text[i]);
      bytes += "&#" + to_utf8(to_text(code)) + ";";
    }
    i += pair;
  }
  return bytes;
}

}  // namespace

DocumentFile DocumentFile::read(std::u16string_view path) {
  const auto bytes = read_bytes(path);
  if (!bytes) throw RuntimeError(errors::file_not_found, u"The file can't be read: " + std::u16string(path));
  const browser::DecodedPage page = browser::decode_page(*bytes);
  DocumentFile file;
  file.path_ = path;
  file.encoding_ = page.encoding;
  file.crlf_ = mostly_crlf(page.text);
  file.before_ = with_lf(page.text.substr(0, length_before_document(page.text)));

  const auto document = dom::parse_document(page.text);
  for (const dom::Element* element : document->all()) {
    if (element->is(dom::Tag::Title) && file.title_.empty()) file.title_ = dom::text_content(*element);
    if (element->is(dom::Tag::Base) && file.base_.empty()) {
      file.base_ = element->attribute_or_empty(dom::names::href);
    }
  }
  file.behind_.clear();
  const dom::Node* root = document->document_element();
  for (const dom::Node* node = root ? root->next_sibling() : nullptr; node; node = node->next_sibling()) {
    file.behind_ += dom::serialise_node(*node);
  }
  if (page.text.ends_with(u'\n')) file.behind_ += u'\n';
  return file;
}

std::string DocumentFile::bytes_of(std::u16string_view document) const {
  std::u16string text = before_;
  text.append(document).append(behind_);
  if (crlf_) {
    std::u16string lines;
    lines.reserve(text.size() + text.size() / 32);
    for (const char16_t c : text) {
      if (c == u'\n') lines += u'\r';
      lines += c;
    }
    text = std::move(lines);
  }
  const auto page = CodePage::by_name(encoding_.name);
  const std::string mark = encoding_.byte_order_mark && encoding_.name == "utf-8" ? "\xEF\xBB\xBF" : "";
  return mark + encode(page.value_or(CodePage::utf8()), text);
}

void DocumentFile::save(std::u16string_view document) const { save_atomically(path_, bytes_of(document)); }

}  // namespace tvx::qt
