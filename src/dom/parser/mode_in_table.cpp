#include "tvx/dom/parser/tree_builder.h"

// "in table" and "in table text": HTML standard, sections 13.2.6.4.9 and 13.2.6.4.10.
namespace tvx::dom::parser {

TreeBuilder::Next TreeBuilder::in_table(Token& token) {
  switch (token.kind) {
    case Token::Kind::Text:
      if (!is_table_structure(current().tag()) && !current_is(Tag::Template)) break;
      table_text_.clear();
      original_mode_ = mode_;
      mode_ = InsertionMode::InTableText;
      return Next::Again;
    case Token::Kind::Comment: insert_comment(token); return Next::Token;
    case Token::Kind::DocumentType: return Next::Token;
    case Token::Kind::StartTag: return in_table_start_tag(token);
    case Token::Kind::EndTag: return in_table_end_tag(token);
    case Token::Kind::EndOfFile: return in_body(token);
  }
  in_body_with_foster_parenting(token);
  return Next::Token;
}

void TreeBuilder::in_body_with_foster_parenting(Token& token) {
  foster_parenting_ = true;
  in_body(token);
  foster_parenting_ = false;
}

void TreeBuilder::start_table_part(Tag implied, InsertionMode mode) {
  clear_back_to({Tag::Table, Tag::Template, Tag::Html});
  insert_html(implied);
  mode_ = mode;
}

TreeBuilder::Next TreeBuilder::in_table_start_tag(Token& token) {
  switch (token.tag) {
    case Tag::Caption:
      clear_back_to({Tag::Table, Tag::Template, Tag::Html});
      formatting_.push_marker();
      insert_html(token);
      mode_ = InsertionMode::InCaption;
      return Next::Token;
    case Tag::Colgroup:
      clear_back_to({Tag::Table, Tag::Template, Tag::Html});
      insert_html(token);
      mode_ = InsertionMode::InColumnGroup;
      return Next::Token;
    case Tag::Col: start_table_part(Tag::Colgroup, InsertionMode::InColumnGroup); return Next::Again;
    case Tag::Tbody:
    case Tag::Tfoot:
    case Tag::Thead:
      clear_back_to({Tag::Table, Tag::Template, Tag::Html});
      insert_html(token);
      mode_ = InsertionMode::InTableBody;
      return Next::Token;
    case Tag::Td:
    case Tag::Th:
    case Tag::Tr: start_table_part(Tag::Tbody, InsertionMode::InTableBody); return Next::Again;
    case Tag::Table:
      if (!stack_.has_in_scope(Tag::Table, Boundary::TableScope)) return Next::Token;
      end_table();
      return Next::Again;
    case Tag::Style:
    case Tag::Script:
    case Tag::Template: return in_head(token);
    case Tag::Input:
      for (const Attribute& attribute : token.attributes) {
        if (attribute.name != names::type || !equals_ignoring_ascii_case(attribute.value, u"hidden"))
          continue;
        insert_and_pop(token);
        return Next::Token;
      }
      break;
    case Tag::Form:
      if (has_template() || form_) return Next::Token;
      form_ = insert_html(token);
      pop();
      return Next::Token;
    default: break;
  }
  in_body_with_foster_parenting(token);
  return Next::Token;
}

void TreeBuilder::end_table() {
  pop_through(Tag::Table);
  reset_insertion_mode();
}

TreeBuilder::Next TreeBuilder::in_table_end_tag(Token& token) {
  switch (token.tag) {
    case Tag::Table:
      if (stack_.has_in_scope(Tag::Table, Boundary::TableScope)) end_table();
      return Next::Token;
    case Tag::Body:
    case Tag::Caption:
    case Tag::Col:
    case Tag::Colgroup:
    case Tag::Html:
    case Tag::Tbody:
    case Tag::Td:
    case Tag::Tfoot:
    case Tag::Th:
    case Tag::Thead:
    case Tag::Tr: return Next::Token;
    case Tag::Template: return in_head(token);
    default: in_body_with_foster_parenting(token); return Next::Token;
  }
}

TreeBuilder::Next TreeBuilder::in_table_text(Token& token) {
  if (token.kind == Token::Kind::Text) {
    if (!token.null_characters) table_text_ += token.text;
    return Next::Token;
  }
  flush_table_text();
  mode_ = original_mode_;
  return Next::Again;
}

// White space stays in the table, anything else goes before it with the white space around.
void TreeBuilder::flush_table_text() {
  Token text;
  text.kind = Token::Kind::Text;
  text.text = table_text_;
  take_space(text);
  if (text.text.empty()) return insert_text(table_text_);
  text.text = table_text_;
  in_body_with_foster_parenting(text);
}

}  // namespace tvx::dom::parser
