#include "tvx/dom/parser/tree_builder.h"

// Start tags "in body": HTML standard, section 13.2.6.4.7. Fields of forms stand in mode_in_body.cpp.
namespace tvx::dom::parser {
namespace {

enum class Kind : std::uint8_t {
  Ordinary,
  Head,        // belongs into a head, and is treated as there
  Block,       // ends a paragraph
  Formatting,  // is opened again after what closed it
  Void,        // no content, takes part in a line
  Part,        // no content, part of the element around it
  Ignored,     // has no meaning here
  Other        // has a rule of its own
};

struct KindTable {
  Kind kinds[static_cast<std::size_t>(Tag::Count)] = {};
  constexpr KindTable() {
    using enum Tag;
    set(Kind::Head, {Base, Basefont, Bgsound, Link, Meta, Noframes, Script, Style, Template, Title});
    set(Kind::Block, {Address, Article,  Aside,      Blockquote, Center,  Details, Dialog, Dir,  Div,
                      Dl,      Fieldset, Figcaption, Figure,     Footer,  Header,  Hgroup, Main, Menu,
                      Nav,     Ol,       P,          Search,     Section, Summary, Ul});
    set(Kind::Formatting, {B, Big, Code, Em, Font, I, S, Small, Strike, Strong, Tt, U});
    set(Kind::Void, {Area, Br, Embed, Img, Keygen, Wbr});
    set(Kind::Part, {Param, Source, Track});
    set(Kind::Ignored, {Caption, Col, Colgroup, Frame, Head, Tbody, Td, Tfoot, Th, Thead, Tr});
    set(Kind::Other,
        {Html,    Body,      Frameset, H1,    H2,  H3,    H4,       H5,     H6,      Pre,
         Listing, Form,      Li,       Dd,    Dt,  A,     Nobr,     Applet, Marquee, Object,
         Table,   Plaintext, Button,   Input, Hr,  Image, Textarea, Xmp,    Iframe,  Noembed,
         Select,  Option,    Optgroup, Rb,    Rtc, Rp,    Rt,       Math,   Svg,     Selectedcontent});
  }
  constexpr void set(Kind kind, std::initializer_list<Tag> tags) {
    for (const Tag tag : tags) kinds[static_cast<std::size_t>(tag)] = kind;
  }
};

constexpr KindTable table;

}  // namespace

TreeBuilder::Next TreeBuilder::in_body_start_tag(Token& token) {
  switch (table.kinds[static_cast<std::size_t>(token.tag)]) {
    case Kind::Head: return in_head(token);
    case Kind::Block: start_block(token); break;
    case Kind::Formatting: push_formatting(token); break;
    case Kind::Void:
      reconstruct_formatting();
      insert_and_pop(token);
      frameset_ok_ = false;
      break;
    case Kind::Part: insert_and_pop(token); break;
    case Kind::Ignored: break;
    case Kind::Other:
      if (!in_body_structure_start_tag(token) && !in_body_form_start_tag(token)) start_embedded(token);
      break;
    case Kind::Ordinary: start_ordinary(token); break;
  }
  return Next::Token;
}

bool TreeBuilder::in_body_structure_start_tag(Token& token) {
  switch (token.tag) {
    case Tag::Html: start_html(token); return true;
    case Tag::Body: start_body(token); return true;
    case Tag::Frameset: start_frameset(token); return true;
    case Tag::H1:
    case Tag::H2:
    case Tag::H3:
    case Tag::H4:
    case Tag::H5:
    case Tag::H6: start_heading(token); return true;
    case Tag::Pre:
    case Tag::Listing: start_preformatted(token); return true;
    case Tag::Li: start_list_item(token); return true;
    case Tag::Dd:
    case Tag::Dt: start_definition(token); return true;
    case Tag::A: start_anchor(token); return true;
    case Tag::Nobr: start_nobr(token); return true;
    case Tag::Table: start_table(token); return true;
    case Tag::Hr: start_rule(token); return true;
    case Tag::Plaintext:
      start_block(token);
      tokenizer_.set_content_model(ContentModel::PlainText);
      return true;
    default: return false;
  }
}

bool TreeBuilder::in_body_form_start_tag(Token& token) {
  switch (token.tag) {
    case Tag::Form: start_form(token); return true;
    case Tag::Button: start_button(token); return true;
    case Tag::Input: start_input(token); return true;
    case Tag::Textarea: start_textarea(token); return true;
    case Tag::Select: start_select(token); return true;
    case Tag::Option:
    case Tag::Optgroup: start_option(token); return true;
    case Tag::Selectedcontent:
      start_ordinary(token);
      selected_content_.element_made(current());
      return true;
    default: return false;
  }
}

void TreeBuilder::start_embedded(Token& token) {
  switch (token.tag) {
    case Tag::Applet:
    case Tag::Marquee:
    case Tag::Object:
      start_ordinary(token);
      formatting_.push_marker();
      frameset_ok_ = false;
      break;
    case Tag::Image:  // what everybody means by it
      token.tag = Tag::Img;
      token.name = Name(Tag::Img);
      in_body_start_tag(token);
      break;
    case Tag::Xmp:
      close_p_in_button_scope();
      reconstruct_formatting();
      frameset_ok_ = false;
      parse_text_of(token, ContentModel::RawText);
      break;
    case Tag::Iframe:
      frameset_ok_ = false;
      parse_text_of(token, ContentModel::RawText);
      break;
    case Tag::Noembed: parse_text_of(token, ContentModel::RawText); break;
    case Tag::Rb:
    case Tag::Rtc:
    case Tag::Rp:
    case Tag::Rt: start_ruby_part(token); break;
    case Tag::Math: start_foreign(token, Namespace::MathMl); break;
    case Tag::Svg: start_foreign(token, Namespace::Svg); break;
    default: start_ordinary(token); break;
  }
}

void TreeBuilder::start_ordinary(Token& token) {
  reconstruct_formatting();
  insert_html(token);
}

void TreeBuilder::start_block(Token& token) {
  close_p_in_button_scope();
  insert_html(token);
}

void TreeBuilder::start_heading(Token& token) {
  close_p_in_button_scope();
  if (is_heading(current().tag())) pop();
  insert_html(token);
}

void TreeBuilder::start_preformatted(Token& token) {
  start_block(token);
  skip_line_break_ = true;
  frameset_ok_ = false;
}

// An open item that nothing special lies between ends first.
void TreeBuilder::start_list_item(Token& token) {
  frameset_ok_ = false;
  const int stop = stack_.last(Boundary::ListItemStop);
  if (stop != OpenElements::none && stack_.at(stop).is(Tag::Li)) {
    generate_implied_end_tags(Tag::Li);
    pop_through(Tag::Li);
  }
  start_block(token);
}

void TreeBuilder::start_definition(Token& token) {
  frameset_ok_ = false;
  const int stop = stack_.last(Boundary::ListItemStop);
  if (stop != OpenElements::none && (stack_.at(stop).is(Tag::Dd) || stack_.at(stop).is(Tag::Dt))) {
    generate_implied_end_tags(stack_.at(stop).tag());
    pop_through(stop);
  }
  start_block(token);
}

// Links don't nest: an open one ends first, wherever it is.
void TreeBuilder::start_anchor(Token& token) {
  const std::size_t entry = formatting_.find_last(token.name);
  if (entry != ActiveFormatting::none) {
    const Ref<Element> open(formatting_.at(entry));
    adopt(token);
    formatting_.remove(*open);
    const int index = stack_.index_of(*open);
    if (index != OpenElements::none && stack_.size() - index <= adoption_reach) stack_.remove(index);
  }
  push_formatting(token);
}

void TreeBuilder::start_nobr(Token& token) {
  reconstruct_formatting();
  if (stack_.has_in_scope(Tag::Nobr)) adopt(token);
  push_formatting(token);
}

void TreeBuilder::start_table(Token& token) {
  if (compatibility_mode_ != CompatibilityMode::Quirks) close_p_in_button_scope();
  insert_html(token);
  frameset_ok_ = false;
  mode_ = InsertionMode::InTable;
}

void TreeBuilder::start_ruby_part(Token& token) {
  if (stack_.has_in_scope(Tag::Ruby)) {
    const bool is_text_part = token.tag == Tag::Rp || token.tag == Tag::Rt;
    generate_implied_end_tags(is_text_part ? Tag::Rtc : Tag::Unknown);
  }
  insert_html(token);
}

void TreeBuilder::start_foreign(Token& token, Namespace name_space) {
  reconstruct_formatting();
  insert_foreign(token, name_space);
  if (token.self_closing) pop();
}

}  // namespace tvx::dom::parser
