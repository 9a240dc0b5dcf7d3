#include "tvx/dom/builder.h"
#include "tvx/dom/parser/foreign_names.h"
#include "tvx/dom/parser/tree_builder.h"

// HTML standard, section 13.2.6.5 "the rules for parsing tokens in foreign content".
namespace tvx::dom::parser {
namespace {

bool is_styling_font(const Token& token) {
  if (token.tag != Tag::Font) return false;
  for (const Attribute& attribute : token.attributes) {
    if (attribute.name == names::color || attribute.name == names::face || attribute.name == names::size)
      return true;
  }
  return false;
}

}  // namespace

void TreeBuilder::in_foreign_content(Token& token) {
  switch (token.kind) {
    case Token::Kind::Text:
      if (token.null_characters) return insert_text(std::u16string(token.text.size(), u'\uFFFD'));
      insert_text(token.text);
      take_space(token);
      if (!token.text.empty()) frameset_ok_ = false;
      return;
    case Token::Kind::Comment: return insert_comment(token);
    case Token::Kind::StartTag: return foreign_start_tag(token);
    case Token::Kind::EndTag: return foreign_end_tag(token);
    case Token::Kind::DocumentType:
    case Token::Kind::EndOfFile: return;
  }
}

void TreeBuilder::foreign_start_tag(Token& token) {
  if (breaks_out_of_foreign_content(token.tag) || is_styling_font(token)) return leave_foreign_content(token);
  insert_foreign(token, adjusted_current_node().name_space());
  if (token.self_closing) pop();
}

// An HTML tag ends all foreign elements down to where HTML may stand, and is HTML's then.
void TreeBuilder::leave_foreign_content(Token& token) {
  while (!current().is_html() && !is_mathml_text_integration_point(current()) &&
         !is_html_integration_point(current())) {
    pop();
  }
  if (use_mode(mode_, token) == Next::Again) process(token);
}

void TreeBuilder::foreign_end_tag(Token& token) {
  if (token.tag == Tag::Br || token.tag == Tag::P) return leave_foreign_content(token);
  const int same_name = stack_.last_foreign(token.name);
  const int html = stack_.last(Boundary::Html);
  if (same_name > html) return pop_through(same_name);
  // In a fragment of foreign content the bottom element stands for nothing that can end.
  if (stack_.size() == 1) return;
  if (use_mode(mode_, token) == Next::Again) process(token);
}

}  // namespace tvx::dom::parser
