#include "tvx/dom/parser/tree_builder.h"

// "in head" and "in head noscript": HTML standard, sections 13.2.6.4.4 and 13.2.6.4.5. Scripting is off.
namespace tvx::dom::parser {

TreeBuilder::Next TreeBuilder::in_head(Token& token) {
  switch (token.kind) {
    case Token::Kind::DocumentType: return Next::Token;
    case Token::Kind::Comment: insert_comment(token); return Next::Token;
    case Token::Kind::Text:
      insert_text(take_space(token));
      if (token.text.empty()) return Next::Token;
      break;
    case Token::Kind::StartTag: return in_head_start_tag(token);
    case Token::Kind::EndTag:
      if (token.tag == Tag::Head) {
        pop();
        mode_ = InsertionMode::AfterHead;
        return Next::Token;
      }
      if (token.tag == Tag::Template) end_template();
      if (token.tag != Tag::Body && token.tag != Tag::Html && token.tag != Tag::Br) return Next::Token;
      break;
    case Token::Kind::EndOfFile: break;
  }
  pop();
  mode_ = InsertionMode::AfterHead;
  return Next::Again;
}

TreeBuilder::Next TreeBuilder::in_head_start_tag(Token& token) {
  switch (token.tag) {
    case Tag::Html: return in_body(token);
    case Tag::Base:
    case Tag::Basefont:
    case Tag::Bgsound:
    case Tag::Link:
    case Tag::Meta: insert_and_pop(token); break;
    case Tag::Title: parse_text_of(token, ContentModel::ReplaceableText); break;
    case Tag::Noscript:
      insert_html(token);
      mode_ = InsertionMode::InHeadNoscript;
      break;
    case Tag::Noframes:
    case Tag::Style: parse_text_of(token, ContentModel::RawText); break;
    case Tag::Script: parse_text_of(token, ContentModel::ScriptData); break;
    case Tag::Template: start_template(token); break;
    case Tag::Head: break;
    default:
      pop();
      mode_ = InsertionMode::AfterHead;
      return Next::Again;
  }
  return Next::Token;
}

void TreeBuilder::start_template(Token& token) {
  formatting_.push_marker();
  frameset_ok_ = false;
  mode_ = InsertionMode::InTemplate;
  template_modes_.push_back(InsertionMode::InTemplate);
  insert_html(token);
}

void TreeBuilder::end_template() {
  if (!has_template()) return;
  generate_all_implied_end_tags_thoroughly();
  pop_through(Tag::Template);
  formatting_.clear_to_marker();
  template_modes_.pop_back();
  reset_insertion_mode();
}

TreeBuilder::Next TreeBuilder::in_head_noscript(Token& token) {
  switch (token.kind) {
    case Token::Kind::DocumentType: return Next::Token;
    case Token::Kind::Comment: return in_head(token);
    case Token::Kind::Text:
      insert_text(take_space(token));
      if (token.text.empty()) return Next::Token;
      break;
    case Token::Kind::StartTag:
      switch (token.tag) {
        case Tag::Html: return in_body(token);
        case Tag::Basefont:
        case Tag::Bgsound:
        case Tag::Link:
        case Tag::Meta:
        case Tag::Noframes:
        case Tag::Style: return in_head(token);
        case Tag::Head:
        case Tag::Noscript: return Next::Token;
        default: break;
      }
      break;
    case Token::Kind::EndTag:
      if (token.tag == Tag::Noscript) {
        pop();
        mode_ = InsertionMode::InHead;
        return Next::Token;
      }
      if (token.tag != Tag::Br) return Next::Token;
      break;
    case Token::Kind::EndOfFile: break;
  }
  pop();
  mode_ = InsertionMode::InHead;
  return Next::Again;
}

}  // namespace tvx::dom::parser
