#include "tvx/dom/builder.h"
#include "tvx/dom/parser/quirks.h"
#include "tvx/dom/parser/tree_builder.h"

// "initial", "before html", "before head" and "after head": HTML standard, sections 13.2.6.4.1 to
// 13.2.6.4.3 and 13.2.6.4.6.
namespace tvx::dom::parser {

TreeBuilder::Next TreeBuilder::initial(Token& token) {
  if (token.kind == Token::Kind::Text) {
    take_space(token);
    if (token.text.empty()) return Next::Token;
  } else if (token.kind == Token::Kind::Comment) {
    append_comment(token, document_);
    return Next::Token;
  } else if (token.kind == Token::Kind::DocumentType) {
    Token::DocumentTypeData& data = token.document_type;
    compatibility_mode_ = compatibility_mode_of(data);
    document_.set_compatibility_mode(compatibility_mode_);
    Builder::insert(document_, document_.create_document_type(std::move(data.name), std::move(data.public_id),
                                                              std::move(data.system_id)));
    mode_ = InsertionMode::BeforeHtml;
    return Next::Token;
  }
  compatibility_mode_ = CompatibilityMode::Quirks;
  document_.set_compatibility_mode(compatibility_mode_);
  mode_ = InsertionMode::BeforeHtml;
  return Next::Again;
}

void TreeBuilder::make_html_element() { insert_html(Tag::Html); }

TreeBuilder::Next TreeBuilder::before_html(Token& token) {
  switch (token.kind) {
    case Token::Kind::DocumentType: return Next::Token;
    case Token::Kind::Comment: append_comment(token, document_); return Next::Token;
    case Token::Kind::Text:
      take_space(token);
      if (token.text.empty()) return Next::Token;
      break;
    case Token::Kind::StartTag:
      if (token.tag != Tag::Html) break;
      insert_html(token);
      mode_ = InsertionMode::BeforeHead;
      return Next::Token;
    case Token::Kind::EndTag:
      if (token.tag == Tag::Head || token.tag == Tag::Body || token.tag == Tag::Html || token.tag == Tag::Br)
        break;
      return Next::Token;
    case Token::Kind::EndOfFile: break;
  }
  make_html_element();
  mode_ = InsertionMode::BeforeHead;
  return Next::Again;
}

TreeBuilder::Next TreeBuilder::before_head(Token& token) {
  switch (token.kind) {
    case Token::Kind::DocumentType: return Next::Token;
    case Token::Kind::Comment: insert_comment(token); return Next::Token;
    case Token::Kind::Text:
      take_space(token);
      if (token.text.empty()) return Next::Token;
      break;
    case Token::Kind::StartTag:
      if (token.tag == Tag::Html) return in_body(token);
      if (token.tag != Tag::Head) break;
      head_ = insert_html(token);
      mode_ = InsertionMode::InHead;
      return Next::Token;
    case Token::Kind::EndTag:
      if (token.tag == Tag::Head || token.tag == Tag::Body || token.tag == Tag::Html || token.tag == Tag::Br)
        break;
      return Next::Token;
    case Token::Kind::EndOfFile: break;
  }
  head_ = insert_html(Tag::Head);
  mode_ = InsertionMode::InHead;
  return Next::Again;
}

TreeBuilder::Next TreeBuilder::after_head(Token& token) {
  switch (token.kind) {
    case Token::Kind::DocumentType: return Next::Token;
    case Token::Kind::Comment: insert_comment(token); return Next::Token;
    case Token::Kind::Text:
      insert_text(take_space(token));
      if (token.text.empty()) return Next::Token;
      break;
    case Token::Kind::StartTag: return after_head_start_tag(token);
    case Token::Kind::EndTag:
      if (token.tag == Tag::Template) return in_head(token);
      if (token.tag == Tag::Body || token.tag == Tag::Html || token.tag == Tag::Br) break;
      return Next::Token;
    case Token::Kind::EndOfFile: break;
  }
  insert_html(Tag::Body);
  mode_ = InsertionMode::InBody;
  return Next::Again;
}

TreeBuilder::Next TreeBuilder::after_head_start_tag(Token& token) {
  switch (token.tag) {
    case Tag::Html: return in_body(token);
    case Tag::Body:
      insert_html(token);
      frameset_ok_ = false;
      mode_ = InsertionMode::InBody;
      return Next::Token;
    case Tag::Frameset:
      insert_html(token);
      mode_ = InsertionMode::InFrameset;
      return Next::Token;
    case Tag::Base:
    case Tag::Basefont:
    case Tag::Bgsound:
    case Tag::Link:
    case Tag::Meta:
    case Tag::Noframes:
    case Tag::Script:
    case Tag::Style:
    case Tag::Template:
    case Tag::Title: {
      // These belong into the head, which is closed: it is opened for this one element.
      stack_.push(*head_);
      const Next next = in_head(token);
      stack_.remove(stack_.index_of(*head_));
      return next;
    }
    case Tag::Head: return Next::Token;
    default:
      insert_html(Tag::Body);
      mode_ = InsertionMode::InBody;
      return Next::Again;
  }
}

}  // namespace tvx::dom::parser
