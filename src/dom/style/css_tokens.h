#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx::dom::style {

/// CSS Syntax Module Level 3, section 4 "Tokenization". Comments are tokens of their own here, since
/// declarations keep their text.
enum class TokenType : std::uint8_t {
  Ident,
  Function,   // with its "("
  AtKeyword,  // with its "@"
  Hash,
  String,
  BadString,
  Url,
  BadUrl,
  Delim,
  Number,
  Percentage,
  Dimension,
  Whitespace,
  Comment,
  Cdo,
  Cdc,
  Colon,
  Semicolon,
  Comma,
  OpenSquare,
  CloseSquare,
  OpenParen,
  CloseParen,
  OpenBrace,
  CloseBrace,
  End
};

struct Token {
  TokenType type = TokenType::End;
  char16_t delim = 0;         // Delim
  bool is_identifier = true;  // Hash: could be an id selector
  bool is_integer = false;    // numbers
  Offset begin = 0, end = 0;  // the position in the text
  double number = 0;
  /// Escapes resolved: the name of Ident, Function, AtKeyword and Hash, the content of String and Url, the
  /// unit of Dimension.
  std::u16string value;

  bool is_delim(char16_t c) const { return type == TokenType::Delim && delim == c; }
  /// An identifier of that name (small letters), in any case.
  bool is_ident(std::u16string_view name) const {
    return type == TokenType::Ident && equals_ignoring_ascii_case(value, name);
  }
  /// White space or a comment.
  bool is_gap() const { return type == TokenType::Whitespace || type == TokenType::Comment; }
};

/// All tokens, the last one End. Never fails.
std::vector<Token> tokenize(std::u16string_view text);

/// The index after the component value that begins at `at`: a block or function up to its end, else one
/// token (CSS Syntax, "consume a component value"). No recursion, whatever the nesting.
std::size_t skip_component(const std::vector<Token>& tokens, std::size_t at);
std::size_t skip_gaps(const std::vector<Token>& tokens, std::size_t at);

/// An identifier as a selector or value would have to be written.
std::u16string escaped_identifier(std::u16string_view name);

}  // namespace tvx::dom::style
