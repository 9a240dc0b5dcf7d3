#include <algorithm>

#include "tvx/dom/parser/tree_builder.h"

// End tags "in body": HTML standard, section 13.2.6.4.7.
namespace tvx::dom::parser {

TreeBuilder::Next TreeBuilder::in_body_end_tag(Token& token) {
  switch (token.tag) {
    case Tag::Template: return in_head(token);
    case Tag::Body:
    case Tag::Html: return end_body(token);
    case Tag::Address:
    case Tag::Article:
    case Tag::Aside:
    case Tag::Blockquote:
    case Tag::Button:
    case Tag::Center:
    case Tag::Details:
    case Tag::Dialog:
    case Tag::Dir:
    case Tag::Div:
    case Tag::Dl:
    case Tag::Fieldset:
    case Tag::Figcaption:
    case Tag::Figure:
    case Tag::Footer:
    case Tag::Header:
    case Tag::Hgroup:
    case Tag::Listing:
    case Tag::Main:
    case Tag::Menu:
    case Tag::Nav:
    case Tag::Ol:
    case Tag::Pre:
    case Tag::Search:
    case Tag::Section:
    case Tag::Select:
    case Tag::Summary:
    case Tag::Ul: end_block(token); break;
    case Tag::Form: end_form(); break;
    case Tag::P:
      if (!stack_.has_in_scope(Tag::P, Boundary::ButtonScope)) insert_html(Tag::P);
      close_p();
      break;
    case Tag::Li:
    case Tag::Dd:
    case Tag::Dt: end_list_item(token); break;
    case Tag::H1:
    case Tag::H2:
    case Tag::H3:
    case Tag::H4:
    case Tag::H5:
    case Tag::H6: end_heading(); break;
    case Tag::A:
    case Tag::B:
    case Tag::Big:
    case Tag::Code:
    case Tag::Em:
    case Tag::Font:
    case Tag::I:
    case Tag::Nobr:
    case Tag::S:
    case Tag::Small:
    case Tag::Strike:
    case Tag::Strong:
    case Tag::Tt:
    case Tag::U: adopt(token); break;
    case Tag::Applet:
    case Tag::Marquee:
    case Tag::Object: end_embedded(token); break;
    case Tag::Br:
      token.kind = Token::Kind::StartTag;
      token.attributes.clear();
      return in_body_start_tag(token);
    default: any_other_end_tag(token); break;
  }
  return Next::Token;
}

void TreeBuilder::end_block(Token& token) {
  if (!stack_.has_in_scope(token.tag)) return;
  generate_implied_end_tags();
  pop_through(token.tag);
}

void TreeBuilder::end_list_item(Token& token) {
  const Boundary scope = token.tag == Tag::Li ? Boundary::ListItemScope : Boundary::Scope;
  if (!stack_.has_in_scope(token.tag, scope)) return;
  generate_implied_end_tags(token.tag);
  pop_through(token.tag);
}

// Any heading's end tag ends the last open heading.
void TreeBuilder::end_heading() {
  int last = OpenElements::none;
  for (const Tag tag : {Tag::H1, Tag::H2, Tag::H3, Tag::H4, Tag::H5, Tag::H6})
    last = std::max(last, stack_.last(tag));
  if (last == OpenElements::none || last < stack_.last(Boundary::Scope)) return;
  generate_implied_end_tags();
  pop_through(last);
}

void TreeBuilder::end_embedded(Token& token) {
  if (!stack_.has_in_scope(token.tag)) return;
  generate_implied_end_tags();
  pop_through(token.tag);
  formatting_.clear_to_marker();
}

void TreeBuilder::any_other_end_tag(Token& token) {
  const int index = stack_.last_html(token.name);
  if (index == OpenElements::none || index < stack_.last(Boundary::Special)) return;
  generate_implied_end_tags(token.tag);
  pop_through(index);
}

}  // namespace tvx::dom::parser
