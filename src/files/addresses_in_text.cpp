#include "tvx/files/addresses_in_text.h"

#include <algorithm>
#include <utility>

#include "tvx/base/strings.h"
#include "tvx/dom/style/css_tokens.h"

namespace tvx::files {
namespace {

using dom::style::Token;
using dom::style::TokenType;

/// After the descriptors of a picture ("2x", "480w"): they end at a comma that stands in no parentheses.
std::size_t after_descriptors(std::u16string_view text, std::size_t at) {
  std::size_t depth = 0;
  for (; at < text.size(); ++at) {
    if (text[at] == u',' && depth == 0) return at + 1;
    if (text[at] == u'(') ++depth;
    if (text[at] == u')' && depth > 0) --depth;
  }
  return at;
}

bool is_image_set(const Token& token) {
  return token.type == TokenType::Function && (equals_ignoring_ascii_case(token.value, u"image-set") ||
                                               equals_ignoring_ascii_case(token.value, u"-webkit-image-set"));
}

bool names_url(const Token& token) {
  return token.type == TokenType::Function && equals_ignoring_ascii_case(token.value, u"url");
}

bool is_import(const Token& token) {
  return token.type == TokenType::AtKeyword && equals_ignoring_ascii_case(token.value, u"import");
}

/// Goes over the tokens in their order; what brings something in says where the strings are that are
/// addresses.
class CssAddresses {
 public:
  explicit CssAddresses(std::u16string_view text) : tokens_(dom::style::tokenize(text)) {}

  std::vector<AddressInText> run() {
    for (std::size_t at = 0; at < tokens_.size(); ++at) {
      const Token& token = tokens_[at];
      if (token.type == TokenType::Url) add(token, AddressSpelling::InUrl);
      if (names_url(token) || is_import(token)) add_string(dom::style::skip_gaps(tokens_, at + 1));
      if (is_image_set(token)) add_pictures(at);
    }
    // Those of a set come where it begins, before what stands in it.
    std::ranges::sort(found_, {}, &AddressInText::begin);
    return std::move(found_);
  }

 private:
  void add(const Token& token, AddressSpelling spelling) {
    found_.push_back({token.begin, token.end - token.begin, spelling, token.value});
  }
  void add_string(std::size_t at) {
    if (at < tokens_.size() && tokens_[at].type == TokenType::String)
      add(tokens_[at], AddressSpelling::InQuotes);
  }
  /// Of a set, the strings that stand in it themselves: those of `type("image/png")` don't.
  void add_pictures(std::size_t at) {
    const std::size_t end = dom::style::skip_component(tokens_, at);
    for (++at; at < end; at = dom::style::skip_component(tokens_, at)) add_string(at);
  }

  const std::vector<Token> tokens_;
  std::vector<AddressInText> found_;
};

std::u16string without(std::u16string_view address, std::u16string_view characters) {
  constexpr std::u16string_view digits = u"0123456789ABCDEF";
  std::u16string written;
  for (const char16_t c : address) {
    if (c > u' ' && characters.find(c) == characters.npos) {
      written += c;
      continue;
    }
    written += u'%';
    written += digits[c / 16 % 16];
    written += digits[c % 16];
  }
  return written;
}

std::u16string spelled(AddressSpelling spelling, std::u16string_view address, char16_t first) {
  switch (spelling) {
    case AddressSpelling::Plain: break;
    case AddressSpelling::InList: return without(address, u",");
    case AddressSpelling::InUrl: return u"url(" + without(address, u"\"'()\\") + u')';
    case AddressSpelling::InQuotes: return first + without(address, u"\"'\\") + first;
  }
  return std::u16string(address);
}

}  // namespace

std::vector<AddressInText> addresses_in_srcset(std::u16string_view text) {
  std::vector<AddressInText> found;
  std::size_t at = 0;
  while (true) {
    while (at < text.size() && (is_ascii_space(text[at]) || text[at] == u',')) ++at;
    if (at == text.size()) return found;
    const std::size_t begin = at;
    while (at < text.size() && !is_ascii_space(text[at])) ++at;
    std::size_t end = at;
    while (text[end - 1] == u',') --end;  // there is something before them
    found.push_back(
        {begin, end - begin, AddressSpelling::InList, std::u16string(text.substr(begin, end - begin))});
    if (end == at) at = after_descriptors(text, at);
  }
}

std::vector<AddressInText> addresses_in_css(std::u16string_view text) { return CssAddresses(text).run(); }

std::u16string with_address(std::u16string_view text, const AddressInText& place,
                            std::u16string_view address) {
  std::u16string written(text.substr(0, place.begin));
  written += spelled(place.spelling, address, place.begin < text.size() ? text[place.begin] : u'"');
  return written += text.substr(place.begin + place.length);
}

}  // namespace tvx::files
