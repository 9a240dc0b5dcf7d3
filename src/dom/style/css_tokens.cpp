#include "tvx/dom/style/css_tokens.h"

#include <cmath>

namespace tvx::dom::style {
namespace {

bool is_newline(char16_t c) { return c == u'\n' || c == u'\r' || c == u'\f'; }
bool is_css_space(char16_t c) { return is_newline(c) || c == u' ' || c == u'\t'; }
bool is_hex(char16_t c) { return is_ascii_digit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F'); }
int hex_value(char16_t c) { return is_ascii_digit(c) ? c - u'0' : ascii_lower(c) - u'a' + 10; }
// NUL stands for U+FFFD, which is such a letter.
bool starts_name(char16_t c) { return is_ascii_alpha(c) || c == u'_' || c >= 0x80 || c == 0; }
bool continues_name(char16_t c) { return starts_name(c) || is_ascii_digit(c) || c == u'-'; }

void append_code_point(std::u16string& text, std::uint32_t code) {
  if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) code = 0xFFFD;
  if (code > 0xFFFF) {
    text += char16_t(0xD800 + ((code - 0x10000) >> 10));
    text += char16_t(0xDC00 + ((code - 0x10000) & 0x3FF));
  } else {
    text += char16_t(code);
  }
}

class Tokenizer {
 public:
  explicit Tokenizer(std::u16string_view text) : text_(text) {}

  std::vector<Token> run() {
    tokens_.reserve(text_.size() / 4 + 2);
    while (at_ < text_.size()) next();
    start(TokenType::End);
    return std::move(tokens_);
  }

 private:
  bool has(Offset ahead) const { return at_ + ahead < text_.size(); }
  char16_t peek(Offset ahead = 0) const { return has(ahead) ? text_[at_ + ahead] : char16_t(0xFFFF); }

  Token& start(TokenType type) {
    Token& token = tokens_.emplace_back();
    token.type = type;
    token.begin = token.end = at_;
    return token;
  }

  void single(TokenType type) {
    start(type);
    ++at_;
    finish();
  }

  void finish() { tokens_.back().end = at_; }

  bool valid_escape(Offset ahead) const {
    return peek(ahead) == u'\\' && has(ahead + 1) && !is_newline(peek(ahead + 1));
  }

  bool starts_identifier(Offset ahead) const {
    if (!has(ahead)) return false;
    const char16_t c = peek(ahead);
    if (c == u'-') {
      if (!has(ahead + 1)) return false;
      return starts_name(peek(ahead + 1)) || peek(ahead + 1) == u'-' || valid_escape(ahead + 1);
    }
    return starts_name(c) || valid_escape(ahead);
  }

  bool starts_number(Offset ahead) const {
    if (!has(ahead)) return false;
    if (peek(ahead) == u'+' || peek(ahead) == u'-') ++ahead;
    if (is_ascii_digit(peek(ahead))) return true;
    return peek(ahead) == u'.' && is_ascii_digit(peek(ahead + 1));
  }

  void next() {
    const char16_t c = peek();
    if (is_css_space(c)) return white_space();
    if (c == u'/' && peek(1) == u'*') return comment();
    if (c == u'"' || c == u'\'') return string(c);
    if (starts_number(0)) return number();
    if (c == u'-' && peek(1) == u'-' && peek(2) == u'>') return marker(TokenType::Cdc, 3);
    if (c == u'<' && text_.substr(at_, 4) == u"<!--") return marker(TokenType::Cdo, 4);
    if (starts_identifier(0)) return identifier();
    if (c == u'#' && has(1) && (continues_name(peek(1)) || valid_escape(1))) return hash();
    if (c == u'@' && starts_identifier(1)) {
      start(TokenType::AtKeyword);
      ++at_;
      tokens_.back().value = name();
      return finish();
    }
    punctuation(c);
  }

  void punctuation(char16_t c) {
    switch (c) {
      case u':': return single(TokenType::Colon);
      case u';': return single(TokenType::Semicolon);
      case u',': return single(TokenType::Comma);
      case u'[': return single(TokenType::OpenSquare);
      case u']': return single(TokenType::CloseSquare);
      case u'(': return single(TokenType::OpenParen);
      case u')': return single(TokenType::CloseParen);
      case u'{': return single(TokenType::OpenBrace);
      case u'}': return single(TokenType::CloseBrace);
      default: single(TokenType::Delim); tokens_.back().delim = c;
    }
  }

  void marker(TokenType type, Offset length) {
    start(type);
    at_ += length;
    finish();
  }

  void white_space() {
    start(TokenType::Whitespace);
    while (has(0) && is_css_space(peek())) ++at_;
    finish();
  }

  void comment() {
    start(TokenType::Comment);
    const Offset end = text_.find(u"*/", at_ + 2);
    at_ = end == std::u16string_view::npos ? text_.size() : end + 2;
    finish();
  }

  void skip_newline() {
    if (peek() == u'\r' && peek(1) == u'\n') ++at_;
    ++at_;
  }

  void string(char16_t quote) {
    Token& token = start(TokenType::String);
    ++at_;
    while (has(0) && peek() != quote) {
      if (is_newline(peek())) {
        token.type = TokenType::BadString;
        return finish();
      }
      if (peek() != u'\\') {
        token.value += peek() == 0 ? char16_t(0xFFFD) : peek();
        ++at_;
      } else if (!has(1)) {
        ++at_;
      } else if (is_newline(peek(1))) {
        ++at_;
        skip_newline();
      } else {
        escape(token.value);
      }
    }
    if (has(0)) ++at_;
    finish();
  }

  /// At a valid escape.
  void escape(std::u16string& into) {
    ++at_;
    if (!is_hex(peek())) {
      into += peek() == 0 ? char16_t(0xFFFD) : peek();
      ++at_;
      return;
    }
    std::uint32_t code = 0;
    for (int digits = 0; digits < 6 && has(0) && is_hex(peek()); ++digits, ++at_) {
      code = code * 16 + hex_value(peek());
    }
    if (has(0) && is_css_space(peek())) skip_newline();
    append_code_point(into, code);
  }

  std::u16string name() {
    std::u16string result;
    while (has(0)) {
      if (continues_name(peek())) {
        result += peek() == 0 ? char16_t(0xFFFD) : peek();
        ++at_;
      } else if (valid_escape(0)) {
        escape(result);
      } else {
        break;
      }
    }
    return result;
  }

  void hash() {
    const bool identifier = starts_identifier(1);
    Token& token = start(TokenType::Hash);
    token.is_identifier = identifier;
    ++at_;
    token.value = name();
    finish();
  }

  void identifier() {
    Token& token = start(TokenType::Ident);
    token.value = name();
    if (peek() == u'(' && has(0)) {
      ++at_;
      token.type = TokenType::Function;
      if (equals_ignoring_ascii_case(token.value, u"url")) return url();
    }
    finish();
  }

  void url() {
    Offset ahead = 0;
    while (has(ahead) && is_css_space(peek(ahead))) ++ahead;
    if (peek(ahead) == u'"' || peek(ahead) == u'\'') return finish();  // a function with a string in it
    at_ += ahead;
    Token& token = tokens_.back();
    token.type = TokenType::Url;
    token.value.clear();
    while (has(0) && peek() != u')') {
      const char16_t c = peek();
      if (is_css_space(c)) {
        while (has(0) && is_css_space(peek())) ++at_;
        if (has(0) && peek() != u')') return bad_url();
      } else if (c == u'"' || c == u'\'' || c == u'(' || (c < 0x20 && c != 0) || c == 0x7F) {
        return bad_url();
      } else if (c == u'\\') {
        if (!valid_escape(0)) return bad_url();
        escape(token.value);
      } else {
        token.value += c == 0 ? char16_t(0xFFFD) : c;
        ++at_;
      }
    }
    if (has(0)) ++at_;
    finish();
  }

  void bad_url() {
    tokens_.back().type = TokenType::BadUrl;
    while (has(0) && peek() != u')') at_ += valid_escape(0) ? 2 : 1;
    if (has(0)) ++at_;
    finish();
  }

  void digits(double& value) {
    while (has(0) && is_ascii_digit(peek())) value = value * 10 + (text_[at_++] - u'0');
  }

  void number() {
    Token& token = start(TokenType::Number);
    const bool negative = peek() == u'-';
    if (peek() == u'-' || peek() == u'+') ++at_;
    token.is_integer = true;
    double value = 0;
    digits(value);
    if (peek() == u'.' && is_ascii_digit(peek(1))) {
      token.is_integer = false;
      ++at_;
      for (double place = 0.1; has(0) && is_ascii_digit(peek()); place /= 10) {
        value += place * (text_[at_++] - u'0');
      }
    }
    exponent(value, token);
    token.number = negative ? -value : value;
    if (peek() == u'%' && has(0)) {
      token.type = TokenType::Percentage;
      ++at_;
    } else if (starts_identifier(0)) {
      token.type = TokenType::Dimension;
      token.value = name();
    }
    finish();
  }

  void exponent(double& value, Token& token) {
    if (peek() != u'e' && peek() != u'E') return;
    const bool sign = peek(1) == u'+' || peek(1) == u'-';
    if (!is_ascii_digit(peek(sign ? 2 : 1))) return;
    token.is_integer = false;
    const bool negative = peek(1) == u'-';
    at_ += sign ? 2 : 1;
    double power = 0;
    digits(power);
    value *= std::pow(10.0, std::min(power, 400.0) * (negative ? -1 : 1));
  }

  std::u16string_view text_;
  Offset at_ = 0;
  std::vector<Token> tokens_;
};

/// What closes what a token opens, End if it opens nothing.
TokenType closer_of(const Token& token) {
  switch (token.type) {
    case TokenType::OpenSquare: return TokenType::CloseSquare;
    case TokenType::OpenParen:
    case TokenType::Function: return TokenType::CloseParen;
    case TokenType::OpenBrace: return TokenType::CloseBrace;
    default: return TokenType::End;
  }
}

}  // namespace

std::vector<Token> tokenize(std::u16string_view text) { return Tokenizer(text).run(); }

std::size_t skip_component(const std::vector<Token>& tokens, std::size_t at) {
  if (tokens[at].type == TokenType::End) return at;
  std::vector<TokenType> open;
  for (;;) {
    const Token& token = tokens[at];
    if (token.type == TokenType::End) return at;
    if (const TokenType closer = closer_of(token); closer != TokenType::End) {
      open.push_back(closer);
    } else if (!open.empty() && token.type == open.back()) {
      open.pop_back();
    }
    ++at;
    if (open.empty()) return at;
  }
}

std::size_t skip_gaps(const std::vector<Token>& tokens, std::size_t at) {
  while (tokens[at].is_gap()) ++at;
  return at;
}

std::u16string escaped_identifier(std::u16string_view name) {
  std::u16string text;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const char16_t c = name[i];
    const bool digit_in_front = is_ascii_digit(c) && (i == 0 || (i == 1 && name[0] == u'-'));
    if (digit_in_front || (c < 0x20 && c != 0) || c == 0x7F) {
      static constexpr std::u16string_view digits = u"0123456789abcdef";
      text += u'\\';
      if (c >= 16) text += digits[c / 16];
      text += digits[c % 16];
      text += u' ';
    } else if (!continues_name(c) || (name == u"-")) {
      text += u'\\';
      text += c;
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace tvx::dom::style
