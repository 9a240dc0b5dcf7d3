#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tvx::source {

/// What a stretch of a source is, to be coloured. What is between tokens is plain text.
enum class TokenKind : std::uint8_t {
  Bracket,  // < </ > />
  TagName,
  AttributeName,
  Value,  // of an attribute, with its quotes
  Comment,
  Declaration,  // <!DOCTYPE ...>
  Entity,
  Keyword,  // of a script
  String,
  Number,
  Selector,  // of a style sheet
  Property
};

struct Token {
  std::size_t from = 0, length = 0;
  TokenKind kind = TokenKind::Bracket;
  friend bool operator==(const Token&, const Token&) = default;
};

/// What a line begins in: 0 is plain text, as at the start of a source; all else is known here alone.
using LineState = std::int32_t;

/// The tokens of a line, without its end. `state` is what the line begins in, and then what the next one
/// does. The same line in the same state has the same tokens: a source is coloured line by line, and after an
/// edit as far as a line's state is another one than before.
std::vector<Token> tokens_of_line(std::u16string_view line, LineState& state);
/// The state alone.
void pass_line(std::u16string_view line, LineState& state);

}  // namespace tvx::source
