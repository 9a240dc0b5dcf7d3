#include "tvx/dom/parser/tree_builder.h"

// What follows the body: "after body", "after after body", and the modes of framesets. HTML standard,
// sections 13.2.6.4.17 to 13.2.6.4.21.
namespace tvx::dom::parser {

TreeBuilder::Next TreeBuilder::after_body(Token& token) {
  switch (token.kind) {
    case Token::Kind::Text: {
      const std::u16string_view all = token.text;
      take_space(token);
      const bool only_space = token.text.empty();
      token.text = all;
      if (only_space) return in_body(token);
      break;
    }
    case Token::Kind::Comment: append_comment(token, stack_.at(0)); return Next::Token;
    case Token::Kind::DocumentType: return Next::Token;
    case Token::Kind::StartTag:
      if (token.tag == Tag::Html) return in_body(token);
      break;
    case Token::Kind::EndTag:
      if (token.tag != Tag::Html) break;
      if (!context_) mode_ = InsertionMode::AfterAfterBody;
      return Next::Token;
    case Token::Kind::EndOfFile: stop(); return Next::Token;
  }
  mode_ = InsertionMode::InBody;
  return Next::Again;
}

TreeBuilder::Next TreeBuilder::after_after_body(Token& token) {
  switch (token.kind) {
    case Token::Kind::Comment:
      append_comment(token, context_ ? static_cast<Node&>(*root_) : document_);
      break;
    case Token::Kind::DocumentType: return in_body(token);
    case Token::Kind::EndOfFile: stop(); break;
    case Token::Kind::Text: {
      const std::u16string_view all = token.text;
      take_space(token);
      const bool only_space = token.text.empty();
      token.text = all;
      if (only_space) return in_body(token);
      mode_ = InsertionMode::InBody;
      return Next::Again;
    }
    case Token::Kind::StartTag:
      if (token.tag == Tag::Html) return in_body(token);
      [[fallthrough]];
    case Token::Kind::EndTag: mode_ = InsertionMode::InBody; return Next::Again;
  }
  return Next::Token;
}

// Of a text, only its white space.
void TreeBuilder::insert_only_space(const Token& token) {
  std::u16string space;
  for (const char16_t c : token.text) {
    if (is_ascii_space(c)) space += c;
  }
  insert_text(space);
}

TreeBuilder::Next TreeBuilder::in_frameset(Token& token) {
  switch (token.kind) {
    case Token::Kind::Text: insert_only_space(token); break;
    case Token::Kind::Comment: insert_comment(token); break;
    case Token::Kind::DocumentType: break;
    case Token::Kind::StartTag:
      switch (token.tag) {
        case Tag::Html: return in_body(token);
        case Tag::Frameset: insert_html(token); break;
        case Tag::Frame: insert_and_pop(token); break;
        case Tag::Noframes: return in_head(token);
        default: break;
      }
      break;
    case Token::Kind::EndTag:
      if (token.tag != Tag::Frameset || stack_.size() == 1) break;
      pop();
      if (!context_ && !current_is(Tag::Frameset)) mode_ = InsertionMode::AfterFrameset;
      break;
    case Token::Kind::EndOfFile: stop(); break;
  }
  return Next::Token;
}

TreeBuilder::Next TreeBuilder::after_frameset(Token& token) {
  switch (token.kind) {
    case Token::Kind::Text: insert_only_space(token); break;
    case Token::Kind::Comment: insert_comment(token); break;
    case Token::Kind::DocumentType: break;
    case Token::Kind::StartTag:
      if (token.tag == Tag::Html) return in_body(token);
      if (token.tag == Tag::Noframes) return in_head(token);
      break;
    case Token::Kind::EndTag:
      if (token.tag == Tag::Html) mode_ = InsertionMode::AfterAfterFrameset;
      break;
    case Token::Kind::EndOfFile: stop(); break;
  }
  return Next::Token;
}

TreeBuilder::Next TreeBuilder::after_after_frameset(Token& token) {
  switch (token.kind) {
    case Token::Kind::Comment: append_comment(token, document_); break;
    case Token::Kind::Text: {
      std::u16string space;
      for (const char16_t c : token.text) {
        if (is_ascii_space(c)) space += c;
      }
      token.text = space;
      return in_body(token);
    }
    case Token::Kind::StartTag:
      if (token.tag == Tag::Html) return in_body(token);
      if (token.tag == Tag::Noframes) return in_head(token);
      break;
    case Token::Kind::EndOfFile: stop(); break;
    case Token::Kind::DocumentType:
    case Token::Kind::EndTag: break;
  }
  return Next::Token;
}

}  // namespace tvx::dom::parser
