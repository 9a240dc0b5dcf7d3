#include "tvx/dom/parser/tree_builder.h"

// "in template": HTML standard, section 13.2.6.4.16.
namespace tvx::dom::parser {

// What a template holds shows with its first tag: parts of a table, or anything else.
TreeBuilder::Next TreeBuilder::switch_template_mode(InsertionMode mode) {
  template_modes_.back() = mode;
  mode_ = mode;
  return Next::Again;
}

TreeBuilder::Next TreeBuilder::in_template(Token& token) {
  switch (token.kind) {
    case Token::Kind::Text:
    case Token::Kind::Comment:
    case Token::Kind::DocumentType: return in_body(token);
    case Token::Kind::EndTag: return token.tag == Tag::Template ? in_head(token) : Next::Token;
    case Token::Kind::EndOfFile: return in_template_end(token);
    case Token::Kind::StartTag: break;
  }
  switch (token.tag) {
    case Tag::Base:
    case Tag::Basefont:
    case Tag::Bgsound:
    case Tag::Link:
    case Tag::Meta:
    case Tag::Noframes:
    case Tag::Script:
    case Tag::Style:
    case Tag::Template:
    case Tag::Title: return in_head(token);
    case Tag::Caption:
    case Tag::Colgroup:
    case Tag::Tbody:
    case Tag::Tfoot:
    case Tag::Thead: return switch_template_mode(InsertionMode::InTable);
    case Tag::Col: return switch_template_mode(InsertionMode::InColumnGroup);
    case Tag::Tr: return switch_template_mode(InsertionMode::InTableBody);
    case Tag::Td:
    case Tag::Th: return switch_template_mode(InsertionMode::InRow);
    default: return switch_template_mode(InsertionMode::InBody);
  }
}

// The text ends: so do all templates, one after the other.
TreeBuilder::Next TreeBuilder::in_template_end(Token&) {
  if (!has_template()) {
    stop();
    return Next::Token;
  }
  pop_through(Tag::Template);
  formatting_.clear_to_marker();
  template_modes_.pop_back();
  reset_insertion_mode();
  return Next::Again;
}

}  // namespace tvx::dom::parser
