#include "tvx/dom/builder.h"
#include "tvx/dom/parser/tree_builder.h"

// "in body": HTML standard, section 13.2.6.4.7. Its tags have files of their own.
namespace tvx::dom::parser {

TreeBuilder::Next TreeBuilder::in_body(Token& token) {
  switch (token.kind) {
    case Token::Kind::Text: in_body_text(token); return Next::Token;
    case Token::Kind::Comment: insert_comment(token); return Next::Token;
    case Token::Kind::DocumentType: return Next::Token;
    case Token::Kind::StartTag: return in_body_start_tag(token);
    case Token::Kind::EndTag: return in_body_end_tag(token);
    case Token::Kind::EndOfFile:
      if (!template_modes_.empty()) return in_template_end(token);
      stop();
      return Next::Token;
  }
  return Next::Token;
}

void TreeBuilder::in_body_text(const Token& token) {
  if (token.null_characters || token.text.empty()) return;
  reconstruct_formatting();
  insert_text(token.text);
  if (!frameset_ok_) return;
  for (const char16_t c : token.text) {
    if (is_ascii_space(c)) continue;
    frameset_ok_ = false;
    break;
  }
}

void TreeBuilder::start_html(Token& token) {
  if (!has_template()) add_missing_attributes(stack_.at(0), token);
}

void TreeBuilder::start_body(Token& token) {
  if (stack_.size() < 2 || !stack_.at(1).is(Tag::Body) || has_template()) return;
  frameset_ok_ = false;
  add_missing_attributes(stack_.at(1), token);
}

// A frameset takes the place of a body in which nothing has happened yet.
void TreeBuilder::start_frameset(Token& token) {
  if (stack_.size() < 2 || !stack_.at(1).is(Tag::Body) || !frameset_ok_) return;
  const Ref<Element> body(stack_.at(1));
  if (body->parent()) Builder::remove(*body);
  pop_through(1);
  insert_html(token);
  mode_ = InsertionMode::InFrameset;
}

TreeBuilder::Next TreeBuilder::end_body(Token& token) {
  if (!stack_.has_in_scope(Tag::Body)) return Next::Token;
  mode_ = InsertionMode::AfterBody;
  return token.tag == Tag::Html ? Next::Again : Next::Token;
}

// --- forms and their fields ---

void TreeBuilder::start_form(Token& token) {
  if (form_ && !has_template()) return;
  close_p_in_button_scope();
  Element& form = insert_html(token);
  if (!has_template()) form_ = form;
}

void TreeBuilder::end_form() {
  if (has_template()) {
    if (!stack_.has_in_scope(Tag::Form)) return;
    generate_implied_end_tags();
    return pop_through(Tag::Form);
  }
  const Ref<Element> form = std::move(form_);
  form_ = nullptr;
  if (!form || !stack_.has_in_scope(*form)) return;
  generate_implied_end_tags();
  if (&current() == form.get()) return pop();
  stack_.remove(stack_.index_of(*form));  // what is open in it stays open
}

void TreeBuilder::start_button(Token& token) {
  if (stack_.has_in_scope(Tag::Button)) {
    generate_implied_end_tags();
    pop_through(Tag::Button);
  }
  reconstruct_formatting();
  insert_html(token);
  frameset_ok_ = false;
}

void TreeBuilder::start_input(Token& token) {
  if (context_ && context_->is(Tag::Select)) return;
  if (stack_.has_in_scope(Tag::Select)) pop_through(Tag::Select);
  reconstruct_formatting();
  bool hidden = false;
  for (const Attribute& attribute : token.attributes) {
    if (attribute.name == names::type) hidden = equals_ignoring_ascii_case(attribute.value, u"hidden");
  }
  insert_and_pop(token);
  if (!hidden) frameset_ok_ = false;
}

void TreeBuilder::start_textarea(Token& token) {
  parse_text_of(token, ContentModel::ReplaceableText);
  skip_line_break_ = true;
  frameset_ok_ = false;
}

// Selects don't nest: the start tag of a second one only ends the first.
void TreeBuilder::start_select(Token& token) {
  if (context_ && context_->is(Tag::Select)) return;
  if (stack_.has_in_scope(Tag::Select)) return pop_through(Tag::Select);
  reconstruct_formatting();
  insert_html(token);
  frameset_ok_ = false;
}

void TreeBuilder::start_option(Token& token) {
  if (stack_.has_in_scope(Tag::Select)) {
    generate_implied_end_tags(token.tag == Tag::Option ? Tag::Optgroup : Tag::Unknown);
  } else if (current_is(Tag::Option)) {
    pop();
  }
  reconstruct_formatting();
  insert_html(token);
}

void TreeBuilder::start_rule(Token& token) {
  close_p_in_button_scope();
  if (stack_.has_in_scope(Tag::Select)) generate_implied_end_tags();
  insert_and_pop(token);
  frameset_ok_ = false;
}

}  // namespace tvx::dom::parser
