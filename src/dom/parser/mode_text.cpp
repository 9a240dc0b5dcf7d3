#include "tvx/dom/parser/tree_builder.h"

// "text": HTML standard, section 13.2.6.4.8.
namespace tvx::dom::parser {

TreeBuilder::Next TreeBuilder::text(Token& token) {
  if (token.kind == Token::Kind::Text) {
    insert_text(token.text);
    return Next::Token;
  }
  pop();
  mode_ = original_mode_;
  return token.kind == Token::Kind::EndOfFile ? Next::Again : Next::Token;
}

}  // namespace tvx::dom::parser
