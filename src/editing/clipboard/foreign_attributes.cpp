#include "tvx/editing/clipboard/foreign_attributes.h"

#include <algorithm>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx::editing {

using dom::Element;
using dom::Tag;

namespace {

/// What a browser would read of an address: no control characters in it, none and no blanks before it.
std::u16string as_browsers_read(std::u16string_view address, std::size_t longest) {
  std::u16string read;
  for (char16_t c : address) {
    if (c == u'\t' || c == u'\n' || c == u'\r' || (read.empty() && c <= u' ')) continue;
    read += ascii_lower(c);
    if (read.size() == longest) break;
  }
  return read;
}

/// Where a declaration ends: at a ";" outside of strings and parentheses.
std::size_t end_of_declaration(std::u16string_view style, std::size_t at) {
  char16_t quote = 0;
  int depth = 0;
  for (; at < style.size(); ++at) {
    const char16_t c = style[at];
    if (c == u'\\') {
      ++at;
    } else if (quote) {
      if (c == quote) quote = 0;
    } else if (c == u'"' || c == u'\'') {
      quote = c;
    } else if (c == u'(') {
      ++depth;
    } else if (c == u')') {
      depth = std::max(0, depth - 1);
    } else if (c == u';' && depth == 0) {
      break;
    }
  }
  return std::min(at, style.size());
}

/// Comments and escapes can hide a word from a search, not from a browser.
std::u16string plain_style(std::u16string_view declaration) {
  std::u16string plain;
  for (std::size_t i = 0; i < declaration.size(); ++i) {
    if (declaration.substr(i).starts_with(u"/*")) {
      const std::size_t end = declaration.find(u"*/", i + 2);
      if (end == declaration.npos) break;
      i = end + 1;
    } else {
      plain += ascii_lower(declaration[i]);
    }
  }
  return plain;
}

bool is_kept_declaration(std::u16string_view declaration) {
  const std::u16string plain = plain_style(declaration);
  const std::u16string_view name = trimmed(std::u16string_view(plain).substr(0, plain.find(u':')));
  for (std::u16string_view own : {u"mso-", u"-moz-binding", u"behavior", u"tab-interval"})
    if (name.starts_with(own)) return false;
  for (std::u16string_view acting : {u"javascript:", u"vbscript:", u"expression("})
    if (contains(plain, acting)) return false;
  return !(name == u"page" && contains(plain, u"wordsection"));
}

std::u16string kept_classes(std::u16string_view classes) {
  std::u16string kept;
  bool dropped = false;
  for (std::u16string_view name : split_on_space(classes)) {
    if (name.starts_with(u"Mso") || name == u"Apple-interchange-newline" ||
        name == u"Apple-converted-space") {
      dropped = true;
      continue;
    }
    if (!kept.empty()) kept += u' ';
    kept += name;
  }
  return dropped ? kept : std::u16string(classes);
}

}  // namespace

bool is_acting_address(std::u16string_view address) {
  const std::u16string read = as_browsers_read(address, 24);
  for (std::u16string_view scheme : {u"javascript:", u"vbscript:", u"livescript:", u"data:text/html",
                                     u"data:text/xml", u"data:application/xh", u"data:application/xml"})
    if (read.starts_with(scheme)) return true;
  return false;
}

std::u16string kept_declarations(std::u16string_view style) {
  std::vector<std::u16string_view> kept;
  bool dropped = false;
  for (std::size_t at = 0; at < style.size();) {
    const std::size_t end = end_of_declaration(style, at);
    const std::u16string_view declaration = trimmed(style.substr(at, end - at));
    at = end + 1;
    if (declaration.empty()) continue;
    if (is_kept_declaration(declaration))
      kept.push_back(declaration);
    else
      dropped = true;
  }
  if (!dropped) return std::u16string(style);
  std::u16string text;
  for (std::u16string_view declaration : kept) {
    if (!text.empty()) text += u"; ";
    text += declaration;
  }
  return text;
}

std::optional<std::u16string> kept_value(const Element& element, const dom::Attribute& attribute) {
  const std::u16string name = ascii_lower(attribute.name.text());
  if (name.starts_with(u"on") || name == u"srcdoc" || name == u"http-equiv") return {};
  // Names of XML, and what such names leave after in HTML ("xmlns:o", "o:gfxdata", "v:shapes").
  if (element.is_html() && (name == u"xmlns" || contains(name, u":"))) return {};
  if (name == u"style") {
    std::u16string kept = kept_declarations(attribute.value);
    if (kept.empty() && !attribute.value.empty()) return {};
    return kept;
  }
  if (name == u"class") {
    std::u16string kept = kept_classes(attribute.value);
    if (kept.empty() && !attribute.value.empty()) return {};
    return kept;
  }
  if (is_acting_address(attribute.value)) return {};
  // A drawing as a picture can't act; as a page it can.
  if (!element.is(Tag::Img) && as_browsers_read(attribute.value, 14) == u"data:image/svg") return {};
  return attribute.value;
}

}  // namespace tvx::editing
