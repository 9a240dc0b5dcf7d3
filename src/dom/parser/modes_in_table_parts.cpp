#include "tvx/dom/parser/tree_builder.h"

// "in caption", "in column group", "in table body", "in row", "in cell": HTML standard, sections
// 13.2.6.4.11 to 13.2.6.4.15.
namespace tvx::dom::parser {

// --- caption ---

bool TreeBuilder::close_caption() {
  if (!stack_.has_in_scope(Tag::Caption, Boundary::TableScope)) return false;
  generate_implied_end_tags();
  pop_through(Tag::Caption);
  formatting_.clear_to_marker();
  mode_ = InsertionMode::InTable;
  return true;
}

TreeBuilder::Next TreeBuilder::in_caption(Token& token) {
  if (token.kind == Token::Kind::StartTag) {
    switch (token.tag) {
      case Tag::Caption:
      case Tag::Col:
      case Tag::Colgroup:
      case Tag::Tbody:
      case Tag::Td:
      case Tag::Tfoot:
      case Tag::Th:
      case Tag::Thead:
      case Tag::Tr: return close_caption() ? Next::Again : Next::Token;
      default: break;
    }
  } else if (token.kind == Token::Kind::EndTag) {
    switch (token.tag) {
      case Tag::Caption: close_caption(); return Next::Token;
      case Tag::Table: return close_caption() ? Next::Again : Next::Token;
      case Tag::Body:
      case Tag::Col:
      case Tag::Colgroup:
      case Tag::Html:
      case Tag::Tbody:
      case Tag::Td:
      case Tag::Tfoot:
      case Tag::Th:
      case Tag::Thead:
      case Tag::Tr: return Next::Token;
      default: break;
    }
  }
  return in_body(token);
}

// --- column group ---

TreeBuilder::Next TreeBuilder::in_column_group(Token& token) {
  switch (token.kind) {
    case Token::Kind::Text:
      insert_text(take_space(token));
      if (token.text.empty()) return Next::Token;
      break;
    case Token::Kind::Comment: insert_comment(token); return Next::Token;
    case Token::Kind::DocumentType: return Next::Token;
    case Token::Kind::StartTag:
      if (token.tag == Tag::Html) return in_body(token);
      if (token.tag == Tag::Template) return in_head(token);
      if (token.tag != Tag::Col) break;
      insert_and_pop(token);
      return Next::Token;
    case Token::Kind::EndTag:
      if (token.tag == Tag::Col) return Next::Token;
      if (token.tag == Tag::Template) return in_head(token);
      break;
    case Token::Kind::EndOfFile: return in_body(token);
  }
  if (!current_is(Tag::Colgroup)) return Next::Token;
  pop();
  mode_ = InsertionMode::InTable;
  return token.is_end(Tag::Colgroup) ? Next::Token : Next::Again;
}

// --- table body ---

// Ends the open section for a token that belongs to the table.
TreeBuilder::Next TreeBuilder::leave_table_body() {
  if (!stack_.has_in_scope(Tag::Tbody, Boundary::TableScope) &&
      !stack_.has_in_scope(Tag::Thead, Boundary::TableScope) &&
      !stack_.has_in_scope(Tag::Tfoot, Boundary::TableScope)) {
    return Next::Token;
  }
  clear_back_to({Tag::Tbody, Tag::Tfoot, Tag::Thead, Tag::Template, Tag::Html});
  pop();
  mode_ = InsertionMode::InTable;
  return Next::Again;
}

TreeBuilder::Next TreeBuilder::in_table_body(Token& token) {
  if (token.kind == Token::Kind::StartTag) {
    switch (token.tag) {
      case Tag::Tr:
        clear_back_to({Tag::Tbody, Tag::Tfoot, Tag::Thead, Tag::Template, Tag::Html});
        insert_html(token);
        mode_ = InsertionMode::InRow;
        return Next::Token;
      case Tag::Th:
      case Tag::Td:
        clear_back_to({Tag::Tbody, Tag::Tfoot, Tag::Thead, Tag::Template, Tag::Html});
        insert_html(Tag::Tr);
        mode_ = InsertionMode::InRow;
        return Next::Again;
      case Tag::Caption:
      case Tag::Col:
      case Tag::Colgroup:
      case Tag::Tbody:
      case Tag::Tfoot:
      case Tag::Thead: return leave_table_body();
      default: break;
    }
  } else if (token.kind == Token::Kind::EndTag) {
    switch (token.tag) {
      case Tag::Tbody:
      case Tag::Tfoot:
      case Tag::Thead:
        if (!stack_.has_in_scope(token.tag, Boundary::TableScope)) return Next::Token;
        leave_table_body();
        return Next::Token;
      case Tag::Table: return leave_table_body();
      case Tag::Body:
      case Tag::Caption:
      case Tag::Col:
      case Tag::Colgroup:
      case Tag::Html:
      case Tag::Td:
      case Tag::Th:
      case Tag::Tr: return Next::Token;
      default: break;
    }
  }
  return in_table(token);
}

// --- row ---

bool TreeBuilder::close_row() {
  if (!stack_.has_in_scope(Tag::Tr, Boundary::TableScope)) return false;
  clear_back_to({Tag::Tr, Tag::Template, Tag::Html});
  pop();
  mode_ = InsertionMode::InTableBody;
  return true;
}

TreeBuilder::Next TreeBuilder::in_row(Token& token) {
  if (token.kind == Token::Kind::StartTag) {
    switch (token.tag) {
      case Tag::Th:
      case Tag::Td:
        clear_back_to({Tag::Tr, Tag::Template, Tag::Html});
        insert_html(token);
        mode_ = InsertionMode::InCell;
        formatting_.push_marker();
        return Next::Token;
      case Tag::Caption:
      case Tag::Col:
      case Tag::Colgroup:
      case Tag::Tbody:
      case Tag::Tfoot:
      case Tag::Thead:
      case Tag::Tr: return close_row() ? Next::Again : Next::Token;
      default: break;
    }
  } else if (token.kind == Token::Kind::EndTag) {
    switch (token.tag) {
      case Tag::Tr: close_row(); return Next::Token;
      case Tag::Table: return close_row() ? Next::Again : Next::Token;
      case Tag::Tbody:
      case Tag::Tfoot:
      case Tag::Thead:
        if (!stack_.has_in_scope(token.tag, Boundary::TableScope)) return Next::Token;
        return close_row() ? Next::Again : Next::Token;
      case Tag::Body:
      case Tag::Caption:
      case Tag::Col:
      case Tag::Colgroup:
      case Tag::Html:
      case Tag::Td:
      case Tag::Th: return Next::Token;
      default: break;
    }
  }
  return in_table(token);
}

// --- cell ---

void TreeBuilder::close_cell() {
  generate_implied_end_tags();
  pop_through(std::max(stack_.last(Tag::Td), stack_.last(Tag::Th)));
  formatting_.clear_to_marker();
  mode_ = InsertionMode::InRow;
}

TreeBuilder::Next TreeBuilder::in_cell(Token& token) {
  if (token.kind == Token::Kind::StartTag) {
    switch (token.tag) {
      case Tag::Caption:
      case Tag::Col:
      case Tag::Colgroup:
      case Tag::Tbody:
      case Tag::Td:
      case Tag::Tfoot:
      case Tag::Th:
      case Tag::Thead:
      case Tag::Tr: close_cell(); return Next::Again;
      default: break;
    }
  } else if (token.kind == Token::Kind::EndTag) {
    switch (token.tag) {
      case Tag::Td:
      case Tag::Th:
        if (stack_.has_in_scope(token.tag, Boundary::TableScope)) {
          generate_implied_end_tags();
          pop_through(token.tag);
          formatting_.clear_to_marker();
          mode_ = InsertionMode::InRow;
        }
        return Next::Token;
      case Tag::Body:
      case Tag::Caption:
      case Tag::Col:
      case Tag::Colgroup:
      case Tag::Html: return Next::Token;
      case Tag::Table:
      case Tag::Tbody:
      case Tag::Tfoot:
      case Tag::Thead:
      case Tag::Tr:
        if (!stack_.has_in_scope(token.tag, Boundary::TableScope)) return Next::Token;
        close_cell();
        return Next::Again;
      default: break;
    }
  }
  return in_body(token);
}

}  // namespace tvx::dom::parser
